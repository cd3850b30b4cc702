#ifndef VTRUTILS_GALLERY_APP_DOCUMENTPAGE_H
#define VTRUTILS_GALLERY_APP_DOCUMENTPAGE_H

#include "gallery/app/Document.h"
#include "gallery/app/Page.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/FileDialog.h"

namespace gallery {

/// A page that shows a file: it opens and saves, asks before it drops changes or replaces what it
/// has read, finds a text that is typed, and edits one value at a time. It has the controls for
/// that; the page places them. One thread at a time.
class DocumentPage : public Page {
public:
    void Command(int id, int notification) override;
    /// The document that comes with the program, until the user opens another.
    void Shown() override;
    std::wstring DocumentName() const override;
    bool Unsaved() const override { return document.Changed(); }
    bool Offers(int command) const override;
    bool MayClose() override;
    bool Open(const std::wstring& path) override;

protected:
    /// What the page says, as keys.
    struct Wording {
        FileKind files;
        const char* shipped;   ///< the document that comes with the program
        const char* notOpened; ///< the file is there, but is not a document
        const char* findLabel;
        const char* find;     ///< the button
        const char* typeText; ///< asks for the text to find
        // Null for documents that are only read.
        const char* replace = nullptr; ///< asks before a file that was read is replaced
        const char* savedAs = nullptr; ///< tells that a new file was written
        const char* valueLabel = nullptr;
        const char* set = nullptr; ///< the button
    };

    /// `newDocument` outlives the page's use of it.
    DocumentPage(Document& newDocument, const Wording& newWording)
        : document(newDocument), wording(newWording) {}

    // In the order in which Tab goes through them.
    void MakeFileRow();
    void MakeFindRow();
    void MakeValueRow();

    /// Shows texts and state in the language that is chosen now.
    void Retext() override;

    /// Looks for a text that is not empty from where the user is.
    virtual void Find(const std::wstring& text) = 0;
    void FindNext();

    /// The list whose selected row has the value that is edited; null for documents that are only
    /// read.
    virtual const ListView* Values() const { return nullptr; }
    /// Shows the selected value in its field.
    virtual void ShowValue() {}
    void EditValue();
    /// Takes what was typed into the document. False when that cannot be; the page tells why.
    virtual bool Commit() { return true; }

    /// The key Enter, but in the fields for finding and for the value.
    virtual void Enter(HWND /*focus*/) {}

    /// How much the document holds. Called when there is one.
    virtual std::wstring Counts() const = 0;
    /// Shows what can be done with the document, and its counts.
    virtual void ShowState();

    /// Shows a document that was loaded, from its beginning.
    virtual void ShowDocument() = 0;
    /// Shows the document again where it was, after it was saved.
    virtual void Refresh() {}

    HWND fileLabel = nullptr;
    HWND open = nullptr;
    HWND save = nullptr;
    HWND saveAs = nullptr;
    HWND findLabel = nullptr;
    HWND findText = nullptr;
    HWND find = nullptr;
    HWND valueLabel = nullptr;
    HWND valueText = nullptr;
    HWND set = nullptr;

private:
    void AskAndOpen();
    /// Loads the file and shows it, without remembering that it was opened.
    bool Load(const std::wstring& path);
    bool CanSave() const { return wording.replace != nullptr && document.Loaded(); }
    bool Save();
    void SaveAs();
    void PressEnter();
    void Escape();

    Document& document;
    const Wording& wording;
    bool overwriteAgreed = false;
};

} // namespace gallery

#endif
