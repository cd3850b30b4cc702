#include "utilities/containers/LastDirList.h"
#include "utilities/containers/MRUList.h"

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

TEST(Example, Remembered) {
    const TestFolder folder;
    const std::string first = folder.Write("first.txt", "");
    const std::string second = folder.Write("second.txt", "");

    // `recent.Init(HKEY_CURRENT_USER, "Software\\Host")` would keep it in the registry.
    char name[] = "recent";
    CMRUList recent(name);
    recent.AddFile(first.c_str(), /*length=*/0);
    recent.AddFile(second.c_str(), /*length=*/0);
    EXPECT_STREQ(recent.GetFileNameOnly(0), "second.txt");
    EXPECT_EQ(recent.IndexOf(first.c_str()), 1);

    CLastDirList folders;
    std::string path = folder.Path();
    EXPECT_EQ(folders.MoveOrAddToTop(path.data()), 1);
    ASSERT_NE(folders.ContainsDir(path.data()), nullptr);
    EXPECT_EQ(folders.ContainsDir(path.data())->value, 1000);
}
