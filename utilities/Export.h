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

namespace vtr {
/// Specialised beside the source of a class whose field order hosts rely on: sees its private
/// fields and asserts where they stand.
template <class Record>
struct Layout;
} // namespace vtr

#endif
