#include "utilities/base/OwnedText.h"
#include "utilities/text/strings/StringFunctions.h"

void CopyStringA(char** target, const char* source) {
    vtr::AssignText(target, source);
}

void CopyStringW(wchar_t** target, const wchar_t* source) {
    vtr::AssignText(target, source);
}
