#ifndef VTRUTILS_BASE_LANGUAGESTEPS_H
#define VTRUTILS_BASE_LANGUAGESTEPS_H

#include "common/PageSteps.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/MultibyteText.h"

namespace vtr {

/// Steps over text of the language's: by the characters of its code page, or of the current
/// multibyte code page before a language has set one. Private to the library. Immutable and safe.
class LanguageSteps {
public:
    LanguageSteps() : LanguageSteps(CurrentCodePage()) {}

    std::size_t Length(const char* text) const {
        return hasPage ? inPage.Length(text) : multibyte.Length(text);
    }

protected:
    explicit LanguageSteps(unsigned codePage) : hasPage(CurrentCodePage() != 0), inPage(codePage) {}

private:
    bool hasPage;
    PageSteps inPage;
    CharacterSteps multibyte;
};

} // namespace vtr

#endif
