#include "utilities/text/html/HtmlText.h"

#include "utilities/base/MultibyteText.h"

#include <cstdio>
#include <cstring>

void ParseCarriageReturns(const char* source, char* destination, long /*size*/) {
    if (destination == nullptr)
        return;
    const vtr::CharacterSteps steps;
    while (source != nullptr && *source != '\0') {
        if (*source == '\\' && (source[1] == 'r' || source[1] == 'n')) {
            *destination++ = '\r';
            source += 2;
            continue;
        }
        for (std::size_t bytes = steps.Length(source); bytes > 0; --bytes)
            *destination++ = *source++;
    }
    *destination = '\0';
}

void MakeLengthString(long milliseconds, char* buffer, int showMilliseconds, int omitHours) {
    if (buffer == nullptr)
        return;
    constexpr long inSecond = 1000;
    constexpr long inMinute = 60 * inSecond;
    constexpr long inHour = 60 * inMinute;
    const int hours = static_cast<int>(milliseconds / inHour);
    const int minutes = static_cast<int>(milliseconds % inHour / inMinute);
    const int seconds = static_cast<int>(milliseconds % inMinute / inSecond);
    const int rest = static_cast<int>(milliseconds % inSecond);
    if (hours != 0 && omitHours == 0)
        buffer += std::sprintf(buffer, "%02d:", hours);
    buffer += std::sprintf(buffer, "%02d:%02d", minutes, seconds);
    if (showMilliseconds != 0)
        std::sprintf(buffer, ":%03d", rest);
}

void MakeFileSizeString(unsigned long bytes, char* buffer, int /*size*/) {
    if (buffer == nullptr)
        return;
    constexpr unsigned long kilobyte = 1024;
    constexpr unsigned long megabyte = kilobyte * kilobyte;
    if (bytes < kilobyte)
        std::sprintf(buffer, "%lu Bytes", bytes);
    else if (bytes < megabyte)
        std::sprintf(buffer, "%lu KB", bytes / kilobyte);
    else
        std::sprintf(buffer, "%0.2f MB", static_cast<double>(bytes) / megabyte);
}
