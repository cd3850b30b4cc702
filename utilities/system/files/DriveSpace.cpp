#include "utilities/system/files/DriveSpace.h"

#include "common/DynamicFunction.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/PathText.h"
#include "vtrfutls/Log.h"

#include <cstring>

namespace {

constexpr double bytesPerKilobyte = 1024;
constexpr double unknownShare = 2'048'000;
constexpr DWORD longestWalk = 20'000;

vtr::DynamicFunction<decltype(GetDiskFreeSpaceExA)> getDiskFreeSpaceEx("KERNEL32.DLL",
                                                                       "GetDiskFreeSpaceExA");

/// The start of `path` that ends at `end`, with it. False when it does not fit.
bool CopyThrough(const char* path, const char* end, char (&copy)[MAX_PATH]) {
    const std::size_t length = static_cast<std::size_t>(end - path) + 1;
    if (length >= sizeof copy)
        return false;
    std::memcpy(copy, path, length);
    copy[length] = '\0';
    return true;
}

/// Below 0 when the drive cannot be asked.
double FreeKilobytes(const char* root) {
    ULARGE_INTEGER available;
    if (getDiskFreeSpaceEx.Get() == nullptr ||
        !getDiskFreeSpaceEx.Get()(root, &available, /*lpTotalNumberOfBytes=*/nullptr,
                                  /*lpTotalNumberOfFreeBytes=*/nullptr))
        return vtr::FreeKilobytesInClusters(root);
    return static_cast<double>(available.QuadPart) / bytesPerKilobyte;
}

/// "\\server\...", without a drive.
bool NamesShare(const char* path) {
    return path[0] == '\\' && path[1] == '\\' && std::strchr(path, ':') == nullptr &&
           vtr::FindBackslash(path + 2) != nullptr;
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

void LogDrive(const char* root) {
    const UINT type = GetDriveTypeA(root);
    if (type == DRIVE_FIXED)
        LogFmtA("%s has %0.2f MB free.", root, GetKBFree(root) / 1024);
    else
        LogFmtA("%s is type %s", root, DriveTypeName(type));
}

} // namespace

double vtr::FreeKilobytesInClusters(const char* root) {
    DWORD sectorsPerCluster = 0;
    DWORD bytesPerSector = 0;
    DWORD freeClusters = 0;
    DWORD clusters = 0;
    if (!GetDiskFreeSpaceA(root, &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters))
        return -1;
    return static_cast<double>(freeClusters) * sectorsPerCluster * bytesPerSector /
           bytesPerKilobyte;
}

bool IsOnLocalHardDrive(const char* path) {
    if (path == nullptr)
        return false;
    const vtr::CharacterSteps steps;
    const char* end = path;
    while (*end != '\0' && *end != '\\' && *end != '/')
        end += steps.Length(end);
    char root[MAX_PATH];
    return *end != '\0' && CopyThrough(path, end, root) && GetDriveTypeA(root) == DRIVE_FIXED;
}

double GetKBFree(const char* path) {
    if (path == nullptr)
        return 0;
    // A colon is never the second byte of a character.
    const char* colon = std::strchr(path, ':');
    const char* end = colon != nullptr ? vtr::FindBackslash(colon) : nullptr;
    char root[MAX_PATH];
    if (end != nullptr && !CopyThrough(path, end, root))
        return 0;
    const double free = FreeKilobytes(end != nullptr ? root : path);
    if (free >= 0)
        return free;
    return NamesShare(path) ? unknownShare : 0;
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
