#include "tests/support/ImportPatch.h"

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
    const void* address =
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), function));
    for (; import->Name != 0; ++import) {
        auto** slot = reinterpret_cast<void**>(base + import->FirstThunk);
        for (; *slot != nullptr; ++slot) {
            if (*slot == address)
                return slot;
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
