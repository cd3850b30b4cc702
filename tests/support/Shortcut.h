#ifndef VTRUTILS_TESTS_SUPPORT_SHORTCUT_H
#define VTRUTILS_TESTS_SUPPORT_SHORTCUT_H

#include "common/Handles.h"

#include <shlobj.h>
#include <stdexcept>
#include <string>

/// Writes a ".lnk" file, as the shell does. The target need not exist.
inline std::string MakeShortcut(const std::string& file, const std::string& target) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    void* made = nullptr;
    bool saved = false;
    if (SUCCEEDED(CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA,
                                   &made))) {
        const vtr::ComPointer<IShellLinkA> link(static_cast<IShellLinkA*>(made));
        saved = SUCCEEDED(link.Get()->SetPath(target.c_str())) &&
                SUCCEEDED(link.Get()->QueryInterface(IID_IPersistFile, &made));
        const vtr::ComPointer<IPersistFile> persistent(saved ? static_cast<IPersistFile*>(made)
                                                             : nullptr);
        wchar_t wide[MAX_PATH] = L"";
        MultiByteToWideChar(CP_ACP, 0, file.c_str(), -1, wide, MAX_PATH);
        saved = saved && SUCCEEDED(persistent.Get()->Save(wide, TRUE));
    }
    CoUninitialize();
    if (!saved)
        throw std::runtime_error("no shortcut " + file);
    return file;
}

#endif
