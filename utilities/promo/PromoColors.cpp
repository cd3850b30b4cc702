#include "utilities/promo/PromoColors.h"

#include "utilities/base/SameText.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstdlib>

namespace vtr {

namespace {

struct SystemColor {
    const char* name;
    int index;
};

constexpr SystemColor systemColors[] = {
    {"BTNFACE", COLOR_BTNFACE},   {"BTNTEXT", COLOR_BTNTEXT}, {"MENU", COLOR_MENU},
    {"MENUTEXT", COLOR_MENUTEXT}, {"WINDOW", COLOR_WINDOW},   {"WINDOWTEXT", COLOR_WINDOWTEXT},
};

struct NamedColor {
    const char* name;
    COLORREF color;
};

/// Scripts rely on these numbers: blue is the highest byte, red the lowest.
constexpr NamedColor namedColors[] = {
    {"black", 0x000000},        {"white", 0xFFFFFF},  {"red", 0x0000FF},    {"green", 0x00FF00},
    {"blue", 0xFF0000},         {"gray", 0x808080},   {"pink", 0xFF80FF},   {"yellow", 0x00FFFF},
    {"light yellow", 0x80FFFF}, {"maroon", 0x000080}, {"orange", 0x0080FF}, {"cyan", 0xFFFF00},
    {"navy", 0x800000},
};

} // namespace

bool PromoColor(const char* text, COLORREF& color) {
    if (StringIsNumericA(text)) {
        const long number = std::strtol(text, nullptr, 10);
        if (number >= 0)
            color = static_cast<COLORREF>(number);
        return true;
    }
    for (const SystemColor& entry : systemColors) {
        if (SameText(text, entry.name)) {
            color = GetSysColor(entry.index);
            return true;
        }
    }
    for (const NamedColor& entry : namedColors) {
        if (SameText(text, entry.name)) {
            color = entry.color;
            return true;
        }
    }
    return false;
}

} // namespace vtr
