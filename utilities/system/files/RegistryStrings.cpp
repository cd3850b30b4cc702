#include "utilities/system/files/RegistryStrings.h"

#include "common/Require.h"
#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/system/files/FileFunctions.h"

#include <cstring>

namespace vtr {

namespace {

/// The UTF-16 of one value.
class StoredText {
public:
    /// False for what is not a string, and when memory runs out.
    bool Read(HKEY key, const char* valueName) {
        WideText name;
        name.Convert(valueName, CP_ACP, /*strict=*/false);
        // The last unit stays zero: a string may have been stored without its terminator.
        DWORD bytes = sizeof small - sizeof(wchar_t);
        LSTATUS status = Query(key, name.Get(), small, bytes);
        while (status == ERROR_MORE_DATA) {
            large = AllocateChars<wchar_t>(bytes / sizeof(wchar_t) + 2);
            if (large == nullptr)
                return false;
            std::memset(large.get(), 0, bytes + 2 * sizeof(wchar_t));
            status = Query(key, name.Get(), large.get(), bytes);
        }
        units = bytes / sizeof(wchar_t);
        return status == ERROR_SUCCESS && (kind == REG_SZ || kind == REG_EXPAND_SZ);
    }

    bool EndsTwice() const { return units == std::wcslen(Get()) + 2; }

    const wchar_t* Get() const { return large != nullptr ? large.get() : small; }

private:
    LSTATUS Query(HKEY key, const wchar_t* name, wchar_t* text, DWORD& bytes) {
        return RegQueryValueExW(key, name, /*lpReserved=*/nullptr, &kind,
                                reinterpret_cast<BYTE*>(text), &bytes);
    }

    wchar_t small[512] = L"";
    OwnedChars<wchar_t> large;
    std::size_t units = 0;
    DWORD kind = REG_NONE;
};

/// Whether the text is the same after it became UTF-16 in the ANSI page and text again.
bool AnsiKeeps(const char* text) {
    WideText wide;
    if (!wide.Convert(text, CP_ACP, /*strict=*/false))
        return false;
    const OwnedText again = ExactText(wide.Get(), CP_ACP);
    return again != nullptr && std::strcmp(again.get(), text) == 0;
}

/// What was stored; what another program stored, in the first page that has all of it. Null when
/// memory runs out.
OwnedText TextOf(const StoredText& stored) {
    const unsigned first = stored.EndsTwice() ? CurrentCodePage() : CP_ACP;
    const unsigned second = stored.EndsTwice() ? CP_ACP : CurrentCodePage();
    OwnedText text = ExactText(stored.Get(), first);
    if (text == nullptr)
        text = ExactText(stored.Get(), second);
    return text != nullptr ? std::move(text) : NearestText(stored.Get());
}

} // namespace

bool RegistryStrings::OpenForReading(HKEY root, const char* subKey) {
    HKEY opened = nullptr;
    if (root != nullptr && subKey != nullptr &&
        RegOpenKeyExA(root, subKey, /*ulOptions=*/0, KEY_READ, &opened) != ERROR_SUCCESS)
        opened = nullptr;
    key.Reset(opened);
    return static_cast<bool>(key);
}

bool RegistryStrings::OpenForWriting(HKEY root, const char* subKey) {
    HKEY opened = nullptr;
    if (root != nullptr && subKey != nullptr &&
        RegCreateKeyExA(root, subKey, /*Reserved=*/0, /*lpClass=*/nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_WRITE, /*lpSecurityAttributes=*/nullptr, &opened,
                        /*lpdwDisposition=*/nullptr) != ERROR_SUCCESS)
        opened = nullptr;
    key.Reset(opened);
    return static_cast<bool>(key);
}

bool RegistryStrings::Read(const char* valueName, char* out, unsigned size) const {
    VTR_REQUIRE(size > 0);
    std::memset(out, 0, size);
    StoredText stored;
    const OwnedText text = key && stored.Read(key.Get(), valueName) ? TextOf(stored) : nullptr;
    if (text == nullptr || std::strlen(text.get()) >= size)
        return false;
    std::strcpy(out, text.get());
    return true;
}

bool RegistryStrings::Write(const char* valueName, const char* text) const {
    WideText stored;
    const bool kept = AnsiKeeps(text);
    const bool inLanguage = !kept && stored.Convert(text, CurrentCodePage(), /*strict=*/true);
    if (!key || !(inLanguage || stored.Convert(text, CP_ACP, /*strict=*/false)))
        return false;
    WideText name;
    name.Convert(valueName, CP_ACP, /*strict=*/false);
    const std::size_t bytes = (std::wcslen(stored.Get()) + (inLanguage ? 2 : 1)) * sizeof(wchar_t);
    return RegSetValueExW(key.Get(), name.Get(), /*Reserved=*/0, REG_SZ,
                          reinterpret_cast<const BYTE*>(stored.Get()),
                          static_cast<DWORD>(bytes)) == ERROR_SUCCESS;
}

} // namespace vtr

bool GetRegistryString(HKEY root, const char* subKey, const char* valueName, char* out,
                       unsigned size) {
    if (root == nullptr || subKey == nullptr || valueName == nullptr || out == nullptr || size == 0)
        return false;
    std::memset(out, 0, size);
    vtr::RegistryStrings strings;
    if (!strings.OpenForReading(root, subKey))
        return false;
    strings.Read(valueName, out, size);
    return true;
}

bool WriteRegistryString(HKEY root, const char* subKey, const char* valueName, const char* text) {
    vtr::RegistryStrings strings;
    return valueName != nullptr && text != nullptr && strings.OpenForWriting(root, subKey) &&
           strings.Write(valueName, text);
}
