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
    EXPECT_EQ(std::string(buffer.Data()), std::string(program, 4));
    GetCommandLineParameter(1000, buffer.Data(), 5);
    EXPECT_EQ(std::string_view(buffer.Data(), 5), std::string_view("\0\0\0\0\0", 5));
    buffer[0] = 'x';
    GetCommandLineParameter(-1, buffer.Data(), 5);
    EXPECT_EQ(buffer[0], '\0');
    GetCommandLineParameter(0, nullptr, 5);
    buffer[0] = 'x';
    GetCommandLineParameter(0, buffer.Data(), 0);
    EXPECT_EQ(buffer[0], 'x');
}
