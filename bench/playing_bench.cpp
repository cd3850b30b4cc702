// Frames of transitions from invalidation to shown, with the share of the blending, and the
// processor time of ten minutes of the gallery's script with the clock in hand. With --pictures
// FOLDER it writes those of the document instead.

#include "bench/support/Comparison.h"
#include "common/Handles.h"
#include "tests/support/HeldClock.h"
#include "utilities/promo/PromoScript.h"
#include "utilities/promo/PromoTransitions.h"

#include <gdiplus.h>
#include <vector>

namespace {

constexpr const char* effects[] = {
    "none",           "per-char delay",
    "color fade",     "frames crossfade",
    "frames fade",    "color frame fade pop",
    "color rect out", "color rect in",
    "wipe LR",        "wipe RL",
    "color wipe LR",  "color wipe RL",
};

/// A script in a window of that size.
class Player {
public:
    Player(int width, int height, std::string scriptText, const char* start = "intro")
        : area(CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, width,
                               height, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)),
          text(std::move(scriptText)) {
        script.SetOutputWindow(area);
        script.SetSourceBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                               static_cast<int>(text.size()));
        script.SetStartScriptName(start);
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player() { DestroyWindow(area); }

    HWND area;
    CPromoScript script;

private:
    std::string text;
};

/// Stands in the middle of the effect after 1,500 ms.
std::string Halfway(const char* effect) {
    const bool isOneByOne = std::string(effect) == "per-char delay";
    return std::string("[general]\nwait=1000\nfont size=34\nbold=1\nhorz=center\nvert=center\n"
                       "text color=white\n[intro.1]\ntext.1=Before\nbg color=navy\n"
                       "[intro.2]\ntext.1=After\nbg color=orange\ntransition color=white\n"
                       "transition effect=") +
           effect + "\ntransition time=" + (isOneByOne ? "200" : "1000") + "\n";
}

void MeasureFrames(const char* effect, int number) {
    const std::string work = std::string("promo frame, ") + effect;
    for (const auto& [size, width, height] :
         {std::tuple("640x480", 640, 480), std::tuple("1920x1080", 1920, 1080)}) {
        bench::Measure(work, size, bench::ours, [=, w = width, h = height](auto& state) {
            const HeldClock clock;
            Player player(w, h, Halfway(effect));
            if (!player.script.Go())
                state.SkipWithError("does not play");
            clock.Advance(player.area, 1500);
            for (auto _ : state) {
                InvalidateRect(player.area, nullptr, FALSE);
                UpdateWindow(player.area);
                GdiFlush();
            }
        });
        if (number < 2)
            continue;
        bench::Measure(work, size, "its blending", [=, w = width, h = height](auto& state) {
            const std::size_t stride = static_cast<std::size_t>(w * 3 + 3) / 4 * 4;
            const std::vector<unsigned char> previous(stride * static_cast<std::size_t>(h), 200);
            const std::vector<unsigned char> next(previous.size(), 100);
            std::vector<unsigned char> output(previous.size());
            for (auto _ : state) {
                vtr::ComposeTransition(
                    number,
                    {previous.data(), next.data(), output.data(), RGB(10, 20, 30), w, h, stride},
                    50);
                benchmark::ClobberMemory();
            }
        });
    }
    bench::GrowthToReach(work, 6.75 * 1.5); // so many times the pixels
}

std::string ReadScript() {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    std::string path = program;
    path.replace(path.rfind('\\') + 1, std::string::npos, "promo-script.ini");
    const vtr::StreamHandle file(std::fopen(path.c_str(), "rb"));
    std::string text(1 << 20, '\0');
    text.resize(file ? std::fread(text.data(), 1, text.size(), file.Get()) : 0);
    return text;
}

/// The background that the script leaves to its host costs next to nothing.
void PaintNothing(HDC, const RECT&, const char*, unsigned, unsigned, void*) {}

void MeasurePlaying() {
    for (const auto& [size, width, height] :
         {std::tuple("480x270", 480, 270), std::tuple("1920x1080", 1920, 1080)}) {
        bench::MeasureProcessorTime(
            "promo script, ten minutes", size, bench::ours,
            [=, w = width, h = height](auto& state) {
                const HeldClock clock;
                Player player(w, h, ReadScript(), "main");
                player.script.SetOwnerDrawBackgroundHandler(&PaintNothing, nullptr);
                if (!player.script.Go())
                    state.SkipWithError("does not play");
                for (int second = 0; second < 600; ++second) {
                    clock.Advance(player.area, 1000);
                    if (clock.timers.empty()) // a text that waits for the host
                        player.script.Resume();
                }
            });
    }
}

bool SavePicture(HWND area, const std::string& path) {
    RECT client{};
    GetClientRect(area, &client);
    const vtr::WindowDc window(GetDC(area));
    const vtr::MemoryDc copy(CreateCompatibleDC(window.Get()));
    const vtr::BitmapHandle bitmap(
        CreateCompatibleBitmap(window.Get(), client.right, client.bottom));
    {
        const vtr::SelectedObject selected(copy.Get(), bitmap.Get());
        BitBlt(copy.Get(), 0, 0, client.right, client.bottom, window.Get(), 0, 0, SRCCOPY);
    }
    const CLSID png{0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
    Gdiplus::Bitmap picture(bitmap.Get(), nullptr);
    return picture.Save(std::wstring(path.begin(), path.end()).c_str(), &png, nullptr) ==
           Gdiplus::Ok;
}

/// One picture of each effect at 50 %.
bool SavePictures(const std::string& folder) {
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token, &input, nullptr);
    bool areSaved = true;
    for (const char* effect : effects) {
        const HeldClock clock;
        Player player(160, 90, Halfway(effect));
        areSaved = player.script.Go() && areSaved;
        clock.Advance(player.area, 1500);
        std::string name = effect;
        for (char& c : name)
            c = c == ' ' ? '-' : static_cast<char>(std::tolower(c));
        areSaved = SavePicture(player.area, folder + "\\promo-" + name + ".png") && areSaved;
    }
    Gdiplus::GdiplusShutdown(token);
    return areSaved;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::string(argv[1]) == "--pictures")
        return SavePictures(argv[2]) ? 0 : 1;
    for (int i = 0; i < 12; ++i)
        MeasureFrames(effects[i], i);
    MeasurePlaying();
    return bench::Run(argc, argv);
}
