#include "utilities/ui/WindowGeometry.h"

#include "tests/support/TestFolder.h"
#include "tests/support/Watchdog.h"
#include "tests/ui/TestWindow.h"

#include <algorithm>
#include <commdlg.h>
#include <cstring>
#include <dlgs.h>
#include <functional>
#include <gtest/gtest.h>

namespace {

/// What the user does in dialogs that are open on this thread, one step for each of them, from the
/// timer of their message loop. A step is taken when its dialog, the topmost, is shown and enabled.
class User {
public:
    using Step = std::function<void(HWND)>;

    explicit User(std::vector<Step> toDo) : steps(std::move(toDo)) {
        current = this;
        timer = SetTimer(nullptr, 0, /*uElapse=*/20, &User::Look);
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;
    ~User() {
        KillTimer(nullptr, timer);
        EXPECT_EQ(done, steps.size()) << "dialogs were shown";
    }

private:
    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
        HWND found = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), &User::IsDialog, reinterpret_cast<LPARAM>(&found));
        if (found == nullptr || found == current->last || current->done == current->steps.size())
            return;
        current->last = found;
        current->steps[current->done++](found);
    }

    static BOOL CALLBACK IsDialog(HWND window, LPARAM found) {
        char name[32];
        GetClassNameA(window, name, sizeof name);
        const bool isReady = IsWindowVisible(window) && IsWindowEnabled(window);
        if (std::strcmp(name, "#32770") != 0 || !isReady)
            return TRUE;
        *reinterpret_cast<HWND*>(found) = window;
        return FALSE;
    }

    static User* current;
    std::vector<Step> steps;
    std::size_t done = 0;
    HWND last = nullptr;
    UINT_PTR timer;
};

User* User::current = nullptr;

void Press(HWND dialog, WPARAM button) {
    PostMessageA(dialog, WM_COMMAND, button, 0);
}

void Type(HWND dialog, const std::string& name) {
    HWND box = GetDlgItem(dialog, cmb13);
    box = box != nullptr ? box : GetDlgItem(dialog, edt1);
    SendMessageA(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
}

User::Step Answers(const std::string& name, WPARAM button = IDOK) {
    return [=](HWND dialog) {
        Type(dialog, name);
        Press(dialog, button);
    };
}

User::Step Presses(WPARAM button) {
    return [=](HWND dialog) { Press(dialog, button); };
}

void ChooseFilter(HWND dialog, WPARAM index) {
    const HWND box = GetDlgItem(dialog, cmb1);
    SendMessageA(box, CB_SETCURSEL, index, 0);
    SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(cmb1, CBN_SELENDOK), reinterpret_cast<LPARAM>(box));
}

/// One call with its buffers.
struct Question {
    int Ask(const std::vector<User::Step>& steps, bool open, const std::string& folder,
            HWND owner = nullptr) {
        const User user(steps);
        char filter[] = "Text\0*.txt\0Sound\0*.wav;*.mp3\0";
        char extension[] = "txt";
        char title[] = "Which one?";
        std::string start = folder;
        return DoStandardFileDialog(nullptr, owner, file, name, size, open, filter, extension,
                                    title, start.data(), &filterIndex, OFN_NOCHANGEDIR);
    }
    char file[MAX_PATH] = "";
    char name[MAX_PATH] = "";
    DWORD size = MAX_PATH;
    unsigned filterIndex = 1;
};

TEST(StandardFileDialog, OpensWhatIsThere) {
    const Watchdog watchdog("a dialog to open a file", 60);
    const TestFolder folder;
    const std::string there = folder.Write("there.txt", "");
    const TestWindow owner("STATIC", WS_POPUP | WS_VISIBLE, {500, 300, 700, 400});
    Question question;
    RECT frame{};
    const auto look = [&](HWND dialog) {
        frame = RectOf(dialog);
        char text[64];
        GetWindowTextA(dialog, text, sizeof text);
        EXPECT_STREQ(text, "Which one?");
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), static_cast<HWND>(owner));
        ChooseFilter(dialog, 1);
        Type(dialog, "not there");
        Press(dialog, IDOK);
    };
    EXPECT_EQ(question.Ask({look, Presses(IDOK), Answers("there.txt")}, true, folder.Path(), owner),
              1);
    EXPECT_EQ(_stricmp(question.file, there.c_str()), 0) << question.file;
    EXPECT_STREQ(question.name, "there.txt");
    EXPECT_EQ(question.filterIndex, 2U);
    const RECT area = GetMonitorRectFromWindow(owner);
    const LONG x = std::clamp(600 - (frame.right - frame.left) / 2, area.left,
                              std::max(area.left, area.right - (frame.right - frame.left)));
    const LONG y = std::clamp(350 - (frame.bottom - frame.top) / 2, area.top,
                              std::max(area.top, area.bottom - (frame.bottom - frame.top)));
    EXPECT_NEAR(frame.left, x, 1);
    EXPECT_NEAR(frame.top, y, 20) << "the check box goes after the dialog was centred";
}

TEST(StandardFileDialog, AsksBeforeItSavesOverAFile) {
    const Watchdog watchdog("a dialog to save a file", 60);
    const TestFolder folder;
    const std::string there = folder.Write("there.txt", "");
    Question question;
    std::strcpy(question.file, "there.txt");
    EXPECT_EQ(question.Ask({Presses(IDOK), Presses(IDNO), Answers("new")}, false, folder.Path()), 1)
        << "without an extension";
    EXPECT_EQ(_stricmp(question.file, folder.File("new.txt").c_str()), 0) << question.file;
    EXPECT_EQ(question.filterIndex, 1U);
    EXPECT_EQ(question.Ask({Answers("there.txt"), Presses(IDYES)}, false, folder.Path()), 1);
    EXPECT_EQ(_stricmp(question.file, there.c_str()), 0) << question.file;
}

TEST(StandardFileDialog, GivesNothingWhenItIsCancelledOrTheNameDoesNotFit) {
    const Watchdog watchdog("a dialog without a result", 60);
    const TestFolder folder;
    folder.Write("there.txt", "");
    Question question;
    question.filterIndex = 2;
    EXPECT_EQ(question.Ask({Answers("there.txt", IDCANCEL)}, true, folder.Path()), 0);
    EXPECT_EQ(CommDlgExtendedError(), 0U);
    EXPECT_STREQ(question.file, "");
    question.size = 8;
    std::memset(question.file + 8, '#', 8);
    EXPECT_EQ(question.Ask({Answers("there.txt")}, true, folder.Path()), 0);
    EXPECT_EQ(CommDlgExtendedError(), DWORD{FNERR_BUFFERTOOSMALL});
    EXPECT_EQ(std::string(question.file + 8, 8), "########");
}

} // namespace
