#ifndef VTRUTILS_GALLERY_PAGES_INI_INIMODEL_H
#define VTRUTILS_GALLERY_PAGES_INI_INIMODEL_H

#include "gallery/app/Document.h"
#include "utilities/text/ini/IniFileReader.h"

#include <memory>
#include <string>

namespace gallery {

/// The document that the page "INI document" shows, in the wide texts that windows want. One thread
/// at a time.
class IniModel final : public Document {
public:
    /// Indices of a section and of a pair in it.
    struct Place {
        int section = 0;
        int pair = 0;
    };

    struct Match {
        Place place;
        int number = 0; ///< of `count`, in the order of the document, from 1
        int count = 0;  ///< 0: there is none
    };

    void Sort();

    bool Sorted() const { return Loaded() && document->KeepSorted(); }
    double LoadMilliseconds() const { return milliseconds; }

    /// 0 and "" for what is not there.
    int Sections() const;
    int Pairs(int section) const;
    int AllPairs() const;
    std::wstring SectionName(int section) const;
    std::wstring Key(Place place) const;
    std::wstring Value(Place place) const;

    /// Null when the value was set, else why it was not, as the key of a sentence for
    /// the user.
    const char* SetValue(Place place, const std::wstring& value);

    /// The next key that holds the text, ignoring case, after `after` and then from the start.
    Match FindKey(const std::wstring& text, Place after) const;

private:
    bool Read(const std::string& path) override;
    bool Write(const std::string& path) override;

    const CIniValue* Pair(Place place) const;

    std::unique_ptr<CIniFileReader> document;
    double milliseconds = 0;
};

} // namespace gallery

#endif
