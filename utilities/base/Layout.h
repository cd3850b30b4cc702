#ifndef VTRUTILS_BASE_LAYOUT_H
#define VTRUTILS_BASE_LAYOUT_H

#include "utilities/Fields.h"

#include <cstddef>

/// Asserts where the fields are on whose order hosts rely: those of a class are asserted beside its
/// source, those of the records that several classes have, here. Private to the library. Immutable
/// and safe.

/// Asserts where a field is: one offset or, where it depends on the size of pointers, that of
/// 64-bit programs and that of 32-bit ones. In a class with virtual functions `offsetof` is not
/// portable, but right with the compilers of the library.
// clang-format off
#define VTR_FIELD_AT(Class, field, ...)                             \
    _Pragma("GCC diagnostic push")                                  \
    _Pragma("GCC diagnostic ignored \"-Winvalid-offsetof\"")        \
    static_assert(offsetof(Class, field) == vtr::ByPointer(__VA_ARGS__)); \
    _Pragma("GCC diagnostic pop")                                   \
    static_assert(true)
// clang-format on

namespace vtr {

static_assert(sizeof(PointerFields<int>) == vtr::ByPointer(16, 12));
VTR_FIELD_AT(PointerFields<int>, slots, 0);
VTR_FIELD_AT(PointerFields<int>, count, 8, 4);

static_assert(sizeof(Element<long long>) == 16 && sizeof(Element<double>) == 16);
VTR_FIELD_AT(Element<long long>, sortValue, 8);
VTR_FIELD_AT(Element<double>, sortValue, 8);

static_assert(sizeof(ElementFields<int>) == vtr::ByPointer(16, 12));
VTR_FIELD_AT(ElementFields<int>, block, 0);
VTR_FIELD_AT(ElementFields<int>, capacity, 8, 4);
VTR_FIELD_AT(ElementFields<int>, count, 12, 8);

static_assert(sizeof(NodeFields<int>) == vtr::ByPointer(40, 24));
VTR_FIELD_AT(NodeFields<int>, head, 0);
VTR_FIELD_AT(NodeFields<int>, tail, 8, 4);
VTR_FIELD_AT(NodeFields<int>, cursor, 16, 8);
VTR_FIELD_AT(NodeFields<int>, count, 24, 12);
VTR_FIELD_AT(NodeFields<int>, cursorIndex, 28, 16);
VTR_FIELD_AT(NodeFields<int>, sorted, 32, 20);

} // namespace vtr

#endif
