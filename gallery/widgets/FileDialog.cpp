#include "gallery/widgets/FileDialog.h"

#include "gallery/text/Language.h"
#include "gallery/widgets/Question.h"

#include <commdlg.h>
#include <iterator>

namespace gallery {

namespace {

/// A name and a pattern, each with its terminator.
std::wstring FilterOf(const char* nameKey, const std::wstring& extension) {
    const std::wstring pattern = L"*." + extension;
    return Text(nameKey) + L" (" + pattern + L")" + L'\0' + pattern + L'\0';
}

} // namespace

bool AskForFile(HWND owner, FileQuestion question, const FileKind& kind, std::wstring& path) {
    wchar_t name[4096] = L"";
    if (path.size() < std::size(name))
        path.copy(name, path.size());
    const KeptFocus kept(owner);
    const std::wstring filter = FilterOf(kind.nameKey, kind.extension) + FilterOf("AllFiles", L"*");
    OPENFILENAMEW dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = kept.Owner();
    dialog.lpstrFilter = filter.c_str();
    dialog.lpstrFile = name;
    dialog.nMaxFile = static_cast<DWORD>(std::size(name));
    dialog.lpstrDefExt = kind.extension;
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
