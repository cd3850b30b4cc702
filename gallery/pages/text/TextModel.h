#ifndef VTRUTILS_GALLERY_PAGES_TEXT_TEXTMODEL_H
#define VTRUTILS_GALLERY_PAGES_TEXT_TEXTMODEL_H

#include <string>
#include <vector>

namespace gallery {

/// What the library makes of texts and numbers for display, in wide texts. Immutable and safe but
/// for the language that is chosen: one thread at a time.

/// What a function makes of what was typed.
struct MadeText {
    const wchar_t* function;
    const char* callKey; ///< of the text that names the call, "%1" being the function; or null
    std::wstring result; ///< "" when there is nothing to make it of
};

/// What was typed. The numbers are digits.
struct TypedTexts {
    std::wstring text;
    std::wstring milliseconds;
    std::wstring bytes;
};

struct MadeTexts {
    std::vector<MadeText> rows; ///< always the same functions
    bool textFits;              ///< in the code page of the language
    bool numbersFit;            ///< in the types of the functions
    bool offends;
    std::wstring address; ///< the first one in the text, with its scheme; "" for none
};

MadeTexts TextsMadeOf(const TypedTexts& typed);

} // namespace gallery

#endif
