#include "utilities/system/objects/RefObject.h"

#include "utilities/base/Layout.h"

template <>
struct vtr::Internals<CRefObject> {
    static_assert(sizeof(CRefObject) == vtr::ByPointer(16, 8));
    VTR_FIELD_AT(CRefObject, references, 8, 4);
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
