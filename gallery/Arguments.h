#ifndef VTRUTILS_GALLERY_ARGUMENTS_H
#define VTRUTILS_GALLERY_ARGUMENTS_H

#include <string>

namespace gallery {

/// What the command line asks for: gallery [FILE] [--language NAME] [--registry KEY]
/// [--pictures FOLDER] [--help]. Options stand before or after the file; what follows "--" is no
/// option.
struct Arguments {
    std::wstring document;                                    ///< "" when none is named
    std::wstring language;                                    ///< "" for the one that is remembered
    std::wstring registryKey = L"Software\\vtrutils gallery"; ///< below HKEY_CURRENT_USER
    std::wstring pictureFolder;                               ///< "" unless in picture mode
    bool help = false;
    const char* mistakeKey = nullptr; ///< why the command line cannot be followed; null when it can
    std::wstring mistake;             ///< the parameter that is wrong
};

/// `commandLine` begins with the program, as that of `GetCommandLineW` does.
Arguments ReadArguments(const wchar_t* commandLine);

} // namespace gallery

#endif
