#ifndef VTRUTILS_BENCH_SUPPORT_FRESHHANDLES_H
#define VTRUTILS_BENCH_SUPPORT_FRESHHANDLES_H

#include "common/Handles.h"

#include <benchmark/benchmark.h>
#include <functional>
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

/// The values that new handles have: they grow when handles are not given back.
inline std::vector<UINT_PTR> FreshHandles() {
    const vtr::Owner<vtr::GdiObjectKind<HPEN>> pen(CreatePen(PS_SOLID, 1, 0x123456));
    const vtr::KernelHandle event(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    const Parent window;
    // The upper half of a window's or a pen's tells how often the lower was used.
    return {reinterpret_cast<UINT_PTR>(pen.Get()) & 0xFFFF,
            reinterpret_cast<UINT_PTR>(window.Get()) & 0xFFFF,
            reinterpret_cast<UINT_PTR>(event.Get())};
}

/// Does it 1,000 times; a measurement during which handles are lost fails.
inline void ExpectNoHandlesLost(benchmark::State& state, const std::function<void()>& work) {
    for (int i = 0; i < 100; ++i)
        work();
    const std::vector<UINT_PTR> after100 = FreshHandles();
    for (int i = 100; i < 1000; ++i)
        work();
    if (FreshHandles() != after100)
        state.SkipWithError("handles that are not given back");
}

} // namespace bench

#endif
