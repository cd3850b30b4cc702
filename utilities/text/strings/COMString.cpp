// Storage, conversion, comparing, joining and slicing.

#include "utilities/text/strings/COMString.h"

#include "common/Require.h"
#include "utilities/base/ByteSearch.h"
#include "utilities/base/Layout.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <functional>
#include <malloc.h>
#include <utility>
#include <windows.h>

#include <mbstring.h>

template <>
struct vtr::Internals<CCOMString> {
    static_assert(sizeof(CCOMString) == vtr::ByPointer(16, 8));
    VTR_FIELD_AT(CCOMString, buffer, 8, 4);

    static bool Append(CCOMString& string, const char* text, std::size_t added);
};

using Internals = vtr::Internals<CCOMString>;

namespace {

const char* OrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(OrEmpty(text));
}

/// Room for the text, with a terminator after it, in place of `old`; null if memory runs out.
char* Resize(char* old, std::size_t length) {
    char* block = length < INT_MAX ? static_cast<char*>(std::realloc(old, length + 1)) : nullptr;
    if (block != nullptr)
        block[length] = '\0';
    return block;
}

vtr::OwnedText Allocate(std::size_t length) {
    return vtr::OwnedText(Resize(nullptr, length));
}

bool Take(char*& buffer, vtr::OwnedText block) {
    if (block == nullptr)
        return false;
    std::free(buffer);
    buffer = block.release();
    return true;
}

std::size_t LengthOf(int length) {
    return length > 0 ? static_cast<std::size_t>(length) : 0;
}

/// The bytes of the block, which has no end that is fixed at that of the text; null counts as "".
[[maybe_unused]] std::size_t RoomOf(char* block) {
    return block != nullptr ? _msize(block) : 1;
}

vtr::OwnedText Narrow(const wchar_t* text) {
    static constexpr std::size_t tooLong = 0x40000000;
    const std::size_t units = text != nullptr ? std::wcslen(text) : 0;
    if (units >= tooLong)
        return nullptr;
    const auto convert = [&](char* out, int size) {
        return WideCharToMultiByte(CP_THREAD_ACP, /*dwFlags=*/0, text, static_cast<int>(units), out,
                                   size, /*lpDefaultChar=*/nullptr, /*lpUsedDefaultChar=*/nullptr);
    };
    const int size = units > 0 ? convert(nullptr, 0) : 0;
    vtr::OwnedText block = Allocate(LengthOf(size));
    if (block != nullptr && size > 0)
        convert(block.get(), size);
    return block;
}

} // namespace

CCOMString::CCOMString() noexcept : buffer(Allocate(0).release()) {}

CCOMString::CCOMString(const CCOMString& other) noexcept : buffer(nullptr) {
    StringCopy(other.GetLength(), other);
}

CCOMString::CCOMString(const char* text) noexcept : buffer(nullptr) {
    ConcatCopy(text, "");
}

CCOMString::CCOMString(char ch, int count) noexcept : buffer(nullptr) {
    if (count > 0 && AllocString(count))
        std::memset(buffer, ch, LengthOf(count));
}

CCOMString::CCOMString(const wchar_t* text) noexcept : buffer(Narrow(text).release()) {}

CCOMString::~CCOMString() {
    std::free(buffer);
}

CCOMString& CCOMString::operator=(const CCOMString& other) noexcept {
    if (this != &other)
        StringCopy(other.GetLength(), other);
    return *this;
}

CCOMString& CCOMString::operator=(const char* text) noexcept {
    ConcatCopy(text, "");
    return *this;
}

CCOMString& CCOMString::operator=(const wchar_t* text) noexcept {
    Take(buffer, Narrow(text));
    return *this;
}

CCOMString::operator const char*() const noexcept {
    return OrEmpty(buffer);
}

char CCOMString::operator[](int index) const noexcept {
    VTR_REQUIRE(index >= 0 && LengthOf(index) < RoomOf(buffer));
    return OrEmpty(buffer)[index];
}

void CCOMString::SetAt(int index, char ch) noexcept {
    VTR_REQUIRE(index >= 0 && (buffer == nullptr || LengthOf(index) < RoomOf(buffer)));
    if (buffer != nullptr)
        buffer[index] = ch;
}

int CCOMString::GetLength() const noexcept {
    return static_cast<int>(vtr::TextLength(OrEmpty(buffer)));
}

bool CCOMString::IsEmpty() const noexcept {
    return vtr::IsEmptyText(buffer);
}

void CCOMString::Empty() noexcept {
    if (buffer != nullptr)
        *buffer = '\0';
}

int CCOMString::Compare(const char* text) const noexcept {
    return _mbscmp(Bytes(buffer), Bytes(text));
}

int CCOMString::Compare(const CCOMString& other) const noexcept {
    return Compare(other.buffer);
}

int CCOMString::CompareNoCase(const char* text) const noexcept {
    return vtr::CompareText(buffer, text);
}

int CCOMString::CompareNoCase(const CCOMString& other) const noexcept {
    return CompareNoCase(other.buffer);
}

int CCOMString::Collate(const char* text) const noexcept {
    return _mbscoll(Bytes(buffer), Bytes(text));
}

int CCOMString::Collate(const CCOMString& other) const noexcept {
    return Collate(other.buffer);
}

bool CCOMString::operator==(const char* text) const noexcept {
    return Compare(text) == 0;
}

bool CCOMString::operator==(const CCOMString& other) const noexcept {
    return Compare(other) == 0;
}

bool CCOMString::operator!=(const char* text) const noexcept {
    return Compare(text) != 0;
}

bool CCOMString::operator!=(const CCOMString& other) const noexcept {
    return Compare(other) != 0;
}

bool CCOMString::operator<(const char* text) const noexcept {
    return Compare(text) < 0;
}

bool CCOMString::operator<(const CCOMString& other) const noexcept {
    return Compare(other) < 0;
}

bool CCOMString::operator>(const char* text) const noexcept {
    return Compare(text) > 0;
}

bool CCOMString::operator>(const CCOMString& other) const noexcept {
    return Compare(other) > 0;
}

bool CCOMString::operator<=(const char* text) const noexcept {
    return Compare(text) <= 0;
}

bool CCOMString::operator<=(const CCOMString& other) const noexcept {
    return Compare(other) <= 0;
}

bool CCOMString::operator>=(const char* text) const noexcept {
    return Compare(text) >= 0;
}

bool CCOMString::operator>=(const CCOMString& other) const noexcept {
    return Compare(other) >= 0;
}

bool operator==(const char* left, const CCOMString& right) noexcept {
    return right.Compare(left) == 0;
}

bool operator!=(const char* left, const CCOMString& right) noexcept {
    return right.Compare(left) != 0;
}

bool operator<(const char* left, const CCOMString& right) noexcept {
    return right.Compare(left) > 0;
}

bool operator>(const char* left, const CCOMString& right) noexcept {
    return right.Compare(left) < 0;
}

bool operator<=(const char* left, const CCOMString& right) noexcept {
    return right.Compare(left) >= 0;
}

bool operator>=(const char* left, const CCOMString& right) noexcept {
    return right.Compare(left) <= 0;
}

CCOMString& CCOMString::operator+=(char ch) noexcept {
    ConcatCopy(ch);
    return *this;
}

CCOMString& CCOMString::operator+=(const CCOMString& other) noexcept {
    ConcatCopy(other.buffer);
    return *this;
}

CCOMString& CCOMString::operator+=(const char* text) noexcept {
    ConcatCopy(text);
    return *this;
}

CCOMString& CCOMString::operator+=(const wchar_t* text) noexcept {
    ConcatCopy(Narrow(text).get());
    return *this;
}

CCOMString CCOMString::operator+(const CCOMString& other) const noexcept {
    return *this + OrEmpty(other.buffer);
}

CCOMString CCOMString::operator+(const char* text) const noexcept {
    CCOMString joined('\0', 0);
    joined.ConcatCopy(buffer, text);
    return joined;
}

CCOMString CCOMString::operator+(const wchar_t* text) const noexcept {
    return *this + OrEmpty(Narrow(text).get());
}

CCOMString CCOMString::Left(int count) const noexcept {
    return Mid(0, count);
}

CCOMString CCOMString::Right(int count) const noexcept {
    const int length = GetLength();
    return Mid(length - std::clamp(count, 0, length), length);
}

CCOMString CCOMString::Mid(int start) const noexcept {
    return Mid(start, INT_MAX);
}

CCOMString CCOMString::Mid(int start, int count) const noexcept {
    const int length = GetLength();
    const int from = std::clamp(start, 0, length);
    CCOMString part('\0', 0);
    StringCopy(part, std::clamp(count, 0, length - from), from, /*extra=*/0);
    return part;
}

wchar_t* CCOMString::AllocSysString() const noexcept {
    const auto convert = [this](wchar_t* out, int units) {
        return MultiByteToWideChar(CP_ACP, /*dwFlags=*/0, OrEmpty(buffer), GetLength(), out, units);
    };
    const int units = convert(nullptr, 0);
    wchar_t* text = SysAllocStringLen(nullptr, static_cast<UINT>(units));
    if (text != nullptr)
        convert(text, units);
    return text;
}

bool CCOMString::AllocString(int length) noexcept {
    std::free(buffer);
    buffer = Allocate(LengthOf(length)).release();
    return buffer != nullptr;
}

bool CCOMString::ReAllocString(int length) noexcept {
    char* block = Resize(buffer, LengthOf(length));
    if (block == nullptr)
        return false;
    buffer = block;
    return true;
}

bool CCOMString::StringCopy(int length, const char* source) noexcept {
    VTR_REQUIRE(source != nullptr || length < 1);
    vtr::OwnedText block = Allocate(LengthOf(length));
    if (block != nullptr)
        std::memcpy(block.get(), OrEmpty(source), LengthOf(length));
    return Take(buffer, std::move(block));
}

bool CCOMString::StringCopy(CCOMString& destination, int count, int start,
                            int extra) const noexcept {
    VTR_REQUIRE(LengthOf(start) + LengthOf(count) <= RoomOf(buffer));
    const std::size_t copied = LengthOf(count);
    vtr::OwnedText block = Allocate(copied + LengthOf(extra));
    if (block != nullptr) {
        std::memcpy(block.get(), OrEmpty(buffer) + LengthOf(start), copied);
        std::memset(block.get() + copied, 0, LengthOf(extra));
    }
    return Take(destination.buffer, std::move(block));
}

bool Internals::Append(CCOMString& string, const char* text, std::size_t added) {
    char*& buffer = string.buffer;
    if (added == 0)
        return true;
    const std::size_t length = vtr::TextLength(OrEmpty(buffer));
    const std::less<> isBefore;
    const bool isOwn =
        buffer != nullptr && !isBefore(text, buffer) && !isBefore(buffer + length, text);
    const std::ptrdiff_t place = isOwn ? text - buffer : 0;
    char* block = Resize(buffer, length + added);
    if (block == nullptr)
        return false;
    buffer = block;
    std::memcpy(buffer + length, isOwn ? buffer + place : text, added);
    return true;
}

bool CCOMString::ConcatCopy(char ch) noexcept {
    return Internals::Append(*this, &ch, ch != '\0' ? 1 : 0);
}

bool CCOMString::ConcatCopy(const char* text) noexcept {
    return Internals::Append(*this, text, vtr::TextLength(OrEmpty(text)));
}

bool CCOMString::ConcatCopy(const char* first, const char* second) noexcept {
    const std::size_t firstLength = vtr::TextLength(OrEmpty(first));
    const std::size_t secondLength = vtr::TextLength(OrEmpty(second));
    vtr::OwnedText block = Allocate(firstLength + secondLength);
    if (block != nullptr) {
        std::memcpy(block.get(), OrEmpty(first), firstLength);
        std::memcpy(block.get() + firstLength, OrEmpty(second), secondLength);
    }
    return Take(buffer, std::move(block));
}
