#ifndef VTRUTILS_GALLERY_INIMODEL_H
#define VTRUTILS_GALLERY_INIMODEL_H

#include "utilities/text/IniFileReader.h"

#include <memory>
#include <string>

namespace gallery {

/// The document that the page "INI document" shows, in the wide texts that windows want, and
/// whether it is saved. Empty until a document was loaded. One thread at a time.
class IniModel {
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

    /// Loads the file named by an absolute or relative path. False, with the present document
    /// kept, when it cannot be read.
    bool Load(const std::wstring& path);

    /// To the document's own file, or another one that it belongs to from then on. On failure the
    /// files, the name and what is unsaved stay as they were.
    bool Save();
    bool SaveAs(const std::wstring& path);

    void Sort();

    bool Loaded() const { return document != nullptr; }
    bool Changed() const { return changed; }
    bool Sorted() const { return Loaded() && document->KeepSorted(); }
    const std::wstring& Path() const { return fileName; }
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

    /// The next key that holds the text, ignoring case, behind `after` and then from the start.
    Match FindKey(const std::wstring& text, Place after) const;

private:
    const CIniValue* Pair(Place place) const;

    bool SaveTo(const std::wstring& path);

    std::unique_ptr<CIniFileReader> document;
    /// The document's own name is in the code page of the language that was chosen when it was set.
    std::wstring fileName;
    double milliseconds = 0;
    bool changed = false;
};

} // namespace gallery

#endif
