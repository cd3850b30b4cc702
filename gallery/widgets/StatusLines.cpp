#include "gallery/widgets/StatusLines.h"

#include "gallery/widgets/Drawing.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr int mostLines = 4;

COLORREF ErrorGround() {
    return Mix(RGB(208, 0, 0), GetSysColor(COLOR_BTNFACE), /*part=*/3);
}

} // namespace

bool StatusLines::Create(HWND parent, int messageId, int stateId) {
    message.control = MakeWrappedText(parent, messageId);
    state.control = MakeWrappedText(parent, stateId);
    return message.control != nullptr && state.control != nullptr;
}

bool StatusLines::Show(Line& line, const std::wstring& text, Tone tone) {
    const bool changed = TextOf(line.control) != text;
    if (line.tone != tone)
        InvalidateRect(line.control, nullptr, /*bErase=*/TRUE);
    line.tone = tone;
    SetText(line.control, text);
    return changed;
}

int StatusLines::Arrange(const Look& look, int width, int bottom) {
    const int gap = look.Pixels(8);
    const int padding = look.Pixels(8);
    const std::wstring messageText = TextOf(message.control);
    const std::wstring stateText = TextOf(state.control);
    const int stateWidth = stateText.empty() ? 0 : look.TextWidth(stateText) + padding;
    const int messageWidth = messageText.empty() ? 0 : look.TextWidth(messageText) + padding;
    const auto heightOf = [&](const std::wstring& text) {
        return std::min(look.WrappedHeight(text, width - padding), mostLines * look.Line()) + gap;
    };
    Placement places(/*expected=*/2);
    if (messageWidth + gap + stateWidth <= width) {
        places.Put(message.control, 0, bottom - look.Row(), width - stateWidth - gap, look.Row());
        places.Put(state.control, width - stateWidth, bottom - look.Row(), stateWidth, look.Row());
        return look.Row();
    }
    const int stateHeight = stateText.empty() ? 0 : heightOf(stateText);
    const int messageHeight = messageText.empty() ? 0 : heightOf(messageText);
    places.Put(state.control, 0, bottom - stateHeight, width, stateHeight);
    places.Put(message.control, 0, bottom - stateHeight - messageHeight, width, messageHeight);
    return stateHeight + messageHeight;
}

bool StatusLines::Draw(const Look& look, const DRAWITEMSTRUCT& item) const {
    for (const Line& line : {message, state}) {
        if (item.hwndItem != line.control)
            continue;
        const std::wstring text = TextOf(line.control);
        const bool error = line.tone == Tone::error && !text.empty();
        const COLORREF ground = error ? ErrorGround() : GetSysColor(COLOR_BTNFACE);
        DrawWrapped(item, look, text, ground);
        return true;
    }
    return false;
}

} // namespace gallery
