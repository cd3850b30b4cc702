#include "gallery/pages/dialogs/DialogsPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/pages/dialogs/FileWork.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/Rows.h"
#include "utilities/ui/LongOperationDlg.h"
#include "utilities/ui/MessageBoxes.h"
#include "utilities/ui/ProgressMeter.h"
#include "utilities/ui/WindowGeometry.h"

#include <algorithm>
#include <commctrl.h>
#include <shellapi.h>

namespace gallery {

namespace {

constexpr UINT readNext = WM_APP;       ///< to the page itself, while the work is by timer
constexpr UINT asksAgainFlag = 0x10000; ///< shows the check box of a message box
constexpr BYTE leastOpacity = 64;       ///< so that the window can be found again
constexpr BYTE mostOpacity = 255;

struct Choice {
    UINT flags;
    const char* key;
};
constexpr Choice buttonChoices[] = {{MB_YESNOCANCEL, "BoxYesNoCancel"},
                                    {MB_YESNO, "BoxYesNo"},
                                    {MB_OKCANCEL, "BoxOkCancel"},
                                    {MB_OK, "BoxOk"}};
constexpr Choice iconChoices[] = {{MB_ICONEXCLAMATION, "BoxExclamation"},
                                  {MB_ICONINFORMATION, "BoxInformation"},
                                  {0, "BoxNoIcon"}};

const char* AnswerKey(int answer) {
    switch (answer) {
    case IDYES:
        return "AnswerYes";
    case IDNO:
        return "AnswerNo";
    case IDCANCEL:
        return "AnswerCancel";
    default:
        return "AnswerOk";
    }
}

std::wstring SystemFolder() {
    wchar_t path[MAX_PATH] = L"";
    GetSystemDirectoryW(path, MAX_PATH);
    return std::wstring(path) + L"\\";
}

/// Keeps a window from input, so that it is not used or closed while work goes on within it.
class DisabledWindow {
public:
    explicit DisabledWindow(HWND target) : window(target) { EnableWindow(window, FALSE); }
    DisabledWindow(const DisabledWindow&) = delete;
    DisabledWindow& operator=(const DisabledWindow&) = delete;
    ~DisabledWindow() { EnableWindow(window, TRUE); }

private:
    HWND window;
};

class DialogsPage final : public Page {
public:
    void Command(int id, int notification) override;
    void TakeFocus() override { FocusAndSelect(messageText); }
    void Shown() override { TellPlace(); }
    bool ShowExample() override;

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    bool MakeControls() override;
    void MakeBoxControls();
    bool MakeWindowControls();
    void Retext() override;
    void Arrange(int width, int height) override;

    HWND Top() const { return GetAncestor(Handle(), GA_ROOT); }
    void ShowBox();
    void ShowMeter();
    void ShowOperation();
    void WaitToRead();
    void ReadOne();
    void EndWork(bool cancelled);
    void SetOpacity();
    void TakeFiles(HDROP drop);
    void TellPlace();
    void Tell(const std::wstring& text) { SetText(message, text); }

    FileWork work;
    bool readsByMessage = false; ///< the work goes on with the next `readNext`
    bool messageWaits = false;
    CLongOperationDlg operation;
    std::vector<std::wstring> dropped;

    HWND messageLabel = nullptr;
    HWND messageText = nullptr;
    HWND buttonsLabel = nullptr;
    HWND buttons = nullptr;
    HWND iconLabel = nullptr;
    HWND icon = nullptr;
    HWND mayStop = nullptr;
    HWND show = nullptr;
    HWND workLabel = nullptr;
    HWND byTimer = nullptr;
    HWND meter = nullptr;
    HWND longOperation = nullptr;
    HWND opacityLabel = nullptr;
    HWND opacity = nullptr;
    HWND centre = nullptr;
    HWND fit = nullptr;
    HWND droppedLabel = nullptr;
    ListView droppedFiles;
    HWND message = nullptr;
};

bool DialogsPage::MakeControls() {
    MakeBoxControls();
    workLabel = AddLabel("WorkLabel", ID_DIALOGS_WORK_LABEL);
    byTimer = AddCaption(MakeCheckBox(Handle(), ID_DIALOGS_BY_TIMER), "WorkByTimer");
    meter = AddButton("ShowMeter", ID_DIALOGS_METER, "ShowMeterTip");
    longOperation = AddButton("ShowOperation", ID_DIALOGS_OPERATION, "ShowOperationTip");
    if (!MakeWindowControls())
        return false;
    message = MakeTextLine(Handle(), SS_ENDELLIPSIS, ID_DIALOGS_TELL);
    Retext();
    return message != nullptr;
}

void DialogsPage::MakeBoxControls() {
    messageLabel = AddLabel("BoxMessageLabel", ID_DIALOGS_MESSAGE_LABEL);
    messageText = MakeEdit(Handle(), ID_DIALOGS_MESSAGE);
    show = AddButton("ShowBox", ID_DIALOGS_SHOW, "ShowBoxTip");
    buttonsLabel = AddLabel("BoxButtonsLabel", ID_DIALOGS_BUTTONS_LABEL);
    buttons = MakeChoice(Handle(), ID_DIALOGS_BUTTONS);
    iconLabel = AddLabel("BoxIconLabel", ID_DIALOGS_ICON_LABEL);
    icon = MakeChoice(Handle(), ID_DIALOGS_ICON);
    mayStop = AddCaption(MakeCheckBox(Handle(), ID_DIALOGS_MAY_STOP), "BoxMayStop");
}

bool DialogsPage::MakeWindowControls() {
    opacityLabel = AddLabel("OpacityLabel", ID_DIALOGS_OPACITY_LABEL);
    opacity =
        MakeControl(Handle(), TRACKBAR_CLASSW, L"", WS_TABSTOP | TBS_NOTICKS, ID_DIALOGS_OPACITY);
    SendMessageW(opacity, TBM_SETRANGE, TRUE, MAKELPARAM(leastOpacity, mostOpacity));
    SendMessageW(opacity, TBM_SETPOS, TRUE, mostOpacity);
    centre = AddButton("CentreWindow", ID_DIALOGS_CENTRE, "CentreWindowTip");
    fit = AddButton("FitWindow", ID_DIALOGS_FIT, "FitWindowTip");
    droppedLabel = AddLabel("DroppedLabel", ID_DIALOGS_DROPPED_LABEL);
    const auto name = [this](int row, int) { return dropped[static_cast<std::size_t>(row)]; };
    if (!AddList(droppedFiles, "DroppedFiles", ID_DIALOGS_DROPPED, ListView::Titles::shown, name))
        return false;
    droppedFiles.AddColumn("DroppedFile");
    return true;
}

void DialogsPage::Retext() {
    const auto choose = [](HWND choice, const auto& choices) {
        std::vector<std::wstring> texts;
        for (const Choice& one : choices)
            texts.push_back(Text(one.key));
        SetChoices(choice, texts, std::max(Chosen(choice), 0));
    };
    choose(buttons, buttonChoices);
    choose(icon, iconChoices);
    SetText(messageText, Text("BoxMessage"));
    TellPlace();
}

void DialogsPage::Arrange(int width, int height) {
    using End = Rows::End;
    Rows page(Sizes(), width, height, /*expected=*/19);
    page.AlignButtons({show, meter, longOperation, centre, fit});
    const int labels = std::max({Sizes().TextWidth(messageLabel), Sizes().TextWidth(buttonsLabel),
                                 Sizes().TextWidth(opacityLabel)});
    page.Put(End::top, {.label = messageLabel, .field = messageText, .labelWidth = labels});
    page.Put(End::top, {.label = buttonsLabel, .field = buttons, .labelWidth = labels}, 50,
             {.label = iconLabel, .field = icon});
    page.Put(End::top, {.field = mayStop, .buttons = {show}});
    page.Skip(page.Gap());
    page.Put(End::top, {.label = workLabel, .field = byTimer, .buttons = {meter, longOperation}});
    page.Skip(page.Gap());
    page.Put(
        End::top,
        {.label = opacityLabel, .field = opacity, .buttons = {centre, fit}, .labelWidth = labels});
    page.Skip(page.Gap());
    page.Put(End::top, {.label = droppedLabel, .labelWidth = width});
    page.PutMessage(message, /*counts=*/nullptr);
    page.Places().Put(droppedFiles.Handle(), 0, page.Top(), width, page.Room());
    droppedFiles.SetColumnWidth(0, ListView::RoomForColumns(width));
}

void DialogsPage::Command(int id, int /*notification*/) {
    switch (id) {
    case ID_DIALOGS_SHOW:
        return ShowBox();
    case ID_DIALOGS_METER:
        return ShowMeter();
    case ID_DIALOGS_OPERATION:
        return ShowOperation();
    case ID_DIALOGS_CENTRE:
        CenterWindow(Top(), /*ref=*/nullptr, /*horizontally=*/true, /*vertically=*/true,
                     /*redraw=*/true,
                     /*onMonitor=*/true);
        return TellPlace();
    case ID_DIALOGS_FIT: {
        RECT place{};
        GetWindowRect(Top(), &place);
        AdjustRectToFitOnScreen(place, /*xMargin=*/0, /*yMargin=*/0);
        MoveWindow(Top(), place.left, place.top, place.right - place.left, place.bottom - place.top,
                   /*bRepaint=*/TRUE);
        return TellPlace();
    }
    case IDOK:
        if (GetFocus() == messageText)
            ShowBox();
        return;
    default:
        return;
    }
}

LRESULT DialogsPage::OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) {
    switch (kind) {
    case WM_CREATE:
        EnableFileDropping(Handle());
        break;
    case WM_HSCROLL:
        SetOpacity();
        return 0;
    case WM_DROPFILES:
        TakeFiles(reinterpret_cast<HDROP>(wParam));
        return 0;
    case readNext:
        ReadOne();
        return 0;
    default:
        break;
    }
    return Page::OnMessage(kind, wParam, lParam);
}

void DialogsPage::ShowBox() {
    const UINT flags = buttonChoices[Chosen(buttons)].flags | iconChoices[Chosen(icon)].flags;
    const bool offers = IsChecked(mayStop);
    const int answer = UT_MyMessageStr(Top(), NarrowAnyway(TextOf(messageText)).data(),
                                       flags | (offers ? asksAgainFlag : 0),
                                       NarrowAnyway(Text("Gallery")).data(), /*iconId=*/0);
    const char* key = "BoxAnswer";
    if (offers)
        key = UT_DoNotAskLastMessageAgain() != 0 ? "BoxAnswerNotAgain" : "BoxAnswerAsk";
    Tell(Text(key, {Text(AnswerKey(answer)), std::to_wstring(answer)}));
}

void DialogsPage::ShowMeter() {
    operation.End();
    readsByMessage = false;
    work.Start(SystemFolder());
    CProgressMeter progress;
    {
        const DisabledWindow disabled(Top());
        progress.Show(Top(), work.Total(), NarrowAnyway(Text("WorkTitle")).data());
        while (work.Done() < work.Total() && !progress.UserAborted()) {
            work.Step();
            progress.SetProgress(work.Done());
        }
    }
    EndWork(progress.UserAborted());
}

void DialogsPage::ShowOperation() {
    operation.End();
    work.Start(SystemFolder());
    const bool timer = IsChecked(byTimer);
    operation.UseTimerToUpdate(timer);
    operation.SetTitle(NarrowAnyway(Text("WorkTitle")).data());
    operation.SetMaxProgress(work.Total());
    readsByMessage = timer && operation.Go(GetModuleHandleW(nullptr), Top());
    if (timer)
        return WaitToRead();
    {
        const DisabledWindow disabled(Top());
        operation.Go(GetModuleHandleW(nullptr), Top());
        while (work.Done() < work.Total() && operation.Showing()) {
            operation.SetProgressText(NarrowAnyway(work.Next()).data());
            work.Step();
            operation.SetProgress(work.Done());
        }
    }
    EndWork(work.Done() < work.Total());
    operation.End();
}

void DialogsPage::WaitToRead() {
    if (!messageWaits)
        messageWaits = PostMessageW(Handle(), readNext, 0, 0) != FALSE;
}

/// One file per message, so that the window stays usable.
void DialogsPage::ReadOne() {
    messageWaits = false;
    if (!readsByMessage)
        return;
    if (!operation.Showing() || work.Done() == work.Total()) {
        readsByMessage = false;
        operation.End();
        return EndWork(work.Done() < work.Total());
    }
    operation.SetProgressText(NarrowAnyway(work.Next()).data());
    work.Step();
    operation.SetProgress(work.Done());
    WaitToRead();
}

void DialogsPage::EndWork(bool cancelled) {
    if (cancelled)
        Tell(Text("WorkCancelled", {std::to_wstring(work.Done()), std::to_wstring(work.Total())}));
    else
        Tell(Text("WorkDone", {std::to_wstring(work.Done()), Format(L"%.1f", work.Megabytes())}));
}

void DialogsPage::SetOpacity() {
    SetWindowTransparency(Top(), static_cast<BYTE>(SendMessageW(opacity, TBM_GETPOS, 0, 0)));
}

void DialogsPage::TakeFiles(HDROP drop) {
    dropped.clear();
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, /*lpszFile=*/nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, /*lpszFile=*/nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        dropped.push_back(path);
    }
    DragFinish(drop);
    droppedFiles.SetRows(static_cast<int>(dropped.size()));
    Tell(Text("FilesDropped", {std::to_wstring(dropped.size())}));
}

void DialogsPage::TellPlace() {
    RECT place{};
    GetWindowRect(Top(), &place);
    Tell(Text(IsRectOnTheScreen(&place) != FALSE ? "WindowFits" : "WindowSticksOut"));
}

bool DialogsPage::ShowExample() {
    dropped = {L"C:\\Music\\Night drive.wav", L"C:\\Music\\Covers\\Night drive.png"};
    droppedFiles.SetRows(static_cast<int>(dropped.size()));
    Tell(Text("BoxAnswerNotAgain", {Text(AnswerKey(IDYES)), std::to_wstring(IDYES)}));
    return true;
}

} // namespace

std::unique_ptr<Page> MakeDialogsPage() {
    return std::make_unique<DialogsPage>();
}

} // namespace gallery
