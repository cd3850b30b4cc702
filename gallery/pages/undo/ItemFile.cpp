#include "gallery/pages/undo/ItemFile.h"

#include "common/Handles.h"
#include "gallery/text/Text.h"

#include <climits>
#include <string_view>
#include <utility>

namespace gallery {

namespace {

constexpr std::string_view mark = "\xEF\xBB\xBF";

bool ReadAll(const std::wstring& path, std::string& bytes) {
    const vtr::FileHandle file(CreateFileW(
        path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN,
        /*hTemplateFile=*/nullptr));
    LARGE_INTEGER length{};
    if (!file || !GetFileSizeEx(file.Get(), &length) || length.QuadPart >= INT_MAX)
        return false;
    bytes.resize(static_cast<std::size_t>(length.QuadPart));
    DWORD got = 0;
    return ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &got,
                    /*lpOverlapped=*/nullptr) &&
           got == bytes.size();
}

bool WriteAll(const std::wstring& path, const std::string& bytes) {
    const vtr::FileHandle file(CreateFileW(path.c_str(), GENERIC_WRITE, /*dwShareMode=*/0,
                                           /*lpSecurityAttributes=*/nullptr, CREATE_ALWAYS,
                                           FILE_ATTRIBUTE_NORMAL, /*hTemplateFile=*/nullptr));
    DWORD written = 0;
    return file &&
           WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     /*lpOverlapped=*/nullptr) &&
           written == bytes.size() && FlushFileBuffers(file.Get());
}

} // namespace

bool LoadItems(const std::wstring& path, std::vector<std::wstring>& items) {
    std::string bytes;
    if (!ReadAll(path, bytes))
        return false;
    if (bytes.compare(0, mark.size(), mark) == 0)
        bytes.erase(0, mark.size());
    std::vector<std::wstring> lines;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = bytes.find_first_of("\r\n", start);
        const std::string line = bytes.substr(start, end - start);
        std::string again;
        const std::wstring wide = Widen(line.c_str(), CP_UTF8);
        // What is no UTF-8, or has a zero byte, would not be saved as it was.
        if (!Narrow(wide, again, CP_UTF8) || again != line)
            return false;
        if (!line.empty())
            lines.push_back(wide);
        start = end == std::string::npos ? bytes.size() : end + 1;
    }
    items = std::move(lines);
    return true;
}

bool SaveItems(const std::wstring& path, const std::vector<std::wstring>& items) {
    std::string bytes(mark);
    for (const std::wstring& item : items) {
        std::string line;
        if (!Narrow(item, line, CP_UTF8))
            return false;
        bytes += line + "\r\n";
    }
    const std::wstring fresh = path + L".new";
    if (WriteAll(fresh, bytes) &&
        MoveFileExW(fresh.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING))
        return true;
    DeleteFileW(fresh.c_str());
    return false;
}

} // namespace gallery
