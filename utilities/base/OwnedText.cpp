#include "utilities/base/OwnedText.h"

#include <cstring>
#include <cwchar>

namespace vtr {

namespace {

std::size_t Length(const char* text) {
    return text != nullptr ? std::strlen(text) : 0;
}

std::size_t Length(const wchar_t* text) {
    return text != nullptr ? std::wcslen(text) : 0;
}

template <class Char>
void Assign(Char** target, const Char* source) {
    if (target == nullptr || *target == source)
        return;
    const std::size_t length = Length(source);
    if (length > 0 && length == Length(*target)) {
        std::memcpy(*target, source, length * sizeof(Char));
        return;
    }
    Char* copy = nullptr;
    if (length > 0)
        copy = static_cast<Char*>(std::malloc((length + 1) * sizeof(Char)));
    if (copy != nullptr)
        std::memcpy(copy, source, (length + 1) * sizeof(Char));
    std::free(*target);
    *target = copy;
}

} // namespace

void AssignText(char** target, const char* source) {
    Assign(target, source);
}

void AssignText(wchar_t** target, const wchar_t* source) {
    Assign(target, source);
}

} // namespace vtr
