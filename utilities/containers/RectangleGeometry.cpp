#include "utilities/containers/RectangleGeometry.h"

#include <algorithm>

namespace vtr {

RECT Intersection(const RECT& a, const RECT& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

RECT Around(const RECT& a, const RECT& b) {
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

RECT Union(const RECT& a, const RECT& b) {
    if (IsEmpty(a))
        return IsEmpty(b) ? RECT{0, 0, 0, 0} : b;
    return IsEmpty(b) ? a : Around(a, b);
}

bool IsAdjacent(const RECT& a, const RECT& b) {
    if (a.left == b.left && a.right == b.right && b.bottom >= a.top && b.top <= a.bottom)
        return true;
    return a.top == b.top && a.bottom == b.bottom && b.right >= a.left && b.left <= a.right;
}

bool AppendOutside(RECT r, const RECT& hole, RectangleRun& pieces) {
    if (!Overlap(r, hole))
        return pieces.Append(r);
    const bool sticksIn = hole.top > r.top || hole.bottom < r.bottom;
    RECT piece = r;
    bool split = true;
    if (hole.left > r.left) {
        split = sticksIn || hole.right < r.right;
        (split ? r.left : r.right) = hole.left;
        piece.right = hole.left;
    } else if (hole.right < r.right) {
        split = sticksIn;
        r.left = hole.right;
        piece.right = hole.right;
    } else if (hole.top <= r.top) {
        if (hole.bottom >= r.bottom)
            return true;
        split = false;
        r.top = hole.bottom;
    } else {
        split = hole.bottom < r.bottom;
        (split ? r.top : r.bottom) = hole.top;
        piece.bottom = hole.top;
    }
    return AppendOutside(r, hole, pieces) && (!split || AppendOutside(piece, hole, pieces));
}

} // namespace vtr
