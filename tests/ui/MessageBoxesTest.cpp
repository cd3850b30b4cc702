#include "utilities/ui/MessageBoxes.h"

#include "common/Handles.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestWindow.h"
#include "utilities/text/language/LanguageStrings.h"
#include "utilities/ui/WindowGeometry.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT asksAgain = 0x10000;
constexpr int messageId = 1194;
constexpr int iconId = 1193;
constexpr int checkBoxId = 1197;

/// The library's own texts, the table of languages and the messages, as an application ships them.
class Texts {
public:
    explicit Texts(const std::string& language = "English", const std::string& ownTexts = "") {
        folder.Write("Languages.csv", "Name,Default,A,B,C,D,E,F,Charset,Code page\n"
                                      "English,Y,a.ini,,,,,,0,1252\n"
                                      "German,,a.ini,,,,,,0,1252\n"
                                      "Russian,,a.ini,,,,,,204,1251\n"
                                      "Japanese,,a.ini,,,,,,128,932\n");
        SetMasterLanguageFileFolder(std::string(folder.Path()).data());
        SetStringFile(folder
                          .Write("a.ini", "[Strings]\nBoxMessage = one\\r\\ntwo\n"
                                          "BoxTitle = Title\nSame = Same\n")
                          .data());
        SetLanguage(std::string(language).data());
        OverrideUtilitiesStringFile(folder.Write("own.ini", "[Strings]\n" + ownTexts).data());
    }
    ~Texts() {
        SetStringFile(nullptr);
        SetLanguage(std::string("English").data());
        OverrideUtilitiesStringFile(nullptr);
        SetMasterLanguageFileFolder(nullptr);
    }

private:
    TestFolder folder;
};

/// Without a title.
int Show(HWND owner, std::string message, UINT flags, UINT icon = 0) {
    return UT_MyMessageStr(owner, message.data(), flags, nullptr, icon);
}

/// What a box of these flags must show, by the rules of its header.
struct Expected {
    explicit Expected(UINT flags) {
        const UINT kind = flags & 0xF;
        if (kind == MB_YESNOCANCEL || kind == MB_YESNO)
            buttons = {IDYES, IDNO};
        if (kind == MB_OKCANCEL || kind == MB_YESNOCANCEL)
            buttons.push_back(IDCANCEL);
        if ((flags & 0x30) != 0)
            icon = LoadIconA(nullptr, IDI_EXCLAMATION);
        else if ((flags & 0x40) != 0)
            icon = LoadIconA(nullptr, IDI_INFORMATION);
    }
    std::vector<int> buttons{IDOK};
    HICON icon = nullptr;
};

/// In the font in which the control draws it.
int NeededHeight(HWND control) {
    const vtr::WindowDc dc(GetDC(control));
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    const vtr::SelectedObject selected(dc.Get(), font);
    RECT area{};
    GetClientRect(control, &area);
    return DrawTextW(dc.Get(), TextOf(control).c_str(), -1, &area,
                     DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS);
}

/// Every visible control lies whole in the box, and none over another.
void ExpectTidy(HWND box) {
    RECT client{};
    GetClientRect(box, &client);
    MapWindowPoints(box, nullptr, reinterpret_cast<POINT*>(&client), 2);
    std::vector<RECT> places;
    for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (IsWindowVisible(child) == FALSE)
            continue;
        const RECT place = ScreenRect(child);
        RECT common{};
        for (const RECT& other : places)
            EXPECT_FALSE(IntersectRect(&common, &place, &other)) << GetDlgCtrlID(child);
        UnionRect(&common, &place, &client);
        EXPECT_EQ(common, client) << GetDlgCtrlID(child);
        places.push_back(place);
    }
}

void ExpectBox(HWND box, UINT flags) {
    const Expected expected(flags);
    std::vector<int> buttons;
    for (const int id : {IDOK, IDYES, IDNO, IDCANCEL}) {
        if (IsWindowVisible(GetDlgItem(box, id)) != FALSE)
            buttons.push_back(id);
    }
    EXPECT_EQ(buttons, expected.buttons);
    EXPECT_EQ(GetFocus(), GetDlgItem(box, buttons[0]));
    EXPECT_EQ(LOWORD(SendMessageW(box, DM_GETDEFID, 0, 0)), buttons[0]);
    EXPECT_EQ(IsWindowVisible(GetDlgItem(box, checkBoxId)) != FALSE, (flags & asksAgain) != 0);
    EXPECT_EQ(reinterpret_cast<HICON>(SendDlgItemMessageW(box, iconId, STM_GETICON, 0, 0)),
              expected.icon);
    RECT area{};
    GetClientRect(GetDlgItem(box, messageId), &area);
    const RECT place = ScreenRect(box);
    const RECT screen = GetMonitorRectFromWindow(box);
    if (place.bottom - place.top < screen.bottom - screen.top) {
        EXPECT_GE(area.bottom, NeededHeight(GetDlgItem(box, messageId)));
    }
    EXPECT_TRUE(place.top >= screen.top && place.bottom <= screen.bottom);
    ExpectTidy(box);
}

} // namespace

TEST(MessageBoxes, ShowsWhatItsFlagsAskForInEveryLanguage) {
    const struct {
        const char* language;
        std::string ownTexts;
        std::wstring no;
        std::string word; ///< of the message
    } rows[] = {
        {"English", "Cancel=Cancel\nNo=&No\n", L"&No", "word "},
        {"German", "Cancel=Abbrechen\nNo=N\xE4&h\n", L"N\u00E4&h", "gr\xFC\xDF "},
        {"Russian", "Cancel=\xCE\xF2\nNo=&\xCD\xE5\xF2\n", L"&\u041D\u0435\u0442", "\xD1\xEB\xE8 "},
        {"Japanese", "Cancel=\x83L\nNo=\x82\xA2(&N)\n", L"\u3044(&N)", "\x8A\xBF\x8E\x9A"}};
    const TestWindow owner;
    for (const auto& row : rows) {
        const Texts texts(row.language, row.ownTexts);
        std::string message;
        for (const int repeats : {1, 60, 400}) {
            while (message.size() < static_cast<std::size_t>(repeats) * row.word.size())
                message += row.word;
            for (UINT flags = 0; flags < 0x80; ++flags) {
                if ((flags & 0xF) > MB_RETRYCANCEL || (repeats > 1 && flags % 16 > 1))
                    continue;
                SCOPED_TRACE(testing::Message()
                             << row.language << " x " << repeats << ", flags " << flags);
                const UINT all = flags | (flags % 2 != 0 ? asksAgain : 0);
                const auto look = [&](HWND box) {
                    ExpectBox(box, all);
                    EXPECT_EQ(TextOf(GetDlgItem(box, IDNO)), row.no);
                    SendMessageW(GetFocus(), BM_CLICK, 0, 0);
                };
                ASSERT_EQ(WhileOpen([&] { return Show(owner, message, all); }, {look}),
                          Expected(all).buttons[0]);
            }
        }
    }
}

TEST(MessageBoxes, TakesMessagesAndTitlesFromTheStringFile) {
    const std::string tooLong(3000, 'm');
    const struct {
        const char* key;
        const char* defaultText;
        std::wstring message;
    } rows[] = {{"BoxMessage", "else", L"one\ntwo"},
                {"BoxMissing", "else\\nmore", L"else\rmore"},
                {"BoxMissing", nullptr, L"BoxMissing"},
                {"Same", "else", L"Same"},
                {"BoxMissing", "a & b", L"a & b"},
                {"BoxMissing", tooLong.c_str(), std::wstring(2047, L'm')}};
    const Texts texts;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key);
        std::string key = row.key, title = "BoxTitle";
        const auto show = [&] {
            return UT_MyDialog(nullptr, key.data(), title.data(), MB_OK,
                               const_cast<char*>(row.defaultText));
        };
        const auto look = [&](HWND box) {
            EXPECT_EQ(TextOf(GetDlgItem(box, messageId)), row.message);
            EXPECT_EQ(TextOf(box), L"Title");
            ExpectBox(box, MB_OK);
            PostMessageW(GetFocus(), WM_KEYDOWN, VK_RETURN, 0);
        };
        WhileOpen(show, {look});
    }
}

TEST(MessageBoxes, KeepsTheStateOfABoxApartFromThatOfOneOverIt) {
    const TestWindow owner;
    const auto show = [&] { return Show(owner, "m", MB_YESNO | asksAgain, /*icon=*/31000); };
    const auto clicks = [](int button, bool check) {
        return [=](HWND box) {
            EXPECT_EQ(SendDlgItemMessageW(box, iconId, STM_GETICON, 0, 0), 0) << "no such icon";
            CheckDlgButton(box, checkBoxId, check ? BST_CHECKED : BST_UNCHECKED);
            SendDlgItemMessageW(box, button, BM_CLICK, 0, 0);
        };
    };
    struct Row {
        bool innerCheck;
        int outer; ///< 0: closed
        bool outerCheck;
        int answer;
        int doNotAsk;
    };
    for (const Row& row : {Row{false, 0, false, IDCANCEL, 1}, Row{false, IDNO, true, IDNO, 1},
                           Row{true, IDYES, false, IDYES, 0}}) {
        SCOPED_TRACE(row.answer);
        const auto drive = [&](HWND outer) {
            EXPECT_EQ(UT_DoNotAskLastMessageAgain(), 1) << "while it is open";
            EXPECT_EQ(WhileOpen(show, {clicks(IDYES, row.innerCheck)}), IDYES);
            EXPECT_EQ(UT_DoNotAskLastMessageAgain(), row.innerCheck ? 1 : 0);
            if (row.outer == 0)
                PostMessageW(outer, WM_CLOSE, 0, 0);
            else
                clicks(row.outer, row.outerCheck)(outer);
        };
        EXPECT_EQ(WhileOpen(show, {drive}), row.answer);
        EXPECT_EQ(UT_DoNotAskLastMessageAgain(), row.doNotAsk);
    }
    EXPECT_EQ(Show(reinterpret_cast<HWND>(-7), "m", 0), 0) << "over a window that is none";
}
