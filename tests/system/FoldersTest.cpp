#include "utilities/system/FileFunctions.h"

#include "tests/support/TestFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

/// The folders below `root`, one after the other, as "a\b".
std::string Deepest(const std::string& root) {
    std::string deepest;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
        deepest = entry.path().string().substr(root.size());
    return deepest;
}

} // namespace

TEST(Folders, MakesWhatEndsWithABackslash) {
    const std::string longest(120, 'x');
    static const struct {
        std::string path; ///< below the test's folder
        const char* made;
        bool good;
    } rows[] = {
        {"a\\b", "a", true},
        {"a\\b\\", "a\\b", true},
        {"a\\\\b\\c\\\\", "a\\b\\c", true},
        {"a/b", "", true},
        {"file\\", "", true},
        {"file\\a\\", "", false},
        {"a\\b?\\c\\", "a", false},
        {"a\\" + longest + "\\" + longest + "\\", "", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        const TestFolder folder;
        const std::string root = folder.File("root\\");
        ASSERT_TRUE(std::filesystem::create_directory(root));
        if (row.path.starts_with("file"))
            folder.Write("root\\file", "");
        EXPECT_EQ(CreateMultiLevelDir((root + row.path).c_str()) != 0, row.good);
        EXPECT_EQ(Deepest(root), row.path.starts_with("file") ? "file" : row.made);
    }
    for (const char* path :
         {"", "C:", "a\\b\\", "C:/a", "C:name", "\\\\server", "\\\\server\\share", "?:\\a\\"})
        EXPECT_EQ(CreateMultiLevelDir(path), 0) << path;
    EXPECT_EQ(CreateMultiLevelDir(nullptr), 0);
    EXPECT_NE(CreateMultiLevelDir("C:\\"), 0);
}

TEST(Folders, FirstFileIsFoundInTheFolderAndThenBelow) {
    const TestFolder folder;
    std::filesystem::create_directories(folder.File("a\\b.wav"));
    std::filesystem::create_directories(folder.File("c\\d"));
    folder.Write("a\\b.wav\\x.wav", "");
    folder.Write("c\\d\\deep.txt", "");
    folder.Write("c\\top.ini", "");
    folder.Write("top.ini", "");
    static constexpr std::pair<const char*, const char*> rows[] = {
        {"*.ini", "top.ini"},
        {"deep.*", "c\\d\\deep.txt"},
        {"*.wav", "a\\b.wav\\x.wav"},
        {"*.none", nullptr},
        {"", nullptr},
    };
    for (const auto& [pattern, hit] : rows) {
        for (const std::string& start :
             {folder.Path(), folder.Path().substr(0, folder.Path().size() - 1)}) {
            char out[MAX_PATH] = "x";
            EXPECT_EQ(FindFilesRecursively(start.c_str(), pattern, out), hit != nullptr ? 1 : 0);
            EXPECT_EQ(out, hit != nullptr ? folder.File(hit) : "") << pattern;
        }
    }
    char out[MAX_PATH];
    EXPECT_EQ(FindFilesRecursively(nullptr, "*", out), 0);
    EXPECT_EQ(FindFilesRecursively(std::string(300, 'x').c_str(), "*", out), 0);
    EXPECT_EQ(FindFilesRecursively("C:\\", nullptr, out), 0);
    EXPECT_EQ(FindFilesRecursively("C:\\", "*", nullptr), 0);
}

TEST(Folders, WhatIsInThem) {
    const TestFolder folder;
    char out[MAX_PATH] = "x";
    EXPECT_EQ(HasSubDir(folder.Path().c_str(), out), 0);
    EXPECT_STREQ(out, "");
    folder.Write("afile", "");
    std::filesystem::create_directory(folder.File(".hidden"));
    std::filesystem::create_directory(folder.File("zfolder"));
    EXPECT_EQ(HasSubDir(folder.Path().c_str(), out), 1);
    EXPECT_STREQ(out, "zfolder");
    EXPECT_EQ(HasSubDir(nullptr, out), 0);
    EXPECT_EQ(HasSubDir("C:\\", nullptr), 0);

    EXPECT_FALSE(FolderEmpty(folder.Path().c_str()));
    EXPECT_FALSE(FolderEmpty(folder.File("zfolder").c_str()));
    EXPECT_TRUE(FolderEmpty(folder.File("none\\").c_str()));
    EXPECT_TRUE(FolderEmpty(folder.File("afile").c_str()));
    EXPECT_TRUE(FolderEmpty(std::string(300, 'x').c_str()));
    EXPECT_TRUE(FolderEmpty(nullptr));

    EXPECT_TRUE(IsValidDirectory(folder.Path().c_str()));
    EXPECT_FALSE(IsValidDirectory(folder.File("afile").c_str()));
    EXPECT_FALSE(IsValidDirectory(nullptr));
    static constexpr std::pair<const char*, bool> roots[] = {
        {"C:", true},    {"x", true},    {"C:\\", true},   {"z:\\", true},  {"", false},
        {"1:\\", false}, {"C:/", false}, {"C:\\a", false}, {"@:\\", false},
    };
    for (const auto& [path, root] : roots)
        EXPECT_EQ(IsRootFolder(path), root) << path;
    EXPECT_FALSE(IsRootFolder(nullptr));
}
