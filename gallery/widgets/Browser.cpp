#include "gallery/widgets/Browser.h"

#include "gallery/text/Text.h"
#include "utilities/system/files/FileFunctions.h"

namespace gallery {

bool OpenAddress(const std::wstring& address, HWND window) {
    std::string narrow;
    return Narrow(address, narrow) && LaunchBrowser(narrow.c_str(), window, SW_SHOWNORMAL);
}

} // namespace gallery
