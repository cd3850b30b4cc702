#ifndef VTRUTILS_GALLERY_WIDGETS_ROWS_H
#define VTRUTILS_GALLERY_WIDGETS_ROWS_H

#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Look.h"

#include <initializer_list>

namespace gallery {

/// Places the rows of a page, from its top and from its bottom. One thread at a time.
class Rows {
public:
    Rows(const Look& newLook, int newWidth, int newHeight, int expected);

    /// All buttons become as wide as the widest of these, so that those of several rows stand below
    /// each other.
    void AlignButtons(std::initializer_list<HWND> buttons);

    enum class End { top, bottom };

    /// A label and a field, or a link, that takes the room left, each null for none, and buttons at
    /// the right-hand end. The label takes at least this width, so that the fields of several rows
    /// stand below each other.
    struct Field {
        HWND label = nullptr;
        HWND field = nullptr;
        std::initializer_list<HWND> buttons = {};
        int labelWidth = 0;
        HWND link = nullptr; ///< its text is at its top, and is to stand as high as the label's
    };
    void Put(End end, const Field& row);
    void PutAt(int y, const Field& row) { PutField(row, 0, y, width); }
    /// Two in one row; the left one takes `part` percent of the width.
    void Put(End end, const Field& left, int part, const Field& right);
    /// A text of one line or more (`MakeWrappedText`), with buttons at its right-hand end.
    void PutText(End end, HWND text, std::initializer_list<HWND> buttons = {});

    /// Leaves room below the rows at the top, for what the page places itself.
    void Skip(int height) { top += height; }

    /// What is left between the rows.
    int Top() const { return top; }
    int Room() const { return bottom - top; }
    Placement& Places() { return placement; }

    int Gap() const { return look.Pixels(8); }

private:
    int ButtonWidth(HWND button) const;
    int TakeRow(End end);
    void PutField(const Field& row, int x, int y, int room);

    const Look& look;
    int width;
    int leastButton = 0;
    int top = 0;
    int bottom;
    Placement placement;
};

} // namespace gallery

#endif
