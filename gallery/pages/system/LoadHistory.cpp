#include "gallery/pages/system/LoadHistory.h"

#include <algorithm>

namespace gallery {

void LoadHistory::Add(long long time, double percent) {
    samples.push_back({time, percent, !broken});
    broken = false;
    // One sample beyond the edge stays: the curve comes from there.
    const auto inside = std::find_if(samples.begin(), samples.end(), [time](const Sample& sample) {
        return time - sample.time < span;
    });
    if (inside - samples.begin() > 1)
        samples.erase(samples.begin(), inside - 1);
}

void LoadHistory::Clear() {
    samples.clear();
    broken = true;
}

} // namespace gallery
