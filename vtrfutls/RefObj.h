#ifndef VTRFUTLS_REFOBJ_H
#define VTRFUTLS_REFOBJ_H

#include "vtrfutls/Export.h"

/// An object that counts its users, from 1 on, and is deleted with the last of them.
/// Thread-safety: locked by itself.
class VTRFUTLS_API CRefObj {
public:
    CRefObj() noexcept;
    CRefObj(const CRefObj&) = delete;
    CRefObj& operator=(const CRefObj&) = delete;
    virtual ~CRefObj();

    /// Adds a user. The new count.
    unsigned long AddRef() noexcept;

    /// Takes a user away. The new count; at 0 the object is gone.
    /// Requires: it was made with `new`, unless others still use it.
    unsigned long Release() noexcept;

private:
    volatile long references;
};

#endif
