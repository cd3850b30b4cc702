#include "utilities/ui/LongOperationDlg.h"
#include "utilities/ui/WindowGeometry.h"

#include "tests/support/TestWindow.h"

#include <gtest/gtest.h>

TEST(Example, Ui) {
    const TestWindow parent; // a window of the host
    CLongOperationDlg progress;
    char title[] = "Reading files";
    progress.SetTitle(title);
    progress.SetMaxProgress(3);
    ASSERT_TRUE(progress.Go(/*instance=*/nullptr, parent));
    for (int i = 1; i <= 3 && !progress.UserPushedCancel(); ++i)
        progress.SetProgress(i); // shows it, and lets the window answer the user
    EXPECT_TRUE(progress.Showing());
    EXPECT_FALSE(progress.UserPushedCancel());

    RECT work = GetMonitorRectFromPt({10, 10}); // without what the task bar takes
    EXPECT_TRUE(IsRectOnTheScreen(&work));
}
