#include "gallery/DocumentPage.h"

#include "gallery/Language.h"
#include "gallery/RecentFiles.h"
#include "gallery/Text.h"

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

void DocumentPage::Shown() {
    if (!document.Loaded())
        Open(Widen((ProgramFolder() + wording.shipped).c_str()));
}

std::wstring DocumentPage::DocumentName() const {
    return NameOfFile(document.Path());
}

bool DocumentPage::Open(const std::wstring& path) {
    if (!document.Load(path)) {
        Warn(Text(WhyNotLoaded(path, wording.notOpened), {path}));
        return false;
    }
    overwriteAgreed = false;
    Host().Recent().Use(document.Path());
    ShowDocument();
    Tell(L"");
    Host().DocumentChanged();
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
    if (!document.Loaded() || !Commit())
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
    if (!document.Loaded() || !Commit() ||
        !AskForFile(Handle(), FileQuestion::save, wording.files, path))
        return;
    if (!document.SaveAs(path))
        return Warn(Text("NotSaved", {path}));
    overwriteAgreed = true;
    Host().Recent().Use(document.Path());
    Refresh();
    Tell(Text(wording.savedAs));
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

void DocumentPage::Warn(const std::wstring& text) {
    MessageBeep(MB_ICONWARNING);
    Tell(text);
}

} // namespace gallery
