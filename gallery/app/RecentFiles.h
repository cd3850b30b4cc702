#ifndef VTRUTILS_GALLERY_APP_RECENTFILES_H
#define VTRUTILS_GALLERY_APP_RECENTFILES_H

#include "utilities/containers/LastDirList.h"
#include "utilities/containers/MRUList.h"

#include <memory>
#include <string>
#include <vector>
#include <windows.h>

namespace gallery {

/// The files that were opened and saved, newest first, kept in the registry; and the folders they
/// were in, as long as the program runs. One thread at a time.
///
/// The library's list holds narrow paths, and takes them for those of the current language. There
/// is one list for each code page of the languages, used in that language only, so that no file is
/// lost, whichever language is chosen.
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

    /// Takes the lists of a key below HKEY_CURRENT_USER, where they are kept from then on.
    void Load(const std::string& registryKey);

    /// The file was opened or saved. Does nothing if no language's code page has all characters of
    /// its name.
    void Use(const std::wstring& path);
    void Remove(const std::wstring& path);
    void Clear();

    std::vector<File> Files() const;
    std::vector<Folder> Folders() const;

private:
    struct List {
        List(const std::string& newLanguage, unsigned newCodePage);
        std::string language;
        unsigned codePage;
        std::unique_ptr<CMRUList> files;
    };
    void UseFolder(const std::wstring& path);

    std::vector<List> lists; ///< that of the system's code page first
    // Its questions are not const.
    mutable CLastDirList folders;
    /// In no order: the library's list tells about one folder at a time. Both have them in UTF-8.
    mutable std::vector<std::string> folderPaths;
};

} // namespace gallery

#endif
