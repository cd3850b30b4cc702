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
