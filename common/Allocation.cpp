// `new (std::nothrow)` on `malloc`, in each of the two libraries for itself: hosts keep their own.
// The compiler's throws and catches inside, and its exceptions need memory of their own: with none
// left, it ends the process. Memory is freed with `free`, as by the compiler's `delete`, so it may
// be made on one side of the boundary and deleted on the other.

#include <cstdlib>
#include <new>

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size > 0 ? size : 1);
}

void* operator new[](std::size_t size, const std::nothrow_t& nothrow) noexcept {
    return operator new(size, nothrow);
}

void operator delete(void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}

void operator delete[](void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
