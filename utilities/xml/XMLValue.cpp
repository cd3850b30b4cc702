#include "utilities/xml/XMLValue.h"

#include "utilities/xml/XMLInternals.h"
#include "utilities/xml/XMLStorage.h"
#include "utilities/xml/XMLText.h"

#include <cstring>

CXMLValue::CXMLValue() noexcept
    : fieldName(nullptr), value(nullptr), sequenceNumber(-1), fieldNameInBlock(false),
      valueInBlock(false) {}

CXMLValue::CXMLValue(const CXMLValue& other) noexcept : CXMLValue() {
    *this = other;
}

CXMLValue& CXMLValue::operator=(const CXMLValue& other) noexcept {
    if (this != &other) {
        SetFieldName(other.fieldName);
        SetValue(other.value, 0);
        sequenceNumber = other.sequenceNumber;
    }
    return *this;
}

CXMLValue::~CXMLValue() {
    vtr::ReplaceXMLText(fieldName, fieldNameInBlock, nullptr);
    vtr::ReplaceXMLText(value, valueInBlock, nullptr);
}

void CXMLValue::SetFieldName(const char* text) noexcept {
    char* copy = text != nullptr ? vtr::CopyXMLText(text) : nullptr;
    vtr::ReplaceXMLText(fieldName, fieldNameInBlock, copy);
}

void CXMLValue::SetValue(const char* text, int length) noexcept {
    char* copy = nullptr;
    if (text != nullptr)
        copy = vtr::CopyXMLText(length < 1 ? std::string_view(text)
                                           : std::string_view(text, static_cast<unsigned>(length)));
    vtr::ReplaceXMLText(value, valueInBlock, copy);
}

void CXMLValue::DeHTMLify() noexcept {
    vtr::DeHTMLifyXMLText(fieldName);
    vtr::DeHTMLifyXMLText(value);
}

void* CXMLValue::operator new(std::size_t size) noexcept {
    return vtr::XMLStorage::TakeAlone(size);
}

void* CXMLValue::operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return vtr::XMLStorage::TakeAlone(size);
}

void CXMLValue::operator delete(void* object) noexcept {
    vtr::XMLStorage::Release(object);
}

void CXMLValue::operator delete(void* object, const std::nothrow_t&) noexcept {
    vtr::XMLStorage::Release(object);
}
