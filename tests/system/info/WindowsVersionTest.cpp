#include "utilities/system/info/WindowsVersion.h"

#include "tests/support/GuardedBuffer.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>

namespace {

constexpr DWORD win9x = VER_PLATFORM_WIN32_WINDOWS;
constexpr DWORD nt = VER_PLATFORM_WIN32_NT;

using Class = vtr::SystemClass;

TEST(WindowsVersion, HasACodeAndATextForEachRecord) {
    const std::string longest(128, 'x');
    const struct {
        const char* name;
        DWORD platform, major, minor, build;
        std::string servicePack;
        const char* productType;
        int code;
        std::string text;
        Class system;
    } rows[] = {
        {"OSR2", win9x, 4, 0, 1111, " B", "", 1, "Microsoft Windows 95 OSR2 ", Class::windows9x},
        {"98", win9x, 4, 10, 1998, " B", "", 2, "Microsoft Windows 98 ", Class::windows9x},
        {"Me", win9x, 4, 90, 3000, " A", "", 4, "Microsoft Windows Millennium Edition ",
         Class::windows9x},
        {"NT 3.51", nt, 3, 51, 1057, "", "", 5, "Microsoft Windows NT version 3.51  (Build 1057)\n",
         Class::unknown},
        {"NT 4.0", nt, 4, 0, 1381, "Service Pack 6", "WINNT", 5,
         "Microsoft Windows NT version 4.0 Service Pack 6 (Build 1381)\n", Class::nt4},
        {"XP", nt, 5, 1, 2600, "%s%n", "", 7, "Microsoft Windows XP %s%n (Build 2600)\n",
         Class::nt5},
        {"5.2", nt, 5, 2, 3790, "", "winnt", 8, "Professional  (Build 3790)\n", Class::nt5},
        {"8.1", nt, 6, 3, 9600, "", "", 11, "Microsoft Windows 8.1  (Build 9600)\n", Class::nt5},
        {"6.4", nt, 6, 4, 9841, "", "ServerNT", 8, "Advanced Server  (Build 9841)\n", Class::nt5},
        {"7.0", nt, 7, 0, 30000, "", "other", 8, " (Build 30000)\n", Class::nt5},
        {"10", nt, 10, 0, 21999, "", "", 12, "Microsoft Windows 10  (Build 21999)\n", Class::nt5},
        {"11", nt, 10, 0, 22000, "", "", 13, "Microsoft Windows 11  (Build 22000)\n", Class::nt5},
        {"11.0", nt, 11, 0, 30000, "", nullptr, 8, " (Build 30000)\n", Class::nt5},
        {"no terminator", nt, 10, 0, 22621, longest, "", 13,
         "Microsoft Windows 11 " + longest + " (Build 22621)\n", Class::nt5},
        {"Win32s", VER_PLATFORM_WIN32s, 3, 10, 1, "SP", "WINNT", 8, "", Class::unknown},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        OSVERSIONINFOA record{sizeof record, row.major, row.minor, row.build, row.platform, {}};
        std::memcpy(record.szCSDVersion, row.servicePack.data(), row.servicePack.size());
        GuardedBytes description(vtr::descriptionSize);
        EXPECT_EQ(vtr::DescribeWindows(record, row.productType, description.Data()), row.code);
        EXPECT_EQ(description.Data(), row.text);
        EXPECT_EQ(vtr::DescribeWindows(record, row.productType, nullptr), row.code);
        EXPECT_EQ(vtr::ClassOfSystem(&record), row.system);
    }
    EXPECT_EQ(vtr::ClassOfSystem(nullptr), Class::unknown);
}

} // namespace
