#include "gallery/pages/dialogs/FileWork.h"

#include "common/Handles.h"
#include "common/Require.h"

namespace gallery {

void FileWork::Start(const std::wstring& newFolder) {
    folder = newFolder;
    files.clear();
    done = 0;
    bytes = 0;
    WIN32_FIND_DATAW entry;
    const vtr::FindHandle search(FindFirstFileW((folder + L"*").c_str(), &entry));
    for (bool more = static_cast<bool>(search); more;
         more = FindNextFileW(search.Get(), &entry) != FALSE) {
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            files.emplace_back(entry.cFileName);
    }
}

std::wstring FileWork::Next() const {
    return done < Total() ? files[static_cast<std::size_t>(done)] : std::wstring();
}

void FileWork::Step() {
    VTR_REQUIRE(done < Total());
    const vtr::FileHandle file(CreateFileW((folder + Next()).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                           /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING,
                                           FILE_FLAG_SEQUENTIAL_SCAN, /*hTemplateFile=*/nullptr));
    char block[65536];
    DWORD read = 0;
    while (file && ReadFile(file.Get(), block, sizeof block, &read, /*lpOverlapped=*/nullptr) &&
           read > 0)
        bytes += read;
    ++done;
}

} // namespace gallery
