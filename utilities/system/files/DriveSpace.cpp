#include "utilities/system/files/DriveSpace.h"

#include "common/DynamicFunction.h"
#include "common/WidePath.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/system/files/FileFunctions.h"
#include "vtrfutls/Log.h"

#include <cstring>

namespace {

constexpr double bytesPerKilobyte = 1024;
constexpr double unknownShare = 2'048'000;
constexpr DWORD longestWalk = 20'000;

vtr::DynamicFunction<decltype(GetDiskFreeSpaceExW)> getDiskFreeSpaceEx("KERNEL32.DLL",
                                                                       "GetDiskFreeSpaceExW");

/// The start of `path` that ends at `end`, with it. False when it does not fit.
bool CopyThrough(const wchar_t* path, const wchar_t* end, vtr::PathBuilder<>& copy) {
    return copy.Append(path, static_cast<std::size_t>(end - path) + 1);
}

/// Below 0 when the drive cannot be asked.
double FreeKilobytes(const wchar_t* root) {
    ULARGE_INTEGER available;
    if (getDiskFreeSpaceEx.Get() == nullptr ||
        !getDiskFreeSpaceEx.Get()(root, &available, /*lpTotalNumberOfBytes=*/nullptr,
                                  /*lpTotalNumberOfFreeBytes=*/nullptr))
        return vtr::FreeKilobytesInClusters(root);
    return static_cast<double>(available.QuadPart) / bytesPerKilobyte;
}

/// "\\server\...", without a drive.
bool NamesShare(const wchar_t* path) {
    return path[0] == L'\\' && path[1] == L'\\' && std::wcschr(path, L':') == nullptr &&
           std::wcschr(path + 2, L'\\') != nullptr;
}

const char* DriveTypeName(UINT type) {
    switch (type) {
    case DRIVE_NO_ROOT_DIR:
        return "DRIVE_NO_ROOT_DIR";
    case DRIVE_REMOVABLE:
        return "DRIVE_REMOVABLE";
    case DRIVE_REMOTE:
        return "DRIVE_REMOTE";
    case DRIVE_CDROM:
        return "DRIVE_CDROM";
    case DRIVE_RAMDISK:
        return "DRIVE_RAMDISK";
    default:
        return "DRIVE_UNKNOWN";
    }
}

/// Of letters that all code pages have.
void LogDrive(const char* root) {
    const UINT type = GetDriveTypeW(vtr::WidePath(root, CP_ACP).Get());
    if (type == DRIVE_FIXED)
        LogFmtA("%s has %0.2f MB free.", root, GetKBFree(root) / 1024);
    else
        LogFmtA("%s is type %s", root, DriveTypeName(type));
}

} // namespace

double vtr::FreeKilobytesInClusters(const wchar_t* root) {
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    if (!GetDiskFreeSpaceW(root, &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters))
        return -1;
    return static_cast<double>(freeClusters) * sectorsPerCluster * bytesPerSector /
           bytesPerKilobyte;
}

bool IsOnLocalHardDrive(const char* path) {
    if (path == nullptr)
        return false;
    const vtr::WidePath wide(path, vtr::CurrentCodePage());
    const wchar_t* end = std::wcspbrk(wide.Get(), L"\\/");
    vtr::PathBuilder<> root;
    return end != nullptr && CopyThrough(wide.Get(), end, root) &&
           GetDriveTypeW(root.Get()) == DRIVE_FIXED;
}

double GetKBFree(const char* path) {
    if (path == nullptr)
        return 0;
    const vtr::WidePath wide(path, vtr::CurrentCodePage());
    const wchar_t* colon = std::wcschr(wide.Get(), L':');
    const wchar_t* end = colon != nullptr ? std::wcschr(colon, L'\\') : nullptr;
    vtr::PathBuilder<> root;
    if (end != nullptr && !CopyThrough(wide.Get(), end, root))
        return 0;
    const double free = FreeKilobytes(end != nullptr ? root.Get() : wide.Get());
    if (free >= 0)
        return free;
    return NamesShare(wide.Get()) ? unknownShare : 0;
}

void LogCurrentHardDriveSpace() {
    if (!LoggingNow())
        return;
    // Four characters for each letter, and the end of the list.
    char roots[26 * 4 + 1];
    const DWORD length = GetLogicalDriveStringsA(sizeof roots, roots);
    if (length == 0 || length >= sizeof roots)
        return;
    const DWORD start = GetTickCount();
    for (const char* root = roots; *root != '\0' && GetTickCount() - start < longestWalk;
         root += std::strlen(root) + 1)
        LogDrive(root);
}
