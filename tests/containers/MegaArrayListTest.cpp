#include "utilities/containers/MegaArrayList.h"
#include "tests/support/CapturedLog.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace {

TEST(MegaArrayList, LandsWhereAskedAmongEquals) {
    struct Row {
        const char* name;
        std::vector<double> before;
        double value;
        int byDefault, after, front;
    };
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    const Row rows[] = {
        {"empty", {}, 2, 0, 0, 0},
        {"inner run", {1, 2, 2, 2, 3}, 2, 1, 4, 1},
        {"run at the front", {2, 2, 3}, 2, 0, 2, 0},
        {"run at the end", {1, 2, 2}, 2, 1, 3, 1},
        {"only one", {2}, 2, 0, 1, 0},
        {"below all", {2, 3}, 1, 0, 0, 0},
        {"above all", {2, 3}, 4, 2, 2, 2},
        {"no number", {1, 2, 3}, noNumber, 0, 0, 0},
    };
    for (const Row& row : rows) {
        const int expected[] = {row.byDefault, row.after, row.front};
        for (int where = 0; where < 3; ++where) {
            CMegaArrayList list;
            int others = 0, item = 0;
            for (const double value : row.before)
                list.AppendToTail(&others, value);
            const int index = list.AddSorted(&item, row.value, static_cast<_AddSortedLoc>(where));
            EXPECT_EQ(index, expected[where]) << row.name << ", " << where;
            EXPECT_EQ(list.Index(index, nullptr), &item) << row.name << ", " << where;
        }
    }
}

TEST(MegaArrayList, AnswersMemberWithAnIndexWhereItSearchesByValue) {
    CMegaArrayList list;
    std::vector<int> items(26);
    for (int i = 0; i < 25; ++i)
        list.AppendToTail(&items[static_cast<std::size_t>(i)], i);
    EXPECT_EQ(list.Member(&items[7], 7, true), 1) << "25 elements";
    list.AppendToTail(&items[25], 25);
    EXPECT_EQ(list.Member(&items[7], 7, true), 7) << "26 elements";
    EXPECT_EQ(list.Member(&items[0], 0, true), 0) << "found at index 0";
    EXPECT_EQ(list.GetIndexOfItem(&items[0], 0, true), 0);
    EXPECT_EQ(list.Member(&items[0], 0, false), 1);
    EXPECT_EQ(list.Member(&items[7], 8, true), 0) << "not in the run";
    EXPECT_EQ(list.Member(&items[7], -1, true), 1) << "a negative value searches by identity";
    EXPECT_EQ(list.Member(&list, 7, false), 0);
}

TEST(MegaArrayList, SetsValuesInPlace) {
    CMegaArrayList list;
    int items[2];
    EXPECT_FALSE(list.SetSortValue(&items[0], 1));
    EXPECT_FALSE(list.SetSortValueByIndex(0, 1));
    list.AppendToTail(&items[0], 1);
    list.AppendToTail(&items[1], 2);
    EXPECT_TRUE(list.SetSortValue(&items[0], 3));
    EXPECT_TRUE(list.SetSortValueByIndex(1, 2.5));
    EXPECT_FALSE(list.SetSortValueByIndex(2, 1));
    list.ScaleAllSortValues(2);
    list.AdjustAllSortValues(-0.5);
    double value = 0;
    EXPECT_EQ(list.Index(0, &value), &items[0]);
    EXPECT_EQ(value, 5.5);
    list.Index(1, &value);
    EXPECT_EQ(value, 4.5);
}

TEST(MegaArrayList, LogsWhatIsWrong) {
    CapturedLog log;
    CMegaArrayList list;
    EXPECT_EQ(list.Index(3, nullptr), nullptr);
    EXPECT_TRUE(list.VerifyListIsSorted());
    for (const double value : {1.0, 4.0, 2.5, 0.5})
        list.AppendToTail(&list, value);
    EXPECT_EQ(list.Index(4, nullptr), nullptr) << "no line while there is a block";
    EXPECT_FALSE(list.VerifyListIsSorted());
    EXPECT_EQ(log.Lines(),
              (std::vector<std::string>{"ERR>>Index called for index 3 and list is NULL!!!",
                                        "CMegaArrayList::VerifyListIsSorted() fails on item 2 with "
                                        "sort value of 2.5 being bigger than 4"}));
}

TEST(MegaArrayList, KeepsAFlagThatOnlyForcingSets) {
    // Read where it stands: no operation tells it.
    const auto flag = [](const CMegaArrayList& list) {
        return reinterpret_cast<const unsigned char*>(&list)[24];
    };
    CMegaArrayList list;
    EXPECT_EQ(flag(list), 1);
    CMegaArrayList copy(list);
    EXPECT_EQ(flag(copy), 0);
    copy.ForceSorted();
    EXPECT_EQ(flag(copy), 1);
}

} // namespace
