#include "utilities/containers/StringDynArray.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

/// The texts of an array of either kind, which hold ASCII only; "" for null entries.
Texts TextsOf(const CStringDynArray& array, bool wide) {
    Texts texts;
    for (unsigned i = 0; i < array.NumStrings(); ++i) {
        const wchar_t* units = array.GetWCString(i);
        const char* bytes = array.GetString(i);
        EXPECT_EQ(bytes, array.GetChString(i));
        EXPECT_TRUE((wide ? static_cast<const void*>(bytes) : units) == nullptr);
        const std::wstring text = units != nullptr ? units : L"";
        if (wide)
            texts.emplace_back(text.begin(), text.end());
        else
            texts.emplace_back(bytes != nullptr ? bytes : "");
    }
    return texts;
}

bool Less(const std::string& left, const std::string& right) {
    return _stricmp(left.c_str(), right.c_str()) < 0;
}

class StringDynArray : public testing::TestWithParam<bool> {
protected:
    /// As bytes or as UTF-16, by turns.
    bool Add(const std::string& text) {
        byTurns = !byTurns;
        if (byTurns)
            return array.AddString(text.c_str(), text.size() % 2 == 0);
        return array.AddString(std::wstring(text.begin(), text.end()).c_str());
    }

    void Fill(const Texts& texts) {
        for (const std::string& text : texts)
            ASSERT_TRUE(Add(text));
    }

    int Find(const std::string& text) {
        const int index = array.FindString(text.c_str());
        EXPECT_EQ(array.FindString(std::wstring(text.begin(), text.end()).c_str()), index);
        return index;
    }

    CStringDynArray array{GetParam()};

private:
    bool byTurns = false;
};

INSTANTIATE_TEST_SUITE_P(Kinds, StringDynArray, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "Wide" : "Narrow"; });

TEST_P(StringDynArray, DoesWhatASimpleModelDoes) {
    constexpr unsigned seed = 3333;
    std::mt19937 random(seed);
    Texts model;
    bool maintained = false;
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        std::string text(random() % 3, static_cast<char>('a' + random() % 8));
        if (random() % 2 == 0 && !text.empty())
            text[0] = static_cast<char>(text[0] - ('a' - 'A'));
        const unsigned choice = random() % 64;
        if (choice == 0) {
            maintained = !maintained;
            array.SetMaintainSorted(maintained);
            if (maintained)
                std::stable_sort(model.begin(), model.end(), Less);
        } else if (choice == 1) {
            array.Sort();
            std::stable_sort(model.begin(), model.end(), Less);
        } else if (choice == 2 && round % 10 == 0) {
            array.Clear();
            model.clear();
        } else if (choice < 36) {
            ASSERT_TRUE(Add(text));
            model.insert(maintained ? std::upper_bound(model.begin(), model.end(), text, Less)
                                    : model.end(),
                         text);
        } else {
            const unsigned index = static_cast<unsigned>(random() % (model.size() + 2));
            ASSERT_EQ(array.RemoveString(index), index < model.size());
            if (index < model.size())
                model.erase(model.begin() + index);
        }
        const auto same = std::find_if(model.begin(), model.end(), [&](const auto& t) {
            return _stricmp(t.c_str(), text.c_str()) == 0;
        });
        ASSERT_EQ(Find(text), same == model.end() ? -1 : same - model.begin()) << text;
        ASSERT_EQ(array.NumStrings(), model.size());
        if (round % 50 == 0) {
            ASSERT_EQ(TextsOf(array, GetParam()), model);
        }
    }
}

TEST_P(StringDynArray, KeepsEmptyTextsAsNullBelowAllOthers) {
    Fill({"b", "", "a"});
    EXPECT_TRUE(array.AddString(static_cast<const char*>(nullptr), true));
    EXPECT_TRUE(array.AddString(nullptr));
    EXPECT_EQ(Find(""), 1);
    EXPECT_EQ(array.FindString(static_cast<const char*>(nullptr)), 1);
    array.SetMaintainSorted(true);
    EXPECT_EQ(TextsOf(array, GetParam()), (Texts{"", "", "", "a", "b"}));
    EXPECT_EQ(array.GetString(0), nullptr);
    EXPECT_EQ(array.GetWCString(0), nullptr);
    EXPECT_EQ(Find(""), 0);
    EXPECT_EQ(Find("A"), 3);
    EXPECT_TRUE(array.RemoveString(0));
    EXPECT_FALSE(array.RemoveString(4));
    EXPECT_EQ(array.GetString(4), nullptr);
    EXPECT_EQ(array.GetWCString(4), nullptr);
}

TEST_P(StringDynArray, FindsAPartOfAText) {
    Fill({"", "Overture", "aaab", "Aabaab", "Overtures", "caab"});
    struct Row {
        const char* part;
        int index;
    };
    const Row rows[] = {{"", -1},      {"TURE", 1},   {"tures", 4}, {"aab", 2}, {"abaa", 3},
                        {"baab", 3},   {"caab", 5},   {"O", 1},     {"x", -1},  {"overturesx", -1},
                        {"aaabb", -1}, {"aabaab", 3}, {"b", 2}};
    for (const Row& row : rows)
        EXPECT_EQ(array.FindSubString(row.part), row.index) << row.part;
    EXPECT_EQ(array.FindSubString(nullptr), -1);
}

TEST_P(StringDynArray, ConvertsWithTheSystemsCodePage) {
    ASSERT_TRUE(array.AddString("\xDC"
                                "ber",
                                false));
    ASSERT_TRUE(array.AddString(L"stra\u00DFe"));
    if (GetParam()) {
        EXPECT_STREQ(array.GetWCString(0), L"\u00DCber");
        EXPECT_EQ(array.FindString("stra\xDF"
                                   "e"),
                  1);
    } else {
        EXPECT_STREQ(array.GetString(1), "stra\xDF"
                                         "e");
        EXPECT_EQ(array.FindString(L"\u00DCber"), 0);
    }
}

TEST_P(StringDynArray, CopiesTextsAndSettings) {
    Fill({"b", "", "a"});
    array.SetMaintainSorted(true);
    CStringDynArray copy(array);
    CStringDynArray assigned(!GetParam());
    assigned.AddString("old", true);
    assigned = array;
    CStringDynArray& self = assigned;
    assigned = self;
    array.Clear();
    for (CStringDynArray* each : {&copy, &assigned}) {
        EXPECT_EQ(TextsOf(*each, GetParam()), (Texts{"", "a", "b"}));
        EXPECT_TRUE(each->AddString("aa", true));
        EXPECT_EQ(each->FindString("AA"), 2) << "kept sorted";
    }
}

TEST_P(StringDynArray, ChangesNothingWithoutMemory) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([](unsigned n) {
        SCOPED_TRACE(n);
        CStringDynArray tested(GetParam());
        Texts model;
        int refused = 0;
        tested.SetMaintainSorted(true);
        for (const char* text : {"i", "h", "g", "f", "e", "d", "c", "b", "a"}) {
            const wchar_t units[] = {static_cast<wchar_t>(*text), 0};
            const bool added =
                *text % 2 == 0 ? tested.AddString(units) : tested.AddString(text, false);
            if (added)
                model.insert(model.begin(), text);
            refused += added ? 0 : 1;
        }
        tested.Sort();
        EXPECT_EQ(TextsOf(tested, GetParam()), model);
        CStringDynArray copy(tested);
        CStringDynArray assigned;
        assigned = tested;
        for (const CStringDynArray* each : {&copy, &assigned}) {
            refused += each->NumStrings() == 0 ? 1 : 0;
            EXPECT_EQ(TextsOf(*each, GetParam()), each->NumStrings() == 0 ? Texts() : model);
        }
        // What was added last is found, unless memory runs out for the search itself.
        if (refused == 0) {
            refused += tested.FindString("a") == 0 ? 0 : 1;
            refused += tested.FindString(L"a") == 0 ? 0 : 1;
            refused += tested.FindSubString("A") == 0 ? 0 : 1;
        }
        EXPECT_LE(refused, 1);
    });
    EXPECT_GE(failures, 30u);
}

TEST(StringDynArrayOfBytes, FindsNoPartThatStartsWithinACharacter) {
    CStringDynArray array;
    array.AddString("\x83\x41", false);
    array.AddString("xA", false);
    EXPECT_EQ(array.FindSubString("a"), 0) << "two characters";
    const CodePage japanese(932);
    EXPECT_EQ(array.FindSubString("a"), 1) << "the second byte of one";
    EXPECT_EQ(array.FindSubString("\x83\x41"), 0);
    array.AddString("\x83"
                    "AAA",
                    false);
    EXPECT_EQ(array.FindSubString("aa"), 2) << "overlaps what is none";
}

} // namespace
