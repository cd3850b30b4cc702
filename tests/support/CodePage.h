#ifndef VTRUTILS_TESTS_SUPPORT_CODEPAGE_H
#define VTRUTILS_TESTS_SUPPORT_CODEPAGE_H

#include <clocale>
#include <stdexcept>
#include <string>

// Its one-letter macros break C++ headers that are included after it.
#include <mbctype.h>

/// Sets the multibyte code page of the C run-time while it lives. The run-time of Windows is one
/// for all binaries of a process, so the library sees it too.
class CodePage {
public:
    explicit CodePage(int codePage) : old(_getmbcp()) {
        if (_setmbcp(codePage) != 0)
            throw std::runtime_error("no code page " + std::to_string(codePage));
    }
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
    ~CodePage() { _setmbcp(old == 0 ? _MB_CP_SBCS : old); }

private:
    int old;
};

/// Sets the C locale while it lives.
class Locale {
public:
    explicit Locale(const char* name) : old(std::setlocale(LC_ALL, nullptr)) {
        if (std::setlocale(LC_ALL, name) == nullptr)
            throw std::runtime_error(std::string("no locale ") + name);
    }
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;
    ~Locale() { std::setlocale(LC_ALL, old.c_str()); }

private:
    std::string old;
};

#endif
