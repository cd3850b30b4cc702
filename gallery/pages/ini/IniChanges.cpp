#include "gallery/pages/ini/IniChanges.h"

namespace gallery {

namespace {

std::string TextOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

} // namespace

IniValueChange::IniValueChange(IniDocument& changed, IniPlace at, IniPlace& touchedPlace,
                               std::string newValue)
    : IniChange(changed, at, touchedPlace),
      before(TextOrEmpty(changed.GetValue(at.section, at.pair)->Value())),
      after(std::move(newValue)) {}

bool IniValueChange::Apply(bool make) {
    touched = place;
    if (document.SetValue(place.section, place.pair, (make ? after : before).c_str()))
        return true;
    document.SetValue(place.section, place.pair, before.c_str());
    return false;
}

IniPairChange::IniPairChange(IniDocument& changed, IniPlace at, IniPlace& touchedPlace)
    : IniChange(changed, at, touchedPlace),
      key(TextOrEmpty(changed.GetValue(at.section, at.pair)->Key())),
      value(TextOrEmpty(changed.GetValue(at.section, at.pair)->Value())), adds(false) {}

bool IniPairChange::Apply(bool make) {
    touched = place;
    if (make == adds)
        return document.InsertPair(place.section, place.pair, key, value);
    document.GetSection(place.section)->RemoveKey(static_cast<unsigned>(place.pair));
    return true;
}

bool IniSectionChange::Apply(bool make) {
    touched = {place.section, 0};
    if (make != adds) {
        hidden = document.Hide(place.section);
        return true;
    }
    if (hidden == nullptr)
        return document.Insert(place.section, name);
    document.Unhide(hidden, place.section);
    return true;
}

bool IniSortChange::Apply(bool make) {
    touched = {};
    if (!make) {
        document.Unsort(before);
        return true;
    }
    before = document.SortShown();
    if (document.KeepSorted())
        return true;
    document.Unsort(before);
    return false;
}

} // namespace gallery
