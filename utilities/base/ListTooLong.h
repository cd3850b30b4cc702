#ifndef VTRUTILS_BASE_LISTTOOLONG_H
#define VTRUTILS_BASE_LISTTOOLONG_H

namespace vtr {

/// Throws `std::length_error("list too long")`, the one exception that leaves the library: a list
/// whose count has reached the largest `int` was to take one more item. Private to the library.
/// Immutable and safe.
[[noreturn]] void ThrowListTooLong();

} // namespace vtr

#endif
