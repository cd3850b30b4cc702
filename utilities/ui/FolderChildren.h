#ifndef VTRUTILS_UI_FOLDERCHILDREN_H
#define VTRUTILS_UI_FOLDERCHILDREN_H

#include "common/WidePath.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/base/PtrArray.h"
#include "utilities/ui/ShortcutReader.h"

/// What a folder tree shows, without the windows. Private to the library. One thread at a time.

namespace vtr {

class FolderListing;

/// Indices of the tree's icons, in the order of `TExplorerTreeProperties::icons`.
enum TreeImage {
    imageNone = -1,
    imageFixed = 0,
    imageCd = 1,
    imageRemovable = 3,
    imageFolder = 4,
    imageNetwork = 6,
    imageMyDocuments = 7,
    imageMyPictures = 8,
    imageDesktop = 9,
    imageFolderShortcut = 10,
    imageFixedShortcut = 12,
    imageCdShortcut = 13,
    imageRemovableShortcut = 15,
    imageNetworkShortcut = 16,
    imageMyDocumentsShortcut = 17,
    imageMyPicturesShortcut = 18,
    imageDesktopShortcut = 19,
    imagePlaceholder = 25
};

/// `imageNone` for a drive that is not shown with these flags.
int DriveImage(const char* root, DWORD flags);

/// A node before it is in the tree.
struct FolderChild {
    OwnedText path;
    OwnedText name;
    OwnedChars<wchar_t> shown; ///< the name; null counts as ""
    int image = 0;
    int selectedImage = 0;
    unsigned order = 0; ///< in which it was found
    bool isShortcut = false;
    bool isWanted = false;
    bool hasChildren = false;
    bool atRoot = false;
};

/// UTF-16 of a text in the language's code page, with whatever Windows puts in place of what that
/// does not have. Null when memory runs out.
OwnedChars<wchar_t> ShownText(const char* text);

/// Reads one folder. The path and the reader must stay while this lives.
class FolderChildren {
public:
    FolderChildren(const char* folderPath, CShortcutReader& shortcutReader);
    FolderChildren(const FolderChildren&) = delete;
    FolderChildren& operator=(const FolderChildren&) = delete;
    ~FolderChildren();

    /// Looks for folders first, because each shortcut takes as long as many of them.
    bool HasAny();

    /// Requires: has not been called.
    void List(DWORD treeFlags, const char* wanted);

    /// In the order in which they were found, or sorted.
    PtrArray<FolderChild> children;

    /// In the tree-view's order. When memory runs out they stay as they are.
    void Sort();

private:
    class Wanted;

    bool MakePattern();
    OwnedText PathOf(const FolderListing& entry);
    bool TargetOf(const FolderListing& entry, unsigned timeout, char (&target)[MAX_PATH]);
    bool DescribeFolder(const FolderListing& entry, FolderChild& child);
    bool DescribeTarget(const char* target, FolderChild& child);
    int ShortcutImage(const char* target);

    const char* folder;
    WidePath wide;
    CShortcutReader& reader;
    DWORD flags = 0;
    PathBuilder<> path; ///< of the folder, then of an entry
    std::size_t folderLength = 0;
    bool specialsKnown = false;
    char specials[3][MAX_PATH] = {}; ///< My Documents, My Pictures, the Desktop
};

} // namespace vtr

#endif
