#include "tests/support/FreedMemory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <map>

namespace {

constexpr unsigned char garbage = 0xDD;

std::map<unsigned char*, std::size_t> freed;
unsigned freedAgain = 0;

void KeepFreed(void* block) {
    if (block == nullptr)
        return;
    const auto [place, isNew] = freed.emplace(static_cast<unsigned char*>(block), _msize(block));
    freedAgain += isNew ? 0 : 1;
    std::memset(block, garbage, place->second);
}

void* MoveAlways(void* block, std::size_t size) {
    void* moved = std::malloc(size);
    if (block != nullptr && moved != nullptr) {
        std::memcpy(moved, block, std::min(size, _msize(block)));
        KeepFreed(block);
    }
    return moved;
}

} // namespace

FreedMemory::FreedMemory(const char* moduleName)
    : free(GetModuleHandleA(moduleName), "msvcrt.dll", "free", reinterpret_cast<void*>(&KeepFreed)),
      realloc(GetModuleHandleA(moduleName), "msvcrt.dll", "realloc",
              reinterpret_cast<void*>(&MoveAlways)) {}

FreedMemory::~FreedMemory() {
    for (const auto& [block, size] : freed)
        std::free(block);
    freed.clear();
    freedAgain = 0;
}

unsigned FreedMemory::Misused() const {
    return freedAgain +
           static_cast<unsigned>(std::count_if(freed.begin(), freed.end(), [](const auto& block) {
               const auto isGarbage = [](unsigned char c) { return c == garbage; };
               return !std::all_of(block.first, block.first + block.second, isGarbage);
           }));
}
