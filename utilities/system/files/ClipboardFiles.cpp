#include "utilities/base/StoreCut.h"
#include "utilities/system/files/FileFunctions.h"

#include <shellapi.h>

namespace {

/// The clipboard's list of files, while this lives.
class ClipboardFiles {
public:
    ClipboardFiles() : open(OpenClipboard(/*hWndNewOwner=*/nullptr) != FALSE) {
        if (open)
            files = static_cast<HDROP>(GetClipboardData(CF_HDROP));
    }
    ClipboardFiles(const ClipboardFiles&) = delete;
    ClipboardFiles& operator=(const ClipboardFiles&) = delete;
    ~ClipboardFiles() {
        if (open)
            CloseClipboard();
    }

    unsigned Count() const {
        return files != nullptr ? DragQueryFileA(files, 0xFFFFFFFF, /*lpszFile=*/nullptr, 0) : 0;
    }

    /// Null when there are no more than `index` files.
    HDROP ListWith(unsigned index) const { return index < Count() ? files : nullptr; }

private:
    bool open;
    HDROP files = nullptr;
};

/// Long enough for every path, in which each character may have two bytes.
constexpr unsigned longestName = 2 * MAX_PATH;

/// The name is taken whole and then cut: not every Windows terminates one that it cuts.
template <class Char, class Query>
void StoreName(unsigned index, Char* out, unsigned size, Query query) {
    if (out == nullptr || size == 0)
        return;
    out[0] = 0;
    const ClipboardFiles clipboard;
    const HDROP list = clipboard.ListWith(index);
    Char name[longestName] = {};
    if (list == nullptr || query(list, index, name, longestName - 1) == 0)
        return;
    vtr::StoreCut(name, out, size);
}

} // namespace

unsigned NumFileNamesOnClipboard() {
    return ClipboardFiles().Count();
}

void GetFileNameFromClipboardA(unsigned index, char* out, unsigned size) {
    StoreName(index, out, size, &DragQueryFileA);
}

void GetFileNameFromClipboardW(unsigned index, wchar_t* out, unsigned size) {
    StoreName(index, out, size, &DragQueryFileW);
}
