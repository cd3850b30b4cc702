#ifndef VTRUTILS_GALLERY_PAGES_INI_INIMODEL_H
#define VTRUTILS_GALLERY_PAGES_INI_INIMODEL_H

#include "gallery/app/Document.h"
#include "gallery/pages/ini/IniChanges.h"
#include "gallery/pages/ini/IniParents.h"

#include <memory>
#include <string>

namespace gallery {

/// The document that the page "INI document" shows, in the wide texts that windows want. One thread
/// at a time.
class IniModel final : public Document {
public:
    using Place = IniPlace;

    struct Match {
        Place place;
        int number = 0; ///< of `count`, in the order of the document, from 1
        int count = 0;  ///< 0: there is none
    };

    bool Sorted() const { return Loaded() && document->KeepSorted(); }
    double LoadMilliseconds() const { return milliseconds; }

    /// 0 and "" for what is not there.
    int Sections() const;
    int Pairs(int section) const;
    int AllPairs() const;
    std::wstring SectionName(int section) const;
    std::wstring Key(Place place) const;
    std::wstring Value(Place place) const;
    /// The section that the pair comes from; "" for one of its own section.
    std::wstring InheritedFrom(Place place) const;
    /// Whether the pair stands before the first section: it is not saved, so it cannot be changed.
    bool IsLoose(int section) const;

    // Each is null when it was done, else the key of a sentence for the user that says why not.
    const char* SetValue(Place place, const std::wstring& value);
    const char* AddSection(const std::wstring& name);
    const char* AddPair(int section, const std::wstring& key);
    const char* DeleteSection(int section);
    const char* DeletePair(Place place);
    const char* Sort();

    /// Where the last change was made or taken back.
    Place Touched() const { return touched; }

    /// The next pair whose key or value holds the text, ignoring case, after `after` and then from
    /// the start.
    Match Find(const std::wstring& text, Place after) const;

private:
    bool Read(const std::string& path) override;
    bool Write(const std::string& path) override;
    void AddLosses(const std::string& text, Losses& losses) const override;

    const CIniValue* Pair(Place place) const;
    /// "NoMemory" when it cannot be done.
    template <class Change, class... Values>
    const char* Do(const char* name, Place place, Values&&... values);

    std::unique_ptr<IniDocument> document;
    IniParents parents;
    Place touched;
    double milliseconds = 0;
};

} // namespace gallery

#endif
