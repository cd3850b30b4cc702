#include "gallery/pages/ini/IniModel.h"

#include "gallery/app/Stopwatch.h"
#include "gallery/pages/ini/StorableValue.h"
#include "gallery/text/Text.h"

#include <utility>

namespace gallery {

bool IniModel::Read(const std::string& path) {
    auto fresh = std::make_unique<CIniFileReader>();
    const Stopwatch watch;
    if (!fresh->Init(path.c_str(), /*sort=*/false))
        return false;
    milliseconds = watch.Milliseconds();
    document = std::move(fresh);
    return true;
}

bool IniModel::Write(const std::string& path) {
    return document->SetFileName(path.c_str()) && document->Save();
}

void IniModel::Sort() {
    if (!Loaded() || Sorted())
        return;
    document->Sort();
    Touch();
}

int IniModel::Sections() const {
    return Loaded() ? static_cast<int>(document->NumSections()) : 0;
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

const char* IniModel::SetValue(Place place, const std::wstring& value) {
    if (Pair(place) == nullptr)
        return "SelectPair";
    std::string narrow;
    if (!Narrow(value, narrow))
        return "ValueNotNarrow";
    const char* reason = WhyNotStorable(narrow);
    if (reason != nullptr || value == Value(place))
        return reason;
    if (!document->SetValue(place.section, place.pair, narrow.c_str()))
        return "NoMemory";
    Touch();
    return nullptr;
}

IniModel::Match IniModel::FindKey(const std::wstring& text, Place after) const {
    const std::wstring wanted = LowerCase(text);
    Match match;
    if (wanted.empty())
        return match;
    bool foundBehind = false;
    for (int section = 0; section < Sections(); ++section) {
        for (int pair = 0; pair < Pairs(section); ++pair) {
            if (LowerCase(Key({section, pair})).find(wanted) == std::wstring::npos)
                continue;
            ++match.count;
            const bool behind =
                section > after.section || (section == after.section && pair > after.pair);
            if (match.count == 1 || (behind && !foundBehind)) {
                match.place = {section, pair};
                match.number = match.count;
            }
            foundBehind = foundBehind || behind;
        }
    }
    return match;
}

const CIniValue* IniModel::Pair(Place place) const {
    return Loaded() ? document->GetValue(place.section, place.pair) : nullptr;
}

} // namespace gallery
