#include "utilities/containers/RectangleList.h"
#include "tests/containers/RectangleModel.h"
#include "tests/support/AllocationFault.h"

#include <gtest/gtest.h>
#include <random>

void PrintTo(const RECT& r, std::ostream* out) {
    *out << '(' << r.left << ',' << r.top << ',' << r.right << ',' << r.bottom << ')';
}

namespace {

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

LONG Area(RectangleList& list) {
    LONG area = 0;
    for (const RECT& r : Of(list))
        area += (r.right - r.left) * (r.bottom - r.top);
    return area;
}

RECT RandomRectangle(std::mt19937& random, unsigned largest) {
    const auto below = [&](unsigned limit) { return static_cast<LONG>(random() % limit); };
    const LONG left = below(Bitmap::size - 1), top = below(Bitmap::size - 1);
    return {left, top, std::min<LONG>(left + 1 + below(largest), Bitmap::size),
            std::min<LONG>(top + 1 + below(largest), Bitmap::size)};
}

/// A list, the rectangles that it must hold in this order, and the cells that these must cover.
class Triple {
public:
    RectangleList list;
    RectangleModel model;
    Bitmap cells;

    void Add(RECT r) {
        list.add(&r);
        model.Add(r);
        cells.Set(r, 1);
    }
    void Subtract(RECT r) {
        list.subtract(&r);
        model.Subtract(r);
        cells.Set(r, 0);
    }

    void Clip(std::mt19937& random) {
        RECT area = RandomRectangle(random, Bitmap::size);
        if (random() % 2 == 0) {
            list.SetNewObjectRect(area);
            Rectangles clipped;
            for (const RECT& r : model.list) {
                RECT common;
                if (IntersectRect(&common, &r, &area))
                    clipped.push_back(common);
            }
            model.list = clipped;
            cells.KeepWhere(Bitmap({area}));
        } else {
            std::erase_if(model.list,
                          [&](const RECT& r) { return !RectangleModel::Intersects(r, area); });
            ASSERT_EQ(list.clipTo(area), !model.list.empty());
            cells = Bitmap(model.list);
        }
    }

    /// To and fro: what leaves the square stays within 32 bits.
    void Offset(std::mt19937& random) {
        const int dx = static_cast<int>(random() % 5) - 2, dy = static_cast<int>(random() % 5) - 2;
        list.offsetAll(dx, dy);
        for (RECT& r : model.list)
            OffsetRect(&r, dx, dy);
        cells = Bitmap(model.list);
    }

    void OneWithMany(std::mt19937& random) {
        RectangleList other;
        RectangleModel same;
        for (int i = 0; i < 5; ++i) {
            RECT r = RandomRectangle(random, 20);
            other.add(&r);
            same.Add(r);
        }
        switch (random() % 3) {
        case 0:
            list.add(other);
            for (const RECT& r : same.list) {
                model.Add(r);
                cells.Set(r, 1);
            }
            break;
        case 1:
            for (auto r = same.list.rbegin(); r != same.list.rend(); ++r) {
                model.Subtract(*r);
                cells.Set(*r, 0);
            }
            ASSERT_EQ(list.subtract(other), !model.list.empty());
            break;
        default:
            cells.KeepWhere(Bitmap(same.list));
            ASSERT_EQ(list.clipTo(other), !(cells == Bitmap()));
            model.list = Of(list);
        }
    }

    void Check(bool exactly) {
        ASSERT_EQ(Of(list), model.list);
        const Bitmap covered(Of(list));
        if (exactly)
            ASSERT_TRUE(covered == cells) << "covers other cells, or some twice";
        else
            ASSERT_TRUE(covered.Covers(cells)) << "uncovers cells";
        ASSERT_EQ(list.getBounds(), model.Bounds());
        ASSERT_EQ(list.isEmpty(), model.list.empty());
    }
};

TEST(RectangleList, CoversWhatWasAddedAndNotSubtracted) {
    for (const unsigned seed : {1u, 2u, 3u, 4u, 5u}) {
        std::mt19937 random(seed);
        Triple triple;
        triple.list.set_consolidate_on_add(false, 0, 1);
        triple.model.consolidates = false;
        for (int round = 0; round < 600; ++round) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
            const unsigned choice = random() % 32;
            const RECT r = RandomRectangle(random, 24);
            if (choice < 18)
                triple.Add(r);
            else if (choice < 28)
                triple.Subtract(r);
            else if (choice < 29)
                triple.Clip(random);
            else if (choice < 30)
                triple.Offset(random);
            else
                triple.OneWithMany(random);
            triple.Check(/*exactly=*/true);
            POINT point{static_cast<LONG>(random() % 64), static_cast<LONG>(random() % 64)};
            const RECT cell{point.x, point.y, point.x + 1, point.y + 1};
            const bool covered = Bitmap(triple.model.list).Covers(Bitmap({cell}));
            ASSERT_EQ(triple.list.containsPoint(point.x, point.y), covered);
            RECT asked = cell;
            ASSERT_EQ(triple.list.intersectsRectangle(&asked), covered);
            RectangleList other(asked);
            ASSERT_EQ(triple.list.intersects(other), covered);
            if (HasFatalFailure())
                return;
        }
    }
}

TEST(RectangleList, ConsolidatesInDocumentedOrder) {
    for (const unsigned seed : {11u, 12u, 13u, 14u, 15u, 16u}) {
        std::mt19937 random(seed);
        const int threshold = static_cast<int>(random() % 20);
        const int interval = static_cast<int>(1 + seed % 9);
        Triple triple;
        if (seed % 2 == 0) {
            triple.list.set_consolidate_on_add(true, threshold, interval);
            triple.model.threshold = threshold;
            triple.model.next = triple.model.interval = interval;
        }
        for (int round = 0; round < 600; ++round) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", round " << round);
            // Thin ones near the top, which leave room below: the sum stays small.
            RECT r = RandomRectangle(random, 9);
            r.top /= 4;
            r.bottom = r.top + 1 + static_cast<LONG>(random() % 3);
            random() % 3 != 0 ? triple.Add(r) : triple.Subtract(r);
            if (round % 25 == 0) {
                triple.list.consolidate();
                triple.model.Consolidate();
            }
            triple.Check(/*exactly=*/false);
            if (HasFatalFailure())
                return;
            if (round % 100 == 99) {
                triple.list.clear();
                triple.model.list.clear();
                triple.cells = Bitmap();
            }
        }
    }
}

TEST(RectangleList, AlignsStaircasesInTime) {
    // Each column is cut at the edges of all others: 49 columns would become 2,400 pieces, one at a
    // time. The last rectangle makes the bounds large enough.
    for (const int columns : {12, 49}) {
        RectangleList list;
        RectangleModel model;
        for (LONG i = 0; i < columns; ++i)
            model.list.push_back({i, i, i + 1, 100 + i});
        model.list.push_back({100000, 10000, 100001, 10001});
        Fill(list, model.list);
        const LONG area = Area(list);
        list.consolidate();
        EXPECT_EQ(Area(list), area);
        EXPECT_LT(list.getNumRectangles(), columns * columns * 2);
        EXPECT_GT(list.getNumRectangles(), columns);
        if (columns == 12) {
            model.Consolidate();
            EXPECT_EQ(Of(list), model.list);
        }
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
        {"the same again", {ten}, true, ten, {ten}},
        {"contained", {ten}, true, {2, 2, 5, 5}, {ten}},
        {"overlap on the right", {ten}, true, {5, 0, 15, 10}, {ten, {10, 0, 15, 10}}},
        {"trims a side", {ten}, true, {5, -1, 15, 11}, {{0, 0, 5, 10}, {5, -1, 15, 11}}},
        {"covers it", {ten}, true, {-1, -1, 11, 11}, {{-1, -1, 11, 11}}},
        {"touches only", {ten}, true, {10, 0, 12, 10}, {ten, {10, 0, 12, 10}}},
        {"empty, outside", {ten}, true, {20, 20, 20, 30}, {ten, {20, 20, 20, 30}}},
        {"empty, inside", {ten}, true, {5, 5, 5, 5}, {ten}},
        {"empty list", {}, true, {5, 5, 5, 5}, {{5, 5, 5, 5}}},
        {"hole",
         {ten},
         false,
         {3, 3, 6, 6},
         {{6, 0, 10, 10}, {3, 6, 6, 10}, {3, 0, 6, 3}, {0, 0, 3, 10}}},
        {"all of it", {ten, {10, 0, 20, 10}}, false, {-5, 0, 10, 10}, {{10, 0, 20, 10}}},
        {"touches from outside", {ten}, false, {10, 0, 20, 10}, {ten}},
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

TEST(RectangleList, TakesItselfAndItsOwnRectangles) {
    const Rectangles two = {{0, 0, 10, 10}, {20, 0, 30, 10}};
    RectangleList list;
    Fill(list, two);
    list.add(list);
    EXPECT_TRUE(list.clipTo(list));
    list.add(list.getRectangle(0));
    list.swapWith(list);
    RectangleList& self = list;
    list = self;
    EXPECT_EQ(Of(list), two);
    EXPECT_TRUE(list.intersects(list));
    list.subtract(list.getRectangle(0));
    EXPECT_EQ(Of(list), Rectangles{two[1]});
    EXPECT_FALSE(list.subtract(list));
    list.add(nullptr);
    list.subtract(nullptr);
    EXPECT_FALSE(list.intersectsRectangle(nullptr));
    RECT area = two[0];
    EXPECT_FALSE(list.clipTo(area));
    EXPECT_EQ(list.getBounds(), RECT{});
    list.consolidate();
    EXPECT_TRUE(list.isEmpty());
}

TEST(RectangleList, ConsolidatesByCountAndBySum) {
    RectangleList list;
    for (LONG i = 0; i < 50; ++i) {
        RECT r{i * 10, 0, i * 10 + 2, 1};
        list.addWithoutMerging(r);
    }
    list.consolidate();
    EXPECT_EQ(list.getNumRectangles(), 50) << "a fifth of the bounds";
    RECT last{500, 0, 502, 1};
    list.addWithoutMerging(last);
    list.consolidate();
    EXPECT_EQ(Of(list), (Rectangles{{0, 0, 502, 1}})) << "more than 50";
    // Width times bottom edge less top edge: 2 * 11 - 10 = 12 each, of bounds of 24 and of 36.
    Fill(list, {{0, 10, 2, 11}, {10, 10, 12, 11}});
    list.consolidate();
    EXPECT_EQ(Of(list), (Rectangles{{0, 10, 12, 11}})) << "24 of 12";
    Fill(list, {{0, 10, 2, 11}, {34, 10, 36, 11}});
    list.consolidate();
    EXPECT_EQ(list.getNumRectangles(), 2) << "24 of 36 is not more than two thirds";
    Fill(list, {{0, 10, 2, 11}, {33, 10, 35, 11}});
    list.consolidate();
    EXPECT_EQ(list.getNumRectangles(), 1) << "24 of 35 is";
}

TEST(RectangleList, CountsAdditionsBeyondTheThreshold) {
    // Rectangles that do not touch, far from one another: consolidation changes nothing, but two
    // that touch show that it ran.
    RectangleList list;
    const auto addMany = [&](int count) {
        for (int i = 0; i < count; ++i) {
            const LONG x = 1000 * (1 + list.getNumRectangles());
            RECT r{x, 0, x + 1, 1};
            list.add(&r);
        }
    };
    RECT halves[2] = {{0, 0, 1, 1}, {1, 0, 2, 1}};
    list.add(&halves[0]);
    list.add(&halves[1]);
    addMany(10);
    EXPECT_EQ(list.getNumRectangles(), 12) << "at the threshold nothing counts";
    addMany(7);
    EXPECT_EQ(list.getNumRectangles(), 19);
    addMany(1);
    EXPECT_EQ(list.getNumRectangles(), 19) << "the eighth consolidates";
    list.set_consolidate_on_add(true, 0, 0);
    list.addWithoutMerging(halves[1]);
    list.addWithoutMerging(halves[1]);
    addMany(1);
    EXPECT_EQ(list.getNumRectangles(), 20) << "an interval of 0 is 1";
}

TEST(RectangleList, TellsAboutTwoRectangles) {
    struct Row {
        const char* name;
        RECT a, b;
        bool contains, adjacent, reduced;
        RECT enlargedTo, reducedTo;
    };
    const RECT a{0, 0, 10, 10};
    const Row rows[] = {
        {"the same", a, a, true, true, false, a, a},
        {"below", a, {0, 10, 10, 15}, false, true, false, {0, 0, 10, 15}, a},
        {"beside, apart", a, {11, 0, 15, 10}, false, false, false, a, a},
        {"beside, overlapping", a, {5, 0, 15, 10}, false, true, false, {0, 0, 15, 10}, a},
        {"covers the top", a, {-1, -1, 11, 4}, false, false, true, a, {0, 4, 10, 10}},
        {"covers the left", a, {-1, -1, 4, 11}, false, false, true, a, {4, 0, 10, 10}},
        {"covers the bottom", a, {-1, 4, 11, 11}, false, false, true, a, {0, 0, 10, 4}},
        {"covers the right", a, {4, -1, 11, 11}, false, false, true, a, {0, 0, 4, 10}},
        {"ends at the edge", a, {-1, -1, 10, 4}, false, false, false, a, a},
        {"in a corner", a, {2, 0, 10, 8}, true, false, false, a, a},
    };
    for (const Row& row : rows) {
        RECT first = row.a, second = row.b;
        EXPECT_EQ(RectangleList::rectContainsRect(&first, &second), row.contains) << row.name;
        EXPECT_EQ(RectangleList::enlargeIfAdjacent(&first, &second), row.adjacent) << row.name;
        EXPECT_EQ(first, row.enlargedTo) << row.name;
        first = row.a;
        EXPECT_EQ(RectangleList::reduceIfPartlyContainedIn(&first, &second), row.reduced)
            << row.name;
        EXPECT_EQ(first, row.reducedTo) << row.name;
    }
}

TEST(RectangleList, CopiesAndSwaps) {
    const Rectangles three = {{0, 0, 1, 1}, {2, 2, 3, 3}, {4, 4, 5, 5}};
    RectangleList list;
    list.set_consolidate_on_add(true, 0, 1);
    Fill(list, three);
    RectangleList copy(list);
    RectangleList assigned(*list.getRectangle(0));
    assigned = list;
    list.offsetAll(INT_MAX, 0);
    EXPECT_EQ(list.getRectangle(2)->left, INT_MIN + 3) << "wraps around";
    RECT touching{5, 4, 6, 5};
    for (RectangleList* each : {&copy, &assigned}) {
        EXPECT_EQ(Of(*each), three);
        RECT distant{1000, 1000, 1001, 1001};
        each->addWithoutMerging(distant);
        each->add(&touching);
        EXPECT_EQ(each->getNumRectangles(), 4) << "consolidates as the original does";
    }
    const Rectangles left = Of(copy), right = {{7, 7, 8, 8}};
    RectangleList other(touching);
    Fill(other, right);
    copy.swapWith(other);
    EXPECT_EQ(Of(copy), right);
    EXPECT_EQ(Of(other), left);
    copy.swapWith(other);
    EXPECT_EQ(Of(copy), left);
}

TEST(RectangleList, ChangesNothingWithoutMemory) {
    AllocationFault fault("vtrutils.dll");
    const unsigned failures = fault.ForEachAllocation([](unsigned n) {
        SCOPED_TRACE(n);
        std::mt19937 random(5);
        int refused = 0;
        RectangleList list;
        list.set_consolidate_on_add(false, 0, 1);
        const auto run = [&](auto operation) {
            RectangleModel model;
            model.consolidates = false;
            model.list = Of(list);
            const Rectangles before = model.list;
            operation(model);
            if (Of(list) != model.list) {
                ++refused;
                EXPECT_EQ(Of(list), before);
            }
        };
        for (int round = 0; round < 120; ++round) {
            run([&, r = RandomRectangle(random, 20)](auto& model) mutable {
                round % 3 != 2 ? list.add(&r) : list.subtract(&r);
                round % 3 != 2 ? model.Add(r) : model.Subtract(r);
            });
        }
        run([&](auto& model) {
            RECT cover{-100, -100, -99, 200};
            list.add(&cover);
            list.subtract(&cover);
            list.consolidate();
            model.list = {model.Bounds()};
        });
        const Rectangles staircase = {{0, 0, 1, 9},  {1, 1, 2, 10}, {2, 2, 3, 11},  {3, 3, 4, 12},
                                      {4, 4, 5, 13}, {5, 5, 6, 14}, {9, 0, 1000, 1}};
        Fill(list, staircase);
        refused += Of(list) == staircase ? 0 : 1;
        run([&](auto& model) {
            list.consolidate();
            model.Consolidate();
        });
        const Rectangles all = Of(list);
        RectangleList copy(list), other(*list.getRectangle(0));
        refused += other.isEmpty() || copy.isEmpty() ? 1 : 0;
        EXPECT_TRUE(copy.isEmpty() || Of(copy) == all);
        const Rectangles one = Of(other);
        list.swapWith(other);
        refused += Of(list) == all ? 1 : 0;
        EXPECT_TRUE((Of(list) == one && Of(other) == all) || (Of(list) == all && Of(other) == one));
        EXPECT_LE(refused, 1);
    });
    EXPECT_GE(failures, 100u);
}

} // namespace
