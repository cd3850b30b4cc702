#include "utilities/system/info/SystemInfo.h"

#include "common/DynamicFunction.h"
#include "utilities/base/OwnedText.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/info/VersionRecord.h"
#include "utilities/system/info/WindowsVersion.h"
#include "vtrfutls/Log.h"
#include "vtrfutls/RegKey.h"

namespace {

constexpr unsigned bestPerformance = 2;

vtr::DynamicFunction<HRESULT WINAPI(BOOL*)> isCompositionEnabled("Dwmapi.dll",
                                                                 "DwmIsCompositionEnabled");

struct RegKeyDeleter {
    void operator()(CRegKey* key) const noexcept { DeleteRegKey(key); }
};
using OwnedRegKey = std::unique_ptr<CRegKey, RegKeyDeleter>;

/// 0 where there is no such key or no such number in it.
unsigned NumberAt(HKEY root, const char* path, const char* name) {
    const OwnedRegKey key(CRegKey(root).GetSubKey(path));
    unsigned number = 0;
    if (key != nullptr)
        key->GetKeyNum(name, &number);
    return number;
}

bool HasVersionInformation(const wchar_t* file) {
    DWORD unused = 0;
    const DWORD size = GetFileVersionInfoSizeW(file, &unused);
    if (size == 0)
        return false;
    const vtr::OwnedBytes information = vtr::AllocateChars<unsigned char>(size);
    return information != nullptr &&
           GetFileVersionInfoW(file, /*dwHandle=*/0, size, information.get());
}

} // namespace

int GetWindowsSystemVersion(char* description) {
    const vtr::VersionRecord record = vtr::VersionRecord::Read();
    if (record.Get() == nullptr) {
        if (description != nullptr)
            *description = '\0';
        return vtr::codeUnknown;
    }
    char productType[64] = "";
    if (description != nullptr && vtr::NeedsProductType(*record.Get()))
        GetRegistryString(HKEY_LOCAL_MACHINE, "SYSTEM\\CurrentControlSet\\Control\\ProductOptions",
                          "ProductType", productType, sizeof productType);
    return vtr::DescribeWindows(*record.Get(), productType, description);
}

bool OSIsNativeUnicode() {
    return GetWindowsSystemVersion(nullptr) > vtr::codeWindowsMe;
}

bool SystemUsesXPThemes() {
    return GetWindowsSystemVersion(nullptr) >= vtr::codeWindowsXp &&
           NumberAt(HKEY_CURRENT_USER,
                    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\VisualEffects",
                    "VisualFXSetting") != bestPerformance;
}

bool SystemUsesAeroThemes() {
    Log("SystemUsesAeroThemes() enter");
    auto* isEnabled = isCompositionEnabled.Get();
    BOOL enabled = FALSE;
    const bool result = isEnabled != nullptr && SUCCEEDED(isEnabled(&enabled)) && enabled != FALSE;
    LogFmtA("SystemUsesAeroThemes returns %d", result ? 1 : 0);
    return result;
}

unsigned CPUSpeed() {
    return NumberAt(HKEY_LOCAL_MACHINE, "HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
                    "~MHZ");
}

bool BadIntelAppAcceleratorInstalled() {
    return GetDriveTypeW(L"C:\\") == DRIVE_FIXED &&
           HasVersionInformation(L"C:\\program files\\intel\\intel application accelerator\\"
                                 L"intelata.exe");
}
