#include "utilities/base/NarrowPath.h"
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
        return files != nullptr ? DragQueryFileW(files, 0xFFFFFFFF, /*lpszFile=*/nullptr, 0) : 0;
    }

    /// Null when there are no more than `index` files.
    HDROP ListWith(unsigned index) const { return index < Count() ? files : nullptr; }

private:
    bool open;
    HDROP files = nullptr;
};

/// The name is taken whole and then cut: not every Windows terminates one that it cuts. "" when
/// there is none and when memory runs out.
class FileName {
public:
    explicit FileName(unsigned index) {
        const ClipboardFiles clipboard;
        const HDROP list = clipboard.ListWith(index);
        const UINT length =
            list != nullptr ? DragQueryFileW(list, index, /*lpszFile=*/nullptr, 0) : 0;
        if (length > 0)
            name = vtr::AllocateChars<wchar_t>(std::size_t{length} + 1);
        if (name != nullptr && DragQueryFileW(list, index, name.get(), length + 1) == 0)
            name.reset();
    }

    const wchar_t* Get() const { return name != nullptr ? name.get() : L""; }

private:
    vtr::OwnedChars<wchar_t> name;
};

} // namespace

unsigned NumFileNamesOnClipboard() {
    return ClipboardFiles().Count();
}

void GetFileNameFromClipboardA(unsigned index, char* out, unsigned size) {
    if (out == nullptr || size == 0)
        return;
    const vtr::OwnedText name = vtr::NarrowPath(FileName(index).Get());
    vtr::StoreCut(name != nullptr ? name.get() : "", out, size);
}

void GetFileNameFromClipboardW(unsigned index, wchar_t* out, unsigned size) {
    if (out != nullptr && size > 0)
        vtr::StoreCut(FileName(index).Get(), out, size);
}
