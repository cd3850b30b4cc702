#ifndef VTRUTILS_XML_XMLVALUE_H
#define VTRUTILS_XML_XMLVALUE_H

#include "utilities/Export.h"

#include <cstddef>
#include <new>

/// A name and a value of an XML element: one of its attributes, or a piece of its text, whose field
/// name is that of the element. Owns copies of both.
/// Thread-safety: one thread at a time, for all that came from one document together.
class VTRUTILS_API CXMLValue {
public:
    /// Both texts null, sequence number -1.
    CXMLValue() noexcept;
    CXMLValue(const CXMLValue& other) noexcept;
    CXMLValue& operator=(const CXMLValue& other) noexcept;
    ~CXMLValue();

    /// Null until set; valid until set again or the value is destroyed.
    VTRUTILS_INLINE const char* FieldName() const noexcept { return fieldName; }
    VTRUTILS_INLINE const char* Value() const noexcept { return value; }

    /// The place among the texts and children of the element in the document, from 0.
    VTRUTILS_INLINE int SequenceNumber() const noexcept { return sequenceNumber; }
    VTRUTILS_INLINE void SetSequenceNumber(int number) noexcept { sequenceNumber = number; }

    /// Copies the text, which may be the present one. Null, or a lack of memory, leaves null.
    void SetFieldName(const char* text) noexcept;

    /// The same for `length` bytes of the text, or all of it if `length` is below 1. Requires: the
    /// text has that many bytes.
    void SetValue(const char* text, int length) noexcept;

    /// Decodes both texts as `DeHTMLifyString` does.
    void DeHTMLify() noexcept;

    /// The values of a document share blocks of memory, but each is freed with `delete`. Null if
    /// memory runs out.
    VTRUTILS_OWN_MEMORY

private:
    friend struct vtr::Internals<CXMLValue>;

    char* fieldName;
    char* value;
    int sequenceNumber;
    bool fieldNameInBlock; ///< in the object's own block, so not to be freed
    bool valueInBlock;
};

#endif
