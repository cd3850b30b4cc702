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
    Texts() {
        folder.Write("Languages.csv", "Name,Default,A,B,C,D,E,F,Charset,Code page\n"
                                      "English,Y,a.ini,,,,,,0,1252\n"
                                      "German,,a.ini,,,,,,0,1252\n"
                                      "Russian,,a.ini,,,,,,204,1251\n"
                                      "Japanese,,a.ini,,,,,,128,932\n");
        SetMasterLanguageFileFolder(std::string(folder.Path()).data());
        SetStringFile(Write("a.ini", "BoxMessage = one\\r\\ntwo\nBoxTitle = Title\nSame = Same\n"));
    }
    ~Texts() {
        SetStringFile(nullptr);
        Choose("English");
        OverrideUtilitiesStringFile(nullptr);
        SetMasterLanguageFileFolder(nullptr);
    }
    void Choose(const char* language) { SetLanguage(std::string(language).data()); }
    char* Write(const char* name, const std::string& bytes) {
        path = folder.Write(name, "[Strings]\n" + bytes);
        return path.data();
    }

private:
    TestFolder folder;
    std::string path;
};

/// What a box of these flags must show, by the rules of its header.
struct Expected {
    std::string buttons;
    int first;
    LPCSTR icon;
};
Expected ExpectedOf(UINT flags) {
    Expected expected{"O", IDOK, nullptr};
    if ((flags & 0xF) == MB_OKCANCEL)
        expected.buttons = "OC";
    else if ((flags & 0xF) == MB_YESNOCANCEL || (flags & 0xF) == MB_YESNO)
        expected = {(flags & 0xF) == MB_YESNO ? "YN" : "YNC", IDYES, nullptr};
    if ((flags & 0x30) != 0)
        expected.icon = IDI_EXCLAMATION;
    else if ((flags & 0x40) != 0)
        expected.icon = IDI_INFORMATION;
    return expected;
}

std::string VisibleButtons(HWND box) {
    std::string seen;
    const std::pair<int, char> buttons[] = {
        {IDOK, 'O'}, {IDYES, 'Y'}, {IDNO, 'N'}, {IDCANCEL, 'C'}};
    for (const auto& [id, letter] : buttons) {
        if (IsWindowVisible(GetDlgItem(box, id)) != FALSE)
            seen += letter;
    }
    return seen;
}

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
        EXPECT_TRUE(EqualRect(&common, &client)) << GetDlgCtrlID(child);
        places.push_back(place);
    }
}

void ExpectBox(HWND box, UINT flags) {
    const Expected expected = ExpectedOf(flags);
    EXPECT_EQ(VisibleButtons(box), expected.buttons);
    EXPECT_EQ(GetFocus(), GetDlgItem(box, expected.first));
    EXPECT_EQ(LOWORD(SendMessageW(box, DM_GETDEFID, 0, 0)), expected.first);
    EXPECT_EQ(IsWindowVisible(GetDlgItem(box, checkBoxId)) != FALSE, (flags & asksAgain) != 0);
    const HICON icon = expected.icon != nullptr ? LoadIconA(nullptr, expected.icon) : nullptr;
    EXPECT_EQ(reinterpret_cast<HICON>(SendDlgItemMessageW(box, iconId, STM_GETICON, 0, 0)), icon);
    const HWND message = GetDlgItem(box, messageId);
    RECT area{};
    GetClientRect(message, &area);
    const RECT place = ScreenRect(box);
    const RECT screen = GetMonitorRectFromWindow(box);
    if (place.bottom - place.top < screen.bottom - screen.top) {
        EXPECT_GE(area.bottom, NeededHeight(message));
    }
    EXPECT_TRUE(place.top >= screen.top && place.bottom <= screen.bottom);
    ExpectTidy(box);
}

} // namespace

TEST(MessageBoxes, ShowsWhatItsFlagsAskForInEveryLanguage) {
    struct Row {
        const char* language;
        std::string ownTexts;
        std::wstring no;
        std::string word; ///< of the message
    };
    const Row rows[] = {
        {"English", "Cancel=Cancel\nNo=&No\n", L"&No", "word "},
        {"German", "Cancel=Abbrechen\nNo=N\xE4&h\n", L"N\u00E4&h", "gr\xFC\xDF "},
        {"Russian",
         "Cancel=\xCE\xF2\n"
         "No=&\xCD\xE5\xF2\n",
         L"&\u041D\u0435\u0442", "\xD1\xEB\xEE\xE2\xEE "},
        {"Japanese", "Cancel=\x83L\nNo=\x82\xA2(&N)\n", L"\u3044(&N)", "\x8A\xBF\x8E\x9A"}};
    const TestWindow owner;
    for (const Row& row : rows) {
        Texts texts;
        texts.Choose(row.language);
        OverrideUtilitiesStringFile(
            texts.Write((row.language + std::string(".ini")).c_str(), row.ownTexts));
        for (int repeats : {1, 60, 400}) {
            for (UINT flags = 0; flags < 0x80; ++flags) {
                if ((flags & 0xF) > MB_RETRYCANCEL || (repeats > 1 && flags % 16 > 1))
                    continue;
                SCOPED_TRACE(testing::Message()
                             << row.language << " x " << repeats << ", flags " << flags);
                std::string message;
                for (int i = 0; i < repeats; ++i)
                    message += row.word;
                const UINT all = flags | (flags % 2 != 0 ? asksAgain : 0);
                const int answer = WhileOpen(
                    [&] {
                        return UT_MyMessageStr(owner.Handle(), message.data(), all, nullptr, 0);
                    },
                    [&](HWND box) {
                        ExpectBox(box, all);
                        EXPECT_EQ(TextOf(GetDlgItem(box, IDNO)), row.no);
                        SendMessageW(GetFocus(), BM_CLICK, 0, 0);
                    });
                ASSERT_EQ(answer, ExpectedOf(all).first);
            }
        }
    }
}

TEST(MessageBoxes, TakesMessagesAndTitlesFromTheStringFile) {
    struct Row {
        const char* key;
        const char* defaultText;
        std::wstring message;
    };
    const std::string tooLong(3000, 'm');
    const std::string word(300, 'w');
    const Row rows[] = {{"BoxMessage", "else", L"one\ntwo"},
                        {"BoxMissing", "else\\nmore", L"else\rmore"},
                        {"BoxMissing", nullptr, L"BoxMissing"},
                        {"BoxMissing", "", L""},
                        {"Same", "else", L"Same"},
                        {"BoxMissing", "a & b", L"a & b"},
                        {"BoxMissing", tooLong.c_str(), std::wstring(2047, L'm')},
                        {"BoxMissing", word.c_str(), std::wstring(300, L'w')}};
    Texts texts;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.key);
        WhileOpen(
            [&] {
                return UT_MyDialog(nullptr, const_cast<char*>(row.key),
                                   std::string("BoxTitle").data(), MB_OK,
                                   const_cast<char*>(row.defaultText));
            },
            [&](HWND box) {
                EXPECT_EQ(TextOf(GetDlgItem(box, messageId)), row.message);
                EXPECT_EQ(TextOf(box), L"Title");
                ExpectBox(box, MB_OK);
                PostMessageW(box, WM_CLOSE, 0, 0);
            });
    }
}

TEST(MessageBoxes, KeepsTheStateOfABoxApartFromThatOfOneOverIt) {
    const TestWindow owner;
    const auto show = [&] {
        return UT_MyMessageStr(owner.Handle(), std::string("m").data(), MB_YESNO | asksAgain,
                               std::string("t").data(), /*iconId=*/31000);
    };
    const auto click = [](HWND box, int button, bool check) {
        EXPECT_EQ(SendDlgItemMessageW(box, iconId, STM_GETICON, 0, 0), 0) << "no such icon";
        CheckDlgButton(box, checkBoxId, check ? BST_CHECKED : BST_UNCHECKED);
        SendDlgItemMessageW(box, button, BM_CLICK, 0, 0);
    };
    struct Row {
        const char* name;
        bool innerCheck;
        int outer; ///< 0: closed
        bool outerCheck;
        int answer;
        int doNotAsk;
    };
    for (const Row& row : {Row{"closed after", false, 0, false, IDCANCEL, 1},
                           Row{"no, set", false, IDNO, true, IDNO, 1},
                           Row{"yes, not set", true, IDYES, false, IDYES, 0}}) {
        SCOPED_TRACE(row.name);
        const int answer = WhileOpen(show, [&](HWND outer) {
            EXPECT_EQ(UT_DoNotAskLastMessageAgain(), 1) << "while it is open";
            EXPECT_EQ(WhileOpen(show, [&](HWND box) { click(box, IDYES, row.innerCheck); }), IDYES);
            EXPECT_EQ(UT_DoNotAskLastMessageAgain(), row.innerCheck ? 1 : 0);
            if (row.outer == 0)
                PostMessageW(outer, WM_CLOSE, 0, 0);
            else
                click(outer, row.outer, row.outerCheck);
        });
        EXPECT_EQ(answer, row.answer);
        EXPECT_EQ(UT_DoNotAskLastMessageAgain(), row.doNotAsk);
    }
    EXPECT_EQ(UT_MyMessageStr(reinterpret_cast<HWND>(-7), nullptr, 0, nullptr, 0), 0)
        << "over a window that is none";
}

TEST(MessageBoxes, AnswersToTheKeyboard) {
    const TestWindow owner;
    struct Row {
        const char* name;
        WPARAM key;
        int focus;
        int answer;
    };
    for (const Row& row : {Row{"Esc", VK_ESCAPE, IDYES, IDCANCEL},
                           Row{"Enter in the check box", VK_RETURN, checkBoxId, IDYES},
                           Row{"Enter on No", VK_RETURN, IDNO, IDNO}}) {
        const int answer = WhileOpen(
            [&] {
                return UT_MyMessageStr(owner.Handle(), std::string("m").data(),
                                       MB_YESNO | asksAgain, nullptr, 0);
            },
            [&](HWND box) {
                SendMessageW(box, WM_NEXTDLGCTL,
                             reinterpret_cast<WPARAM>(GetDlgItem(box, row.focus)), TRUE);
                PostMessageW(GetFocus(), WM_KEYDOWN, row.key, 0);
            });
        EXPECT_EQ(answer, row.answer) << row.name;
    }
}
