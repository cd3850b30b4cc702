#ifndef VTRUTILS_GALLERY_DOCUMENTPAGE_H
#define VTRUTILS_GALLERY_DOCUMENTPAGE_H

#include "gallery/Document.h"
#include "gallery/FileDialog.h"
#include "gallery/Page.h"

namespace gallery {

/// A page that shows a file: it opens and saves, and asks before it drops changes or replaces what
/// it has read. One thread at a time.
class DocumentPage : public Page {
public:
    /// The document that comes with the program, until the user opens another.
    void Shown() override;
    std::wstring DocumentName() const override;
    bool Unsaved() const override { return document.Changed(); }
    bool MayClose() override;
    bool Open(const std::wstring& path) override;

protected:
    /// What the page says about its files, as keys.
    struct Wording {
        FileKind files;
        const char* shipped;           ///< the document that comes with the program
        const char* notOpened;         ///< the file is there, and is no document
        const char* replace = nullptr; ///< asks before a file that was read is replaced
        const char* savedAs = nullptr; ///< tells that a new file was written
    };

    /// `newDocument` outlives the page's use of it.
    DocumentPage(Document& newDocument, const Wording& newWording)
        : document(newDocument), wording(newWording) {}

    void AskAndOpen();
    bool Save();
    void SaveAs();

    /// Takes what was typed into the document. False when that cannot be; the page tells why.
    virtual bool Commit() { return true; }
    /// Shows a document that was loaded, from its beginning.
    virtual void ShowDocument() = 0;
    /// Shows the document again where it was, after it was saved.
    virtual void Refresh() {}
    virtual void Tell(const std::wstring& text) = 0;
    void Warn(const std::wstring& text);

private:
    Document& document;
    const Wording& wording;
    bool overwriteAgreed = false;
};

} // namespace gallery

#endif
