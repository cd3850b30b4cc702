#include "utilities/system/files/FileFunctions.h"

#include "tests/support/TestFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

TEST(Folders, AreMadeWhereABackslashEndsThem) {
    const TestFolder folder;
    folder.Write("file", "");
    const std::string longest(120, 'x');
    const struct {
        std::string path;
        const char *made, *notMade;
        bool good;
    } rows[] = {
        {"a\\b", "a", "a\\b", true},
        {"c\\\\d\\e\\\\", "c\\d\\e", "none", true},
        {"f/g", ".", "f", true},
        {"file\\", "file", "none", true},
        {"file\\a\\", "file", "file\\a", false},
        {"h\\b?\\c\\", "h", "h\\c", false},
        {"i\\" + longest + "\\" + longest + "\\", ".", "i", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(CreateMultiLevelDir(folder.File(row.path).c_str()) != 0, row.good) << row.path;
        EXPECT_TRUE(std::filesystem::exists(folder.File(row.made))) << row.path;
        EXPECT_FALSE(std::filesystem::exists(folder.File(row.notMade))) << row.path;
    }
    for (const char* path : {"", "C:", "a\\b\\", "C:/a", "\\\\server", "\\\\server\\share", "?:\\"})
        EXPECT_EQ(CreateMultiLevelDir(path), 0) << path;
    EXPECT_EQ(CreateMultiLevelDir(nullptr), 0);
}

TEST(Folders, WhatIsInThem) {
    const TestFolder folder;
    char out[MAX_PATH] = "x";
    EXPECT_EQ(HasSubDir(folder.Path().c_str(), out), 0);
    EXPECT_STREQ(out, "");
    EXPECT_FALSE(FolderEmpty(folder.Path().c_str()));
    std::filesystem::create_directory(folder.File(".hidden"));
    std::filesystem::create_directories(folder.File("b.wav\\c"));
    for (const char* name : {"afile", "b.wav\\c\\deep.wav", "b.wav\\top.ini", "top.ini"})
        folder.Write(name, "");
    EXPECT_EQ(HasSubDir(folder.Path().c_str(), out), 1);
    EXPECT_STREQ(out, "b.wav");
    EXPECT_TRUE(FolderEmpty(folder.File("none\\").c_str()));
    EXPECT_TRUE(FolderEmpty(nullptr));
    EXPECT_FALSE(IsValidDirectory(folder.File("afile").c_str()));

    static constexpr std::pair<const char*, const char*> hits[] = {
        {"*.ini", "top.ini"}, {"*.wav", "b.wav\\c\\deep.wav"}, {"*.none", nullptr}};
    for (const auto& [pattern, hit] : hits) {
        for (const std::size_t backslash : {0u, 1u}) {
            const std::string start = folder.Path().substr(0, folder.Path().size() - backslash);
            EXPECT_EQ(FindFilesRecursively(start.c_str(), pattern, out), hit != nullptr ? 1 : 0);
            EXPECT_EQ(out, hit != nullptr ? folder.File(hit) : "") << pattern;
        }
    }
    EXPECT_EQ(FindFilesRecursively(std::string(300, 'x').c_str(), "*", out), 0);

    for (const char* path : {"C:", "x", "C:\\", "z:\\"})
        EXPECT_TRUE(IsRootFolder(path)) << path;
    for (const char* path : {"", "1:\\", "C:/", "C:\\a", "@:\\"})
        EXPECT_FALSE(IsRootFolder(path)) << path;
}
