#include "gallery/text/Formats.h"
#include "gallery/text/Language.h"

#include <gtest/gtest.h>

namespace {

/// Some systems separate groups with a narrow space.
std::wstring Plain(std::wstring text) {
    for (wchar_t& c : text)
        c = c == L'\x202f' ? L'\xa0' : c;
    return text;
}

TEST(Formats, AreThoseOfTheLanguage) {
    constexpr struct {
        const char* language;
        const wchar_t* number;
        const wchar_t* size;
        const wchar_t* date; ///< the 15th of November, 2024
    } rows[] = {{"German", L"-1.234.567", L"74,3 GB", L"15.11.2024 12:"},
                {"Russian",
                 L"-1\xa0"
                 L"234\xa0"
                 L"567",
                 L"74,3 ГБ", L"15.11.2024 12:"},
                {"Japanese", L"-1,234,567", L"74.3 GB", L"2024/11/15 12:"},
                {"English", L"-1,234,567", L"74.3 GB", L"11/15/2024 "}};
    gallery::OpenLanguages();
    SYSTEMTIME utc{2024, 11, 0, 15, 12, 30, 0, 0};
    FILETIME time{};
    SystemTimeToFileTime(&utc, &time);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.language);
        ASSERT_TRUE(gallery::ChooseLanguage(row.language));
        EXPECT_EQ(row.number, Plain(gallery::Number(-1234567)));
        EXPECT_EQ(row.size, gallery::Size(76119.0 * 1024 * 1024));
        EXPECT_EQ(0u, gallery::DateAndTime(time).find(row.date))
            << gallery::DateAndTime(time).c_str();
    }
    ASSERT_TRUE(gallery::ChooseLanguage("English"));
    EXPECT_EQ(L"1,023 bytes", gallery::Size(1023));
    EXPECT_EQ(L"1.0 KB", gallery::Size(1024));
    EXPECT_EQ(L"2,048.0 TB", gallery::Size(2048.0 * 1024 * 1024 * 1024 * 1024));
}

} // namespace
