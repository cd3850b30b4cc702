#include "utilities/ui/FolderChildren.h"

#include "utilities/base/MergeSort.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/PathText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"
#include "utilities/ui/ExplorerTree.h"

#include <cwchar>
#include <initializer_list>
#include <memory>
#include <new>
#include <shlwapi.h>

namespace vtr {

namespace {

using Flags = TExplorerTreeProperties;

/// For `HasAny`; reading a folder uses that of the reader.
constexpr unsigned quickTimeout = 50;

bool IsFolder(const FolderListing& entry) {
    return entry.IsFolder() && std::wcscmp(entry.Name(), L".") != 0 &&
           std::wcscmp(entry.Name(), L"..") != 0;
}

bool IsShortcut(const FolderListing& entry) {
    return !entry.IsFolder() && _wcsicmp(PathFindExtensionW(entry.Name()), L".lnk") == 0;
}

bool IsDriveRoot(const char* path) {
    return path[0] != '\0' && path[1] != '\0' && path[2] != '\0' && IsRootFolder(path);
}

bool IsAscii(const wchar_t* text) {
    while (*text != L'\0' && *text < 0x80)
        ++text;
    return *text == L'\0';
}

OwnedChars<wchar_t> Shown(const char* text, unsigned codePage) {
    WideText wide;
    wide.Convert(text, codePage, /*strict=*/false);
    return CopyText(wide.Get());
}

/// The name as hosts get it and as it is shown; the same letters in both.
bool NameChild(const wchar_t* name, FolderChild& child) {
    child.name = IsAscii(name) ? NearestText(name) : ExactText(name, CurrentCodePage());
    if (child.name == nullptr)
        child.name = ExactText(name, CP_ACP);
    if (child.name != nullptr) {
        child.shown = CopyText(name);
    } else {
        child.name = NearestText(name, CurrentCodePage());
        child.shown = child.name != nullptr ? Shown(child.name.get(), CurrentCodePage()) : nullptr;
    }
    return child.name != nullptr && child.shown != nullptr;
}

bool StartsWith(const OwnedText& path, const char* folder) {
    return path != nullptr && std::strncmp(path.get(), folder, std::strlen(folder)) == 0;
}

int ShortcutToDrive(int image) {
    switch (image) {
    case imageCd:
        return imageCdShortcut;
    case imageRemovable:
        return imageRemovableShortcut;
    case imageNetwork:
        return imageNetworkShortcut;
    default:
        return imageFixedShortcut;
    }
}

} // namespace

int DriveImage(const char* root, DWORD flags) {
    switch (GetDriveTypeA(root)) {
    case DRIVE_NO_ROOT_DIR:
    case DRIVE_RAMDISK:
        return imageNone;
    case DRIVE_CDROM:
        return (flags & Flags::cdDrives) != 0 ? imageCd : imageNone;
    case DRIVE_REMOVABLE:
        return (flags & Flags::removableDrives) != 0 ? imageRemovable : imageNone;
    case DRIVE_REMOTE:
        return (flags & Flags::networkDrives) != 0 ? imageNetwork : imageNone;
    default:
        return imageFixed;
    }
}

OwnedChars<wchar_t> ShownText(const char* text) {
    return Shown(text, CurrentCodePage());
}

/// The name that is looked for. Like a path, it may be in the language's page or in the ANSI page,
/// and a short name.
class FolderChildren::Wanted {
public:
    explicit Wanted(const char* name) {
        if (name == nullptr)
            return;
        inLanguage.Convert(name, CurrentCodePage(), /*strict=*/true);
        inAnsi.Convert(name, CP_ACP, /*strict=*/true);
    }

    bool Is(const wchar_t* name) const { return Same(inLanguage, name) || Same(inAnsi, name); }

private:
    static bool Same(const WideText& wanted, const wchar_t* name) {
        return *wanted.Get() != L'\0' &&
               CompareStringOrdinal(wanted.Get(), -1, name, -1, /*bIgnoreCase=*/TRUE) == CSTR_EQUAL;
    }

    WideText inLanguage;
    WideText inAnsi;
};

FolderChildren::FolderChildren(const char* folderPath, CShortcutReader& shortcutReader)
    : folder(folderPath), wide(folderPath, CurrentCodePage()), reader(shortcutReader) {}

FolderChildren::~FolderChildren() {
    children.Clear([](FolderChild* child) { delete child; });
}

/// False when the folder's path leaves no room for names.
bool FolderChildren::MakePattern() {
    path.CutTo(0);
    if (*wide.Get() == L'\0' || !path.Append(wide.Get()) ||
        (!path.EndsWithBackslash() && !path.Append(L"\\")))
        return false;
    folderLength = path.Length();
    return path.Append(L"*");
}

/// A path below that of the folder, if there is one; null for what hosts cannot pass back.
OwnedText FolderChildren::PathOf(const FolderListing& entry) {
    OwnedText found;
    for (const wchar_t* name : {entry.Name(), entry.ShortName()}) {
        path.CutTo(folderLength);
        if (*name == L'\0' || !path.Append(name))
            continue;
        OwnedText narrow = NarrowPath(path.Get(), wide.Page());
        const bool isBelow = StartsWith(narrow, folder);
        if (found == nullptr || isBelow)
            found = std::move(narrow);
        if (isBelow)
            break;
    }
    if (found != nullptr && std::strlen(found.get()) >= MAX_PATH)
        found.reset();
    return found;
}

/// False for a shortcut to something else than a folder or drive.
bool FolderChildren::TargetOf(const FolderListing& entry, unsigned timeout,
                              char (&target)[MAX_PATH]) {
    const OwnedText shortcut = PathOf(entry);
    return shortcut != nullptr &&
           reader.GetShortcutTarget(shortcut.get(), target, MAX_PATH, timeout) &&
           (IsDriveRoot(target) || IsValidDirectory(target));
}

bool FolderChildren::HasAny() {
    if (!MakePattern())
        return false;
    bool hasShortcuts = false;
    for (FolderListing listing(path.Get()); listing; listing.Next()) {
        if (IsFolder(listing))
            return true;
        hasShortcuts = hasShortcuts || IsShortcut(listing);
    }
    if (!hasShortcuts || !MakePattern())
        return false;
    char target[MAX_PATH];
    for (FolderListing listing(path.Get()); listing; listing.Next()) {
        if (IsShortcut(listing) && TargetOf(listing, quickTimeout, target))
            return true;
    }
    return false;
}

bool FolderChildren::DescribeFolder(const FolderListing& entry, FolderChild& child) {
    child.image = imageFolder;
    if (!NameChild(entry.Name(), child))
        return false;
    child.path = PathOf(entry);
    if (child.path != nullptr)
        return true;
    // Shown all the same, though nothing can be found there.
    const std::size_t length = std::strlen(folder);
    const std::size_t nameLength = std::strlen(child.name.get());
    if (length + 1 + nameLength >= MAX_PATH)
        return false;
    child.path = AllocateChars<char>(length + 1 + nameLength + 1);
    if (child.path == nullptr)
        return false;
    std::strcpy(child.path.get(), folder);
    if (!EndsWithBackslash(folder))
        std::strcat(child.path.get(), "\\");
    std::strcat(child.path.get(), child.name.get());
    return true;
}

int FolderChildren::ShortcutImage(const char* target) {
    if (!specialsKnown) {
        specialsKnown = true;
        GetMyDocumentsPath(specials[0], MAX_PATH, /*create=*/false);
        GetMyPicturesPath(specials[1], MAX_PATH, /*create=*/false);
        GetDesktopPath(specials[2], MAX_PATH, /*create=*/false);
    }
    for (int i = 0; i < 3; ++i) {
        if (SamePath(target, specials[i]))
            return imageMyDocumentsShortcut + i;
    }
    return imageFolderShortcut;
}

/// False for what is not shown.
bool FolderChildren::DescribeTarget(const char* target, FolderChild& child) {
    child.isShortcut = true;
    child.path = CopyText(target);
    if (IsDriveRoot(target)) {
        const int image = DriveImage(target, flags);
        child.image = ShortcutToDrive(image);
        child.name = CopyText(target);
        child.shown = ShownText(target);
        return image != imageNone && child.path != nullptr && child.name != nullptr &&
               child.shown != nullptr;
    }
    child.image = ShortcutImage(target);
    return child.path != nullptr &&
           NameChild(PathFindFileNameW(WidePath(target, CurrentCodePage()).Get()), child);
}

void FolderChildren::List(DWORD treeFlags, const char* wantedName) {
    flags = treeFlags;
    if (!MakePattern())
        return;
    const Wanted wanted(wantedName);
    char target[MAX_PATH];
    for (FolderListing listing(path.Get()); listing; listing.Next()) {
        const bool isFolder = IsFolder(listing);
        if (!isFolder && !(IsShortcut(listing) && TargetOf(listing, /*timeout=*/0, target)))
            continue;
        std::unique_ptr<FolderChild> child(new (std::nothrow) FolderChild);
        if (child == nullptr ||
            !(isFolder ? DescribeFolder(listing, *child) : DescribeTarget(target, *child)))
            continue;
        child->isWanted =
            wanted.Is(child->shown.get()) ||
            (isFolder && (wanted.Is(listing.Name()) || wanted.Is(listing.ShortName())));
        child->order = children.Count();
        const bool opens = child->image == imageFolder || child->image == imageFolderShortcut;
        child->selectedImage =
            child->image + (opens && (flags & Flags::openFolderIcon) != 0 ? 1 : 0);
        if (children.Append(child.get()))
            static_cast<void>(child.release());
    }
}

void FolderChildren::Sort() {
    MergeSort(children.Data(), children.Count(), [](FolderChild* left, FolderChild* right) {
        const int order = lstrcmpiW(left->shown.get(), right->shown.get());
        return order < 0 || (order == 0 && left->order < right->order);
    });
}

} // namespace vtr
