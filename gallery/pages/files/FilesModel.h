#ifndef VTRUTILS_GALLERY_PAGES_FILES_FILESMODEL_H
#define VTRUTILS_GALLERY_PAGES_FILES_FILESMODEL_H

#include <string>
#include <vector>
#include <windows.h>

namespace gallery {

/// What the library makes of names and where it finds special folders, in wide texts. Immutable and
/// safe but for the counter of unique names, which stays as it was: one thread at a time.

/// What a function makes of a name.
struct MadeName {
    const wchar_t* function;
    const char* callKey; ///< of the text that names the call, "%1" being the function; or null
    std::wstring result;
    const wchar_t* returned; ///< what it returns, as in its declaration
};

/// In the order in which the page shows them; empty when the system's code page lacks a character
/// of the name or the folder, or the path is too long.
std::vector<MadeName> NamesMadeOf(const std::wstring& name, const std::wstring& folder);

struct SpecialFolder {
    const char* nameKey;
    std::wstring path; ///< "" when there is none
    double bytesFree;
};

/// The first one is the program's own.
std::vector<SpecialFolder> SpecialFolders();

/// The program's file.
std::wstring ProgramPath();

/// False when nothing could be started.
bool ShowInFolder(const std::wstring& path, HWND window);

} // namespace gallery

#endif
