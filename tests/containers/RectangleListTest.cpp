#include "utilities/containers/RectangleList.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Dice.h"

#include <algorithm>
#include <array>
#include <climits>
#include <gtest/gtest.h>
#include <vector>

bool operator==(const RECT& a, const RECT& b) {
    return EqualRect(&a, &b) != FALSE;
}

void PrintTo(const RECT& r, std::ostream* out) {
    *out << '(' << r.left << ',' << r.top << ',' << r.right << ',' << r.bottom << ')';
}

namespace {

using Rectangles = std::vector<RECT>;

Rectangles Of(RectangleList& list) {
    Rectangles rectangles;
    for (int i = 0; i < list.getNumRectangles(); ++i)
        rectangles.push_back(*list.getRectangle(i));
    return rectangles;
}

void Fill(RectangleList& list, Rectangles rectangles) {
    list.clear();
    for (RECT& r : rectangles)
        list.addWithoutMerging(r);
}

constexpr LONG side = 48;
/// How often each cell of a square is covered.
using Cells = std::array<int, side * side>;

Cells CellsOf(const Rectangles& rectangles) {
    Cells cells{};
    for (const RECT& r : rectangles) {
        for (LONG y = r.top; y < r.bottom; ++y) {
            for (LONG x = r.left; x < r.right; ++x)
                ++cells.begin()[y * side + x];
        }
    }
    return cells;
}

RECT RandomRectangle(Dice& dice, int largest) {
    const LONG left = dice.Below(side), top = dice.Below(side);
    return {left, top, std::min<LONG>(left + 1 + dice.Below(largest), side),
            std::min<LONG>(top + 1 + dice.Below(largest), side)};
}

RECT BoundsOf(const Rectangles& rectangles) {
    RECT bounds{};
    for (const RECT& r : rectangles) {
        const RECT before = bounds;
        UnionRect(&bounds, &before, &r);
    }
    return bounds;
}

bool CutAt(Rectangles& list, std::size_t i, LONG y) {
    if (y <= list[i].top || y >= list[i].bottom)
        return false;
    RECT lower = list[i];
    list[i].bottom = lower.top = y;
    list.push_back(lower);
    return true;
}

/// Whether the pair could be cut, or could be merged.
bool Align(Rectangles& list, std::size_t i, std::size_t j) {
    const RECT a = list[i], b = list[j];
    return (b.left == a.right || b.right == a.left) &&
           (CutAt(list, i, b.top) || CutAt(list, i, b.bottom) || CutAt(list, j, a.top) ||
            CutAt(list, j, a.bottom));
}
bool Merge(Rectangles& list, std::size_t i, std::size_t j) {
    if (!RectangleList::enlargeIfAdjacent(&list[i], &list[j]))
        return false;
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(j));
    return true;
}

/// From the first pair again after each change.
bool ChangeOnce(Rectangles& list, bool (*change)(Rectangles&, std::size_t, std::size_t)) {
    for (std::size_t i = 0; i < list.size(); ++i) {
        for (std::size_t j = list.size(); --j > i;) {
            if (change(list, i, j))
                return true;
        }
    }
    return false;
}

TEST(RectangleList, CoversWhatWasAddedAndNotSubtracted) {
    constexpr unsigned seed = 1;
    Dice dice(seed);
    AllocationFault fault("vtrutils.dll");
    RectangleList list;
    list.set_consolidate_on_add(false, 0, 1);
    for (int round = 0; round < 2500; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        const int choice = dice.Below(64);
        const bool adds = choice<36, subtracts = choice> 38, many = choice % 18 == 0;
        RECT r = RandomRectangle(dice, adds || subtracts ? 20 : side);
        RectangleList other(r);
        for (int i = 0; many && i < 6; ++i) {
            r = RandomRectangle(dice, 20);
            other.add(&r);
        }
        const Rectangles before = Of(list);
        Cells expected = CellsOf(before);
        const Cells with = CellsOf(Of(other));
        ASSERT_EQ(list.getBounds(), BoundsOf(before));
        ASSERT_EQ(list.containsPoint(r.left, r.top), expected.begin()[r.top * side + r.left] == 1);
        bool meets = false;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const bool was = expected[i] != 0, is = with[i] != 0;
            meets = meets || (was && is);
            expected[i] = adds ? was || is : was && is != subtracts;
        }
        ASSERT_EQ(list.intersects(other), meets);
        const bool fails = !many && dice.Below(6) == 0;
        fault.FailAt(fails ? static_cast<unsigned>(1 + dice.Below(9)) : 0);
        if (adds)
            many ? list.add(other) : list.add(&r);
        else if (subtracts)
            many ? static_cast<void>(list.subtract(other)) : list.subtract(&r);
        else
            many ? static_cast<void>(list.clipTo(other)) : list.SetNewObjectRect(r);
        fault.FailAt(0);
        ASSERT_TRUE((fails && Of(list) == before) || CellsOf(Of(list)) == expected)
            << "other cells, or some twice";
    }
}

TEST(RectangleList, ConsolidatesInDocumentedOrder) {
    constexpr unsigned seed = 11;
    Dice dice(seed);
    AllocationFault fault("vtrutils.dll");
    for (int round = 0; round < 1500; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
        RectangleList list;
        list.set_consolidate_on_add(false, 0, 1);
        // Thin ones near the top, and bounds with room below: the sum stays small.
        RECT r{0, 0, 400, 1};
        list.add(&r);
        for (int i = dice.Below(14); i >= 0; --i) {
            r = RandomRectangle(dice, 9);
            OffsetRect(&r, 0, 1);
            list.add(&r);
        }
        r = {3000, 3000, 3001, 3001};
        list.add(&r);
        const Rectangles before = Of(list);
        Rectangles expected = before;
        while (before.size() <= 50 && ChangeOnce(expected, Align)) {
        }
        while (before.size() <= 50 && ChangeOnce(expected, Merge)) {
        }
        fault.FailAt(static_cast<unsigned>(std::max(0, dice.Below(9) - 6)));
        list.consolidate();
        fault.FailAt(0);
        if (Of(list) == before)
            list.consolidate();
        ASSERT_EQ(Of(list), before.size() > 50 ? Rectangles{BoundsOf(before)} : expected);
    }
}

TEST(RectangleList, AddsAndSubtractsAtTheEdges) {
    struct Row {
        const char* name;
        Rectangles before;
        bool adds;
        RECT r;
        Rectangles after;
    };
    const RECT ten{0, 0, 10, 10};
    const Row rows[] = {
        {"overlap on the right", {ten}, true, {5, 0, 15, 10}, {ten, {10, 0, 15, 10}}},
        {"trims each side",
         {{0, 0, 4, 9}, {5, 0, 9, 4}, {16, 0, 20, 9}, {5, 9, 9, 20}},
         true,
         {2, -1, 18, 12},
         {{0, 0, 2, 9}, {18, 0, 20, 9}, {5, 12, 9, 20}, {2, -1, 18, 12}}},
        {"cross",
         {{3, 0, 6, 10}},
         true,
         {0, 3, 10, 6},
         {{3, 0, 6, 10}, {0, 3, 3, 6}, {6, 3, 10, 6}}},
        {"empty, outside", {ten}, true, {20, 20, 20, 30}, {ten, {20, 20, 20, 30}}},
        {"empty list", {}, true, {5, 5, 5, 5}, {{5, 5, 5, 5}}},
        {"hole",
         {ten},
         false,
         {3, 3, 6, 6},
         {{6, 0, 10, 10}, {3, 6, 6, 10}, {3, 0, 6, 3}, {0, 0, 3, 10}}},
        {"all of one", {ten, {10, 0, 20, 10}}, false, {-5, 0, 10, 10}, {{10, 0, 20, 10}}},
        {"empty hole", {ten}, false, {5, 2, 5, 8}, {{5, 0, 10, 10}, {0, 0, 5, 10}}},
    };
    for (const Row& row : rows) {
        RectangleList list;
        Fill(list, row.before);
        RECT r = row.r;
        row.adds ? list.add(&r) : list.subtract(&r);
        EXPECT_EQ(Of(list), row.after) << row.name;
    }
}

TEST(RectangleList, TakesItselfAndNull) {
    const Rectangles two = {{0, 0, 10, 10}, {20, 0, 30, 10}};
    RectangleList list;
    Fill(list, two);
    list.add(list);
    EXPECT_TRUE(list.clipTo(list));
    RectangleList copy(list);
    EXPECT_FALSE(copy.subtract(copy));
    EXPECT_TRUE(list.subtract(copy));
    list.add(list.getRectangle(0));
    list.swapWith(list);
    const RectangleList& self = list;
    list = self;
    list.add(nullptr);
    list.subtract(nullptr);
    EXPECT_FALSE(list.intersectsRectangle(nullptr));
    EXPECT_EQ(Of(list), two);
    list.subtract(list.getRectangle(0));
    RECT touching = {10, 0, 21, 1};
    EXPECT_TRUE(list.clipTo(touching));
    EXPECT_EQ(Of(list), Rectangles{two[1]}) << "kept whole";
    touching.right = 20;
    EXPECT_FALSE(list.clipTo(touching) || list.clipTo(copy));
    list.consolidate();
    EXPECT_TRUE(list.isEmpty());
}

TEST(RectangleList, ConsolidatesWhenTheSumIsLargeAndWhenDue) {
    // Width times bottom edge less top edge: 2 * 11 - 10 and 3 * 11 - 10, so 35, against two thirds
    // of the bounds.
    for (const auto& [right, number] : {std::pair(53L, 2), std::pair(52L, 1)}) {
        RectangleList list;
        Fill(list, {{0, 10, 2, 11}, {right - 3, 10, right, 11}});
        list.consolidate();
        EXPECT_EQ(list.getNumRectangles(), number) << right;
    }
    for (const auto& [count, number] : {std::pair(50, 50), std::pair(51, 1)}) {
        Rectangles apart;
        for (LONG i = 0; i < count; ++i)
            apart.push_back({1000 * i, 0, 1000 * i + 1, 1});
        RectangleList list;
        Fill(list, apart);
        list.consolidate();
        EXPECT_EQ(list.getNumRectangles(), number) << count;
    }
    // Two halves show that a consolidation ran; the others do not touch.
    RectangleList list;
    const auto addUntil = [&list](int last) {
        for (int i = list.getNumRectangles(); i < last; ++i) {
            RECT r = i < 2 ? RECT{i, 0, i + 1, 1} : RECT{1000L * i, 0, 1000L * i + 1, 1};
            list.add(&r);
        }
        return list.getNumRectangles();
    };
    EXPECT_EQ(addUntil(19), 19) << "12 do not count";
    RectangleList copy(list);
    EXPECT_EQ(addUntil(20), 19) << "the eighth consolidates";
    RECT distant{-1000, 0, -999, 1};
    copy.add(&distant);
    EXPECT_EQ(copy.getNumRectangles(), 19) << "a copy has the counters too";
    RECT beside{2, 0, 3, 1};
    RectangleList next(list);
    next.add(&beside);
    EXPECT_EQ(next.getNumRectangles(), 20) << "and the turn of the next";
    list.set_consolidate_on_add(true, 0, 0);
    Fill(list, {{0, 0, 1, 1}, {1, 0, 2, 1}});
    list.add(&distant);
    EXPECT_EQ(list.getNumRectangles(), 2) << "an interval of 0 is 1";
}

TEST(RectangleList, TellsAboutTwoRectangles) {
    RECT a{0, 0, 10, 10}, above{-1, -1, 11, 4}, apart{11, 0, 15, 10};
    EXPECT_TRUE(RectangleList::rectContainsRect(&a, &a));
    EXPECT_FALSE(RectangleList::enlargeIfAdjacent(&a, &apart));
    for (const auto& [dx, dy] : {std::pair(0, 10), {0, -10}, {10, 0}, {-10, 0}, {0, 3}}) {
        RECT touching = a, b = a;
        OffsetRect(&b, dx, dy);
        EXPECT_FALSE(RectangleList::rectContainsRect(&a, &b)) << dx << ' ' << dy;
        EXPECT_TRUE(RectangleList::enlargeIfAdjacent(&touching, &b)) << dx << ' ' << dy;
        EXPECT_EQ(touching, BoundsOf({a, b}));
    }
    for (RECT inside : {a, RECT{1, 1, 9, 9}})
        EXPECT_FALSE(RectangleList::reduceIfPartlyContainedIn(&inside, &a));
    EXPECT_TRUE(RectangleList::reduceIfPartlyContainedIn(&a, &above));
    EXPECT_EQ(a, (RECT{0, 4, 10, 10}));
}

TEST(RectangleList, CopiesSwapsAndOffsets) {
    AllocationFault fault("vtrutils.dll");
    const Rectangles three = {{0, 0, 1, 1}, {2, 2, 3, 3}, {4, 4, 5, 5}};
    RECT one{7, 7, 8, 8};
    fault.ForEachAllocation([&](unsigned n) {
        fault.FailAt(0);
        RectangleList list, other(one);
        Fill(list, three);
        fault.FailAt(n);
        RectangleList copy(list);
        list.swapWith(other);
        fault.FailAt(0);
        EXPECT_EQ(Of(copy), n > 4 ? three : Rectangles());
        const bool swapped = Of(other) == three && Of(list) == Rectangles{one};
        EXPECT_TRUE(swapped || (Of(list) == three && Of(other) == Rectangles{one})) << n;
        EXPECT_TRUE(swapped || n > 4) << n;
    });
    RectangleList list(one);
    list.offsetAll(INT_MAX, -8);
    EXPECT_EQ(Of(list), (Rectangles{{INT_MIN + 6, -1, INT_MIN + 7, 0}})) << "wraps around";
}

} // namespace
