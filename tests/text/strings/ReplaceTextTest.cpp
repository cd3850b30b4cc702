#include "utilities/text/strings/StringFunctions.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"

#include <gtest/gtest.h>

namespace {

/// The rule of `SearchAndReplaceAll`, word for word: at each position the rest of the text is
/// moved.
std::string ReplaceByRule(std::string text, const std::string& find, const std::string& replacement,
                          std::size_t bufferSize, bool caseSensitive) {
    if (text.empty() || find.empty() || bufferSize < 2 || find.size() > text.size())
        return text;
    const std::size_t growth =
        replacement.size() > find.size() ? replacement.size() - find.size() : 0;
    for (std::size_t position = 0; position + find.size() <= text.size(); ++position) {
        if (text.size() + growth >= bufferSize)
            break;
        const char* place = text.c_str() + position;
        const int differs = caseSensitive ? std::strncmp(place, find.c_str(), find.size())
                                          : _strnicmp(place, find.c_str(), find.size());
        if (differs != 0)
            continue;
        text.replace(position, find.size(), replacement);
        if (!replacement.empty())
            position += replacement.size() - 1;
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

/// What `ReplaceSubStrings` makes of a whole buffer.
std::string SubStringsByRule(const std::string& text, const std::string& find,
                             const std::string& replacement, std::size_t size) {
    std::string result;
    for (std::size_t place = 0; place < text.size() && !find.empty();) {
        const bool hit = text.compare(place, find.size(), find) == 0;
        result += hit ? replacement : text.substr(place, 1);
        place += hit ? find.size() : 1;
    }
    result.resize(std::min(result.size(), size - 1));
    result.resize(size);
    return result;
}

} // namespace

TEST(TextReplacing, FollowsTheRulesOnRandomTexts) {
    constexpr unsigned seed = 20;
    std::mt19937 random(seed);
    for (int i = 0; i < 20'000; ++i) {
        const std::string text = RandomText(random, 30, "aAb");
        const std::string find = RandomText(random, 3, "aAb");
        const std::string replacement = RandomText(random, 5, "aAbX");
        const std::size_t size = random() % 3 == 0 ? random() % 40 : text.size() + random() % 20;
        const bool caseSensitive = random() % 2 == 0;
        SCOPED_TRACE("seed 20: <" + text + "> <" + find + "> <" + replacement + "> in " +
                     std::to_string(size));
        const std::string expected = ReplaceByRule(text, find, replacement, size, caseSensitive);
        for (const auto replace : {&SearchAndReplaceAll, &SearchAndReplaceAllSingleByte})
            ASSERT_EQ(
                Replaced(replace, text, find.c_str(), replacement.c_str(), size, caseSensitive),
                expected);
        GuardedBytes copy(size + 1);
        ReplaceSubStrings(text.c_str(), copy.Data(), static_cast<int>(size) + 1, find.c_str(),
                          replacement.c_str());
        ASSERT_EQ(copy.View(), SubStringsByRule(text, find, replacement, size + 1));

        const unsigned position = random() % 32;
        const unsigned length = random() % 4 == 0 ? ~0u : random() % 6;
        std::string moved = text;
        if (!text.empty() && !replacement.empty() && position <= text.size())
            moved.replace(position, length, replacement);
        std::string place = text + std::string(8, '\0');
        ReplaceTextA(place.data(), position, length, replacement.c_str());
        ASSERT_STREQ(place.c_str(), moved.c_str()) << position << ", " << length;

        int index = 7;
        const char* found = StrChrPos(place.data(), 'A', &index);
        ASSERT_EQ(index, static_cast<int>(moved.find('A')));
        ASSERT_EQ(found, index < 0 ? nullptr : place.data() + index);
        ASSERT_EQ(StringContainsCharsFromSetOnly(text.c_str(), find.c_str()),
                  !text.empty() && text.find_first_not_of(find) == text.npos);
    }
}

TEST(TextReplacing, NullIsNothing) {
    const auto replace = &SearchAndReplaceAll;
    EXPECT_EQ(Replaced(replace, "abab", "b", nullptr, 10, true), "aa");
    EXPECT_EQ(Replaced(replace, "a", nullptr, "b", 10, true), "a");
    SearchAndReplaceAll(nullptr, "a", "b", 10, true);
    char text[] = "x";
    ReplaceSubStrings("a", nullptr, 5, "a", "b");
    ReplaceSubStrings("a", text, 0, "a", "b");
    ReplaceTextA(text, 0, 1, nullptr);
    ReplaceTextA(nullptr, 0, 0, "X");
    EXPECT_STREQ(text, "x");
    const char* const missing = nullptr;
    for (const auto& [source, find, replacement] :
         {std::tuple{missing, "a", "b"}, {"a", missing, "b"}, {"a", "a", missing}}) {
        text[0] = 'x';
        ReplaceSubStrings(source, text, 2, find, replacement);
        EXPECT_STREQ(text, "");
    }
    int position = 7;
    EXPECT_TRUE(StrChrPos(nullptr, 'a', &position) == nullptr && position == -1);
    EXPECT_EQ(StrChrPos(text, '\0', nullptr), nullptr);
    EXPECT_FALSE(StringContainsCharsFromSetOnly(nullptr, "a"));
    EXPECT_FALSE(StringContainsCharsFromSetOnly("a", nullptr));
}

TEST(TextReplacing, CharactersOfTwoBytes) {
    const CodePage japanese(932);
    const auto replace = &SearchAndReplaceAll;
    // One character, whose second byte is a backslash.
    EXPECT_EQ(Replaced(replace, "\x83\x5C\\x", "\\", "/", 20, true), "\x83\x5C/x");
    EXPECT_EQ(Replaced(replace, "\\\x83\x5C\\", "\\", "", 20, true), "\x83\x5C");
    EXPECT_EQ(Replaced(&SearchAndReplaceAllSingleByte, "\x83\x5C\\", "\\", "/", 20, true),
              "\x83//");
    // The wide letters "A" and "a".
    EXPECT_EQ(Replaced(replace, "\x82\x60\x82\x81", "\x82\x81", "-", 20, false), "--");
}
