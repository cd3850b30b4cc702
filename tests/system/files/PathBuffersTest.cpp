#include "utilities/system/files/FileFunctions.h"

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
