#include "vtrfutls/RegKey.h"

#include "tests/support/AllocationFault.h"
#include "tests/support/TestKey.h"

#include <gtest/gtest.h>

namespace {

TEST(RegKey, ReadsNumbersOfKeysThatAreThere) {
    const TestKey key;
    const struct {
        const char* name;
        DWORD kind;
        std::string bytes;
        bool isNumber;
        unsigned number;
    } rows[] = {
        {"greatest", REG_DWORD, "\xFF\xFF\xFF\xFF", true, 0xFFFFFFFF},
        {"", REG_DWORD, std::string("\7\0\0\0", 4), true, 7},
        {"long", REG_QWORD, std::string(8, '\1'), false, 0},
        {"binary", REG_BINARY, "\1\1\1\1", false, 0},
        {"large", REG_DWORD, std::string(100'000, '\1'), false, 0},
    };
    const CRegKey root(HKEY_CURRENT_USER), nothing(nullptr);
    EXPECT_TRUE(root.SubKeyExists(key.SubKey()));
    CRegKey* opened = root.GetSubKey(key.SubKey());
    ASSERT_NE(opened, nullptr);
    unsigned number = 5;
    for (const auto& row : rows) {
        key.Set(row.name, row.bytes, row.kind);
        EXPECT_EQ(opened->GetKeyNum(row.name, &number), row.isNumber) << row.name;
        EXPECT_EQ(number, row.number) << row.name;
    }
    EXPECT_TRUE(opened->GetKeyNum(nullptr, &number));
    EXPECT_EQ(number, 7U) << "the default value";
    EXPECT_FALSE(opened->GetKeyNum("missing", &number));
    EXPECT_EQ(number, 0U);
    CRegKey* again = opened->GetSubKey("");
    DeleteRegKey(opened);
    EXPECT_TRUE(again->GetKeyNum("GREATEST", &number)) << "of itself, in any case";
    DeleteRegKey(again);
    for (const char* path : {"Software\\vtrutils-no-such-key", "\\\\"}) {
        EXPECT_FALSE(root.SubKeyExists(path));
        EXPECT_EQ(root.GetSubKey(path), nullptr);
    }
    EXPECT_FALSE(nothing.SubKeyExists("Software") || nothing.GetKeyNum("", &number));
    AllocationFault fault("vtrfutls.dll");
    fault.FailAt(1);
    EXPECT_EQ(root.GetSubKey("Software"), nullptr);
}

} // namespace
