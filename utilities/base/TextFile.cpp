#include "utilities/base/TextFile.h"

#include "common/Handles.h"
#include "common/Require.h"
#include "common/WidePath.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/Utf16Text.h"

#include <climits>
#include <cstring>

namespace vtr {

FileReading FileBytes::TryRead(const char* path) {
    return TryRead(WidePath(path, CurrentCodePage()).Get());
}

FileReading FileBytes::TryRead(const wchar_t* path) {
    const FileHandle file(CreateFileW(path, GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      /*lpSecurityAttributes=*/nullptr, OPEN_EXISTING,
                                      FILE_FLAG_SEQUENTIAL_SCAN, /*hTemplateFile=*/nullptr));
    LARGE_INTEGER length;
    if (!file || !GetFileSizeEx(file.Get(), &length))
        return FileReading::cannotOpen;
    size = static_cast<unsigned>(length.QuadPart);
    OwnedBytes block;
    if (length.QuadPart < INT_MAX)
        block.reset(static_cast<unsigned char*>(std::malloc(std::size_t{size} + 2)));
    if (block == nullptr)
        return FileReading::noMemory;
    DWORD got = 0;
    if (!ReadFile(file.Get(), block.get(), size, &got, /*lpOverlapped=*/nullptr))
        return FileReading::cannotRead;
    block.get()[got] = 0;
    block.get()[got + 1] = 0;
    bytes = std::move(block);
    size = got;
    return FileReading::good;
}

SingleByteText::SingleByteText(const unsigned char* data, unsigned length)
    : text(reinterpret_cast<const char*>(data)), size(length) {
    VTR_REQUIRE(length <= INT_MAX);
    if (LooksLikeUtf16(data, length, /*requireTerminator=*/false)) {
        size = HasByteOrderMark(data) ? (length - 1) / 2 : length / 2;
        copy.reset(static_cast<char*>(std::malloc(std::size_t{size} + 1)));
        text = copy.get();
        if (text == nullptr)
            return;
        KeepLowBytes(reinterpret_cast<const wchar_t*>(data), length / 2, copy.get(),
                     size + std::size_t{1}, /*reserveTerminator=*/true);
    }
    if (size >= 2 && std::memcmp(text, "\xFF\xFE", 2) == 0) {
        text += 2;
        size -= 2;
    }
}

bool TextBlock::Read(const wchar_t* path) {
    FileBytes file;
    if (!file.Read(path))
        return false;
    SingleByteText single(file.Data(), file.Size());
    if (!single.Good())
        return false;
    block = std::move(single.copy);
    if (block == nullptr)
        block.reset(reinterpret_cast<char*>(file.bytes.release()));
    start = static_cast<std::size_t>(single.Text() - block.get());
    length = single.Length();
    return true;
}

} // namespace vtr
