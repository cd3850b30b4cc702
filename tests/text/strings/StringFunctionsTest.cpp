#include "utilities/text/strings/StringFunctions.h"

#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cctype>
#include <gtest/gtest.h>
#include <regex>
#include <tuple>
#include <windows.h>

namespace {

using namespace std::string_view_literals;

/// Up to `longest` bytes of the alphabet.
std::string Text(Dice& dice, int longest, std::string_view alphabet) {
    std::string text(static_cast<std::size_t>(dice.Below(longest + 1)), ' ');
    for (char& c : text)
        c = alphabet[static_cast<std::size_t>(dice.Below(static_cast<int>(alphabet.size())))];
    return text;
}

/// Null is as good as an empty text.
const char* OrNull(Dice& dice, const std::string& text) {
    return text.empty() && dice.Below(2) == 0 ? nullptr : text.c_str();
}

/// Without up to `most` bytes of the set at each end that is asked for.
std::string Trimmed(std::string text, const char* set, std::size_t most = ~0u, bool front = true,
                    bool back = true) {
    const std::size_t first = std::min(text.find_first_not_of(set), text.size());
    text.erase(0, front ? std::min(first, most) : 0);
    const std::size_t end = text.find_last_not_of(set) + 1;
    return back ? text.substr(0, text.size() - std::min(text.size() - end, most)) : text;
}

/// The rule of `SearchAndReplaceAll`, word for word: at each position the rest of the text is
/// moved.
std::string ReplaceByRule(std::string text, const std::string& find, const std::string& replacement,
                          std::size_t bufferSize, bool caseSensitive) {
    if (text.empty() || find.empty() || bufferSize < 2 || find.size() > text.size())
        return text;
    const std::size_t growth = std::max(replacement.size(), find.size()) - find.size();
    const auto differs = caseSensitive ? &std::strncmp : &_strnicmp;
    for (std::size_t place = 0;
         place + find.size() <= text.size() && text.size() + growth < bufferSize; ++place) {
        if (differs(text.c_str() + place, find.c_str(), find.size()) != 0)
            continue;
        text.replace(place, find.size(), replacement);
        place += replacement.empty() ? 0 : replacement.size() - 1;
    }
    return text;
}

template <class Function>
std::string Replaced(Function function, const std::string& text, const char* find,
                     const char* replacement, std::size_t bufferSize, bool caseSensitive) {
    GuardedBytes buffer(std::max(bufferSize, text.size() + 1));
    std::memcpy(buffer.Data(), text.c_str(), text.size() + 1);
    function(buffer.Data(), find, replacement, static_cast<unsigned>(bufferSize), caseSensitive);
    return buffer.Data();
}

/// A whole buffer of `size` characters that holds the text, cut, and is zero after it.
template <class String>
String Stored(String text, std::size_t size, bool reserveTerminator = true) {
    text.resize(std::min(text.size(), size - (reserveTerminator ? 1 : 0)));
    text.resize(size);
    return text;
}

/// What `ReplaceSubStrings` finds.
std::string SubStringsByRule(const std::string& text, const std::string& find,
                             const std::string& replacement) {
    std::string result;
    for (std::size_t place = 0; place < text.size() && !find.empty();) {
        const bool hit = text.compare(place, find.size(), find) == 0;
        result += hit ? replacement : text.substr(place, 1);
        place += hit ? find.size() : 1;
    }
    return result;
}

/// The low bytes of the units.
std::string ReducedByRule(std::wstring units) {
    units.erase(0, units.starts_with(L'\xFEFF') ? 1 : 0);
    std::string reduced;
    for (const wchar_t unit : units.substr(0, units.find(L"\0\0"sv)))
        reduced += static_cast<char>(unit);
    return reduced;
}

/// The first pair that is of two zeros or of none tells.
bool UnicodeByRule(const std::string& bytes, bool terminated) {
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        if ((bytes[i] == '\0') == (bytes[i + 1] == '\0'))
            return bytes[i] == '\0' || bytes.starts_with("\xFF\xFE");
    }
    return bytes.size() > 1 && (!terminated || bytes.ends_with("\0\0"sv));
}

} // namespace

TEST(StringFunctions, TrimByTheRule) {
    const struct {
        decltype(&RemoveSpacesA) narrow;
        decltype(&RemoveSpacesW) wide;
        bool front;
        bool back;
    } rows[] = {{&RemoveLeadingSpacesA, &RemoveLeadingSpacesW, true, false},
                {&RemoveTrailingSpacesA, &RemoveTrailingSpacesW, false, true},
                {&RemoveSpacesA, &RemoveSpacesW, true, true}};
    EachRound(3, 3'000, [&](Dice& dice, int) {
        const std::string text = Text(dice, 8, "  \r\n\ta\"\"");
        const std::wstring units(text.begin(), text.end());
        for (const auto& row : rows) {
            const bool breaks = dice.Below(2) == 0;
            GuardedBytes narrow{std::string_view(text)};
            GuardedUnits wide{std::wstring_view(units)};
            row.narrow(narrow.Data(), breaks);
            row.wide(wide.Data(), breaks);
            ASSERT_EQ(narrow.Data(),
                      Trimmed(text, breaks ? " \r\n" : " ", ~0u, row.front, row.back));
            ASSERT_TRUE(
                std::equal(narrow.View().begin(), narrow.View().end(), wide.View().begin()));
        }
        const std::string white = Trimmed(text, " \t\n");
        GuardedBytes destination(white.size() + 1);
        ASSERT_EQ(TrimWhitespace(OrNull(dice, text), destination.Data()), !white.empty());
        ASSERT_EQ(destination.Data(), white);
        const int most = dice.Below(5) - 1;
        GuardedBytes place{std::string_view(text)};
        const bool some = TrimChar('"', place.Data(), place.Data(), most);
        ASSERT_EQ(some, *place.Data() != '\0');
        ASSERT_EQ(place.Data(), Trimmed(text, "\"", static_cast<std::size_t>(std::max(most, 0))));
    });
    const std::string longest(2047, 'x');
    GuardedBytes destination(2048);
    EXPECT_TRUE(TrimWhitespace((longest + "x").c_str(), destination.Data()));
    EXPECT_EQ(destination.Data(), longest);
}

TEST(StringFunctions, ReplaceAndSearchByTheRule) {
    EachRound(20, 20'000, [](Dice& dice, int) {
        const std::string text = Text(dice, 30, "aAb");
        const std::string find = Text(dice, 3, "aAb");
        const std::string replacement = Text(dice, 5, "aAbX");
        const std::size_t size = static_cast<std::size_t>(
            dice.Below(3) == 0 ? dice.Below(40) : static_cast<int>(text.size()) + dice.Below(20));
        const bool caseSensitive = dice.Below(2) == 0;
        SCOPED_TRACE("<" + text + "> <" + find + "> <" + replacement + "> " + std::to_string(size));
        for (const auto replace : {&SearchAndReplaceAll, &SearchAndReplaceAllSingleByte})
            ASSERT_EQ(Replaced(replace, text, OrNull(dice, find), OrNull(dice, replacement), size,
                               caseSensitive),
                      ReplaceByRule(text, find, replacement, size, caseSensitive));
        GuardedBytes copy(size + 1);
        ReplaceSubStrings(OrNull(dice, text), copy.Data(), static_cast<int>(size) + 1,
                          OrNull(dice, find), replacement.c_str());
        ASSERT_EQ(copy.View(), Stored(SubStringsByRule(text, find, replacement), size + 1));

        const unsigned position = static_cast<unsigned>(dice.Below(32));
        const unsigned length = dice.Below(4) == 0 ? ~0u : static_cast<unsigned>(dice.Below(6));
        std::string moved = text;
        if (!text.empty() && !replacement.empty() && position <= text.size())
            moved.replace(position, length, replacement);
        std::string place = text + std::string(8, '\0');
        ReplaceTextA(place.data(), position, length, OrNull(dice, replacement));
        ASSERT_STREQ(place.c_str(), moved.c_str()) << position << ", " << length;

        int index = 7;
        const char* found = StrChrPos(place.data(), 'A', &index);
        ASSERT_EQ(index, static_cast<int>(moved.find('A')));
        ASSERT_EQ(found, index < 0 ? nullptr : place.data() + index);
        ASSERT_EQ(StringContainsCharsFromSetOnly(OrNull(dice, text), OrNull(dice, find)),
                  !text.empty() && text.find_first_not_of(find) == text.npos);
    });
}

TEST(StringFunctions, ConvertUnicodeByTheRule) {
    EachRound(11, 10'000, [](Dice& dice, int) {
        const std::string bytes =
            (dice.Below(4) == 0 ? "\xFF\xFE" : "") + Text(dice, 12, "\0\0\0a\1\xFF\xFE"sv);
        const int length = static_cast<int>(bytes.size());
        const std::size_t size = static_cast<std::size_t>(1 + dice.Below(9));
        const bool reserve = dice.Below(2) == 0;
        std::wstring units(bytes.size() / 2, L'\0');
        std::memcpy(units.data(), bytes.data(), units.size() * 2);
        GuardedBytes narrow(std::string_view(bytes), /*terminated=*/false);
        const auto* data = reinterpret_cast<const unsigned char*>(narrow.Data());
        const bool mark = units.starts_with(L'\xFEFF');
        ASSERT_EQ(length > 1 && StringHasUnicodeHeader(data), mark);
        for (const bool terminated : {false, true})
            ASSERT_EQ(StringIsUnicode(data, length, terminated),
                      mark || UnicodeByRule(bytes, terminated));

        GuardedUnits source(std::wstring_view(units), /*terminated=*/false);
        GuardedBytes reduced(size);
        ConvertUnicodeToSingleByte(source.Data(), static_cast<int>(units.size()), reduced.Data(),
                                   static_cast<unsigned>(size), reserve);
        ASSERT_EQ(reduced.View(), Stored(ReducedByRule(units), size, reserve));

        GuardedBytes copied(size);
        ASSERT_EQ(CopyCharToTChar(narrow.Data(), static_cast<unsigned>(length), copied.Data(),
                                  static_cast<unsigned>(size)),
                  !bytes.empty());
        const bool unicode = StringIsUnicode(data, length, true);
        ASSERT_EQ(copied.View(), Stored(unicode ? ReducedByRule(units) : bytes, size));
    });
    static constexpr unsigned char kept[] = "\xFF\xFE"
                                            "a\0b\0\0",
                                   lost[] = "\xFF\xFE"
                                            "a\1\0";
    EXPECT_EQ(NumConvertibleUnicodeChars(kept, sizeof kept), 2);
    EXPECT_EQ(NumConvertibleUnicodeChars(lost, sizeof lost), 0);
    EXPECT_TRUE(StringIsConvertibleUnicode(kept, sizeof kept));
    EXPECT_FALSE(StringIsConvertibleUnicode(lost, sizeof lost));
    char text[] = "xy";
    ConvertUnicodeToSingleByte(L"abcdef", text, sizeof text);
    EXPECT_STREQ(text, "ab");
    GuardedUnits wide(4);
    ConvertSingleByteToUnicode("\xE4"
                               "bcdef",
                               wide.Data(), 4);
    EXPECT_STREQ(wide.Data(), L"\xE4"
                              L"bc");
}

TEST(StringFunctions, NullAndNoRoomAreNothing) {
    char text[] = "a ";
    int position = 7;
    RemoveSpacesA(nullptr, true);
    RemoveSpacesW(nullptr, true);
    MakeLowerCase(nullptr);
    MakeValidFileName(nullptr);
    SearchAndReplaceAll(nullptr, "a", "b", 10, true);
    ReplaceSubStrings("a", text, 0, "a", "b");
    ReplaceTextA(nullptr, 0, 0, "X");
    ConvertUnicodeToSingleByte(L"a", 1, nullptr, 10, true);
    GUIDToString({}, text, 0, true);
    EXPECT_FALSE(CopyCharToTChar("a", 1, text, 0) || CopyCharToTChar("a", 1, nullptr, 4));
    EXPECT_FALSE(TrimWhitespace("a", nullptr) || TrimChar('a', "b", nullptr, 1));
    EXPECT_FALSE(StringIsNumericA(nullptr) || StringIsFloatW(nullptr));
    EXPECT_FALSE(StringIsUnicode(nullptr, 10, false) || StringIsConvertibleUnicode(nullptr, 10));
    EXPECT_TRUE(StrChrPos(nullptr, 'a', &position) == nullptr && position == -1);
    EXPECT_STREQ(text, "a ");
    ReplaceSubStrings("a", text, 2, "a", nullptr);
    EXPECT_STREQ(text, "");
}

TEST(StringFunctions, CharactersOfTwoBytes) {
    const CodePage japanese(932);
    const auto replace = &SearchAndReplaceAll;
    // One character, whose second byte is a backslash.
    EXPECT_EQ(Replaced(replace, "\x83\x5C\\x", "\\", "/", 20, true), "\x83\x5C/x");
    EXPECT_EQ(Replaced(replace, "\\\x83\x5C\\", "\\", "", 20, true), "\x83\x5C");
    EXPECT_EQ(Replaced(&SearchAndReplaceAllSingleByte, "\x83\x5C\\", "\\", "/", 20, true),
              "\x83//");
    // The wide letters "A" and "a".
    EXPECT_EQ(Replaced(replace, "\x82\x60\x82\x81", "\x82\x81", "-", 20, false), "--");
    char result[16];
    EXPECT_TRUE(TrimChar('\\', "\\\x83\x5C\\", result, 5));
    EXPECT_STREQ(result, "\x83\x5C");
    EXPECT_TRUE(TrimChar('\x83', "\x83\x5C", result, 1));
    EXPECT_STREQ(result, "\x83\x5C") << "half of a character is none";
    EXPECT_FALSE(StringIsNumericA("1\x83\x31")) << "what follows the lead byte is no trail byte";
    EXPECT_FALSE(StringIsNumericA("1\x83"));
    char name[] = "a:b?c <>\"/\\|*.txt\x83\x5C\\\x83\x7C|";
    MakeValidFileName(name);
    EXPECT_STREQ(name, "a_b_c _______.txt\x83\x5C_\x83\x7C_");
}

TEST(StringFunctions, EveryShortTextIsANumberOrNot) {
    static constexpr char letters[] = "-.07+ e";
    const std::regex number("-?[0-9]+");
    const std::regex floating("-?([0-9]+[.]?[0-9]*|[.][0-9]+)");
    for (int n = 0; n < 7 * 7 * 7 * 7 * 7; ++n) {
        std::string text;
        for (int rest = n; rest > 0; rest /= 7)
            text += letters[rest % 7];
        const bool isNumber = std::regex_match(text, number);
        const bool isFloat = std::regex_match(text, floating);
        ASSERT_EQ(StringIsNumericA(text.c_str()), isNumber) << text;
        ASSERT_EQ(StringIsFloatA(text.c_str()), isFloat) << text;
    }
    for (const auto& [row, wide, isNumber, isFloat] : {std::tuple("whole", L"-07", true, true),
                                                       {"point first", L"-.5", false, true},
                                                       {"point last", L"1.", false, true},
                                                       {"no digit", L"-.", false, false}}) {
        EXPECT_EQ(StringIsNumericW(wide), isNumber) << row;
        EXPECT_EQ(StringIsFloatW(wide), isFloat) << row;
    }
    static constexpr std::pair<const char*, int> hexByDistance[] = {
        {"a", 10}, {"F", 15},  {"1A", 26},  {"123", 67}, {"1000", 48},
        {"", -1},  {"-1", -1}, {"0x1", -1}, {"1g1", -1}, {nullptr, -1}};
    for (const auto& [text, value] : hexByDistance)
        EXPECT_EQ(HexStringToInt(text), value) << testing::PrintToString(text);
}

TEST(StringFunctions, EveryByte) {
    const std::string_view inNames = " $%'-_@~`!()^#&+,;=[].";
    for (int c = 0; c < 256; ++c) {
        const char ch = static_cast<char>(c);
        char lower[] = {ch, '\0'};
        char upper[] = {ch, '\0'};
        EXPECT_EQ(IsHexCharacter(ch), c < 128 && std::isxdigit(c) != 0) << c;
        MakeLowerCase(lower);
        MakeUpperCase(upper);
        EXPECT_EQ(lower[0], static_cast<char>(std::tolower(c))) << c;
        EXPECT_EQ(upper[0], static_cast<char>(std::toupper(c))) << c;
        const bool valid = c != 0 && (inNames.find(ch) != inNames.npos || IsCharAlphaNumericA(ch));
        EXPECT_EQ(IsValidFileNameChar(ch, false), valid) << c;
        EXPECT_EQ(IsValidFileNameChar(ch, true), valid || c == '\\' || c == ':') << c;
    }
}

TEST(StringFunctions, GuidsThereAndBack) {
    static constexpr GUID guid = {0x0123ABCD, 0x4567, 0x89EF, {0, 1, 2, 0xFD, 4, 5, 6, 0xFF}};
    const std::string whole = "{0123ABCD-4567-89EF-0001-02FD040506FF}";
    for (const std::string& shown : {whole, whole.substr(1, 36)}) {
        char text[64];
        GUIDToString(guid, text, sizeof text, shown == whole);
        EXPECT_EQ(text, shown);
        GUID read{};
        EXPECT_FALSE(GUIDStringToGUID(read, nullptr) ||
                     GUIDStringToGUID(read, shown.substr(0, shown.size() - 1).c_str()) ||
                     GUIDStringToGUID(read, (shown + "}").c_str()));
        EXPECT_TRUE(GUIDIsZero(read)) << "unchanged";
        EXPECT_TRUE(GUIDStringToGUID(read, text) && IsEqualGUID(read, guid));
        GUIDToString(guid, text, 5, true);
        EXPECT_STREQ(text, "{012");
    }
    EXPECT_FALSE(GUIDIsZero({0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 1}}) || GUIDIsZero({1, 0, 0, {}}));
}

TEST(StringFunctions, CopyStringOwnsAnExactCopy) {
    AllocationFault fault("vtrutils.dll");
    char* text = nullptr;
    wchar_t* wide = nullptr;
    CopyStringA(&text, "abc");
    CopyStringW(&wide, L"abc");
    CopyStringA(&text, text + 1);
    CopyStringW(&wide, wide + 1);
    EXPECT_STREQ(text, "bc");
    EXPECT_STREQ(wide, L"bc");
    fault.FailAt(1);
    CopyStringA(&text, "longer");
    CopyStringW(&wide, nullptr);
    EXPECT_TRUE(text == nullptr && wide == nullptr);
}
