#include "gallery/pages/ini/IniModel.h"

#include "gallery/app/Stopwatch.h"
#include "gallery/pages/ini/IniLosses.h"
#include "gallery/pages/ini/StorableValue.h"
#include "gallery/text/Text.h"

#include <utility>

namespace gallery {

bool IniModel::Read(const std::string& path) {
    auto fresh = std::make_unique<IniDocument>();
    const Stopwatch stopwatch;
    if (!fresh->Init(path.c_str(), /*sort=*/false))
        return false;
    milliseconds = stopwatch.Milliseconds();
    document = std::move(fresh);
    touched = {};
    parents.Read(TextOfFile(Widen(path.c_str())), *document);
    return true;
}

bool IniModel::Write(const std::string& path) {
    const bool saved = document->SaveShown(path);
    // The new file has what was inherited, and no parents.
    if (saved)
        parents.Clear();
    return saved;
}

void IniModel::AddLosses(const std::string& text, Losses& losses) const {
    const IniLeftovers left = LeftoversOf(text);
    int quoted = 0;
    for (int i = 0; i < Sections(); ++i) {
        for (int pair = 0; !IsLoose(i) && pair < Pairs(i); ++pair) {
            const char* value = Pair({i, pair})->Value();
            quoted += value != nullptr && WhyNotStorable(value) != nullptr ? 1 : 0;
        }
    }
    for (const Loss& loss :
         {Loss{"LossComments", left.comments}, Loss{"LossLoosePairs", left.loosePairs},
          Loss{"LossParents", left.parents}, Loss{"LossEmptySections", left.emptySections},
          Loss{"LossOtherLines", left.otherLines}, Loss{"LossLongNames", left.longNames},
          Loss{"LossQuotes", quoted}}) {
        if (loss.count > 0)
            losses.push_back(loss);
    }
}

int IniModel::Sections() const {
    return Loaded() ? document->Shown() : 0;
}

int IniModel::Pairs(int section) const {
    return Loaded() ? document->GetNumValues(section) : 0;
}

int IniModel::AllPairs() const {
    int pairs = 0;
    for (int i = 0; i < Sections(); ++i)
        pairs += Pairs(i);
    return pairs;
}

std::wstring IniModel::SectionName(int section) const {
    return Loaded() ? Widen(document->SectionName(static_cast<unsigned>(section))) : L"";
}

std::wstring IniModel::Key(Place place) const {
    const CIniValue* pair = Pair(place);
    return pair != nullptr ? Widen(pair->Key()) : L"";
}

std::wstring IniModel::Value(Place place) const {
    const CIniValue* pair = Pair(place);
    return pair != nullptr ? Widen(pair->Value()) : L"";
}

std::wstring IniModel::InheritedFrom(Place place) const {
    const CIniValue* pair = Pair(place);
    return pair != nullptr ? Widen(parents.SourceOf(document->GetSection(place.section), *pair))
                           : L"";
}

bool IniModel::IsLoose(int section) const {
    const char* name = Loaded() ? document->SectionName(static_cast<unsigned>(section)) : nullptr;
    return name != nullptr && *name == '\0';
}

template <class Change, class... Values>
const char* IniModel::Do(const char* name, Place place, Values&&... values) {
    return History().Do(name, std::make_unique<Change>(*document, place, touched,
                                                       std::forward<Values>(values)...))
               ? nullptr
               : "NoMemory";
}

const char* IniModel::SetValue(Place place, const std::wstring& value) {
    if (Pair(place) == nullptr)
        return "SelectPair";
    if (value == Value(place))
        return nullptr;
    if (IsLoose(place.section))
        return "LoosePair";
    std::string narrow;
    if (!Narrow(value, narrow))
        return "ValueNotNarrow";
    if (const char* reason = WhyNotStorable(narrow))
        return reason;
    return Do<IniValueChange>("ChangeSet", place, narrow);
}

const char* IniModel::AddSection(const std::wstring& name) {
    std::string narrow;
    if (!Loaded() || !Narrow(name, narrow))
        return "ValueNotNarrow";
    if (const char* reason = WhyNotStorableName(narrow))
        return reason;
    return Do<IniSectionChange>("ChangeAddSection", {document->PlaceForSection(narrow), 0}, narrow);
}

const char* IniModel::AddPair(int section, const std::wstring& key) {
    if (section < 0 || section >= Sections())
        return "SelectSection";
    if (IsLoose(section))
        return "LoosePair";
    std::string narrow;
    if (!Narrow(key, narrow))
        return "ValueNotNarrow";
    if (const char* reason = WhyNotStorableKey(narrow))
        return reason;
    return Do<IniPairChange>("ChangeAddKey", {section, document->PlaceForPair(section, narrow)},
                             narrow, std::string());
}

const char* IniModel::DeleteSection(int section) {
    if (section < 0 || section >= Sections())
        return "SelectSection";
    if (IsLoose(section))
        return "LoosePair";
    return Do<IniSectionChange>("ChangeDeleteSection", {section, 0});
}

const char* IniModel::DeletePair(Place place) {
    if (Pair(place) == nullptr)
        return "SelectPair";
    if (IsLoose(place.section))
        return "LoosePair";
    return Do<IniPairChange>("ChangeDeleteKey", place);
}

const char* IniModel::Sort() {
    if (!Loaded() || Sorted())
        return nullptr;
    return History().Do("ChangeSort", std::make_unique<IniSortChange>(*document, touched))
               ? nullptr
               : "NoMemory";
}

IniModel::Match IniModel::Find(const std::wstring& text, Place after) const {
    const std::wstring wanted = LowerCase(text);
    Match match;
    if (wanted.empty())
        return match;
    bool foundBehind = false;
    for (int section = 0; section < Sections(); ++section) {
        for (int pair = 0; pair < Pairs(section); ++pair) {
            const Place place{section, pair};
            if (LowerCase(Key(place)).find(wanted) == std::wstring::npos &&
                LowerCase(Value(place)).find(wanted) == std::wstring::npos)
                continue;
            ++match.count;
            const bool behind =
                section > after.section || (section == after.section && pair > after.pair);
            if (match.count == 1 || (behind && !foundBehind)) {
                match.place = place;
                match.number = match.count;
            }
            foundBehind = foundBehind || behind;
        }
    }
    return match;
}

const CIniValue* IniModel::Pair(Place place) const {
    if (place.section < 0 || place.section >= Sections())
        return nullptr;
    return document->GetValue(place.section, place.pair);
}

} // namespace gallery
