#ifndef VTRUTILS_GALLERY_APP_DOCUMENT_H
#define VTRUTILS_GALLERY_APP_DOCUMENT_H

#include "gallery/app/DocumentHistory.h"
#include "gallery/app/FileFacts.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace gallery {

/// Something of a file that its document does not hold: the key of what it is called, with "%1" for
/// how many there are.
struct Loss {
    const char* key;
    int count;
};
using Losses = std::vector<Loss>;

/// What a page shows of a file, and whether it is saved. Empty until a file was loaded. One thread
/// at a time.
class Document {
public:
    Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    virtual ~Document() = default;

    /// Loads the file named by an absolute or relative path. False, with the present document
    /// kept, when it cannot be read. A document that is a copy has no file of its own until it is
    /// saved under a name.
    bool Load(const std::wstring& path, bool asCopy = false);

    /// To the document's own file, or another one that it belongs to from then on. On failure the
    /// files, the name and what is unsaved stay as they were.
    bool Save() { return SaveTo(fileName); }
    bool SaveAs(const std::wstring& path);

    bool Loaded() const { return !fileName.empty(); }
    bool Changed() const { return history.Changed(); }
    bool IsCopy() const { return copy; }
    /// Of the original, for a copy.
    const std::wstring& Path() const { return fileName; }
    /// Of the file when it was read.
    const FileFacts& Facts() const { return facts; }

    /// What the document's file has and loses when the document is saved to it now.
    Losses WouldLose() const;

    /// Whether the file is another since it was read or saved. Not for a copy.
    bool IsOutdated() const;
    /// Takes the file as it is now for the one that was read.
    void TakeStamp() { stamp = StampOfFile(fileName); }

    /// Told how much of what there is has been read; false ends the reading. What was ended so
    /// counts as not read.
    using Watch = std::function<bool(int done, int all)>;
    void SetWatch(Watch watch) { watcher = std::move(watch); }

    DocumentHistory& History() { return history; }
    const DocumentHistory& History() const { return history; }

protected:
    bool Progress(int done, int all) const { return watcher == nullptr || watcher(done, all); }

private:
    virtual bool Read(const std::string& path) = 0;
    /// False for a document that is only read.
    virtual bool Write(const std::string& /*path*/) { return false; }
    /// `text` is that of the document's file, as the library reads it.
    virtual void AddLosses(const std::string& /*text*/, Losses& /*losses*/) const {}
    bool SaveTo(const std::wstring& path);

    /// Wide, as a narrow one would be in the code page of the language that was chosen then.
    std::wstring fileName;
    FileFacts facts;
    FileStamp stamp;
    bool copy = false;
    Watch watcher;
    DocumentHistory history;
};

} // namespace gallery

#endif
