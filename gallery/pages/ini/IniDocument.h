#ifndef VTRUTILS_GALLERY_PAGES_INI_INIDOCUMENT_H
#define VTRUTILS_GALLERY_PAGES_INI_INIDOCUMENT_H

#include "utilities/text/ini/IniFileReader.h"

#include <string>
#include <vector>

namespace gallery {

/// A document of the library's whose sections and pairs have places that a host may choose, so that
/// what is deleted or sorted can come back where it was. A section that is deleted is hidden: it
/// stands after all others and is not saved. One thread at a time.
class IniDocument : public CIniFileReader {
public:
    /// Sections that are not hidden.
    int Shown() const { return static_cast<int>(NumSections()) - hidden; }

    /// Adds an empty section. False when memory runs out.
    bool Insert(int section, const std::string& name);
    /// Returns the section.
    CIniSection* Hide(int section);
    /// Puts a hidden section there.
    void Unhide(const CIniSection* section, int place);

    /// False when memory runs out.
    bool InsertPair(int section, int pair, const std::string& key, const std::string& value);

    /// The places that a sorted document gives to what is new.
    int PlaceForSection(const std::string& name) const;
    int PlaceForPair(int section, const std::string& key) const;

    /// What takes sorting back: the sections in their order before, and for each the places after
    /// sorting of the pairs that it had.
    struct Order {
        std::vector<CIniSection*> sections;
        std::vector<std::vector<unsigned>> pairs;
    };
    /// `KeepSorted()` stays false when memory runs out.
    Order SortShown();
    /// Requires: the sections and pairs are those of right after `SortShown`.
    void Unsort(const Order& order);

    /// A sorted document is written as it is: sorting it again would swap equal names.
    bool SaveShown(const std::string& path);

private:
    void Move(int from, int to);

    int hidden = 0;
};

} // namespace gallery

#endif
