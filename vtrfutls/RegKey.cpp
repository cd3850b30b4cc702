#include "vtrfutls/RegKey.h"

#include "common/Handles.h"

#include <new>

namespace {

vtr::RegistryKey Open(HKEY key, const char* path) {
    HKEY opened = nullptr;
    // Windows takes a null path for the key itself.
    if (key == nullptr || path == nullptr ||
        RegOpenKeyExA(key, path, /*ulOptions=*/0, KEY_READ, &opened) != ERROR_SUCCESS)
        opened = nullptr;
    return vtr::RegistryKey(opened);
}

} // namespace

CRegKey::CRegKey(HKEY root) noexcept : key(root), owned(false) {}

CRegKey::~CRegKey() {
    const vtr::RegistryKey toClose(owned ? key : nullptr);
}

CRegKey* CRegKey::GetSubKey(const char* path) const noexcept {
    vtr::RegistryKey opened = Open(key, path);
    auto* subKey = opened ? new (std::nothrow) CRegKey(opened.Get()) : nullptr;
    if (subKey != nullptr) {
        opened.Release();
        subKey->owned = true;
    }
    return subKey;
}

bool CRegKey::SubKeyExists(const char* path) const noexcept {
    return static_cast<bool>(Open(key, path));
}

bool CRegKey::GetKeyNum(const char* name, unsigned* number) const noexcept {
    if (number == nullptr)
        return false;
    DWORD kind = REG_NONE;
    DWORD value = 0;
    DWORD size = sizeof value;
    const bool found = key != nullptr &&
                       RegQueryValueExA(key, name, /*lpReserved=*/nullptr, &kind,
                                        reinterpret_cast<BYTE*>(&value), &size) == ERROR_SUCCESS &&
                       kind == REG_DWORD && size == sizeof value;
    *number = found ? value : 0;
    return found;
}

void DeleteRegKey(CRegKey* key) noexcept {
    delete key;
}
