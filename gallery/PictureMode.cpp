#include "gallery/PictureMode.h"

#include "common/Require.h"
#include "gallery/Output.h"
#include "gallery/Picture.h"
#include "gallery/app/MainWindow.h"
#include "gallery/text/Language.h"

namespace gallery {

namespace {

/// Handles everything that waits, then lets every window paint what is still to be painted.
void FinishPainting(HWND window) {
    MSG message;
    while (PeekMessageW(&message, /*hWnd=*/nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    RedrawWindow(window, /*lprcUpdate=*/nullptr, /*hrgnUpdate=*/nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

bool MakePicture(MainWindow& window, int page, const PictureWriter& writer,
                 const std::wstring& path) {
    if (!window.ShowPage(page))
        return false;
    window.CurrentPage().TakeFocus();
    if (!window.CurrentPage().ShowExample())
        return false;
    FinishPainting(window.Handle());
    return writer.Write(window.Handle(), path);
}

} // namespace

bool MakePictures(MainWindow& window, const std::wstring& folder) {
    VTR_REQUIRE(IsWindowVisible(window.Handle()) != FALSE);
    if (!CreateDirectoryW(folder.c_str(), /*lpSecurityAttributes=*/nullptr) &&
        GetLastError() != ERROR_ALREADY_EXISTS) {
        Print(Stream::error, L"gallery: " + Text("NoPictureFolder", {folder}));
        return false;
    }
    const PictureWriter writer;
    bool good = true;
    int index = 0;
    for (const PageEntry& page : window.Pages()) {
        const std::wstring path = folder + L"\\" + page.pictureName + L".png";
        if (MakePicture(window, index++, writer, path)) {
            Print(Stream::output, path);
        } else {
            Print(Stream::error, L"gallery: " + Text("NoPicture", {Text(page.titleKey)}));
            good = false;
        }
    }
    return good;
}

} // namespace gallery
