// A frame of a transition, blended, beside copying one, what GDI blends, and a plain loop.

#include "bench/support/Comparison.h"
#include "utilities/promo/PromoTransitions.h"

#include <cstring>
#include <string>
#include <tuple>
#include <utility>

namespace {

constexpr int percent = 30;

/// Two frames and room for a third, bottom-up, in a device context each.
class Frames {
public:
    Frames(int frameWidth, int frameHeight) : width(frameWidth), height(frameHeight) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
        for (int i = 0; i < 3; ++i) {
            void* bits = nullptr;
            contexts[i] = CreateCompatibleDC(nullptr);
            bitmaps[i] = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
            SelectObject(contexts[i], bitmaps[i]);
            pixels[i] = static_cast<unsigned char*>(bits);
            for (std::size_t j = 0; j < Size(); ++j)
                pixels[i][j] =
                    static_cast<unsigned char>(j * 7 + j / 251 + static_cast<unsigned>(i));
        }
    }
    Frames(const Frames&) = delete;
    Frames& operator=(const Frames&) = delete;
    ~Frames() {
        for (int i = 0; i < 3; ++i) {
            DeleteDC(contexts[i]);
            DeleteObject(bitmaps[i]);
        }
    }

    std::size_t Size() const { return Stride() * static_cast<std::size_t>(height); }
    std::size_t Stride() const { return static_cast<std::size_t>(width) * 3; }

    int width;
    int height;
    HDC contexts[3];
    HBITMAP bitmaps[3];
    unsigned char* pixels[3];
};

void Ours(const Frames& frames, int effect) {
    ComposeTransition(effect,
                      vtr::TransitionFrames{frames.pixels[0], frames.pixels[1], frames.pixels[2],
                                            RGB(10, 20, 30), frames.width, frames.height,
                                            frames.Stride()},
                      percent);
}

void Copied(const Frames& frames) {
    std::memcpy(frames.pixels[2], frames.pixels[0], frames.Size());
}

void ByGdi(const Frames& frames) {
    BitBlt(frames.contexts[2], 0, 0, frames.width, frames.height, frames.contexts[0], 0, 0,
           SRCCOPY);
    AlphaBlend(frames.contexts[2], 0, 0, frames.width, frames.height, frames.contexts[1], 0, 0,
               frames.width, frames.height, {AC_SRC_OVER, 0, percent * 255 / 100, 0});
}

#pragma GCC push_options
#pragma GCC optimize("O2", "no-tree-vectorize")
void Plain(const Frames& frames) {
    for (std::size_t i = 0; i < frames.Size(); ++i)
        frames.pixels[2][i] = static_cast<unsigned char>(
            frames.pixels[0][i] * (100 - percent) / 100 + frames.pixels[1][i] * percent / 100);
}
#pragma GCC pop_options

template <class Work>
void Measure(const std::string& work, const char* contender, Work run) {
    for (const auto& [name, width, height] :
         {std::tuple("1920x1080", 1920, 1080), std::tuple("3840x2160", 3840, 2160)}) {
        bench::Measure(work, name, contender, [=, w = width, h = height](benchmark::State& state) {
            const Frames frames(w, h);
            for (auto _ : state) {
                run(frames);
                GdiFlush();
                benchmark::ClobberMemory();
            }
        });
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::pair<const char*, int> effects[] = {{"promo: color fade", 2},
                                                   {"promo: frames crossfade", 3},
                                                   {"promo: frames fade", 4},
                                                   {"promo: color frame fade pop", 5}};
    for (const auto& [work, effect] : effects) {
        Measure(work, bench::ours,
                [number = effect](const Frames& frames) { Ours(frames, number); });
        Measure(work, "memcpy", &Copied);
        Measure(work, "AlphaBlend", &ByGdi);
        Measure(work, "plain loop", &Plain);
        bench::ToReach(work, "AlphaBlend", 10);
        bench::ToReach(work, "memcpy", 1.0 / 3);
        bench::GrowthToReach(work, 4 * 1.5); // four times the pixels
    }
    return bench::Run(argc, argv);
}
