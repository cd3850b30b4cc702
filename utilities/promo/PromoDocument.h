#ifndef VTRUTILS_PROMO_PROMODOCUMENT_H
#define VTRUTILS_PROMO_PROMODOCUMENT_H

#include "utilities/text/ini/IniFileReader.h"

#include <cstddef>

namespace vtr {

/// A name with a number: "NAME.3" is a step's section, "text.3" a sub-step's key. Private to the
/// library. Immutable and safe.
class NumberedName {
public:
    NumberedName(const char* name, int number);
    const char* Get() const { return text; }

private:
    char text[288]; ///< the longest name of a script has 260 bytes
};

/// The values of one section of a script, by plain keys or, for an index above 0, by those of one
/// sub-step. Private to the library. One thread at a time.
class PromoSection {
public:
    PromoSection(const CIniFileReader& script, const char* sectionName, int keyIndex = 0)
        : document(script), name(sectionName), index(keyIndex) {}

    /// False, with "" written, when there is no value.
    template <std::size_t size>
    bool Text(const char* key, char (&value)[size]) const {
        return Read(key, value, size);
    }

    /// False, with the number as it was, for a value that is not numeric. A number that does not
    /// fit becomes the nearest that does.
    bool Number(const char* key, int& number) const;

    /// The same for numbers from 0 up.
    bool Natural(const char* key, int& number) const;

private:
    bool Read(const char* key, char* value, std::size_t size) const;

    const CIniFileReader& document;
    const char* name;
    int index;
};

} // namespace vtr

#endif
