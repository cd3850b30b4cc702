#ifndef VTRUTILS_GALLERY_PAGES_INI_INICHANGES_H
#define VTRUTILS_GALLERY_PAGES_INI_INICHANGES_H

#include "gallery/app/DocumentHistory.h"
#include "gallery/pages/ini/IniDocument.h"

#include <string>
#include <utility>

/// What can be done to an INI document, and taken back. The document outlives the changes. One
/// thread at a time.

namespace gallery {

/// Indices of a section and of a pair in it.
struct IniPlace {
    int section = 0;
    int pair = 0;
};

class IniChange : public DocumentChange {
protected:
    /// `newTouched` is where the last change was, and outlives the change.
    IniChange(IniDocument& changed, IniPlace newPlace, IniPlace& newTouched)
        : document(changed), place(newPlace), touched(newTouched) {}

    IniDocument& document;
    IniPlace place;
    IniPlace& touched;
};

class IniValueChange final : public IniChange {
public:
    IniValueChange(IniDocument& changed, IniPlace at, IniPlace& touchedPlace, std::string newValue);
    bool Apply(bool make) override;

private:
    std::string before;
    std::string after;
};

/// Adds a pair, or deletes the one that is there.
class IniPairChange final : public IniChange {
public:
    IniPairChange(IniDocument& changed, IniPlace at, IniPlace& touchedPlace);
    IniPairChange(IniDocument& changed, IniPlace at, IniPlace& touchedPlace, std::string newKey,
                  std::string newValue)
        : IniChange(changed, at, touchedPlace), key(std::move(newKey)), value(std::move(newValue)),
          adds(true) {}
    bool Apply(bool make) override;

private:
    std::string key;
    std::string value;
    bool adds;
};

/// Adds an empty section, or deletes the one that is there.
class IniSectionChange final : public IniChange {
public:
    IniSectionChange(IniDocument& changed, IniPlace at, IniPlace& touchedPlace)
        : IniChange(changed, at, touchedPlace), adds(false) {}
    IniSectionChange(IniDocument& changed, IniPlace at, IniPlace& touchedPlace, std::string newName)
        : IniChange(changed, at, touchedPlace), name(std::move(newName)), adds(true) {}
    bool Apply(bool make) override;

private:
    std::string name;
    bool adds;
    const CIniSection* hidden = nullptr; ///< since the section was hidden last
};

class IniSortChange final : public IniChange {
public:
    IniSortChange(IniDocument& changed, IniPlace& touchedPlace)
        : IniChange(changed, {}, touchedPlace) {}
    bool Apply(bool make) override;

private:
    IniDocument::Order before;
};

} // namespace gallery

#endif
