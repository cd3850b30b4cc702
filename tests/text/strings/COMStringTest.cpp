#include "utilities/text/strings/COMString.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>
#include <windows.h>

namespace {

/// A text as the codes of its characters, of one or two bytes each: what the string must do is then
/// what the standard one does.
using Codes = std::u16string;

constexpr char16_t spaces[] = u" \t\x8140";

std::string Bytes(const Codes& text) {
    std::string bytes;
    for (const char16_t code : text) {
        if (code > 0xFF)
            bytes += static_cast<char>(code >> 8);
        bytes += static_cast<char>(code & 0xFF);
    }
    return bytes;
}

/// An index of characters as one of bytes; -1 for none.
int Place(const Codes& text, std::size_t index) {
    return index == text.npos ? -1 : static_cast<int>(Bytes(text.substr(0, index)).size());
}

int ReplaceAll(Codes& text, const Codes& find, const Codes& by) {
    int count = 0;
    for (std::size_t at = 0; !find.empty() && (at = text.find(find, at)) != text.npos; ++count) {
        text.replace(at, find.size(), by);
        at += by.size();
    }
    return count;
}

Codes InCase(Codes text, bool upper) {
    for (char16_t& code : text) {
        if (code < 0x80)
            code = static_cast<char16_t>(upper ? std::toupper(code) : std::tolower(code));
        else if (code == 0x8260 || code == 0x8281) // wide "A" and "a"
            code = upper ? 0x8260 : 0x8281;
    }
    return text;
}

class COMString : public testing::TestWithParam<int> {
protected:
    const CodePage codePage{GetParam()};
    std::mt19937 random{2026};
    AllocationFault fault{"vtrutils.dll"};

    Codes Text(std::size_t most) {
        static constexpr std::u16string_view codes = u"aabA\\ \t\x8361\x8140\x8260\x8281\x955C";
        Codes text(random() % (most + 1), u' ');
        for (char16_t& code : text)
            code = codes[random() % (GetParam() == 932 ? codes.size() : 7)];
        return text;
    }

    /// One change, made to both.
    void Change(CCOMString& string, Codes& text) {
        const Codes other = Text(3);
        const Codes by = Text(3);
        const CCOMString part(Bytes(other).c_str());
        const CCOMString byString(Bytes(by).c_str());
        const char byte = "a\\\x83"[random() % 3];
        const Codes code(1, static_cast<unsigned char>(byte));
        int found = 0;
        int wanted = 0;
        const std::pair<std::function<void()>, std::function<void()>> changes[] = {
            {[&] { string = part + string; }, [&] { text = other + text; }},
            {[&] { string = string.SpanExcluding(part) + L"b"; },
             [&] { text = text.substr(0, text.find_first_of(other)) + u'b'; }},
            {[&] { string = part; }, [&] { text = other; }},
            {[&] { string += part; }, [&] { text += other; }},
            {[&] { string += 'b'; }, [&] { text += u'b'; }},
            {[&] { string += L"b"; }, [&] { text += u'b'; }},
            {[&] { string = Bytes(other).c_str(); }, [&] { text = other; }},
            {[&] { string.TrimLeft(); }, [&] { text.erase(0, text.find_first_not_of(spaces)); }},
            {[&] { string.TrimRight(); }, [&] { text.erase(text.find_last_not_of(spaces) + 1); }},
            {[&] { string.MakeReverse(); }, [&] { std::reverse(text.begin(), text.end()); }},
            {[&] { string.MakeUpper(); }, [&] { text = InCase(text, true); }},
            {[&] { string.MakeLower(); }, [&] { text = InCase(text, false); }},
            {[&] { string.Format("%s%04d%s", Bytes(other).c_str(), 7, Bytes(text).c_str()); },
             [&] { text = other + u"0007" + text; }},
            {[&] { found = string.Replace(part, byString); },
             [&] { wanted = ReplaceAll(text, other, by); }},
            {[&] { found = string.Replace(byte, 'b'); },
             [&] { wanted = ReplaceAll(text, code, u"b"); }},
        };
        const std::size_t change = random() % std::size(changes);
        // Without memory nothing changes. (The first two make another string, which is empty then.)
        const bool scarce = change > 1 && random() % 4 == 0;
        fault.FailAt(scarce ? 1 : 0);
        changes[change].first();
        const bool failed = scarce && fault.Count() > 0;
        fault.FailAt(0);
        // What becomes shorter may do without.
        if (!failed || string.GetLength() < static_cast<int>(Bytes(text).size()))
            changes[change].second();
        ASSERT_EQ(found, wanted);
    }

    void Compare(const CCOMString& string, const Codes& text) {
        const std::string all = Bytes(text);
        ASSERT_STREQ(string, all.c_str());
        ASSERT_EQ(string.GetLength(), static_cast<int>(all.size()));
        const Codes other = Text(2);
        const CCOMString part(Bytes(other).c_str());
        const std::size_t start = random() % (text.size() + 1);
        ASSERT_EQ(string.Find(part, Place(text, start)), Place(text, text.find(other, start)));
        ASSERT_EQ(string.Find('\\'), Place(text, text.find(u'\\')));
        ASSERT_EQ(string.FindOneOf(part), Place(text, text.find_first_of(other)));
        const std::size_t span = text.find_first_not_of(other);
        ASSERT_EQ(std::string(string.SpanIncluding(part)), Bytes(text.substr(0, span)));
        const int size = static_cast<int>(all.size());
        const int number = static_cast<int>(random() % (all.size() + 5)) - 2;
        const int place = static_cast<int>(random() % (all.size() + 5)) - 2;
        const auto count = static_cast<std::size_t>(std::clamp(number, 0, size));
        const auto from = static_cast<std::size_t>(std::clamp(place, 0, size));
        ASSERT_EQ(std::string(string.Left(number)), all.substr(0, count));
        ASSERT_EQ(std::string(string.Right(number)), all.substr(all.size() - count));
        ASSERT_EQ(std::string(string.Mid(place, number)), all.substr(from, count));
        ASSERT_EQ(std::string(string.Mid(place)), all.substr(from));
        const auto six = [](const auto& a, const auto& b) {
            return std::array{a == b, a != b, a<b, a> b, a <= b, a >= b};
        };
        const char* bare = part;
        ASSERT_EQ(six(string, part), six(text, other));
        ASSERT_EQ(six(string, bare), six(text, other));
        ASSERT_EQ(six(bare, string), six(other, text));
        const Codes upper = InCase(other, true);
        ASSERT_EQ(string.CompareNoCase(Bytes(upper).c_str()) == 0, InCase(text, true) == upper);
    }
};

TEST_P(COMString, DoesWhatTheStandardStringDoes) {
    CCOMString string;
    Codes text;
    for (int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(testing::Message() << "round " << round << ": " << Bytes(text));
        ASSERT_NO_FATAL_FAILURE(Change(string, text));
        ASSERT_NO_FATAL_FAILURE(Compare(string, text));
    }
}

INSTANTIATE_TEST_SUITE_P(CodePages, COMString, testing::Values(1252, 932));

TEST(COMStringTexts, GiveTheDocumentedAnswers) {
    const CCOMString text("abcabc");
    CCOMString banana("banana");
    const struct {
        const char* name;
        int answer;
        int wanted;
    } rows[] = {
        {"find at the end", text.Find('c', 6), -1},
        {"find after it", text.Find("c", 7), -1},
        {"find from below 0", text.Find("a", -1), 0},
        {"find null", text.Find(static_cast<const char*>(nullptr)), 0},
        {"null is empty", CCOMString() == static_cast<const char*>(nullptr), 1},
        {"wide null", (text + static_cast<const wchar_t*>(nullptr)) == text, 1},
        {"collated", text.Collate(text), 0},
        {"replace by null", banana.Replace("an", nullptr), 2},
        {"nearly the same byte before", CCOMString("```````````a").Find('a'), 11},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.answer, row.wanted) << row.name;
}

TEST(COMStringTexts, ArgumentsMayLieInTheStringItself) {
    CCOMString own("abc");
    own += own;
    own += static_cast<const char*>(own) + 4;
    own.Replace("abc", static_cast<const char*>(own) + 6);
    EXPECT_STREQ(own, "bcbcbc");
    own.Replace("bcb", static_cast<const char*>(own) + 3);
    EXPECT_STREQ(own, "cbccbc") << "of the same length";
    own = static_cast<const char*>(own) + 4;
    EXPECT_STREQ(own, "bc");
    for (const int length : {99, 100, 101, 5000}) {
        own.Format("%*s%s", length, "x", static_cast<const char*>(own));
        EXPECT_EQ(own.GetLength(), length + 2);
        own = static_cast<const char*>(own) + length;
    }
}

TEST(COMStringWide, ReadsInTheThreadsCodePageAndWritesInThatOfTheProcess) {
    const LCID before = GetThreadLocale();
    SetThreadLocale(MAKELCID(MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT), SORT_DEFAULT));
    CCOMString text;
    text = L"\u8868";
    text += L"\u8868";
    EXPECT_TRUE(text == "\x95\\\x95\\" && text == CCOMString(L"\u8868\u8868"));
    wchar_t* system = text.AllocSysString();
    SetThreadLocale(before);
    EXPECT_STREQ(system, L"\u2022\\\u2022\\") << "as code page 1252 reads the bytes";
    EXPECT_EQ(SysStringLen(system), 4u);
    SysFreeString(system);
}

} // namespace
