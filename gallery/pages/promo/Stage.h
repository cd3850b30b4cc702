#ifndef VTRUTILS_GALLERY_PAGES_PROMO_STAGE_H
#define VTRUTILS_GALLERY_PAGES_PROMO_STAGE_H

#include "gallery/pages/promo/ScriptSteps.h"
#include "utilities/promo/PromoScript.h"

#include <optional>
#include <string>

namespace gallery {

/// A window in which scripts play, with the gallery's backgrounds and events. One thread at a time.
class Stage {
public:
    /// False, with `GetLastError`, when the window cannot be made.
    bool Create(HWND parent, int id);
    HWND Handle() const { return window; }

    enum class Outcome { plays, refused, noFirstText, failed };
    /// Plays the script of that name from its first step. What played before has ended, whatever
    /// the outcome.
    Outcome Play(const std::string& newDocument, const std::string& script);
    void Stop() { player.Stop(); }
    /// Goes on with the next text.
    void Resume() { player.Resume(); }

    /// What is shown, or was last.
    ScriptPosition Position() const;

    /// Plays the script, goes on to its second text, which has an effect that takes `milliseconds`,
    /// and stops when exactly `percent` of that time are over. False when the thread was never
    /// there in that moment, however often this was tried.
    bool StopWithin(const std::string& newDocument, const std::string& script, DWORD milliseconds,
                    DWORD percent);

private:
    static void DrawBackground(HDC dc, const RECT& area, const char* name, unsigned elapsed,
                               unsigned refreshes, void* self);
    void Paint() const;

    HWND window = nullptr;
    std::string document;
    std::optional<unsigned> stillAt; ///< the time of a background that stands still
    CPromoScript player;
};

} // namespace gallery

#endif
