#include "utilities/system/FileFunctions.h"

#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"
#include "utilities/system/Handles.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

void SetWriteTime(const std::string& path, unsigned long long ticks) {
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    const vtr::FileHandle file(
        CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_TRUE(SetFileTime(file.Get(), nullptr, nullptr, &time));
}

} // namespace

TEST(Drives, FreeSpaceIsThatOfTheRoot) {
    const TestFolder folder;
    ULARGE_INTEGER available;
    ASSERT_TRUE(GetDiskFreeSpaceExA("C:\\", &available, nullptr, nullptr));
    // Others may write meanwhile.
    constexpr double tolerance = 500'000;
    const double expected = static_cast<double>(available.QuadPart) / 1024;
    for (const std::string& path :
         {std::string("C:\\"), folder.File("not there\\at all"), "C:\\" + std::string(1000, 'x')})
        EXPECT_NEAR(GetKBFree(path.c_str()), expected, tolerance) << path;
    static constexpr std::pair<const char*, double> rows[] = {
        {"\\\\no-such-server\\share", 2'048'000},
        {"\\\\no-such-server\\", 2'048'000},
        {"\\\\no-such-server", 0},
        {"\\\\no-such-server\\C:", 0},
        {"?:\\", 0},
        {"no such folder", 0},
    };
    for (const auto& [path, free] : rows)
        EXPECT_EQ(GetKBFree(path), free) << path;
    EXPECT_EQ(GetKBFree(nullptr), 0);
}

TEST(Drives, LocalOnesAreFixed) {
    for (const char* path : {"C:\\a", "C:/a", "\\windows"})
        EXPECT_TRUE(IsOnLocalHardDrive(path)) << path;
    for (const char* path : {"C:", "", "a", "?:\\a", "none\\a"})
        EXPECT_FALSE(IsOnLocalHardDrive(path)) << path;
    EXPECT_FALSE(IsOnLocalHardDrive(nullptr));
}

TEST(Drives, AreLogged) {
    LogCurrentHardDriveSpace();
    const CapturedLog log;
    LogCurrentHardDriveSpace();
    char roots[128];
    std::size_t drives = 0;
    GetLogicalDriveStringsA(sizeof roots, roots);
    for (const char* root = roots; *root != '\0'; root += std::strlen(root) + 1, ++drives) {
        const std::string& line = log.Lines().at(drives);
        double megabytes = 0;
        char end[16] = "";
        if (GetDriveTypeA(root) == DRIVE_FIXED) {
            EXPECT_EQ(std::sscanf(line.c_str() + 3, " has %lf MB %15s", &megabytes, end), 2)
                << line;
            EXPECT_NEAR(megabytes, GetKBFree(root) / 1024, 500);
            EXPECT_STREQ(end, "free.");
        } else {
            EXPECT_EQ(line.find(std::string(root) + " is type DRIVE_"), 0u) << line;
        }
    }
    EXPECT_EQ(log.Lines().size(), drives);
}

TEST(FileTimes, OfTheLastWrite) {
    const TestFolder folder;
    const std::string older = folder.Write("older", "a");
    const std::string newer = folder.Write("newer", "a");
    const std::string missing = folder.File("missing");
    constexpr unsigned long long moment = 133'000'000'000'000'000;
    SetWriteTime(older, moment);
    SetWriteTime(newer, moment + 10'000'000);
    const struct {
        const char* first;
        const char* second;
        int order;
    } rows[] = {
        {older.c_str(), newer.c_str(), -1},
        {newer.c_str(), older.c_str(), 1},
        {older.c_str(), older.c_str(), 0},
        {older.c_str(), missing.c_str(), -100},
        {missing.c_str(), older.c_str(), -100},
        {older.c_str(), nullptr, -100},
        {folder.Path().c_str(), older.c_str(), -100},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CompareFileTimeStampsA(row.first, row.second), row.order) << row.first;

    const std::wstring wide(older.begin(), older.end());
    EXPECT_EQ(CompareFileTimeStampsW(wide.c_str(), wide.c_str()), 0);
    EXPECT_EQ(CompareFileTimeStampsW(wide.c_str(), nullptr), -100);
    FILETIME time{};
    for (auto* read : {&GetFileLastModificationDateA, &GetFileLastModificationTime}) {
        time = {};
        EXPECT_TRUE(read(older.c_str(), &time));
        EXPECT_EQ(static_cast<unsigned long long>(time.dwHighDateTime) << 32 | time.dwLowDateTime,
                  moment);
        EXPECT_FALSE(read(missing.c_str(), &time));
        EXPECT_FALSE(read(older.c_str(), nullptr));
    }
    const vtr::FileHandle exclusive(CreateFileA(older.c_str(), GENERIC_READ, /*dwShareMode=*/0,
                                                nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(CompareFileTimeStampsA(older.c_str(), newer.c_str()), -100);
}

TEST(RegistryStrings, AreWrittenWithTheirTerminatorAndReadWithout) {
    const TestKey key;
    const std::string below = std::string(key.SubKey()) + "\\a\\b";
    EXPECT_TRUE(WriteRegistryString(key.Root(), below.c_str(), "", "default"));
    EXPECT_TRUE(WriteRegistryString(key.Root(), key.SubKey(), "empty", ""));
    EXPECT_TRUE(WriteRegistryString(key.Root(), key.SubKey(), "text", "caf\xE9"));
    EXPECT_EQ(key.Texts(),
              (std::map<std::string, std::string>{{"empty", ""}, {"text", "caf\xE9"}}));
    key.Set("unterminated", "abc");
    key.Set("number", std::string("\1\0\0\0", 4), REG_DWORD);
    static constexpr std::pair<const char*, const char*> rows[] = {{"text", "caf\xE9"},
                                                                   {"empty", ""},
                                                                   {"missing", ""},
                                                                   {"unterminated", "abc"},
                                                                   {"number", ""}};
    for (const auto& [name, text] : rows) {
        char out[8] = "xxxxxxx";
        EXPECT_TRUE(GetRegistryString(key.Root(), key.SubKey(), name, out, sizeof out)) << name;
        EXPECT_EQ(std::string_view(out, sizeof out).find_last_not_of('\0') + 1, std::strlen(text));
        EXPECT_STREQ(out, text) << name;
    }
    char out[8] = "x";
    EXPECT_TRUE(GetRegistryString(key.Root(), below.c_str(), "", out, sizeof out));
    EXPECT_STREQ(out, "default");
    EXPECT_FALSE(GetRegistryString(key.Root(), "no such key", "text", out, sizeof out));
    EXPECT_STREQ(out, "");
    EXPECT_FALSE(GetRegistryString(nullptr, key.SubKey(), "text", out, sizeof out));
    EXPECT_FALSE(GetRegistryString(key.Root(), nullptr, "text", out, sizeof out));
    EXPECT_FALSE(GetRegistryString(key.Root(), key.SubKey(), nullptr, out, sizeof out));
    EXPECT_FALSE(WriteRegistryString(nullptr, key.SubKey(), "a", "b"));
    EXPECT_FALSE(WriteRegistryString(key.Root(), nullptr, "a", "b"));
    EXPECT_FALSE(WriteRegistryString(key.Root(), key.SubKey(), nullptr, "b"));
    EXPECT_FALSE(WriteRegistryString(key.Root(), key.SubKey(), "a", nullptr));
}
