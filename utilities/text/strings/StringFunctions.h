#ifndef VTRUTILS_TEXT_STRINGS_STRINGFUNCTIONS_H
#define VTRUTILS_TEXT_STRINGS_STRINGFUNCTIONS_H

#include "utilities/Export.h"

#include <guiddef.h>

/// Functions on terminated single-byte and wide texts, most of them in the caller's own buffer.
/// Texts are in the current multibyte code page: the second byte of a two-byte character is never
/// taken for a character, unless a function says that it works byte by byte. Sizes of narrow
/// buffers are in bytes and of wide ones in units, the terminator included; what does not fit is
/// cut off. Null is allowed where a comment says what it gives.
/// Thread-safety: immutable and safe.

// Trimming.

/// In place. A null or empty text stays as it is. Removes spaces and, with `alsoLineBreaks`, CR and
/// LF; never tabs.
VTRUTILS_API void RemoveLeadingSpacesA(char* text, bool alsoLineBreaks);
VTRUTILS_API void RemoveLeadingSpacesW(wchar_t* text, bool alsoLineBreaks);
VTRUTILS_API void RemoveTrailingSpacesA(char* text, bool alsoLineBreaks);
VTRUTILS_API void RemoveTrailingSpacesW(wchar_t* text, bool alsoLineBreaks);
VTRUTILS_API void RemoveSpacesA(char* text, bool alsoLineBreaks);
VTRUTILS_API void RemoveSpacesW(wchar_t* text, bool alsoLineBreaks);

/// Copies `source` without leading and trailing spaces, tabs and line feeds; a carriage return
/// stays, and stops the trimming. True when something is left. At most the first 2,047 bytes of
/// `source` are read, so a `destination` of 2,048 bytes always suffices; it may be `source`. A null
/// source gives "" and false, a null destination false.
VTRUTILS_API bool TrimWhitespace(const char* source, char* destination);

/// The same for at most `maxCount` copies of `c` at the start and as many at the end.
VTRUTILS_API bool TrimChar(char c, const char* source, char* destination, int maxCount);

// Search and replace.

/// Replaces every occurrence of `find`, from left to right, never inside a replacement. Stops,
/// leaving the rest as it is, at the first occurrence whose replacement would make the text
/// `bufferSize` bytes long or longer. An empty or null replacement skips the byte that follows each
/// removed occurrence: "a" by "" in "aaa" gives "a". Does nothing for a null or empty `text` or
/// `find`, a `bufferSize` below 2, or a text that is not shorter than `bufferSize`. Takes one pass
/// and allocates no memory. `find` and `replacement` must not be in `text`.
VTRUTILS_API void SearchAndReplaceAll(char* text, const char* find, const char* replacement,
                                      unsigned bufferSize, bool caseSensitive);

/// The same, comparing byte by byte, with the case rule of the locale for single bytes.
VTRUTILS_API void SearchAndReplaceAllSingleByte(char* text, const char* find,
                                                const char* replacement, unsigned bufferSize,
                                                bool caseSensitive);

/// Copies `source` byte by byte with `replacement` in place of each `find`, exact in case, until
/// the destination is full; a replacement may be cut there. The whole destination is zeroed first
/// and stays empty for a null or empty `source` or `find` or a null `replacement`. Does nothing for
/// a null destination or a size below 1. The texts must not overlap.
VTRUTILS_API void ReplaceSubStrings(const char* source, char* destination, int destinationSize,
                                    const char* find, const char* replacement);

/// Puts `replacement` in place of the `length` bytes at `position`. The buffer must hold the
/// result. A `length` that reaches past the end is cut to it. Does nothing for a null or empty text
/// or replacement, or a position past the end.
VTRUTILS_API void ReplaceTextA(char* text, unsigned position, unsigned length,
                               const char* replacement);

/// Finds the first byte equal to `ch`, byte by byte, and its index. Null and -1 if there is none,
/// for a null text, and for a `ch` of 0. `position` may be null.
VTRUTILS_API char* StrChrPos(char* text, char ch, int* position);

/// True when every byte of `text` occurs in `set`; false when either is null or empty.
VTRUTILS_API bool StringContainsCharsFromSetOnly(const char* text, const char* set);

// Numeric tests. False for null and "". Digits are what the current code page (narrow) and the C
// run-time (wide) call decimal digits.

/// An optional "-", then digits only, at least one.
VTRUTILS_API bool StringIsNumericA(const char* text);
VTRUTILS_API bool StringIsNumericW(const wchar_t* text);

/// The same with at most one "." anywhere after the sign: "1." and ".5" pass, "-" and "." do not.
VTRUTILS_API bool StringIsFloatA(const char* text);
VTRUTILS_API bool StringIsFloatW(const wchar_t* text);

/// The last digit plus 16 times each earlier digit times its distance from the end. That is the
/// number for one and two digits only ("FF" gives 255, "100" gives 32); files of the family depend
/// on it. -1 for null, "" or any other character. Texts of thousands of digits wrap around.
VTRUTILS_API int HexStringToInt(const char* text);

/// "0" to "9", "a" to "f", "A" to "F".
VTRUTILS_API bool IsHexCharacter(char ch);

// UTF-16, little-endian, in byte buffers; its byte-order mark is FF FE. Conversion keeps the low
// byte of each unit, or widens each byte, without any code page.

/// Requires: at least two bytes, or null, which is false.
VTRUTILS_API bool StringHasUnicodeHeader(const unsigned char* data);

/// A guess from the first bytes: true with the mark; false at the first pair of two non-zero bytes;
/// true at a pair of two zeros. When `length` ends first, true, or with `requireTerminator` only if
/// the last two bytes are zero. False for null and for a length below 2.
VTRUTILS_API bool StringIsUnicode(const unsigned char* data, int length, bool requireTerminator);

/// True when no unit up to the first zero unit or the end has two non-zero bytes, the mark left
/// aside. False for null and for a length below 2.
VTRUTILS_API bool StringIsConvertibleUnicode(const unsigned char* data, int length);

/// How many units are between the mark and a zero unit. 0 without a mark, without a zero unit, or
/// when a unit has two non-zero bytes.
VTRUTILS_API int NumConvertibleUnicodeChars(const unsigned char* data, int length);

/// Zeroes `destination`, then stores one byte per unit, without a leading mark, until the source
/// ends, two zero units follow each other, or `destinationSize` bytes, less one with
/// `reserveTerminator`, are stored. A null source counts as empty. Does nothing for a null
/// destination.
VTRUTILS_API void ConvertUnicodeToSingleByte(const wchar_t* source, int sourceUnits,
                                             char* destination, unsigned destinationSize,
                                             bool reserveTerminator);

/// The same for a whole terminated source, with the terminator reserved. Does nothing for a null
/// source.
VTRUTILS_API void ConvertUnicodeToSingleByte(const wchar_t* source, char* destination,
                                             unsigned destinationSize);

/// Zeroes `destination`, then stores one unit per byte, until the source ends, a zero byte comes,
/// or `destinationUnits` units, less one with `reserveTerminator`, are stored. A null source counts
/// as empty. Does nothing for a null destination.
VTRUTILS_API void ConvertSingleByteToUnicode(const char* source, int sourceLength,
                                             wchar_t* destination, unsigned destinationUnits,
                                             bool reserveTerminator);

/// The same for a whole terminated source, with the terminator reserved. Does nothing for a null
/// source.
VTRUTILS_API void ConvertSingleByteToUnicode(const char* source, wchar_t* destination,
                                             unsigned destinationUnits);

/// Copies text of unknown kind: UTF-16 with a terminator, as `StringIsUnicode` finds it, is
/// reduced, anything else copied byte by byte. Always terminated. False with nothing written for a
/// null `destination` or a size of 0; false with a zeroed destination for a null or empty source.
VTRUTILS_API bool CopyCharToTChar(const char* source, unsigned sourceLength, char* destination,
                                  unsigned destinationSize);

/// The same with the length up to the first zero byte. A null source is false; the destination is
/// then zeroed.
VTRUTILS_API bool CopyCharToTChar(const char* source, char* destination, unsigned destinationSize);

// Owned texts.

/// Makes `*target` an exact-size heap copy of `source`, null for a null or empty source or when
/// memory runs out; the old text is freed, or overwritten when the lengths are equal. Does nothing
/// if `*target` is `source`, which may also be inside the old text. The caller frees `*target` with
/// `free`.
VTRUTILS_API void CopyStringA(char** target, const char* source);
VTRUTILS_API void CopyStringW(wchar_t** target, const wchar_t* source);

// Case.

/// Byte by byte, with the C run-time's `tolower` and `toupper`. Null is ignored.
VTRUTILS_API void MakeLowerCase(char* text);
VTRUTILS_API void MakeUpperCase(char* text);

// GUIDs.

/// "{00000000-0000-0000-0000-000000000000}" in upper case, or the same without braces, cut to
/// `size`. Does nothing for a null buffer or a size below 1.
VTRUTILS_API void GUIDToString(GUID guid, char* buffer, int size, bool braces);

/// Reads 38 characters that begin with "{", or 36 that do not. Each field is read at its fixed
/// place up to the first character that is not hexadecimal; separators are not checked. False, with
/// `result` unchanged, for null and for any other length.
VTRUTILS_API bool GUIDStringToGUID(GUID& result, const char* text);

/// True if all 128 bits are 0.
VTRUTILS_API bool GUIDIsZero(GUID guid);

// File names.

/// Letters and digits of the system's ANSI code page and the 22 characters
/// space $ % ' - _ @ ~ ! ( ) ^ # & + , ; = [ ] . and grave accent are valid; with
/// `allowPathCharacters` also "\" and ":".
VTRUTILS_API bool IsValidFileNameChar(char ch, bool allowPathCharacters);

/// Replaces each of < > : " / \ | ? * by "_", in place. Does nothing for null.
VTRUTILS_API void MakeValidFileName(char* text);

// Command line.

/// Writes parameter `index` of the process's command line, 0 being the program itself; "" if there
/// is none. A quoted parameter ends at the next quote; an unquoted one at the next space, but one
/// that begins with a root path ("C:\") only at a space before which an existing file is named. If
/// all that is left of the line where the parameter begins names an existing file, all of it is the
/// parameter. Its code page is that of a path that the library hands out (FileFunctions.h); a
/// letter that none of these pages has is replaced. The whole buffer is zeroed first. Does nothing
/// for a null buffer or a size below 1.
VTRUTILS_API void GetCommandLineParameter(int index, char* buffer, int size);

#endif
