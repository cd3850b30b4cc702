#include "utilities/text/language/ProfileText.h"

#include "common/Require.h"
#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"

#include <cstring>
#include <windows.h>

namespace vtr {

namespace {

/// The narrow profile function reads text in the ANSI page and gives it out in the same page, so
/// this gives the same bytes.
unsigned ReadWide(const char* key, char* buffer, unsigned size, const wchar_t* file) {
    WideText wideKey;
    if (key != nullptr)
        wideKey.Convert(key, CP_ACP, /*strict=*/false);
    const wchar_t* name = key != nullptr ? wideKey.Get() : nullptr;
    const OwnedChars<wchar_t> text = AllocateChars<wchar_t>(size);
    // A character has at most two bytes in the code pages that systems have as ANSI page.
    const OwnedText narrow = AllocateChars<char>(std::size_t{size} * 2);
    buffer[0] = '\0';
    if (text == nullptr || narrow == nullptr)
        return 0;
    const DWORD units = GetPrivateProfileStringW(L"Strings", name, name, text.get(), size, file);
    const int bytes = WideCharToMultiByte(
        CP_ACP, /*dwFlags=*/0, text.get(), static_cast<int>(units), narrow.get(),
        static_cast<int>(size) * 2, /*lpDefaultChar=*/nullptr, /*lpUsedDefaultChar=*/nullptr);
    const unsigned length =
        static_cast<unsigned>(bytes) < size ? static_cast<unsigned>(bytes) : size - 1;
    std::memcpy(buffer, narrow.get(), length);
    buffer[length] = '\0';
    return length;
}

} // namespace

unsigned ReadProfileText(const char* key, char* buffer, unsigned size, const char* file) {
    VTR_REQUIRE(size > 0);
    const WidePath wide(file, CurrentCodePage());
    const OwnedText inAnsi = ExactText(wide.Get(), CP_ACP);
    return inAnsi != nullptr
               ? GetPrivateProfileStringA("Strings", key, key, buffer, size, inAnsi.get())
               : ReadWide(key, buffer, size, wide.Get());
}

} // namespace vtr
