#include "gallery/app/Help.h"

#include "gallery/app/ControlIds.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"
#include "gallery/widgets/Reader.h"

#include <algorithm>

namespace gallery {

namespace {

constexpr wchar_t lineEnd[] = L"\r\n";

/// As windows show lines.
std::wstring Lines(const std::wstring& text) {
    std::wstring lines;
    for (const wchar_t c : text)
        lines += c == L'\n' ? std::wstring(lineEnd) : std::wstring(1, c);
    return lines;
}

/// Without the marks of its mnemonic: "&Open..." is "Open", and so is "Open(&O)...".
std::wstring Plain(std::wstring text) {
    const std::size_t bracket = text.find(L"(&");
    if (bracket != std::wstring::npos && bracket + 3 < text.size() && text[bracket + 3] == L')')
        text.erase(bracket, 4);
    text.erase(std::remove(text.begin(), text.end(), L'&'), text.end());
    const std::size_t dots = text.find(L"...");
    return text.substr(0, dots);
}

std::wstring Calls(const PageEntry& entry) {
    std::wstring text;
    for (const HeaderCalls& header : entry.calls)
        text += std::wstring(L"  ") + header.header + lineEnd + L"    " + header.calls + lineEnd;
    return text;
}

/// The key of Alt that a text names; "" for none.
std::wstring Mnemonic(const std::wstring& text) {
    const std::size_t mark = text.find(L'&');
    if (mark == std::wstring::npos || mark + 1 >= text.size())
        return {};
    std::wstring letter = text.substr(mark + 1, 1);
    CharUpperBuffW(letter.data(), 1);
    return L"Alt+" + letter;
}

std::wstring KeysOf(const Page& page, const MainMenu& menu) {
    std::wstring text;
    const auto add = [&](const std::wstring& keys, const std::wstring& what) {
        if (!keys.empty())
            text += L"  " + keys + L": " + Plain(what) + lineEnd;
    };
    for (const PageCommand& command : page.Commands()) {
        const std::wstring keys = menu.Keys(command.id);
        add(keys.empty() ? Mnemonic(command.text) : keys, command.text);
    }
    constexpr std::pair<int, const char*> others[] = {{ID_FIND, "MenuFind"},
                                                      {ID_EDIT, "MenuEditValue"},
                                                      {ID_NEXT_PAGE, "MenuNextPage"},
                                                      {ID_PREVIOUS_PAGE, "MenuPreviousPage"}};
    for (const auto& [id, key] : others) {
        if (id == ID_NEXT_PAGE || id == ID_PREVIOUS_PAGE || page.Offers(id))
            add(menu.Keys(id), Text(key));
    }
    return text;
}

} // namespace

void ShowHelp(HWND owner, const Look& look, const PageEntry& entry, const Page& page,
              const MainMenu& menu) {
    std::wstring text = Lines(Text(entry.helpKey != nullptr ? entry.helpKey : entry.titleKey));
    if (!entry.calls.empty())
        text += std::wstring(lineEnd) + lineEnd + Text("HelpCalls") + lineEnd + Calls(entry);
    text += lineEnd + Text("HelpKeys") + lineEnd + KeysOf(page, menu);
    ShowReader(owner, look, ID_READER, ID_READER_TEXT, Text("HelpTitle", {Text(entry.titleKey)}),
               text, Text("Close"));
}

void ShowAbout(HWND owner, const Look& look) {
    const std::wstring version = Widen(GALLERY_VERSION, CP_UTF8);
    ShowReader(owner, look, ID_READER, ID_READER_TEXT, Plain(Text("MenuAbout")),
               Lines(Text("AboutText", {version}) + L"\n\n" + Text("AboutLicences")),
               Text("Close"));
}

} // namespace gallery
