#include "utilities/base/MultibyteText.h"

// Its one-letter macros break C++ headers that are included after it.
#include <mbctype.h>

namespace vtr {

bool IsMultibyteCodePage() {
    // Some versions of the run-time report the number of a single-byte code page here, not 0.
    switch (_getmbcp()) {
    case 932:
    case 936:
    case 949:
    case 950:
    case 1361:
        return true;
    default:
        return false;
    }
}

bool CharacterSteps::IsPair(const char* text) {
    return _ismbblead(static_cast<unsigned char>(text[0])) != 0 &&
           _ismbbtrail(static_cast<unsigned char>(text[1])) != 0;
}

} // namespace vtr
