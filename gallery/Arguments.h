#ifndef VTRUTILS_GALLERY_ARGUMENTS_H
#define VTRUTILS_GALLERY_ARGUMENTS_H

#include <string>

namespace gallery {

/// What the command line asks for: gallery [FILE] [--language NAME] [--registry KEY]
/// [--pictures FOLDER]. A name with spaces needs no quotes as far as `GetCommandLineParameter` can
/// tell where it ends.
struct Arguments {
    std::wstring document;      ///< the one beside the program when none is named
    std::string language;       ///< "" for the table's default
    std::string registryKey;    ///< below HKEY_CURRENT_USER; picture mode has its own
    std::wstring pictureFolder; ///< "" unless in picture mode
    std::string mistake;        ///< why the command line cannot be followed; "" when it can
};

/// Requires: no language is chosen yet, as the system's code page is that of the command line.
Arguments ReadArguments();

} // namespace gallery

#endif
