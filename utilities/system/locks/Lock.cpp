#include "utilities/system/locks/Lock.h"

#include "common/DynamicFunction.h"
#include "common/Require.h"
#include "utilities/base/CriticalSection.h"

namespace {

vtr::DynamicFunction<BOOL WINAPI(CRITICAL_SECTION*)> tryEnter("Kernel32",
                                                              "TryEnterCriticalSection");

} // namespace

template <>
struct vtr::Internals<CLock> {
    static_assert(sizeof(CLock) == sizeof(CRITICAL_SECTION));
};

CLock::CLock() noexcept {
    InitializeCriticalSection(&section);
    // Here, so that trying never costs the loading of a module.
    tryEnter.Get();
}

CLock& CLock::operator=(const CLock& other) noexcept {
    vtr::CopySectionState(section, other.section);
    return *this;
}

CLock::~CLock() {
    VTR_REQUIRE(vtr::IsFree(section));
    DeleteCriticalSection(&section);
}

int CLock::TryToLock() noexcept {
    VTR_REQUIRE(section.RecursionCount >= 0); // otherwise `Unlock` was called too often
    auto* enter = tryEnter.Get();
    if (enter == nullptr) {
        Lock();
        return 1;
    }
    return enter(&section);
}
