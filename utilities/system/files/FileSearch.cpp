#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"

#include <cstring>

namespace {

/// Keeps one path for the whole search; each level of folders writes after the folder's own part.
class FileSearch {
public:
    FileSearch(const vtr::WidePath& startFolder, const wchar_t* wanted)
        : folder(startFolder), pattern(wanted) {}

    /// The file's path, or null.
    vtr::OwnedText Run() {
        path.CutTo(0);
        if (!path.Append(folder.Get()) ||
            (path.Length() > 0 && !path.EndsWithBackslash() && !path.Append(L"\\")))
            return nullptr;
        Search(path.Length());
        return std::move(found);
    }

private:
    /// The folder's part of the path ends at `length`, with a backslash.
    bool Search(std::size_t length) { return FindHere(length) || FindBelow(length); }

    /// Puts `text` at `length`.
    bool Put(std::size_t length, const wchar_t* text) {
        path.CutTo(length);
        return path.Append(text);
    }

    bool FindHere(std::size_t length) {
        if (!Put(length, pattern))
            return false;
        for (vtr::FolderListing listing(path.Get()); listing; listing.Next()) {
            if (!listing.IsFolder() && Put(length, listing.Name()) && Answer())
                return true;
        }
        return false;
    }

    // Each level adds two characters or more, so a path that fits ends the descent.
    bool FindBelow(std::size_t length) {
        if (!Put(length, L"*"))
            return false;
        for (vtr::FolderListing listing(path.Get()); listing; listing.Next()) {
            if (MayHoldFiles(listing) && Put(length, listing.Name()) && path.Append(L"\\") &&
                Search(path.Length()))
                return true;
        }
        return false;
    }

    /// A path that hosts cannot pass back is passed over.
    bool Answer() {
        found = vtr::NarrowPath(path.Get(), folder.Page());
        if (found != nullptr && std::strlen(found.get()) >= MAX_PATH)
            found.reset();
        return found != nullptr;
    }

    static bool MayHoldFiles(const vtr::FolderListing& listing) {
        return listing.IsFolder() && !listing.Has(FILE_ATTRIBUTE_REPARSE_POINT) &&
               std::wcscmp(listing.Name(), L".") != 0 && std::wcscmp(listing.Name(), L"..") != 0;
    }

    const vtr::WidePath& folder;
    const wchar_t* pattern;
    vtr::PathBuilder<> path;
    vtr::OwnedText found;
};

} // namespace

int FindFilesRecursively(const char* folder, const char* pattern, char* out) {
    if (out == nullptr)
        return 0;
    vtr::OwnedText found;
    if (folder != nullptr && pattern != nullptr) {
        const vtr::WidePath start(folder, vtr::CurrentCodePage());
        // Like a path, the pattern may be in either page.
        vtr::WideText inLanguage, inAnsi;
        if (inLanguage.Convert(pattern, vtr::CurrentCodePage(), /*strict=*/true))
            found = FileSearch(start, inLanguage.Get()).Run();
        if (found == nullptr && inAnsi.Convert(pattern, CP_ACP, /*strict=*/true) &&
            std::wcscmp(inAnsi.Get(), inLanguage.Get()) != 0)
            found = FileSearch(start, inAnsi.Get()).Run();
    }
    std::strcpy(out, found != nullptr ? found.get() : "");
    return found != nullptr ? 1 : 0;
}
