#ifndef VTRUTILS_GALLERY_FILEDIALOG_H
#define VTRUTILS_GALLERY_FILEDIALOG_H

#include <string>
#include <windows.h>

namespace gallery {

enum class FileQuestion { open, save };

/// Asks for an INI document, `path` being what is proposed. False, with `path` unchanged, when the
/// user takes the question back.
bool AskForDocument(HWND owner, FileQuestion question, std::wstring& path);

} // namespace gallery

#endif
