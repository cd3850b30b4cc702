#include "tests/support/ImportPatch.h"

#include <cstring>
#include <stdexcept>
#include <string>

namespace {

void** FindSlot(HMODULE module, const char* library, const char* function) {
    char* base = reinterpret_cast<char*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    const auto* import =
        reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; import->Name != 0; ++import) {
        if (_stricmp(base + import->Name, library) != 0)
            continue;
        const auto* names =
            reinterpret_cast<const IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto** slots = reinterpret_cast<void**>(base + import->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal))
                continue;
            const auto* name =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(name->Name), function) == 0)
                return slots;
        }
    }
    return nullptr;
}

} // namespace

ImportPatch::ImportPatch(HMODULE module, const char* library, const char* function,
                         void* replacement)
    : slot(module != nullptr ? FindSlot(module, library, function) : nullptr), original(nullptr) {
    if (slot == nullptr)
        throw std::runtime_error(std::string("not imported: ") + function);
    original = *slot;
    Write(replacement);
}

ImportPatch::~ImportPatch() {
    Write(original);
}

void ImportPatch::Write(void* address) const {
    DWORD old = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &old);
    *slot = address;
    VirtualProtect(slot, sizeof *slot, old, &old);
}
