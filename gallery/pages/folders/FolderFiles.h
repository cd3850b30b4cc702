#ifndef VTRUTILS_GALLERY_PAGES_FOLDERS_FOLDERFILES_H
#define VTRUTILS_GALLERY_PAGES_FOLDERS_FOLDERFILES_H

#include <string>
#include <vector>

namespace gallery {

struct FolderFile {
    std::wstring name;
    unsigned long long bytes;
};

/// The files of a folder, without the folders in it, by name. Empty for "" and for a folder that
/// cannot be read. One thread at a time.
std::vector<FolderFile> FilesOfFolder(const std::wstring& folder);

} // namespace gallery

#endif
