#ifndef VTRUTILS_EXPORT_H
#define VTRUTILS_EXPORT_H

/// Marks what `vtrutils.dll` exports. A host defines neither macro. `VTRUTILS_BUILD` is set while
/// the library itself is compiled, `VTRUTILS_STATIC` by programs that link its objects directly.
#if defined(VTRUTILS_BUILD)
#define VTRUTILS_API __declspec(dllexport)
#elif defined(VTRUTILS_STATIC)
#define VTRUTILS_API
#else
#define VTRUTILS_API __declspec(dllimport)
#endif

/// Marks each inline member of an exported class. The library's compiler exports such members only
/// where they are marked themselves; others export them with the class, or refuse the mark.
#if defined(VTRUTILS_BUILD) && !defined(__clang__)
#define VTRUTILS_INLINE __declspec(dllexport)
#else
#define VTRUTILS_INLINE
#endif

/// Declares how objects of a class are made and freed that may share a block with their texts or
/// with each other: by `new`, which gives null when memory runs out, and by `delete`, on either
/// side of the DLL's boundary. Requires: `<cstddef>` and `<new>`.
#define VTRUTILS_OWN_MEMORY                                                                        \
    static void* operator new(std::size_t size) noexcept;                                          \
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;                   \
    VTRUTILS_INLINE static void* operator new(std::size_t, void* place) noexcept {                 \
        return place;                                                                              \
    }                                                                                              \
    static void operator delete(void* object) noexcept;                                            \
    static void operator delete(void* object, const std::nothrow_t&) noexcept;                     \
    VTRUTILS_INLINE static void operator delete(void*, void*) noexcept {}

namespace vtr {
/// The one friend of an exported class. The library defines it in the class's source or in a
/// private header: it asserts where the fields are, on whose order hosts rely, and has as static
/// functions what works on them and is not for hosts to know.
template <class Class>
struct Internals;
} // namespace vtr

#endif
