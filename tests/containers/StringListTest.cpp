#include "utilities/containers/StringList.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

class StringList : public testing::Test {
protected:
    Texts All() {
        Texts texts;
        for (int i = 0; i < list.Count(); ++i)
            texts.push_back(list.Index(i));
        return texts;
    }

    /// Replaces the list by a copy of a copy, unless memory runs out for one, which is then empty.
    void Copy() {
        CStringList copy(list), assigned, filled;
        char old[] = "old";
        filled.PushBackList(old);
        assigned = copy;
        const long before = filled.Count();
        if (filled.CopyFrom(assigned) == 0)
            EXPECT_EQ(filled.Count(), before);
        else if (assigned.Count() > 0)
            list = filled;
    }

    void Change(int way, std::string& text, int index, bool failing) {
        const bool inRange = index >= 0 && index < std::ssize(model);
        const auto at = model.begin() + (inRange ? index : 0);
        const auto order = [&](const auto& each) { return _stricmp(each.c_str(), text.c_str()); };
        const auto same = std::ranges::find(model, 0, order);
        const auto greater = std::ranges::find_if(
            model, [](int o) { return o > 0; }, order);
        const int found = same != model.end();
        ASSERT_EQ(list.StringIndex(text.c_str()), found ? same - model.begin() : -1);
        ASSERT_EQ(list.ContainsString(text.data()), found);
        fault.FailAt(failing && way <= 3);
        if (way < 3) {
            way == 0   ? list.AddLatestString(text.c_str())
            : way == 1 ? list.PushBackList(text.data())
                       : list.AddSortedString(text.data());
            if (!failing)
                model.insert(way == 0 ? model.begin() : way == 1 ? model.end() : greater, text);
        } else if (way == 3) {
            ASSERT_EQ(list.UpdateString(index, text.data()), inRange && !failing);
            if (inRange && !failing)
                *at = text;
        } else if (way < 6) {
            list.DeleteIndex(index);
            if (inRange)
                model.erase(at);
        } else {
            ASSERT_EQ(list.DeleteString(text.data()), found);
            if (found)
                model.erase(same);
        }
        fault.FailAt(0);
    }

    AllocationFault fault{"vtrutils.dll"};
    CStringList list;
    Texts model;
};

TEST_F(StringList, DoesWhatASimpleModelDoes) {
    EachRound(333, 8000, [&](Dice& dice, int round) {
        std::string text(static_cast<std::size_t>(dice.Below(3)),
                         static_cast<char>((dice.Below(2) == 0 ? 'A' : 'a') + dice.Below(6)));
        if (dice.Below(50) == 0) {
            fault.FailAt(static_cast<unsigned>(dice.Below(12)));
            Copy();
            fault.FailAt(0);
        } else { // grows, then shrinks
            Change((round / 60 % 2 == 0 ? 0 : 3) + dice.Below(4), text,
                   dice.Below(static_cast<int>(model.size()) + 2) - 1, dice.Below(8) == 0);
        }
        ASSERT_EQ(list.Count(), std::ssize(model));
        // Jumps, so that each walk starts from another place.
        for (int i = 0; i < 4; ++i) {
            const int place = dice.Below(static_cast<int>(model.size()) + 1);
            ASSERT_STREQ(list.Index(place),
                         place < list.Count() ? model.begin()[place].c_str() : nullptr);
        }
        ASSERT_EQ(All(), model);
        if (round % 100 == 0) {
            list.DeleteStringList();
            model.clear();
        }
    });
}

TEST_F(StringList, TakesNullForNoTextAndItsOwnTexts) {
    list.AddLatestString(nullptr);
    list.AddSortedString(nullptr);
    EXPECT_EQ(list.StringIndex(nullptr), -1);
    EXPECT_EQ(list.DeleteString(nullptr) + list.UpdateString(0, nullptr), 0);
    EXPECT_EQ(list.Count(), 0);
    list.AddLatestString("x");
    list.AddLatestString(list.Index(0));
    EXPECT_EQ(list.UpdateString(1, list.Index(1)), 1);
    EXPECT_EQ(list.DeleteString(list.Index(1)), 1);
    const CStringList& self = list;
    list = self;
    EXPECT_EQ(list.CopyFrom(list), 1);
    EXPECT_EQ(All(), Texts{"x"});
}

} // namespace
