#include "utilities/containers/StringList.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <gtest/gtest.h>
#include <mbstring.h>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

int Compare(const std::string& left, const std::string& right) {
    return _mbsicmp(reinterpret_cast<const unsigned char*>(left.c_str()),
                    reinterpret_cast<const unsigned char*>(right.c_str()));
}

Texts TextsOf(CStringList& list) {
    Texts texts;
    for (int i = 0; i < list.Count(); ++i)
        texts.push_back(list.Index(i));
    return texts;
}

void Fill(CStringList& list, Texts texts) {
    for (std::string& text : texts)
        list.PushBackList(text.data());
}

/// Does the same to a list and to what it must hold.
class Pair {
public:
    void Step(std::mt19937& random, bool growing) {
        std::string text(1 + random() % 2, static_cast<char>('a' + random() % 6));
        if (random() % 2 == 0)
            text[0] = static_cast<char>(text[0] - ('a' - 'A'));
        const int index = static_cast<int>(random() % (model.size() + 2)) - 1;
        const bool inRange = index >= 0 && static_cast<std::size_t>(index) < model.size();
        const auto same = std::find_if(model.begin(), model.end(),
                                       [&](const auto& t) { return Compare(t, text) == 0; });
        const int found = same == model.end() ? -1 : static_cast<int>(same - model.begin());
        ASSERT_EQ(list.StringIndex(text.c_str()), found);
        ASSERT_EQ(list.ContainsString(text.data()), found >= 0 ? 1 : 0);
        switch (growing ? random() % 4 : 3 + random() % 3) {
        case 0:
            list.AddLatestString(text.c_str());
            model.insert(model.begin(), text);
            break;
        case 1:
            list.PushBackList(text.data());
            model.push_back(text);
            break;
        case 2:
            list.AddSortedString(text.data());
            model.insert(std::find_if(model.begin(), model.end(),
                                      [&](const auto& t) { return Compare(t, text) > 0; }),
                         text);
            break;
        case 3:
            ASSERT_EQ(list.UpdateString(index, text.data()), inRange ? 1 : 0);
            if (inRange)
                model[static_cast<std::size_t>(index)] = text;
            break;
        case 4:
            list.DeleteIndex(index);
            if (inRange)
                model.erase(model.begin() + index);
            break;
        default:
            ASSERT_EQ(list.DeleteString(text.data()), found >= 0 ? 1 : 0);
            if (found >= 0)
                model.erase(same);
        }
        ASSERT_EQ(list.Count(), static_cast<long>(model.size()));
        // Jumps, so that each walk starts from another cursor.
        for (int i = 0; i < 4; ++i) {
            const int at = static_cast<int>(random() % (model.size() + 1));
            const char* expected =
                at < list.Count() ? model[static_cast<std::size_t>(at)].c_str() : nullptr;
            ASSERT_STREQ(list.Index(at), expected) << at;
        }
    }

    CStringList list;
    Texts model;
};

TEST(StringList, DoesWhatASimpleModelDoes) {
    constexpr unsigned seed = 333;
    std::mt19937 random(seed);
    Pair pair;
    for (int round = 0; round < 4000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        pair.Step(random, round / 60 % 2 == 0);
        if (round % 100 == 0) {
            ASSERT_EQ(TextsOf(pair.list), pair.model);
        }
        if (HasFatalFailure())
            return;
    }
}

TEST(StringList, InsertsBehindEqualTexts) {
    CStringList list;
    Fill(list, {"A", "B", "c"});
    std::string text = "b";
    list.AddSortedString(text.data());
    EXPECT_EQ(TextsOf(list), (Texts{"A", "B", "b", "c"}));
    Fill(list, {"a"});
    text = "Aa";
    list.AddSortedString(text.data());
    EXPECT_EQ(TextsOf(list), (Texts{"A", "Aa", "B", "b", "c", "a"})) << "the first greater counts";
}

TEST(StringList, ComparesCharactersOfTwoBytes) {
    CStringList list;
    Fill(list, {"\x83\x41", "\x83\x61"});
    EXPECT_EQ(list.StringIndex("\x83\x61"), 0) << "two letters";
    const CodePage japanese(932);
    EXPECT_EQ(list.StringIndex("\x83\x61"), 1) << "one character";
}

TEST(StringList, TakesOddArguments) {
    CStringList list;
    char text[] = "";
    EXPECT_EQ(list.Index(0), nullptr);
    EXPECT_EQ(list.DeleteString(text), 0);
    EXPECT_EQ(list.UpdateString(0, text), 0);
    list.DeleteIndex(0);
    list.DeleteStringList();
    list.AddLatestString(nullptr);
    list.PushBackList(nullptr);
    list.AddSortedString(nullptr);
    EXPECT_EQ(list.Count(), 0);
    list.PushBackList(text);
    EXPECT_EQ(TextsOf(list), Texts{""}) << "an empty text is one";
    EXPECT_EQ(list.StringIndex(nullptr), -1);
    EXPECT_EQ(list.DeleteString(nullptr), 0);
    EXPECT_EQ(list.UpdateString(0, nullptr), 0);
    EXPECT_EQ(list.Index(-1), nullptr);
    list.AddLatestString(list.Index(0));
    Fill(list, {"x"});
    EXPECT_EQ(list.UpdateString(2, list.Index(2)), 1) << "with itself";
    EXPECT_EQ(list.DeleteString(list.Index(2)), 1);
    EXPECT_EQ(TextsOf(list), (Texts{"", ""}));
}

TEST(StringList, CopiesTexts) {
    CStringList list;
    Fill(list, {"a", "b"});
    CStringList copy(list);
    CStringList assigned;
    Fill(assigned, {"old"});
    CStringList filled;
    Fill(filled, {"old"});
    assigned = list;
    EXPECT_EQ(filled.CopyFrom(list), 1);
    CStringList& self = filled;
    filled = self;
    EXPECT_EQ(filled.CopyFrom(self), 1);
    *list.Index(0) = 'z';
    list.DeleteIndex(1);
    for (CStringList* each : {&copy, &assigned, &filled}) {
        EXPECT_EQ(TextsOf(*each), (Texts{"a", "b"}));
        Fill(*each, {"c"});
        EXPECT_EQ(each->Count(), 3);
    }
    CStringList empty;
    EXPECT_EQ(copy.CopyFrom(empty), 1);
    EXPECT_EQ(copy.Count(), 0);
}

TEST(StringList, ThrowsWhenItIsTooLong) {
    CStringList list;
    Fill(list, {"a"});
    char* shared = nullptr;
    std::memcpy(&shared, static_cast<const void*>(&list), sizeof shared);
    long* count = reinterpret_cast<long*>(shared + 2 * sizeof(void*));
    ASSERT_EQ(*count, 1);
    *count = LONG_MAX;
    EXPECT_THROW(list.AddLatestString("b"), std::length_error);
    *count = 1;
    EXPECT_EQ(TextsOf(list), Texts{"a"});
}

TEST(StringList, ChangesNothingWithoutMemory) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([](unsigned n) {
        SCOPED_TRACE(n);
        CStringList list;
        Texts model;
        int refused = 0;
        const auto added = [&](int place, const char* text) {
            if (list.Count() > static_cast<long>(model.size()))
                model.insert(model.begin() + std::min(place, static_cast<int>(model.size())), text);
            else
                ++refused;
        };
        char b[] = "b", c[] = "c", d[] = "d";
        list.AddLatestString("a");
        added(0, "a");
        list.PushBackList(c);
        added(9, "c");
        list.AddSortedString(b);
        added(list.StringIndex("c") < 0 ? 9 : list.StringIndex("b"), "b");
        EXPECT_EQ(TextsOf(list), model);
        if (list.UpdateString(0, d) == 1)
            model[0] = "d";
        else
            ++refused;
        CStringList copy(list), assigned, filled;
        Fill(filled, {"old"});
        refused += filled.Count() == 1 ? 0 : 1;
        const Texts before = TextsOf(filled);
        assigned = list;
        for (CStringList* each : {&list, &copy, &assigned}) {
            refused += each->Count() == 0 ? 1 : 0;
            EXPECT_EQ(TextsOf(*each), each->Count() == 0 ? Texts() : model);
        }
        const int answer = filled.CopyFrom(list);
        refused += 1 - answer;
        EXPECT_EQ(TextsOf(filled), answer == 1 ? model : before);
        EXPECT_EQ(refused, n <= 19 ? 1 : 0);
    });
    EXPECT_EQ(failures, 19u);
}

} // namespace
