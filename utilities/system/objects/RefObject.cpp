#include "utilities/system/objects/RefObject.h"

#include <cstddef>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CRefObject> {
    static_assert(sizeof(CRefObject) == 16);
    static_assert(offsetof(CRefObject, references) == 8);
};

CRefObject::CRefObject() noexcept : references(1) {}

CRefObject::CRefObject(const CRefObject& /*other*/) noexcept : references(1) {}

CRefObject& CRefObject::operator=(const CRefObject& /*other*/) noexcept {
    return *this;
}

CRefObject::~CRefObject() = default;

int CRefObject::IncrementRefCount() noexcept {
    return ++references;
}

int CRefObject::DecrementRefCount() noexcept {
    return --references;
}

void DeleteMyObject(CRefObject* object) noexcept {
    if (object != nullptr && object->DecrementRefCount() < 1)
        delete object;
}
