#include "utilities/system/files/DriveSpace.h"

#include "utilities/system/files/FileFunctions.h"

#include <gtest/gtest.h>

TEST(DriveSpace, InClustersIsTheSame) {
    EXPECT_NEAR(vtr::FreeKilobytesInClusters(L"C:\\"), GetKBFree("C:\\"), 500'000);
    EXPECT_LT(vtr::FreeKilobytesInClusters(L"?:\\"), 0);
}
