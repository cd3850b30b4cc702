#include "gallery/text/Text.h"

#include "utilities/text/language/LanguageStrings.h"
#include "vtrfutls/FileNames.h"

#include <cstdarg>
#include <cwchar>
#include <iterator>
#include <mbstring.h>
#include <windows.h>

namespace gallery {

std::wstring Widen(const char* text) {
    return Widen(text, GetCurrentCodePage());
}

std::wstring Widen(const char* text, unsigned codePage) {
    const int units =
        text == nullptr ? 0 : MultiByteToWideChar(codePage, /*dwFlags=*/0, text, -1, nullptr, 0);
    if (units <= 1)
        return {};
    std::wstring wide(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(codePage, /*dwFlags=*/0, text, -1, wide.data(), units);
    wide.pop_back();
    return wide;
}

bool Narrow(const std::wstring& wide, std::string& narrow) {
    return Narrow(wide, narrow, GetCurrentCodePage());
}

bool Narrow(const std::wstring& wide, std::string& narrow, unsigned codePage) {
    std::string result;
    const int units = static_cast<int>(wide.size());
    const int bytes = WideCharToMultiByte(codePage, /*dwFlags=*/0, wide.data(), units, nullptr, 0,
                                          /*lpDefaultChar=*/nullptr, /*lpUsedDefaultChar=*/nullptr);
    result.resize(static_cast<std::size_t>(bytes));
    WideCharToMultiByte(codePage, /*dwFlags=*/0, wide.data(), units, result.data(), bytes,
                        /*lpDefaultChar=*/nullptr, /*lpUsedDefaultChar=*/nullptr);
    // A character that was replaced by a similar one or by "?" does not come back as it was.
    if (Widen(result.c_str(), codePage) != wide)
        return false;
    narrow = result;
    return true;
}

std::string NarrowAnyway(const std::wstring& wide) {
    std::string narrow;
    if (!Narrow(wide, narrow)) {
        for (const wchar_t character : wide) {
            std::string one;
            narrow += Narrow(std::wstring(1, character), one) ? one : "?";
        }
    }
    return narrow;
}

std::wstring AbsolutePath(const std::wstring& path) {
    wchar_t absolute[MAX_PATH];
    const DWORD length = GetFullPathNameW(path.c_str(), MAX_PATH, absolute, /*lpFilePart=*/nullptr);
    return length > 0 && length < MAX_PATH ? absolute : path;
}

std::wstring NameOfFile(const std::wstring& path) {
    return path.substr(path.find_last_of(L"\\/") + 1);
}

std::string ProgramFolder() {
    char program[MAX_PATH] = "";
    char folder[MAX_PATH] = "";
    GetModuleFileNameA(/*hModule=*/nullptr, program, sizeof program);
    ExtractDirectory(program, folder, sizeof folder);
    return folder;
}

int CompareNarrow(const std::string& left, const std::string& right) {
    // With a second zero at the end: half of a character there makes the comparison read on.
    const std::string a = left + '\0';
    const std::string b = right + '\0';
    return _mbsicmp(reinterpret_cast<const unsigned char*>(a.c_str()),
                    reinterpret_cast<const unsigned char*>(b.c_str()));
}

std::wstring LowerCase(std::wstring text) {
    CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

std::wstring Format(const wchar_t* format, ...) {
    wchar_t text[1024];
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vswprintf(text, std::size(text), format, arguments);
    va_end(arguments);
    return length > 0 ? std::wstring(text, static_cast<std::size_t>(length)) : std::wstring();
}

} // namespace gallery
