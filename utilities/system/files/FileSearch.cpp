#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"
#include "utilities/system/files/PathText.h"

namespace {

/// Keeps one path for the whole search; each level of folders writes behind the folder's own part.
class FileSearch {
public:
    explicit FileSearch(const char* wanted) : pattern(wanted) {}

    bool Begin(const char* folder) {
        std::size_t length = 0;
        if (!Append(folder, length))
            return false;
        return (*folder == '\0' || vtr::EndsWithBackslash(folder) || Append("\\", length)) &&
               Search(length);
    }

    /// The file, once it is found.
    const char* Path() const { return path; }

private:
    /// Puts `text` at `length` and moves that behind it. False when it does not fit.
    bool Append(const char* text, std::size_t& length) {
        const std::size_t added = std::strlen(text);
        if (added >= sizeof path - length)
            return false;
        std::memcpy(path + length, text, added + 1);
        length += added;
        return true;
    }

    /// The folder's part of the path ends at `length`, with a backslash.
    bool Search(std::size_t length) { return FindHere(length) || FindBelow(length); }

    bool FindHere(std::size_t length) {
        std::size_t end = length;
        if (!Append(pattern, end))
            return false;
        for (vtr::FolderListing listing(path); listing; listing.Next()) {
            end = length;
            if (!listing.IsFolder() && Append(listing.Name(), end))
                return true;
        }
        return false;
    }

    // Each level adds two characters or more, so a path that fits ends the descent.
    bool FindBelow(std::size_t length) {
        std::size_t end = length;
        if (!Append("*", end))
            return false;
        for (vtr::FolderListing listing(path); listing; listing.Next()) {
            end = length;
            if (MayHoldFiles(listing) && Append(listing.Name(), end) && Append("\\", end) &&
                Search(end))
                return true;
        }
        return false;
    }

    static bool MayHoldFiles(const vtr::FolderListing& listing) {
        return listing.IsFolder() && !listing.Has(FILE_ATTRIBUTE_REPARSE_POINT) &&
               std::strcmp(listing.Name(), ".") != 0 && std::strcmp(listing.Name(), "..") != 0;
    }

    const char* pattern;
    char path[MAX_PATH] = "";
};

} // namespace

int FindFilesRecursively(const char* folder, const char* pattern, char* out) {
    if (out == nullptr)
        return 0;
    out[0] = '\0';
    if (folder == nullptr || pattern == nullptr)
        return 0;
    FileSearch search(pattern);
    if (!search.Begin(folder))
        return 0;
    std::strcpy(out, search.Path());
    return 1;
}
