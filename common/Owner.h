#ifndef VTR_COMMON_OWNER_H
#define VTR_COMMON_OWNER_H

#include <windows.h>

/// The template for all owners of handles, and the owner that is needed most; the others are in
/// Handles.h. Private to the library and its sample host. One thread at a time.

namespace vtr {

/// Holds one handle and gives it back when it is destroyed. Giving back keeps `GetLastError`, so
/// the reason for a failure survives the clean-up that follows it.
template <class Kind>
class Owner {
public:
    using Type = typename Kind::Type;

    Owner() = default;
    explicit Owner(Type handle) : held(handle) {}
    Owner(Owner&& other) noexcept : held(other.Release()) {}
    Owner& operator=(Owner&& other) noexcept {
        if (this != &other)
            Reset(other.Release());
        return *this;
    }
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    ~Owner() { Close(); }

    explicit operator bool() const { return held != Kind::None(); }
    Type Get() const { return held; }

    /// The caller owns the handle from here on.
    Type Release() {
        Type handle = held;
        held = Kind::None();
        return handle;
    }

    void Reset(Type handle = Kind::None()) {
        Close();
        held = handle;
    }

    /// Gives the handle back now. False if that fails or nothing is held.
    bool Close() {
        if (held == Kind::None())
            return false;
        const DWORD error = GetLastError();
        const bool closed = Kind::Close(Release());
        if (closed)
            SetLastError(error);
        return closed;
    }

private:
    Type held = Kind::None();
};

/// Processes, threads, events and other kernel objects whose handle is null if there is none.
struct KernelObjectKind {
    using Type = HANDLE;
    static Type None() { return nullptr; }
    static bool Close(Type handle) { return CloseHandle(handle) != FALSE; }
};

using KernelHandle = Owner<KernelObjectKind>;

} // namespace vtr

#endif
