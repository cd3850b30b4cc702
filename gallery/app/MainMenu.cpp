#include "gallery/app/MainMenu.h"

#include "gallery/app/ControlIds.h"
#include "gallery/text/Language.h"
#include "gallery/widgets/Controls.h"

#include <algorithm>
#include <iterator>

namespace gallery {

namespace {

using Item = std::pair<int, const char*>; ///< id and key of the text; id 0 is a line

constexpr Item fileItems[] = {
    {ID_OPEN, "Open"}, {ID_SAVE, "Save"},         {ID_SAVE_AS, "SaveAs"},
    {0, nullptr},      {ID_RELOAD, "MenuReload"}, {ID_EXAMPLE, "MenuExample"},
    {0, nullptr},      {ID_EXIT, "MenuExit"}};
constexpr Item editItems[] = {{ID_UNDO, "MenuUndo"},
                              {ID_REDO, "MenuRedo"},
                              {0, nullptr},
                              {ID_CUT, "MenuCut"},
                              {ID_COPY, "MenuCopy"},
                              {ID_PASTE, "MenuPaste"},
                              {ID_SELECT_ALL, "MenuSelectAll"},
                              {0, nullptr},
                              {ID_FIND, "MenuFind"},
                              {ID_FIND_NEXT, "MenuFindNext"},
                              {ID_EDIT, "MenuEditValue"}};
constexpr Item goItems[] = {
    {0, nullptr}, {ID_NEXT_PAGE, "MenuNextPage"}, {ID_PREVIOUS_PAGE, "MenuPreviousPage"}};
constexpr Item helpItems[] = {{ID_HELP_PAGE, "MenuHelpPage"}, {ID_ABOUT, "MenuAbout"}};

bool IsStandard(int command) {
    const auto has = [command](std::span<const Item> items) {
        return std::any_of(items.begin(), items.end(),
                           [command](const Item& item) { return item.first == command; });
    };
    return has(fileItems) || has(editItems);
}

std::wstring NameOfKey(WORD key) {
    if (key >= VK_F1 && key <= VK_F12)
        return L"F" + std::to_wstring(key - VK_F1 + 1);
    if (key == VK_TAB)
        return Text("KeyTab");
    return std::wstring(1, static_cast<wchar_t>(key));
}

/// Shows where the focus is what a field can do, without the page.
bool FieldCan(int command) {
    const HWND focus = GetFocus();
    const bool field = IsField(focus);
    const bool writable = field && (GetWindowLongPtrW(focus, GWL_STYLE) & ES_READONLY) == 0;
    switch (command) {
    case ID_UNDO:
        return SendMessageW(focus, EM_CANUNDO, 0, 0) != 0;
    case ID_CUT:
        return writable;
    case ID_PASTE:
        return writable && IsClipboardFormatAvailable(CF_UNICODETEXT) != FALSE;
    case ID_COPY:
    case ID_SELECT_ALL:
        return field;
    default:
        return false;
    }
}

void Empty(HMENU menu) {
    while (DeleteMenu(menu, 0, MF_BYPOSITION)) {
    }
}

HMENU AddMenu(HMENU bar, const char* key) {
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), Text(key).c_str());
    return menu;
}

void SetPossible(HMENU menu, int command, bool possible) {
    const UINT state = possible ? UINT{MF_ENABLED} : UINT{MF_GRAYED};
    EnableMenuItem(menu, static_cast<UINT>(command), MF_BYCOMMAND | state);
}

void Enable(HMENU menu, std::span<const Item> items, const Page& page) {
    for (const Item& item : items) {
        const bool possible =
            item.first == ID_EXIT || FieldCan(item.first) || page.Offers(item.first);
        SetPossible(menu, item.first, possible);
    }
}

} // namespace

MainMenu::MainMenu(std::span<const PageEntry> newPages, HACCEL newAccelerators) : pages(newPages) {
    accelerators.resize(static_cast<std::size_t>(
        CopyAcceleratorTableW(newAccelerators, /*lpAccelDst=*/nullptr, 0)));
    CopyAcceleratorTableW(newAccelerators, accelerators.data(),
                          static_cast<int>(accelerators.size()));
}

std::wstring MainMenu::Keys(int command) const {
    if (command == ID_EXIT)
        return L"Alt+F4";
    const auto found = std::find_if(accelerators.begin(), accelerators.end(),
                                    [command](const ACCEL& one) { return one.cmd == command; });
    if (found == accelerators.end())
        return {};
    std::wstring keys;
    if ((found->fVirt & FCONTROL) != 0)
        keys += Text("KeyCtrl") + L"+";
    if ((found->fVirt & FSHIFT) != 0)
        keys += Text("KeyShift") + L"+";
    return keys + NameOfKey(found->key);
}

void MainMenu::Add(HMENU menu, int command, const std::wstring& text) const {
    const std::wstring keys = Keys(command);
    AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(command),
                (keys.empty() ? text : text + L"\t" + keys).c_str());
}

void MainMenu::AddStandard(HMENU menu, std::span<const Item> items) const {
    for (const Item& item : items) {
        if (item.first == 0)
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        else
            Add(menu, item.first, Text(item.second));
    }
}

void MainMenu::Show(HWND window) {
    const HMENU previous = bar;
    bar = CreateMenu();
    file = AddMenu(bar, "MenuFile");
    AddStandard(file, fileItems);
    edit = AddMenu(bar, "MenuEdit");
    AddStandard(edit, editItems);
    commands = AddMenu(bar, "MenuPage");
    go = AddMenu(bar, "MenuGo");
    for (std::size_t i = 0; i < pages.size(); ++i)
        Add(go, ID_FIRST_PAGE + static_cast<int>(i), Text(pages[i].titleKey));
    AddStandard(go, goItems);
    language = AddMenu(bar, "MenuLanguage");
    int id = ID_FIRST_LANGUAGE;
    for (const std::string& name : Languages())
        Add(language, id++, OwnName(name));
    AddStandard(AddMenu(bar, "MenuHelp"), helpItems);
    SetMenu(window, bar);
    if (previous != nullptr)
        DestroyMenu(previous);
}

void MainMenu::Update(HMENU opening, const Page& page, int pageIndex) {
    if (opening == file)
        return Enable(file, fileItems, page);
    if (opening == edit)
        return Enable(edit, editItems, page);
    if (opening == go) {
        CheckMenuRadioItem(go, ID_FIRST_PAGE, ID_FIRST_PAGE + static_cast<UINT>(pages.size()) - 1,
                           ID_FIRST_PAGE + static_cast<UINT>(pageIndex), MF_BYCOMMAND);
    } else if (opening == language) {
        const std::vector<std::string> names = Languages();
        const auto chosen = std::find(names.begin(), names.end(), ChosenLanguage());
        if (chosen != names.end())
            CheckMenuRadioItem(language, ID_FIRST_LANGUAGE,
                               ID_FIRST_LANGUAGE + static_cast<UINT>(names.size()) - 1,
                               ID_FIRST_LANGUAGE + static_cast<UINT>(chosen - names.begin()),
                               MF_BYCOMMAND);
    } else if (opening == commands) {
        Empty(commands);
        AddCommands(commands, page);
        if (GetMenuItemCount(commands) == 0)
            AppendMenuW(commands, MF_GRAYED, 0, Text("MenuNoCommand").c_str());
    }
}

void MainMenu::AddCommands(HMENU menu, const Page& page) const {
    for (const PageCommand& command : page.Commands()) {
        if (IsStandard(command.id))
            continue;
        Add(menu, command.id, command.text);
        SetPossible(menu, command.id, command.possible);
        if (command.checked)
            CheckMenuItem(menu, static_cast<UINT>(command.id), MF_BYCOMMAND | MF_CHECKED);
    }
}

void MainMenu::Ask(HWND window, POINT place, const Page& page) {
    const HMENU menu = CreatePopupMenu();
    for (const Item& item : editItems) {
        if (item.first != 0 && (FieldCan(item.first) || page.Offers(item.first)))
            Add(menu, item.first, Text(item.second));
    }
    if (GetMenuItemCount(menu) > 0)
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AddCommands(menu, page);
    Add(menu, ID_HELP_PAGE, Text("MenuHelpPage"));
    TrackPopupMenu(menu, TPM_RIGHTBUTTON, place.x, place.y, /*nReserved=*/0, window,
                   /*prcRect=*/nullptr);
    DestroyMenu(menu);
}

} // namespace gallery
