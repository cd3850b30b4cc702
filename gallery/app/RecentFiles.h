#ifndef VTRUTILS_GALLERY_APP_RECENTFILES_H
#define VTRUTILS_GALLERY_APP_RECENTFILES_H

#include "utilities/containers/LastDirList.h"
#include "utilities/containers/MRUList.h"

#include <string>
#include <vector>
#include <windows.h>

namespace gallery {

/// The files that were opened and saved, newest first, kept in the registry; and the folders they
/// were in, as long as the program runs. One thread at a time.
class RecentFiles {
public:
    struct File {
        std::wstring path;
        unsigned long length; ///< in bytes, when it was used
        FILETIME used;
        bool exists;
    };

    struct Folder {
        std::wstring path; ///< with a trailing backslash
        FILETIME used;
        int uses; ///< of files in it
    };

    RecentFiles();

    /// Takes the list of a key below HKEY_CURRENT_USER, where it is kept from then on.
    void Load(const std::string& registryKey);

    /// The file was opened or saved. Does nothing if the language's code page lacks a character of
    /// its name.
    void Use(const std::wstring& path);
    void Remove(int file);
    void Clear();

    std::vector<File> Files() const;
    std::vector<Folder> Folders() const;

private:
    int Count() const;
    int DropMissing(int kept);
    void UseFolder(std::string folder, long long seconds);

    // Their questions are not const.
    mutable CMRUList files;
    mutable CLastDirList folders;
    /// In no order: the library's list tells about one folder at a time.
    mutable std::vector<std::string> folderPaths;
};

} // namespace gallery

#endif
