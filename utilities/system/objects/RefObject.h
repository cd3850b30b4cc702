#ifndef VTRUTILS_SYSTEM_OBJECTS_REFOBJECT_H
#define VTRUTILS_SYSTEM_OBJECTS_REFOBJECT_H

#include "utilities/Export.h"

/// An object that counts its users, from 1 on; `DeleteMyObject` takes one away. The count belongs
/// to the object: a copy starts at 1, and assigning leaves it alone.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CRefObject {
public:
    CRefObject() noexcept;
    /// Nothing of the other is copied.
    CRefObject(const CRefObject& other) noexcept;
    CRefObject& operator=(const CRefObject& other) noexcept;
    virtual ~CRefObject();

    /// Both return the new count.
    int IncrementRefCount() noexcept;
    int DecrementRefCount() noexcept;

private:
    friend struct vtr::Internals<CRefObject>;

    int references;
};

/// Takes one user away, and deletes the object, which was made with `new`, if none is left. Does
/// nothing for null.
VTRUTILS_API void DeleteMyObject(CRefObject* object) noexcept;

#endif
