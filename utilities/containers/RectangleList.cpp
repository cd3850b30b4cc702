#include "utilities/containers/RectangleList.h"

#include "common/Require.h"
#include "utilities/base/Layout.h"
#include "utilities/containers/RectangleGeometry.h"
#include "utilities/containers/RectangleMerging.h"

#include <memory>
#include <new>
#include <utility>

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

/// The rectangles as items of the list, which are copies of its own.
class Rectangles {
public:
    explicit Rectangles(CMyArrayList& items) : list(items) {}

    int Count() const { return list.NumNodes(); }

    /// Requires: 0 <= index < Count().
    RECT& operator[](int index) const {
        VTR_REQUIRE(index >= 0 && index < Count());
        return *static_cast<RECT*>(list.FastIndex(index));
    }

    /// False when memory runs out.
    bool Append(const RECT& rectangle) const {
        std::unique_ptr<RECT> copy(new (std::nothrow) RECT(rectangle));
        void* item = copy.get();
        const int count = Count();
        if (item == nullptr || list.AppendToTail(item, 0) < count)
            return false;
        static_cast<void>(copy.release());
        return true;
    }

    void Truncate(int count) const {
        while (Count() > count) {
            delete &(*this)[Count() - 1];
            list.RemoveByIndex(Count() - 1);
        }
    }

    /// Removes, in one pass, those of the rectangles [from, to) that `keep`, which may change them,
    /// does not accept. Values move, their places stay: one removal in the middle would move all
    /// elements after it.
    template <class Keep>
    void KeepOnly(int from, int to, Keep keep) const {
        int kept = from;
        for (int i = from; i < Count(); ++i) {
            if (i < to && !keep((*this)[i]))
                continue;
            if (kept != i)
                (*this)[kept] = (*this)[i];
            ++kept;
        }
        Truncate(kept);
    }

    bool ReplaceFrom(int first, const vtr::RectangleRun& rectangles) const;
    bool AppendUncovered(const RECT& added, int count) const;

private:
    CMyArrayList& list;
};

/// Puts these rectangles in the place of those from `first` on. False, with nothing changed, when
/// memory runs out.
bool Rectangles::ReplaceFrom(int first, const vtr::RectangleRun& rectangles) const {
    const int before = Count();
    const int after = first + rectangles.Count();
    while (Count() < after) {
        if (!Append(RECT{})) {
            Truncate(before);
            return false;
        }
    }
    Truncate(after);
    for (int i = first; i < after; ++i)
        (*this)[i] = rectangles[i - first];
    return true;
}

/// Appends what the first `count` rectangles leave of `added`. False, with nothing changed, when
/// memory runs out.
bool Rectangles::AppendUncovered(const RECT& added, int count) const {
    vtr::RectangleRun runs[2];
    vtr::RectangleRun* pieces = &runs[0];
    vtr::RectangleRun* next = &runs[1];
    pieces->Append(added);
    for (int i = count - 1; i >= 0; --i) {
        const RECT& e = (*this)[i];
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

} // namespace

template <>
struct vtr::Internals<RectangleList> {
    static_assert(sizeof(CMyArrayList) == vtr::ByPointer(32, 24) &&
                  sizeof(RectangleList) == vtr::ByPointer(56, 44));
    VTR_FIELD_AT(RectangleList, consolidateOnAdd, 32, 24);
    VTR_FIELD_AT(RectangleList, consolidationThreshold, 36, 28);
    VTR_FIELD_AT(RectangleList, addCounter, 40, 32);
    VTR_FIELD_AT(RectangleList, nextConsolidationAt, 44, 36);
    VTR_FIELD_AT(RectangleList, consolidationInterval, 48, 40);

    static void ConsolidateWhenDue(RectangleList& list);
};

using Internals = vtr::Internals<RectangleList>;

RectangleList::RectangleList() noexcept {
    set_consolidate_on_add(true, 12, 8);
}

RectangleList::RectangleList(RECT& rectangle) noexcept : RectangleList() {
    add(&rectangle);
}

RectangleList::RectangleList(const RectangleList& other) noexcept : RectangleList() {
    *this = other;
}

RectangleList& RectangleList::operator=(const RectangleList& other) noexcept {
    if (this == &other)
        return *this;
    clear();
    // Reading an item does not change the list, though the base does not say so.
    const Rectangles others(const_cast<RectangleList&>(other));
    for (int i = 0; i < others.Count(); ++i) {
        if (!Rectangles(*this).Append(others[i])) {
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
    const Rectangles list(*this);
    if (rectangle == nullptr)
        return;
    const RECT added = *rectangle; // it may be one of these
    const int count = list.Count();
    if (count == 0) {
        list.Append(added);
        return;
    }
    int from = count;
    bool overlapRemains = false;
    while (from > 0 && !Contains(list[from - 1], added))
        overlapRemains = OverlapRemains(list[--from], added) || overlapRemains;
    const bool isCovered = from > 0;

    // What takes memory comes first, so that without it nothing has changed.
    if (!isCovered && !(overlapRemains ? list.AppendUncovered(added, count) : list.Append(added)))
        return;
    const bool appended = list.Count() > count;
    list.KeepOnly(from, count, [&](RECT& e) {
        if (!vtr::Intersect(e, added))
            return true;
        if (Contains(added, e))
            return false;
        Trim(e, added);
        return true;
    });
    if (appended)
        Internals::ConsolidateWhenDue(*this);
}

void RectangleList::add(RectangleList& other) noexcept {
    const Rectangles others(other);
    for (int i = 0; i < others.Count(); ++i)
        add(&others[i]);
}

void RectangleList::addWithoutMerging(RECT& rectangle) noexcept {
    Rectangles(*this).Append(rectangle);
}

void RectangleList::subtract(RECT* rectangle) noexcept {
    const Rectangles list(*this);
    if (rectangle == nullptr)
        return;
    const RECT hole = *rectangle; // it may be one of these
    const int count = list.Count();
    int first = 0;
    while (first < count && !vtr::Overlap(list[first], hole))
        ++first;
    if (first == count)
        return;
    vtr::RectangleRun rest;
    for (int i = first; i < count; ++i) {
        if (!vtr::AppendOutside(list[i], hole, rest))
            return;
    }
    list.ReplaceFrom(first, rest);
}

bool RectangleList::subtract(RectangleList& other) noexcept {
    const Rectangles others(other);
    if (this == &other)
        clear();
    for (int i = others.Count() - 1; i >= 0 && !isEmpty(); --i)
        subtract(&others[i]);
    return !isEmpty();
}

bool RectangleList::clipTo(RECT& rectangle) noexcept {
    const Rectangles list(*this);
    const RECT area = rectangle; // it may be one of these
    list.KeepOnly(0, list.Count(), [&](const RECT& e) { return vtr::Intersect(e, area); });
    return !isEmpty();
}

bool RectangleList::clipTo(RectangleList& other) noexcept {
    const Rectangles list(*this);
    const Rectangles others(other);
    vtr::RectangleRun common;
    for (int i = 0; i < list.Count(); ++i) {
        for (int j = 0; j < others.Count(); ++j) {
            const RECT& e = list[i];
            const RECT& area = others[j];
            if (vtr::Intersect(e, area) && !common.Append(vtr::Intersection(e, area)))
                return !isEmpty();
        }
    }
    list.ReplaceFrom(0, common);
    return !isEmpty();
}

void RectangleList::SetNewObjectRect(RECT area) noexcept {
    const Rectangles list(*this);
    list.KeepOnly(0, list.Count(), [&](RECT& e) {
        const bool intersects = vtr::Intersect(e, area);
        e = vtr::Intersection(e, area);
        return intersects;
    });
}

void RectangleList::consolidate() noexcept {
    const Rectangles list(*this);
    if (isEmpty())
        return;
    unsigned sum = 0;
    for (int i = 0; i < list.Count(); ++i) {
        const RECT& e = list[i];
        const unsigned width = AsUnsigned(e.right) - AsUnsigned(e.left);
        sum += width * AsUnsigned(e.bottom) - AsUnsigned(e.top);
    }
    const RECT bounds = getBounds();
    if (list.Count() > mostConsolidated || FillsBounds(sum, bounds)) {
        list[0] = bounds;
        list.Truncate(1);
        return;
    }
    vtr::RectangleRun merged;
    for (int i = 0; i < list.Count(); ++i) {
        if (!merged.Append(list[i]))
            return;
    }
    if (vtr::AlignEdges(merged) && vtr::MergeAdjacent(merged))
        list.ReplaceFrom(0, merged);
}

bool RectangleList::containsPoint(int x, int y) noexcept {
    const Rectangles list(*this);
    for (int i = 0; i < list.Count(); ++i) {
        const RECT& e = list[i];
        if (IsWithin(x, e.left, e.right) && IsWithin(y, e.top, e.bottom))
            return true;
    }
    return false;
}

bool RectangleList::intersectsRectangle(RECT* rectangle) noexcept {
    const Rectangles list(*this);
    for (int i = 0; rectangle != nullptr && i < list.Count(); ++i) {
        if (vtr::Intersect(list[i], *rectangle))
            return true;
    }
    return false;
}

bool RectangleList::intersects(RectangleList& other) noexcept {
    const Rectangles others(other);
    for (int i = 0; i < others.Count(); ++i) {
        if (intersectsRectangle(&others[i]))
            return true;
    }
    return false;
}

RECT RectangleList::getBounds() noexcept {
    const Rectangles list(*this);
    RECT bounds{0, 0, 0, 0};
    for (int i = 0; i < list.Count(); ++i)
        bounds = vtr::Union(bounds, list[i]);
    return bounds;
}

bool RectangleList::isEmpty() noexcept {
    return NumNodes() == 0;
}

int RectangleList::getNumRectangles() noexcept {
    return NumNodes();
}

RECT* RectangleList::getRectangle(int index) noexcept {
    return &Rectangles(*this)[index];
}

void RectangleList::offsetAll(int dx, int dy) noexcept {
    const Rectangles list(*this);
    for (int i = 0; i < list.Count(); ++i) {
        RECT& e = list[i];
        e = {Sum(e.left, dx), Sum(e.top, dy), Sum(e.right, dx), Sum(e.bottom, dy)};
    }
}

void RectangleList::clear() noexcept {
    const Rectangles list(*this);
    for (int i = 0; i < list.Count(); ++i)
        delete &list[i];
    RemoveAll();
}

void RectangleList::swapWith(RectangleList& other) noexcept {
    const bool isLonger = NumNodes() > other.NumNodes();
    const Rectangles longer(isLonger ? *this : other);
    const Rectangles shorter(isLonger ? other : *this);
    const int common = shorter.Count();
    for (int i = common; i < longer.Count(); ++i) {
        if (!shorter.Append(longer[i]))
            return shorter.Truncate(common);
    }
    longer.Truncate(common);
    for (int i = 0; i < common; ++i)
        std::swap(longer[i], shorter[i]);
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

void Internals::ConsolidateWhenDue(RectangleList& list) {
    if (!list.consolidateOnAdd || list.getNumRectangles() <= list.consolidationThreshold)
        return;
    // Compared by their distance, which is right also where one has wrapped around.
    const unsigned counter = static_cast<unsigned>(list.addCounter) + 1;
    list.addCounter = static_cast<int>(counter);
    if (static_cast<int>(counter - static_cast<unsigned>(list.nextConsolidationAt)) < 0)
        return;
    list.consolidate();
    list.nextConsolidationAt =
        static_cast<int>(counter + static_cast<unsigned>(list.consolidationInterval));
}
