#include "utilities/text/strings/StringFunctions.h"

#include "tests/support/AllocationFault.h"

#include <gtest/gtest.h>

TEST(CopyString, OwnsAnExactCopy) {
    AllocationFault fault("vtrutils.dll");
    char* text = nullptr;
    wchar_t* wide = nullptr;
    CopyStringA(&text, "abc");
    CopyStringW(&wide, L"abc");
    fault.FailAt(1);
    CopyStringA(&text, "xyz");
    CopyStringW(&wide, L"xyz");
    EXPECT_STREQ(text, "xyz") << "an equal length is copied in place";
    EXPECT_STREQ(wide, L"xyz");
    fault.FailAt(0);
    CopyStringA(&text, text + 1);
    CopyStringW(&wide, wide + 1);
    EXPECT_STREQ(text, "yz");
    EXPECT_STREQ(wide, L"yz");
    fault.FailAt(1);
    CopyStringA(&text, "longer");
    EXPECT_EQ(text, nullptr) << "memory ran out";
    CopyStringA(&text, "a");
    CopyStringA(&text, "");
    CopyStringW(&wide, nullptr);
    EXPECT_TRUE(text == nullptr && wide == nullptr);
}
