#ifndef VTRUTILS_GALLERY_PAGES_PROMO_SHIPPEDSCRIPT_H
#define VTRUTILS_GALLERY_PAGES_PROMO_SHIPPEDSCRIPT_H

#include <string>

namespace gallery {

/// The promo script that comes with the language, beside its string file. One thread at a time.
std::string ShippedScriptPath();

/// With the line ends of an edit field; "" when the file is missing or cannot be read.
std::wstring ShippedScript();

} // namespace gallery

#endif
