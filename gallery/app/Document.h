#ifndef VTRUTILS_GALLERY_APP_DOCUMENT_H
#define VTRUTILS_GALLERY_APP_DOCUMENT_H

#include <string>

namespace gallery {

/// What a page shows of a file, and whether it is saved. Empty until a file was loaded. One thread
/// at a time.
class Document {
public:
    Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    virtual ~Document() = default;

    /// Loads the file named by an absolute or relative path. False, with the present document
    /// kept, when it cannot be read.
    bool Load(const std::wstring& path);

    /// To the document's own file, or another one that it belongs to from then on. On failure the
    /// files, the name and what is unsaved stay as they were.
    bool Save() { return SaveTo(fileName); }
    bool SaveAs(const std::wstring& path);

    bool Loaded() const { return !fileName.empty(); }
    bool Changed() const { return changed; }
    const std::wstring& Path() const { return fileName; }

protected:
    void Touch() { changed = true; }

private:
    virtual bool Read(const std::string& path) = 0;
    /// False for a document that is only read.
    virtual bool Write(const std::string& /*path*/) { return false; }
    bool SaveTo(const std::wstring& path);

    /// Wide, as a narrow one would be in the code page of the language that was chosen then.
    std::wstring fileName;
    bool changed = false;
};

} // namespace gallery

#endif
