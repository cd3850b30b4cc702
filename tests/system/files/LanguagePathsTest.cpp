#include "utilities/system/files/DriveSpace.h"
#include "utilities/system/files/FileFunctions.h"

#include "tests/support/TestFolder.h"
#include "utilities/base/CodePage.h"

#include <filesystem>
#include <gtest/gtest.h>

// The second byte of the character, 0x5C, would be a backslash by itself.
TEST(LanguagePaths, BecomeWideWithTheCodePageOfTheLanguage) {
    const TestFolder folder;
    vtr::SetCurrentCodePage(932);
    EXPECT_NE(CreateMultiLevelDir(folder.File("\x83\x5C\x83\x5C\\").c_str()), 0);
    vtr::SetCurrentCodePage(0);
    EXPECT_TRUE(
        std::filesystem::is_directory(std::filesystem::path(folder.Path()) / L"\x30BD\x30BD"));
}

TEST(DriveSpace, InClustersIsTheSame) {
    EXPECT_NEAR(vtr::FreeKilobytesInClusters(L"C:\\"), GetKBFree("C:\\"), 500'000);
    EXPECT_LT(vtr::FreeKilobytesInClusters(L"?:\\"), 0);
}
