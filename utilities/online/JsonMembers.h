#ifndef VTRUTILS_ONLINE_JSONMEMBERS_H
#define VTRUTILS_ONLINE_JSONMEMBERS_H

#include "utilities/base/StoreCut.h"

#include <cfloat>
#include <climits>
#include <json/value.h>
#include <string_view>

/// Reads members of JSON values that others made: what is missing, is of another type than asked
/// for, or does not fit its field, is null, 0 or "". Nothing here takes memory or throws. Private
/// to the library. Immutable and safe.

namespace vtr {

/// Null unless `object` is one and has the member.
inline const Json::Value* Member(const Json::Value* object, std::string_view name) {
    return object != nullptr && object->isObject()
               ? object->find(name.data(), name.data() + name.size())
               : nullptr;
}

inline const Json::Value* ObjectMember(const Json::Value* object, std::string_view name) {
    const Json::Value* const member = Member(object, name);
    return member != nullptr && member->isObject() ? member : nullptr;
}

inline const Json::Value* ArrayMember(const Json::Value* object, std::string_view name) {
    const Json::Value* const member = Member(object, name);
    return member != nullptr && member->isArray() ? member : nullptr;
}

/// The number cut to an integer; 0 unless it is from `smallest` to `largest`.
inline long long WholeNumber(const Json::Value* object, std::string_view name,
                             double smallest = INT_MIN, double largest = INT_MAX) {
    const Json::Value* const member = Member(object, name);
    if (member == nullptr || member->type() == Json::booleanValue || !member->isNumeric())
        return 0;
    const double number = member->asDouble();
    return number >= smallest && number <= largest ? static_cast<long long>(number) : 0;
}

inline int Integer(const Json::Value* object, std::string_view name) {
    return static_cast<int>(WholeNumber(object, name));
}

inline float Float(const Json::Value* object, std::string_view name) {
    const Json::Value* const member = Member(object, name);
    if (member == nullptr || member->type() == Json::booleanValue || !member->isNumeric())
        return 0;
    const double number = member->asDouble();
    return number >= -FLT_MAX && number <= FLT_MAX ? static_cast<float>(number) : 0;
}

/// Up to a zero byte in the text.
inline const char* Text(const Json::Value* value) {
    return value != nullptr && value->isString() ? value->asCString() : "";
}

/// Cut to the buffer.
template <std::size_t size>
void StoreMember(const Json::Value* object, std::string_view name, char (&buffer)[size]) {
    StoreCut(Text(Member(object, name)), buffer, size);
}

} // namespace vtr

#endif
