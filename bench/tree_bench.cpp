// The tree of folders beside the calls that they cannot do without.

#include "bench/support/Comparison.h"
#include "bench/support/FreshHandles.h"
#include "bench/support/MeasuringFolder.h"
#include "common/Handles.h"
#include "utilities/ui/ExplorerTree.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

/// A folder of sub-folders, every tenth of which has one itself.
class Folders {
public:
    explicit Folders(int count) : name("all " + std::to_string(count)) {
        std::filesystem::create_directory(Path());
        for (int i = 0; i < count; ++i) {
            const std::string sub = Path() + "\\folder " + std::to_string(i);
            std::filesystem::create_directory(sub);
            if (i % 10 == 0)
                std::filesystem::create_directory(sub + "\\below");
        }
    }

    std::string Path() const { return folder.File(name); }

private:
    std::string name;
    bench::MeasuringFolder folder;
};

TExplorerTreeProperties Properties(HWND parent, const std::string& start) {
    TExplorerTreeProperties properties{};
    properties.parent = parent;
    properties.instance = GetModuleHandleW(nullptr);
    properties.place = {0, 0, 249, 249};
    start.copy(properties.startPath, sizeof properties.startPath - 1);
    return properties;
}

HTREEITEM Related(HWND view, UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(view, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

HTREEITEM Insert(HWND view, HTREEITEM parent, wchar_t* name) {
    TVINSERTSTRUCTW item{};
    item.hParent = parent;
    item.hInsertAfter = TVI_LAST;
    item.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    item.item.pszText = name;
    return reinterpret_cast<HTREEITEM>(
        SendMessageW(view, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
}

bool IsFolder(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && entry.cFileName[0] != L'.';
}

bool HasFolder(const std::wstring& path) {
    WIN32_FIND_DATAW entry;
    const vtr::FindHandle find(FindFirstFileW((path + L"\\*").c_str(), &entry));
    bool found = false;
    while (find && !(found = IsFolder(entry)) && FindNextFileW(find.Get(), &entry) != FALSE) {
    }
    return found;
}

/// Reads the names, asks each, and inserts names that were ready before.
int ListAskInsert(const std::wstring& path, HWND view, HTREEITEM parent,
                  std::vector<std::wstring>& ready) {
    while (const HTREEITEM child = Related(view, TVGN_CHILD, parent))
        SendMessageW(view, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(child));
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW entry;
    {
        const vtr::FindHandle find(FindFirstFileW((path + L"\\*").c_str(), &entry));
        do {
            if (IsFolder(entry))
                names.emplace_back(entry.cFileName);
        } while (FindNextFileW(find.Get(), &entry) != FALSE);
    }
    int withFolders = 0;
    for (const std::wstring& name : names)
        withFolders += HasFolder(path + L"\\" + name) ? 1 : 0;
    SendMessageW(view, WM_SETREDRAW, FALSE, 0);
    for (std::wstring& name : ready)
        Insert(view, parent, name.data());
    SendMessageW(view, WM_SETREDRAW, TRUE, 0);
    return withFolders;
}

void MeasureExpanding(const char* size, int count) {
    static constexpr char work[] = "folder tree, expand a folder of folders";
    static constexpr char calls[] = "listing, asking each and inserting alone";
    const auto folders = std::make_shared<Folders>(count);
    bench::Measure(work, size, bench::ours, [folders, count](benchmark::State& state) {
        const bench::Parent parent;
        CExplorerTree tree;
        tree.Create(Properties(parent.Get(), folders->Path()));
        const HWND view = GetWindow(tree.hWnd(), GW_CHILD);
        const HTREEITEM item = Related(view, TVGN_CARET, nullptr);
        for (auto _ : state)
            tree.ExpandNode(item, nullptr, nullptr);
        int children = 0;
        for (HTREEITEM child = Related(view, TVGN_CHILD, item); child != nullptr;
             child = Related(view, TVGN_NEXT, child))
            ++children;
        if (children != count)
            state.SkipWithError("another number of children");
    });
    bench::Measure(work, size, calls, [folders, count](benchmark::State& state) {
        const bench::Parent parent;
        const std::string narrow = folders->Path();
        const std::wstring path(narrow.begin(), narrow.end());
        const HWND view = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 250,
                                          250, parent.Get(), nullptr, nullptr, nullptr);
        std::vector<std::wstring> ready;
        for (int i = 0; i < count; ++i)
            ready.push_back(L"folder " + std::to_wstring(i));
        const HTREEITEM top = Insert(view, TVI_ROOT, ready[0].data());
        int withFolders = 0;
        for (auto _ : state)
            withFolders = ListAskInsert(path, view, top, ready);
        if (withFolders != count / 10)
            state.SkipWithError("another number of folders below");
    });
    bench::ToReach(work, calls, 1 / 1.3);
    bench::GrowthToReach(work, 15);
}

void MeasureCreation() {
    static constexpr char work[] = "folder tree, create and destroy";
    bench::Measure(work, "1", bench::ours, [](benchmark::State& state) {
        const bench::Parent parent;
        const auto live = [&parent] {
            CExplorerTree tree;
            tree.Create(Properties(parent.Get(), ""));
        };
        bench::ExpectNothingLost(state, work, live);
        for (auto _ : state)
            live();
    });
}

} // namespace

int main(int argc, char** argv) {
    MeasureExpanding("1,000", 1000);
    MeasureExpanding("10,000", 10000);
    MeasureCreation();
    return bench::Run(argc, argv);
}
