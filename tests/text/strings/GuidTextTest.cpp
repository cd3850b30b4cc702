#include "utilities/text/strings/StringFunctions.h"

#include <gtest/gtest.h>
#include <windows.h>

TEST(GuidText, ThereAndBack) {
    static constexpr GUID guid = {0x0123ABCD, 0x4567, 0x89EF, {0, 1, 2, 0xFD, 4, 5, 6, 0xFF}};
    char text[64];
    for (const bool braces : {true, false}) {
        GUIDToString(guid, text, sizeof text, braces);
        EXPECT_STREQ(text, braces ? "{0123ABCD-4567-89EF-0001-02FD040506FF}"
                                  : "0123ABCD-4567-89EF-0001-02FD040506FF");
        GUID read{};
        EXPECT_TRUE(GUIDStringToGUID(read, text));
        EXPECT_TRUE(IsEqualGUID(read, guid));
    }
    GUIDToString(guid, text, 5, true);
    GUIDToString(guid, text, 0, true);
    GUIDToString(guid, nullptr, 10, true);
    EXPECT_STREQ(text, "{012");
}

TEST(GuidText, FieldsStandAtFixedPlaces) {
    GUID guid{};
    EXPECT_FALSE(GUIDStringToGUID(guid, nullptr));
    EXPECT_FALSE(GUIDStringToGUID(guid, "{0123ABCD-4567-89EF-0001-02FD040506FF"));
    EXPECT_FALSE(GUIDStringToGUID(guid, "0123ABCD-4567-89EF-0001-02FD040506FF}"));
    EXPECT_TRUE(GUIDIsZero(guid)) << "unchanged";
    EXPECT_TRUE(GUIDStringToGUID(guid, "12x45678/ab01FffffA0z1z/zz1020304050"));
    static constexpr GUID expected = {
        0x12, 0xAB01, 0xFFFF, {0, 1, 0, 0x10, 0x20, 0x30, 0x40, 0x50}};
    EXPECT_TRUE(IsEqualGUID(guid, expected));
    EXPECT_FALSE(GUIDIsZero({0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 1}}));
    EXPECT_FALSE(GUIDIsZero({1, 0, 0, {}}));
}
