#include "utilities/containers/MyArrayList.h"
#include "tests/containers/ArrayListRecord.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>
#include <vector>

namespace {

/// A list whose elements have these values and whose items tell their places.
std::vector<long long>& Fill(CMyArrayList& list, std::vector<long long> values) {
    static std::vector<long long> kept;
    kept = std::move(values);
    for (long long& value : kept)
        list.AppendToTail(&value, value);
    return kept;
}

TEST(MyArrayList, PutsTiesInFrontExceptAtTheTail) {
    struct Row {
        const char* name;
        std::vector<long long> before;
        long long value;
        int index;
    };
    const Row rows[] = {
        {"empty", {}, 5, 0},
        {"equal to the only one", {5}, 5, 0},
        {"equal to first and last", {5, 5}, 5, 0},
        {"equal to the first", {5, 7}, 5, 0},
        {"equal to an inner one", {3, 5, 5, 7}, 5, 1},
        {"equal to the last", {3, 5, 5}, 5, 3},
        {"between", {3, 7}, 5, 1},
        {"below 32 bits", {-3'000'000'000, 7}, -2'999'999'999, 1},
    };
    for (const Row& row : rows) {
        CMyArrayList list;
        Fill(list, row.before);
        int item = 0;
        EXPECT_EQ(list.AddSorted(&item, row.value), row.index) << row.name;
        EXPECT_EQ(list.Index(row.index, nullptr), &item) << row.name;
    }
}

TEST(MyArrayList, AnswersEachDirection) {
    struct Row {
        const char* name;
        int count; ///< elements with the values 10, 20, 30, ...
        long long value;
        int before, after, exact;
    };
    const Row rows[] = {
        {"empty", 0, 10, 77, 77, 77},
        {"below all of two", 2, 5, -1, -1, -1},
        {"below all of 24", 24, 5, -1, -1, -1},
        {"below all of 25", 25, 5, 0, 1, -1},
        {"hit in 24", 24, 20, 1, 2, 1},
        {"hit in 25", 25, 20, 1, 2, 1},
        {"between in 24", 24, 25, 1, 2, -1},
        {"between in 25", 25, 25, 1, 2, -1},
        {"the last of 24", 24, 240, 23, -1, 23},
        {"the last of 25", 25, 250, 24, -1, 24},
        {"above all of 25", 25, 251, 24, -1, -1},
    };
    for (const Row& row : rows) {
        CMyArrayList list;
        for (int i = 1; i <= row.count; ++i)
            list.AppendToTail(&list, i * 10);
        const int expected[] = {row.before, row.after, row.exact, row.count == 0 ? 77 : -1};
        for (int dir = 0; dir < 4; ++dir) {
            int index = 77;
            void* item = list.ElemBySortValue(row.value, &index, static_cast<_tscanDir>(dir));
            EXPECT_EQ(index, expected[dir]) << row.name << ", direction " << dir;
            EXPECT_EQ(item != nullptr, index >= 0 && index != 77) << row.name;
        }
    }
}

TEST(MyArrayList, TracksWhetherItIsSorted) {
    int item = 0;
    CMyArrayList list;
    EXPECT_TRUE(list.IsSorted());
    list.AppendToTail(&item, 5);
    EXPECT_TRUE(list.IsSorted()) << "first of an empty list";
    for (const long long value : {9, 1, 5, 5})
        list.AddSorted(&item, value);
    EXPECT_TRUE(list.IsSorted()) << "head, tail and middle keep it";
    list.AppendToTail(&item, 10);
    EXPECT_FALSE(list.IsSorted());
    list.AddSorted(&item, 2);
    EXPECT_FALSE(list.IsSorted());
    EXPECT_TRUE(list.VerifyListIsSorted());
    EXPECT_TRUE(list.IsSorted());
    list.InsertToIndex(1, &item, 4);
    EXPECT_FALSE(list.IsSorted());
    EXPECT_FALSE(list.VerifyListIsSorted());
    CMyArrayList copy(list);
    EXPECT_FALSE(copy.IsSorted());
    list.RemoveAllButLeaveAllocation();
    EXPECT_TRUE(list.IsSorted());
    list.InsertToIndex(0, &item, 4);
    EXPECT_FALSE(list.IsSorted()) << "as a new head";
    list.RemoveAll();
    EXPECT_TRUE(list.IsSorted());
    list.InsertNewHead(&item, 4);
    EXPECT_FALSE(list.IsSorted());
}

TEST(MyArrayList, CountsAsUnsortedAfterEveryAppendButTheFirst) {
    CMyArrayList list;
    for (int i = 0; i < 25; ++i) {
        EXPECT_TRUE(list.VerifyListIsSorted());
        list.AppendToTail(&list, i);
        EXPECT_EQ(list.IsSorted(), i == 0) << i;
    }
}

TEST(MyArrayList, VerifiesFromTheSmallest32BitValuePlusOne) {
    for (const auto& [value, sorted] :
         {std::pair(-2147483647LL, true), std::pair(-2147483648LL, false),
          std::pair(-3'000'000'000LL, false)}) {
        CMyArrayList list;
        list.AddSorted(&list, value);
        EXPECT_EQ(list.VerifyListIsSorted(), sorted) << value;
    }
}

TEST(MyArrayList, AdjustsAndScales) {
    constexpr long long most = std::numeric_limits<long long>::max();
    CMyArrayList list;
    Fill(list, {-5, 3, most});
    const auto values = [&list] {
        std::vector<long long> all(3);
        for (int i = 0; i < 3; ++i)
            list.Index(i, &all[static_cast<std::size_t>(i)]);
        return all;
    };
    list.AdjustAllSortValues(-2);
    EXPECT_EQ(values(), (std::vector<long long>{-7, 1, most - 2}));
    list.AdjustAllSortValues(4);
    EXPECT_EQ(values(), (std::vector<long long>{-3, 5, -most})) << "wraps around";
    list.ScaleAllSortValues(0.5);
    EXPECT_EQ(values(), (std::vector<long long>{-1, 2, -(1LL << 62)})) << "towards zero";
    list.ScaleAllSortValues(4);
    EXPECT_EQ(values(), (std::vector<long long>{-4, 8, -most - 1}));
    list.ScaleAllSortValues(-1);
    EXPECT_EQ(values(), (std::vector<long long>{4, -8, most}));
    list.ScaleAllSortValues(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(values(), (std::vector<long long>{0, 0, 0}));
}

TEST(MyArrayList, GrowsByTheStepItWasGiven) {
    struct Row {
        const char* name;
        unsigned step;
        int first, second; ///< capacity after the first element and after the one that overflows it
    };
    const Row rows[] = {{"none", 0, 2, 3}, {"one", 1, 2, 3}, {"seven", 7, 7, 14}};
    for (const Row& row : rows) {
        CMyArrayList list(row.step);
        list.AppendToTail(&list, 0);
        EXPECT_EQ(Look(list).capacity, row.first) << row.name;
        while (list.NumNodes() <= row.first)
            list.AppendToTail(&list, 0);
        EXPECT_EQ(Look(list).capacity, row.second) << row.name;
        const CMyArrayList copy(list);
        EXPECT_EQ(Look(copy).step, Look(list).step) << row.name;
    }
    CMyArrayList huge(~0u);
    EXPECT_EQ(huge.AppendToTail(&huge, 0), -1) << "a step beyond any block";
}

TEST(MyArrayList, FindsTheFirstOfTwoEqualPointers) {
    for (const int count : {25, 26}) {
        CMyArrayList list;
        int item = 0;
        for (int i = 0; i < count; ++i)
            list.AppendToTail(i == 3 || i == 20 ? &item : nullptr, i / 10);
        EXPECT_EQ(list.MemberIndex(&item, 2), count == 25 ? 3 : 20) << count;
        EXPECT_EQ(list.Member(&item, 1), count == 25 ? 1 : 0) << count;
        EXPECT_EQ(list.Member(&item, -1), 1);
        EXPECT_TRUE(list.Remove(&item, 2));
        EXPECT_EQ(list.MemberIndex(&item, -1), count == 25 ? 19 : 3) << count;
    }
}

} // namespace
