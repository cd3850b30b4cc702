#include "utilities/system/info/SystemInfo.h"

#include "tests/support/LookUps.h"
#include "tests/support/OwnProcess.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"
#include "utilities/system/files/FileFunctions.h"

#include <cstring>
#include <gtest/gtest.h>

namespace {

HMODULE Library() {
    return GetModuleHandleA("vtrutils.dll");
}

/// Windows tells this version while it lives.
class PatchedVersion {
public:
    PatchedVersion(DWORD major, DWORD minor, DWORD largestRecord = sizeof told) {
        told = {0, major, minor, 5, VER_PLATFORM_WIN32_NT, "SP", 0, 0, 0, 0, 0};
        largestAnswered = largestRecord;
    }

private:
    static BOOL WINAPI Tell(OSVERSIONINFOA* record) {
        if (record->dwOSVersionInfoSize > largestAnswered)
            return FALSE;
        told.dwOSVersionInfoSize = record->dwOSVersionInfoSize;
        std::memcpy(record, &told, record->dwOSVersionInfoSize);
        return TRUE;
    }

    inline static OSVERSIONINFOEXA told;
    inline static DWORD largestAnswered;
    ImportPatch patch{Library(), "KERNEL32.dll", "GetVersionExA", reinterpret_cast<void*>(&Tell)};
};

std::string Probe(const char* program) {
    const TestFolder folder;
    char programs[MAX_PATH];
    EXPECT_TRUE(GetExeDirectory(programs, sizeof programs, nullptr));
    const std::string out = folder.File("version.txt");
    EXPECT_EQ(
        _spawnl(_P_WAIT, (std::string(programs) + program).c_str(), program, out.c_str(), nullptr),
        0);
    return ReadBytes(out);
}

/// The versions that Wine can pretend to be.
TEST(SystemInfo, IsToldByRealProcesses) {
    if (GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") == nullptr)
        GTEST_SKIP() << "Windows does not pretend to be another version";
    const std::string eight = "11 1 1 0|Microsoft Windows 8  (Build 9200)\n";
    const struct {
        const char* version;
        std::string plain;
        std::string told; ///< with a manifest
    } rows[] = {
        {"win95", "0 0 0 -1|Microsoft Windows 95 ", ""},
        {"win98", "3 0 0 -1|Microsoft Windows 98 SE ", ""},
        {"nt40", "5 1 0 0|Microsoft Windows NT version 4.0 Service Pack 6a (Build 1381)\n", ""},
        {"win2k", "6 1 0 0|Microsoft Windows 2000 Service Pack 4 (Build 2195)\n", ""},
        {"winxp", "7 1 1 0|Microsoft Windows XP Service Pack 3 (Build 2600)\n", ""},
        {"win2003", "8 1 1 0|Professional Service Pack 2 (Build 3790)\n", ""},
        {"vista", "9 1 1 0|Microsoft Vista Service Pack 2 (Build 6002)\n", ""},
        {"win7", "10 1 1 0|Microsoft Windows 7 Service Pack 1 (Build 7601)\n", ""},
        {"win8", eight, ""},
        {"win81", eight, "11 1 1 0|Microsoft Windows 8.1  (Build 9600)\n"},
        {"win10", eight, "12 1 1 0|Microsoft Windows 10  (Build 18362)\n"},
    };
    const std::string key = "Software\\Wine\\AppDefaults\\";
    const TestKey plain(key + "version_probe.exe"), truthful(key + "manifest_probe.exe");
    for (const auto& row : rows) {
        plain.SetText("Version", row.version);
        truthful.SetText("Version", row.version);
        EXPECT_EQ(Probe("version_probe.exe"), row.plain) << row.version;
        EXPECT_EQ(Probe("manifest_probe.exe"), row.told.empty() ? row.plain : row.told);
    }
}

TEST(SystemInfo, IsReadFromTheRecordThatWindowsHas) {
    char description[300];
    {
        const PatchedVersion version(10, 0, sizeof(OSVERSIONINFOA));
        EXPECT_EQ(GetWindowsSystemVersion(description), 12) << "from the basic record";
        EXPECT_STREQ(description, "Microsoft Windows 10 SP (Build 5)\n");
    }
    const PatchedVersion version(10, 0, 0);
    EXPECT_EQ(GetWindowsSystemVersion(description), 8);
    EXPECT_STREQ(description, "");
    EXPECT_EQ(GetWindowsSystemVersion(nullptr), 8);
}

TEST(SystemInfo, ThemesAreThereFromXpOnUnlessTheUserChoseSpeed) {
    const TestKey key("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\VisualEffects");
    EXPECT_TRUE(SystemUsesXPThemes()) << "without the number";
    for (const char setting : {'\1', '\2', '\3'}) {
        key.Set("VisualFXSetting", {setting, 0, 0, 0}, REG_DWORD);
        EXPECT_EQ(SystemUsesXPThemes(), setting != '\2');
        const PatchedVersion older(5, 0);
        EXPECT_FALSE(SystemUsesXPThemes());
    }
}

HRESULT compositionResult;
BOOL composition;

HRESULT WINAPI TellComposition(BOOL* enabled) {
    *enabled = composition;
    return compositionResult;
}

TEST(SystemInfo, TheDesktopIsComposedIfWindowsSaysSo) {
    const bool missing = InOwnProcess("without it");
    if (!missing && !InOwnProcess("with it"))
        return;
    const LookUps functions({{missing ? "another" : "DwmIsCompositionEnabled",
                              reinterpret_cast<void*>(&TellComposition)}});
    for (const auto& [result, enabled, expected] :
         {std::tuple(S_OK, TRUE, true), {S_OK, FALSE, false}, {E_FAIL, TRUE, false}}) {
        compositionResult = result;
        composition = enabled;
        EXPECT_EQ(SystemUsesAeroThemes(), expected && !missing) << result;
    }
}

TEST(SystemInfo, TheBadDriverIsAnyProgramWithAVersionInItsPlace) {
    const std::string folder = "C:\\program files\\intel\\intel application accelerator\\";
    const std::string file = folder + "intelata.exe";
    ASSERT_NE(CreateMultiLevelDir(folder.c_str()), 0);
    for (const bool hasVersion : {true, false}) {
        char from[MAX_PATH];
        GetModuleFileNameA(hasVersion ? Library() : nullptr, from, sizeof from);
        EXPECT_TRUE(CopyFileA(from, file.c_str(), FALSE));
        EXPECT_EQ(BadIntelAppAcceleratorInstalled(), hasVersion);
    }
    DeleteFileA(file.c_str());
    RemoveDirectoryA(folder.c_str());
    RemoveDirectoryA("C:\\program files\\intel");
}

} // namespace
