#ifndef VTRUTILS_GALLERY_ARGUMENTS_H
#define VTRUTILS_GALLERY_ARGUMENTS_H

#include <string>

namespace gallery {

/// What the command line asks for: gallery [FILE] [--pictures FOLDER]. A name with spaces needs no
/// quotes as far as `GetCommandLineParameter` can tell where it ends.
struct Arguments {
    std::string document;      ///< the one beside the program when none is named
    std::string pictureFolder; ///< "" unless in picture mode
    std::string mistake;       ///< why the command line cannot be followed; "" when it can
};

Arguments ReadArguments();

} // namespace gallery

#endif
