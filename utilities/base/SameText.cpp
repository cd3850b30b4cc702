#include "utilities/base/SameText.h"

#include "utilities/base/MultibyteText.h"

#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>

// Its one-letter macros break C++ headers that are included after it.
#include <mbctype.h>
// After it, because it needs it.
#include <mbstring.h>

namespace vtr {

namespace {

constexpr unsigned firstBeyondAscii = 0x80;

constexpr std::array<unsigned char, firstBeyondAscii> MakeFold() {
    std::array<unsigned char, firstBeyondAscii> fold{};
    for (unsigned c = 0; c < firstBeyondAscii; ++c)
        fold[c] = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    return fold;
}

constexpr std::array<unsigned char, firstBeyondAscii> asciiFold = MakeFold();

/// The rest of two texts, from the first character on that is not ASCII in both. The order of bytes
/// above 0x7F in single-byte code pages is the run-time's own affair; it differs between versions.
/// Not inlined, because `CompareText` would save a dozen registers at each call for its sake.
[[gnu::noinline]] int CompareBeyondAscii(const char* left, const char* right) {
    if (!IsMultibyteCodePage())
        return _stricmp(left, right);
    for (;;) {
        const FoldedCharacter a = FoldCharacter(left, /*multibyte=*/true);
        const FoldedCharacter b = FoldCharacter(right, /*multibyte=*/true);
        if (a.code != b.code)
            return a.code < b.code ? -1 : 1;
        if (a.code == 0)
            return 0;
        left = a.next;
        right = b.next;
    }
}

} // namespace

FoldedCharacter FoldCharacter(const char* text, bool multibyte) {
    const unsigned first = static_cast<unsigned char>(*text);
    if (first < firstBeyondAscii)
        return {asciiFold[first], first == 0 ? text : text + 1};
    if (!multibyte)
        return {static_cast<unsigned>(std::tolower(static_cast<int>(first))), text + 1};
    if (!_ismbblead(first))
        return {_mbctolower(first), text + 1};
    const unsigned second = static_cast<unsigned char>(text[1]);
    return {_mbctolower(first << 8 | second), second == 0 ? text + 1 : text + 2};
}

int CompareText(const char* left, const char* right) {
    if (left == nullptr)
        left = "";
    if (right == nullptr)
        right = "";
    // Names in a list share their beginnings, and bytes that are the same need no folding.
    std::size_t same = 0;
    while (left[same] == right[same] && static_cast<signed char>(left[same]) > 0)
        ++same;
    left += same;
    right += same;
    for (;; ++left, ++right) {
        const unsigned a = static_cast<unsigned char>(*left);
        const unsigned b = static_cast<unsigned char>(*right);
        if ((a | b) >= firstBeyondAscii)
            return CompareBeyondAscii(left, right);
        if (asciiFold[a] != asciiFold[b])
            return asciiFold[a] < asciiFold[b] ? -1 : 1;
        if (a == 0)
            return 0;
    }
}

bool SameText(const char* left, const char* right) {
    return CompareText(left, right) == 0;
}

std::size_t HashText(const char* text) {
    std::uint64_t hash = 14695981039346656037u;
    const bool multibyte = IsMultibyteCodePage();
    for (FoldedCharacter c = FoldCharacter(text, multibyte); c.code != 0;
         c = FoldCharacter(c.next, multibyte))
        hash = (hash ^ c.code) * 1099511628211u;
    return static_cast<std::size_t>(hash);
}

} // namespace vtr
