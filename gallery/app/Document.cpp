#include "gallery/app/Document.h"

#include "gallery/text/Text.h"

namespace gallery {

bool Document::Load(const std::wstring& path, bool asCopy) {
    const std::wstring absolute = AbsolutePath(path);
    const FileFacts earlier = facts;
    std::string narrow;
    // Before the file is read: what changes meanwhile is to be noticed.
    const FileStamp now = StampOfFile(absolute);
    facts = FactsOfFile(absolute);
    if (!Narrow(absolute, narrow) || !Read(narrow)) {
        facts = earlier;
        return false;
    }
    fileName = absolute;
    stamp = now;
    copy = asCopy;
    history.Clear();
    return true;
}

bool Document::SaveAs(const std::wstring& path) {
    return SaveTo(AbsolutePath(path));
}

bool Document::SaveTo(const std::wstring& path) {
    std::string narrow;
    if (!Loaded() || !Narrow(path, narrow) || !Write(narrow))
        return false;
    fileName = path;
    copy = false;
    history.Saved();
    TakeStamp();
    // The file has what the library wrote from now on.
    facts.lettersReduced = 0;
    if (facts.encoding == Encoding::utf16)
        facts.encoding = Encoding::codePage;
    return true;
}

Losses Document::WouldLose() const {
    Losses losses;
    const FileFacts now = FactsOfFile(fileName);
    if (now.readable)
        AddLosses(TextOfFile(fileName), losses);
    if (now.lettersReduced > 0)
        losses.push_back({"LossLetters", now.lettersReduced});
    if (IsOutdated())
        losses.push_back({"LossOutside", 1});
    return losses;
}

bool Document::IsOutdated() const {
    return Loaded() && !copy && StampOfFile(fileName) != stamp;
}

} // namespace gallery
