#include "utilities/text/StringFunctions.h"

#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>
#include <random>

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

std::string Replaced(const std::string& text, const char* find, const char* replacement,
                     std::size_t bufferSize, bool caseSensitive) {
    GuardedBytes buffer(std::max(bufferSize, text.size() + 1));
    std::memcpy(buffer.Data(), text.c_str(), text.size() + 1);
    SearchAndReplaceAll(buffer.Data(), find, replacement, static_cast<unsigned>(bufferSize),
                        caseSensitive);
    return buffer.Data();
}

std::string RandomText(std::mt19937& random, std::size_t longest, const char* letters) {
    const std::string_view alphabet(letters);
    std::string text(random() % (longest + 1), ' ');
    for (char& c : text)
        c = alphabet[random() % alphabet.size()];
    return text;
}

} // namespace

TEST(SearchAndReplaceAll, FollowsTheRuleOnRandomTexts) {
    constexpr unsigned seed = 20;
    std::mt19937 random(seed);
    for (int i = 0; i < 20'000; ++i) {
        const std::string text = RandomText(random, 30, "aAb");
        const std::string find = RandomText(random, 3, "aAb");
        const std::string replacement = RandomText(random, 5, "aAbX");
        const std::size_t size = text.size() + 1 + random() % 20;
        const bool caseSensitive = random() % 2 == 0;
        const std::string expected = ReplaceByRule(text, find, replacement, size, caseSensitive);
        ASSERT_EQ(Replaced(text, find.c_str(), replacement.c_str(), size, caseSensitive), expected)
            << "seed " << seed << ", round " << i << ": <" << text << "> <" << find << "> <"
            << replacement << "> in " << size;
        GuardedBytes buffer(size);
        std::memcpy(buffer.Data(), text.c_str(), text.size() + 1);
        SearchAndReplaceAllSingleByte(buffer.Data(), find.c_str(), replacement.c_str(),
                                      static_cast<unsigned>(size), caseSensitive);
        ASSERT_STREQ(buffer.Data(), expected.c_str()) << "seed " << seed << ", round " << i;
    }
}

TEST(SearchAndReplaceAll, EdgeCases) {
    static constexpr struct {
        const char* name;
        const char* text;
        const char* find;
        const char* replacement;
        std::size_t size;
        bool caseSensitive;
        const char* result;
    } rows[] = {
        {"removal skips the byte behind", "aaa", "a", "", 10, true, "a"},
        {"null replacement removes", "abab", "b", nullptr, 10, true, "aa"},
        {"never inside a replacement", "a", "a", "aa", 10, true, "aa"},
        {"last one that fits", "a.a.a", ".", "--", 7, true, "a--a.a"},
        {"none fits", "a.a.a", ".", "--", 6, true, "a.a.a"},
        {"text as long as the buffer", "a.a", ".", "-", 3, true, "a.a"},
        {"case ignored", "AbaB", "aB", "x", 10, false, "xx"},
        {"case kept", "AbaB", "aB", "x", 10, true, "Abx"},
        {"empty text", "", "a", "b", 10, true, ""},
        {"empty find", "a", "", "b", 10, true, "a"},
        {"null find", "a", nullptr, "b", 10, true, "a"},
        {"find longer than text", "ab", "abc", "x", 10, true, "ab"},
        {"whole text", "abc", "abc", "", 10, true, ""},
        {"buffer of one", "a", "a", "b", 1, true, "a"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Replaced(row.text, row.find, row.replacement, row.size, row.caseSensitive),
                  row.result)
            << row.name;
    SearchAndReplaceAll(nullptr, "a", "b", 10, true);
}

TEST(SearchAndReplaceAll, CharactersOfTwoBytes) {
    const CodePage japanese(932);
    // 83 5C is one character whose second byte is a backslash, 82 60 and 82 81 are the wide letters
    // A and a.
    EXPECT_EQ(Replaced("\x83\x5C\\x", "\\", "/", 20, true), "\x83\x5C/x");
    EXPECT_EQ(Replaced("\x83\x5C\\\x83\x5C\\", "\\", "", 20, true), "\x83\x5C\x83\x5C");
    EXPECT_EQ(Replaced("\\\x83\x5C", "\\", "", 20, true), "\x83\x5C");
    EXPECT_EQ(Replaced("\x82\x60\x82\x81", "\x82\x81", "-", 20, false), "--");
    EXPECT_EQ(Replaced("\x82\x60\x82\x81", "\x82\x81", "-", 20, true), "\x82\x60-");
    EXPECT_EQ(Replaced("\x83\x5C", "\x83", "-", 20, true), "\x83\x5C");

    char bytes[] = "\x83\x5C\\";
    SearchAndReplaceAllSingleByte(bytes, "\\", "/", sizeof bytes, true);
    EXPECT_STREQ(bytes, "\x83//");
}

TEST(ReplaceSubStrings, FillsTheDestinationAndNoMore) {
    static constexpr struct {
        const char* name;
        const char* source;
        const char* find;
        const char* replacement;
        int size;
        const char* result;
    } rows[] = {
        {"replaced", "one two one", "one", "1", 20, "1 two 1"},
        {"removed", "aaa", "a", "", 20, ""},
        {"exact fit", "a.b", ".", "--", 5, "a--b"},
        {"cut in the replacement", "a.b", ".", "--", 3, "a-"},
        {"cut in the text", "abc", "x", "y", 3, "ab"},
        {"size of one", "abc", "a", "y", 1, ""},
        {"null source", nullptr, "a", "b", 5, ""},
        {"empty source", "", "a", "b", 5, ""},
        {"empty find", "abc", "", "b", 5, ""},
        {"null find", "abc", nullptr, "b", 5, ""},
        {"null replacement", "abc", "a", nullptr, 5, ""},
        {"exact in case", "aA", "A", "x", 5, "ax"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::size_t size = static_cast<std::size_t>(row.size);
        GuardedBytes buffer(size);
        ReplaceSubStrings(row.source, buffer.Data(), row.size, row.find, row.replacement);
        EXPECT_STREQ(buffer.Data(), row.result);
        for (std::size_t i = std::strlen(row.result); i < size; ++i)
            EXPECT_EQ(buffer[i], '\0') << i;
    }
    ReplaceSubStrings("a", nullptr, 5, "a", "b");
    char untouched = 'x';
    ReplaceSubStrings("a", &untouched, 0, "a", "b");
    EXPECT_EQ(untouched, 'x');
}

TEST(ReplaceTextA, MovesTheRest) {
    static constexpr struct {
        const char* name;
        unsigned position;
        unsigned length;
        const char* replacement;
        const char* result;
    } rows[] = {
        {"same length", 1, 2, "XY", "aXYdef"},
        {"grows", 1, 1, "XYZ", "aXYZcdef"},
        {"shrinks", 0, 5, "X", "Xf"},
        {"inserts", 3, 0, "X", "abcXdef"},
        {"appends", 6, 0, "X", "abcdefX"},
        {"length past the end", 4, ~0u, "X", "abcdX"},
        {"position past the end", 7, 1, "X", "abcdef"},
        {"empty", 1, 1, "", "abcdef"},
        {"null", 1, 1, nullptr, "abcdef"},
    };
    for (const auto& row : rows) {
        char text[16] = "abcdef";
        ReplaceTextA(text, row.position, row.length, row.replacement);
        EXPECT_STREQ(text, row.result) << row.name;
    }
    char empty[4] = "";
    ReplaceTextA(empty, 0, 0, "X");
    EXPECT_STREQ(empty, "");
    ReplaceTextA(nullptr, 0, 0, "X");
}

TEST(CharacterSearch, PositionAndSet) {
    char text[] = "abcb";
    int position = 7;
    EXPECT_EQ(StrChrPos(text, 'b', &position), text + 1);
    EXPECT_EQ(position, 1);
    for (const char missing : {'x', '\0'}) {
        EXPECT_EQ(StrChrPos(text, missing, &position), nullptr);
        EXPECT_EQ(position, -1);
        position = 7;
    }
    EXPECT_EQ(StrChrPos(nullptr, 'a', &position), nullptr);
    EXPECT_EQ(position, -1);
    EXPECT_EQ(StrChrPos(text, 'c', nullptr), text + 2);

    EXPECT_TRUE(StringContainsCharsFromSetOnly("abba", "xba"));
    EXPECT_FALSE(StringContainsCharsFromSetOnly("abc", "ab"));
    EXPECT_FALSE(StringContainsCharsFromSetOnly("", "ab"));
    EXPECT_FALSE(StringContainsCharsFromSetOnly("a", ""));
    EXPECT_FALSE(StringContainsCharsFromSetOnly(nullptr, "a"));
    EXPECT_FALSE(StringContainsCharsFromSetOnly("a", nullptr));
}
