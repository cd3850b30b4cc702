#ifndef VTRUTILS_TEXT_INI_INIVALUE_H
#define VTRUTILS_TEXT_INI_INIVALUE_H

#include "utilities/Export.h"

#include <cstddef>
#include <new>

/// One pair of an INI document. Owns copies of both texts; an empty text is always stored as null.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CIniValue {
public:
    CIniValue() noexcept;
    /// The texts are null when memory runs out.
    CIniValue(const char* newKey, const char* newValue) noexcept;
    CIniValue(const CIniValue& other) noexcept;
    CIniValue& operator=(const CIniValue& other) noexcept;
    ~CIniValue();

    /// Null when unset or empty; valid until the text is set again or the pair goes.
    VTRUTILS_INLINE const char* Key() const noexcept { return key; }
    VTRUTILS_INLINE const char* Value() const noexcept { return value; }

    /// Null or "" leaves null, and so does a lack of memory. The new text may be the present one or
    /// a part of it.
    void SetKey(const char* newKey) noexcept;
    void SetValue(const char* newValue) noexcept;

    /// Pairs that a document makes are one block with their texts; every pair is freed by `delete`.
    /// Null when memory runs out.
    static void* operator new(std::size_t size) noexcept;
    static void* operator new(std::size_t size, const std::nothrow_t&) noexcept;
    VTRUTILS_INLINE static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void* block) noexcept;
    static void operator delete(void* block, const std::nothrow_t&) noexcept;
    VTRUTILS_INLINE static void operator delete(void*, void*) noexcept {}

private:
    friend struct vtr::Internals<CIniValue>;

    char* key;
    char* value;
    std::size_t roomSize; ///< bytes right after the object that hold the texts it was made with
};

#endif
