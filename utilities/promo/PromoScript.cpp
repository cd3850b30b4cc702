#include "utilities/promo/PromoScript.h"

#include "utilities/base/StoreCut.h"
#include "utilities/promo/PromoDocument.h"
#include "utilities/promo/PromoInternals.h"
#include "utilities/text/language/LibraryText.h"
#include "vtrfutls/FileNames.h"

#include <cstdlib>

using Internals = vtr::Internals<CPromoScript>;

vtr::PromoStyle Internals::Style(CPromoScript& script) {
    return {script.fontDescription, script.backgroundColor,
            script.textColor,       script.horizontal,
            script.vertical,        script.textFormat,
            script.marginPixels,    script.marginPercents,
            script.hostBackground,  script.hostBackgroundName,
            script.refreshPeriod,   script.transitionTime,
            script.effect,          script.transitionColor};
}

vtr::PromoPosition Internals::Position(CPromoScript& script) {
    return {script.currentScript, script.step, script.subStep, script.returnScript,
            script.returnStep};
}

vtr::PromoSequencer Internals::Sequencer(const CPromoScript& script) {
    return {script.document, {script.eventHandler, script.eventContext, script.handling}};
}

int Internals::Margin(const CPromoScript& script, PromoSide side, const RECT* area) {
    RECT client{};
    if (area == nullptr) {
        GetClientRect(script.outputWindow, &client);
        area = &client;
    }
    const bool isHorizontal = side == promoLeft || side == promoRight;
    return PromoMargin(script.marginPixels[side], script.marginPercents[side],
                       isHorizontal ? area->right : area->bottom);
}

void Internals::FreeResources(CPromoScript& script) {
    FreeField<MemoryDc>(script.offscreen);
    FreeField<BitmapHandle>(script.offscreenBitmap);
    script.offscreenSize = {};
    FreeField<FontHandle>(script.font);
    FreeField<BrushHandle>(script.backgroundBrush);
    script.brushColor = CLR_INVALID;
    FreeField<BrushHandle>(script.transitionBrush);
}

CPromoScript::CPromoScript() noexcept
    : outputWindow(nullptr), step(-1), subStep(-1), returnStep(-1), defaultWait(2000),
      stepWait(2000), clearPause(0), activeClearPause(0), mainTimer(0), refreshTimer(0),
      transitionTimer(0), eventHandler(nullptr), eventContext(nullptr), backgroundHandler(nullptr),
      backgroundContext(nullptr), sourceFile(), startScript(), currentScript(), displayText(),
      pending(), returnScript(), sourceBuffer(nullptr), sourceSize(0), offscreenBitmap(nullptr),
      offscreen(nullptr), previousProcedure(nullptr), font(nullptr), fontDescription(),
      madeDescription(), backgroundBrush(nullptr), backgroundColor(0), brushColor(CLR_INVALID),
      textColor(0), horizontal(0), vertical(0), textFormat(DT_WORDBREAK | DT_NOPREFIX),
      clearPausing(false), notify(false), lastCharacter(false), marginPixels(), marginPercents(),
      hostBackground(false), hostBackgroundName(), refreshPeriod(0), hostBackgroundStart(0),
      refreshCount(0), solidSourceReady(false), newFrameCaptured(false), description(nullptr),
      transitionStart(0), transitionTime(0), effect(0), transitionColor(0),
      transitionBrush(nullptr), subclassed(nullptr), offscreenSize(), blank(true), stopped(true),
      handling(nullptr) {
    Internals::Style(*this).Reset();
    char face[LF_FACESIZE] = "";
    vtr::LibraryText("DefaultPromoFont", face, sizeof face);
    vtr::SetPromoFace(fontDescription, face);
    fontDescription.lfCharSet = DEFAULT_CHARSET;
    fontDescription.lfQuality = PROOF_QUALITY;
    std::srand(GetTickCount());
}

CPromoScript::~CPromoScript() {
    if (handling != nullptr)
        *handling = true;
    Stop();
    Internals::Retire(*this);
    Internals::LeaveWindow(*this);
    Internals::FreeResources(*this);
    Internals::FreeFrames(*this);
    std::free(description);
}

void CPromoScript::SetOutputWindow(HWND window) noexcept {
    outputWindow = window;
}

void CPromoScript::SetSourceFile(const char* path) noexcept {
    if (!vtr::StoreWhole(path, sourceFile))
        sourceFile[0] = '\0';
}

void CPromoScript::SetSourceBuffer(const unsigned char* data, int size) noexcept {
    sourceBuffer = data;
    sourceSize = size;
}

void CPromoScript::SetStartScriptName(const char* name) noexcept {
    if (!vtr::StoreWhole(name, startScript))
        startScript[0] = '\0';
}

void CPromoScript::SetSpecialEventHandler(bool (*handler)(const char*, const char*, char*, int,
                                                          void*),
                                          void* context) noexcept {
    eventHandler = handler;
    eventContext = context;
}

void CPromoScript::SetOwnerDrawBackgroundHandler(void (*handler)(HDC, const RECT&, const char*,
                                                                 unsigned, unsigned, void*),
                                                 void* context) noexcept {
    backgroundHandler = handler;
    backgroundContext = context;
}

bool CPromoScript::Load() noexcept {
    if (handling != nullptr)
        return false;
    if (sourceBuffer != nullptr && sourceSize > 0) {
        if (!document.InitFromBuffer(sourceBuffer, static_cast<unsigned>(sourceSize), false))
            return false;
    } else if (!DoesFileExist(sourceFile) || !document.Init(sourceFile, false)) {
        return false;
    }
    displayText[0] = '\0';
    defaultWait = 2000;
    clearPause = 0;
    const vtr::PromoSection general(document, "general");
    general.Natural("wait", defaultWait);
    general.Natural("clear pause", clearPause);
    Internals::Style(*this).Read(document, "general", 0);
    return true;
}

bool CPromoScript::ScriptExists(const char* name) const noexcept {
    return Internals::Sequencer(*this).Exists(name);
}

const char* CPromoScript::CurrentScript() const noexcept {
    return currentScript;
}

int CPromoScript::CurrentStep() const noexcept {
    return step;
}

int CPromoScript::CurrentSubStep() const noexcept {
    return subStep;
}

int CPromoScript::LeftMargin(const RECT* area) const noexcept {
    return Internals::Margin(*this, vtr::promoLeft, area);
}

int CPromoScript::TopMargin(const RECT* area) const noexcept {
    return Internals::Margin(*this, vtr::promoTop, area);
}

int CPromoScript::RightMargin(const RECT* area) const noexcept {
    return Internals::Margin(*this, vtr::promoRight, area);
}

int CPromoScript::BottomMargin(const RECT* area) const noexcept {
    return Internals::Margin(*this, vtr::promoBottom, area);
}
