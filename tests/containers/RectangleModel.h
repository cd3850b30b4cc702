#ifndef VTRUTILS_TESTS_CONTAINERS_RECTANGLEMODEL_H
#define VTRUTILS_TESTS_CONTAINERS_RECTANGLEMODEL_H

#include <algorithm>
#include <array>
#include <vector>
#include <windows.h>

inline bool operator==(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

using Rectangles = std::vector<RECT>;

/// How often each cell of a square is covered.
class Bitmap {
public:
    static constexpr int size = 64;

    explicit Bitmap(const Rectangles& rectangles = {}) {
        for (const RECT& r : rectangles)
            ForEachCell(r, [](int& cell) { ++cell; });
    }

    void Set(const RECT& r, int value) {
        ForEachCell(r, [=](int& cell) { cell = value; });
    }

    void KeepWhere(const Bitmap& other) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            cells[i] = other.cells[i] > 0 ? cells[i] : 0;
    }

    bool Covers(const Bitmap& other) const {
        return std::equal(cells.begin(), cells.end(), other.cells.begin(),
                          [](int mine, int its) { return mine > 0 || its == 0; });
    }

    bool operator==(const Bitmap& other) const { return cells == other.cells; }

private:
    template <class Action>
    void ForEachCell(const RECT& r, Action action) {
        for (LONG y = std::max(r.top, 0L); y < std::min<LONG>(r.bottom, size); ++y) {
            for (LONG x = std::max(r.left, 0L); x < std::min<LONG>(r.right, size); ++x)
                action(cells[static_cast<std::size_t>(y * size + x)]);
        }
    }

    std::array<int, size * size> cells{};
};

/// The steps of a rectangle list, one by one, with nothing done to make them fast: what comes out
/// must be the same, in the same order.
class RectangleModel {
public:
    Rectangles list;
    bool consolidates = true;
    int threshold = 12, counter = 0, next = 8, interval = 8;

    void Add(RECT r) {
        if (list.empty()) {
            list.push_back(r);
            return;
        }
        bool overlaps = false;
        for (std::size_t i = list.size(); i-- > 0;) {
            RECT& e = list[i];
            if (Contains(e, r))
                return;
            if (!Intersects(e, r))
                continue;
            if (Contains(r, e))
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
            else if (!Reduce(e, r))
                overlaps = true;
        }
        RectangleModel rest;
        rest.list = {r};
        for (std::size_t i = list.size(); overlaps && i-- > 0;) {
            if (Intersects(list[i], r))
                rest.Subtract(list[i]);
        }
        if (rest.list.empty())
            return;
        list.insert(list.end(), rest.list.rbegin(), rest.list.rend());
        if (consolidates && static_cast<int>(list.size()) > threshold && ++counter == next) {
            Consolidate();
            next = counter + interval;
        }
    }

    void Subtract(RECT s) {
        for (std::size_t i = list.size(); i-- > 0;) {
            RECT& p = list[i];
            if (!(s.right > p.left && s.left < p.right && s.top < p.bottom && s.bottom > p.top))
                continue;
            const bool sticksIn = s.top > p.top || s.bottom < p.bottom;
            RECT piece = p;
            bool inserted = false;
            if (s.left > p.left) {
                inserted = sticksIn || s.right < p.right;
                (inserted ? p.left : p.right) = piece.right = s.left;
            } else if (s.right < p.right) {
                inserted = sticksIn;
                p.left = piece.right = s.right;
            } else if (s.top <= p.top && s.bottom < p.bottom) {
                p.top = s.bottom;
            } else if (s.top <= p.top) {
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(i));
            } else {
                inserted = s.bottom < p.bottom;
                (inserted ? p.top : p.bottom) = piece.bottom = s.top;
            }
            if (inserted) {
                list.insert(list.begin() + static_cast<std::ptrdiff_t>(i) + 1, piece);
                i += 2;
            }
        }
    }

    RECT Bounds() const {
        RECT bounds{};
        for (const RECT& r : list) {
            const RECT before = bounds;
            UnionRect(&bounds, &before, &r);
        }
        return bounds;
    }

    void Consolidate() {
        DWORD sum = 0;
        for (const RECT& r : list)
            sum += static_cast<DWORD>((r.right - r.left) * r.bottom - r.top);
        const RECT box = Bounds();
        const DWORD area = static_cast<DWORD>((box.right - box.left) * (box.bottom - box.top) * 2);
        if (sum > area / 3 || list.size() > 50) {
            list = {box};
            return;
        }
        while (CutOnce()) {
        }
        while (MergeOnce()) {
        }
    }

    static bool Contains(const RECT& a, const RECT& b) {
        return a.left <= b.left && a.top <= b.top && a.right >= b.right && a.bottom >= b.bottom;
    }
    static bool Intersects(const RECT& a, const RECT& b) {
        RECT common;
        return IntersectRect(&common, &a, &b) != FALSE;
    }

private:
    static bool Reduce(RECT& a, const RECT& b) {
        const int mask = (a.left >= b.left && a.left < b.right ? 1 : 0) |
                         (a.top >= b.top && a.top < b.bottom ? 2 : 0) |
                         (a.right >= b.left && a.right < b.right ? 4 : 0) |
                         (a.bottom >= b.top && a.bottom < b.bottom ? 8 : 0);
        switch (mask) {
        case 7:
            a.top = b.bottom;
            return true;
        case 11:
            a.left = b.right;
            return true;
        case 13:
            a.bottom = b.top;
            return true;
        case 14:
            a.right = b.left;
            return true;
        default:
            return false;
        }
    }

    bool CutAt(std::size_t i, LONG y) {
        if (y <= list[i].top || y >= list[i].bottom)
            return false;
        RECT lower = list[i];
        list[i].bottom = lower.top = y;
        list.push_back(lower);
        return true;
    }

    bool CutOnce() {
        for (std::size_t i = 0; i < list.size(); ++i) {
            for (std::size_t j = list.size(); --j > i;) {
                const RECT a = list[i], b = list[j];
                if ((b.left == a.right || b.right == a.left) &&
                    (CutAt(i, b.top) || CutAt(i, b.bottom) || CutAt(j, a.top) ||
                     CutAt(j, a.bottom)))
                    return true;
            }
        }
        return false;
    }

    bool MergeOnce() {
        for (std::size_t i = 0; i < list.size(); ++i) {
            for (std::size_t j = list.size(); --j > i;) {
                RECT& a = list[i];
                const RECT b = list[j];
                const bool columns = a.left == b.left && a.right == b.right && b.bottom >= a.top &&
                                     b.top <= a.bottom;
                const bool rows = a.top == b.top && a.bottom == b.bottom && b.right >= a.left &&
                                  b.left <= a.right;
                if (!columns && !rows)
                    continue;
                a = {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                     std::max(a.bottom, b.bottom)};
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(j));
                return true;
            }
        }
        return false;
    }
};

#endif
