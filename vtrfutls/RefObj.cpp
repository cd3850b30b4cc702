#include "vtrfutls/RefObj.h"

#include <windows.h>

CRefObj::CRefObj() noexcept : references(1) {}

CRefObj::~CRefObj() = default;

unsigned long CRefObj::AddRef() noexcept {
    return static_cast<unsigned long>(InterlockedIncrement(&references));
}

unsigned long CRefObj::Release() noexcept {
    const long left = InterlockedDecrement(&references);
    if (left == 0)
        delete this;
    return static_cast<unsigned long>(left);
}
