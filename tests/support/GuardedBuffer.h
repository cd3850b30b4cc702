#ifndef VTRUTILS_TESTS_SUPPORT_GUARDEDBUFFER_H
#define VTRUTILS_TESTS_SUPPORT_GUARDEDBUFFER_H

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <windows.h>

/// Memory whose last byte is followed by a page that may not be touched: a read or write one byte
/// too far ends the program. Filled with 0xCD at the start.
template <class Char>
class GuardedBuffer {
public:
    explicit GuardedBuffer(std::size_t count) : length(count) {
        const std::size_t bytes = count * sizeof(Char);
        const std::size_t usable = (bytes + pageSize - 1) / pageSize * pageSize;
        block = static_cast<char*>(
            VirtualAlloc(nullptr, usable + pageSize, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
        DWORD old = 0;
        if (block == nullptr || !VirtualProtect(block + usable, pageSize, PAGE_NOACCESS, &old))
            throw std::runtime_error("no guarded memory");
        data = reinterpret_cast<Char*>(block + usable - bytes);
        std::memset(data, 0xCD, bytes);
    }

    /// Holds exactly this text, with or without a terminator as last character.
    explicit GuardedBuffer(std::basic_string_view<Char> text, bool terminated = true)
        : GuardedBuffer(text.size() + (terminated ? 1 : 0)) {
        std::memcpy(data, text.data(), text.size() * sizeof(Char));
        if (terminated)
            data[text.size()] = 0;
    }

    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;
    ~GuardedBuffer() { VirtualFree(block, 0, MEM_RELEASE); }

    Char* Data() { return data; }
    std::basic_string_view<Char> View() const { return {data, length}; }

private:
    static constexpr std::size_t pageSize = 4096;
    char* block;
    Char* data;
    std::size_t length;
};

using GuardedBytes = GuardedBuffer<char>;
using GuardedUnits = GuardedBuffer<wchar_t>;

#endif
