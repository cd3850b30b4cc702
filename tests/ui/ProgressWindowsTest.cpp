#include "tests/support/Rounds.h"
#include "tests/support/TestWindow.h"
#include "utilities/ui/LongOperationDlg.h"
#include "utilities/ui/ProgressMeter.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

#include <commctrl.h>

namespace {

constexpr int meterBar = 1108;
constexpr int operationBar = 1395;
constexpr int operationText = 1824;
constexpr int operationPercent = 1825;

LRESULT AskBar(int id, UINT message) {
    return SendDlgItemMessageW(OpenWindow(), id, message, 0, 0);
}

std::wstring Percent() {
    return TextOf(GetDlgItem(OpenWindow(), operationPercent));
}

std::string Text(const char* text) {
    return text;
}

} // namespace

TEST(ProgressMeter, ScalesItsBar) {
    const TestWindow owner;
    CProgressMeter meter;
    for (const auto& [maximum, progress, range, position] : {std::tuple(100, 101, 100, 100),
                                                             {100, -1, 100, 0},
                                                             {65535, 65534, 65535, 65534},
                                                             {65536, 32768, 65535, 32767},
                                                             {INT_MAX, INT_MAX, 65535, 65535},
                                                             {-3, 1, 0, 0}}) {
        SCOPED_TRACE(testing::Message() << progress << " of " << maximum);
        ASSERT_TRUE(meter.Show(owner, maximum, Text("Copying").data()));
        EXPECT_EQ(TextOf(OpenWindow()), L"Copying");
        EXPECT_EQ(AskBar(meterBar, PBM_GETPOS), 0);
        meter.SetProgress(progress);
        EXPECT_EQ(AskBar(meterBar, PBM_GETPOS), position);
        EXPECT_EQ(AskBar(meterBar, PBM_GETRANGE), range);
    }
    const RECT place = ScreenRect(OpenWindow());
    const RECT over = ScreenRect(owner);
    EXPECT_NEAR(place.left + place.right, over.left + over.right, 2);
    EXPECT_NEAR(place.top + place.bottom, over.top + over.bottom, 2);
    meter.Hide();
    EXPECT_FALSE(meter.IsVisible() || OpenWindow() != nullptr);
    meter.SetProgress(1);
}

TEST(ProgressMeter, DispatchesTwoMessagesAndTellsOfCancel) {
    TestWindow owner;
    int posted = 0;
    owner.onMessage = [&posted](UINT message, WPARAM, LPARAM) {
        posted += message == WM_APP ? 1 : 0;
        return message == WM_APP;
    };
    CProgressMeter meter, other;
    ASSERT_TRUE(meter.Show(owner, 10, nullptr));
    PumpUntil("rest", [&] { return GetQueueStatus(QS_ALLINPUT) == 0; });
    for (int i = 0; i < 5; ++i)
        PostMessageW(owner, WM_APP, 0, 0);
    for (const int expected : {2, 4, 5}) {
        meter.SetProgress(1);
        EXPECT_EQ(posted, expected);
    }
    EXPECT_FALSE(other.UserAborted());
    PostMessageW(GetDlgItem(OpenWindow(), IDCANCEL), WM_KEYDOWN, VK_ESCAPE, 0);
    PumpUntil("Cancel", [&] {
        meter.SetProgress(2);
        return other.UserAborted();
    });
    EXPECT_TRUE(meter.IsVisible()) << "the host ends it";
    PostQuitMessage(7);
    meter.SetProgress(3);
    MSG message;
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "the host's";
    DestroyWindow(OpenWindow());
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
    ASSERT_TRUE(meter->Show(owner, 10, nullptr));
    PostMessageW(owner, WM_APP, 0, 0);
    PumpUntil("its end", [&] {
        if (meter != nullptr)
            meter->SetProgress(1);
        return meter == nullptr;
    });

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
    ASSERT_TRUE(operation->Go(nullptr, owner));
    PostMessageW(OpenWindow(), WM_APP, 0, 0);
    operation->SetMaxProgress(10);
    EXPECT_TRUE(operation == nullptr && OpenWindow() == nullptr);
}

TEST(LongOperationDlg, ShowsWhatWasSet) {
    const TestWindow owner;
    CLongOperationDlg operation;
    std::string tooLong(600, 'x');
    operation.SetTitle(Text("Before").data());
    ASSERT_TRUE(operation.Go(nullptr, owner));
    EXPECT_EQ(TextOf(OpenWindow()), L"Before");
    EachRound(11, 1000, [&](Dice& dice, int) {
        constexpr int extremes[] = {0, -1, 1, 3, 100, 65536, INT_MAX, INT_MIN};
        const auto number = [&] {
            return dice.Below(2) == 0 ? extremes[dice.Below(8)] : dice.Below(1000);
        };
        const int maximum = number(), progress = number();
        operation.SetMaxProgress(maximum);
        operation.SetProgress(progress);
        const long long shown = maximum <= 0 ? 0 : std::clamp(progress, 0, maximum);
        ASSERT_EQ(Percent(), std::to_wstring(shown * 100 / std::max(maximum, 1)) + L"%")
            << progress << " of " << maximum;
        ASSERT_EQ(AskBar(operationBar, PBM_GETPOS), shown) << progress << " of " << maximum;
    });
    operation.SetTitle(tooLong.data());
    operation.SetProgressText(tooLong.data());
    EXPECT_EQ(TextOf(OpenWindow()), std::wstring(511, L'x'));
    EXPECT_EQ(TextOf(GetDlgItem(OpenWindow(), operationText)), std::wstring(511, L'x'));
    operation.SetProgressText(nullptr);
    EXPECT_EQ(TextOf(GetDlgItem(OpenWindow(), operationText)), L"");
    operation.UseTimerToUpdate(true);
    ASSERT_TRUE(operation.Go(nullptr, owner)) << "a second time";
    operation.SetMaxProgress(10);
    operation.SetProgress(5);
    operation.SetTitle(Text("Later").data());
    EXPECT_EQ(Percent(), L"0%") << "it waits for its timer";
    PumpUntil("the timer", [&] { return Percent() == L"50%" && TextOf(OpenWindow()) == L"Later"; });
    operation.UseTimerToUpdate(false);
    operation.SetProgress(6);
    EXPECT_EQ(Percent(), L"60%");
    operation.End();
    EXPECT_FALSE(operation.Showing() || OpenWindow() != nullptr);
    operation.SetProgress(1);
}

TEST(LongOperationDlg, TellsCancelFromClose) {
    const TestWindow owner;
    CLongOperationDlg operation;
    operation.SetMaxProgress(10);
    for (const bool cancels : {true, false, true}) {
        ASSERT_TRUE(operation.Go(nullptr, owner));
        EXPECT_FALSE(operation.UserPushedCancel());
        if (cancels)
            PostMessageW(GetDlgItem(OpenWindow(), IDCANCEL), BM_CLICK, 0, 0);
        else
            PostMessageW(OpenWindow(), WM_CLOSE, 0, 0);
        operation.SetProgress(1);
        EXPECT_FALSE(operation.Showing());
        EXPECT_EQ(operation.UserPushedCancel(), cancels);
    }
    operation.ClearCancelButton();
    EXPECT_FALSE(operation.UserPushedCancel());
}
