#include "utilities/system/files/FileFunctions.h"

#include "common/Handles.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Clipboard.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>

namespace {

enum class WhenShort { Cut, Empty };

/// Calls `fill` with buffers that end at a page that may not be touched.
template <class Char>
void TryBuffers(const char* row, const std::basic_string<Char>& whole, WhenShort whenShort,
                const std::function<void(Char*, int)>& fill) {
    const std::size_t exact = whole.size() + 1;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, exact - 1, exact, exact + 100}) {
        GuardedBuffer<Char> buffer(size);
        fill(buffer.Data(), static_cast<int>(size));
        const std::size_t kept = whenShort == WhenShort::Empty && size < exact ? 0 : size - 1;
        if (size == 0)
            continue;
        EXPECT_TRUE(buffer.Data() == whole.substr(0, kept)) << row << ", size " << size;
    }
    fill(nullptr, 10);
}

std::string Documents(bool create) {
    char path[MAX_PATH];
    EXPECT_TRUE(GetMyDocumentsPath(path, sizeof path, create));
    return path;
}

} // namespace

TEST(PathBuffers, HoldTheWholeTextOrItsStartOrNothing) {
    const TestFolder folder;
    std::filesystem::create_directory(folder.File("a long folder"));
    const std::string otherCase = folder.File("A LONG FOLDER");
    const TestKey key;
    key.SetText("name", "value");
    const std::string copied = "Z:\\" + std::string(900, 's') + ".wav";
    const std::wstring wideCopied(copied.begin(), copied.end());
    CopyFiles(L"C:\\first.wav" + (L'\0' + wideCopied));
    char music[MAX_PATH], documents[MAX_PATH];
    ASSERT_TRUE(SHGetSpecialFolderPathA(nullptr, music, 13, FALSE));
    ASSERT_TRUE(SHGetSpecialFolderPathA(nullptr, documents, 5, FALSE));
    const std::string exeFolder = std::filesystem::path(_pgmptr).parent_path().string() + "\\";

    const auto longName = [&](char* out, int size) {
        GetLongPathNameSafe(otherCase.c_str(), out, size);
    };
    const auto registry = [&](char* out, int size) {
        GetRegistryString(key.Root(), key.SubKey(), "name", out, static_cast<unsigned>(size));
    };
    TryBuffers<char>("long name", folder.File("a long folder\\"), WhenShort::Empty, longName);
    TryBuffers<char>("registry", "value", WhenShort::Empty, registry);
    TryBuffers<char>("program", exeFolder, WhenShort::Cut,
                     [](char* out, int size) { GetExeDirectory(out, size, nullptr); });
    TryBuffers<char>("music", music, WhenShort::Cut,
                     [](char* out, int size) { GetMyMusicPath(out, size, false); });
    TryBuffers<char>("documents", documents, WhenShort::Cut,
                     [](char* out, int size) { GetMyDocumentsPath(out, size, false); });
    TryBuffers<char>("clipboard", copied, WhenShort::Cut, [](char* out, int size) {
        GetFileNameFromClipboardA(1, out, static_cast<unsigned>(size));
    });
    TryBuffers<wchar_t>("wide", wideCopied, WhenShort::Cut, [](wchar_t* out, int size) {
        GetFileNameFromClipboardW(1, out, static_cast<unsigned>(size));
    });
    EXPECT_EQ(NumFileNamesOnClipboard(), 2u);
    GetFileNameFromClipboardA(2, music, sizeof music);
    EXPECT_STREQ(music, "");
}

TEST(PathBuffers, LongNamesOfExistingComponentsOnly) {
    const TestFolder folder;
    folder.Write("Track.WAV", "");
    const std::pair<std::string, std::string> rows[] = {
        {folder.File("TRACK.wav"), folder.File("Track.WAV")},
        {folder.Path(), folder.Path()},
        {"c:\\", "c:\\"},
        {folder.File("none\\Track.WAV"), ""},
        {folder.File("Track.WAV\\a"), ""},
        {"\\\\server\\share\\a", ""},
        {"", ""},
        {"C:\\" + std::string(257, '.'), ""},
    };
    for (const auto& [path, result] : rows) {
        char out[400] = "x";
        GetLongPathNameSafe(path.c_str(), out, sizeof out);
        EXPECT_EQ(out, result) << path;
    }
}

TEST(PathBuffers, DocumentsAreSomewhereElseWithoutAFolder) {
    struct MovedDocuments {
        const char* key =
            "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
        char old[MAX_PATH] = "";
        MovedDocuments() {
            EXPECT_TRUE(GetRegistryString(HKEY_CURRENT_USER, key, "Personal", old, sizeof old));
            WriteRegistryString(HKEY_CURRENT_USER, key, "Personal", "?:\\none");
        }
        ~MovedDocuments() {
            if (old[0] != '\0')
                WriteRegistryString(HKEY_CURRENT_USER, key, "Personal", old);
            else
                RegDeleteKeyValueA(HKEY_CURRENT_USER, key, "Personal");
        }
    } const moved;
    constexpr char instead[] = "C:\\My Documents";
    EXPECT_EQ(Documents(false), instead);
    EXPECT_EQ(Documents(true), instead);
    EXPECT_TRUE(RemoveDirectoryA(instead));
    std::ofstream(instead).close();
    EXPECT_EQ(Documents(true), "C:\\");
    EXPECT_TRUE(DeleteFileA(instead));
}

TEST(SpecialFolders, MissingOnesAreMadeWhenAsked) {
    constexpr int discToBurn = CSIDL_CDBURN_AREA;
    wchar_t folder[MAX_PATH];
    ASSERT_EQ(SHGetFolderPathW(nullptr, discToBurn | CSIDL_FLAG_DONT_VERIFY, nullptr,
                               SHGFP_TYPE_CURRENT, folder),
              S_OK);
    const std::filesystem::path path(folder), kept(path.wstring() + L" kept");
    const bool existed = exists(path);
    if (existed)
        rename(path, kept);
    char found[MAX_PATH];
    EXPECT_FALSE(GetSpecialFolderPath(found, sizeof found, discToBurn, /*create=*/false));
    EXPECT_STREQ(found, "");
    EXPECT_TRUE(GetSpecialFolderPath(found, sizeof found, discToBurn, /*create=*/true));
    EXPECT_TRUE(path == found && is_directory(path)) << found;
    remove(path);
    std::error_code ignored;
    if (existed)
        rename(kept, path);
    else
        remove(path.parent_path(), ignored);
}

TEST(Drives, FreeSpaceIsThatOfTheRoot) {
    ULARGE_INTEGER available;
    ASSERT_TRUE(GetDiskFreeSpaceExA("C:\\", &available, nullptr, nullptr));
    const double expected = static_cast<double>(available.QuadPart) / 1024;
    const std::pair<std::string, double> rows[] = {
        {"C:\\", expected},
        {"C:\\not there\\at all", expected},
        {"C:\\" + std::string(1000, 'x'), expected},
        {"\\\\no-such-server\\share", 2'048'000},
        {"\\\\no-such-server", 0},
        {"\\\\no-such-server\\C:", 0},
        {"?:\\", 0},
    };
    // Others may write to a drive that is there.
    for (const auto& [path, free] : rows)
        EXPECT_NEAR(GetKBFree(path.c_str()), free, free == expected ? 500'000 : 0) << path;
    EXPECT_EQ(GetKBFree(nullptr), 0);

    for (const char* path : {"C:\\a", "C:/a", "\\windows"})
        EXPECT_TRUE(IsOnLocalHardDrive(path)) << path;
    for (const char* path : {"C:", "?:\\a", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(IsOnLocalHardDrive(path));

    const CapturedLog log;
    LogCurrentHardDriveSpace();
    const std::string line = log.Lines().at(0), start = "C:\\ has ";
    EXPECT_TRUE(line.starts_with(start) && line.ends_with(" MB free.")) << line;
    EXPECT_NEAR(std::strtod(line.c_str() + start.size(), nullptr), expected / 1024, 500);
}

TEST(FileTimes, OfTheLastWrite) {
    const TestFolder folder;
    const std::string older = folder.Write("older", "a");
    const std::string newer = folder.Write("newer", "a");
    const FILETIME moment{5, 30'000'000};
    vtr::FileHandle file(
        CreateFileA(older.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &moment));
    file.Reset();
    const auto order = [&](const char* first, const char* second) {
        return CompareFileTimeStampsA(folder.File(first).c_str(), folder.File(second).c_str());
    };
    EXPECT_EQ(order("older", "newer"), -1);
    EXPECT_EQ(order("newer", "older"), 1);
    EXPECT_EQ(order("older", "older"), 0);
    EXPECT_EQ(order("older", "missing"), -100);
    EXPECT_EQ(order("", "older"), -100);
    EXPECT_EQ(CompareFileTimeStampsW(nullptr, L"a"), -100);
    for (auto* read : {&GetFileLastModificationDateA, &GetFileLastModificationTime}) {
        FILETIME time{};
        EXPECT_TRUE(read(older.c_str(), &time));
        EXPECT_EQ(CompareFileTime(&time, &moment), 0);
        EXPECT_FALSE(read(folder.File("missing").c_str(), &time));
    }
    for (const bool mayBeRead : {true, false}) {
        const DWORD share = FILE_SHARE_WRITE | (mayBeRead ? FILE_SHARE_READ : 0u);
        file.Reset(
            CreateFileA(older.c_str(), GENERIC_WRITE, share, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_EQ(order("older", "newer"), mayBeRead ? -1 : -100) << "being written";
        file.Reset();
    }
}

TEST(RegistryStrings, AreWrittenWithTheirTerminatorAndReadWithout) {
    const TestKey key;
    const std::string below = std::string(key.SubKey()) + "\\a\\b";
    EXPECT_TRUE(WriteRegistryString(key.Root(), below.c_str(), "", "default"));
    EXPECT_TRUE(WriteRegistryString(key.Root(), key.SubKey(), "text", "caf\xE9"));
    EXPECT_EQ(key.Texts(), (std::map<std::string, std::string>{{"text", "caf\xE9"}}));
    key.Set("unterminated", "abc");
    key.Set("full", "12345678");
    key.Set("number", std::string("\1\0\0\0", 4), REG_DWORD);
    const auto read = [&](const char* subKey, const char* name) {
        char out[8] = "xxxxxxx";
        const bool opened = GetRegistryString(key.Root(), subKey, name, out, sizeof out);
        return (opened ? "" : "no key ") + std::string(out);
    };
    EXPECT_EQ(read(key.SubKey(), "text"), "caf\xE9");
    EXPECT_EQ(read(key.SubKey(), "missing"), "");
    EXPECT_EQ(read(key.SubKey(), "unterminated"), "abc");
    EXPECT_EQ(read(key.SubKey(), "full"), "");
    EXPECT_EQ(read(key.SubKey(), "number"), "");
    EXPECT_EQ(read(below.c_str(), ""), "default");
    EXPECT_EQ(read("no such key", "text"), "no key ");
    EXPECT_EQ(read(nullptr, "text"), "no key xxxxxxx");
    EXPECT_FALSE(WriteRegistryString(key.Root(), key.SubKey(), "a", nullptr));
}
