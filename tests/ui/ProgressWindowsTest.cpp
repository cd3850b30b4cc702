#include "tests/support/TestWindow.h"
#include "utilities/ui/LongOperationDlg.h"
#include "utilities/ui/ProgressMeter.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>

#include <commctrl.h>

namespace {

constexpr int meterBar = 1108;
constexpr int operationBar = 1395;
constexpr int operationText = 1824;
constexpr int operationPercent = 1825;

/// The one visible dialog of this thread; null when there is none.
HWND OpenDialog() {
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM out) {
            wchar_t name[16] = L"";
            GetClassNameW(window, name, static_cast<int>(std::size(name)));
            if (std::wstring_view(name) == L"#32770" && IsWindowVisible(window) != FALSE)
                *reinterpret_cast<HWND*>(out) = window;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

int BarAt(int id) {
    return static_cast<int>(SendDlgItemMessageW(OpenDialog(), id, PBM_GETPOS, 0, 0));
}

std::string Copy(const char* text) {
    return text;
}

} // namespace

TEST(ProgressMeter, ScalesItsBar) {
    struct Row {
        int maximum;
        int progress;
        int range;
        int position;
    };
    const TestWindow owner;
    CProgressMeter meter;
    for (const Row& row :
         {Row{100, 40, 100, 40}, Row{100, 101, 100, 100}, Row{100, -1, 100, 0},
          Row{65535, 65534, 65535, 65534}, Row{65536, 32768, 65535, 32767},
          Row{INT_MAX, INT_MAX, 65535, 65535}, Row{0, 5, 0, 0}, Row{-3, 1, 0, 0}}) {
        SCOPED_TRACE(testing::Message() << row.progress << " of " << row.maximum);
        ASSERT_TRUE(meter.Show(owner.Handle(), row.maximum, Copy("Copying").data()));
        EXPECT_EQ(TextOf(OpenDialog()), L"Copying");
        EXPECT_EQ(BarAt(meterBar), 0);
        meter.SetProgress(row.progress);
        EXPECT_EQ(BarAt(meterBar), row.position);
        EXPECT_EQ(SendDlgItemMessageW(OpenDialog(), meterBar, PBM_GETRANGE, FALSE, 0), row.range);
    }
    const RECT place = ScreenRect(OpenDialog());
    const RECT over = ScreenRect(owner.Handle());
    EXPECT_NEAR(place.left + place.right, over.left + over.right, 2);
    EXPECT_NEAR(place.top + place.bottom, over.top + over.bottom, 2);
    meter.Hide();
    EXPECT_FALSE(meter.IsVisible() || OpenDialog() != nullptr);
    meter.SetProgress(1);
}

TEST(ProgressMeter, DispatchesTwoMessagesAndTellsOfCancel) {
    TestWindow owner;
    int posted = 0;
    owner.onMessage = [&posted](UINT message, WPARAM, LPARAM) {
        posted += message == WM_APP ? 1 : 0;
        return message == WM_APP;
    };
    CProgressMeter meter;
    CProgressMeter other;
    ASSERT_TRUE(meter.Show(owner.Handle(), 10, nullptr));
    PumpUntil("rest", [&] { return GetQueueStatus(QS_ALLINPUT) == 0; });
    for (int i = 0; i < 5; ++i)
        PostMessageW(owner.Handle(), WM_APP, 0, 0);
    for (const int expected : {2, 4, 5}) {
        meter.SetProgress(1);
        EXPECT_EQ(posted, expected);
    }
    EXPECT_FALSE(other.UserAborted());
    PostMessageW(GetDlgItem(OpenDialog(), IDCANCEL), WM_KEYDOWN, VK_ESCAPE, 0);
    PumpUntil("Cancel", [&] {
        meter.SetProgress(2);
        return other.UserAborted();
    });
    EXPECT_TRUE(meter.IsVisible()) << "the host ends it";
    PostQuitMessage(7);
    meter.SetProgress(3);
    MSG message;
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE &&
                message.wParam == 7);
    DestroyWindow(OpenDialog());
    meter.SetProgress(4);
    EXPECT_FALSE(meter.IsVisible());
    EXPECT_TRUE(other.Show(nullptr, 1, nullptr));
    EXPECT_FALSE(meter.UserAborted());
}

TEST(ProgressWindows, MayBeDestroyedByWhatTheyDispatch) {
    TestWindow owner;
    auto meter = std::make_unique<CProgressMeter>();
    owner.onMessage = [&](UINT message, WPARAM, LPARAM) {
        if (message == WM_APP)
            meter = nullptr;
        return message == WM_APP;
    };
    ASSERT_TRUE(meter->Show(owner.Handle(), 10, nullptr));
    PostMessageW(owner.Handle(), WM_APP, 0, 0);
    PumpUntil("its end", [&] {
        if (meter != nullptr)
            meter->SetProgress(1);
        return meter == nullptr;
    });
    EXPECT_EQ(OpenDialog(), nullptr);

    struct Ending : CLongOperationDlg {
        explicit Ending(std::unique_ptr<Ending>& mine) : self(mine) {}
        INT_PTR DlgProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message != WM_APP)
                return CLongOperationDlg::DlgProc(window, message, wParam, lParam);
            self = nullptr;
            return TRUE;
        }
        std::unique_ptr<Ending>& self;
    };
    std::unique_ptr<Ending> operation;
    operation = std::make_unique<Ending>(operation);
    ASSERT_TRUE(operation->Go(nullptr, owner.Handle()));
    PostMessageW(OpenDialog(), WM_APP, 0, 0);
    operation->SetMaxProgress(10);
    EXPECT_TRUE(operation == nullptr && OpenDialog() == nullptr);
}

TEST(LongOperationDlg, ShowsWhatWasSet) {
    const TestWindow owner;
    CLongOperationDlg operation;
    const std::string tooLong(600, 'x');
    operation.SetTitle(Copy("Before").data());
    ASSERT_TRUE(operation.Go(nullptr, owner.Handle()));
    EXPECT_EQ(TextOf(OpenDialog()), L"Before");
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    for (int round = 0; round < 200; ++round) {
        const int extremes[] = {0, -1, 1, 3, 100, 65536, INT_MAX, INT_MIN};
        const int maximum = random() % 2 == 0 ? extremes[random() % std::size(extremes)]
                                              : static_cast<int>(random() % 1000);
        const int progress = random() % 3 == 0 ? extremes[random() % std::size(extremes)]
                                               : static_cast<int>(random() % 1000);
        operation.SetMaxProgress(maximum);
        operation.SetProgress(progress);
        const long long shown = maximum <= 0 ? 0 : std::max(std::min(progress, maximum), 0);
        const auto percent = maximum <= 0 ? 0 : shown * 100 / maximum;
        ASSERT_EQ(TextOf(GetDlgItem(OpenDialog(), operationPercent)),
                  std::to_wstring(percent) + L"%")
            << "seed " << seed << ": " << progress << " of " << maximum;
        ASSERT_EQ(BarAt(operationBar), shown) << progress << " of " << maximum;
    }
    operation.SetTitle(const_cast<char*>(tooLong.c_str()));
    operation.SetProgressText(const_cast<char*>(tooLong.c_str()));
    EXPECT_EQ(TextOf(OpenDialog()), std::wstring(511, L'x'));
    EXPECT_EQ(TextOf(GetDlgItem(OpenDialog(), operationText)), std::wstring(511, L'x'));
    operation.SetProgressText(nullptr);
    EXPECT_EQ(TextOf(GetDlgItem(OpenDialog(), operationText)), L"");
    ASSERT_TRUE(operation.Go(nullptr, owner.Handle())) << "a second time";
    operation.End();
    operation.End();
    EXPECT_FALSE(operation.Showing() || OpenDialog() != nullptr);
    operation.SetProgress(1);
}

TEST(LongOperationDlg, WaitsForItsTimer) {
    const TestWindow owner;
    CLongOperationDlg operation;
    operation.UseTimerToUpdate(true);
    operation.SetMaxProgress(10);
    ASSERT_TRUE(operation.Go(nullptr, owner.Handle()));
    const auto percent = [] { return TextOf(GetDlgItem(OpenDialog(), operationPercent)); };
    operation.SetProgress(5);
    EXPECT_EQ(percent(), L"0%");
    PumpUntil("the timer", [&] { return percent() == L"50%"; });
    operation.UseTimerToUpdate(false);
    operation.SetProgress(6);
    EXPECT_EQ(percent(), L"60%");
    operation.UseTimerToUpdate(true);
    operation.SetTitle(Copy("Later").data());
    PumpUntil("the timer again", [&] { return TextOf(OpenDialog()) == L"Later"; });
}

TEST(LongOperationDlg, TellsCancelFromClose) {
    const TestWindow owner;
    CLongOperationDlg operation;
    operation.SetMaxProgress(10);
    struct Row {
        const char* name;
        UINT message;
        WPARAM wParam;
        bool cancelled;
    };
    for (const Row& row :
         {Row{"Cancel", WM_COMMAND, IDCANCEL, true}, Row{"close", WM_CLOSE, 0, false}}) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(operation.Go(nullptr, owner.Handle()));
        EXPECT_FALSE(operation.UserPushedCancel());
        PostMessageW(OpenDialog(), row.message, row.wParam, 0);
        operation.SetProgress(1);
        EXPECT_FALSE(operation.Showing());
        EXPECT_EQ(operation.UserPushedCancel(), row.cancelled);
    }
    ASSERT_TRUE(operation.Go(nullptr, owner.Handle()));
    PostMessageW(GetDlgItem(OpenDialog(), IDCANCEL), BM_CLICK, 0, 0);
    operation.SetProgress(1);
    EXPECT_TRUE(operation.UserPushedCancel());
    operation.ClearCancelButton();
    EXPECT_FALSE(operation.UserPushedCancel());
}
