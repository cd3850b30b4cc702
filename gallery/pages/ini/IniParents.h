#ifndef VTRUTILS_GALLERY_PAGES_INI_INIPARENTS_H
#define VTRUTILS_GALLERY_PAGES_INI_INIPARENTS_H

#include "utilities/text/ini/IniFileReader.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace gallery {

/// Where the inherited pairs of a document come from: the library gives them to the sections and
/// forgets the parents. One thread at a time.
class IniParents {
public:
    /// Reads the document's text once more, without resolving anything, if it names parents.
    /// Requires: the document was read from this text and is in its order.
    void Read(const std::string& text, CIniFileReader& document);
    void Clear();

    /// The section that the pair comes from; null for one that the section has itself, or that has
    /// another value by now.
    const char* SourceOf(const CIniSection* section, const CIniValue& pair) const;

private:
    const CIniSection* Source(const CIniSection& section, const char* key, int levels) const;

    std::unique_ptr<CIniFileReader> unresolved; ///< null without parents
    std::unordered_map<const CIniSection*, int> places;
};

} // namespace gallery

#endif
