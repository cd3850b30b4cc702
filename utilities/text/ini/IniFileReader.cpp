#include "utilities/text/ini/IniFileReader.h"

#include "utilities/base/Bisection.h"
#include "utilities/base/MergeSort.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/ReplacingFile.h"
#include "utilities/base/SameText.h"
#include "utilities/base/TextFile.h"
#include "utilities/text/ini/IniInheritance.h"
#include "utilities/text/ini/IniInternals.h"
#include "utilities/text/ini/IniParser.h"
#include "vtrfutls/Log.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <windows.h>

using vtr::IsEmptyText;
using Internals = vtr::Internals<CIniFileReader>;

CIniFileReader::CIniFileReader() noexcept
    : fileName(nullptr), lastSectionIndex(-1), keepSorted(false), initialized(false) {}

CIniFileReader::~CIniFileReader() {
    Reset();
    SetFileName(nullptr);
}

bool CIniFileReader::Init(const char* path, bool sort) noexcept {
    Reset();
    vtr::FileBytes file;
    if (IsEmptyText(path) || !SetFileName(path) || !file.Read(path) || file.Size() == 0)
        return false;
    initialized = InitFromBuffer(file.Data(), file.Size(), sort) && ProcessInheritance();
    return initialized;
}

bool CIniFileReader::InitFromBuffer(const unsigned char* data, unsigned int length,
                                    bool sort) noexcept {
    Reset();
    if (data == nullptr || length > INT_MAX)
        return false;
    const vtr::SingleByteText text(data, length);
    if (!text.Good() || !vtr::IniParser(*this, text.Text(), text.Length()).Run())
        return false;
    if (sort)
        Sort();
    return true;
}

bool CIniFileReader::ProcessInheritance() noexcept {
    using vtr::IniInheritance;
    IniInheritance inheritance(*this);
    if (inheritance.ResolveAll())
        return true;
    Reset();
    switch (inheritance.WhatFailed()) {
    case IniInheritance::Trouble::copies:
        LogFmtA("CIniFileReader::ProcessInheritance: departing, more than %u pairs to copy",
                IniInheritance::mostCopies);
        break;
    case IniInheritance::Trouble::steps:
        LogFmtA("CIniFileReader::ProcessInheritance: departing, more than %u steps to take",
                IniInheritance::mostSteps);
        break;
    default:
        Log("CIniFileReader::ProcessInheritance: departing, no memory");
    }
    return false;
}

bool CIniFileReader::ProcessParentage(CIniSection* section, int depth) noexcept {
    constexpr int deepest = vtr::IniInheritance::mostLevels;
    return vtr::IniInheritance(*this).Resolve(section, deepest + 1 - std::max(depth, 1));
}

bool CIniFileReader::SetFileName(const char* path) noexcept {
    vtr::AssignText(&fileName, path);
    return fileName != nullptr || IsEmptyText(path);
}

bool CIniFileReader::GetString(const char* section, const char* key, const char* defaultValue,
                               char* buffer, unsigned int bufferSize) const noexcept {
    if (key == nullptr || buffer == nullptr || bufferSize == 0)
        return false;
    const CIniSection* found = Internals::FindNear(*this, section);
    if (found != nullptr) {
        found->GetString(key, defaultValue, buffer, bufferSize);
        return true;
    }
    CIniSection().GetString(key, defaultValue, buffer, bufferSize);
    return false;
}

bool CIniFileReader::KeyExists(const char* section, const char* key) const noexcept {
    static constexpr char missing[] = "NOPE_NO_KEY";
    char value[256];
    return GetString(section, key, missing, value, sizeof value) && value[0] != '\0' &&
           std::strcmp(value, missing) != 0;
}

bool CIniFileReader::SectionExists(const char* name) const noexcept {
    return FindSection(name, nullptr) != nullptr;
}

CIniSection* CIniFileReader::GetSection(const char* name) noexcept {
    return FindSection(name, nullptr);
}

CIniSection* CIniFileReader::GetSection(int index) noexcept {
    return index < 0 ? nullptr : sections.At(static_cast<unsigned>(index));
}

const char* CIniFileReader::SectionName(unsigned int index) const noexcept {
    const CIniSection* section = sections.At(index);
    return section != nullptr ? section->Name() : nullptr;
}

int CIniFileReader::GetNumValues(int sectionIndex) const noexcept {
    const CIniSection* section =
        sectionIndex < 0 ? nullptr : sections.At(static_cast<unsigned>(sectionIndex));
    return section != nullptr ? static_cast<int>(section->NumValues()) : 0;
}

const CIniValue* CIniFileReader::GetValue(int sectionIndex, int valueIndex) const noexcept {
    if (sectionIndex < 0 || valueIndex < 0)
        return nullptr;
    const CIniSection* section = sections.At(static_cast<unsigned>(sectionIndex));
    return section != nullptr ? section->GetValue(static_cast<unsigned>(valueIndex)) : nullptr;
}

bool CIniFileReader::SetValue(int sectionIndex, int valueIndex, const char* value) noexcept {
    CIniSection* section = GetSection(sectionIndex);
    return section != nullptr && section->SetValue(valueIndex, value);
}

bool CIniFileReader::SetValue(const char* section, const char* key, const char* value) noexcept {
    if (IsEmptyText(section) || IsEmptyText(key)) {
        Log("CIniFileReader::SetValue: departing, NULL input");
        return false;
    }
    const int index = Internals::FindFirst(*this, section);
    CIniSection* target = index >= 0 ? GetSection(index) : Internals::AddSection(*this, section);
    if (target == nullptr)
        return false;
    if (index < 0 && keepSorted)
        Sort();
    const bool set = target->SetValue(key, value);
    if (keepSorted)
        target->Sort();
    return set;
}

void CIniFileReader::Sort() noexcept {
    const DWORD start = GetTickCount();
    const auto less = [](const CIniSection* a, const CIniSection* b) {
        return vtr::CompareText(a->Name(), b->Name()) < 0;
    };
    const bool inOrder = vtr::MergeSort(sections.slots, sections.count, less);
    LogFmtA("CIniFileReader::Sort: sorting %u section names took %u ms", sections.count,
            static_cast<unsigned>(GetTickCount() - start));
    for (CIniSection* section : Internals::Sections(*this))
        section->Sort();
    keepSorted = inOrder;
    LogFmtA("CIniFileReader::Sort: sorting %u sections + section names took %u ms", sections.count,
            static_cast<unsigned>(GetTickCount() - start));
}

bool CIniFileReader::Save() noexcept {
    if (fileName == nullptr)
        return false;
    if (keepSorted)
        Sort();
    vtr::ReplacingFile file(fileName);
    if (!file.Open())
        return false;
    static constexpr char separator[] = "\r\n\r\n";
    for (const CIniSection* section : Internals::Sections(*this)) {
        const bool named = section->Name()[0] != '\0';
        if ((named && !section->Save(file.Stream())) ||
            std::fwrite(separator, 1, sizeof separator - 1, file.Stream()) != sizeof separator - 1)
            return false;
    }
    return file.Commit();
}

void CIniFileReader::Reset() noexcept {
    Internals::Sections(*this).Clear([](CIniSection* section) { delete section; });
    lastSectionIndex = -1;
    initialized = false;
}

void CIniFileReader::ClearValues() noexcept {
    Reset();
}

CIniSection* CIniFileReader::FindSection(const char* sectionName, int* indexOut) const noexcept {
    const int index = Internals::Find(*this, sectionName);
    if (index < 0)
        return nullptr;
    if (indexOut != nullptr)
        *indexOut = index;
    return sections.slots[index];
}

void CIniFileReader::ScanForParents(const char* text, int position, int length,
                                    CIniSection* section) noexcept {
    vtr::IniParser::ScanForParents(text + position, text + length, *section);
}

bool CIniFileReader::CheckForClosingQuote(const char* text, unsigned long position,
                                          unsigned long length, int& innerQuotes) const noexcept {
    return vtr::IniParser::EndsInQuote(text + position, text + length, innerQuotes);
}

int Internals::Find(const CIniFileReader& document, const char* name) {
    if (IsEmptyText(name))
        return -1;
    if (!document.keepSorted)
        return FindFirst(document, name);
    return vtr::Bisect(document.sections.count, document.sections.count, [&](unsigned i) {
        return vtr::CompareText(document.sections.slots[i]->Name(), name);
    });
}

CIniSection* Internals::FindNear(const CIniFileReader& document, const char* name) {
    int& lastIndex = document.lastSectionIndex;
    const auto& sections = document.sections;
    CIniSection* last = lastIndex < 0 ? nullptr : sections.At(static_cast<unsigned>(lastIndex));
    if (last != nullptr) {
        if (vtr::SameText(name, last->Name()))
            return last;
        CIniSection* next = sections.At(static_cast<unsigned>(lastIndex) + 1);
        if (name != nullptr && next != nullptr && vtr::SameText(name, next->Name())) {
            ++lastIndex;
            return next;
        }
    }
    return document.FindSection(name, &lastIndex);
}

int Internals::FindFirst(const CIniFileReader& document, const char* name) {
    for (unsigned i = 0; i < document.sections.count; ++i) {
        if (vtr::SameText(document.sections.slots[i]->Name(), name))
            return static_cast<int>(i);
    }
    return -1;
}

CIniSection* Internals::AddSection(CIniFileReader& document, const char* name) {
    std::unique_ptr<CIniSection> section(new (std::nothrow) CIniSection(name));
    if (section == nullptr || !Sections(document).Append(section.get()))
        return nullptr;
    return section.release();
}
