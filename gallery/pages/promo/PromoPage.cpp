#include "gallery/pages/promo/PromoPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/promo/EffectChoice.h"
#include "gallery/pages/promo/ScriptSteps.h"
#include "gallery/pages/promo/ShippedScript.h"
#include "gallery/pages/promo/Stage.h"
#include "gallery/pages/promo/StepList.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"

#include <algorithm>
#include <commctrl.h>

namespace gallery {

namespace {

constexpr UINT_PTR followTimer = 1;
constexpr UINT followPeriod = 100;

/// Of the room for the stage, in percent.
constexpr int stageSizes[] = {100, 80, 60, 40};

class PromoPage final : public Page {
public:
    void Command(int id, int notification) override;
    void Shown() override;
    void TakeFocus() override { SetFocus(play); }
    bool ShowExample() override;
    bool Offers(int command) const override { return command == ID_EDIT || Page::Offers(command); }

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool MakeControls() override;
    bool MakeStageControls();
    bool MakeScriptControls();
    void Retext() override;
    void Arrange(int width, int height) override;
    void PlaceStage(Placement& places, const RECT& room) const;
    void Noticed(const NMHDR& header) override;

    void Renew();
    void Play();
    void Stop();
    void Resume();
    void Try();
    void Leave();
    void ResizeStage();
    /// False, with the user told, when the code page lacks a character.
    bool TakeScript(std::string& document);
    bool StepsFit(const std::string& document);
    void Report(Stage::Outcome outcome);

    /// Where the text on the stage stands in the script of the user.
    ScriptPosition Position() const;
    void Follow();
    void ShowNext();
    void ShowPosition();
    void ScrollToStep();
    void ShowSizes();

    Stage stage;
    std::wstring shipped; ///< the script of the language as it came
    std::string played;   ///< the script of the user that was played last
    bool stale = true;    ///< the language is another than that of what is on the stage
    bool playing = false;
    bool tries = false; ///< an effect is tried on what is at `position`
    ScriptPosition position;

    HWND sizeLabel = nullptr;
    HWND size = nullptr;
    HWND play = nullptr;
    HWND stop = nullptr;
    HWND resume = nullptr;
    HWND effectLabel = nullptr;
    EffectChoice effects;
    HWND tryEffect = nullptr;
    HWND stepsLabel = nullptr;
    StepList steps;
    HWND scriptLabel = nullptr;
    HWND script = nullptr;
};

bool PromoPage::MakeControls() {
    if (!MakeStageControls() || !MakeScriptControls())
        return false;
    ShowSizes();
    return true;
}

bool PromoPage::MakeStageControls() {
    sizeLabel = AddLabel("StageSizeLabel", ID_PROMO_SIZE_LABEL);
    size = MakeChoice(Handle(), ID_PROMO_SIZE);
    play = AddButton("PlayScript", ID_PLAY, "PlayScriptTip");
    stop = AddButton("StopScript", ID_PROMO_STOP);
    resume = AddButton("ResumeScript", ID_RESUME, "ResumeScriptTip");
    effectLabel = AddLabel("EffectLabel", ID_PROMO_EFFECT_LABEL);
    if (!effects.Create(Handle()))
        return false;
    tryEffect = AddButton("TryEffect", ID_TRY, "TryEffectTip");
    return stage.Create(Handle(), ID_PROMO_STAGE);
}

bool PromoPage::MakeScriptControls() {
    stepsLabel = AddLabel("ScriptStepsLabel", ID_PROMO_STEPS_LABEL);
    const auto cell = [this](int row, int column) { return steps.Cell(row, column); };
    if (!AddList(steps.list, "ScriptSteps", ID_PROMO_STEPS, ListView::Titles::shown, cell))
        return false;
    steps.AddColumns();
    scriptLabel = AddLabel("ScriptLabel", ID_PROMO_SCRIPT_LABEL);
    script = MakeEditor(Handle(), ID_PROMO_SCRIPT);
    return script != nullptr;
}

void PromoPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/16);
    page.AlignButtons({play, stop, resume, tryEffect});
    const int labels = std::max(Sizes().TextWidth(sizeLabel), Sizes().TextWidth(effectLabel));
    page.Put(
        End::top,
        {.label = sizeLabel, .field = size, .buttons = {play, stop, resume}, .labelWidth = labels});
    page.Put(End::top, {.label = effectLabel, .field = effects.Box(), .labelWidth = labels}, 40,
             {.label = effects.TimeLabel(),
              .field = effects.Slider(),
              .buttons = {tryEffect},
              .labelWidth = effects.LabelWidth(Sizes())});
    const int room = page.Room() - Sizes().Row() - page.Gap();
    const int stageHeight = room * 11 / 20;
    PlaceStage(page.Places(), {0, page.Top(), width, page.Top() + stageHeight});
    const int labelTop = page.Top() + stageHeight + page.Gap() / 2;
    const int listTop = labelTop + Sizes().Row();
    const int listWidth = width * 2 / 5;
    const int listHeight = page.Top() + page.Room() - listTop;
    const int left = listWidth + page.Gap();
    page.Places().Put(stepsLabel, 0, labelTop, listWidth, Sizes().Row());
    page.Places().Put(steps.list.Handle(), 0, listTop, listWidth, listHeight);
    page.Places().Put(scriptLabel, left, labelTop, width - left, Sizes().Row());
    page.Places().Put(script, left, listTop, width - left, listHeight);
    steps.SetWidths(Sizes(), listWidth);
}

void PromoPage::PlaceStage(Placement& places, const RECT& room) const {
    const int percent = stageSizes[std::max(Chosen(size), 0)];
    const int width = MulDiv(room.right - room.left, percent, 100);
    const int height = MulDiv(room.bottom - room.top, percent, 100);
    places.Put(stage.Handle(), (room.left + room.right - width) / 2,
               (room.top + room.bottom - height) / 2, width, height);
}

void PromoPage::Retext() {
    ShowSizes();
    effects.ShowTime();
    stale = true;
    if (IsWindowVisible(Handle()))
        Renew();
}

void PromoPage::Shown() {
    if (stale)
        return Renew();
    if (playing && tries)
        Try();
    else if (playing && WaitsForResume(played, position))
        ShowPosition();
    else if (playing)
        stage.Resume();
}

/// What was played was in the code page of another language: the script begins anew, and if the
/// user has not changed it, as it comes with this language.
void PromoPage::Renew() {
    stale = false;
    const bool stopped = position.step > 0 && !playing;
    if (TextOf(script) == shipped) {
        SetText(script, ShippedScript());
        shipped = TextOf(script);
    }
    Play();
    if (stopped)
        Stop();
    if (shipped.empty())
        Warn(Text("NoShippedScript", {Widen(ShippedScriptPath().c_str())}));
}

/// Nothing plays while another page is shown.
void PromoPage::Leave() {
    KillTimer(Handle(), followTimer);
    stage.Stop();
}

LRESULT PromoPage::OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) {
    switch (kind) {
    case WM_SHOWWINDOW:
        if (wParam != FALSE)
            SetTimer(Handle(), followTimer, followPeriod, /*lpTimerFunc=*/nullptr);
        else
            Leave();
        break;
    case WM_TIMER:
        Follow();
        return 0;
    case WM_HSCROLL:
        effects.ShowTime();
        return 0;
    default:
        break;
    }
    return Page::OnMessage(kind, wParam, lParam);
}

void PromoPage::Command(int id, int notification) {
    switch (id) {
    case ID_PLAY:
        return Play();
    case ID_PROMO_STOP:
    case IDCANCEL:
        return Stop();
    case ID_RESUME:
        return Resume();
    case ID_TRY:
        return Try();
    case ID_EDIT:
        SetFocus(script);
        return;
    case ID_PROMO_EFFECT:
        if (notification == CBN_SELCHANGE)
            Try();
        return;
    case ID_PROMO_SIZE:
        if (notification == CBN_SELCHANGE)
            ResizeStage();
        return;
    default:
        return;
    }
}

void PromoPage::ResizeStage() {
    Rearrange();
    RECT area{};
    GetClientRect(stage.Handle(), &area);
    Tell(Text("StageSize", {std::to_wstring(area.right), std::to_wstring(area.bottom)}));
}

void PromoPage::Noticed(const NMHDR& header) {
    // The list follows the stage, but for the user who walks through it.
    if (header.hwndFrom == steps.list.Handle() && ListView::SelectionMoved(header) &&
        GetFocus() == steps.list.Handle())
        ScrollToStep();
}

bool PromoPage::TakeScript(std::string& document) {
    if (Narrow(TextOf(script), document))
        return true;
    Warn(Text("ScriptNotNarrow"));
    return false;
}

/// Shows the steps; tells what is wrong when there are none.
bool PromoPage::StepsFit(const std::string& document) {
    steps.SetSteps(StepsOf(document));
    TellState(Text("PromoCounts",
                   {std::to_wstring(steps.Scripts()), std::to_wstring(steps.Steps().size())}));
    Rearrange();
    if (!steps.Steps().empty())
        return true;
    const bool blank = document.find_first_not_of(" \t\r\n") == std::string::npos;
    Warn(Text(blank ? "ScriptEmpty" : "NoSteps"));
    return false;
}

/// What is typed, from the first step that stands there.
void PromoPage::Play() {
    stage.Stop();
    playing = false;
    tries = false;
    position = {};
    std::string document;
    if (!TakeScript(document) || !StepsFit(document))
        return;
    played = document;
    Report(stage.Play(document, steps.Steps().front().script));
}

void PromoPage::Report(Stage::Outcome outcome) {
    const std::wstring first = Widen(steps.Steps().front().script.c_str());
    switch (outcome) {
    case Stage::Outcome::plays:
        playing = true;
        return Follow();
    case Stage::Outcome::refused:
        return Warn(Text("ScriptRefused"));
    case Stage::Outcome::noFirstText:
        return Warn(Text("NoFirstText", {first}));
    case Stage::Outcome::failed:
        return Warn(Text("StageFailed"));
    }
}

void PromoPage::Stop() {
    stage.Stop();
    playing = false;
    if (position.step > 0)
        Tell(Text("StoppedAt", {Widen(position.script.c_str()), std::to_wstring(position.step)}));
}

void PromoPage::Resume() {
    if (position.step < 1)
        return Play();
    playing = true;
    tries = false;
    stage.Resume();
    ShowNext();
}

/// What is on the stage as a script of its own, after which the user's goes on.
void PromoPage::Try() {
    if (position.step < 1)
        return Warn(Text("PlayFirst"));
    const ScriptEffect tried = effects.Chosen();
    playing = false;
    Report(stage.Play(ScriptWithTrial(played, position, tried), trialScript));
    tries = playing;
    if (tries)
        Tell(Text("EffectTried", {Widen(tried.name.c_str()), std::to_wstring(tried.milliseconds)}));
}

ScriptPosition PromoPage::Position() const {
    const ScriptPosition at = stage.Position();
    return at.script == trialScript ? position : at;
}

void PromoPage::Follow() {
    if (playing && Position() != position)
        ShowNext();
}

void PromoPage::ShowNext() {
    tries = false;
    const ScriptPosition next = Position();
    if (!TextAt(played, next).empty()) {
        position = next;
        return ShowPosition();
    }
    // The player has searched for a text in vain and stands where it gave up.
    playing = false;
    Warn(Text("ScriptEnded", {Widen(next.script.c_str())}));
}

void PromoPage::ShowPosition() {
    steps.Mark(position);
    Tell(Text(WaitsForResume(played, position) ? "OnStageWaits" : "OnStage",
              {Widen(position.script.c_str()), std::to_wstring(position.step),
               std::to_wstring(position.text)}));
}

/// Brings the selected step's section to the top of the script's text.
void PromoPage::ScrollToStep() {
    const std::wstring header = L"[" + steps.SelectedSection() + L"]";
    const std::size_t place = LowerCase(TextOf(script)).find(LowerCase(header));
    if (place == std::wstring::npos)
        return;
    SendMessageW(script, EM_SETSEL, place, static_cast<LPARAM>(place));
    const LRESULT line = SendMessageW(script, EM_LINEFROMCHAR, place, 0);
    SendMessageW(script, EM_LINESCROLL, 0,
                 line - SendMessageW(script, EM_GETFIRSTVISIBLELINE, 0, 0));
}

void PromoPage::ShowSizes() {
    std::vector<std::wstring> sizes;
    for (const int percent : stageSizes)
        sizes.push_back(Text("Percent", {std::to_wstring(percent)}));
    SetChoices(size, sizes, std::max(Chosen(size), 0));
}

/// The second of two texts of the shipped script while it wipes the first one away.
bool PromoPage::ShowExample() {
    constexpr int percent = 45;
    if (!playing || steps.Steps().size() < 2)
        return false;
    const ScriptStep& first = steps.Steps()[0];
    const ScriptStep& second = steps.Steps()[1];
    position = {second.script, second.number, 1};
    playing = false;
    effects.Choose(EffectChoice::wipe, EffectChoice::longest);
    const ScriptEffect shown = effects.Chosen();
    const std::string document =
        ScriptWithChange(played, {first.script, first.number, 1}, position, shown);
    if (!stage.StopWithin(document, trialScript, EffectChoice::longest, percent))
        return false;
    steps.Mark(position);
    Tell(Text("PromoExample", {Widen(shown.name.c_str()), std::to_wstring(percent)}));
    return true;
}

} // namespace

std::unique_ptr<Page> MakePromoPage() {
    return std::make_unique<PromoPage>();
}

} // namespace gallery
