#include "utilities/system/files/FileFunctions.h"

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

TEST(Example, Files) {
    const TestFolder folder;
    EXPECT_NE(CreateMultiLevelDir(folder.File("music\\live\\").c_str()), 0);
    EXPECT_TRUE(IsValidDirectory(folder.File("music\\live").c_str()));

    folder.Write("music\\live\\take.wav", "");
    char found[MAX_PATH];
    EXPECT_EQ(FindFilesRecursively(folder.Path().c_str(), "*.wav", found), 1);
    EXPECT_EQ(found, folder.File("music\\live\\take.wav"));

    char valid[MAX_PATH];
    ValidateFileName("What now?", valid, '-');
    EXPECT_STREQ(valid, "What now-");
}
