#include "utilities/text/COMString.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"
#include "tests/support/RandomText.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>
#include <windows.h>

namespace {

/// The characters of a text, one or two bytes each: code page 932, or single bytes.
using Characters = std::vector<std::string>;

Characters Split(const std::string& text, bool japanese) {
    const auto between = [](char c, int low, int high) {
        return static_cast<unsigned char>(c) >= low && static_cast<unsigned char>(c) <= high;
    };
    Characters all;
    for (std::size_t i = 0; i < text.size(); i += all.back().size()) {
        const bool lead = between(text[i], 0x81, 0x9F) || between(text[i], 0xE0, 0xFC);
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        const bool trail = between(next, 0x40, 0xFC) && !between(next, 0x7F, 0x7F);
        all.push_back(text.substr(i, japanese && lead && trail ? 2 : 1));
    }
    return all;
}

std::string Join(const Characters& all) {
    std::string text;
    for (const std::string& character : all)
        text += character;
    return text;
}

bool Has(const Characters& all, const std::string& character) {
    return std::find(all.begin(), all.end(), character) != all.end();
}

/// What the string must do, on `std::string`.
struct Model {
    bool japanese;

    int Find(const std::string& text, const std::string& wanted, std::size_t start) const {
        if (start > text.size())
            return -1;
        const Characters all = Split(text.substr(start), japanese);
        const Characters part = Split(wanted, japanese);
        const auto hit = std::search(all.begin(), all.end(), part.begin(), part.end());
        if (hit == all.end() && !part.empty())
            return -1;
        return static_cast<int>(start + Join({all.begin(), hit}).size());
    }

    int Replace(std::string& text, const std::string& find, const std::string& by) const {
        int count = 0;
        std::string done;
        for (int at; !find.empty() && (at = Find(text, find, 0)) >= 0; ++count) {
            done += text.substr(0, static_cast<std::size_t>(at)) + by;
            text.erase(0, static_cast<std::size_t>(at) + find.size());
        }
        text.insert(0, done);
        return count;
    }

    /// The leading characters that are, or are not, in the set.
    std::string Span(const std::string& text, const std::string& set, bool in) const {
        const Characters all = Split(text, japanese);
        const Characters members = Split(set, japanese);
        const auto end = std::find_if(all.begin(), all.end(),
                                      [&](const auto& one) { return Has(members, one) != in; });
        return Join({all.begin(), end});
    }

    std::string Trimmed(const std::string& text, bool left) const {
        const auto isSpace = [this](const std::string& one) {
            return one == " " || one == "\t" || (japanese && one == "\x81\x40");
        };
        Characters all = Split(text, japanese);
        while (!all.empty() && isSpace(left ? all.front() : all.back()))
            all.erase(left ? all.begin() : all.end() - 1);
        return Join(all);
    }

    std::string Reversed(const std::string& text) const {
        const Characters all = Split(text, japanese);
        return Join({all.rbegin(), all.rend()});
    }

    std::string InCase(const std::string& text, bool upper) const {
        Characters all = Split(text, japanese);
        for (std::string& one : all) {
            if (one.size() == 1)
                one[0] = static_cast<char>(upper ? std::toupper(one[0]) : std::tolower(one[0]));
            else if (one == (upper ? "\x82\x81" : "\x82\x60")) // wide "a" and "A"
                one = upper ? "\x82\x60" : "\x82\x81";
        }
        return Join(all);
    }
};

class COMString : public testing::TestWithParam<int> {
protected:
    const bool japanese = GetParam() == 932;
    const CodePage codePage{GetParam()};
    const Model model{japanese};
    std::mt19937 random{2026};

    std::size_t Random(std::size_t below) { return random() % below; }

    std::string Text(std::size_t most) {
        static const Characters japaneseOnes = {"\x83\x61", "\x81\x40", "\x82\x60", "\x82\x81",
                                                "\x95\\"};
        std::string text;
        for (std::size_t i = Random(most + 1); i > 0; --i) {
            if (japanese && Random(3) == 0)
                text += japaneseOnes[Random(japaneseOnes.size())];
            else
                text += "aabA\\ \t"[Random(7)];
        }
        return text;
    }

    /// One change, made to both.
    void Change(CCOMString& string, std::string& text) {
        const std::string other = Text(3);
        const char byte = "abA\\\x83"[Random(5)];
        switch (Random(14)) {
        case 0:
            string += other.c_str();
            text += other;
            break;
        case 1:
            string = CCOMString(other.c_str()) + string;
            text.insert(0, other);
            break;
        case 2:
            string += 'b';
            text += 'b';
            break;
        case 3: {
            const std::string by = Text(3);
            ASSERT_EQ(string.Replace(other.c_str(), by.c_str()), model.Replace(text, other, by));
            break;
        }
        case 4:
            ASSERT_EQ(string.Replace(byte, 'b'),
                      byte == 'b' ? 0 : model.Replace(text, {byte}, "b"));
            break;
        case 5:
            string.TrimLeft();
            text = model.Trimmed(text, true);
            break;
        case 6:
            string.TrimRight();
            text = model.Trimmed(text, false);
            break;
        case 7:
            string.MakeReverse();
            text = model.Reversed(text);
            break;
        case 8:
        case 9:
            byte == 'a' ? string.MakeUpper() : string.MakeLower();
            text = model.InCase(text, byte == 'a');
            break;
        case 10:
            string = string.SpanExcluding(other.c_str()) + CCOMString(L"b");
            text = model.Span(text, other, false) + "b";
            break;
        case 11:
            string.Format("%s%04d%s", other.c_str(), 7, static_cast<const char*>(string));
            text = other + "0007" + text;
            break;
        default:
            string = other.c_str();
            text = other;
        }
    }

    void Compare(const CCOMString& string, const std::string& text) {
        ASSERT_STREQ(string, text.c_str());
        ASSERT_EQ(string.GetLength(), static_cast<int>(text.size()));
        const std::string other = Text(2);
        const std::size_t start = Random(text.size() + 2);
        ASSERT_EQ(string.Find(other.c_str(), static_cast<int>(start)),
                  model.Find(text, other, start));
        const char byte = "abA\\\x83"[Random(5)];
        ASSERT_EQ(string.Find(byte), model.Find(text, {byte}, 0));
        ASSERT_STREQ(string.SpanIncluding(other.c_str()), model.Span(text, other, true).c_str());
        const std::size_t outside = model.Span(text, other, false).size();
        ASSERT_EQ(string.FindOneOf(other.c_str()),
                  outside < text.size() ? static_cast<int>(outside) : -1);
        const int count = static_cast<int>(Random(text.size() + 4)) - 2;
        const std::size_t kept = static_cast<std::size_t>(std::max(count, 0));
        const std::size_t from = std::min(start, text.size());
        ASSERT_EQ(std::string(string.Left(count)), text.substr(0, kept));
        ASSERT_EQ(std::string(string.Right(count)),
                  text.substr(text.size() - std::min(kept, text.size())));
        ASSERT_EQ(std::string(string.Mid(static_cast<int>(start), count)), text.substr(from, kept));
        ASSERT_EQ(std::string(string.Mid(static_cast<int>(start))), text.substr(from));
        ASSERT_EQ(string == other.c_str(), text == other);
    }
};

TEST_P(COMString, DoesWhatTheStandardStringDoes) {
    CCOMString string;
    std::string text;
    for (int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round << ": " << text);
        ASSERT_NO_FATAL_FAILURE(Change(string, text));
        ASSERT_NO_FATAL_FAILURE(Compare(string, text));
    }
}

INSTANTIATE_TEST_SUITE_P(CodePages, COMString, testing::Values(1252, 932));

TEST(COMStringTexts, GiveTheDocumentedAnswers) {
    const CCOMString text("abcabc");
    CCOMString banana("banana");
    struct Row {
        const char* name;
        int answer;
        int wanted;
    };
    const Row rows[] = {
        {"find behind the end", text.Find("c", 7), -1},
        {"find the terminator", text.Find('\0'), -1},
        {"find nothing at the end", text.Find("", 6), 6},
        {"find from below 0", text.Find("a", -1), 0},
        {"find null", text.Find(static_cast<const char*>(nullptr)), 0},
        {"null is empty", CCOMString() == static_cast<const char*>(nullptr), 1},
        {"without memory", CCOMString('x', 0).GetLength(), 0},
        {"repeated", CCOMString('x', 3) == "xxx", 1},
        {"wide null", (text + static_cast<const wchar_t*>(nullptr)) == text, 1},
        {"no case", text.CompareNoCase("ABCabc"), 0},
        {"collated", text.Collate(text), 0},
        {"replace by null", banana.Replace("an", nullptr), 2},
        {"is shorter", banana == "ba", 1},
        {"replace nothing", banana.Replace("", "x"), 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(row.answer, row.wanted) << row.name;

    CCOMString own("abc");
    own += own;
    own += static_cast<const char*>(own) + 4;
    own.Replace(own.Mid(1, 2), static_cast<const char*>(own) + 6);
    EXPECT_STREQ(own, "abcabcbc");
    own = static_cast<const char*>(own) + 6;
    EXPECT_STREQ(own, "bc");
    own.Empty();
    EXPECT_TRUE(own.IsEmpty());
    for (const int length : {99, 100, 101, 5000}) {
        own.Format("%*s", length, "x");
        EXPECT_EQ(own.GetLength(), length);
    }
}

/// Sees the helpers of derived classes.
struct Derived : CCOMString {
    using CCOMString::AllocString;
    using CCOMString::ConcatCopy;
    using CCOMString::ReAllocString;
    using CCOMString::StringCopy;
};

TEST(COMStringHelpers, KeepExactlyWhatTheySay) {
    Derived text;
    Derived part;
    EXPECT_TRUE(text.ConcatCopy("abc", "def") && text.ReAllocString(5) && text.ConcatCopy('x'));
    EXPECT_STREQ(text, "abcdex");
    EXPECT_TRUE(text.StringCopy(part, 2, 1, 9));
    EXPECT_STREQ(part, "bc");
    EXPECT_TRUE(part.StringCopy(3, text) && part.ConcatCopy("y"));
    EXPECT_STREQ(part, "abcy");
    EXPECT_TRUE(part.AllocString(-1));
    EXPECT_TRUE(part.IsEmpty());
}

TEST(COMStringWide, ReadsInTheThreadsCodePageAndWritesInThatOfTheProcess) {
    const LCID before = GetThreadLocale();
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT), SORT_DEFAULT));
    CCOMString text(L"\u8868");
    text += L"\u8868";
    EXPECT_STREQ(text, "\x95\\\x95\\");
    wchar_t* system = text.AllocSysString();
    SetThreadLocale(before);
    EXPECT_STREQ(system, L"\u2022\\\u2022\\") << "as code page 1252 reads the bytes";
    EXPECT_EQ(SysStringLen(system), 4u);
    SysFreeString(system);
    text = L"";
    system = text.AllocSysString();
    EXPECT_STREQ(system, L"");
    SysFreeString(system);
}

TEST(COMStringMemory, StaysAsItWasWithoutAny) {
    const CCOMString other("other");
    const std::function<void(CCOMString&)> changes[] = {
        [](CCOMString& s) { s += "more"; },
        [](CCOMString& s) { s += L"more"; },
        [](CCOMString& s) { s = "other"; },
        [&other](CCOMString& s) { s = other; },
        [](CCOMString& s) { s.Replace("e", "more"); },
        [](CCOMString& s) { s.Format("%d", 1); },
    };
    AllocationFault fault("vtrutils.dll");
    for (const auto& change : changes) {
        CCOMString text("text");
        fault.FailAt(1);
        change(text);
        const bool failed = fault.Count() > 0;
        fault.FailAt(0);
        EXPECT_TRUE(failed);
        EXPECT_STREQ(text, "text");
    }
    fault.FailAt(1);
    const CCOMString none("text");
    EXPECT_TRUE(none.IsEmpty() && none == "" && none.Left(3).IsEmpty());
}

} // namespace
