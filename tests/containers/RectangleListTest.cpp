#include "utilities/containers/RectangleList.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <array>
#include <climits>
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

/// Without memory a copy is empty.
void CheckCopy(const RectangleList& list, AllocationFault& fault, unsigned failing) {
    RectangleList copy(list);
    fault.FailAt(failing);
    RectangleList second(copy);
    const bool failed = failing > 0 && fault.Count() >= failing;
    fault.FailAt(0);
    EXPECT_TRUE(Of(second) == Of(copy) || (failed && second.isEmpty()));
}

/// Many rectangles, and those that fill most of their bounds, become the bounds.
void CheckConsolidated(const RectangleList& list) {
    RectangleList copy(list);
    const Rectangles before = Of(copy);
    copy.consolidate();
    const Rectangles after = Of(copy);
    EXPECT_TRUE(CellsOf(after) == CellsOf(before) || after == Rectangles{BoundsOf(before)});
    EXPECT_LE(after.size(), std::max<std::size_t>(before.size() * 2, 1));
}

/// Rectangles that meet the area stay whole.
void CheckClip(const RectangleList& list, RECT area) {
    RectangleList clipped(list);
    Rectangles expected = Of(clipped);
    std::erase_if(expected, [&](const RECT& each) {
        RECT common;
        return IntersectRect(&common, &each, &area) == FALSE;
    });
    EXPECT_EQ(clipped.intersectsRectangle(&area), !expected.empty());
    EXPECT_EQ(clipped.clipTo(area), !expected.empty());
    EXPECT_EQ(Of(clipped), expected);
}

TEST(RectangleList, CoversWhatWasAddedAndNotSubtracted) {
    AllocationFault fault("vtrutils.dll");
    RectangleList list;
    list.set_consolidate_on_add(false, 0, 1);
    EachRound(1, 2500, [&](Dice& dice, int) {
        const int choice = dice.Below(64);
        const bool adds = choice<36, subtracts = choice> 38, many = choice % 18 == 0;
        const bool itself = many && dice.Below(20) == 0;
        RECT r = RandomRectangle(dice, adds || subtracts ? 20 : side);
        RectangleList other(r);
        for (int i = 0; many && i < 6; ++i) {
            r = RandomRectangle(dice, 20);
            other.add(&r);
        }
        const Rectangles before = Of(list);
        CheckCopy(list, fault, static_cast<unsigned>(dice.Below(20)));
        CheckConsolidated(list);
        CheckClip(list, r);
        Cells expected = CellsOf(before);
        RectangleList& second = itself ? list : other;
        const Cells with = CellsOf(Of(second));
        ASSERT_EQ(list.getBounds(), BoundsOf(before));
        ASSERT_EQ(list.containsPoint(r.left, r.top), expected.begin()[r.top * side + r.left] == 1);
        bool meets = false;
        for (std::size_t i = 0; i < expected.size(); ++i) {
            const bool was = expected[i] != 0, is = with[i] != 0;
            meets = meets || (was && is);
            expected[i] = adds ? was || is : was && is != subtracts;
        }
        ASSERT_EQ(list.intersects(second), meets);
        const bool fails = !many && dice.Below(6) == 0;
        fault.FailAt(fails ? static_cast<unsigned>(1 + dice.Below(9)) : 0);
        bool left = true;
        if (adds)
            many ? list.add(second) : list.add(&r);
        else if (many)
            left = subtracts ? list.subtract(second) : list.clipTo(second);
        else
            subtracts ? list.subtract(&r) : list.SetNewObjectRect(r);
        fault.FailAt(0);
        ASSERT_TRUE(left != list.isEmpty() || adds || !many);
        const Rectangles after = Of(list);
        ASSERT_TRUE((fails && after == before) || CellsOf(after) == expected)
            << "other cells, or some twice";
        ASSERT_TRUE(std::ranges::none_of(after, [](const RECT& e) { return IsRectEmpty(&e); }));
    });
}

TEST(RectangleList, CountsEmptyOnesAndWrapsAround) {
    RECT ten{0, 0, 10, 10}, outside{20, 20, 20, 30}, empty{5, 2, 5, 8};
    RectangleList list(ten);
    list.add(&outside);
    EXPECT_EQ(Of(list), (Rectangles{ten, outside}));
    Fill(list, {ten});
    list.subtract(&empty);
    EXPECT_EQ(Of(list), (Rectangles{{5, 0, 10, 10}, {0, 0, 5, 10}}));
    list.offsetAll(INT_MAX, -8);
    EXPECT_EQ(*list.getRectangle(0), (RECT{INT_MIN + 4, -8, INT_MIN + 9, 2}));
}

TEST(RectangleList, TakesNullAndWhatItHolds) {
    const Rectangles two = {{0, 0, 10, 10}, {20, 0, 30, 10}};
    RectangleList list;
    Fill(list, two);
    list.add(list.getRectangle(0));
    list.add(nullptr);
    list.swapWith(list);
    EXPECT_EQ(Of(list), two);
    list.subtract(list.getRectangle(0));
    EXPECT_EQ(Of(list), Rectangles{two[1]});
    CheckClip(list, {25, 2, 25, 8});
}

TEST(RectangleList, ConsolidatesWhenTheSumIsLargeAndWhenDue) {
    const auto consolidated = [](const Rectangles& rectangles) {
        RectangleList list;
        Fill(list, rectangles);
        list.consolidate();
        return list.getNumRectangles();
    };
    // Width times bottom edge less top edge: 2 * 11 - 10 and 3 * 11 - 10, so 35, against two thirds
    // of the bounds.
    for (const auto& [width, number] : {std::pair(53L, 2), std::pair(52L, 1)})
        EXPECT_EQ(consolidated({{7, 10, 9, 11}, {width + 4, 10, width + 7, 11}}), number) << width;
    Rectangles apart;
    for (LONG i = 0; i < 50; ++i)
        apart.push_back({1000 * i, 0, 1000 * i + 1, 1});
    EXPECT_EQ(consolidated(apart), 50);
    apart.push_back({-1000, 0, -999, 1});
    EXPECT_EQ(consolidated(apart), 1);

    // Two halves show that a consolidation ran; the others do not touch.
    apart[1] = {1, 0, 2, 1};
    RectangleList list, other;
    for (std::size_t i = 0; i < 20; ++i)
        list.add(&apart[i]);
    EXPECT_EQ(list.getNumRectangles(), 19) << "12 do not count, the eighth after them consolidates";
    Fill(other, {apart[2]});
    list.swapWith(other);
    EXPECT_EQ(list.getNumRectangles() * 100 + other.getNumRectangles(), 119);
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

} // namespace
