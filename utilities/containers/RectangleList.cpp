#include "utilities/containers/RectangleList.h"

#include "utilities/containers/RectangleGeometry.h"
#include "utilities/containers/RectangleMerging.h"

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<RectangleList> {
    static_assert(sizeof(CMyArrayList) == 32 && sizeof(RectangleList) == 56);
    static_assert(offsetof(RectangleList, consolidateOnAdd) == 32);
    static_assert(offsetof(RectangleList, consolidationThreshold) == 36);
    static_assert(offsetof(RectangleList, addCounter) == 40);
    static_assert(offsetof(RectangleList, nextConsolidationAt) == 44);
    static_assert(offsetof(RectangleList, consolidationInterval) == 48);
};

namespace {

/// With more rectangles, consolidating yields their bounds.
constexpr int mostConsolidated = 50;

unsigned AsUnsigned(LONG value) {
    return static_cast<unsigned>(value);
}

LONG Sum(LONG value, int offset) {
    return static_cast<int>(AsUnsigned(value) + static_cast<unsigned>(offset));
}

bool Contains(const RECT& a, const RECT& b) {
    return a.left <= b.left && a.top <= b.top && a.right >= b.right && a.bottom >= b.bottom;
}

bool IsWithin(LONG value, LONG start, LONG end) {
    return value >= start && value < end;
}

/// What is left of `a` when `b` covers one whole side of it. False, with `a` unchanged, when it
/// does not.
bool Trim(RECT& a, const RECT& b) {
    const bool left = IsWithin(a.left, b.left, b.right);
    const bool top = IsWithin(a.top, b.top, b.bottom);
    const bool right = IsWithin(a.right, b.left, b.right);
    const bool bottom = IsWithin(a.bottom, b.top, b.bottom);
    if (left + top + right + bottom != 3)
        return false;
    if (!bottom)
        a.top = b.bottom;
    else if (!right)
        a.left = b.right;
    else if (!top)
        a.bottom = b.top;
    else
        a.right = b.left;
    return true;
}

/// True when adding `added` leaves an overlap with `e` that must be cut out of it.
bool OverlapRemains(const RECT& e, const RECT& added) {
    if (!vtr::Intersect(e, added) || Contains(added, e))
        return false;
    RECT trimmed = e;
    return !Trim(trimmed, added);
}

/// In 32 bits: more than two thirds of the bounds, by a sum that takes each rectangle's width times
/// its bottom edge, less its top edge, which is not its area. Far from the origin this is true
/// sooner than by area.
bool FillsBounds(unsigned sum, const RECT& bounds) {
    const unsigned width = AsUnsigned(bounds.right) - AsUnsigned(bounds.left);
    const unsigned height = AsUnsigned(bounds.bottom) - AsUnsigned(bounds.top);
    return sum > width * height * 2 / 3;
}

} // namespace

RectangleList::RectangleList() noexcept {
    set_consolidate_on_add(true, 12, 8);
}

RectangleList::RectangleList(RECT& rectangle) noexcept : RectangleList() {
    Append(rectangle);
}

RectangleList::RectangleList(const RectangleList& other) noexcept : RectangleList() {
    *this = other;
}

RectangleList& RectangleList::operator=(const RectangleList& other) noexcept {
    if (this == &other)
        return *this;
    clear();
    for (int i = 0; i < other.NumNodes(); ++i) {
        if (!Append(other.At(i))) {
            clear();
            break;
        }
    }
    consolidateOnAdd = other.consolidateOnAdd;
    consolidationThreshold = other.consolidationThreshold;
    addCounter = other.addCounter;
    nextConsolidationAt = other.nextConsolidationAt;
    consolidationInterval = other.consolidationInterval;
    return *this;
}

RectangleList::~RectangleList() {
    clear();
}

void RectangleList::set_consolidate_on_add(bool on, int threshold, int interval) noexcept {
    consolidateOnAdd = on;
    consolidationThreshold = threshold;
    addCounter = 0;
    nextConsolidationAt = interval;
    consolidationInterval = interval;
}

void RectangleList::add(RECT* rectangle) noexcept {
    if (rectangle == nullptr)
        return;
    const RECT added = *rectangle; // it may be one of these
    const int count = NumNodes();
    if (count == 0) {
        Append(added);
        return;
    }
    int from = count;
    bool overlapRemains = false;
    while (from > 0 && !Contains(At(from - 1), added))
        overlapRemains = OverlapRemains(At(--from), added) || overlapRemains;
    const bool isCovered = from > 0;

    // What takes memory comes first, so that without it nothing has changed.
    if (!isCovered && !(overlapRemains ? AppendUncovered(added, count) : Append(added)))
        return;
    const bool appended = NumNodes() > count;
    KeepOnly(from, count, [&](RECT& e) {
        if (!vtr::Intersect(e, added))
            return true;
        if (Contains(added, e))
            return false;
        Trim(e, added);
        return true;
    });
    if (appended)
        ConsolidateWhenDue();
}

void RectangleList::add(RectangleList& other) noexcept {
    for (int i = 0; i < other.NumNodes(); ++i)
        add(&other.At(i));
}

void RectangleList::addWithoutMerging(RECT& rectangle) noexcept {
    Append(rectangle);
}

void RectangleList::subtract(RECT* rectangle) noexcept {
    if (rectangle == nullptr)
        return;
    const RECT hole = *rectangle; // it may be one of these
    const int count = NumNodes();
    int first = 0;
    while (first < count && !vtr::Overlap(At(first), hole))
        ++first;
    if (first == count)
        return;
    vtr::RectangleRun rest;
    for (int i = first; i < count; ++i) {
        if (!vtr::AppendOutside(At(i), hole, rest))
            return;
    }
    ReplaceFrom(first, rest);
}

bool RectangleList::subtract(RectangleList& other) noexcept {
    if (this == &other)
        clear();
    for (int i = other.NumNodes() - 1; i >= 0 && !isEmpty(); --i)
        subtract(&other.At(i));
    return !isEmpty();
}

bool RectangleList::clipTo(RECT& rectangle) noexcept {
    const RECT area = rectangle; // it may be one of these
    KeepOnly(0, NumNodes(), [&](const RECT& e) { return vtr::Intersect(e, area); });
    return !isEmpty();
}

bool RectangleList::clipTo(RectangleList& other) noexcept {
    vtr::RectangleRun common;
    for (int i = 0; i < NumNodes(); ++i) {
        for (int j = 0; j < other.NumNodes(); ++j) {
            const RECT& e = At(i);
            const RECT& area = other.At(j);
            if (vtr::Intersect(e, area) && !common.Append(vtr::Intersection(e, area)))
                return !isEmpty();
        }
    }
    ReplaceFrom(0, common);
    return !isEmpty();
}

void RectangleList::SetNewObjectRect(RECT area) noexcept {
    KeepOnly(0, NumNodes(), [&](RECT& e) {
        const bool intersects = vtr::Intersect(e, area);
        e = vtr::Intersection(e, area);
        return intersects;
    });
}

void RectangleList::consolidate() noexcept {
    if (isEmpty())
        return;
    unsigned sum = 0;
    for (int i = 0; i < NumNodes(); ++i) {
        const RECT& e = At(i);
        const unsigned width = AsUnsigned(e.right) - AsUnsigned(e.left);
        sum += width * AsUnsigned(e.bottom) - AsUnsigned(e.top);
    }
    const RECT bounds = getBounds();
    if (NumNodes() > mostConsolidated || FillsBounds(sum, bounds)) {
        At(0) = bounds;
        Truncate(1);
        return;
    }
    vtr::RectangleRun merged;
    for (int i = 0; i < NumNodes(); ++i) {
        if (!merged.Append(At(i)))
            return;
    }
    if (vtr::AlignEdges(merged) && vtr::MergeAdjacent(merged))
        ReplaceFrom(0, merged);
}

bool RectangleList::containsPoint(int x, int y) noexcept {
    for (int i = 0; i < NumNodes(); ++i) {
        const RECT& e = At(i);
        if (IsWithin(x, e.left, e.right) && IsWithin(y, e.top, e.bottom))
            return true;
    }
    return false;
}

bool RectangleList::intersectsRectangle(RECT* rectangle) noexcept {
    for (int i = 0; rectangle != nullptr && i < NumNodes(); ++i) {
        if (vtr::Intersect(At(i), *rectangle))
            return true;
    }
    return false;
}

bool RectangleList::intersects(RectangleList& other) noexcept {
    for (int i = 0; i < other.NumNodes(); ++i) {
        if (intersectsRectangle(&other.At(i)))
            return true;
    }
    return false;
}

RECT RectangleList::getBounds() noexcept {
    RECT bounds{0, 0, 0, 0};
    for (int i = 0; i < NumNodes(); ++i)
        bounds = vtr::Union(bounds, At(i));
    return bounds;
}

bool RectangleList::isEmpty() noexcept {
    return NumNodes() == 0;
}

int RectangleList::getNumRectangles() noexcept {
    return NumNodes();
}

RECT* RectangleList::getRectangle(int index) noexcept {
    return &At(index);
}

void RectangleList::offsetAll(int dx, int dy) noexcept {
    for (int i = 0; i < NumNodes(); ++i) {
        RECT& e = At(i);
        e = {Sum(e.left, dx), Sum(e.top, dy), Sum(e.right, dx), Sum(e.bottom, dy)};
    }
}

void RectangleList::clear() noexcept {
    for (int i = 0; i < NumNodes(); ++i)
        delete &At(i);
    RemoveAll();
}

void RectangleList::swapWith(RectangleList& other) noexcept {
    RectangleList& longer = NumNodes() > other.NumNodes() ? *this : other;
    RectangleList& shorter = &longer == this ? other : *this;
    const int common = shorter.NumNodes();
    for (int i = common; i < longer.NumNodes(); ++i) {
        if (!shorter.Append(longer.At(i)))
            return shorter.Truncate(common);
    }
    longer.Truncate(common);
    for (int i = 0; i < common; ++i)
        std::swap(At(i), other.At(i));
}

bool RectangleList::rectContainsRect(RECT* a, RECT* b) noexcept {
    return a != nullptr && b != nullptr && Contains(*a, *b);
}

bool RectangleList::enlargeIfAdjacent(RECT* a, RECT* b) noexcept {
    if (a == nullptr || b == nullptr || !vtr::IsAdjacent(*a, *b))
        return false;
    *a = vtr::Around(*a, *b);
    return true;
}

bool RectangleList::reduceIfPartlyContainedIn(RECT* a, RECT* b) noexcept {
    return a != nullptr && b != nullptr && Trim(*a, *b);
}

RECT& RectangleList::At(int index) const noexcept {
    // Reading an item does not change the list, though the base does not say so.
    return *static_cast<RECT*>(const_cast<RectangleList*>(this)->FastIndex(index));
}

bool RectangleList::Append(const RECT& rectangle) noexcept {
    std::unique_ptr<RECT> copy(new (std::nothrow) RECT(rectangle));
    const int count = NumNodes();
    if (copy == nullptr || AppendToTail(copy.get(), 0) < count)
        return false;
    static_cast<void>(copy.release());
    return true;
}

void RectangleList::Truncate(int count) noexcept {
    while (NumNodes() > count) {
        delete &At(NumNodes() - 1);
        RemoveByIndex(NumNodes() - 1);
    }
}

/// Removes, in one pass, those of the rectangles [from, to) that `keep`, which may change them,
/// does not accept. Values move, their places stay: one removal in the middle would move all
/// elements behind it.
template <class Keep>
void RectangleList::KeepOnly(int from, int to, Keep keep) noexcept {
    int kept = from;
    for (int i = from; i < NumNodes(); ++i) {
        if (i < to && !keep(At(i)))
            continue;
        if (kept != i)
            At(kept) = At(i);
        ++kept;
    }
    Truncate(kept);
}

/// Puts these rectangles in the place of those from `first` on. False, with nothing changed, when
/// memory runs out.
bool RectangleList::ReplaceFrom(int first, const vtr::RectangleRun& rectangles) noexcept {
    const int before = NumNodes();
    const int after = first + rectangles.Count();
    while (NumNodes() < after) {
        if (!Append(RECT{})) {
            Truncate(before);
            return false;
        }
    }
    Truncate(after);
    for (int i = first; i < after; ++i)
        At(i) = rectangles[i - first];
    return true;
}

/// Appends what the first `count` rectangles leave of `added`. False, with nothing changed, when
/// memory runs out.
bool RectangleList::AppendUncovered(const RECT& added, int count) noexcept {
    vtr::RectangleRun runs[2];
    vtr::RectangleRun* pieces = &runs[0];
    vtr::RectangleRun* next = &runs[1];
    pieces->Append(added);
    for (int i = count - 1; i >= 0; --i) {
        const RECT& e = At(i);
        if (!OverlapRemains(e, added))
            continue;
        next->Truncate(0);
        for (const RECT& piece : *pieces) {
            if (!vtr::AppendOutside(piece, e, *next))
                return false;
        }
        std::swap(pieces, next);
    }
    for (int i = pieces->Count() - 1; i >= 0; --i) {
        if (!Append((*pieces)[i])) {
            Truncate(count);
            return false;
        }
    }
    return true;
}

void RectangleList::ConsolidateWhenDue() noexcept {
    if (!consolidateOnAdd || NumNodes() <= consolidationThreshold)
        return;
    // Compared by their distance, which is right also where one has wrapped around.
    const unsigned counter = static_cast<unsigned>(addCounter) + 1;
    addCounter = static_cast<int>(counter);
    if (static_cast<int>(counter - static_cast<unsigned>(nextConsolidationAt)) < 0)
        return;
    consolidate();
    nextConsolidationAt = static_cast<int>(counter + static_cast<unsigned>(consolidationInterval));
}
