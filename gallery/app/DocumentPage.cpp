#include "gallery/app/DocumentPage.h"

#include "gallery/app/ControlIds.h"
#include "gallery/app/RecentFiles.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

namespace gallery {

namespace {

/// The key of the reason, which ends in the path.
const char* WhyNotLoaded(const std::wstring& path, const char* noDocument) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return "NotOpenedMissing";
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return "NotOpenedFolder";
    return noDocument;
}

} // namespace

void DocumentPage::MakeFileRow() {
    fileLabel = MakeTextLine(Handle(), SS_PATHELLIPSIS, ID_DOCUMENT_FILE);
    open = AddButton("Open", ID_OPEN);
    if (wording.replace == nullptr)
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
        return SaveAs();
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

void DocumentPage::ShowState() {
    for (const HWND control : {save, saveAs, find, valueText, set}) {
        if (control != nullptr)
            EnableWindow(control, document.Loaded());
    }
    SetText(fileLabel, document.Path());
    if (document.Loaded())
        TellState(Counts());
    Host().DocumentChanged();
    Rearrange();
}

void DocumentPage::Shown() {
    if (!document.Loaded())
        Load(Widen((ProgramFolder() + wording.shipped).c_str()));
}

std::wstring DocumentPage::DocumentName() const {
    return NameOfFile(document.Path());
}

bool DocumentPage::Open(const std::wstring& path) {
    if (!Load(path))
        return false;
    Host().Recent().Use(document.Path());
    return true;
}

bool DocumentPage::Load(const std::wstring& path) {
    if (!document.Load(path)) {
        Warn(Text(WhyNotLoaded(path, wording.notOpened), {path}));
        return false;
    }
    overwriteAgreed = false;
    ShowDocument();
    Tell(L"");
    return true;
}

void DocumentPage::AskAndOpen() {
    std::wstring path = document.Path();
    if (!MayClose() || !AskForFile(Handle(), FileQuestion::open, wording.files, path))
        return;
    if (Open(path))
        TakeFocus();
}

bool DocumentPage::Save() {
    if (!CanSave() || !Commit())
        return false;
    if (!overwriteAgreed) {
        const std::wstring question = Text(wording.replace, {document.Path()});
        if (MessageBoxW(Handle(), question.c_str(), Text("Gallery").c_str(),
                        MB_YESNO | MB_ICONQUESTION) != IDYES)
            return false;
        overwriteAgreed = true;
    }
    const bool saved = document.Save();
    Refresh();
    if (saved) {
        Host().Recent().Use(document.Path());
        Tell(Text("Saved"));
    } else {
        Warn(Text("NotSaved", {document.Path()}));
    }
    return saved;
}

void DocumentPage::SaveAs() {
    std::wstring path = document.Path();
    if (!CanSave() || !Commit() || !AskForFile(Handle(), FileQuestion::save, wording.files, path))
        return;
    if (!document.SaveAs(path))
        return Warn(Text("NotSaved", {path}));
    overwriteAgreed = true;
    Host().Recent().Use(document.Path());
    Refresh();
    Tell(Text(wording.savedAs));
}

bool DocumentPage::Offers(int command) const {
    if (command == ID_FIND)
        return document.Loaded();
    if (command == ID_EDIT)
        return Values() != nullptr && Values()->Selected() >= 0;
    return Page::Offers(command);
}

bool DocumentPage::MayClose() {
    Commit();
    if (!document.Changed())
        return true;
    const std::wstring question = Text("SaveChanges", {DocumentName()});
    const int answer = MessageBoxW(Handle(), question.c_str(), Text("Gallery").c_str(),
                                   MB_YESNOCANCEL | MB_ICONQUESTION);
    return answer == IDNO || (answer == IDYES && Save());
}

} // namespace gallery
