#ifndef VTRUTILS_GALLERY_PAGES_INI_INILOSSES_H
#define VTRUTILS_GALLERY_PAGES_INI_INILOSSES_H

#include <string_view>

namespace gallery {

/// What the text of an INI document has that the library does not keep when it reads or saves it.
/// Immutable and safe.
struct IniLeftovers {
    int comments = 0;
    int loosePairs = 0;    ///< before the first section
    int parents = 0;       ///< sections that name some
    int emptySections = 0; ///< without a pair of their own
    int otherLines = 0;    ///< neither a section nor a pair
    int longNames = 0;     ///< of sections, which are cut
};

IniLeftovers LeftoversOf(std::string_view text);

} // namespace gallery

#endif
