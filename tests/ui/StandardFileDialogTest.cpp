#include "utilities/ui/WindowGeometry.h"

#include "tests/support/TestFolder.h"
#include "tests/support/TestWindow.h"
#include "tests/support/Watchdog.h"

#include <algorithm>
#include <commdlg.h>
#include <cstring>
#include <dlgs.h>
#include <gtest/gtest.h>

namespace {

using Step = std::function<void(HWND)>;

Step Presses(WPARAM button) {
    return [=](HWND dialog) { PostMessageA(dialog, WM_COMMAND, button, 0); };
}

Step Answers(const std::string& name, WPARAM button = IDOK) {
    return [=](HWND dialog) {
        const HWND combo = GetDlgItem(dialog, cmb13);
        SendMessageA(combo != nullptr ? combo : GetDlgItem(dialog, edt1), WM_SETTEXT, 0,
                     reinterpret_cast<LPARAM>(name.c_str()));
        Presses(button)(dialog);
    };
}

/// One call with its buffers.
struct Question {
    int Ask(bool open, const std::string& folder, const std::vector<Step>& steps,
            HWND owner = nullptr) {
        const Watchdog watchdog("a dialog of files", 60);
        char filter[] = "Text\0*.txt\0Sound\0*.wav;*.mp3\0";
        char extension[] = "txt";
        char title[] = "Which one?";
        std::string start = folder;
        const auto show = [&] {
            return DoStandardFileDialog(nullptr, owner, file, name, size, open, filter, extension,
                                        title, start.data(), &filterIndex, OFN_NOCHANGEDIR);
        };
        return WhileOpen(show, steps);
    }
    char file[MAX_PATH] = "";
    char name[MAX_PATH] = "";
    DWORD size = MAX_PATH;
    unsigned filterIndex = 1;
};

TEST(StandardFileDialog, OpensWhatIsThere) {
    const TestFolder folder;
    const std::string there = folder.Write("there.txt", "");
    const TestWindow owner(L"STATIC", WS_POPUP | WS_VISIBLE, {500, 300, 700, 400});
    Question question;
    RECT frame{};
    const auto look = [&](HWND dialog) {
        frame = ScreenRect(dialog);
        EXPECT_EQ(TextOf(dialog), L"Which one?");
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), HWND{owner});
        const HWND filters = GetDlgItem(dialog, cmb1);
        SendMessageA(filters, CB_SETCURSEL, 1, 0);
        SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(cmb1, CBN_SELENDOK),
                     reinterpret_cast<LPARAM>(filters));
        Answers("not there")(dialog);
    };
    EXPECT_EQ(question.Ask(true, folder.Path(), {look, Presses(IDOK), Answers("there.txt")}, owner),
              1);
    EXPECT_EQ(_stricmp(question.file, there.c_str()), 0) << question.file;
    EXPECT_STREQ(question.name, "there.txt");
    EXPECT_EQ(question.filterIndex, 2U);
    const RECT area = GetMonitorRectFromWindow(owner);
    const LONG width = frame.right - frame.left, height = frame.bottom - frame.top;
    EXPECT_NEAR(frame.left,
                std::clamp(600 - width / 2, area.left, std::max(area.left, area.right - width)), 1);
    EXPECT_NEAR(frame.top,
                std::clamp(350 - height / 2, area.top, std::max(area.top, area.bottom - height)),
                20)
        << "the check box goes after the dialog was centred";
}

TEST(StandardFileDialog, AsksBeforeItSavesOverAFile) {
    const TestFolder folder;
    const std::string there = folder.Write("there.txt", "");
    Question question;
    std::strcpy(question.file, "there.txt");
    EXPECT_EQ(question.Ask(false, folder.Path(), {Presses(IDOK), Presses(IDNO), Answers("new")}),
              1);
    EXPECT_EQ(_stricmp(question.file, folder.File("new.txt").c_str()), 0) << question.file;
    EXPECT_EQ(question.filterIndex, 1U);
    EXPECT_EQ(question.Ask(false, folder.Path(), {Answers("there.txt"), Presses(IDYES)}), 1);
    EXPECT_EQ(_stricmp(question.file, there.c_str()), 0) << question.file;
}

TEST(StandardFileDialog, GivesNothingWhenItIsCancelledOrTheNameDoesNotFit) {
    const TestFolder folder;
    folder.Write("there.txt", "");
    Question question;
    EXPECT_EQ(question.Ask(true, folder.Path(), {Answers("there.txt", IDCANCEL)}), 0);
    EXPECT_STREQ(question.file, "");
    question.size = 8;
    std::memset(question.file + 8, '#', 8);
    EXPECT_EQ(question.Ask(true, folder.Path(), {Answers("there.txt")}), 0);
    EXPECT_EQ(CommDlgExtendedError(), DWORD{FNERR_BUFFERTOOSMALL});
    EXPECT_EQ(std::string(question.file + 8, 8), "########");
}

} // namespace
