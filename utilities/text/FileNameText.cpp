#include "utilities/text/MultibyteText.h"
#include "utilities/text/StringFunctions.h"

#include <cstring>
#include <windows.h>

bool IsValidFileNameChar(char ch, bool allowPathCharacters) {
    if (ch == '\0')
        return false;
    if (allowPathCharacters && (ch == '\\' || ch == ':'))
        return true;
    return std::strchr(" $%'-_@~`!()^#&+,;=[].", ch) != nullptr || IsCharAlphaNumericA(ch) != FALSE;
}

void MakeValidFileName(char* text) {
    if (text == nullptr)
        return;
    const vtr::CharacterSteps steps;
    while (*text != '\0') {
        const std::size_t length = steps.Length(text);
        if (length == 1 && std::strchr("<>:\"/\\|?*", *text) != nullptr)
            *text = '_';
        text += length;
    }
}
