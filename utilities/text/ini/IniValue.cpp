#include "utilities/text/ini/IniValue.h"

#include "utilities/base/BlockText.h"
#include "utilities/text/ini/IniInternals.h"

CIniValue::CIniValue() noexcept
    : key(nullptr), value(nullptr), keyInBlock(false), valueInBlock(false) {}

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
    vtr::FreeText(key, keyInBlock);
    vtr::FreeText(value, valueInBlock);
}

void CIniValue::SetKey(const char* newKey) noexcept {
    vtr::AssignText(key, keyInBlock, newKey);
}

void CIniValue::SetValue(const char* newValue) noexcept {
    vtr::AssignText(value, valueInBlock, newValue);
}

VTR_OWN_MEMORY(CIniValue, std::malloc, std::free);

CIniValue* vtr::Internals<CIniValue>::Create(const char* key, std::size_t keyLength,
                                             const char* value, std::size_t valueLength) {
    const std::size_t room = keyLength + 1 + (valueLength > 0 ? valueLength + 1 : 0);
    void* block = std::malloc(sizeof(CIniValue) + room);
    if (block == nullptr)
        return nullptr;
    CIniValue* pair = new (block) CIniValue;
    char* place = reinterpret_cast<char*>(pair + 1);
    pair->key = PutText(key, keyLength, place);
    pair->keyInBlock = true;
    if (valueLength > 0) {
        pair->value = PutText(value, valueLength, place);
        pair->valueInBlock = true;
    }
    return pair;
}
