#include "utilities/containers/RectangleMerging.h"

#include <initializer_list>

namespace vtr {

namespace {

/// Finds, again and again while rectangles change, the pair that matches and comes first: the one
/// with the smallest first index, and of these the one with the largest second index. Remembers for
/// each rectangle what it found, so that a change costs one look at each other rectangle.
class FirstPair {
public:
    using Matches = bool(const RECT& a, const RECT& b);

    /// `predicate` holds for two rectangles in either order.
    FirstPair(const RectangleRun& run, Matches* predicate) : rectangles(run), matches(predicate) {}

    /// Takes in the rectangles appended since the last call. False when memory runs out.
    bool TakeAppended() {
        while (Count() < rectangles.Count()) {
            if (!partners.Append(unknown))
                return false;
            Changed(Count() - 1);
        }
        return true;
    }

    int Count() const { return partners.Count(); }

    bool Find(int& first, int& second) {
        for (first = 0; first < Count(); ++first) {
            if (partners[first] == unknown)
                partners[first] = LastPartner(first);
            second = partners[first];
            if (second >= 0)
                return true;
        }
        return false;
    }

    void Changed(int index) {
        for (int i = 0; i < index; ++i) {
            if (partners[i] < none)
                continue;
            if (!matches(rectangles[i], rectangles[index]))
                Forget(i, index);
            else if (partners[i] < index)
                partners[i] = index;
        }
        partners[index] = unknown;
    }

    void Removed(int index) {
        for (int i = 0; i < index; ++i)
            Forget(i, index);
        partners[index] = removed;
    }

    bool IsRemoved(int index) const { return partners[index] == removed; }

private:
    /// In the place of a partner's index.
    static constexpr int none = -1;
    static constexpr int unknown = -2;
    static constexpr int removed = -3;

    void Forget(int index, int partner) {
        if (partners[index] == partner)
            partners[index] = unknown;
    }

    int LastPartner(int index) const {
        int partner = Count() - 1;
        while (partner > index &&
               (IsRemoved(partner) || !matches(rectangles[index], rectangles[partner])))
            --partner;
        return partner > index ? partner : none;
    }

    const RectangleRun& rectangles;
    Matches* matches;
    ValueRun<int> partners;
};

/// Where `r` is to be cut: at the first edge of its neighbour's that lies strictly inside it.
bool FindCut(const RECT& r, const RECT& neighbour, LONG& y) {
    for (const LONG edge : {neighbour.top, neighbour.bottom}) {
        if (edge > r.top && edge < r.bottom) {
            y = edge;
            return true;
        }
    }
    return false;
}

bool IsUnaligned(const RECT& a, const RECT& b) {
    LONG y = 0;
    const bool sideBySide = b.left == a.right || b.right == a.left;
    return sideBySide && (FindCut(a, b, y) || FindCut(b, a, y));
}

} // namespace

bool AlignEdges(RectangleRun& rectangles) {
    FirstPair pairs(rectangles, IsUnaligned);
    int first = 0;
    int second = 0;
    if (!pairs.TakeAppended())
        return false;
    while (pairs.Find(first, second)) {
        LONG y = 0;
        const bool cutsFirst = FindCut(rectangles[first], rectangles[second], y);
        const int cut = cutsFirst ? first : second;
        if (!cutsFirst)
            FindCut(rectangles[second], rectangles[first], y);
        RECT lower = rectangles[cut];
        lower.top = y;
        rectangles[cut].bottom = y;
        pairs.Changed(cut);
        if (!rectangles.Append(lower) || !pairs.TakeAppended())
            return false;
    }
    return true;
}

bool MergeAdjacent(RectangleRun& rectangles) {
    FirstPair pairs(rectangles, IsAdjacent);
    int first = 0;
    int second = 0;
    if (!pairs.TakeAppended())
        return false;
    while (pairs.Find(first, second)) {
        rectangles[first] = Around(rectangles[first], rectangles[second]);
        pairs.Removed(second);
        pairs.Changed(first);
    }
    int kept = 0;
    for (int i = 0; i < pairs.Count(); ++i) {
        if (!pairs.IsRemoved(i))
            rectangles[kept++] = rectangles[i];
    }
    rectangles.Truncate(kept);
    return true;
}

} // namespace vtr
