// The byte queue beside plain copying, and the rectangle list beside the regions of GDI.

#include "bench/support/Comparison.h"
#include "common/Handles.h"
#include "utilities/containers/ByteQueue.h"
#include "utilities/containers/RectangleList.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

namespace {

using Bytes = std::vector<unsigned char>;

/// What a stream costs: one piece in, one piece out, with a few that wait.
void MeasureStream(const char* work, const char* size, unsigned length) {
    static constexpr char copying[] = "memcpy in and out";
    constexpr unsigned waiting = 4;
    bench::Measure(work, size, bench::ours, [length](benchmark::State& state) {
        const Bytes in(length, 1);
        Bytes out(length);
        CByteQueue queue;
        for (unsigned i = 0; i < waiting; ++i)
            queue.AddData(in.data(), length);
        for (auto _ : state) {
            queue.AddData(in.data(), length);
            benchmark::DoNotOptimize(queue.GetData(out.data(), length));
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * length);
    });
    bench::Measure(work, size, copying, [length](benchmark::State& state) {
        const Bytes in(length, 1);
        Bytes out(length);
        std::vector<Bytes> buffers(waiting + 1, Bytes(length));
        std::size_t next = 0;
        for (auto _ : state) {
            std::memcpy(buffers[next].data(), in.data(), length);
            next = next < waiting ? next + 1 : 0;
            std::memcpy(out.data(), buffers[next].data(), length);
            benchmark::ClobberMemory();
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * length);
    });
}

void MeasureStreams() {
    static constexpr char reused[] = "byte queue, blocks reused";
    MeasureStream(reused, "32 KB", 32768);
    MeasureStream(reused, "512 KB", 524288);
    bench::ToReach(reused, "memcpy in and out", bench::asFast);
    // Without a goal: smaller blocks are freed, so that each write allocates.
    MeasureStream("byte queue, blocks freed", "1 KB", 1024);
}

/// How the cost of a queue that was not read for long grows with what it holds.
void MeasureBacklog() {
    static constexpr char work[] = "byte queue, writes of 10 bytes and then reads";
    for (const auto& [size, count] : {std::pair("10,000", 10'000), std::pair("100,000", 100'000)}) {
        bench::Measure(work, size, bench::ours, [count](benchmark::State& state) {
            unsigned char bytes[10] = {};
            for (auto _ : state) {
                CByteQueue queue;
                for (int i = 0; i < count; ++i)
                    queue.AddData(bytes, sizeof bytes);
                for (int i = 0; i < count; ++i)
                    benchmark::DoNotOptimize(queue.GetData(bytes, sizeof bytes));
            }
        });
        bench::Measure(work, size, "new and delete", [count](benchmark::State& state) {
            std::vector<char*> blocks(static_cast<std::size_t>(count));
            for (auto _ : state) {
                for (char*& block : blocks)
                    benchmark::DoNotOptimize(block = new char[10]);
                for (char* block : blocks)
                    delete[] block;
            }
        });
    }
    bench::GrowthToReach(work, 15);
}

/// Rectangles of up to 40 pixels on a screen; the same count gives the same.
std::vector<RECT> MakeRectangles(int count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<RECT> rectangles(static_cast<std::size_t>(count));
    for (RECT& r : rectangles) {
        r.left = static_cast<LONG>(random() % 1280);
        r.top = static_cast<LONG>(random() % 800);
        r.right = r.left + 1 + static_cast<LONG>(random() % 40);
        r.bottom = r.top + 1 + static_cast<LONG>(random() % 40);
    }
    return rectangles;
}

class Region {
public:
    Region() : region(CreateRectRgn(0, 0, 0, 0)), one(CreateRectRgn(0, 0, 0, 0)) {}

    void Combine(const RECT& r, int mode) {
        SetRectRgn(one.Get(), r.left, r.top, r.right, r.bottom);
        CombineRgn(region.Get(), region.Get(), one.Get(), mode);
    }

    bool Contains(int x, int y) const { return PtInRegion(region.Get(), x, y) != FALSE; }

private:
    using Handle = vtr::Owner<vtr::GdiObjectKind<HRGN>>;

    Handle region;
    Handle one;
};

void Run(RectangleList& list, const std::vector<RECT>& added, const std::vector<RECT>& subtracted) {
    for (RECT r : added)
        list.add(&r);
    for (RECT r : subtracted)
        list.subtract(&r);
}

void Run(Region& region, const std::vector<RECT>& added, const std::vector<RECT>& subtracted) {
    for (const RECT& r : added)
        region.Combine(r, RGN_OR);
    for (const RECT& r : subtracted)
        region.Combine(r, RGN_DIFF);
}

/// Both must cover the same for the comparison to be one.
bool CoverTheSame(const std::vector<RECT>& added, const std::vector<RECT>& subtracted) {
    RectangleList list;
    list.set_consolidate_on_add(false, 0, 1);
    Region region;
    Run(list, added, subtracted);
    Run(region, added, subtracted);
    for (int y = 0; y < 840; y += 7) {
        for (int x = 0; x < 1320; x += 3) {
            if (list.containsPoint(x, y) != region.Contains(x, y))
                return false;
        }
    }
    return true;
}

void MeasureRectangles() {
    static constexpr char exact[] = "rectangles added, then others subtracted";
    static constexpr char merging[] = "the same, consolidating as it is set at the start";
    static constexpr char gdi[] = "GDI region";
    for (const auto& [size, count] : {std::pair("100", 100), std::pair("1,000", 1000)}) {
        const std::vector<RECT> added = MakeRectangles(count, 1);
        const std::vector<RECT> subtracted = MakeRectangles(count, 2);
        const auto region = [added, subtracted](benchmark::State& state) {
            for (auto _ : state) {
                Region peer;
                Run(peer, added, subtracted);
            }
        };
        bench::Measure(exact, size, bench::ours, [=](benchmark::State& state) {
            if (!CoverTheSame(added, subtracted))
                state.SkipWithError("other cells than the region's");
            for (auto _ : state) {
                RectangleList list;
                list.set_consolidate_on_add(false, 0, 1);
                Run(list, added, subtracted);
            }
        });
        bench::Measure(exact, size, gdi, region);
        bench::Measure(merging, size, bench::ours, [=](benchmark::State& state) {
            for (auto _ : state) {
                RectangleList list;
                Run(list, added, subtracted);
            }
        });
        bench::Measure(merging, size, gdi, region);
    }
    bench::ToReach(exact, gdi, bench::asFast);
    bench::ToReach(merging, gdi, bench::asFast);
}

} // namespace

int main(int argc, char** argv) {
    MeasureStreams();
    MeasureBacklog();
    MeasureRectangles();
    return bench::Run(argc, argv);
}
