#include "utilities/system/info/CpuUsage.h"
#include "utilities/system/info/SystemInfo.h"

#include <gtest/gtest.h>

TEST(Example, Info) {
    char description[256];
    const int code = GetWindowsSystemVersion(description);
    EXPECT_GT(code, 4); // the NT family
    EXPECT_TRUE(OSIsNativeUnicode());
    EXPECT_STRNE(description, "");

    CCpuUsage load;
    EXPECT_EQ(load.GetCpuUsage(), 0); // the first call begins; the next tells the load since then
}
