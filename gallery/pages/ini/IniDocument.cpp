#include "gallery/pages/ini/IniDocument.h"

#include "gallery/text/Text.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace gallery {

namespace {

std::string TextOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

void SwapTexts(CIniValue& one, CIniValue& other) {
    const std::string key = TextOrEmpty(one.Key());
    const std::string value = TextOrEmpty(one.Value());
    one.SetKey(other.Key());
    one.SetValue(other.Value());
    other.SetKey(key.c_str());
    other.SetValue(value.c_str());
}

} // namespace

void IniDocument::Move(int from, int to) {
    CIniSection** const slots = sections.slots;
    if (from < to)
        std::rotate(slots + from, slots + from + 1, slots + to + 1);
    else
        std::rotate(slots + to, slots + from, slots + from + 1);
    lastSectionIndex = -1;
}

bool IniDocument::Insert(int section, const std::string& name) {
    // No section of a document that was read or typed has this name, so one is added.
    constexpr char unused[] = "\x01";
    const bool sorted = keepSorted;
    keepSorted = false;
    const bool added = SetValue(unused, unused, unused);
    keepSorted = sorted;
    if (!added)
        return false;
    CIniSection* fresh = GetSection(static_cast<int>(NumSections()) - 1);
    fresh->Clear();
    fresh->SetName(name.c_str());
    fresh->SetKeepSorted(sorted);
    Move(static_cast<int>(NumSections()) - 1, section);
    return true;
}

CIniSection* IniDocument::Hide(int section) {
    Move(section, static_cast<int>(NumSections()) - 1);
    ++hidden;
    return sections.slots[NumSections() - 1];
}

void IniDocument::Unhide(const CIniSection* section, int place) {
    CIniSection** const end = sections.slots + sections.count;
    Move(static_cast<int>(std::find(sections.slots + Shown(), end, section) - sections.slots),
         place);
    --hidden;
}

bool IniDocument::InsertPair(int section, int pair, const std::string& key,
                             const std::string& value) {
    CIniSection& target = *GetSection(section);
    if (!target.AddValue(key.c_str(), value.c_str()))
        return false;
    for (int i = static_cast<int>(target.NumValues()) - 1; i > pair; --i)
        SwapTexts(*target.GetValue(static_cast<unsigned>(i)),
                  *target.GetValue(static_cast<unsigned>(i - 1)));
    return true;
}

int IniDocument::PlaceForSection(const std::string& name) const {
    if (!keepSorted)
        return Shown();
    int place = 0;
    while (place < Shown() && CompareNarrow(SectionName(static_cast<unsigned>(place)), name) <= 0)
        ++place;
    return place;
}

int IniDocument::PlaceForPair(int section, const std::string& key) const {
    const int count = GetNumValues(section);
    if (!keepSorted)
        return count;
    int place = 0;
    while (place < count && CompareNarrow(TextOrEmpty(GetValue(section, place)->Key()), key) <= 0)
        ++place;
    return place;
}

IniDocument::Order IniDocument::SortShown() {
    Order order;
    std::vector<std::vector<const CIniValue*>> before;
    for (int i = 0; i < Shown(); ++i) {
        CIniSection* section = sections.slots[i];
        order.sections.push_back(section);
        std::vector<const CIniValue*>& pairs = before.emplace_back();
        for (unsigned pair = 0; pair < section->NumValues(); ++pair)
            pairs.push_back(section->GetValue(pair));
    }
    const auto kept = static_cast<unsigned>(hidden);
    sections.count -= kept;
    Sort();
    sections.count += kept;
    lastSectionIndex = -1;
    for (std::size_t i = 0; i < order.sections.size(); ++i) {
        std::unordered_map<const CIniValue*, unsigned> places;
        for (unsigned pair = 0; pair < order.sections[i]->NumValues(); ++pair)
            places[order.sections[i]->GetValue(pair)] = pair;
        std::vector<unsigned>& pairs = order.pairs.emplace_back();
        for (const CIniValue* pair : before[i])
            pairs.push_back(places[pair]);
    }
    return order;
}

void IniDocument::Unsort(const Order& order) {
    std::copy(order.sections.begin(), order.sections.end(), sections.slots);
    for (std::size_t i = 0; i < order.sections.size(); ++i) {
        CIniSection& section = *order.sections[i];
        section.SetKeepSorted(false);
        // The pairs stay where sorting took them: their texts move back.
        std::vector<std::pair<std::string, std::string>> texts;
        for (const unsigned place : order.pairs[i]) {
            const CIniValue& pair = *section.GetValue(place);
            texts.emplace_back(TextOrEmpty(pair.Key()), TextOrEmpty(pair.Value()));
        }
        for (std::size_t pair = 0; pair < texts.size(); ++pair) {
            CIniValue& place = *section.GetValue(static_cast<unsigned>(pair));
            place.SetKey(texts[pair].first.c_str());
            place.SetValue(texts[pair].second.c_str());
        }
    }
    keepSorted = false;
    lastSectionIndex = -1;
}

bool IniDocument::SaveShown(const std::string& path) {
    const auto kept = static_cast<unsigned>(hidden);
    const bool sorted = keepSorted;
    sections.count -= kept;
    keepSorted = false;
    const bool saved = SetFileName(path.c_str()) && Save();
    sections.count += kept;
    keepSorted = sorted;
    return saved;
}

} // namespace gallery
