#include "utilities/base/MultibyteText.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstring>
#include <windows.h>

namespace {

void ReplaceForbidden(char* text, char replacement) {
    const vtr::CharacterSteps steps;
    while (*text != '\0') {
        const std::size_t length = steps.Length(text);
        if (length == 1 && std::strchr("<>:\"/\\|?*", *text) != nullptr)
            *text = replacement;
        text += length;
    }
}

} // namespace

bool IsValidFileNameChar(char ch, bool allowPathCharacters) {
    if (ch == '\0')
        return false;
    if (allowPathCharacters && (ch == '\\' || ch == ':'))
        return true;
    return std::strchr(" $%'-_@~`!()^#&+,;=[].", ch) != nullptr || IsCharAlphaNumericA(ch) != FALSE;
}

void MakeValidFileName(char* text) {
    if (text != nullptr)
        ReplaceForbidden(text, '_');
}

void ValidateFileName(const char* in, char* out, char replacement) {
    if (in == nullptr || out == nullptr)
        return;
    std::memmove(out, in, std::strlen(in) + 1);
    ReplaceForbidden(out, replacement);
}
