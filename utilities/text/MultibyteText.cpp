#include "utilities/text/MultibyteText.h"

// Its one-letter macros break C++ headers that are included behind it.
#include <mbctype.h>

namespace vtr {

bool IsMultibyteCodePage() {
    return _getmbcp() != 0;
}

bool CharacterSteps::IsPair(const char* text) {
    return _ismbblead(static_cast<unsigned char>(text[0])) != 0 &&
           _ismbbtrail(static_cast<unsigned char>(text[1])) != 0;
}

} // namespace vtr
