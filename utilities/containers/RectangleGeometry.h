#ifndef VTRUTILS_CONTAINERS_RECTANGLEGEOMETRY_H
#define VTRUTILS_CONTAINERS_RECTANGLEGEOMETRY_H

#include "utilities/base/ValueRun.h"

#include <windows.h>

/// What rectangle lists ask of two rectangles. Right and bottom edges are exclusive; a rectangle
/// whose right or bottom edge is not beyond the opposite one is empty. Private to the library.
/// Immutable and safe.

namespace vtr {

using RectangleRun = ValueRun<RECT>;

inline bool IsEmpty(const RECT& r) {
    return r.left >= r.right || r.top >= r.bottom;
}

/// True also for empty rectangles whose edges lie beyond the other's.
inline bool Overlap(const RECT& a, const RECT& b) {
    return a.right > b.left && a.left < b.right && a.top < b.bottom && a.bottom > b.top;
}

/// The result of `IntersectRect`: false for empty rectangles.
inline bool Intersect(const RECT& a, const RECT& b) {
    return Overlap(a, b) && !IsEmpty(a) && !IsEmpty(b);
}

/// What two rectangles that intersect have in common.
RECT Intersection(const RECT& a, const RECT& b);

/// The smallest rectangle that holds all edges of both.
RECT Around(const RECT& a, const RECT& b);

/// The result of `UnionRect`: the smallest rectangle around both, of which empty ones are left out;
/// 0, 0, 0, 0 for two empty ones.
RECT Union(const RECT& a, const RECT& b);

/// True when `a` and `b` share their left and right edges, or their top and bottom edges, and touch
/// or overlap: together they are a rectangle.
bool IsAdjacent(const RECT& a, const RECT& b);

/// Appends what is left of `r` outside `hole`: nothing, or one to four pieces without overlap, in
/// the order right, below, above, left. False when memory runs out.
bool AppendOutside(RECT r, const RECT& hole, RectangleRun& pieces);

} // namespace vtr

#endif
