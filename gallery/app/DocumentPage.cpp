#include "gallery/app/DocumentPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "utilities/text/language/LanguageStrings.h"

namespace gallery {

namespace {

constexpr UINT_PTR watchTimer = 1;
constexpr UINT watchInterval = 1000;

} // namespace

void DocumentPage::MakeFileRow() {
    fileLabel = MakeTextLine(Handle(), SS_PATHELLIPSIS, ID_DOCUMENT_FILE);
    open = AddButton("Open", ID_OPEN);
    if (wording.set == nullptr)
        return;
    save = AddButton("Save", ID_SAVE);
    saveAs = AddButton("SaveAs", ID_SAVE_AS);
}

void DocumentPage::MakeFindRow() {
    findLabel = AddLabel(wording.findLabel, ID_DOCUMENT_FIND_LABEL);
    findText = MakeEdit(Handle(), ID_DOCUMENT_FIND_TEXT);
    find = AddButton(wording.find, ID_FIND_NEXT);
}

void DocumentPage::MakeValueRow() {
    valueLabel = AddLabel(wording.valueLabel, ID_DOCUMENT_VALUE_LABEL);
    valueText = MakeEdit(Handle(), ID_DOCUMENT_VALUE_TEXT);
    set = AddButton(wording.set, ID_DOCUMENT_SET);
}

void DocumentPage::Retext() {
    // The document is read in the code page of the language.
    ShowValue();
    Tell(L"");
    ShowState();
}

void DocumentPage::Command(int id, int notification) {
    switch (id) {
    case ID_OPEN:
        return AskAndOpen();
    case ID_SAVE:
        Save();
        return;
    case ID_SAVE_AS:
        SaveAs();
        return;
    case ID_EXAMPLE:
        return OpenExample();
    case ID_RELOAD:
        return Reload();
    case ID_UNDO:
        return Step(/*redo=*/false);
    case ID_REDO:
        return Step(/*redo=*/true);
    case ID_FIND:
        return FocusAndSelect(findText);
    case ID_FIND_NEXT:
        return FindNext();
    case ID_EDIT:
        return EditValue();
    case ID_DOCUMENT_SET:
        Commit();
        return;
    case ID_DOCUMENT_VALUE_TEXT:
        // What was typed counts, however the field is left; Esc takes it back before.
        if (notification == EN_KILLFOCUS)
            Commit();
        return;
    case IDOK:
        return PressEnter();
    case IDCANCEL:
        return Escape();
    default:
        return;
    }
}

void DocumentPage::PressEnter() {
    const HWND focus = GetFocus();
    if (focus == findText)
        FindNext();
    else if (Values() == nullptr || focus != valueText)
        Enter(focus);
    else if (Commit())
        SetFocus(Values()->Handle());
}

void DocumentPage::Escape() {
    if (Values() != nullptr && GetFocus() == valueText) {
        ShowValue();
        SetFocus(Values()->Handle());
    } else {
        SetText(findText, L"");
        TakeFocus();
    }
    Tell(L"");
}

void DocumentPage::FindNext() {
    if (!Commit())
        return;
    const std::wstring text = TextOf(findText);
    if (!text.empty())
        return Find(text);
    Tell(Text(wording.typeText));
    FocusAndSelect(findText);
}

void DocumentPage::EditValue() {
    if (Values() != nullptr && Values()->Selected() >= 0)
        FocusAndSelect(valueText);
}

bool DocumentPage::Reject(const char* reason) {
    problem = Text(reason);
    Warn(problem);
    return false;
}

void DocumentPage::Step(bool redo) {
    if (!Commit())
        return;
    DocumentHistory& history = document.History();
    if (!(redo ? history.CanRedo() : history.CanUndo()))
        return Tell(Text(redo ? "NothingToRedo" : "NothingToUndo"));
    const std::wstring name = Text(redo ? history.RedoName() : history.UndoName());
    if (redo)
        history.Redo();
    else
        history.Undo();
    ShowChange();
    Tell(Text(redo ? "RedoneChange" : "UndoneChange", {name}));
}

std::wstring DocumentPage::State() const {
    const unsigned language = GetCurrentCodePage();
    const std::wstring codePage = std::to_wstring(language != 0 ? language : GetACP());
    const char* key = "EncodingCodePage";
    switch (document.Facts().encoding) {
    case Encoding::ascii:
        key = "EncodingAscii";
        break;
    case Encoding::utf8:
        key = "EncodingUtf8";
        break;
    case Encoding::utf16:
        key = "EncodingUtf16";
        break;
    case Encoding::binary:
        key = "EncodingBinary";
        break;
    case Encoding::codePage:
        break;
    }
    return Counts() + Text("AndEncoding", {Text(key, {codePage})});
}

void DocumentPage::ShowState() {
    const bool loaded = document.Loaded();
    for (const HWND control : {saveAs, find, valueText, set}) {
        if (control != nullptr)
            EnableWindow(control, loaded);
    }
    if (save != nullptr) {
        // The keyboard must not stay with a button that is disabled.
        if (!document.Changed() && GetFocus() == save)
            TakeFocus();
        EnableWindow(save, loaded && document.Changed());
    }
    const std::wstring& path = document.Path();
    SetText(fileLabel, document.IsCopy() ? Text("ExampleName", {NameOfFile(path)}) : path);
    if (loaded)
        TellState(State());
    Host().DocumentChanged();
    Rearrange();
}

bool DocumentPage::Offers(int command) const {
    switch (command) {
    case ID_FIND:
    case ID_RELOAD:
        return document.Loaded();
    case ID_EXAMPLE:
        return true;
    case ID_UNDO:
        return document.History().CanUndo();
    case ID_REDO:
        return document.History().CanRedo();
    case ID_EDIT:
        return Values() != nullptr && Values()->Selected() >= 0;
    default:
        return Page::Offers(command);
    }
}

LRESULT DocumentPage::OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) {
    switch (kind) {
    case WM_SHOWWINDOW:
        if (wParam != FALSE)
            SetTimer(Handle(), watchTimer, watchInterval, /*lpTimerFunc=*/nullptr);
        else
            KillTimer(Handle(), watchTimer);
        break;
    case WM_TIMER:
        WatchFile();
        return 0;
    default:
        break;
    }
    return Page::OnMessage(kind, wParam, lParam);
}

} // namespace gallery
