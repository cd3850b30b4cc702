#include "gallery/pages/promo/Stage.h"

#include "gallery/pages/promo/StageBackground.h"
#include "gallery/pages/promo/StageEvents.h"
#include "gallery/widgets/Controls.h"

#include <commctrl.h>

namespace gallery {

bool Stage::Create(HWND parent, int id) {
    // A text control would paint itself over the player's picture whenever it is given a font.
    window = MakeControl(parent, WC_STATICW, L"", WS_BORDER | SS_GRAYRECT, id);
    player.SetOutputWindow(window);
    player.SetSpecialEventHandler(RewriteEventText, /*context=*/nullptr);
    player.SetOwnerDrawBackgroundHandler(DrawBackground, this);
    return window != nullptr;
}

Stage::Outcome Stage::Play(const std::string& newDocument, const std::string& script) {
    player.Stop();
    stillAt.reset();
    document = newDocument;
    player.SetSourceBuffer(reinterpret_cast<const unsigned char*>(document.data()),
                           static_cast<int>(document.size()));
    player.SetStartScriptName(script.c_str());
    if (!player.Load())
        return Outcome::refused;
    // A script exists also when its first step jumps, but a jump is only followed from another
    // step.
    if (!player.ScriptExists(script.c_str()) || TextAt(document, {script, 1, 1}).empty())
        return Outcome::noFirstText;
    return player.Go() ? Outcome::plays : Outcome::failed;
}

ScriptPosition Stage::Position() const {
    return {player.CurrentScript(), player.CurrentStep(), player.CurrentSubStep()};
}

void Stage::DrawBackground(HDC dc, const RECT& area, const char* name, unsigned elapsed,
                           unsigned /*refreshes*/, void* self) {
    DrawStageBackground(dc, area, name, static_cast<Stage*>(self)->stillAt.value_or(elapsed));
}

void Stage::Paint() const {
    InvalidateRect(window, /*lpRect=*/nullptr, /*bErase=*/FALSE);
    UpdateWindow(window);
}

bool Stage::StopWithin(const std::string& newDocument, const std::string& script,
                       DWORD milliseconds, DWORD percent) {
    constexpr int attempts = 20;
    const DWORD due = (milliseconds * percent + 99) / 100;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (Play(newDocument, script) != Outcome::plays)
            return false;
        stillAt = 4000;
        Paint();
        player.Resume();
        // The player looks at its clock within the first and within the second paint.
        const DWORD before = GetTickCount();
        Paint();
        const DWORD begun = GetTickCount();
        while (GetTickCount() - begun < due)
            Sleep(1);
        const DWORD least = GetTickCount() - begun;
        Paint();
        const DWORD most = GetTickCount() - before;
        player.Stop();
        if (least * 100 / milliseconds == percent && most * 100 / milliseconds == percent)
            return true;
    }
    return false;
}

} // namespace gallery
