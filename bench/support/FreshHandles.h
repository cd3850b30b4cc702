#ifndef VTRUTILS_BENCH_SUPPORT_FRESHHANDLES_H
#define VTRUTILS_BENCH_SUPPORT_FRESHHANDLES_H

#include "common/Handles.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <functional>
#include <map>
#include <memory>
#include <psapi.h>
#include <string>
#include <vector>

namespace bench {

/// A hidden window that controls can be in.
class Parent {
public:
    Parent()
        : window(CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 300, nullptr, nullptr,
                                 GetModuleHandleW(nullptr), nullptr)) {}
    Parent(const Parent&) = delete;
    Parent& operator=(const Parent&) = delete;
    ~Parent() { DestroyWindow(window); }

    HWND Get() const { return window; }

private:
    HWND window;
};

/// The greatest values that new handles have: they grow when handles are not given back. The upper
/// half of a window's or a pen's tells how often the lower was used.
struct FreshHandles {
    FreshHandles() {
        std::vector<std::unique_ptr<Parent>> windows;
        std::vector<vtr::Owner<vtr::GdiObjectKind<HPEN>>> pens;
        std::vector<vtr::KernelHandle> events;
        for (int i = 0; i < 32; ++i) {
            windows.push_back(std::make_unique<Parent>());
            pens.emplace_back(CreatePen(PS_SOLID, 1, 0x123456));
            events.emplace_back(CreateEventW(nullptr, TRUE, FALSE, nullptr));
            window = std::max(window, reinterpret_cast<UINT_PTR>(windows.back()->Get()) & 0xFFFF);
            pen = std::max(pen, reinterpret_cast<UINT_PTR>(pens.back().Get()) & 0xFFFF);
            event = std::max(event, reinterpret_cast<UINT_PTR>(events.back().Get()));
        }
    }

    /// Which of the free ones comes next differs, but only among a few.
    bool HaveGrownSince(const FreshHandles& before) const {
        constexpr UINT_PTR few = 100;
        return window > before.window + few || pen > before.pen + few || event > before.event + few;
    }

    UINT_PTR window = 0;
    UINT_PTR pen = 0;
    UINT_PTR event = 0;
};

/// What the process has for itself.
inline SIZE_T PrivateBytes() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    K32GetProcessMemoryInfo(GetCurrentProcess(),
                            reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters), sizeof counters);
    return counters.PrivateUsage;
}

/// Does it 1,000 times, once in the program for each work; a measurement fails if handles were
/// lost, or more memory than the 1 MB by which a heap may grow.
inline void ExpectNothingLost(benchmark::State& state, const std::string& work,
                              const std::function<void()>& doIt) {
    static std::map<std::string, bool> lost;
    if (lost.find(work) == lost.end()) {
        for (int i = 0; i < 100; ++i)
            doIt();
        const FreshHandles after100;
        const SIZE_T bytes = PrivateBytes();
        for (int i = 100; i < 1000; ++i)
            doIt();
        constexpr SIZE_T oneHeapStep = 1 << 20;
        lost[work] =
            FreshHandles().HaveGrownSince(after100) || PrivateBytes() > bytes + oneHeapStep;
    }
    if (lost[work])
        state.SkipWithError("handles or memory that are not given back");
}

} // namespace bench

#endif
