#include "utilities/text/StringFunctions.h"

#include "tests/support/AllocationFault.h"

#include <cstdlib>
#include <cwchar>
#include <gtest/gtest.h>

TEST(CopyString, OwnsAnExactCopy) {
    char* text = nullptr;
    CopyStringA(&text, "abc");
    EXPECT_STREQ(text, "abc");
    char* block = text;
    CopyStringA(&text, "xyz");
    EXPECT_EQ(text, block) << "an equal length is copied in place";
    EXPECT_STREQ(text, "xyz");
    CopyStringA(&text, text);
    EXPECT_EQ(text, block);
    CopyStringA(&text, text + 1);
    EXPECT_STREQ(text, "yz");
    CopyStringA(&text, "");
    EXPECT_EQ(text, nullptr);
    CopyStringA(&text, "a");
    CopyStringA(&text, nullptr);
    EXPECT_EQ(text, nullptr);

    wchar_t* wide = nullptr;
    CopyStringW(&wide, L"abc");
    EXPECT_STREQ(wide, L"abc");
    wchar_t* wideBlock = wide;
    CopyStringW(&wide, L"xyz");
    EXPECT_EQ(wide, wideBlock);
    CopyStringW(&wide, wide + 2);
    EXPECT_STREQ(wide, L"z");
    CopyStringW(&wide, L"");
    EXPECT_EQ(wide, nullptr);
}

TEST(CopyString, LackOfMemoryLeavesNull) {
    AllocationFault fault("vtrutils.dll");
    char* text = nullptr;
    CopyStringA(&text, "abc");
    fault.FailAt(1);
    CopyStringA(&text, "longer");
    EXPECT_EQ(text, nullptr);
}
