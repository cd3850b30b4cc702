// Searching, and changing in place.

#include "utilities/text/strings/COMString.h"

#include "utilities/base/ByteSearch.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/TextFinder.h"

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

// Its one-letter macros break C++ headers that are included after it.
#include <mbctype.h>
#include <mbstring.h>

namespace {

/// The number of the character of `size` bytes, as the run-time's tests want it.
unsigned Code(const char* character, std::size_t size) {
    const unsigned first = static_cast<unsigned char>(character[0]);
    return size == 1 ? first : first << 8 | static_cast<unsigned char>(character[1]);
}

/// The characters of a text, for look-up in constant time.
class CharacterSet {
public:
    explicit CharacterSet(const char* text) {
        for (std::size_t size = 0; text != nullptr && *text != '\0'; text += size) {
            size = steps.Length(text);
            if (size == 2 && !hasPairs)
                std::memset(pairs, 0, sizeof pairs);
            hasPairs = hasPairs || size == 2;
            const unsigned code = Code(text, size);
            unsigned char* bits = size == 2 ? pairs : singles;
            bits[code / CHAR_BIT] |= Bit(code);
        }
    }

    /// How many bytes precede the first character of `text` that is in the set, or is not.
    std::size_t BytesUpTo(const char* text, bool inSet) const {
        const char* at = text;
        for (std::size_t size = 0; *at != '\0'; at += size) {
            size = steps.Length(at);
            if (Contains(Code(at, size), size) == inSet)
                break;
        }
        return static_cast<std::size_t>(at - text);
    }

private:
    static unsigned char Bit(unsigned code) {
        return static_cast<unsigned char>(1u << code % CHAR_BIT);
    }

    bool Contains(unsigned code, std::size_t size) const {
        if (size == 2 && !hasPairs)
            return false;
        return ((size == 2 ? pairs : singles)[code / CHAR_BIT] & Bit(code)) != 0;
    }

    vtr::CharacterSteps steps;
    bool hasPairs = false;
    unsigned char singles[256 / CHAR_BIT] = {};
    unsigned char pairs[65536 / CHAR_BIT]; ///< set once there are any
};

bool IsSpace(const char* character, std::size_t size) {
    return _ismbcspace(Code(character, size)) != 0;
}

} // namespace

int CCOMString::Find(const char* text) const noexcept {
    return Find(text, 0);
}

int CCOMString::Find(const char* text, int start) const noexcept {
    const char* all = *this;
    const int length = GetLength();
    const int from = std::max(start, 0);
    if (from > length)
        return -1;
    if (vtr::IsEmptyText(text))
        return from;
    const vtr::TextFinder finder(text, /*exactCase=*/true, vtr::Characters::ofCodePage);
    const char* hit = finder.Next(all + from, all + length);
    return hit != nullptr ? static_cast<int>(hit - all) : -1;
}

int CCOMString::Find(char ch) const noexcept {
    return Find(ch, 0);
}

int CCOMString::Find(char ch, int start) const noexcept {
    const char text[] = {ch, '\0'};
    return ch != '\0' ? Find(text, start) : -1;
}

int CCOMString::FindOneOf(const char* set) const noexcept {
    const char* all = *this;
    const std::size_t place = CharacterSet(set).BytesUpTo(all, /*inSet=*/true);
    return all[place] != '\0' ? static_cast<int>(place) : -1;
}

CCOMString CCOMString::SpanIncluding(const char* set) const noexcept {
    return Left(static_cast<int>(CharacterSet(set).BytesUpTo(*this, /*inSet=*/false)));
}

CCOMString CCOMString::SpanExcluding(const char* set) const noexcept {
    return Left(static_cast<int>(CharacterSet(set).BytesUpTo(*this, /*inSet=*/true)));
}

void CCOMString::MakeUpper() noexcept {
    if (buffer != nullptr)
        _mbsupr(reinterpret_cast<unsigned char*>(buffer));
}

void CCOMString::MakeLower() noexcept {
    if (buffer != nullptr)
        _mbslwr(reinterpret_cast<unsigned char*>(buffer));
}

void CCOMString::MakeReverse() noexcept {
    const vtr::CharacterSteps steps;
    const int length = GetLength();
    for (int i = 0; i < length;) {
        const int size = static_cast<int>(steps.Length(buffer + i));
        std::reverse(buffer + i, buffer + i + size);
        i += size;
    }
    std::reverse(buffer, buffer + length);
}

void CCOMString::TrimLeft() noexcept {
    const vtr::CharacterSteps steps;
    const char* text = *this;
    const char* at = text;
    for (std::size_t size = 0; *at != '\0'; at += size) {
        size = steps.Length(at);
        if (!IsSpace(at, size))
            break;
    }
    if (at == text)
        return;
    const std::size_t length = vtr::TextLength(at);
    std::memmove(buffer, at, length + 1);
    ReAllocString(static_cast<int>(length));
}

void CCOMString::TrimRight() noexcept {
    const vtr::CharacterSteps steps;
    char* trailing = buffer;
    for (char* at = buffer; !vtr::IsEmptyText(at);) {
        const std::size_t size = steps.Length(at);
        const bool isSpace = IsSpace(at, size);
        at += size;
        if (!isSpace)
            trailing = at;
    }
    if (trailing != nullptr)
        *trailing = '\0';
}

int CCOMString::Replace(char from, char to) noexcept {
    if (from == to)
        return 0;
    const vtr::CharacterSteps steps;
    int replaced = 0;
    for (char* at = buffer; !vtr::IsEmptyText(at);) {
        const std::size_t size = steps.Length(at);
        if (size == 1 && *at == from) {
            *at = to;
            ++replaced;
        }
        at += size;
    }
    return replaced;
}

int CCOMString::Replace(const char* find, const char* replacement) noexcept {
    if (vtr::IsEmptyText(find) || IsEmpty())
        return 0;
    const vtr::TextFinder finder(find, /*exactCase=*/true, vtr::Characters::ofCodePage);
    const std::size_t length = vtr::TextLength(buffer);
    const char* end = buffer + length;
    const std::size_t count = finder.Count(buffer, end, length);
    const std::size_t inserted = replacement != nullptr ? vtr::TextLength(replacement) : 0;
    const std::size_t newLength = length - count * finder.Length() + count * inserted;
    // Arguments in the string itself end with it: no more than the last hit reaches into one.
    const bool inPlace = inserted == finder.Length();
    CCOMString changed('\0', 0);
    if (count == 0 ||
        (!inPlace && (newLength >= INT_MAX || !changed.AllocString(static_cast<int>(newLength)))))
        return 0;
    const char* in = buffer;
    char* out = inPlace ? buffer : changed.buffer;
    // In place, a text may be copied onto itself or onto a part of itself.
    const auto put = [&out](const char* text, std::size_t size) {
        if (size > 0)
            std::memmove(out, text, size);
        out += size;
    };
    for (std::size_t i = 0; i < count; ++i) {
        const char* hit = finder.Next(in, end);
        put(in, static_cast<std::size_t>(hit - in));
        put(replacement, inserted);
        in = hit + finder.Length();
    }
    put(in, static_cast<std::size_t>(end - in));
    if (!inPlace)
        std::swap(buffer, changed.buffer);
    return static_cast<int>(count);
}

void CCOMString::Format(const char* format, ...) noexcept {
    if (format == nullptr)
        format = "";
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    const int length = _vscprintf(format, arguments);
    CCOMString text('\0', 0);
    if (length >= 0 && text.AllocString(length)) {
        _vsnprintf(text.buffer, static_cast<std::size_t>(length) + 1, format, again);
        std::swap(buffer, text.buffer);
    }
    va_end(again);
    va_end(arguments);
}
