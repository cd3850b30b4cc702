#include "utilities/base/ReservedCharacters.h"
#include "utilities/text/strings/StringFunctions.h"

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
    if (text != nullptr)
        vtr::ReplaceReservedCharacters(text, '_');
}
