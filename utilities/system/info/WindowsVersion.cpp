#include "utilities/system/info/WindowsVersion.h"

#include "utilities/base/SameText.h"

#include <cstdio>
#include <cstring>

namespace vtr {

namespace {

constexpr DWORD anyMinor = MAXDWORD;

struct Version {
    DWORD platform;
    DWORD major;
    DWORD minor;
    DWORD firstBuild;
    /// Characters of which the second one of the service-pack text must be one; null: none asked.
    const char* marks;
    int code;
    const char* name;
};

/// The first row that fits counts.
constexpr Version versions[] = {
    {VER_PLATFORM_WIN32_WINDOWS, 4, 0, 0, "BC", codeWindows95Osr2, "Microsoft Windows 95 OSR2 "},
    {VER_PLATFORM_WIN32_WINDOWS, 4, 0, 0, nullptr, codeWindows95, "Microsoft Windows 95 "},
    {VER_PLATFORM_WIN32_WINDOWS, 4, 10, 0, "A", codeWindows98Se, "Microsoft Windows 98 SE "},
    {VER_PLATFORM_WIN32_WINDOWS, 4, 10, 0, nullptr, codeWindows98, "Microsoft Windows 98 "},
    {VER_PLATFORM_WIN32_WINDOWS, 4, 90, 0, nullptr, codeWindowsMe,
     "Microsoft Windows Millennium Edition "},
    {VER_PLATFORM_WIN32_NT, 5, 0, 0, nullptr, codeWindows2000, "Microsoft Windows 2000 "},
    {VER_PLATFORM_WIN32_NT, 5, 1, 0, nullptr, codeWindowsXp, "Microsoft Windows XP "},
    {VER_PLATFORM_WIN32_NT, 6, 0, 0, nullptr, codeVista, "Microsoft Vista "},
    {VER_PLATFORM_WIN32_NT, 6, 1, 0, nullptr, codeWindows7, "Microsoft Windows 7 "},
    {VER_PLATFORM_WIN32_NT, 6, 2, 0, nullptr, codeWindows8, "Microsoft Windows 8 "},
    {VER_PLATFORM_WIN32_NT, 6, 3, 0, nullptr, codeWindows8, "Microsoft Windows 8.1 "},
    {VER_PLATFORM_WIN32_NT, 10, anyMinor, 22000, nullptr, codeWindows11, "Microsoft Windows 11 "},
    {VER_PLATFORM_WIN32_NT, 10, anyMinor, 0, nullptr, codeWindows10, "Microsoft Windows 10 "},
};

constexpr Version oldNt = {VER_PLATFORM_WIN32_NT,  4, anyMinor, 0, nullptr, codeWindowsNt,
                           "Microsoft Windows NT "};
constexpr Version unknown = {0, 0, anyMinor, 0, nullptr, codeUnknown, ""};

constexpr struct {
    const char* productType;
    const char* name;
} editions[] = {
    {"WINNT", "Professional "},
    {"LANMANNT", "Server "},
    {"SERVERNT", "Advanced Server "},
};

bool Fits(const OSVERSIONINFOA& record, const Version& version) {
    if (record.dwPlatformId != version.platform || record.dwMajorVersion != version.major ||
        (version.minor != anyMinor && record.dwMinorVersion != version.minor) ||
        record.dwBuildNumber < version.firstBuild)
        return false;
    const char* servicePack = record.szCSDVersion;
    return version.marks == nullptr || (servicePack[0] != '\0' && servicePack[1] != '\0' &&
                                        std::strchr(version.marks, servicePack[1]) != nullptr);
}

const Version& VersionOf(const OSVERSIONINFOA& record) {
    for (const Version& version : versions) {
        if (Fits(record, version))
            return version;
    }
    const bool isOldNt =
        record.dwPlatformId == VER_PLATFORM_WIN32_NT && record.dwMajorVersion <= oldNt.major;
    return isOldNt ? oldNt : unknown;
}

const char* EditionOf(const char* productType) {
    for (const auto& edition : editions) {
        if (SameText(edition.productType, productType))
            return edition.name;
    }
    return "";
}

} // namespace

int DescribeWindows(const OSVERSIONINFOA& record, const char* productType, char* description) {
    const Version& version = VersionOf(record);
    if (description == nullptr)
        return version.code;
    char number[64] = "";
    if (version.code == codeWindowsNt)
        std::snprintf(number, sizeof number, "version %d.%d ",
                      static_cast<int>(record.dwMajorVersion),
                      static_cast<int>(record.dwMinorVersion));
    char details[descriptionSize] = "";
    if (record.dwPlatformId == VER_PLATFORM_WIN32_NT) {
        // The text fills its field without a terminator if it is as long as that.
        std::snprintf(details, sizeof details, "%s%.*s (Build %d)\n", number,
                      static_cast<int>(sizeof record.szCSDVersion), record.szCSDVersion,
                      static_cast<int>(record.dwBuildNumber));
    }
    std::snprintf(description, descriptionSize, "%s%s%s", version.name,
                  NeedsProductType(record) ? EditionOf(productType) : "", details);
    return version.code;
}

bool NeedsProductType(const OSVERSIONINFOA& record) {
    return record.dwPlatformId == VER_PLATFORM_WIN32_NT && VersionOf(record).code == codeUnknown;
}

SystemClass ClassOfSystem(const OSVERSIONINFOA* record) {
    if (record == nullptr)
        return SystemClass::unknown;
    if (record->dwPlatformId == VER_PLATFORM_WIN32_WINDOWS)
        return SystemClass::windows9x;
    if (record->dwPlatformId != VER_PLATFORM_WIN32_NT || record->dwMajorVersion < 4)
        return SystemClass::unknown;
    return record->dwMajorVersion == 4 ? SystemClass::nt4 : SystemClass::nt5;
}

} // namespace vtr
