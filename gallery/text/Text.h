#ifndef VTRUTILS_GALLERY_TEXT_TEXT_H
#define VTRUTILS_GALLERY_TEXT_TEXT_H

#include <string>

/// Between the library's narrow texts, which are in the code page of the language that was chosen,
/// and the wide ones that windows show. One thread at a time.

namespace gallery {

/// "" for null.
std::wstring Widen(const char* text);
std::wstring Widen(const char* text, unsigned codePage);

/// False, with `narrow` unchanged, when the code page lacks one of the characters.
bool Narrow(const std::wstring& wide, std::string& narrow);
bool Narrow(const std::wstring& wide, std::string& narrow, unsigned codePage);

/// In the code page of the language; characters that it lacks become "?".
std::string NarrowAnyway(const std::wstring& wide);

/// A relative name would point elsewhere once the current folder changes.
std::wstring AbsolutePath(const std::wstring& path);

/// What comes after the last separator.
std::wstring NameOfFile(const std::wstring& path);

/// Where the program stands, with a trailing backslash.
std::string ProgramFolder();

/// Below 0, 0 or above 0: the order in which the library sorts and looks up texts.
int CompareNarrow(const std::string& left, const std::string& right);

/// With the case rule of the user's language.
std::wstring LowerCase(std::wstring text);

/// As `swprintf` does; "" when the result has more than 1,023 characters.
std::wstring Format(const wchar_t* format, ...);

} // namespace gallery

#endif
