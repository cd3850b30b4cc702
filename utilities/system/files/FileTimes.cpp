#include "utilities/system/files/FileTimes.h"

#include "common/Handles.h"
#include "common/WidePath.h"
#include "utilities/base/CodePage.h"
#include "utilities/system/files/FileFunctions.h"
#include "vtrfutls/FileNames.h"

namespace {

constexpr int unknownOrder = -100;

} // namespace

bool vtr::ReadFileTimes(const wchar_t* path, FILETIME& lastAccess, FILETIME& lastWrite) {
    const FileHandle file(CreateFileW(path, GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, /*hTemplateFile=*/nullptr));
    return file && GetFileTime(file.Get(), /*lpCreationTime=*/nullptr, &lastAccess, &lastWrite);
}

int CompareFileTimeStampsA(const char* file1, const char* file2) {
    const vtr::WidePath first(file1, vtr::CurrentCodePage());
    const vtr::WidePath second(file2, vtr::CurrentCodePage());
    return CompareFileTimeStampsW(first.Get(), second.Get());
}

int CompareFileTimeStampsW(const wchar_t* file1, const wchar_t* file2) {
    FILETIME first;
    FILETIME second;
    if (!GetFileLastModificationDateW(file1, &first) ||
        !GetFileLastModificationDateW(file2, &second))
        return unknownOrder;
    return CompareFileTime(&first, &second);
}

bool GetFileLastModificationDateA(const char* file, FILETIME* lastWrite) {
    const vtr::WidePath wide(file, vtr::CurrentCodePage());
    return GetFileLastModificationDateW(wide.Get(), lastWrite);
}

bool GetFileLastModificationDateW(const wchar_t* file, FILETIME* lastWrite) {
    FILETIME lastAccess;
    return file != nullptr && lastWrite != nullptr &&
           vtr::ReadFileTimes(file, lastAccess, *lastWrite);
}

bool GetFileLastModificationTime(const char* file, FILETIME* lastWrite) {
    return DoesFileExist(file) && GetFileLastModificationDateA(file, lastWrite);
}
