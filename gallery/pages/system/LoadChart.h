#ifndef VTRUTILS_GALLERY_PAGES_SYSTEM_LOADCHART_H
#define VTRUTILS_GALLERY_PAGES_SYSTEM_LOADCHART_H

#include "gallery/pages/system/LoadHistory.h"
#include "gallery/widgets/Look.h"
#include "gallery/widgets/Window.h"

#include <string>
#include <vector>

namespace gallery {

/// Draws the load of the last minute: percent upwards, time to the right. One thread at a time.
class LoadChart : public Window {
public:
    struct Curve {
        LoadHistory history;
        std::wstring legend;
    };
    /// The first one is drawn above the others.
    enum CurveIndex { machine, process, curveCount };

    /// False, with `GetLastError`, when the window cannot be made.
    bool Create(HWND parent, int id);
    void SetLook(const Look& newLook);

    Curve& operator[](CurveIndex index) { return curves[index]; }
    void Clear();

    /// Shows this text in place of the curves, unless it is "".
    void SetNote(const std::wstring& newNote);
    /// Shows the curves as they are now, with this time at the right-hand edge.
    void Show(long long newNow);

protected:
    void Sized() override { Redraw(); }
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Redraw() const { InvalidateRect(Handle(), /*lpRect=*/nullptr, /*bErase=*/FALSE); }
    void Paint() const;
    RECT Plot(const RECT& area) const;
    void PaintPercents(HDC dc, const RECT& plot) const;
    void PaintTimes(HDC dc, const RECT& plot) const;
    void PaintCurve(HDC dc, const RECT& plot, CurveIndex index) const;
    void PaintLegends(HDC dc, const RECT& plot) const;

    Curve curves[curveCount];
    std::wstring note;
    const Look* look = nullptr;
    long long now = 0;
};

} // namespace gallery

#endif
