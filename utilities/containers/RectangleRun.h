#ifndef VTRUTILS_CONTAINERS_RECTANGLERUN_H
#define VTRUTILS_CONTAINERS_RECTANGLERUN_H

#include <cstdlib>
#include <cstring>
#include <windows.h>

namespace vtr {

/// A growing row of rectangles by value, for work in progress; short ones need no allocation.
/// Private to the library. One thread at a time.
class RectangleRun {
public:
    RectangleRun() = default;
    RectangleRun(const RectangleRun&) = delete;
    RectangleRun& operator=(const RectangleRun&) = delete;
    ~RectangleRun() {
        if (rectangles != local)
            std::free(rectangles);
    }

    int Count() const { return count; }
    RECT* begin() { return rectangles; }
    RECT* end() { return rectangles + count; }
    const RECT* begin() const { return rectangles; }
    const RECT* end() const { return rectangles + count; }

    /// Requires: 0 <= index < Count(). A reference is valid until the next `Append`.
    RECT& operator[](int index) { return rectangles[index]; }
    const RECT& operator[](int index) const { return rectangles[index]; }

    /// False, with nothing changed, when memory runs out.
    bool Append(const RECT& rectangle) {
        const RECT copy = rectangle; // it may be one of these
        if (count == capacity && !Grow())
            return false;
        rectangles[count++] = copy;
        return true;
    }

    /// Requires: 0 <= newCount <= Count().
    void Truncate(int newCount) { count = newCount; }

private:
    static constexpr int localCapacity = 32;

    bool Grow() {
        if (capacity > 0x7FFFFFFF / 2)
            return false;
        const std::size_t size = static_cast<std::size_t>(capacity) * 2 * sizeof(RECT);
        void* grown = std::realloc(rectangles == local ? nullptr : rectangles, size);
        if (grown == nullptr)
            return false;
        if (rectangles == local)
            std::memcpy(grown, local, sizeof local);
        rectangles = static_cast<RECT*>(grown);
        capacity *= 2;
        return true;
    }

    RECT local[localCapacity];
    RECT* rectangles = local;
    int count = 0;
    int capacity = localCapacity;
};

} // namespace vtr

#endif
