#include "utilities/ui/WindowGeometry.h"

#include "common/Require.h"

#include <commdlg.h>
#include <cstring>

namespace {

/// Windows calls it for a window of its own inside the dialog.
UINT_PTR CALLBACK CentreOnOwner(HWND inner, UINT message, WPARAM /*wParam*/, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        const auto* dialog = reinterpret_cast<const OPENFILENAMEA*>(lParam);
        CenterWindow(GetParent(inner), reinterpret_cast<HWND>(dialog->lCustData),
                     /*horizontally=*/true, /*vertically=*/true, /*redraw=*/false,
                     /*onMonitor=*/false);
    }
    return 0;
}

} // namespace

int DoStandardFileDialog(HINSTANCE instance, HWND owner, char* file, char* fileTitle, DWORD maxFile,
                         int open, char* filter, char* defExt, char* title, char* initialDir,
                         unsigned* filterIndex, DWORD extraFlags) {
    VTR_REQUIRE(file != nullptr && strnlen(file, maxFile) < maxFile);
    OPENFILENAMEA dialog{};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.hInstance = instance;
    dialog.lpstrFilter = filter;
    dialog.nFilterIndex = filterIndex != nullptr ? *filterIndex : 0;
    dialog.lpstrFile = file;
    dialog.nMaxFile = maxFile;
    dialog.lpstrFileTitle = fileTitle;
    dialog.nMaxFileTitle = maxFile;
    dialog.lpstrInitialDir = initialDir;
    dialog.lpstrTitle = title;
    dialog.lpstrDefExt = defExt;
    dialog.lCustData = reinterpret_cast<LPARAM>(owner);
    dialog.lpfnHook = &CentreOnOwner;
    dialog.Flags = extraFlags | OFN_EXPLORER | OFN_HIDEREADONLY | OFN_ENABLEHOOK |
                   (open != 0 ? OFN_FILEMUSTEXIST : OFN_OVERWRITEPROMPT);
    const BOOL chosen = open != 0 ? GetOpenFileNameA(&dialog) : GetSaveFileNameA(&dialog);
    if (filterIndex != nullptr)
        *filterIndex = dialog.nFilterIndex;
    return chosen;
}
