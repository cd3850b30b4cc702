#ifndef VTRUTILS_GALLERY_APP_PAGE_H
#define VTRUTILS_GALLERY_APP_PAGE_H

#include "gallery/widgets/Captions.h"
#include "gallery/widgets/Link.h"
#include "gallery/widgets/ListView.h"
#include "gallery/widgets/StatusLines.h"
#include "gallery/widgets/Tips.h"
#include "gallery/widgets/Window.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace gallery {

class RecentFiles;
class Settings;

/// What a page may ask of the window that shows it. One thread at a time.
class PageHost {
public:
    /// What was opened and saved, on all pages.
    virtual RecentFiles& Recent() = 0;

    /// What is remembered from one run to the next.
    virtual Settings& Remembered() = 0;

    /// Shows the page for files with this extension and opens the file there.
    virtual void OpenFile(const std::wstring& path) = 0;

    /// The same as if the path ended in that extension, such as L"csv".
    virtual void OpenFileAs(const std::wstring& path, const std::wstring& extension) = 0;

    /// How many keys and mouse buttons were pressed so far: a message that was told at another
    /// count is about something older than what goes on now.
    virtual unsigned Inputs() const = 0;

    /// The name of the page's document, or whether it is saved, is another now.
    virtual void DocumentChanged() = 0;

    /// Another language was chosen: every text on the screen is to change.
    virtual void LanguageChanged() = 0;

protected:
    ~PageHost() = default;
};

/// A command of a page, for menus: `text` as on its button.
struct PageCommand {
    int id;
    std::wstring text;
    bool possible = true;
    bool checked = false;
};

/// One page of the gallery: a child window with the controls that show and drive one subsystem.
/// A page makes its controls, places them, and answers their commands; the rest is optional.
/// One thread at a time.
class Page : public Window {
public:
    /// Makes the page's window and controls, hidden. False, with `GetLastError`, on failure.
    bool Create(HWND parent, PageHost& newHost);

    /// Takes fonts and sizes from `newLook`, which outlives the page, and places the controls anew.
    void SetLook(const Look& newLook);

    /// Shows all texts in the language that is chosen now.
    void UpdateTexts();

    /// A command of an accelerator or a control: `id` with `notification` as WM_COMMAND has them.
    /// IDOK stands for Enter outside of buttons, IDCANCEL for Esc.
    void Command(int id, int notification) override = 0;

    /// What the page can do, for its menu: what its buttons and boxes say, and what a page adds to
    /// that. The standard commands (file, editing) stand in menus of their own and count only if
    /// they are here or in `Offers`.
    virtual std::vector<PageCommand> Commands() const;

    /// Whether a standard command, such as ID_FIND, ID_EDIT or ID_UNDO, can be given now. Asked
    /// whenever a menu opens. Unless a page says more: whether it has a button for it that is
    /// enabled.
    virtual bool Offers(int command) const;

    /// Clears a message about something that the user did earlier.
    void ForgetMessage();

    /// Gives a command as its button does: ID_COPY copies `TextToCopy`.
    void Give(int command);

    /// The user went to the page, without a file to open there.
    virtual void Shown() {}

    /// Gives the focus to the control where work begins.
    virtual void TakeFocus() = 0;

    /// Brings the page into the state that its picture shows. False when there is nothing to show.
    virtual bool ShowExample() = 0;

    /// "" for a page without a document.
    virtual std::wstring DocumentName() const { return {}; }
    virtual bool Unsaved() const { return false; }

    /// Asks the user about what is not saved. False keeps the window open.
    virtual bool MayClose() { return true; }

    /// False when the page shows no documents or this one cannot be read; the page tells why.
    virtual bool Open(const std::wstring&) { return false; }

    /// To be called for each message of the thread: tips show where the mouse rests.
    void WatchMouse(const MSG& message) { tips.Watch(Handle(), message); }

protected:
    /// False, with `GetLastError`, when a control cannot be made.
    virtual bool MakeControls() = 0;

    /// Shows what was done last, or what the user is to do. It goes with the next thing that the
    /// user does on the page.
    void Tell(const std::wstring& text) { Tell(text, Tone::note); }
    /// The same as an error, with a sound.
    void Warn(const std::wstring& text);
    /// Shows in what state things are, which stays until another state is told.
    void TellState(const std::wstring& text, Tone tone = Tone::note);

    /// A child whose text is that of `key`, which is not copied.
    HWND AddButton(const char* key, int id) { return captions.AddButton(Handle(), key, id); }
    HWND AddLabel(const char* key, int id) { return captions.AddLabel(Handle(), key, id); }
    HWND AddCaption(HWND control, const char* key) { return captions.Add(control, key); }

    /// The same with a tip, whose key is not copied either.
    HWND AddButton(const char* key, int id, const char* tipKey) {
        const HWND button = AddButton(key, id);
        tips.Add(button, tipKey);
        return button;
    }

    /// As `ListView::Create`, for a list that lives as long as the page; language, look and the
    /// list's questions are seen to.
    bool AddList(ListView& list, const char* nameKey, int id, ListView::Titles titles,
                 ListView::TextOfCell textOfCell);

    /// As `Link::Create`, for a link that lives as long as the page. A click on its text is the
    /// command with this id.
    bool AddLink(Link& link, int id, const char* tipKey);

    /// The selected row of the list with the focus; "" for none.
    virtual std::wstring TextToCopy() const;

    /// WM_NOTIFY of a control, but for the questions of lists.
    virtual void Noticed(const NMHDR&) {}

    /// For texts beside those of `AddButton` and its like. What was told about earlier deeds is
    /// cleared.
    virtual void Retext() {}

    /// For what depends on the look beside fonts and places, which are seen to.
    virtual void Restyle() {}

    /// Places the controls in so many pixels, which are the page above what it tells.
    virtual void Arrange(int width, int height) = 0;

    PageHost& Host() const { return *host; }
    const Look& Sizes() const { return *look; }

    /// Places the controls again, after their texts changed. Does nothing before the page has a
    /// look.
    void Rearrange();

    void Sized() override { Rearrange(); }
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT Notify(const NMHDR& header) final;
    void Tell(const std::wstring& text, Tone tone);
    void Draw(const DRAWITEMSTRUCT& item) const;
    /// The list with the focus; null for none.
    const ListView* FocusedList() const;
    void RememberWidths(const ListView& list);
    /// Null for none.
    const Link* LinkAt(POINT point) const;
    void Click(const Link* link);

    Captions captions;
    StatusLines status;
    unsigned told = 0; ///< the count of inputs when the message was told
    Tips tips;
    std::vector<ListView*> lists;
    std::vector<Link*> links;
    const Link* pressed = nullptr; ///< where the left button went down
    PageHost* host = nullptr;
    const Look* look = nullptr;
};

/// Calls that a page shows, and the header that declares them.
struct HeaderCalls {
    const wchar_t* header;
    const wchar_t* calls;
};

/// What the main window is told about a page.
struct PageEntry {
    const char* titleKey;
    const char* groupKey = nullptr; ///< of the pages from here on; null: that of the page before
    const wchar_t* pictureName;     ///< of the PNG, without ".png"
    const wchar_t* extension = nullptr; ///< of the files that it opens; null when it opens none
    std::unique_ptr<Page> (*make)();
    const char* sentenceKey = nullptr; ///< says under the heading what the page is for
    const char* helpKey = nullptr;     ///< says more, in the help
    std::span<const HeaderCalls> calls = {};
};

} // namespace gallery

#endif
