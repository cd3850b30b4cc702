#include "utilities/base/ReservedCharacters.h"

#include "utilities/base/PathText.h"

#include <cstring>

namespace vtr {

void ReplaceReservedCharacters(char* text, char replacement) {
    const NameSteps steps(text);
    while (*text != '\0') {
        const std::size_t length = steps.Length(text);
        if (length == 1 && std::strchr("<>:\"/\\|?*", *text) != nullptr)
            *text = replacement;
        text += length;
    }
}

} // namespace vtr
