#include "utilities/containers/StringDynArray.h"

#include "common/Require.h"
#include "utilities/base/Layout.h"
#include "utilities/base/MultibyteText.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/PtrArray.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <string>
#include <utility>
#include <windows.h>

namespace {

using vtr::OwnedChars;

int Compare(const char* left, const char* right) {
    return _stricmp(left, right);
}

int Compare(const wchar_t* left, const wchar_t* right) {
    return _wcsicmp(left, right);
}

/// As entries compare, so null is below every text but null.
template <class Char>
bool IsLess(const Char* left, const Char* right) {
    if (left == nullptr || right == nullptr)
        return left == nullptr && right != nullptr;
    return Compare(left, right) < 0;
}

/// A copy as an entry is kept, so null for an empty text. False when memory runs out.
template <class Char>
bool Keep(const Char* text, OwnedChars<Char>& kept) {
    kept = vtr::CopyText(text);
    return kept != nullptr || vtr::IsEmptyText(text);
}

/// Zero for a text that cannot be converted. UTF-8, as ANSI code page, takes no flags.
int ToOther(const char* text, wchar_t* out, int units) {
    const DWORD flags = GetACP() == CP_UTF8 ? 0 : MB_PRECOMPOSED;
    return MultiByteToWideChar(CP_ACP, flags, text, /*cbMultiByte=*/-1, out, units);
}

int ToOther(const wchar_t* text, char* out, int units) {
    return WideCharToMultiByte(CP_ACP, /*dwFlags=*/0, text, /*cchWideChar=*/-1, out, units,
                               /*lpDefaultChar=*/nullptr, /*lpUsedDefaultChar=*/nullptr);
}

/// The text in the other kind, null for an empty one. False when it cannot be had.
template <class From, class To>
bool Convert(const From* text, OwnedChars<To>& converted) {
    if (vtr::IsEmptyText(text))
        return true;
    const int units = ToOther(text, static_cast<To*>(nullptr), 0);
    if (units <= 0)
        return false;
    converted = vtr::AllocateChars<To>(static_cast<std::size_t>(units));
    return converted != nullptr && ToOther(text, converted.get(), units) == units;
}

template <class Char>
void FreeAll(vtr::PointerFields<Char>& texts) {
    vtr::Pointers(texts).Clear([](Char* text) { std::free(text); });
}

/// False, with none of them, when memory runs out. Requires: an empty target.
template <class Char>
bool CopyAll(const vtr::PointerFields<Char>& source, vtr::PointerFields<Char>& target) {
    VTR_REQUIRE(target.count == 0);
    for (const Char* text : vtr::ConstPointers(source)) {
        OwnedChars<Char> copy;
        if (!Keep(text, copy) || !vtr::Pointers(target).Append(copy.get())) {
            FreeAll(target);
            return false;
        }
        static_cast<void>(copy.release());
    }
    return true;
}

char Fold(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

wchar_t Fold(wchar_t c) {
    return static_cast<wchar_t>(std::towlower(c));
}

/// True when a character begins at `place`. `step` stands at an earlier one of the same text and
/// moves up to `place` or past it.
bool IsCharacter(const vtr::CharacterSteps& steps, const char*& step, const char* place) {
    while (step < place)
        step += steps.Length(step);
    return step == place;
}

bool IsCharacter(const vtr::CharacterSteps&, const wchar_t*&, const wchar_t*) {
    return true;
}

/// Looks for one text in others, in time linear in their length.
template <class Char>
class SubStringFinder {
public:
    /// Requires: not empty.
    explicit SubStringFinder(const Char* text)
        : length(std::char_traits<Char>::length(text)), wanted(vtr::AllocateChars<Char>(length)),
          border(vtr::AllocateChars<std::size_t>(length)) {
        VTR_REQUIRE(length > 0);
        if (!HasMemory())
            return;
        std::transform(text, text + length, wanted.get(), [](Char c) { return Fold(c); });
        border.get()[0] = 0;
        for (std::size_t i = 1; i < length; ++i)
            border.get()[i] = Advance(border.get()[i - 1], wanted.get()[i]);
    }

    bool HasMemory() const { return wanted != nullptr && border != nullptr; }

    bool IsIn(const Char* text) const {
        const Char* step = text;
        std::size_t matched = 0;
        for (const Char* place = text; place != nullptr && *place != 0; ++place) {
            matched = Advance(matched, Fold(*place));
            if (matched < length)
                continue;
            if (IsCharacter(steps, step, place + 1 - length))
                return true;
            matched = border.get()[length - 1];
        }
        return false;
    }

private:
    /// How much of the beginning matches when `next` follows what matched before.
    std::size_t Advance(std::size_t matched, Char next) const {
        while (matched > 0 && wanted.get()[matched] != next)
            matched = border.get()[matched - 1];
        return wanted.get()[matched] == next ? matched + 1 : 0;
    }

    std::size_t length;
    OwnedChars<Char> wanted; ///< in lower case
    /// For each beginning, the length of its longest end that is also a beginning.
    OwnedChars<std::size_t> border;
    vtr::CharacterSteps steps;
};

template <class Char>
int FirstWith(const vtr::PointerFields<Char>& entries, const Char* text) {
    const vtr::ConstPointers texts(entries);
    const SubStringFinder<Char> finder(text);
    if (!finder.HasMemory())
        return -1;
    const auto found = std::find_if(texts.begin(), texts.end(),
                                    [&](const Char* entry) { return finder.IsIn(entry); });
    return found != texts.end() ? static_cast<int>(found - texts.begin()) : -1;
}

} // namespace

template <>
struct vtr::Internals<CStringDynArray> {
    static_assert(sizeof(CStringDynArray) == vtr::ByPointer(48, 32));
    VTR_FIELD_AT(CStringDynArray, wide, 0);
    VTR_FIELD_AT(CStringDynArray, wideTexts, 8, 4);
    VTR_FIELD_AT(CStringDynArray, narrowTexts, 24, 16);
    VTR_FIELD_AT(CStringDynArray, sorted, 40, 28);
    VTR_FIELD_AT(CStringDynArray, maintainSorted, 41, 29);

    template <class Char>
    static bool Add(CStringDynArray& array, PointerFields<Char>& entries, OwnedChars<Char> text) {
        Pointers texts(entries);
        const auto* place = texts.end();
        if (array.maintainSorted)
            place = std::upper_bound(texts.begin(), texts.end(), text.get(), IsLess<Char>);
        if (!texts.Insert(static_cast<unsigned>(place - texts.begin()), text.get()))
            return false;
        static_cast<void>(text.release());
        array.sorted = array.maintainSorted;
        return true;
    }

    template <class Char>
    static int Find(const CStringDynArray& array, const PointerFields<Char>& entries,
                    const Char* text) {
        const ConstPointers texts(entries);
        if (IsEmptyText(text))
            text = nullptr;
        const auto isSame = [text](const Char* entry) {
            return entry != nullptr && text != nullptr ? Compare(entry, text) == 0 : entry == text;
        };
        Char* const* found = texts.end();
        if (array.sorted)
            found = std::lower_bound(texts.begin(), texts.end(), text, IsLess<Char>);
        else
            found = std::find_if(texts.begin(), texts.end(), isSame);
        return found != texts.end() && isSame(*found) ? static_cast<int>(found - texts.begin())
                                                      : -1;
    }
};

using Internals = vtr::Internals<CStringDynArray>;

CStringDynArray::CStringDynArray() noexcept : CStringDynArray(/*keepWide=*/false) {}

CStringDynArray::CStringDynArray(bool keepWide) noexcept
    : wide(keepWide), sorted(true), maintainSorted(false) {}

CStringDynArray::CStringDynArray(const CStringDynArray& other) noexcept
    : wide(other.wide), sorted(other.sorted), maintainSorted(other.maintainSorted) {
    if (!CopyAll(other.wideTexts, wideTexts) || !CopyAll(other.narrowTexts, narrowTexts))
        Clear();
}

CStringDynArray& CStringDynArray::operator=(const CStringDynArray& other) noexcept {
    if (this == &other)
        return *this;
    CStringDynArray copy(other);
    vtr::Pointers(wideTexts).Swap(copy.wideTexts);
    vtr::Pointers(narrowTexts).Swap(copy.narrowTexts);
    wide = copy.wide;
    sorted = copy.sorted;
    maintainSorted = copy.maintainSorted;
    return *this;
}

CStringDynArray::~CStringDynArray() {
    Clear();
}

bool CStringDynArray::AddString(const wchar_t* text) noexcept {
    vtr::OwnedText narrowed;
    OwnedChars<wchar_t> same;
    if (wide)
        return Keep(text, same) && Internals::Add(*this, wideTexts, std::move(same));
    return Convert(text, narrowed) && Internals::Add(*this, narrowTexts, std::move(narrowed));
}

bool CStringDynArray::AddString(const char* text, bool) noexcept {
    vtr::OwnedText same;
    OwnedChars<wchar_t> widened;
    if (wide)
        return Convert(text, widened) && Internals::Add(*this, wideTexts, std::move(widened));
    return Keep(text, same) && Internals::Add(*this, narrowTexts, std::move(same));
}

int CStringDynArray::FindString(const char* text) noexcept {
    if (!wide)
        return Internals::Find(*this, narrowTexts, text);
    OwnedChars<wchar_t> converted;
    return Convert(text, converted) ? Internals::Find(*this, wideTexts, converted.get()) : -1;
}

int CStringDynArray::FindString(const wchar_t* text) noexcept {
    if (wide)
        return Internals::Find(*this, wideTexts, text);
    vtr::OwnedText converted;
    return Convert(text, converted) ? Internals::Find(*this, narrowTexts, converted.get()) : -1;
}

int CStringDynArray::FindSubString(const char* text) noexcept {
    if (vtr::IsEmptyText(text))
        return -1;
    if (!wide)
        return FirstWith(narrowTexts, text);
    OwnedChars<wchar_t> converted;
    return Convert(text, converted) ? FirstWith<wchar_t>(wideTexts, converted.get()) : -1;
}

const wchar_t* CStringDynArray::GetWCString(unsigned int index) const noexcept {
    return vtr::ConstPointers(wideTexts).At(index);
}

const char* CStringDynArray::GetChString(unsigned int index) const noexcept {
    return vtr::ConstPointers(narrowTexts).At(index);
}

const char* CStringDynArray::GetString(unsigned int index) const noexcept {
    return vtr::ConstPointers(narrowTexts).At(index);
}

unsigned int CStringDynArray::NumStrings() const noexcept {
    return wide ? wideTexts.count : narrowTexts.count;
}

bool CStringDynArray::RemoveString(unsigned int index) noexcept {
    if (index >= NumStrings())
        return false;
    if (wide)
        std::free(vtr::Pointers(wideTexts).Remove(index));
    else
        std::free(vtr::Pointers(narrowTexts).Remove(index));
    return true;
}

void CStringDynArray::Clear() noexcept {
    FreeAll(wideTexts);
    FreeAll(narrowTexts);
    sorted = true;
}

void CStringDynArray::SetMaintainSorted(bool on) noexcept {
    maintainSorted = on;
    if (on && !sorted)
        Sort();
}

void CStringDynArray::Sort() noexcept {
    vtr::Pointers wideOnes(wideTexts);
    vtr::Pointers narrowOnes(narrowTexts);
    // Where there is no memory for the merging, it is done in place.
    std::stable_sort(wideOnes.begin(), wideOnes.end(), IsLess<wchar_t>);
    std::stable_sort(narrowOnes.begin(), narrowOnes.end(), IsLess<char>);
    sorted = true;
}
