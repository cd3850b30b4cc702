// The library's dialogs, tooltip and link beside the calls that they cannot do without.

#include "bench/support/Comparison.h"
#include "bench/support/FreshHandles.h"
#include "utilities/ui/LinkControl.h"
#include "utilities/ui/LongOperationDlg.h"
#include "utilities/ui/MessageBoxes.h"
#include "utilities/ui/MyToolTip.h"
#include "utilities/ui/ProgressMeter.h"

#include <atomic>
#include <cstring>
#include <thread>

namespace {

constexpr int calls = 1000; ///< of one iteration
char text[] = "The file was written.";
char title[] = "Gallery";

/// While it lives, each dialog of the thread is answered with OK as soon as it is shown.
class AnsweredDialogs {
public:
    AnsweredDialogs()
        : hook(SetWindowsHookExW(WH_CBT, &AnsweredDialogs::Answer, nullptr, GetCurrentThreadId())) {
    }
    AnsweredDialogs(const AnsweredDialogs&) = delete;
    AnsweredDialogs& operator=(const AnsweredDialogs&) = delete;
    ~AnsweredDialogs() { UnhookWindowsHookEx(hook); }

private:
    static LRESULT CALLBACK Answer(int code, WPARAM window, LPARAM lParam) {
        if (code == HCBT_ACTIVATE)
            PostMessageW(reinterpret_cast<HWND>(window), WM_COMMAND, IDOK, 0);
        return CallNextHookEx(nullptr, code, window, lParam);
    }

    HHOOK hook;
};

void MeasureMessageBoxes() {
    static constexpr char work[] = "message box, show and answer";
    bench::Measure(work, "1", bench::ours, [](benchmark::State& state) {
        const AnsweredDialogs answered;
        const auto show = [] { UT_MyMessageStr(nullptr, text, MB_ICONINFORMATION, title, 0); };
        bench::ExpectNothingLost(state, work, show);
        for (auto _ : state)
            show();
    });
    bench::Measure(work, "1", "MessageBoxA", [](benchmark::State& state) {
        const AnsweredDialogs answered;
        for (auto _ : state)
            MessageBoxA(nullptr, text, title, MB_ICONINFORMATION);
    });
    bench::ToReach(work, "MessageBoxA", 1 / 1.5);
}

void MeasureTimerMode() {
    static constexpr char work[] = "long operation by timer, 1,000 x SetProgress";
    static constexpr char peer[] = "atomic increments";
    bench::Measure(work, "1", bench::ours, [](benchmark::State& state) {
        CLongOperationDlg operation;
        operation.UseTimerToUpdate(true);
        operation.SetMaxProgress(calls);
        operation.Go(nullptr, nullptr);
        for (auto _ : state) {
            for (int i = 0; i < calls; ++i)
                operation.SetProgress(i);
        }
    });
    bench::Measure(work, "1", peer, [](benchmark::State& state) {
        std::atomic<int> progress{0};
        for (auto _ : state) {
            for (int i = 0; i < calls; ++i)
                ++progress;
        }
    });
    bench::ToReach(work, peer, 0.1);
}

/// Milliseconds from a click on Cancel by somebody else until work without a pause knows of it.
double MillisecondsToCancel() {
    CLongOperationDlg operation;
    operation.SetMaxProgress(calls);
    operation.Go(nullptr, nullptr);
    const HWND dialog = GetActiveWindow();
    std::atomic<ULONGLONG> clicked{0};
    std::thread user([&clicked, dialog] {
        clicked = GetTickCount64();
        PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    for (int i = 0; !operation.UserPushedCancel(); ++i)
        operation.SetProgress(i % calls);
    user.join();
    return static_cast<double>(GetTickCount64() - clicked);
}

void MeasureImmediateMode() {
    bench::Measure("long operation at once, SetProgress", "1", bench::ours,
                   [](benchmark::State& state) {
                       if (MillisecondsToCancel() > 100)
                           state.SkipWithError("a click is answered after more than 100 ms");
                       CLongOperationDlg operation;
                       operation.SetMaxProgress(calls);
                       operation.Go(nullptr, nullptr);
                       int progress = 0;
                       for (auto _ : state)
                           operation.SetProgress(++progress % calls);
                   });
}

void MeasureLife(const char* work, const std::function<void(HWND)>& live) {
    bench::Measure(work, "1", bench::ours, [work, live](benchmark::State& state) {
        const bench::Parent parent;
        const auto once = [&live, &parent] { live(parent.Get()); };
        bench::ExpectNothingLost(state, work, once);
        for (auto _ : state)
            once();
    });
}

int TellTip(void*, POINT, char* tip) {
    std::strcpy(tip, "a tip");
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    MeasureMessageBoxes();
    MeasureTimerMode();
    MeasureImmediateMode();
    MeasureLife("progress meter, show and hide", [](HWND) {
        CProgressMeter meter;
        meter.Show(nullptr, 10, title);
        meter.SetProgress(5);
    });
    MeasureLife("long operation, show and end", [](HWND) {
        CLongOperationDlg operation;
        operation.SetMaxProgress(10);
        operation.Go(nullptr, nullptr);
        operation.SetProgress(5);
    });
    MeasureLife("tooltip, show and hide", [](HWND parent) {
        CMyToolTip tip;
        tip.Init(GetModuleHandleW(nullptr), parent, &TellTip, nullptr, 1, 1000);
        tip.SetWatchAllMouseMovementsMode(false);
        tip.ShowToolTip();
        tip.HideToolTip();
    });
    MeasureLife("link, subclass and restore", [](HWND parent) {
        CLinkControl link;
        link.SubClass(parent, text, title, 0);
    });
    return bench::Run(argc, argv);
}
