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
    vtr::TakeText(fieldName, fieldNameInBlock, nullptr);
    vtr::TakeText(value, valueInBlock, nullptr);
}

void CXMLValue::SetFieldName(const char* text) noexcept {
    char* copy = text != nullptr ? vtr::CopyXMLText(text) : nullptr;
    vtr::TakeText(fieldName, fieldNameInBlock, copy);
}

void CXMLValue::SetValue(const char* text, int length) noexcept {
    char* copy = nullptr;
    if (text != nullptr)
        copy = vtr::CopyXMLText(length < 1 ? std::string_view(text)
                                           : std::string_view(text, static_cast<unsigned>(length)));
    vtr::TakeText(value, valueInBlock, copy);
}

void CXMLValue::DeHTMLify() noexcept {
    vtr::DeHTMLifyXMLText(fieldName);
    vtr::DeHTMLifyXMLText(value);
}

VTR_OWN_MEMORY(CXMLValue, vtr::XMLStorage::TakeAlone, vtr::XMLStorage::Release);
