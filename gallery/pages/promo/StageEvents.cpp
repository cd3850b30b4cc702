#include "gallery/pages/promo/StageEvents.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

#include <cstring>
#include <iterator>
#include <lmcons.h>
#include <windows.h>

namespace gallery {

namespace {

std::wstring Today() {
    wchar_t date[128] = L"";
    GetDateFormatW(LOCALE_USER_DEFAULT, /*dwFlags=*/0, /*lpDate=*/nullptr,
                   Text("DateFormat").c_str(), date, static_cast<int>(std::size(date)));
    return date;
}

std::wstring UserName() {
    wchar_t name[UNLEN + 1] = L"";
    DWORD size = static_cast<DWORD>(std::size(name));
    return GetUserNameW(name, &size) != FALSE ? name : L"?";
}

} // namespace

bool RewriteEventText(const char* event, const char* text, char* out, int outSize,
                      void* /*context*/) {
    std::string rewritten = text;
    const std::size_t place = rewritten.find("%1");
    std::string value;
    if (std::strcmp(event, "date") == 0)
        value = NarrowAnyway(Today());
    else if (std::strcmp(event, "user") == 0)
        value = NarrowAnyway(UserName());
    if (value.empty() || place == std::string::npos)
        return true;
    rewritten.replace(place, 2, value);
    if (rewritten.size() < static_cast<std::size_t>(outSize))
        std::memcpy(out, rewritten.c_str(), rewritten.size() + 1);
    return true;
}

} // namespace gallery
