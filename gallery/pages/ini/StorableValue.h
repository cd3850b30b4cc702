#ifndef VTRUTILS_GALLERY_PAGES_INI_STORABLEVALUE_H
#define VTRUTILS_GALLERY_PAGES_INI_STORABLEVALUE_H

#include <string>

namespace gallery {

/// Why a saved INI document would read back with another value than this one, as the key of a
/// sentence for the user; null when it would not. Immutable and safe.
const char* WhyNotStorable(const std::string& value);

/// The same for the key of a pair, and for the name of a section.
const char* WhyNotStorableKey(const std::string& key);
const char* WhyNotStorableName(const std::string& name);

} // namespace gallery

#endif
