#include "utilities/text/StringFunctions.h"

#include "tests/support/GuardedBuffer.h"

#include <gtest/gtest.h>
#include <shlwapi.h>

TEST(CommandLine, OfThisProcess) {
    char program[MAX_PATH];
    GetCommandLineParameter(0, program, sizeof program);
    EXPECT_STREQ(PathFindFileNameA(program), "text_test.exe");

    GuardedBytes buffer(5);
    GetCommandLineParameter(0, buffer.Data(), 5);
    EXPECT_EQ(buffer.Data(), std::string(program, 4));
    GetCommandLineParameter(0, nullptr, 5);
    GetCommandLineParameter(0, buffer.Data(), 0);
    EXPECT_EQ(buffer.Data(), std::string(program, 4));
    GetCommandLineParameter(1000, buffer.Data(), 5);
    EXPECT_EQ(buffer.View(), std::string(5, '\0'));
}
