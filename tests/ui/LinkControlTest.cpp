#include "utilities/ui/LinkControl.h"

#include "common/Handles.h"
#include "tests/support/TestWindow.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace {

constexpr COLORREF blue = RGB(0, 0, 255);
constexpr COLORREF white = RGB(255, 255, 255);

SIZE SizeOf(HWND parent, const char* text) {
    const vtr::WindowDc dc(GetDC(parent));
    SIZE size{};
    GetTextExtentPoint32A(dc.Get(), text, static_cast<int>(std::strlen(text)), &size);
    return size;
}

WNDPROC ProcedureOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

int SubClass(CLinkControl& link, HWND control, std::string text, std::string target = "http://x") {
    return link.SubClass(control, text.data(), target.data(), blue);
}

/// Which of the points of a row, or of the whole control, have the colour of the link.
int BluePoints(HWND control, int row = -1) {
    UpdateWindow(control);
    const vtr::WindowDc dc(GetDC(control));
    RECT client{};
    GetClientRect(control, &client);
    int count = 0;
    for (int y = row < 0 ? 0 : row; y < (row < 0 ? client.bottom : row + 1); ++y) {
        for (int x = 0; x < client.right; ++x)
            count += GetPixel(dc.Get(), x, y) == blue ? 1 : 0;
    }
    return count;
}

} // namespace

TEST(LinkControl, FindsAndPaintsItsTextByTheStyle) {
    TestWindow dialog;
    struct Row {
        const char* name;
        DWORD style;
        int width;
        const char* text;
    };
    for (const Row& row : {Row{"left", SS_LEFT, 200, "link"}, Row{"right", SS_RIGHT, 200, "link"},
                           Row{"centred", SS_CENTER, 201, "link"},
                           Row{"centred, too narrow", SS_CENTER, 20, "a long link"},
                           Row{"empty", SS_RIGHT, 50, ""}}) {
        SCOPED_TRACE(row.name);
        const HWND control = dialog.Add(L"STATIC", L"", row.style, {40, 30, 40 + row.width, 70});
        CLinkControl link;
        ASSERT_EQ(SubClass(link, control, row.text), 1);
        const SIZE size = SizeOf(dialog.Handle(), row.text);
        const long left = row.style == SS_LEFT    ? 0
                          : row.style == SS_RIGHT ? row.width - size.cx
                                                  : (row.width - size.cx) / 2;
        const RECT expected{left, 0, left + size.cx, size.cy + 7};
        const RECT hit = link.GetLastHitRect();
        EXPECT_TRUE(EqualRect(&hit, &expected)) << hit.left << " " << hit.right;
        const long seen = std::min<long>(expected.right, row.width) - std::max(left, 0L);
        EXPECT_EQ(BluePoints(control, static_cast<int>(size.cy)), seen) << "underline";

        // The extents of the text count from the control's own corner, wherever the text is.
        RECT client{};
        GetClientRect(dialog.Handle(), &client);
        for (const POINT point :
             {POINT{39, 35}, POINT{40, 30}, POINT{39 + hit.right, 35}, POINT{40 + hit.right, 35},
              POINT{40, 29 + hit.bottom}, POINT{40, 30 + hit.bottom}}) {
            const RECT window = ScreenRect(dialog.Handle());
            const POINT asked{point.x, point.y + window.top - window.bottom + client.bottom};
            const RECT area{40, 30, 40 + hit.right, 30 + hit.bottom};
            EXPECT_EQ(link.MouseOver(dialog.Handle(), asked) != FALSE,
                      PtInRect(&area, point) != FALSE)
                << point.x << ", " << point.y;
        }
        DestroyWindow(control);
    }
}

TEST(LinkControl, CutsWhatIsTooLong) {
    const TestWindow dialog;
    const HWND control = dialog.Add(L"STATIC", L"", SS_LEFT, {0, 0, 100, 30});
    CLinkControl link;
    ASSERT_EQ(SubClass(link, control, std::string(3000, 't'), std::string(3000, 'l')), 1);
    EXPECT_EQ(link.GetLink(), std::string(2047, 'l'));
    EXPECT_EQ(link.GetLastHitRect().right,
              SizeOf(dialog.Handle(), std::string(511, 't').c_str()).cx);
    ASSERT_EQ(link.SubClass(control, nullptr, nullptr, blue), 1);
    EXPECT_STREQ(link.GetLink(), "");
    EXPECT_EQ(SubClass(link, reinterpret_cast<HWND>(-5), "a"), 0);
}

TEST(LinkControl, LeavesTheControlAsItWas) {
    const TestWindow dialog;
    const HWND control = dialog.Add(L"STATIC", L"plain", SS_LEFT, {0, 0, 100, 30});
    const WNDPROC own = ProcedureOf(control);
    auto link = std::make_unique<CLinkControl>();
    SubClass(*link, control, "a link");
    SubClass(*link, control, "a link");
    EXPECT_GT(BluePoints(control), 0);
    link = nullptr;
    EXPECT_EQ(ProcedureOf(control), own);
    EXPECT_EQ(BluePoints(control), 0);

    CLinkControl first;
    auto second = std::make_unique<CLinkControl>();
    SubClass(first, control, "first");
    SubClass(*second, control, "second");
    EXPECT_GT(BluePoints(control), 0) << "of two objects";
    second = nullptr;
    EXPECT_EQ(ProcedureOf(control), own);
    EXPECT_EQ(SendMessageW(control, WM_GETTEXTLENGTH, 0, 0), 5);
    first.Restore();

    // Another one subclasses it later, and stays.
    static WNDPROC below;
    const WNDPROC later = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        return CallWindowProcW(below, window, message, wParam, lParam);
    };
    link = std::make_unique<CLinkControl>();
    SubClass(*link, control, "a link");
    below = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(later)));
    link = nullptr;
    EXPECT_EQ(ProcedureOf(control), later);
    EXPECT_EQ(SendMessageW(control, WM_GETTEXTLENGTH, 0, 0), 5);
    EXPECT_EQ(BluePoints(control), 0);
    DestroyWindow(control);

    const HWND passing = dialog.Add(L"STATIC", L"", SS_LEFT, {0, 0, 100, 30});
    CLinkControl survivor;
    SubClass(survivor, passing, "a link");
    DestroyWindow(passing);
    EXPECT_EQ(survivor.MouseOver(dialog.Handle(), {1, 1}), FALSE);
    survivor.Restore();
}
