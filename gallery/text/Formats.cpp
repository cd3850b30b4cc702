#include "gallery/text/Formats.h"

#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

#include <cstdlib>
#include <iterator>

namespace gallery {

namespace {

/// That of the language, or the user's own for the same language.
LCID Locale() {
    const LCID locale = LocaleNameToLCID(Text("Locale").c_str(), /*dwFlags=*/0);
    const LCID own = GetUserDefaultLCID();
    return locale == 0 || PRIMARYLANGID(locale) == PRIMARYLANGID(own) ? own : locale;
}

std::wstring LocaleText(LCID locale, LCTYPE what) {
    wchar_t text[16] = L"";
    GetLocaleInfoW(locale, what, text, static_cast<int>(std::size(text)));
    return text;
}

/// "3;0" is 3 and "3;2;0" is 32, as the format of numbers wants it.
UINT Grouping(const std::wstring& pattern) {
    UINT digits = 0;
    for (const wchar_t c : pattern) {
        if (c > L'0' && c <= L'9')
            digits = digits * 10 + static_cast<UINT>(c - L'0');
    }
    return digits;
}

} // namespace

std::wstring Number(long long number) {
    return Number(static_cast<double>(number), 0);
}

std::wstring Number(double number, unsigned decimals) {
    const LCID locale = Locale();
    std::wstring decimal = LocaleText(locale, LOCALE_SDECIMAL);
    std::wstring thousand = LocaleText(locale, LOCALE_STHOUSAND);
    NUMBERFMTW format{};
    format.NumDigits = decimals;
    format.LeadingZero = 1;
    format.Grouping = Grouping(LocaleText(locale, LOCALE_SGROUPING));
    format.lpDecimalSep = decimal.data();
    format.lpThousandSep = thousand.data();
    format.NegativeOrder = 1;
    const std::wstring plain = Format(L"%.*f", static_cast<int>(decimals), number);
    wchar_t text[80];
    return GetNumberFormatW(locale, /*dwFlags=*/0, plain.c_str(), &format, text,
                            static_cast<int>(std::size(text))) > 0
               ? text
               : plain;
}

std::wstring Size(double bytes) {
    constexpr const char* units[] = {"Bytes", "Kilobytes", "Megabytes", "Gigabytes", "Terabytes"};
    std::size_t unit = 0;
    while (bytes >= 1024 && unit + 1 < std::size(units)) {
        bytes /= 1024;
        ++unit;
    }
    return Text(units[unit], {Number(bytes, unit == 0 ? 0 : 1)});
}

std::wstring DateAndTime(const FILETIME& time) {
    SYSTEMTIME utc{};
    SYSTEMTIME local{};
    wchar_t date[80] = L"";
    wchar_t clock[80] = L"";
    if (!FileTimeToSystemTime(&time, &utc) ||
        !SystemTimeToTzSpecificLocalTime(/*lpTimeZoneInformation=*/nullptr, &utc, &local))
        return {};
    const LCID locale = Locale();
    GetDateFormatW(locale, DATE_SHORTDATE, &local, /*lpFormat=*/nullptr, date,
                   static_cast<int>(std::size(date)));
    GetTimeFormatW(locale, TIME_NOSECONDS, &local, /*lpFormat=*/nullptr, clock,
                   static_cast<int>(std::size(clock)));
    return std::wstring(date) + L" " + clock;
}

} // namespace gallery
