#ifndef VTRUTILS_GALLERY_PAGES_SYSTEM_LOADHISTORY_H
#define VTRUTILS_GALLERY_PAGES_SYSTEM_LOADHISTORY_H

#include <vector>

namespace gallery {

/// The processor load of the last minute. One thread at a time.
class LoadHistory {
public:
    static constexpr int span = 60'000; ///< in ms

    struct Sample {
        long long time; ///< in ms
        double percent;
        bool joined; ///< was measured over the time since the sample before it
    };

    /// Times must not go back. Forgets what is older than the span.
    void Add(long long time, double percent);
    /// Nothing was measured: the next sample is not joined to the last one.
    void Skip() { broken = true; }
    void Clear();

    const std::vector<Sample>& Samples() const { return samples; }

private:
    std::vector<Sample> samples;
    bool broken = true;
};

} // namespace gallery

#endif
