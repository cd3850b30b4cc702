#include "utilities/text/ini/IniValue.h"

#include "utilities/text/ini/IniInternals.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstdlib>
#include <cstring>
#include <functional>

using Internals = vtr::Internals<CIniValue>;

CIniValue::CIniValue() noexcept : key(nullptr), value(nullptr), roomSize(0) {}

CIniValue::CIniValue(const char* newKey, const char* newValue) noexcept : CIniValue() {
    SetKey(newKey);
    SetValue(newValue);
}

CIniValue::CIniValue(const CIniValue& other) noexcept : CIniValue(other.key, other.value) {}

CIniValue& CIniValue::operator=(const CIniValue& other) noexcept {
    if (this != &other) {
        SetKey(other.key);
        SetValue(other.value);
    }
    return *this;
}

CIniValue::~CIniValue() {
    SetKey(nullptr);
    SetValue(nullptr);
}

void CIniValue::SetKey(const char* newKey) noexcept {
    Internals::Assign(*this, key, newKey);
}

void CIniValue::SetValue(const char* newValue) noexcept {
    Internals::Assign(*this, value, newValue);
}

/// A text behind the object goes with the object; only later texts are blocks of their own.
void Internals::Assign(CIniValue& pair, char*& field, const char* text) {
    const char* const room = reinterpret_cast<char*>(&pair + 1);
    const std::less<const char*> before;
    const bool inRoom =
        field != nullptr && !before(field, room) && before(field, room + pair.roomSize);
    if (!inRoom) {
        CopyStringA(&field, text);
    } else if (text != field) {
        char* copy = nullptr;
        CopyStringA(&copy, text);
        field = copy;
    }
}

CIniValue* Internals::Create(const char* key, std::size_t keyLength, const char* value,
                             std::size_t valueLength) {
    const std::size_t room = keyLength + 1 + (valueLength > 0 ? valueLength + 1 : 0);
    void* block = std::malloc(sizeof(CIniValue) + room);
    if (block == nullptr)
        return nullptr;
    CIniValue* pair = new (block) CIniValue;
    pair->roomSize = room;
    pair->key = reinterpret_cast<char*>(pair + 1);
    std::memcpy(pair->key, key, keyLength);
    pair->key[keyLength] = '\0';
    if (valueLength > 0) {
        pair->value = pair->key + keyLength + 1;
        std::memcpy(pair->value, value, valueLength);
        pair->value[valueLength] = '\0';
    }
    return pair;
}

void* CIniValue::operator new(std::size_t size) noexcept {
    return std::malloc(size);
}

void* CIniValue::operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size);
}

void CIniValue::operator delete(void* block) noexcept {
    std::free(block);
}

void CIniValue::operator delete(void* block, const std::nothrow_t&) noexcept {
    std::free(block);
}
