#include "gallery/widgets/Rows.h"

#include <algorithm>
#include <iterator>

namespace gallery {

Rows::Rows(const Look& newLook, int newWidth, int newHeight, int expected)
    : look(newLook), width(newWidth), bottom(newHeight), placement(expected) {}

void Rows::Put(End end, const Field& row) {
    PutField(row, 0, TakeRow(end), width);
}

void Rows::Put(End end, const Field& left, int part, const Field& right) {
    const int y = TakeRow(end);
    const int leftWidth = width * part / 100;
    PutField(left, 0, y, leftWidth - Gap());
    PutField(right, leftWidth + Gap(), y, width - leftWidth - Gap());
}

void Rows::PutText(End end, HWND text, std::initializer_list<HWND> buttons) {
    int right = width;
    for (const HWND button : buttons)
        right -= ButtonWidth(button) + Gap();
    const int textHeight = look.WrappedHeight(TextOf(text), right - Gap()) + look.Pixels(2);
    const int height = buttons.size() > 0 ? std::max(textHeight, look.Row()) : textHeight;
    const int y = end == End::top ? top : bottom - height;
    placement.Put(text, 0, y, right, height);
    if (buttons.size() > 0)
        PutField({.buttons = buttons}, right, y, width - right);
    if (end == End::top)
        top += height + Gap();
    else
        bottom -= height + Gap();
}

void Rows::AlignButtons(std::initializer_list<HWND> buttons) {
    for (const HWND button : buttons)
        leastButton = ButtonWidth(button);
}

int Rows::ButtonWidth(HWND button) const {
    return std::max(leastButton, look.ButtonWidth(button));
}

int Rows::TakeRow(End end) {
    if (end == End::top) {
        top += look.Row() + Gap();
        return top - look.Row() - Gap();
    }
    bottom -= look.Row() + Gap();
    return bottom + Gap();
}

void Rows::PutField(const Field& row, int x, int y, int room) {
    const int height = look.Row();
    int right = x + room;
    if (row.label != nullptr) {
        const int labelWidth = std::max(row.labelWidth, look.TextWidth(row.label));
        placement.Put(row.label, x, y, labelWidth, height);
        x += labelWidth + Gap();
    }
    for (auto button = std::rbegin(row.buttons); button != std::rend(row.buttons); ++button) {
        const int buttonWidth = ButtonWidth(*button);
        placement.Put(*button, right - buttonWidth, y, buttonWidth, height);
        right -= buttonWidth + Gap();
    }
    if (row.field != nullptr)
        placement.Put(row.field, x, y + (height - look.Field()) / 2, right - x, look.Field());
    if (row.link != nullptr)
        placement.Put(row.link, x, y + (height - look.Line()) / 2, right - x,
                      look.Line() + look.Pixels(2));
}

} // namespace gallery
