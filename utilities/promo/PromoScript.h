#ifndef VTRUTILS_PROMO_PROMOSCRIPT_H
#define VTRUTILS_PROMO_PROMOSCRIPT_H

#include "utilities/Export.h"
#include "utilities/text/ini/IniFileReader.h"

#include <windows.h>

namespace vtr {
/// A bitmap of 24 bits a pixel and where its pixels are.
struct PromoFrame {
    HBITMAP bitmap = nullptr;        ///< null: none
    unsigned char* pixels = nullptr; ///< of the bitmap, which frees them
};
} // namespace vtr

/// Plays a script of text messages in a window of the host: one after another, with waits, styles,
/// random alternatives, jumps between named scripts, transitions, and questions to the host.
///
/// A script is an INI document. Section "NAME.1" is the first step of the script NAME; its keys
/// "text.1", "text.2", ... are shown one after another, then follows "NAME.2". Section "general"
/// has the base style and the waits, sections "style.NAME" have styles that steps name. Any
/// document plays or ends without harm.
///
/// The window is subclassed by `Go` and painted by this object until one of the two is destroyed;
/// `Go` sets its user data to this object. Only the object that called `Go` last has timers; on the
/// same window it takes the place of the one before. A window destroyed first ends the playback.
///
/// Handlers are called from within `Go`, `Resume`, `ScriptExists`, and the dispatch of timers and
/// paint messages. A handler may call `Stop`, the setters and the queries, destroy the window, and
/// destroy this object. In a handler `Go` and `Load` do nothing and return false, and `Resume` does
/// nothing; `ScriptExists` does not ask the handler again. While a handler dispatches messages, no
/// frame is painted and timers change nothing. `Stop` in a handler starts no timer any more; a
/// message that is being fetched still appears, and a transition that is being painted stands.
/// Thread-safety: one thread at a time: that of the window.
class VTRUTILS_API CPromoScript {
public:
    /// Seeds `rand` with the tick count.
    CPromoScript() noexcept;
    CPromoScript(const CPromoScript&) = delete;
    CPromoScript& operator=(const CPromoScript&) = delete;
    /// Stops the timers and gives the window its procedure back. Where somebody subclassed the
    /// window later, the procedure of the library stays and only passes on.
    ~CPromoScript();

    /// The window of the next `Go`. It is not owned.
    void SetOutputWindow(HWND window) noexcept;

    /// Null and paths of 260 bytes or more leave no path.
    void SetSourceFile(const char* path) noexcept;

    /// A script in memory, which comes before the file unless null or of a size below 1. It is not
    /// copied, and must stay valid for each `Load` and `Go`.
    void SetSourceBuffer(const unsigned char* data, int size) noexcept;

    /// The script that `Go` starts. Null and names of 260 bytes or more leave none.
    void SetStartScriptName(const char* name) noexcept;

    /// `handler` is called when a text with a "special event" is fetched: with the event's name,
    /// the text ("" for one of 520 bytes or more), and the text again in a buffer of `outSize`
    /// bytes, where it may be rewritten. False means that there is no such text. Null removes the
    /// handler.
    void SetSpecialEventHandler(bool (*handler)(const char* eventName, const char* text,
                                                char* outText, int outSize, void* context),
                                void* context) noexcept;

    /// `handler` is called on every paint of a message with "owner draw bg": the background is
    /// filled, and it paints into `dc` over that. `elapsedMs` counts from the first paint of this
    /// background; `refreshCount` counts the repaints that "owner draw bg refresh" asked for. What
    /// it selects or sets in `dc` is undone. Null removes the handler.
    void SetOwnerDrawBackgroundHandler(void (*handler)(HDC dc, const RECT& clientRect,
                                                       const char* name, unsigned elapsedMs,
                                                       unsigned refreshCount, void* context),
                                       void* context) noexcept;

    /// Reads the document and its section "general". False for a missing, unreadable or refused
    /// document; settings stay as they were then.
    bool Load() noexcept;

    /// Loads the document and plays from step 1 of the start script. False, with nothing playing,
    /// when `Load` fails, the window is gone or has no client area, there is no start script, or
    /// memory or GDI objects run out. True also for a start script without texts: nothing is shown.
    bool Go() noexcept;

    /// Freezes: the window keeps its picture, and no timer runs until `Go` or `Resume`.
    void Stop() noexcept;

    /// Shows the next sub-step at once, whatever is shown now. Does nothing before `Go` and after
    /// the window was destroyed or taken by another object. Starts no timer when another object
    /// called `Go` later.
    void Resume() noexcept;

    /// Whether the document has a text, or a jump, in step 1 of that script. False for null, "" and
    /// names of more than 260 bytes. May call the special-event handler.
    bool ScriptExists(const char* name) const noexcept;

    const char* CurrentScript() const noexcept; ///< "" before `Go`
    int CurrentStep() const noexcept;           ///< from 1; -1 before `Go`
    int CurrentSubStep() const noexcept;        ///< from 1; -1 before `Go`

    /// In pixels: the margin, or the percentage of the rectangle's right (for left and right) or
    /// bottom coordinate, whichever is larger. Null stands for the window's client area.
    int LeftMargin(const RECT* area) const noexcept;
    int TopMargin(const RECT* area) const noexcept;
    int RightMargin(const RECT* area) const noexcept;
    int BottomMargin(const RECT* area) const noexcept;

    /// What a timer of this object does; nothing for the id of any other.
    void OnTimer(UINT_PTR id) noexcept;

    /// Paints one frame into a context as large as the client area.
    void OnPaint(HDC offscreen, HWND window, RECT client) noexcept;

    /// The window procedure of the subclassed window.
    LRESULT StaticWndFunc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

private:
    friend struct vtr::Internals<CPromoScript>;

    HWND outputWindow;
    mutable CIniFileReader document; ///< look-ups change what it remembers
    int step;
    int subStep;
    int returnStep;  ///< -1: none
    int defaultWait; ///< times are in milliseconds
    int stepWait;
    int clearPause;
    int activeClearPause;
    UINT_PTR mainTimer; ///< 0: not running, as all timers
    UINT_PTR refreshTimer;
    UINT_PTR transitionTimer;
    bool (*eventHandler)(const char*, const char*, char*, int, void*);
    void* eventContext;
    void (*backgroundHandler)(HDC, const RECT&, const char*, unsigned, unsigned, void*);
    void* backgroundContext;
    char sourceFile[260];
    char startScript[260];
    char currentScript[260];
    char displayText[2048];
    char pending[2048];     ///< characters that a transition has still to reveal
    char returnScript[260]; ///< "": none
    const unsigned char* sourceBuffer;
    int sourceSize;

    HBITMAP offscreenBitmap;
    HDC offscreen;
    WNDPROC previousProcedure;
    HFONT font;
    LOGFONTA fontDescription;
    LOGFONTA madeDescription; ///< that of `font`
    HBRUSH backgroundBrush;
    COLORREF backgroundColor;
    COLORREF brushColor; ///< CLR_INVALID: no brush
    COLORREF textColor;
    int horizontal; ///< 0, 1, 2: left, center, right
    int vertical;   ///< 0, 1, 2: top, center, bottom
    UINT textFormat;
    bool clearPausing;
    bool notify;         ///< the sub-step waits for `Resume`
    bool lastCharacter;  ///< the last pending character was shown, its wait is to come
    int marginPixels[4]; ///< left, top, right, bottom
    int marginPercents[4];

    bool hostBackground;
    char hostBackgroundName[260];
    int refreshPeriod;
    DWORD hostBackgroundStart; ///< a tick count; 0: not painted yet
    int refreshCount;

    bool solidSourceReady;
    bool newFrameCaptured;
    BITMAPINFO* description; ///< of the frames; their size, 0 when there are none
    vtr::PromoFrame sourceFrame;
    vtr::PromoFrame newFrame;
    vtr::PromoFrame outputFrame;
    DWORD transitionStart; ///< a tick count; 0: not begun
    int transitionTime;    ///< 0 or less: no transition, or it is over
    int effect;
    COLORREF transitionColor;
    HBRUSH transitionBrush; ///< fills the source of effects that begin with a solid colour

    HWND subclassed; ///< null: none
    SIZE offscreenSize;
    bool blank;             ///< nothing was painted off-screen yet
    bool stopped;           ///< no timer may start
    mutable bool* handling; ///< set to true by the destructor; null unless a handler runs
};

#endif
