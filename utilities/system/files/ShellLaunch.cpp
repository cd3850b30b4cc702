#include "common/DynamicFunction.h"
#include "utilities/system/files/FileFunctions.h"
#include "vtrfutls/FileNames.h"
#include "vtrfutls/Log.h"

#include <cstdio>
#include <cstring>
#include <shellapi.h>
#include <shlwapi.h>

namespace {

constexpr char folderSelection[] = "/select, %s";

vtr::DynamicFunction<decltype(AssocQueryStringA)> assocQueryString("shlwapi.dll",
                                                                   "AssocQueryStringA");

HINSTANCE Open(HWND window, const char* file, const char* parameters, int showCommand) {
    return ShellExecuteA(window, "open", file, parameters, /*lpDirectory=*/nullptr, showCommand);
}

bool Started(HINSTANCE result) {
    return reinterpret_cast<INT_PTR>(result) > 32;
}

/// The program that opens pages; false when there is none.
bool FindBrowser(char (&program)[MAX_PATH]) {
    DWORD length = sizeof program;
    return assocQueryString.Get() != nullptr &&
           SUCCEEDED(assocQueryString.Get()(/*flags=*/0, ASSOCSTR_EXECUTABLE, ".html", "open",
                                            program, &length)) &&
           program[0] != '\0';
}

} // namespace

bool LaunchBrowser(const char* url, HWND window, int showCommand) {
    if (url == nullptr)
        return false;
    if (Started(Open(window, url, /*parameters=*/nullptr, showCommand)))
        return true;
    char browser[MAX_PATH];
    if (FindBrowser(browser) && Started(Open(window, browser, url, showCommand)))
        return true;
    return Started(
        Open(window, "c:\\program files\\internet explorer\\iexplore.exe", url, showCommand));
}

HINSTANCE OpenContainingFolder(const char* path, HWND window) {
    if (path == nullptr)
        return nullptr;
    LogFmtA("Open Containing folder for %s", path);
    if (std::strchr(path, ',') != nullptr) {
        char folder[MAX_PATH];
        if (!ExtractDirectory(path, folder, sizeof folder))
            return nullptr;
        return Open(window, folder, /*parameters=*/nullptr, SW_SHOWNORMAL);
    }
    char parameters[MAX_PATH + sizeof folderSelection];
    const int length = std::snprintf(parameters, sizeof parameters, folderSelection, path);
    if (length < 0 || length >= static_cast<int>(sizeof parameters))
        return nullptr;
    return Open(window, "explorer.exe", parameters, SW_SHOWNORMAL);
}
