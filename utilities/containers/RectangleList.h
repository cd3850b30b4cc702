#ifndef VTRUTILS_CONTAINERS_RECTANGLELIST_H
#define VTRUTILS_CONTAINERS_RECTANGLELIST_H

#include "utilities/Export.h"
#include "utilities/containers/MyArrayList.h"

#include <windows.h>

/// A region of the screen as rectangles that do not overlap, to keep track of what must be painted.
/// Right and bottom edges are exclusive. Adding adds what is not yet covered; subtracting cuts
/// pieces away. Some additions also consolidate the list, which may then cover more than was added.
///
/// An operation changes nothing if memory runs out. A null rectangle is not added or subtracted,
/// and intersects none.
/// Thread-safety: one thread at a time. A rectangle that was handed out is valid until the list
/// changes.
class VTRUTILS_API RectangleList : private CMyArrayList {
public:
    /// Consolidates at every 8th addition that leaves more than 12 rectangles.
    RectangleList() noexcept;
    explicit RectangleList(RECT& rectangle) noexcept;
    /// Has rectangles of its own and the same settings; empty when memory runs out.
    RectangleList(const RectangleList& other) noexcept;
    RectangleList& operator=(const RectangleList& other) noexcept;
    ~RectangleList() override;

    /// From now on, consolidates at every `interval`-th addition that leaves more than `threshold`
    /// rectangles; at each of them if `interval` is below 1.
    void set_consolidate_on_add(bool on, int threshold, int interval) noexcept;

    /// Adds what is not yet covered. Rectangles that it covers are removed, and those of which it
    /// covers one whole side are trimmed. An empty rectangle is added unless another contains it.
    void add(RECT* rectangle) noexcept;
    void add(RectangleList& other) noexcept;

    /// Appends the rectangle as it is. Requires: it overlaps none, if the list is to stay without
    /// overlaps.
    void addWithoutMerging(RECT& rectangle) noexcept;

    /// Cuts the rectangle out of all. Does nothing for null.
    void subtract(RECT* rectangle) noexcept;
    /// True when something is left.
    bool subtract(RectangleList& other) noexcept;

    /// Removes the rectangles that do not intersect this one and keeps all others whole. True when
    /// some are left.
    bool clipTo(RECT& rectangle) noexcept;

    /// Keeps what both lists cover. True when something is left.
    bool clipTo(RectangleList& other) noexcept;

    /// Cuts each rectangle to what is inside this one.
    void SetNewObjectRect(RECT area) noexcept;

    /// Makes fewer rectangles. If there are more than 50, or if they fill much of their bounds, the
    /// bounds replace them all; otherwise those that form larger rectangles, after some cuts, are
    /// put together. The list covers at least what it covered before.
    void consolidate() noexcept;

    /// Left and top edges belong to a rectangle, right and bottom ones do not.
    bool containsPoint(int x, int y) noexcept;
    /// True if any two rectangles have more than an edge in common. False for null.
    bool intersectsRectangle(RECT* rectangle) noexcept;
    bool intersects(RectangleList& other) noexcept;

    /// The smallest rectangle around all that are not empty; 0, 0, 0, 0 without any.
    RECT getBounds() noexcept;
    bool isEmpty() noexcept;
    int getNumRectangles() noexcept;

    /// Requires: 0 <= index < getNumRectangles().
    RECT* getRectangle(int index) noexcept;

    /// Coordinates wrap around at the ends of 32 bits.
    void offsetAll(int dx, int dy) noexcept;
    void clear() noexcept;

    /// Exchanges the rectangles; each list keeps its settings.
    void swapWith(RectangleList& other) noexcept;

    /// True if no edge of `b` is outside `a`.
    static bool rectContainsRect(RECT* a, RECT* b) noexcept;

    /// Makes `a` the rectangle that both form, if they share two opposite edges and touch or
    /// overlap; false, with `a` unchanged, if not.
    static bool enlargeIfAdjacent(RECT* a, RECT* b) noexcept;

    /// Trims `a` where `b` covers one whole side of it; false, with `a` unchanged, in other cases.
    static bool reduceIfPartlyContainedIn(RECT* a, RECT* b) noexcept;

private:
    friend struct vtr::Internals<RectangleList>;

    /// Starts on a boundary of its own with every compiler: some would place it in the base's
    /// padding.
    alignas(int) bool consolidateOnAdd;
    int consolidationThreshold;
    int addCounter;
    int nextConsolidationAt;
    int consolidationInterval;
};

#endif
