#include "gallery/pages/ini/IniParents.h"

#include "gallery/text/Text.h"

#include <cstring>
#include <utility>

namespace gallery {

namespace {

/// As many levels as the library follows.
constexpr int mostLevels = 10;

bool NamesParents(const std::string& text) {
    for (std::size_t end = text.find(']'); end != std::string::npos;
         end = text.find(']', end + 1)) {
        const std::size_t next = text.find_first_not_of(" \t", end + 1);
        if (next != std::string::npos && text[next] == ':')
            return true;
    }
    return false;
}

/// Null if the section has no pair with that key and a value.
const CIniValue* PairOf(const CIniSection& section, const char* key) {
    for (unsigned i = 0; i < section.NumValues(); ++i) {
        const CIniValue& pair = *section.GetValue(i);
        if (pair.Key() != nullptr && pair.Value() != nullptr && CompareNarrow(pair.Key(), key) == 0)
            return &pair;
    }
    return nullptr;
}

} // namespace

void IniParents::Read(const std::string& text, CIniFileReader& document) {
    Clear();
    if (!NamesParents(text))
        return;
    auto fresh = std::make_unique<CIniFileReader>();
    if (!fresh->InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                               static_cast<unsigned>(text.size()), /*sort=*/false) ||
        fresh->NumSections() != document.NumSections())
        return;
    for (int i = 0; i < static_cast<int>(document.NumSections()); ++i)
        places[document.GetSection(i)] = i;
    unresolved = std::move(fresh);
}

void IniParents::Clear() {
    unresolved.reset();
    places.clear();
}

const char* IniParents::SourceOf(const CIniSection* section, const CIniValue& pair) const {
    const auto place = places.find(section);
    if (unresolved == nullptr || place == places.end() || pair.Key() == nullptr ||
        pair.Value() == nullptr)
        return nullptr;
    const CIniSection& own = *unresolved->GetSection(place->second);
    if (own.NumParents() == 0 || PairOf(own, pair.Key()) != nullptr)
        return nullptr;
    const CIniSection* source = Source(own, pair.Key(), mostLevels);
    if (source == nullptr || std::strcmp(PairOf(*source, pair.Key())->Value(), pair.Value()) != 0)
        return nullptr;
    return source->Name();
}

const CIniSection* IniParents::Source(const CIniSection& section, const char* key,
                                      int levels) const {
    for (int i = 0; levels > 0 && i < section.NumParents(); ++i) {
        const CIniSection* parent = unresolved->GetSection(section.GetParent(i));
        if (parent == nullptr || parent == &section)
            continue;
        if (PairOf(*parent, key) != nullptr)
            return parent;
        if (const CIniSection* source = Source(*parent, key, levels - 1))
            return source;
    }
    return nullptr;
}

} // namespace gallery
