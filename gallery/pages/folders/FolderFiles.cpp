#include "gallery/pages/folders/FolderFiles.h"

#include "common/Handles.h"

#include <algorithm>

namespace gallery {

std::vector<FolderFile> FilesOfFolder(const std::wstring& folder) {
    std::vector<FolderFile> files;
    if (folder.empty())
        return files;
    WIN32_FIND_DATAW entry;
    const std::wstring all = folder + (folder.back() == L'\\' ? L"*" : L"\\*");
    const vtr::FindHandle search(FindFirstFileW(all.c_str(), &entry));
    for (bool more = static_cast<bool>(search); more;
         more = FindNextFileW(search.Get(), &entry) != FALSE) {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            files.push_back(
                {entry.cFileName,
                 static_cast<unsigned long long>(entry.nFileSizeHigh) << 32 | entry.nFileSizeLow});
    }
    std::sort(files.begin(), files.end(), [](const FolderFile& left, const FolderFile& right) {
        return lstrcmpiW(left.name.c_str(), right.name.c_str()) < 0;
    });
    return files;
}

} // namespace gallery
