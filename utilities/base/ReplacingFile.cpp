#include "utilities/base/ReplacingFile.h"

#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/ScopedLock.h"
#include "vtrfutls/Log.h"

#include <atomic>
#include <cstring>
#include <cwchar>
#include <fcntl.h>
#include <io.h>

namespace vtr {

namespace {

constexpr std::size_t streamBuffer = 64 * 1024;
constexpr DWORD copyBuffer = 16 * 1024;
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD keptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                 FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED |
                                 FILE_ATTRIBUTE_ENCRYPTED;
/// Files with the name of a second file are left by processes that were ended, so there are few.
constexpr unsigned mostNames = 1000;
/// "vtr", two numbers of eight digits, ".tmp" and the terminator.
constexpr std::size_t nameUnits = 24;

/// Files are opened for a look, and replaced, by one thread at a time: two at one file would refuse
/// each other.
class ReplacingLock {
public:
    void Lock() { AcquireSRWLockExclusive(&lock); }
    void Unlock() { ReleaseSRWLockExclusive(&lock); }

private:
    SRWLOCK lock = SRWLOCK_INIT;
};

ReplacingLock replacing;
std::atomic<unsigned> lastSecondFile{0};

HANDLE OpenFile(const wchar_t* path, DWORD access, DWORD disposition) {
    return CreateFileW(path, access, shareAll, /*lpSecurityAttributes=*/nullptr, disposition,
                       /*dwFlagsAndAttributes=*/0, /*hTemplateFile=*/nullptr);
}

/// Windows takes a path of 260 characters or more in this form only. Null when memory runs out and
/// for a path that names nothing.
OwnedChars<wchar_t> FullPath(const wchar_t* path) {
    static constexpr wchar_t drivePrefix[] = L"\\\\?\\";
    static constexpr wchar_t sharePrefix[] = L"\\\\?\\UNC";
    static constexpr std::size_t room = std::size(sharePrefix);
    const DWORD units = GetFullPathNameW(path, 0, /*lpBuffer=*/nullptr, /*lpFilePart=*/nullptr);
    OwnedChars<wchar_t> full = units > 0 ? AllocateChars<wchar_t>(room + units) : nullptr;
    if (full == nullptr)
        return nullptr;
    wchar_t* const name = full.get() + room;
    const DWORD length = GetFullPathNameW(path, units, name, /*lpFilePart=*/nullptr);
    if (length == 0 || length >= units)
        return nullptr;
    const wchar_t* from = name;
    std::size_t prefix = 0;
    if (name[0] != L'\\' || name[1] != L'\\') {
        prefix = std::size(drivePrefix) - 1;
        std::wmemcpy(full.get(), drivePrefix, prefix);
    } else if (name[2] != L'?' && name[2] != L'.') {
        prefix = std::size(sharePrefix) - 1;
        std::wmemcpy(full.get(), sharePrefix, prefix);
        ++from;
    }
    std::wmemmove(full.get() + prefix, from, std::wcslen(from) + 1);
    return full;
}

/// Where the file lies that was opened by way of any links. Null when Windows cannot tell.
OwnedChars<wchar_t> FinalPath(HANDLE file) {
    const DWORD units = GetFinalPathNameByHandleW(file, /*lpszFilePath=*/nullptr, 0,
                                                  FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    OwnedChars<wchar_t> path = units > 0 ? AllocateChars<wchar_t>(units + std::size_t{1}) : nullptr;
    const DWORD length = path == nullptr
                             ? 0
                             : GetFinalPathNameByHandleW(file, path.get(), units + 1,
                                                         FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
    return length > 0 && length <= units ? std::move(path) : nullptr;
}

/// The characters of the path up to its last backslash and with it.
std::size_t FolderLength(const wchar_t* path) {
    const wchar_t* backslash = std::wcsrchr(path, L'\\');
    return backslash != nullptr ? static_cast<std::size_t>(backslash - path) + 1 : 0;
}

/// True also where a file system knows no permissions. They are compared as they are stored.
bool SamePermissions(HANDLE a, HANDLE b) {
    alignas(void*) unsigned char ofA[2048];
    alignas(void*) unsigned char ofB[sizeof ofA];
    DWORD sizeOfA = 0;
    DWORD sizeOfB = 0;
    if (!GetKernelObjectSecurity(a, DACL_SECURITY_INFORMATION, ofA, sizeof ofA, &sizeOfA))
        return GetLastError() != ERROR_INSUFFICIENT_BUFFER;
    return GetKernelObjectSecurity(b, DACL_SECURITY_INFORMATION, ofB, sizeof ofB, &sizeOfB) &&
           sizeOfA == sizeOfB && std::memcmp(ofA, ofB, sizeOfA) == 0;
}

/// False where somebody has it open without sharing that.
bool MayBeDeleted(const wchar_t* path) {
    return static_cast<bool>(FileHandle(OpenFile(path, DELETE, OPEN_EXISTING)));
}

bool SetLength(HANDLE file, LARGE_INTEGER length) {
    return SetFilePointerEx(file, length, /*lpNewFilePointer=*/nullptr, FILE_BEGIN) &&
           SetEndOfFile(file);
}

bool CopyBytes(HANDLE from, HANDLE to) {
    unsigned char bytes[copyBuffer];
    for (;;) {
        DWORD got = 0;
        DWORD put = 0;
        if (!ReadFile(from, bytes, sizeof bytes, &got, /*lpOverlapped=*/nullptr))
            return false;
        if (got == 0)
            return true;
        if (!WriteFile(to, bytes, got, &put, /*lpOverlapped=*/nullptr) || put != got)
            return false;
    }
}

/// Against another process that copies over the same file: a byte that no file has is locked until
/// the file is closed. True where files cannot be locked.
bool LockForCopying(HANDLE file) {
    OVERLAPPED beyond = {};
    beyond.OffsetHigh = 0x7FFFFFFF;
    return LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, /*dwReserved=*/0,
                      /*nNumberOfBytesToLockLow=*/1, /*nNumberOfBytesToLockHigh=*/0, &beyond) ||
           GetLastError() != ERROR_LOCK_VIOLATION;
}

/// Without its folder, whose name may have any characters, when memory runs out or no code page has
/// them all.
void LogRemaining(const wchar_t* file) {
    static constexpr char text[] = "ReplacingFile::Commit: the old text is lost, the new one is in";
    const OwnedText path = NarrowPath(file);
    if (path != nullptr)
        LogFmtA("%s '%s'", text, path.get());
    else
        LogFmtA("%s '%ls'", text, file + FolderLength(file));
}

} // namespace

ReplacingFile::ReplacingFile(const char* path)
    : target(FullPath(WidePath(path, CurrentCodePage()).Get())) {}

ReplacingFile::~ReplacingFile() {
    stream.Reset();
    if (temporary != nullptr)
        DeleteFileW(temporary.get());
}

bool ReplacingFile::Open() {
    return target != nullptr && Prepare() &&
           std::setvbuf(stream.Get(), /*buffer=*/nullptr, _IOFBF, streamBuffer) == 0;
}

bool ReplacingFile::Prepare() {
    const ScopedLock<ReplacingLock> alone(replacing);
    FileHandle old(OpenFile(target.get(), GENERIC_WRITE, OPEN_EXISTING));
    if (!old && GetLastError() != ERROR_FILE_NOT_FOUND)
        return false;
    if (old && GetFileType(old.Get()) != FILE_TYPE_DISK)
        return WriteTo(std::move(old));
    exists = static_cast<bool>(old);
    if (exists && !Inspect(old.Get()))
        return false;
    // A link to a file that is missing: its target is made by writing through it.
    if (!exists)
        inPlace = GetFileAttributesW(target.get()) != INVALID_FILE_ATTRIBUTES;
    FileHandle second(MakeSecondFile(target.get(), FolderLength(target.get())));
    if (!second && (exists || inPlace)) {
        wchar_t folder[MAX_PATH + 1];
        const DWORD length = GetTempPathW(MAX_PATH + 1, folder);
        if (length > 0 && length <= MAX_PATH)
            second.Reset(MakeSecondFile(folder, length));
        inPlace = true;
    }
    if (second && exists && !inPlace)
        inPlace = !SamePermissions(old.Get(), second.Get());
    return second && WriteTo(std::move(second));
}

/// False for a file that is write-protected, which Wine lets some users open.
bool ReplacingFile::Inspect(HANDLE old) {
    BY_HANDLE_FILE_INFORMATION information;
    if (!GetFileInformationByHandle(old, &information) ||
        (information.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0)
        return false;
    attributes = information.dwFileAttributes & keptAttributes;
    OwnedChars<wchar_t> real = FinalPath(old);
    if (real != nullptr)
        target = std::move(real);
    else
        inPlace = true;
    return true;
}

HANDLE ReplacingFile::MakeSecondFile(const wchar_t* folder, std::size_t length) {
    OwnedChars<wchar_t> path = AllocateChars<wchar_t>(length + nameUnits);
    if (path == nullptr)
        return INVALID_HANDLE_VALUE;
    std::wmemcpy(path.get(), folder, length);
    HANDLE file = INVALID_HANDLE_VALUE;
    DWORD error = ERROR_FILE_EXISTS;
    for (unsigned i = 0; i < mostNames && error == ERROR_FILE_EXISTS; ++i) {
        std::swprintf(path.get() + length, nameUnits, L"vtr%08X%08X.tmp",
                      static_cast<unsigned>(GetCurrentProcessId()), ++lastSecondFile);
        file = CreateFileW(path.get(), GENERIC_WRITE, FILE_SHARE_READ,
                           /*lpSecurityAttributes=*/nullptr, CREATE_NEW, attributes,
                           /*hTemplateFile=*/nullptr);
        error = file == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS;
    }
    if (file != INVALID_HANDLE_VALUE)
        temporary = std::move(path);
    return file;
}

bool ReplacingFile::WriteTo(FileHandle file) {
    const int descriptor =
        _open_osfhandle(reinterpret_cast<std::intptr_t>(file.Get()), _O_WRONLY | _O_BINARY);
    if (descriptor < 0)
        return false;
    (void)file.Release();
    stream.Reset(_fdopen(descriptor, "wb"));
    if (!stream)
        _close(descriptor);
    return static_cast<bool>(stream);
}

bool ReplacingFile::Commit() {
    const bool written = stream && std::ferror(stream.Get()) == 0;
    const bool closed = stream.Close();
    if (!written || !closed)
        return false;
    if (temporary == nullptr)
        return true;
    const Outcome outcome = PutInPlace();
    if (outcome == Outcome::oldTextLost) {
        const OwnedChars<wchar_t> remaining = std::move(temporary);
        LogRemaining(remaining.get());
    }
    return outcome == Outcome::done;
}

/// `MoveFileExW` replaces in one step, but not a file that anybody has open; `ReplaceFileW` does
/// that where they share its deletion, in several steps.
ReplacingFile::Outcome ReplacingFile::PutInPlace() const {
    const ScopedLock<ReplacingLock> alone(replacing);
    if (inPlace)
        return CopyOver();
    if (!exists) {
        // Unlike a move, this does not replace what has got that name meanwhile, or what Wine does
        // not show: a link to a file that is missing. The second name is deleted at the end.
        if (CreateHardLinkW(target.get(), temporary.get(), /*lpSecurityAttributes=*/nullptr))
            return Outcome::done;
        if (GetLastError() == ERROR_ALREADY_EXISTS)
            return CopyOver();
    }
    if (MoveFileExW(temporary.get(), target.get(), MOVEFILE_REPLACE_EXISTING))
        return Outcome::done;
    // Otherwise Wine would leave an empty file.
    bool removed = false;
    if (MayBeDeleted(target.get())) {
        if (ReplaceFileW(target.get(), temporary.get(), /*lpBackupFileName=*/nullptr,
                         REPLACEFILE_IGNORE_MERGE_ERRORS, /*lpExclude=*/nullptr,
                         /*lpReserved=*/nullptr))
            return Outcome::done;
        removed = GetLastError() == ERROR_UNABLE_TO_MOVE_REPLACEMENT;
    }
    const Outcome copied = CopyOver();
    return removed && copied == Outcome::refused ? Outcome::oldTextLost : copied;
}

ReplacingFile::Outcome ReplacingFile::CopyOver() const {
    const FileHandle from(OpenFile(temporary.get(), GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING));
    LARGE_INTEGER newLength;
    LARGE_INTEGER oldLength;
    if (!from || !GetFileSizeEx(from.Get(), &newLength) || !FlushFileBuffers(from.Get()))
        return Outcome::refused;
    FileHandle to(OpenFile(target.get(), GENERIC_WRITE, OPEN_ALWAYS));
    // Room is made first: a full disc is noticed while the old text is whole.
    if (!to || !LockForCopying(to.Get()) || !GetFileSizeEx(to.Get(), &oldLength) ||
        (newLength.QuadPart > oldLength.QuadPart && !SetLength(to.Get(), newLength)))
        return Outcome::refused;
    const bool copied = SetFilePointerEx(to.Get(), {}, /*lpNewFilePointer=*/nullptr, FILE_BEGIN) &&
                        CopyBytes(from.Get(), to.Get()) && SetEndOfFile(to.Get()) &&
                        FlushFileBuffers(to.Get());
    return to.Close() && copied ? Outcome::done : Outcome::oldTextLost;
}

} // namespace vtr
