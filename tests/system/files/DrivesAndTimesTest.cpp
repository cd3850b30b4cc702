#include "utilities/system/files/FileFunctions.h"

#include "common/Handles.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"

#include <gtest/gtest.h>

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
