#include "utilities/system/FileFunctions.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"
#include "utilities/system/Owner.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <shlobj.h>

namespace {

/// Puts a list of files on the clipboard for as long as it lives.
class CopiedFiles {
public:
    explicit CopiedFiles(const std::wstring& names) {
        const std::size_t bytes = (names.size() + 1) * sizeof(wchar_t);
        const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + bytes);
        auto* files = static_cast<DROPFILES*>(GlobalLock(block));
        files->pFiles = sizeof(DROPFILES);
        files->fWide = TRUE;
        std::memcpy(files + 1, names.c_str(), bytes);
        GlobalUnlock(block);
        EXPECT_TRUE(OpenClipboard(nullptr) && EmptyClipboard());
        EXPECT_NE(SetClipboardData(CF_HDROP, block), nullptr);
        CloseClipboard();
    }
    CopiedFiles(const CopiedFiles&) = delete;
    CopiedFiles& operator=(const CopiedFiles&) = delete;
    ~CopiedFiles() {
        OpenClipboard(nullptr);
        EmptyClipboard();
        CloseClipboard();
    }
};

/// Tells the shell another place for the user's documents while it lives.
class MovedDocuments {
public:
    explicit MovedDocuments(const std::string& path) {
        EXPECT_TRUE(GetRegistryString(HKEY_CURRENT_USER, key, "Personal", old, sizeof old));
        EXPECT_TRUE(WriteRegistryString(HKEY_CURRENT_USER, key, "Personal", path.c_str()));
    }
    MovedDocuments(const MovedDocuments&) = delete;
    MovedDocuments& operator=(const MovedDocuments&) = delete;
    ~MovedDocuments() {
        if (old[0] != '\0')
            WriteRegistryString(HKEY_CURRENT_USER, key, "Personal", old);
        else
            RegDeleteKeyValueA(HKEY_CURRENT_USER, key, "Personal");
    }

private:
    static constexpr char key[] =
        "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
    char old[MAX_PATH] = "";
};

enum class WhenShort { Cut, Empty };

/// Calls `fill` with buffers that end at a page that may not be touched.
template <class Char>
void TryBuffers(const char* name, const std::basic_string<Char>& whole, WhenShort whenShort,
                const std::function<void(Char*, int)>& fill) {
    SCOPED_TRACE(name);
    ASSERT_GT(whole.size(), 1u);
    const std::size_t exact = whole.size() + 1;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, exact - 1, exact, exact + 100}) {
        SCOPED_TRACE(size);
        GuardedBuffer<Char> buffer(size);
        fill(buffer.Data(), static_cast<int>(size));
        if (size == 0)
            continue;
        const std::size_t kept = size >= exact                 ? whole.size()
                                 : whenShort == WhenShort::Cut ? size - 1
                                                               : 0;
        EXPECT_TRUE(buffer.Data() == whole.substr(0, kept));
    }
    fill(nullptr, 10);
}

} // namespace

TEST(PathBuffers, HoldTheWholeTextOrItsStartOrNothing) {
    const TestFolder folder;
    std::filesystem::create_directory(folder.File("a long folder name"));
    const std::string shortPath = folder.File("A LONG FOLDER NAME");
    const TestKey key;
    key.SetText("name", "value");
    const CopiedFiles copied(std::wstring(L"C:\\first.wav\0Z:\\second.wav\0", 28));

    char music[MAX_PATH];
    ASSERT_TRUE(SHGetSpecialFolderPathA(nullptr, music, CSIDL_MYMUSIC, FALSE));
    char documents[MAX_PATH];
    ASSERT_TRUE(SHGetSpecialFolderPathA(nullptr, documents, CSIDL_PERSONAL, FALSE));
    char module[MAX_PATH];
    ASSERT_NE(GetModuleFileNameA(nullptr, module, sizeof module), 0u);
    const std::string exeFolder =
        std::string(module).substr(0, std::string(module).rfind('\\') + 1);

    TryBuffers<char>(
        "long name", folder.Path() + "a long folder name\\", WhenShort::Empty,
        [&](char* out, int size) { GetLongPathNameSafe(shortPath.c_str(), out, size); });
    TryBuffers<char>("program's folder", exeFolder, WhenShort::Cut,
                     [](char* out, int size) { GetExeDirectory(out, size, nullptr); });
    TryBuffers<char>("music", music, WhenShort::Cut,
                     [](char* out, int size) { GetMyMusicPath(out, size, false); });
    TryBuffers<char>("documents", documents, WhenShort::Cut,
                     [](char* out, int size) { GetMyDocumentsPath(out, size, false); });
    TryBuffers<char>("registry", "value", WhenShort::Empty, [&](char* out, int size) {
        GetRegistryString(key.Root(), key.SubKey(), "name", out, static_cast<unsigned>(size));
    });
    TryBuffers<char>("clipboard", "Z:\\second.wav", WhenShort::Cut, [](char* out, int size) {
        GetFileNameFromClipboardA(1, out, static_cast<unsigned>(size));
    });
    TryBuffers<wchar_t>("clipboard, wide", L"Z:\\second.wav", WhenShort::Cut,
                        [](wchar_t* out, int size) {
                            GetFileNameFromClipboardW(1, out, static_cast<unsigned>(size));
                        });
    EXPECT_EQ(NumFileNamesOnClipboard(), 2u);
    char none[] = "x";
    GetFileNameFromClipboardA(2, none, sizeof none);
    EXPECT_STREQ(none, "");
}

TEST(PathBuffers, LongNamesOfExistingComponentsOnly) {
    const TestFolder folder;
    folder.Write("Track.WAV", "");
    const struct {
        const char* row;
        std::string path;
        std::string result;
    } rows[] = {
        {"a file", folder.Path() + "TRACK.wav", folder.Path() + "Track.WAV"},
        {"a folder", folder.Path().substr(0, folder.Path().size() - 1), folder.Path()},
        {"a folder with its backslash", folder.Path(), folder.Path()},
        {"a drive", "c:\\", "c:\\"},
        {"missing at the end", folder.Path() + "none", ""},
        {"missing on the way", folder.Path() + "none\\Track.WAV", ""},
        {"below a file", folder.Path() + "Track.WAV\\a", ""},
        {"network", "\\\\server\\share\\a", ""},
        {"no drive", "\\windows", ""},
        {"empty", "", ""},
        {"longest", "C:\\" + std::string(256, '.'), ""},
        {"too long", "C:\\" + std::string(257, '.'), ""},
    };
    for (const auto& row : rows) {
        char out[400] = "x";
        GetLongPathNameSafe(row.path.c_str(), out, sizeof out);
        EXPECT_EQ(out, row.result) << row.row;
    }
    char out[4];
    EXPECT_FALSE(GetExeDirectory(out, sizeof out, reinterpret_cast<HMODULE>(4)));
}

TEST(PathBuffers, SpecialFoldersHaveTheirShellIdentifiers) {
    using Named = bool (*)(char*, int, bool);
    static constexpr std::pair<Named, int> rows[] = {
        {&GetDesktopPath, 0},
        {&GetMyMusicPath, 13},
        {&GetCurrentUserAppDataPath, 26},
        {[](char* out, int size, bool) { return GetInternetCachePath(out, size); }, 32},
        {&GetCommonAppDataPath, 35},
        {&GetMyPicturesPath, 39},
    };
    for (const auto& [named, id] : rows) {
        char path[MAX_PATH];
        char expected[MAX_PATH];
        EXPECT_TRUE(SHGetSpecialFolderPathA(nullptr, expected, id, FALSE));
        EXPECT_TRUE(named(path, sizeof path, false));
        EXPECT_STREQ(path, expected) << id;
    }
    char path[MAX_PATH] = "x";
    EXPECT_FALSE(GetSpecialFolderPath(path, sizeof path, 0x7F, false));
    EXPECT_STREQ(path, "");
}

TEST(PathBuffers, DocumentsAreSomewhere) {
    const MovedDocuments missing("?:\\none");
    constexpr char instead[] = "C:\\My Documents";
    ASSERT_FALSE(std::filesystem::exists(instead));
    const auto documents = [](bool create) {
        char path[MAX_PATH];
        EXPECT_TRUE(GetMyDocumentsPath(path, sizeof path, create));
        return std::string(path);
    };
    EXPECT_EQ(documents(false), instead);
    EXPECT_FALSE(std::filesystem::exists(instead));
    EXPECT_EQ(documents(true), instead);
    EXPECT_TRUE(std::filesystem::remove(instead));
    std::ofstream(instead).close();
    EXPECT_EQ(documents(true), "C:\\");
    EXPECT_TRUE(std::filesystem::remove(instead));
}
