#include "utilities/text/language/TextEscapes.h"

#include "utilities/base/LanguageSteps.h"

#include <cstddef>
#include <cstring>

namespace vtr {

namespace {

struct Escape {
    char result; ///< 0: none
    std::size_t length;
};

/// At a backslash that is the last of its run.
Escape EscapeAt(const char* text) {
    switch (text[1]) {
    case 'r':
        return text[2] == '\\' && text[3] == 'n' ? Escape{'\n', 4} : Escape{'\0', 0};
    case 'n':
        return {'\n', 2};
    case 't':
        return {'\t', 2};
    default:
        return {'\0', 0};
    }
}

} // namespace

void ResolveEscapes(char* text) {
    const LanguageSteps steps;
    const char* in = text;
    char* out = text;
    const auto copy = [&](std::size_t length) {
        std::memmove(out, in, length);
        in += length;
        out += length;
    };
    while (*in != '\0') {
        const std::size_t run = std::strspn(in, "\\");
        if (run == 0) {
            copy(steps.Length(in));
        } else if (in[run] == '"' || in[run] == '#') {
            in += run;
            copy(1);
        } else {
            copy(run - 1);
            const Escape escape = EscapeAt(in);
            in += escape.length;
            if (escape.result != '\0')
                *out++ = escape.result;
            else
                copy(1);
        }
    }
    *out = '\0';
}

} // namespace vtr
