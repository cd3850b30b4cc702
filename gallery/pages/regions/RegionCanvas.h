#ifndef VTRUTILS_GALLERY_PAGES_REGIONS_REGIONCANVAS_H
#define VTRUTILS_GALLERY_PAGES_REGIONS_REGIONCANVAS_H

#include "gallery/widgets/Look.h"
#include "gallery/widgets/Window.h"
#include "utilities/containers/RectangleList.h"

#include <functional>

namespace gallery {

/// A region on squared paper, counted in its cells: dragging with the left button adds a rectangle,
/// with the right one subtracts it. Without a mouse, arrow keys move a frame, with Shift they move
/// its right and lower edges, Insert adds it and Delete subtracts it. One thread at a time.
class RegionCanvas : public Window {
public:
    enum class Change { added, subtracted };

    /// `whenChanged` hears of each change that the user makes. False, with `GetLastError`, when the
    /// window cannot be made.
    bool Create(HWND parent, int id, std::function<void(Change, const RECT&)> whenChanged);
    void SetLook(const Look& look);

    RectangleList& Region() { return region; }
    /// Shows the region as it is now.
    void Redraw() const { InvalidateRect(Handle(), /*lpRect=*/nullptr, /*bErase=*/FALSE); }

    void SetFrame(const RECT& cells);
    void AddFrame() { Apply(Change::added); }

    /// Takes back what is being dragged.
    void StopDragging();

protected:
    void Sized() override { Redraw(); }
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void StartDragging(Change change, POINT place);
    void DragTo(POINT place);
    void FinishDragging(Change change);
    bool PressKey(WPARAM key);
    void MoveFrame(int dx, int dy);
    void SizeFrame(int dx, int dy);
    void Apply(Change change);

    SIZE Cells() const;
    POINT CellAt(POINT place) const;
    RECT PixelsOf(const RECT& cells) const;
    void Paint();
    void PaintGrid(HDC dc, const RECT& area) const;
    void PaintFrame(HDC dc, bool focused) const;

    RectangleList region;
    std::function<void(Change, const RECT&)> changed;
    int cell = 1; ///< pixels
    int line = 1;
    RECT frame{0, 0, 1, 1};
    bool dragging = false;
    Change drag = Change::added;
    POINT dragStart{}; ///< a cell
};

} // namespace gallery

#endif
