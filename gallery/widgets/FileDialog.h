#ifndef VTRUTILS_GALLERY_WIDGETS_FILEDIALOG_H
#define VTRUTILS_GALLERY_WIDGETS_FILEDIALOG_H

#include <string>
#include <windows.h>

namespace gallery {

enum class FileQuestion { open, save };

/// What files are called that a page works with: the key of their name, and what they end with
/// (L"ini").
struct FileKind {
    const char* nameKey;
    const wchar_t* extension;
};

/// Asks for a file of that kind, `path` being what is proposed. False, with `path` unchanged, when
/// the user takes the question back.
bool AskForFile(HWND owner, FileQuestion question, const FileKind& kind, std::wstring& path);

} // namespace gallery

#endif
