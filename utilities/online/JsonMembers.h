#ifndef VTRUTILS_ONLINE_JSONMEMBERS_H
#define VTRUTILS_ONLINE_JSONMEMBERS_H

#include "utilities/base/ByteSearch.h"

#include <cfloat>
#include <climits>
#include <cstring>
#include <json/value.h>
#include <string_view>

/// Reads JSON values that others made: what is missing, is of another type than asked for, or does
/// not fit its field, is null, 0 or "". Nothing here takes memory or throws. Private to the
/// library. Immutable and safe.

namespace vtr {

/// Null unless `object` is one and has the member.
inline const Json::Value* Member(const Json::Value* object, std::string_view name) {
    return object != nullptr && object->isObject()
               ? object->find(name.data(), name.data() + name.size())
               : nullptr;
}

/// The number cut to an integer; 0 unless it is from `smallest` to `largest`.
inline long long WholeNumber(const Json::Value* value, double smallest, double largest) {
    if (value == nullptr || value->type() == Json::booleanValue || !value->isNumeric())
        return 0;
    const double number = value->asDouble();
    return number >= smallest && number <= largest ? static_cast<long long>(number) : 0;
}

inline int Integer(const Json::Value* value) {
    return static_cast<int>(WholeNumber(value, INT_MIN, INT_MAX));
}

inline float Float(const Json::Value* value) {
    if (value == nullptr || value->type() == Json::booleanValue || !value->isNumeric())
        return 0;
    const double number = value->asDouble();
    return number >= -FLT_MAX && number <= FLT_MAX ? static_cast<float>(number) : 0;
}

/// Stores the text up to a zero byte in it, cut to `size - 1` characters, and returns its length.
inline std::size_t StoreText(const Json::Value* value, char* buffer, std::size_t size) {
    const char* begin = "";
    const char* end = begin;
    if (value != nullptr && value->isString())
        value->getString(&begin, &end);
    if (static_cast<std::size_t>(end - begin) > size - 1)
        end = begin + size - 1;
    const char* const zero = FindByte(begin, end, '\0');
    const std::size_t length = static_cast<std::size_t>((zero != nullptr ? zero : end) - begin);
    std::memcpy(buffer, begin, length);
    buffer[length] = '\0';
    return length;
}

template <std::size_t size>
void StoreText(const Json::Value* value, char (&buffer)[size]) {
    StoreText(value, buffer, size);
}

} // namespace vtr

#endif
