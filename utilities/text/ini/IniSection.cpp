#include "utilities/text/ini/IniSection.h"

#include "utilities/base/Bisection.h"
#include "utilities/base/MergeSort.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/SameText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/text/ini/IniInternals.h"

#include <cstring>

using vtr::IsEmptyText;
using vtr::StoreCut;
using Internals = vtr::Internals<CIniSection>;
using OwnValues = vtr::Pointers<CIniValue>;
using Parents = vtr::Pointers<char>;

namespace {

void DeletePair(CIniValue* pair) {
    delete pair;
}

bool NeedsQuotes(const char* value, std::size_t length) {
    return length > 0 && (value[0] == ' ' || value[length - 1] == ' ');
}

char* Append(char* out, const char* text, std::size_t length) {
    std::memcpy(out, text, length);
    return out + length;
}

char* AppendPair(char* out, const CIniValue& pair) {
    const char* value = pair.Value() != nullptr ? pair.Value() : "";
    const std::size_t length = std::strlen(value);
    const bool quotes = NeedsQuotes(value, length);
    out = Append(out, pair.Key(), std::strlen(pair.Key()));
    out = Append(out, " = ", 3);
    if (quotes)
        *out++ = '"';
    out = Append(out, value, length);
    if (quotes)
        *out++ = '"';
    return Append(out, "\r\n", 2);
}

std::size_t LargestSavedSize(const CIniValue& pair) {
    constexpr std::size_t punctuation = sizeof " = \"\"\r\n";
    return std::strlen(pair.Key()) + (pair.Value() != nullptr ? std::strlen(pair.Value()) : 0) +
           punctuation;
}

} // namespace

CIniSection::CIniSection() noexcept : CIniSection(nullptr) {}

CIniSection::CIniSection(const char* newName) noexcept
    : keepSorted(false), keysDiffer(false), afterFound(0) {
    SetName(newName);
}

CIniSection::~CIniSection() {
    Clear();
    RemoveParents();
}

void CIniSection::SetName(const char* newName) noexcept {
    char cut[nameSize] = "";
    if (newName != nullptr)
        StoreCut(newName, cut, sizeof cut);
    std::memset(name, 0, sizeof name);
    std::memcpy(name, cut, std::strlen(cut));
}

void CIniSection::AppendToName(char c) noexcept {
    const std::size_t length = std::strlen(name);
    if (length < nameSize - 1) {
        name[length] = c;
        name[length + 1] = '\0';
    }
}

bool CIniSection::AddValue(const char* key, const char* value) noexcept {
    if (IsEmptyText(key))
        return false;
    const std::size_t valueLength = value != nullptr ? std::strlen(value) : 0;
    std::unique_ptr<CIniValue> pair(
        vtr::Internals<CIniValue>::Create(key, std::strlen(key), value, valueLength));
    return AddValue(pair.get()) && pair.release() != nullptr;
}

bool CIniSection::AddValue(CIniValue& value) noexcept {
    std::unique_ptr<CIniValue> pair(new (std::nothrow) CIniValue(value));
    if (pair == nullptr || (pair->Key() == nullptr) != (value.Key() == nullptr) ||
        (pair->Value() == nullptr) != (value.Value() == nullptr))
        return false;
    return AddValue(pair.get()) && pair.release() != nullptr;
}

bool CIniSection::AddValue(CIniValue* value) noexcept {
    keysDiffer = false;
    return value != nullptr && OwnValues(values).Append(value);
}

bool CIniSection::SetValue(const char* key, const char* value) noexcept {
    if (IsEmptyText(key))
        return false;
    CIniValue* pair = Internals::FindFirst(*this, key);
    if (pair != nullptr) {
        pair->SetValue(value);
        return pair->Value() != nullptr || IsEmptyText(value);
    }
    if (!AddValue(key, value))
        return false;
    if (keepSorted)
        Sort();
    return true;
}

bool CIniSection::SetValue(int index, const char* value) noexcept {
    CIniValue* pair = index < 0 ? nullptr : GetValue(static_cast<unsigned>(index));
    if (pair == nullptr)
        return false;
    pair->SetValue(value);
    return pair->Value() != nullptr || IsEmptyText(value);
}

void CIniSection::GetString(const char* key, const char* defaultValue, char* buffer,
                            unsigned int bufferSize) const noexcept {
    if (buffer == nullptr || bufferSize == 0)
        return;
    const CIniValue* pair = Internals::Find(*this, key);
    buffer[0] = '\0';
    if (pair != nullptr && pair->Value() != nullptr)
        StoreCut(pair->Value(), buffer, bufferSize);
    if (buffer[0] != '\0')
        return;
    std::memset(buffer, 0, bufferSize);
    if (defaultValue != nullptr)
        StoreCut(defaultValue, buffer, bufferSize);
}

bool CIniSection::HasValue(const char* key) const noexcept {
    const CIniValue* pair = Internals::Find(*this, key);
    return pair != nullptr && pair->Value() != nullptr;
}

void CIniSection::RemoveKey(unsigned int index) noexcept {
    if (index < values.count)
        delete OwnValues(values).Remove(index);
}

void CIniSection::RemoveKey(const char* key) noexcept {
    if (IsEmptyText(key))
        return;
    // The key may be the text of a pair that is removed.
    const vtr::OwnedText ownKey = vtr::CopyText(key);
    if (ownKey == nullptr)
        return;
    OwnValues(values).RemoveIf(
        [&](const CIniValue* pair) { return vtr::SameText(pair->Key(), ownKey.get()); },
        DeletePair);
}

void CIniSection::Clear() noexcept {
    OwnValues(values).Clear(DeletePair);
}

void CIniSection::AddParent(const char* parent) noexcept {
    vtr::OwnedText copy = vtr::CopyText(parent);
    if (copy != nullptr && Parents(parents).Append(copy.get()))
        static_cast<void>(copy.release());
}

const char* CIniSection::GetParent(int index) const noexcept {
    return index < 0 ? nullptr : parents.At(static_cast<unsigned>(index));
}

void CIniSection::RemoveParents() noexcept {
    Parents(parents).Clear(vtr::Free());
}

void CIniSection::Sort() noexcept {
    const auto less = [](const CIniValue* a, const CIniValue* b) {
        return vtr::CompareText(a->Key(), b->Key()) < 0;
    };
    keepSorted = vtr::MergeSort(values.slots, values.count, less);
    keysDiffer = keepSorted;
    for (unsigned i = 1; keysDiffer && i < values.count; ++i)
        keysDiffer = less(values.slots[i - 1], values.slots[i]);
}

bool CIniSection::Save(std::FILE* stream) const noexcept {
    if (stream == nullptr || name[0] == '\0')
        return false;
    std::size_t size = sizeof name + sizeof "[]\r\n";
    for (const CIniValue* pair : Internals::Values(*this)) {
        if (!IsEmptyText(pair->Key()))
            size += LargestSavedSize(*pair);
    }
    const vtr::OwnedText text(static_cast<char*>(std::malloc(size)));
    if (text == nullptr)
        return false;
    char* out = text.get();
    *out++ = '[';
    out = Append(out, name, std::strlen(name));
    out = Append(out, "]\r\n", 3);
    for (const CIniValue* pair : Internals::Values(*this)) {
        if (!IsEmptyText(pair->Key()))
            out = AppendPair(out, *pair);
    }
    const std::size_t length = static_cast<std::size_t>(out - text.get());
    return std::fwrite(text.get(), 1, length, stream) == length;
}

CIniValue* Internals::Find(const CIniSection& section, const char* key) {
    if (IsEmptyText(key))
        return nullptr;
    if (!section.keepSorted)
        return FindFirst(section, key);
    // Sections are mostly read in order, so the pair after the one found last is tried first. Where
    // keys repeat, that would make the pair that is found depend on what was read before.
    const unsigned count = section.values.count;
    const int index =
        vtr::Bisect(count, section.keysDiffer ? section.afterFound : count, [&](unsigned i) {
            return vtr::CompareText(section.values.slots[i]->Key(), key);
        });
    if (index < 0)
        return nullptr;
    section.afterFound = static_cast<unsigned>(index) + 1;
    return section.values.slots[index];
}

CIniValue* Internals::FindFirst(const CIniSection& section, const char* key) {
    for (CIniValue* pair : Values(section)) {
        if (vtr::SameText(pair->Key(), key))
            return pair;
    }
    return nullptr;
}
