#include "common/Handles.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/SymbolicLink.h"
#include "tests/support/TestFolder.h"
#include "tests/support/ThreadTeam.h"
#include "tests/text/ini/IniDocuments.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <vector>
#include <windows.h>

// What a save finds in the place of the file, in hosts' folders and with other programs at work.

namespace {

constexpr char newText[] = "[New]\r\nk = v\r\n\r\n\r\n";
constexpr char shortText[] = "[a]";
const std::string oldText = "[Old]\r\nkey = a value that is longer than the new text\r\n";

bool SaveTo(const std::string& path, const char* text = "[New]\nk=v\n") {
    CIniFileReader document;
    return Load(document, text) && document.SetFileName(path.c_str()) && document.Save();
}

BOOL WINAPI RefuseAccess() {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

BOOL WINAPI LoseTheOldFile(const wchar_t* replaced) {
    DeleteFileW(replaced);
    SetLastError(ERROR_UNABLE_TO_MOVE_REPLACEMENT);
    return FALSE;
}

decltype(&CreateFileW) realCreate = nullptr;
decltype(&std::fwrite) realWrite = nullptr;
unsigned writesUntilFull = 0;
bool refused = false;

/// The error for each new file of the test's folder; "file exists" for every other one.
template <DWORD error>
HANDLE WINAPI CreateSome(const wchar_t* name, DWORD access, DWORD share,
                         SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD attributes,
                         HANDLE like) {
    refused = !refused || error != ERROR_FILE_EXISTS;
    if (disposition != CREATE_NEW || std::wcsstr(name, L"vtrutils-test") == nullptr || !refused)
        return realCreate(name, access, share, security, disposition, attributes, like);
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
}

std::size_t WriteToFullDisk(const void* data, std::size_t size, std::size_t count,
                            std::FILE* stream) {
    return writesUntilFull-- == 0 ? writesUntilFull = 0 : realWrite(data, size, count, stream);
}

int CloseOnFullDisk(std::FILE* stream) {
    std::fclose(stream);
    return EOF;
}

/// What a situation has brought about, undone at its end.
struct Scene {
    TestFolder folder;
    vtr::FileHandle held;
    std::vector<std::unique_ptr<ImportPatch>> patches;
    std::vector<std::unique_ptr<SymbolicLink>> links;

    Scene() {
        folder.Write("real.ini", oldText);
        folder.Write("short.ini", shortText);
        std::filesystem::current_path(folder.Path());
    }
    ~Scene() {
        SetFileAttributesA("real.ini", FILE_ATTRIBUTE_NORMAL);
        std::filesystem::current_path("C:\\");
    }

    /// Has another program open the file.
    void Hold(const char* name, DWORD access, DWORD share) {
        held.Reset(CreateFileA(name, access, share, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(held);
    }
    void Link(const char* name, const char* target) {
        links.push_back(std::make_unique<SymbolicLink>(folder.Path(), name, target));
    }
    /// What the library calls instead of a function of Windows. Returns that.
    template <class Function>
    Function Patch(const char* function, Function replacement, const char* in = "kernel32.dll") {
        patches.push_back(std::make_unique<ImportPatch>(
            GetModuleHandleA("vtrutils.dll"), in, function, reinterpret_cast<void*>(replacement)));
        return reinterpret_cast<Function>(patches.back()->Original());
    }
    void FillDisk(unsigned writes) {
        writesUntilFull = writes;
        realWrite = Patch("fwrite", &WriteToFullDisk, "msvcrt.dll");
    }
};

constexpr DWORD readAndWrite = FILE_SHARE_READ | FILE_SHARE_WRITE;

std::string Permissions(const char* file) {
    alignas(void*) char bytes[2048];
    DWORD size = 0;
    EXPECT_TRUE(GetFileSecurityA(file, DACL_SECURITY_INFORMATION, bytes, sizeof bytes, &size));
    return {bytes, size};
}

struct Situation {
    const char* name;
    bool saved;
    const char* steps; ///< what `Prepare` does
    const char* path = "real.ini";
    const char* real = "real.ini"; ///< the file that `path` stands for
    const char* added = "";        ///< to the folder, before "real.ini" and "short.ini"
    bool keepsSecond = false;      ///< the file with the new text
};

/// "-F": function F of Windows fails; "a>b": a link; "open" and so on: the file is so.
void Prepare(Scene& scene, const std::string& step, const char* real) {
    if (step[0] == '-')
        scene.Patch(step.c_str() + 1, &RefuseAccess);
    else if (const std::size_t arrow = step.find('>'); arrow != step.npos)
        scene.Link(step.substr(0, arrow).c_str(), step.c_str() + arrow + 1);
    else if (step == "open")
        scene.Hold(real, GENERIC_READ | GENERIC_WRITE, readAndWrite);
    else if (step == "read")
        scene.Hold(real, GENERIC_READ, readAndWrite);
    else if (step == "deletable")
        scene.Hold(real, GENERIC_READ, readAndWrite | FILE_SHARE_DELETE);
    else if (step == "exclusive")
        scene.Hold(real, GENERIC_READ, 0);
    else if (step == "locked")
        LockFile(scene.held.Get(), 0, 0x7FFFFFFF, 1, 0);
    else if (step == "protected")
        SetFileAttributesA(real, FILE_ATTRIBUTE_READONLY);
    else if (step == "lost")
        scene.Patch("ReplaceFileW", &LoseTheOldFile);
    else if (step == "closed-in")
        realCreate = scene.Patch("CreateFileW", &CreateSome<ERROR_ACCESS_DENIED>);
    else if (step == "taken")
        realCreate = scene.Patch("CreateFileW", &CreateSome<ERROR_FILE_EXISTS>);
    else if (step == "full-at-end")
        scene.Patch("fclose", &CloseOnFullDisk, "msvcrt.dll");
    else
        scene.FillDisk(step == "full" ? 0 : 1);
}

const Situation situations[] = {
    {"nobody has it open: one step", true, "-ReplaceFileW -WriteFile"},
    {"being read, and free to be deleted", true, "deletable -WriteFile"},
    {"held as C's fopen does, longer than the new text", true, "open"},
    {"held, shorter than the new text", true, "open", "short.ini", "short.ini"},
    {"held, and no room for the new text", false, "read -SetEndOfFile", "short.ini", "short.ini"},
    {"held, while another process copies over it", false, "open locked"},
    {"held, not to be read", false, "exclusive"},
    {"write-protected", false, "protected"},
    {"lost by Windows while it was replaced", true, "-MoveFileExW lost"},
    {"in a folder that takes no new file", true, "closed-in"},
    {"the name of the second file is taken", true, "taken -WriteFile"},
    {"a new file without hard links", true, "-CreateHardLinkW", "new.ini", "new.ini", "new.ini|"},
    {"a link", true, "link.ini>real.ini", "link.ini", "real.ini", "link.ini|"},
    {"a link to a link to a file that is held", true, "link.ini>real.ini chain.ini>link.ini read",
     "chain.ini", "real.ini", "chain.ini|link.ini|"},
    {"a link to a missing file", true, "link.ini>new.ini", "link.ini", "new.ini",
     "link.ini|new.ini|"},
    {"a link to a protected file", false, "link.ini>real.ini protected", "link.ini", "real.ini",
     "link.ini|"},
    {"a link to a folder", false, "link.ini>.", "link.ini", "real.ini", "link.ini|"},
    {"a device", true, "", "NUL", "NUL"},
    {"a folder", false, "", "."},
    {"in a folder that is missing", false, "", "no\\a.ini"},
    {"a full disk", false, "full"},
    {"a disk that is full later", false, "full-later"},
    {"a disk that is full at the end", false, "full-at-end"},
    {"the old text lost", false, "read -WriteFile", "real.ini", "real.ini", "", true},
    {"the old file lost", false, "-MoveFileExW lost -SetEndOfFile", "real.ini", "real.ini", "",
     true},
};

} // namespace

// With bare names, and twice: the second save meets what the first one left.
TEST(ReplacingFile, Situations) {
    for (const Situation& situation : situations) {
        SCOPED_TRACE(situation.name);
        Scene scene;
        std::istringstream steps(situation.steps);
        for (std::string step; steps >> step;)
            Prepare(scene, step, situation.real);
        const CapturedLog log;
        for (int i = situation.keepsSecond ? 1 : 0; i < 2; ++i)
            EXPECT_EQ(SaveTo(situation.path), situation.saved);
        scene.patches.clear();
        scene.held.Reset();
        std::string list = scene.folder.Listing();
        const std::string before =
            std::strcmp(situation.real, "real.ini") == 0 ? oldText : shortText;
        if (situation.keepsSecond) {
            const std::string second =
                list.substr(std::min(list.rfind("|vtr"), list.size() - 1) + 1);
            EXPECT_EQ(ReadBytes(second), newText);
            ASSERT_FALSE(log.Lines().empty());
            EXPECT_NE(log.Lines().back().find(scene.folder.File(second)), std::string::npos);
            list.resize(list.size() - second.size() - 1);
        } else if (std::strcmp(situation.path, "NUL") != 0) {
            EXPECT_EQ(ReadBytes(situation.real), situation.saved ? newText : before);
            EXPECT_TRUE(!situation.saved || ReadBytes(situation.path) == newText);
        }
        EXPECT_EQ(list, std::string(situation.added) + "real.ini|short.ini");
    }
}

TEST(ReplacingFile, WritesWhatUsersExpect) {
    const TestFolder folder;
    const std::string file = folder.File("saved.ini");
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "lost=1\n[a]\nq=\"x\n[A]\nk=v\n", /*sort=*/true));
    EXPECT_FALSE(document.Save()) << "no file name";
    ASSERT_TRUE(document.SetFileName(file.c_str()));
    {
        AllocationFault fault("vtrutils.dll");
        fault.FailAt(1);
        EXPECT_FALSE(document.Save()) << "no memory";
    }
    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadBytes(file), "\r\n\r\n[A]\r\nk = v\r\n\r\n\r\n[a]\r\nq = \"x\r\n\r\n\r\n")
        << "equal names are reversed by each sort";
    EXPECT_EQ(folder.Listing(), "saved.ini");
    EXPECT_TRUE(document.SetFileName("") && document.FileName() == nullptr);
}

TEST(ReplacingFile, KeepsAttributesAndPermissions) {
    const Scene scene;
    constexpr DWORD hidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    ASSERT_TRUE(SetFileAttributesA("real.ini", hidden));
    const std::string usual = Permissions("real.ini");
    SECURITY_DESCRIPTOR everybody;
    ASSERT_TRUE(InitializeSecurityDescriptor(&everybody, SECURITY_DESCRIPTOR_REVISION) &&
                SetSecurityDescriptorDacl(&everybody, TRUE, /*pDacl=*/nullptr, FALSE) &&
                SetFileSecurityA("short.ini", DACL_SECURITY_INFORMATION, &everybody));
    const std::string own = Permissions("short.ini");
    EXPECT_NE(own, usual);
    EXPECT_TRUE(SaveTo("real.ini") && SaveTo("short.ini"));
    EXPECT_EQ(ReadBytes("real.ini") + ReadBytes("short.ini"), std::string(newText) + newText);
    EXPECT_EQ(GetFileAttributesA("real.ini"), hidden);
    EXPECT_TRUE(Permissions("real.ini") == usual && Permissions("short.ini") == own);
}

TEST(ReplacingFile, FoldersOfAnyLength) {
    const TestFolder folder;
    const std::string parent = folder.Path() + std::string(120, 'd');
    const auto wide = [](const std::string& path) {
        return std::wstring(LR"(\\?\)") + std::wstring(path.begin(), path.end());
    };
    ASSERT_TRUE(CreateDirectoryW(wide(parent).c_str(), nullptr));
    for (const unsigned length : {244u, 247u, 255u, 259u, 330u}) {
        SCOPED_TRACE(length);
        const std::string deep = parent + "\\" + std::string(length - parent.size() - 1, 'e');
        const std::string file = deep + "\\a.ini";
        ASSERT_TRUE(CreateDirectoryW(wide(deep).c_str(), nullptr));
        for (const char* text : {"[a]\n", "[New]\nk=v\n"})
            EXPECT_TRUE(SaveTo(file, text));
        EXPECT_EQ(ReadBytes(file), newText);
        EXPECT_TRUE(DeleteFileW(wide(file).c_str()));
        EXPECT_TRUE(RemoveDirectoryW(wide(deep).c_str())) << "something else is in it";
    }
}

// The second round is written over a file that somebody holds.
TEST(ReplacingFile, SavesOfOneFileAtOnce) {
    Scene scene;
    for (const char* round : {"free", "held"}) {
        std::atomic<unsigned> failures{0};
        RunTeam(round, 4, [&failures](unsigned number) {
            const std::string text = "[S]\nk=" + std::string(1'000 * (number + 1), 'x') + "\n";
            for (int i = 0; i < 10; ++i)
                failures += SaveTo("real.ini", text.c_str()) ? 0 : 1;
        });
        EXPECT_EQ(failures, 0u) << round;
        EXPECT_EQ(ReadBytes("real.ini").size() % 1'000, std::strlen("[S]\r\nk = \r\n\r\n\r\n"));
        EXPECT_EQ(scene.folder.Listing(), "real.ini|short.ini") << round;
        scene.Hold("real.ini", GENERIC_READ, readAndWrite);
    }
}
