#ifndef VTRUTILS_TEXT_STRINGS_COMSTRING_H
#define VTRUTILS_TEXT_STRINGS_COMSTRING_H

#include "utilities/Export.h"

/// A text that owns its memory: one block of exactly its length and a terminator, with no spare
/// room, so that the object stays at two machine words. Each change of the length allocates and
/// copies, so this class is slow for building a long text piece by piece.
///
/// Text is single-byte, in the current multibyte code page where it is searched, compared, trimmed
/// and changed: the second byte of a two-byte character is then never taken for a character.
/// Lengths and indices are in bytes. A null text argument counts as "", and arguments may lie in
/// the string itself. If memory runs out, or a text is too long (2 GB, or 0x40000000 wide units), a
/// string stays as it was, and a new one is empty. Wide text is converted with the ANSI code page
/// of the calling thread; a system string is made with that of the process. The two can differ.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CCOMString {
public:
    CCOMString() noexcept;
    /// A copy; of wide text, as said above.
    CCOMString(const CCOMString& other) noexcept;
    CCOMString(const char* text) noexcept;
    CCOMString(const wchar_t* text) noexcept;
    /// For a count below 1, an empty string without a block of memory.
    CCOMString(char ch, int count) noexcept;
    virtual ~CCOMString();

    /// Replaces the text.
    CCOMString& operator=(const CCOMString& other) noexcept;
    CCOMString& operator=(const char* text) noexcept;
    CCOMString& operator=(const wchar_t* text) noexcept;

    /// Never null; valid until the string is changed.
    operator const char*() const noexcept;

    /// Requires: 0 <= index <= GetLength(), and for `SetAt` below it.
    char operator[](int index) const noexcept;
    void SetAt(int index, char ch) noexcept;

    /// Measured on each call.
    int GetLength() const noexcept;
    bool IsEmpty() const noexcept;
    /// Keeps the memory.
    void Empty() noexcept;

    /// Below 0, 0 or above 0: by character, by character without regard to case, by the locale.
    int Compare(const char* text) const noexcept;
    int Compare(const CCOMString& other) const noexcept;
    int CompareNoCase(const char* text) const noexcept;
    int CompareNoCase(const CCOMString& other) const noexcept;
    int Collate(const char* text) const noexcept;
    int Collate(const CCOMString& other) const noexcept;

    /// By `Compare`. Those with a plain text on the left are below the class.
    bool operator==(const char* text) const noexcept;
    bool operator==(const CCOMString& other) const noexcept;
    bool operator!=(const char* text) const noexcept;
    bool operator!=(const CCOMString& other) const noexcept;
    bool operator<(const char* text) const noexcept;
    bool operator<(const CCOMString& other) const noexcept;
    bool operator>(const char* text) const noexcept;
    bool operator>(const CCOMString& other) const noexcept;
    bool operator<=(const char* text) const noexcept;
    bool operator<=(const CCOMString& other) const noexcept;
    bool operator>=(const char* text) const noexcept;
    bool operator>=(const CCOMString& other) const noexcept;

    /// Appends; a character of 0 appends nothing.
    CCOMString& operator+=(char ch) noexcept;
    CCOMString& operator+=(const CCOMString& other) noexcept;
    CCOMString& operator+=(const char* text) noexcept;
    CCOMString& operator+=(const wchar_t* text) noexcept;
    CCOMString operator+(const CCOMString& other) const noexcept;
    CCOMString operator+(const char* text) const noexcept;
    CCOMString operator+(const wchar_t* text) const noexcept;

    /// The index of the first occurrence at or after `start`, which must be the first byte of a
    /// character; a negative one counts as 0. -1 if there is none. "" is found at each start up to
    /// the length; a character of 0 is never found.
    int Find(const char* text) const noexcept;
    int Find(const char* text, int start) const noexcept;
    int Find(char ch) const noexcept;
    int Find(char ch, int start) const noexcept;

    /// The index of the first character that is in `set`, or -1.
    int FindOneOf(const char* set) const noexcept;

    /// A part, counted in bytes. Negative arguments count as 0, and a part that would reach past
    /// the end stops there.
    CCOMString Left(int count) const noexcept;
    CCOMString Right(int count) const noexcept;
    CCOMString Mid(int start) const noexcept;
    CCOMString Mid(int start, int count) const noexcept;

    /// The leading characters that are, or are not, in `set`.
    CCOMString SpanIncluding(const char* set) const noexcept;
    CCOMString SpanExcluding(const char* set) const noexcept;

    /// Each character in upper or lower case; the characters from last to first.
    void MakeUpper() noexcept;
    void MakeLower() noexcept;
    void MakeReverse() noexcept;

    /// White space is what the code page calls so. `TrimRight` keeps the memory.
    void TrimLeft() noexcept;
    void TrimRight() noexcept;

    /// Replaces each single-byte character equal to `from`; returns how many. 0 when the two are
    /// equal.
    int Replace(char from, char to) noexcept;

    /// Replaces each occurrence, from left to right, never inside a replacement, and returns how
    /// many. 0 for an empty `find`, and if memory runs out. Takes time linear in the texts.
    int Replace(const char* find, const char* replacement) noexcept;

    /// Makes the text what the C run-time's `printf` makes of the arguments. The string stays as it
    /// was if that fails.
    void Format(const char* format, ...) noexcept;

    /// Null when memory runs out. The caller frees it with `SysFreeString`.
    wchar_t* AllocSysString() const noexcept;

protected:
    // False when memory runs out. Negative lengths count as 0.

    /// Frees the text, and allocates `length` bytes, not set, and a terminator.
    bool AllocString(int length) noexcept;

    /// Cuts or grows to `length` bytes; new ones are not set.
    bool ReAllocString(int length) noexcept;

    /// Makes the first `length` bytes of `source` the text. Requires: it has as many.
    bool StringCopy(int length, const char* source) noexcept;

    /// Gives the destination `count` bytes from `start` on, and zero bytes for `extra` more.
    /// Requires: the string has them.
    bool StringCopy(CCOMString& destination, int count, int start, int extra) const noexcept;

    /// The first two append. The third makes the two texts, joined, the text.
    bool ConcatCopy(char ch) noexcept;
    bool ConcatCopy(const char* text) noexcept;
    bool ConcatCopy(const char* first, const char* second) noexcept;

private:
    friend struct vtr::Internals<CCOMString>;

    char* buffer; ///< null after a failed allocation, or without characters at the start
};

/// The same as the members. Without these, the addresses of the texts would be compared.
VTRUTILS_API bool operator==(const char* left, const CCOMString& right) noexcept;
VTRUTILS_API bool operator!=(const char* left, const CCOMString& right) noexcept;
VTRUTILS_API bool operator<(const char* left, const CCOMString& right) noexcept;
VTRUTILS_API bool operator>(const char* left, const CCOMString& right) noexcept;
VTRUTILS_API bool operator<=(const char* left, const CCOMString& right) noexcept;
VTRUTILS_API bool operator>=(const char* left, const CCOMString& right) noexcept;

#endif
