#include "vtrfutls/FileNames.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace {

using Extract = bool (*)(const char*, char*, unsigned);

std::string Part(Extract extract, const char* path) {
    char buffer[64];
    const bool found = extract(path, buffer, sizeof buffer);
    return found ? buffer : std::string("none") + buffer;
}

} // namespace

TEST(FileNames, PartsOfPaths) {
    static constexpr struct {
        const char* path;
        const char* directory;
        const char* name;
        const char* extension;
    } rows[] = {
        {"C:/a.b/c", "C:/a.b/", "c", "none"},
        {"C:b.tar.gz", "C:", "b.tar.gz", ".gz"},
        {"C:\\a.b\\", "C:\\a.b\\", "none", "none"},
        {"C:\\.profile", "C:\\", ".profile", ".profile"},
        {"name.", "none", "name.", "."},
        {"a:b:c", "a:", "b:c", "none"},
        {"", "none", "none", "none"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(Part(&ExtractDirectory, row.path), row.directory);
        EXPECT_EQ(Part(&ExtractFileName, row.path), row.name);
        EXPECT_EQ(Part(&ExtractExtension, row.path), row.extension);
    }
    // 83 5C is one character.
    SetCodePageForFiles(932);
    EXPECT_EQ(Part(&ExtractDirectory, "C:\\\x83\x5C\\\x83\x5C.txt"), "C:\\\x83\x5C\\");
    EXPECT_EQ(Part(&ExtractFileName, "C:\\\x83\x5C\\\x83\x5C.txt"), "\x83\x5C.txt");
    EXPECT_EQ(Part(&ExtractFileName, "\x83"), "\x83");
    SetCodePageForFiles(0);
}

TEST(FileNames, BufferHoldsThePartOrNothing) {
    for (const unsigned size : {1u, 5u, 6u}) {
        GuardedBytes buffer(size);
        EXPECT_EQ(ExtractFileName("C:\\b.txt", buffer.Data(), size), size == 6) << size;
        EXPECT_STREQ(buffer.Data(), size == 6 ? "b.txt" : "") << size;
    }
    char path[] = "C:\\folder\\name.ext";
    EXPECT_FALSE(ExtractFileName("a", path, 0) || ExtractFileName("a", nullptr, 10));
    EXPECT_TRUE(ExtractFileName(path, path, sizeof path));
    EXPECT_STREQ(path, "name.ext");
    EXPECT_FALSE(ExtractExtension(nullptr, path, 1));
    EXPECT_STREQ(path, "");
}

TEST(FileNames, FilesExistAndFoldersDoNot) {
    const TestFolder folder;
    EXPECT_TRUE(DoesFileExist(folder.Write("there.txt", "").c_str()));
    EXPECT_FALSE(DoesFileExist(nullptr));
    for (const std::string& path : {folder.Path(), std::string(), std::string(40'000, 'x')})
        EXPECT_FALSE(DoesFileExist(path.c_str()));

    const std::wstring wide(folder.Path().begin(), folder.Path().end());
    std::ofstream(std::filesystem::path(wide + L"\x30BD.txt")).close();
    EXPECT_FALSE(DoesFileExist(folder.File("\x83\x5C.txt").c_str()));
    SetCodePageForFiles(932);
    EXPECT_TRUE(DoesFileExist(folder.File("\x83\x5C.txt").c_str()));
    SetCodePageForFiles(0);
}
