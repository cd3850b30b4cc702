#include "utilities/system/files/RegistryStrings.h"

#include "utilities/system/files/FileFunctions.h"

#include <cstring>

namespace vtr {

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
    std::memset(out, 0, size);
    DWORD kind = REG_NONE;
    DWORD length = size;
    const bool read =
        key && RegQueryValueExA(key.Get(), valueName, /*lpReserved=*/nullptr, &kind,
                                reinterpret_cast<BYTE*>(out), &length) == ERROR_SUCCESS;
    // A string may have been stored without its terminator.
    if (read && (kind == REG_SZ || kind == REG_EXPAND_SZ) && std::memchr(out, 0, size) != nullptr)
        return true;
    std::memset(out, 0, size);
    return false;
}

bool RegistryStrings::Write(const char* valueName, const char* text) const {
    return key && RegSetValueExA(key.Get(), valueName, /*Reserved=*/0, REG_SZ,
                                 reinterpret_cast<const BYTE*>(text),
                                 static_cast<DWORD>(std::strlen(text) + 1)) == ERROR_SUCCESS;
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
