#include "common/Handles.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/SymbolicLink.h"
#include "tests/support/TestFolder.h"
#include "tests/support/ThreadTeam.h"
#include "tests/text/ini/IniDocuments.h"

#include <atomic>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
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

bool InFolderOfTest(const wchar_t* newFile) {
    return std::wcsstr(newFile, L"vtrutils-test") != nullptr;
}

bool EveryOther(const wchar_t*) {
    static bool refused = false;
    refused = !refused;
    return refused;
}

template <DWORD error, bool (*refuses)(const wchar_t* newFile)>
HANDLE WINAPI CreateSome(const wchar_t* name, DWORD access, DWORD share,
                         SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD attributes,
                         HANDLE like) {
    if (disposition != CREATE_NEW || !refuses(name))
        return realCreate(name, access, share, security, disposition, attributes, like);
    SetLastError(error);
    return INVALID_HANDLE_VALUE;
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
    ~Scene() { std::filesystem::current_path("C:\\"); }

    /// Has another program open the file.
    void Hold(const char* name, DWORD access, DWORD share) {
        held.Reset(CreateFileA(name, access, share, nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(held);
    }
    void Link(const char* name, const char* target) {
        links.push_back(std::make_unique<SymbolicLink>(folder.Path(), name, target));
    }
    /// What the library calls instead of a function of Windows.
    void* Patch(const char* function, void* replacement) {
        patches.push_back(std::make_unique<ImportPatch>(GetModuleHandleA("vtrutils.dll"),
                                                        "kernel32.dll", function, replacement));
        return patches.back()->Original();
    }
    void PatchCreate(decltype(&CreateFileW) create) {
        realCreate = reinterpret_cast<decltype(&CreateFileW)>(
            Patch("CreateFileW", reinterpret_cast<void*>(create)));
    }
    void Refuse(const char* function) { Patch(function, reinterpret_cast<void*>(&RefuseAccess)); }
};

std::string Permissions(const char* file) {
    alignas(void*) char bytes[2048];
    DWORD size = 0;
    EXPECT_TRUE(GetFileSecurityA(file, DACL_SECURITY_INFORMATION, bytes, sizeof bytes, &size));
    return {bytes, size};
}

constexpr DWORD readAndWrite = FILE_SHARE_READ | FILE_SHARE_WRITE;

struct Situation {
    const char* name;
    const char* path;
    /// The file that `path` stands for.
    const char* real;
    bool saved;
    /// The folder afterwards, beside "real.ini" and "short.ini".
    const char* added;
    void (*prepare)(Scene& scene);
};

const Situation situations[] = {
    {"nobody has it open: one step", "real.ini", "real.ini", true, "",
     [](Scene& scene) {
         scene.Refuse("ReplaceFileW");
         scene.Refuse("WriteFile");
     }},
    {"being read, and free to be deleted", "real.ini", "real.ini", true, "",
     [](Scene& scene) {
         scene.Hold("real.ini", GENERIC_READ, readAndWrite | FILE_SHARE_DELETE);
         scene.Refuse("WriteFile");
     }},
    {"held as C's fopen does, longer than the new text", "real.ini", "real.ini", true, "",
     [](Scene& scene) { scene.Hold("real.ini", GENERIC_READ | GENERIC_WRITE, readAndWrite); }},
    {"held, shorter than the new text", "short.ini", "short.ini", true, "",
     [](Scene& scene) { scene.Hold("short.ini", GENERIC_READ | GENERIC_WRITE, readAndWrite); }},
    {"held, and no room for the new text", "short.ini", "short.ini", false, "",
     [](Scene& scene) {
         scene.Hold("short.ini", GENERIC_READ, readAndWrite);
         scene.Refuse("SetEndOfFile");
     }},
    {"held, while another process copies over it", "real.ini", "real.ini", false, "",
     [](Scene& scene) {
         scene.Hold("real.ini", GENERIC_READ | GENERIC_WRITE, readAndWrite);
         ASSERT_TRUE(LockFile(scene.held.Get(), 0, 0x7FFFFFFF, 1, 0));
     }},
    {"lost by Windows while it was replaced", "real.ini", "real.ini", true, "",
     [](Scene& scene) {
         scene.Refuse("MoveFileExW");
         scene.Patch("ReplaceFileW", reinterpret_cast<void*>(&LoseTheOldFile));
     }},
    {"in a folder that takes no new file", "real.ini", "real.ini", true, "",
     [](Scene& scene) { scene.PatchCreate(&CreateSome<ERROR_ACCESS_DENIED, &InFolderOfTest>); }},
    {"the name of the second file is taken", "real.ini", "real.ini", true, "",
     [](Scene& scene) {
         scene.PatchCreate(&CreateSome<ERROR_FILE_EXISTS, &EveryOther>);
         scene.Refuse("WriteFile");
     }},
    {"a new file, on a disc without hard links", "new.ini", "new.ini", true, "new.ini|",
     [](Scene& scene) { scene.Refuse("CreateHardLinkW"); }},
    {"a link", "link.ini", "real.ini", true, "link.ini|",
     [](Scene& scene) { scene.Link("link.ini", "real.ini"); }},
    {"a link to a link to a file that is held", "chain.ini", "real.ini", true,
     "chain.ini|link.ini|",
     [](Scene& scene) {
         scene.Link("link.ini", "real.ini");
         scene.Link("chain.ini", "link.ini");
         scene.Hold("real.ini", GENERIC_READ, readAndWrite);
     }},
    {"a link to a file that is missing", "link.ini", "new.ini", true, "link.ini|new.ini|",
     [](Scene& scene) { scene.Link("link.ini", "new.ini"); }},
    {"a link to a protected file", "link.ini", "real.ini", false, "link.ini|",
     [](Scene& scene) {
         scene.Link("link.ini", "real.ini");
         SetFileAttributesA("real.ini", FILE_ATTRIBUTE_READONLY);
     }},
    {"a link to a folder", "link.ini", "real.ini", false, "link.ini|",
     [](Scene& scene) { scene.Link("link.ini", "."); }},
    {"a device", "NUL", "NUL", true, "", [](Scene&) {}},
};

} // namespace

// With bare names, and twice: the second save meets what the first one left.
TEST(IniReplace, Situations) {
    for (const Situation& situation : situations) {
        SCOPED_TRACE(situation.name);
        Scene scene;
        situation.prepare(scene);
        const std::string before = ReadBytes(situation.saved ? "NUL" : situation.real);
        for (int i = 0; i < 2; ++i)
            EXPECT_EQ(SaveTo(situation.path), situation.saved);
        scene.patches.clear();
        scene.held.Reset();
        EXPECT_EQ(scene.folder.Listing(), std::string(situation.added) + "real.ini|short.ini");
        if (!situation.saved) {
            EXPECT_EQ(ReadBytes(situation.real), before);
        } else if (std::strcmp(situation.path, "NUL") != 0) {
            EXPECT_EQ(ReadBytes(situation.path), newText);
            EXPECT_EQ(ReadBytes(situation.real), newText);
        }
    }
}

TEST(IniReplace, KeepsTheNewTextWhenTheOldOneIsLost) {
    for (const bool byWindows : {false, true}) {
        SCOPED_TRACE(byWindows);
        Scene scene;
        if (byWindows) {
            scene.Refuse("MoveFileExW");
            scene.Patch("ReplaceFileW", reinterpret_cast<void*>(&LoseTheOldFile));
            scene.Refuse("SetEndOfFile");
        } else {
            scene.Hold("real.ini", GENERIC_READ, readAndWrite);
            scene.Refuse("WriteFile");
        }
        const CapturedLog log;
        EXPECT_FALSE(SaveTo("real.ini"));
        const std::string list = scene.folder.Listing();
        ASSERT_EQ(list.rfind("real.ini|short.ini|vtr", 0), 0u) << list;
        const std::string second = list.substr(list.rfind('|') + 1);
        EXPECT_EQ(ReadBytes(second), newText);
        ASSERT_FALSE(log.Lines().empty());
        EXPECT_NE(log.Lines().back().find(scene.folder.File(second)), std::string::npos);
    }
}

TEST(IniReplace, KeepsAttributesAndPermissions) {
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

TEST(IniReplace, FoldersOfAnyLength) {
    const TestFolder folder;
    const std::string parent = folder.Path() + std::string(120, 'd');
    const auto wide = [](const std::string& path) {
        return std::wstring(LR"(\\?\)") + std::wstring(path.begin(), path.end());
    };
    ASSERT_TRUE(CreateDirectoryW(wide(parent).c_str(), nullptr));
    for (const unsigned length : {244u, 246u, 247u, 250u, 253u, 255u, 257u, 258u, 259u, 330u}) {
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
TEST(IniReplace, SavesOfOneFileAtOnce) {
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
