#include "gallery/app/DocumentPage.h"
#include "gallery/app/RecentFiles.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/LongWork.h"
#include "gallery/widgets/Question.h"

/// What a document page does with files.

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

/// An answer beside those of Windows.
constexpr int saveElsewhere = 100;

} // namespace

std::wstring DocumentPage::Example() const {
    return Widen((ProgramFolder() + wording.shipped).c_str());
}

void DocumentPage::Shown() {
    if (!document.Loaded())
        Open(Example());
}

std::wstring DocumentPage::DocumentName() const {
    return NameOfFile(document.Path());
}

bool DocumentPage::LooksRight(const std::wstring& path) const {
    const FileFacts facts = FactsOfFile(path);
    const char* question = nullptr;
    if (facts.encoding == Encoding::binary)
        question = "OpenBinary";
    else if (facts.readable && facts.contents != wording.contents)
        question = "OpenUnknown";
    return question == nullptr ||
           Ask(Handle(), Text(question, {path}), {{IDYES, "OpenAnyway"}, {IDNO, "DoNotOpen"}}, IDNO,
               IDNO) == IDYES;
}

bool DocumentPage::Open(const std::wstring& path) {
    if (!LooksRight(path)) {
        Tell(Text("NotOpenedNow", {path}));
        return false;
    }
    const bool example = IsSameFile(path, Example());
    if (!LoadWatched(path, example))
        return false;
    toldOutdated = false;
    if (!example)
        Host().Recent().Use(document.Path());
    ShowDocument();
    TellOpened();
    return true;
}

/// The library can tell how far it is, and be told to stop, while it reads a table.
bool DocumentPage::LoadWatched(const std::wstring& path, bool asCopy) {
    const KeptFocus kept(Handle());
    LongWork work(Handle(), Text("OpenTitle"), NameOfFile(path));
    document.SetWatch([&work](int done, int all) { return work.Step(done, all); });
    const bool loaded = document.Load(path, asCopy);
    document.SetWatch(nullptr);
    if (work.Cancelled())
        Warn(Text("OpenCancelled", {path}));
    else if (!loaded)
        Warn(Text(WhyNotLoaded(path, wording.notOpened), {path}));
    return loaded;
}

void DocumentPage::TellOpened() {
    const FileFacts& facts = document.Facts();
    const std::wstring note = OpenedNote();
    if (document.IsCopy())
        Tell(Text("ExampleOpened"));
    else if (facts.encoding == Encoding::utf8)
        Warn(Text("Utf8Opened"));
    else if (facts.lettersReduced > 0)
        Warn(Text("Utf16Opened", {std::to_wstring(facts.lettersReduced)}));
    else if (!note.empty())
        Warn(note);
    else
        Tell(L"");
}

void DocumentPage::AskAndOpen() {
    std::wstring path = document.IsCopy() ? L"" : document.Path();
    if (AskForFile(Handle(), FileQuestion::open, wording.files, path))
        OpenElsewhere(path);
}

/// On the page for its contents, which may be this one.
void DocumentPage::OpenElsewhere(const std::wstring& path) {
    const Contents contents = ContentsOfFile(path);
    if (contents != Contents::none && contents != wording.contents)
        return Host().OpenFile(path);
    if (MayClose() && Open(path))
        TakeFocus();
}

void DocumentPage::OpenExample() {
    if (MayClose() && Open(Example()))
        TakeFocus();
}

void DocumentPage::Reload() {
    if (!document.Loaded() || !MayClose())
        return;
    if (Open(std::wstring(document.Path())) && !document.IsCopy())
        Tell(Text("Reloaded"));
}

void DocumentPage::WatchFile() {
    if (toldOutdated || !document.IsOutdated())
        return;
    toldOutdated = true;
    Warn(Text("ChangedOutside"));
}

std::wstring DocumentPage::ListOf(const Losses& losses) {
    std::wstring list;
    for (const Loss& loss : losses)
        list += (list.empty() ? L"" : L", ") + Text(loss.key, {std::to_wstring(loss.count)});
    return list;
}

/// Asks before what the document does not hold of its file is lost.
bool DocumentPage::MayLose(const Losses& losses, bool& saveAsInstead) const {
    if (losses.empty())
        return true;
    const int answer =
        Ask(Handle(), Text("SaveLoses", {document.Path(), ListOf(losses)}),
            {{IDYES, "SaveAnyway"}, {saveElsewhere, "SaveAs"}, {IDNO, "AnswerNo"}}, IDNO, IDNO);
    saveAsInstead = answer == saveElsewhere;
    return answer == IDYES;
}

bool DocumentPage::Save() {
    if (!CanSave() || !Commit())
        return false;
    if (!document.Changed()) {
        Tell(Text("NothingToSave"));
        return true;
    }
    if (document.IsCopy())
        return SaveAs();
    bool saveAsInstead = false;
    if (!MayLose(document.WouldLose(), saveAsInstead))
        return saveAsInstead && SaveAs();
    if (!document.Save()) {
        Warn(Text("NotSaved", {document.Path()}));
        return false;
    }
    EndSaving(Text("Saved"));
    return true;
}

bool DocumentPage::SaveAs() {
    if (!CanSave() || !Commit())
        return false;
    std::wstring path = document.IsCopy() ? DocumentName() : document.Path();
    for (bool again = true; again;) {
        again = false;
        if (!AskForFile(Handle(), FileQuestion::save, wording.files, path))
            return false;
        if (!document.IsCopy() && IsSameFile(path, document.Path()) &&
            !MayLose(document.WouldLose(), again) && !again)
            return false;
    }
    if (IsSameFile(path, Example())) {
        Warn(Text("ExampleStays"));
        return false;
    }
    const Losses losses = document.WouldLose();
    if (!document.SaveAs(path)) {
        Warn(Text("NotSaved", {path}));
        return false;
    }
    EndSaving(losses.empty() ? Text("Saved") : Text("SavedWithout", {ListOf(losses)}));
    return true;
}

void DocumentPage::EndSaving(const std::wstring& text) {
    toldOutdated = false;
    Host().Recent().Use(document.Path());
    Refresh();
    ShowState();
    Tell(text);
}

bool DocumentPage::MayClose() {
    if (!Commit()) {
        const std::wstring question = Text("DropTyped", {problem});
        if (Ask(Handle(), question, {{IDYES, "DropIt"}, {IDCANCEL, "AnswerCancel"}}, IDCANCEL) !=
            IDYES)
            return false;
        ShowValue();
    }
    if (!document.Changed())
        return true;
    const int answer =
        Ask(Handle(), Text("SaveChanges", {DocumentName()}),
            {{IDYES, "SaveIt"}, {IDNO, "DropChanges"}, {IDCANCEL, "AnswerCancel"}}, IDYES);
    return answer == IDNO || (answer == IDYES && Save());
}

} // namespace gallery
