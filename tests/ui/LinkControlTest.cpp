#include "utilities/ui/LinkControl.h"

#include "common/Handles.h"
#include "tests/support/TestWindow.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <tuple>

namespace {

constexpr COLORREF blue = RGB(0, 0, 255);

SIZE SizeOf(HWND parent, const std::string& text) {
    const vtr::WindowDc dc(GetDC(parent));
    SIZE size{};
    GetTextExtentPoint32A(dc.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    return size;
}

LONG_PTR ProcedureOf(HWND window) {
    return GetWindowLongPtrW(window, GWLP_WNDPROC);
}

int SubClass(CLinkControl& link, HWND control, std::string text, std::string target = "http://x") {
    return link.SubClass(control, text.data(), target.data(), blue);
}

/// How many points of a row have the colour of the link.
int BluePoints(HWND control, int row) {
    UpdateWindow(control);
    const vtr::WindowDc dc(GetDC(control));
    RECT client{};
    GetClientRect(control, &client);
    int count = 0;
    for (int x = 0; x < client.right; ++x)
        count += GetPixel(dc.Get(), x, row) == blue ? 1 : 0;
    return count;
}

/// A procedure of another one that subclasses the control as well, and what it was before.
WNDPROC below = nullptr;
LRESULT CALLBACK Later(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(below, window, message, wParam, lParam);
}

} // namespace

TEST(LinkControl, FindsAndPaintsItsTextByTheStyle) {
    const TestWindow dialog;
    for (const auto& [style, width, text] : {std::tuple(DWORD{SS_LEFT}, 200, std::string("link")),
                                             {SS_RIGHT, 200, "link"},
                                             {SS_CENTER, 201, "link"},
                                             {SS_CENTER, 20, "a long link"},
                                             {SS_RIGHT, 50, ""}}) {
        SCOPED_TRACE(testing::Message() << text << ", style " << style);
        const TestWindow control(L"STATIC", WS_CHILD | WS_VISIBLE | style, {40, 30, 40 + width, 70},
                                 dialog);
        CLinkControl link;
        ASSERT_EQ(SubClass(link, control, text), 1);
        const SIZE size = SizeOf(dialog, text);
        const long room = width - size.cx;
        const long left = style == SS_LEFT ? 0 : style == SS_RIGHT ? room : room / 2;
        const RECT hit = link.GetLastHitRect();
        EXPECT_EQ(hit, (RECT{left, 0, left + size.cx, size.cy + 7}));
        const long seen = std::min<long>(hit.right, width) - std::max(left, 0L);
        EXPECT_EQ(BluePoints(control, static_cast<int>(size.cy)), seen) << "underline";

        // The extents of the text count from the control's own corner, wherever the text is.
        const RECT area{40, 30, 40 + hit.right, 30 + hit.bottom};
        for (const POINT point :
             {POINT{39, 35}, POINT{40, 30}, POINT{area.right - 1, 35}, POINT{area.right, 35},
              POINT{40, 29}, POINT{40, area.bottom - 1}, POINT{40, area.bottom}}) {
            EXPECT_EQ(link.MouseOver(dialog, point) != FALSE, PtInRect(&area, point) != FALSE)
                << point.x << ", " << point.y;
        }
    }
}

TEST(LinkControl, CutsWhatIsTooLong) {
    const TestWindow dialog;
    const TestWindow control(L"STATIC", WS_CHILD | SS_LEFT, {0, 0, 100, 30}, dialog);
    CLinkControl link;
    ASSERT_EQ(SubClass(link, control, std::string(3000, 't'), std::string(3000, 'l')), 1);
    EXPECT_EQ(link.GetLink(), std::string(2047, 'l'));
    EXPECT_EQ(link.GetLastHitRect().right, SizeOf(dialog, std::string(511, 't')).cx);
    ASSERT_EQ(link.SubClass(control, nullptr, nullptr, blue), 1);
    EXPECT_STREQ(link.GetLink(), "");
    EXPECT_EQ(SubClass(link, reinterpret_cast<HWND>(-5), "a"), 0);
}

TEST(LinkControl, LeavesTheControlAsItWas) {
    const TestWindow dialog;
    const TestWindow control(L"STATIC", WS_CHILD | WS_VISIBLE, {0, 0, 100, 30}, dialog);
    const int underline = static_cast<int>(SizeOf(dialog, "a link").cy);
    const LONG_PTR own = ProcedureOf(control);
    auto link = std::make_unique<CLinkControl>();
    SubClass(*link, control, "a link");
    SubClass(*link, control, "a link");
    EXPECT_GT(BluePoints(control, underline), 0);
    CLinkControl second;
    SubClass(second, control, "another");
    EXPECT_GT(BluePoints(control, underline), 0) << "of two objects";
    link = nullptr;
    second.Restore();
    EXPECT_EQ(ProcedureOf(control), own);
    EXPECT_EQ(BluePoints(control, underline), 0);

    // Another one subclasses it later, and stays.
    SubClass(second, control, "a link");
    below = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(control, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Later)));
    second.Restore();
    EXPECT_EQ(ProcedureOf(control), reinterpret_cast<LONG_PTR>(&Later));
    EXPECT_EQ(BluePoints(control, underline), 0);
    // The procedure that had to stay serves the next object, and is not put in twice.
    CLinkControl third;
    SubClass(third, control, "a link");
    EXPECT_GT(BluePoints(control, underline), 0);
    SendMessageW(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"text"));
    third.Restore();

    const TestWindow passing(L"STATIC", WS_CHILD, {0, 0, 100, 30}, dialog);
    SubClass(second, passing, "a link");
    DestroyWindow(passing);
    EXPECT_EQ(second.MouseOver(dialog, {1, 1}), FALSE);
}
