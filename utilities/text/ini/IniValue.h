#ifndef VTRUTILS_TEXT_INI_INIVALUE_H
#define VTRUTILS_TEXT_INI_INIVALUE_H

#include "utilities/Export.h"

#include <cstddef>
#include <new>

/// One pair of an INI document. Owns copies of both texts. An empty text is always stored as null.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CIniValue {
public:
    CIniValue() noexcept;
    /// The texts are null when memory runs out.
    CIniValue(const char* newKey, const char* newValue) noexcept;
    CIniValue(const CIniValue& other) noexcept;
    CIniValue& operator=(const CIniValue& other) noexcept;
    ~CIniValue();

    /// Null if unset or empty; valid until the text is set again or the pair is destroyed.
    VTRUTILS_INLINE const char* Key() const noexcept { return key; }
    VTRUTILS_INLINE const char* Value() const noexcept { return value; }

    /// Copies the text. Null and "" give null, and so does a lack of memory. The new text may be
    /// the present one or a part of it.
    void SetKey(const char* newKey) noexcept;
    void SetValue(const char* newValue) noexcept;

    /// A pair that a document makes is one block with its texts. Every pair is freed by `delete`.
    VTRUTILS_OWN_MEMORY

private:
    friend struct vtr::Internals<CIniValue>;

    char* key;
    char* value;
    bool keyInBlock; ///< in the pair's own block, so not to be freed
    bool valueInBlock;
};

#endif
