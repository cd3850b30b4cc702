#ifndef VTRUTILS_GALLERY_APP_DOCUMENTPAGE_H
#define VTRUTILS_GALLERY_APP_DOCUMENTPAGE_H

#include "gallery/app/Document.h"
#include "gallery/app/Page.h"
#include "gallery/widgets/Controls.h"
#include "gallery/widgets/FileDialog.h"

namespace gallery {

/// A page that shows a file: it opens and saves, asks before it drops changes or what the document
/// cannot hold of its file, takes changes back, finds a text that is typed, and edits one value at
/// a time. It has the controls for that; the page places them. One thread at a time.
class DocumentPage : public Page {
public:
    void Command(int id, int notification) override;
    /// A copy of the document that comes with the program, until the user opens another.
    void Shown() override;
    std::wstring DocumentName() const override;
    bool Unsaved() const override { return document.Changed(); }
    bool Offers(int command) const override;
    bool MayClose() override;
    /// Asks first if the file does not look like a document of this page.
    bool Open(const std::wstring& path) override;

protected:
    /// What the page says, as keys.
    struct Wording {
        FileKind files;
        Contents contents;
        const char* shipped;   ///< the document that comes with the program
        const char* notOpened; ///< the file is there, but is not a document
        const char* findLabel;
        const char* find;     ///< the button
        const char* typeText; ///< asks for the text to find
        // Null for documents that are only read.
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
    /// Takes what was typed into the document. False when that cannot be; the page tells why by
    /// `Reject`.
    virtual bool Commit() { return true; }
    /// Tells the text of the key; false.
    bool Reject(const char* reason);

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
    /// Shows the document again where a change was made again or taken back.
    virtual void ShowChange() {}
    /// What is to be told about a document that was opened; "" for nothing.
    virtual std::wstring OpenedNote() const { return {}; }
    /// `Counts`, and how the file's bytes were read.
    std::wstring State() const;

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

    LRESULT OnMessage(UINT kind, WPARAM wParam, LPARAM lParam) override;

private:
    void OpenElsewhere(const std::wstring& path);
    void AskAndOpen();
    bool LoadWatched(const std::wstring& path, bool asCopy);
    void OpenExample();
    void Reload();
    bool LooksRight(const std::wstring& path) const;
    std::wstring Example() const;
    void TellOpened();
    bool CanSave() const { return wording.set != nullptr && document.Loaded(); }
    bool Save();
    bool SaveAs();
    bool MayLose(const Losses& losses, bool& saveAsInstead) const;
    static std::wstring ListOf(const Losses& losses);
    void EndSaving(const std::wstring& text);
    void WatchFile();
    void Step(bool redo);
    void PressEnter();
    void Escape();

    Document& document;
    const Wording& wording;
    std::wstring problem;      ///< why the typed value cannot be set
    bool toldOutdated = false; ///< that the file has changed
};

} // namespace gallery

#endif
