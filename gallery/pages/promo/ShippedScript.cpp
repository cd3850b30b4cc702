#include "gallery/pages/promo/ShippedScript.h"

#include "gallery/text/Text.h"
#include "utilities/text/language/LanguageStrings.h"
#include "vtrfutls/FileNames.h"

#include <fstream>
#include <iterator>
#include <windows.h>

namespace gallery {

std::string ShippedScriptPath() {
    char folder[MAX_PATH] = "";
    ExtractDirectory(GetStringFile(), folder, sizeof folder);
    return std::string(folder) + "promo-script.ini";
}

std::wstring ShippedScript() {
    std::ifstream file(ShippedScriptPath(), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    std::wstring lines;
    for (const wchar_t character : Widen(text.c_str())) {
        if (character == L'\n' && (lines.empty() || lines.back() != L'\r'))
            lines += L'\r';
        lines += character;
    }
    return lines;
}

} // namespace gallery
