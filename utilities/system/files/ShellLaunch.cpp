#include "common/DynamicFunction.h"
#include "common/WidePath.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/system/files/FileFunctions.h"
#include "vtrfutls/FileNames.h"
#include "vtrfutls/Log.h"

#include <cstring>
#include <iterator>
#include <shellapi.h>
#include <shlwapi.h>

namespace {

constexpr wchar_t folderSelection[] = L"/select, ";

vtr::DynamicFunction<decltype(AssocQueryStringW)> assocQueryString("shlwapi.dll",
                                                                   "AssocQueryStringW");

HINSTANCE Open(HWND window, const wchar_t* file, const wchar_t* parameters, int showCommand) {
    return ShellExecuteW(window, L"open", file, parameters, /*lpDirectory=*/nullptr, showCommand);
}

bool Started(HINSTANCE result) {
    return reinterpret_cast<INT_PTR>(result) > 32;
}

/// The program that opens pages; false when there is none.
bool FindBrowser(wchar_t (&program)[MAX_PATH]) {
    DWORD length = MAX_PATH;
    return assocQueryString.Get() != nullptr &&
           SUCCEEDED(assocQueryString.Get()(/*flags=*/0, ASSOCSTR_EXECUTABLE, L".html", L"open",
                                            program, &length)) &&
           program[0] != L'\0';
}

} // namespace

bool LaunchBrowser(const char* url, HWND window, int showCommand) {
    if (url == nullptr)
        return false;
    const vtr::WidePath wide(url, vtr::CurrentCodePage());
    if (Started(Open(window, wide.Get(), /*parameters=*/nullptr, showCommand)))
        return true;
    wchar_t browser[MAX_PATH];
    if (FindBrowser(browser) && Started(Open(window, browser, wide.Get(), showCommand)))
        return true;
    return Started(Open(window, L"c:\\program files\\internet explorer\\iexplore.exe", wide.Get(),
                        showCommand));
}

HINSTANCE OpenContainingFolder(const char* path, HWND window) {
    if (path == nullptr)
        return nullptr;
    LogFmtA("Open Containing folder for %s", path);
    if (std::strchr(path, ',') != nullptr) {
        char folder[MAX_PATH];
        if (!ExtractDirectory(path, folder, sizeof folder))
            return nullptr;
        return Open(window, vtr::WidePath(folder, vtr::CurrentCodePage()).Get(),
                    /*parameters=*/nullptr, SW_SHOWNORMAL);
    }
    vtr::PathBuilder<MAX_PATH + std::size(folderSelection)> parameters;
    if (!parameters.Append(folderSelection) ||
        !parameters.Append(vtr::WidePath(path, vtr::CurrentCodePage()).Get()))
        return nullptr;
    return Open(window, L"explorer.exe", parameters.Get(), SW_SHOWNORMAL);
}
