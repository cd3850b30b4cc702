#ifndef VTRUTILS_TESTS_SUPPORT_CLIPBOARD_H
#define VTRUTILS_TESTS_SUPPORT_CLIPBOARD_H

#include <cstring>
#include <gtest/gtest.h>
#include <shlobj.h>
#include <string_view>

/// Leaves a list of files on the clipboard, with a zero between names.
inline void CopyFiles(std::wstring_view names) {
    const std::size_t bytes = names.size() * sizeof(wchar_t);
    const HGLOBAL block =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + bytes + 2 * sizeof(wchar_t));
    auto* files = static_cast<DROPFILES*>(GlobalLock(block));
    files->pFiles = sizeof(DROPFILES);
    files->fWide = TRUE;
    std::memcpy(files + 1, names.data(), bytes);
    GlobalUnlock(block);
    EXPECT_TRUE(OpenClipboard(nullptr) && EmptyClipboard());
    EXPECT_NE(SetClipboardData(CF_HDROP, block), nullptr);
    CloseClipboard();
}

#endif
