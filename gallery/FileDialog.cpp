#include "gallery/FileDialog.h"

#include <iterator>

#include <commdlg.h>

namespace gallery {

bool AskForDocument(HWND owner, FileQuestion question, std::wstring& path) {
    wchar_t name[4096] = L"";
    if (path.size() < std::size(name))
        path.copy(name, path.size());
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = L"INI documents (*.ini)\0*.ini\0All files\0*.*\0";
    dialog.lpstrFile = name;
    dialog.nMaxFile = static_cast<DWORD>(std::size(name));
    dialog.lpstrDefExt = L"ini";
    // The current folder stays: relative names that the program was given depend on it.
    dialog.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    dialog.Flags |= question == FileQuestion::open ? OFN_FILEMUSTEXIST : OFN_OVERWRITEPROMPT;
    const BOOL answered =
        question == FileQuestion::open ? GetOpenFileNameW(&dialog) : GetSaveFileNameW(&dialog);
    if (!answered)
        return false;
    path = name;
    return true;
}

} // namespace gallery
