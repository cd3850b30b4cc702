#ifndef VTRUTILS_GALLERY_APP_STOPWATCH_H
#define VTRUTILS_GALLERY_APP_STOPWATCH_H

#include <windows.h>

namespace gallery {

/// Tells the milliseconds since it was made. Immutable and safe.
class Stopwatch {
public:
    Stopwatch() : start(Now()) {}
    double Milliseconds() const {
        LARGE_INTEGER frequency;
        QueryPerformanceFrequency(&frequency);
        return 1000.0 * static_cast<double>(Now() - start) /
               static_cast<double>(frequency.QuadPart);
    }

private:
    static long long Now() {
        LARGE_INTEGER now;
        QueryPerformanceCounter(&now);
        return now.QuadPart;
    }
    long long start;
};

} // namespace gallery

#endif
