#include "utilities/containers/StringDynArray.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

std::wstring Wide(const std::string& text) {
    return {text.begin(), text.end()};
}

bool Less(const std::string& left, const std::string& right) {
    return _stricmp(left.c_str(), right.c_str()) < 0;
}

class StringDynArray : public testing::TestWithParam<bool> {
protected:
    bool Add(const std::string& text, bool asWide) {
        return asWide ? array.AddString(Wide(text).c_str()) : array.AddString(text.c_str(), false);
    }
    int Find(const std::string& text, bool asWide) {
        return asWide ? array.FindString(Wide(text).c_str()) : array.FindString(text.c_str());
    }
    /// "" for null entries.
    Texts All() {
        Texts texts;
        for (unsigned i = 0; i < array.NumStrings(); ++i) {
            const wchar_t* units = array.GetWCString(i);
            const char* bytes = array.GetString(i);
            EXPECT_EQ(bytes, array.GetChString(i));
            EXPECT_EQ(GetParam() ? static_cast<const void*>(bytes) : units, nullptr);
            const std::wstring text = units != nullptr ? units : L"";
            bytes != nullptr ? texts.emplace_back(bytes)
                             : texts.emplace_back(text.begin(), text.end());
        }
        return texts;
    }

    CStringDynArray array{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Kinds, StringDynArray, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "Wide" : "Narrow"; });

TEST_P(StringDynArray, DoesWhatASimpleModelDoes) {
    AllocationFault fault("vtrutils.dll");
    Texts model;
    bool maintained = false;
    EachRound(3333, 4000, [&](Dice& dice, int round) {
        const std::string text(static_cast<std::size_t>(dice.Below(3)),
                               static_cast<char>((dice.Below(2) == 0 ? 'A' : 'a') + dice.Below(8)));
        const int choice = dice.Below(66);
        const bool asWide = dice.Below(2) == 0;
        fault.FailAt(static_cast<unsigned>(std::max(0, dice.Below(12) - 8)));
        if (choice == 0) {
            maintained = !maintained;
            array.SetMaintainSorted(maintained);
        } else if (choice == 1) {
            array.Sort();
        } else if (choice == 2 && round % 10 == 0) {
            array.Clear();
            model.clear();
        } else if (choice == 3) {
            CStringDynArray copy(array), assigned(!GetParam());
            assigned.AddString("old", true);
            assigned = copy;
            if (assigned.NumStrings() > 0) {
                array.Clear(); // which would count as sorted
                array.SetMaintainSorted(!maintained);
                array = assigned;
            }
        } else if (choice < 36) {
            if (Add(text, asWide))
                model.insert(maintained ? std::ranges::upper_bound(model, text, Less) : model.end(),
                             text);
        } else {
            const int index = dice.Below(static_cast<int>(model.size()) + 2);
            const bool inRange = index < std::ssize(model);
            ASSERT_EQ(array.RemoveString(static_cast<unsigned>(index)), inRange);
            if (inRange)
                model.erase(model.begin() + index);
        }
        fault.FailAt(0);
        if (choice == 1 || maintained)
            std::ranges::stable_sort(model, Less);
        const auto same = std::ranges::find_if(
            model, [&](const auto& t) { return !Less(t, text) && !Less(text, t); });
        ASSERT_EQ(Find(text, asWide), same == model.end() ? -1 : same - model.begin()) << text;
        ASSERT_EQ(All(), model);
    });
}

TEST_P(StringDynArray, KeepsEmptyTextsAsNullBelowAllOthers) {
    for (const char* text : {"b", "", "a", static_cast<const char*>(nullptr)})
        EXPECT_TRUE(array.AddString(text, true));
    EXPECT_TRUE(array.AddString(nullptr));
    EXPECT_EQ(array.FindString(static_cast<const char*>(nullptr)), 1);
    array.SetMaintainSorted(true);
    EXPECT_EQ(All(), (Texts{"", "", "", "a", "b"}));
    EXPECT_EQ(array.FindString(""), 0);
    for (const unsigned index : {0u, 5u}) {
        EXPECT_EQ(array.GetString(index), nullptr);
        EXPECT_EQ(array.GetWCString(index), nullptr);
    }
}

TEST_P(StringDynArray, FindsAPartOfAText) {
    for (const char* text : {"", "Overture", "aaab", "Aabaab", "Overtures", "caab"})
        array.AddString(text, true);
    static constexpr std::pair<const char*, int> rows[] = {
        {"", -1}, {"TURE", 1}, {"aab", 2}, {"abaa", 3}, {"overturesx", -1}, {nullptr, -1}};
    for (const auto& [part, index] : rows)
        EXPECT_EQ(array.FindSubString(part), index) << testing::PrintToString(part);
    AllocationFault fault("vtrutils.dll");
    fault.FailAt(1);
    EXPECT_EQ(array.FindSubString("O"), -1) << "no memory";
}

TEST_P(StringDynArray, ReadsBytesInTheirCodePage) {
    ASSERT_TRUE(array.AddString("\xDC-", false) && array.AddString(L"-\u00DF"));
    EXPECT_EQ(array.FindString("-\xDF"), 1);
    EXPECT_EQ(array.FindString(L"\u00DC-"), 0);
    EXPECT_TRUE(GetParam() ? array.GetWCString(0) == std::wstring(L"\u00DC-")
                           : array.GetString(1) == std::string("-\xDF"));
    const CodePage japanese(932);
    CStringDynArray bytes;
    bytes.AddString("\x83\x41", false);
    EXPECT_EQ(bytes.FindSubString("a"), -1) << "no part starts within a character";
}

} // namespace
