#include "utilities/text/strings/StringFunctions.h"

#include <gtest/gtest.h>
#include <shlwapi.h>

TEST(CommandLine, OfThisProcess) {
    char program[MAX_PATH];
    GetCommandLineParameter(0, program, sizeof program);
    EXPECT_STREQ(PathFindFileNameA(program), "strings_test.exe");
    GetCommandLineParameter(1000, program, sizeof program);
    EXPECT_STREQ(program, "");
}
