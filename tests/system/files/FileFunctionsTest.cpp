#include "utilities/system/files/FileFunctions.h"

#include "common/Handles.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <shlobj.h>

namespace {

/// Leaves a list of files on the clipboard, with a zero between names.
void CopyFiles(std::wstring_view names) {
    const std::size_t bytes = names.size() * sizeof(wchar_t);
    const HGLOBAL block =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, sizeof(DROPFILES) + bytes + 2 * sizeof(wchar_t));
    auto* files = static_cast<DROPFILES*>(GlobalLock(block));
    files->pFiles = sizeof(DROPFILES);
    files->fWide = TRUE;
    std::memcpy(files + 1, names.data(), bytes);
    GlobalUnlock(block);
    EXPECT_TRUE(OpenClipboard(nullptr) && EmptyClipboard());
    EXPECT_NE(SetClipboardData(CF_HDROP, block), nullptr);
    CloseClipboard();
}

enum class WhenShort { Cut, Empty };

/// Calls `fill` with buffers that end at a page that may not be touched.
void TryBuffers(const char* row, const std::string& whole, WhenShort whenShort,
                const std::function<void(char*, int)>& fill) {
    const std::size_t exact = whole.size() + 1;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, exact - 1, exact, exact + 100}) {
        GuardedBytes buffer(size);
        fill(buffer.Data(), static_cast<int>(size));
        const std::size_t kept = whenShort == WhenShort::Empty && size < exact ? 0 : size - 1;
        if (size > 0) {
            EXPECT_EQ(buffer.Data(), whole.substr(0, kept)) << row << ", size " << size;
        }
    }
}

} // namespace

TEST(PathBuffers, HoldTheWholeTextOrItsStartOrNothing) {
    const TestKey key;
    key.SetText("name", "value");
    const std::string copied = "Z:\\" + std::string(900, 's') + ".wav";
    const std::wstring wideCopied(copied.begin(), copied.end());
    CopyFiles(L"C:\\first.wav" + (L'\0' + wideCopied));
    char documents[MAX_PATH];
    ASSERT_TRUE(SHGetSpecialFolderPathA(nullptr, documents, CSIDL_PERSONAL, FALSE));
    const std::string exeFolder = std::filesystem::path(_pgmptr).parent_path().string() + "\\";
    TryBuffers("registry", "value", WhenShort::Empty, [&](char* out, int size) {
        GetRegistryString(key.Root(), key.SubKey(), "name", out, static_cast<unsigned>(size));
    });
    TryBuffers("program", exeFolder, WhenShort::Cut,
               [](char* out, int size) { GetExeDirectory(out, size, nullptr); });
    TryBuffers("documents", documents, WhenShort::Cut,
               [](char* out, int size) { GetMyDocumentsPath(out, size, false); });
    TryBuffers("clipboard", copied, WhenShort::Cut, [](char* out, int size) {
        GetFileNameFromClipboardA(1, out, static_cast<unsigned>(size));
    });
    EXPECT_EQ(NumFileNamesOnClipboard(), 2u);
    wchar_t wide[8];
    GetFileNameFromClipboardW(0, wide, 8);
    EXPECT_STREQ(wide, L"C:\\firs");
    GetFileNameFromClipboardA(2, documents, sizeof documents);
    EXPECT_STREQ(documents, "");
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
    file.Reset(CreateFileA(older.c_str(), GENERIC_WRITE, FILE_SHARE_WRITE | FILE_SHARE_READ,
                           nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(order("older", "newer"), -1) << "being written";
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
