#include "utilities/promo/PromoDocument.h"

#include "utilities/text/strings/StringFunctions.h"

#include <cstdio>
#include <cstdlib>

namespace vtr {

NumberedName::NumberedName(const char* name, int number) {
    std::snprintf(text, sizeof text, "%s.%d", name, number);
}

bool PromoSection::Read(const char* key, char* value, std::size_t size) const {
    const auto room = static_cast<unsigned>(size);
    if (index > 0)
        document.GetString(name, NumberedName(key, index).Get(), "", value, room);
    else
        document.GetString(name, key, "", value, room);
    return value[0] != '\0';
}

bool PromoSection::Number(const char* key, int& number) const {
    char value[260];
    if (!Text(key, value) || !StringIsNumericA(value))
        return false;
    // `long` has the size of `int`, and `strtol` ends at its limits.
    static_assert(sizeof(long) == sizeof(int));
    number = static_cast<int>(std::strtol(value, nullptr, 10));
    return true;
}

bool PromoSection::Natural(const char* key, int& number) const {
    int value = 0;
    if (!Number(key, value) || value < 0)
        return false;
    number = value;
    return true;
}

} // namespace vtr
