#ifndef VTRUTILS_SYSTEM_HANDLES_H
#define VTRUTILS_SYSTEM_HANDLES_H

#include <cstdio>
#include <windows.h>

#include <commctrl.h>

/// Owners of what Windows and the C run-time hand out: one template, one alias for each kind.
/// Private to the library and its sample host. One thread at a time.

namespace vtr {

/// Holds one handle and gives it back when it goes. Giving back keeps `GetLastError`, so the
/// reason for a failure survives the clean-up that follows it.
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

    /// Gives the handle back now; false when that fails or nothing is held.
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

struct FileKind {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static bool Close(Type handle) { return CloseHandle(handle) != FALSE; }
};

struct StreamKind {
    using Type = std::FILE*;
    static Type None() { return nullptr; }
    /// Flushes; a failure here is a failed write.
    static bool Close(Type stream) { return std::fclose(stream) == 0; }
};

template <class GdiHandle>
struct GdiObjectKind {
    using Type = GdiHandle;
    static Type None() { return nullptr; }
    static bool Close(Type object) { return DeleteObject(object) != FALSE; }
};

struct MemoryDcKind {
    using Type = HDC;
    static Type None() { return nullptr; }
    static bool Close(Type dc) { return DeleteDC(dc) != FALSE; }
};

/// From GetDC, GetDCEx or GetWindowDC.
struct WindowDcKind {
    using Type = HDC;
    static Type None() { return nullptr; }
    static bool Close(Type dc) { return ReleaseDC(WindowFromDC(dc), dc) != 0; }
};

struct ImageListKind {
    using Type = HIMAGELIST;
    static Type None() { return nullptr; }
    static bool Close(Type images) { return ImageList_Destroy(images) != FALSE; }
};

/// Processes, threads, events and whatever else null stands for nothing of.
struct KernelObjectKind {
    using Type = HANDLE;
    static Type None() { return nullptr; }
    static bool Close(Type handle) { return CloseHandle(handle) != FALSE; }
};

using FileHandle = Owner<FileKind>;
using KernelHandle = Owner<KernelObjectKind>;
using StreamHandle = Owner<StreamKind>;
using FontHandle = Owner<GdiObjectKind<HFONT>>;
using BitmapHandle = Owner<GdiObjectKind<HBITMAP>>;
using MemoryDc = Owner<MemoryDcKind>;
using ImageList = Owner<ImageListKind>;
using WindowDc = Owner<WindowDcKind>;

/// Selects an object into a device context for as long as this lives. Nothing for a null object or
/// device context.
class SelectedObject {
public:
    SelectedObject(HDC target, HGDIOBJ object)
        : dc(target), previous(object != nullptr ? SelectObject(target, object) : nullptr) {}
    SelectedObject(const SelectedObject&) = delete;
    SelectedObject& operator=(const SelectedObject&) = delete;
    ~SelectedObject() {
        if (previous != nullptr)
            SelectObject(dc, previous);
    }

private:
    HDC dc;
    HGDIOBJ previous;
};

} // namespace vtr

#endif
