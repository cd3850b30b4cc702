#ifndef VTR_COMMON_HANDLES_H
#define VTR_COMMON_HANDLES_H

#include "common/Owner.h"

#include <cstdio>
#include <windows.h>

#include <commctrl.h>

/// Owners of what Windows and the C run-time hand out: one alias of `Owner` for each kind.
/// Private to the library and its sample host. One thread at a time.

namespace vtr {

struct FileKind {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static bool Close(Type handle) { return CloseHandle(handle) != FALSE; }
};

/// From FindFirstFile.
struct FindKind {
    using Type = HANDLE;
    static Type None() { return INVALID_HANDLE_VALUE; }
    static bool Close(Type handle) { return FindClose(handle) != FALSE; }
};

struct RegistryKeyKind {
    using Type = HKEY;
    static Type None() { return nullptr; }
    static bool Close(Type key) { return RegCloseKey(key) == ERROR_SUCCESS; }
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

struct IconKind {
    using Type = HICON;
    static Type None() { return nullptr; }
    static bool Close(Type icon) { return DestroyIcon(icon) != FALSE; }
};

/// A use of a COM object.
template <class Interface>
struct ComPointerKind {
    using Type = Interface*;
    static Type None() { return nullptr; }
    static bool Close(Type object) {
        object->Release();
        return true;
    }
};

/// What COM or the shell allocated for its caller.
template <class Block>
struct TaskMemoryKind {
    using Type = Block*;
    static Type None() { return nullptr; }
    static bool Close(Type block) {
        CoTaskMemFree(block);
        return true;
    }
};

using FileHandle = Owner<FileKind>;
using FindHandle = Owner<FindKind>;
using RegistryKey = Owner<RegistryKeyKind>;
using StreamHandle = Owner<StreamKind>;
using FontHandle = Owner<GdiObjectKind<HFONT>>;
using BitmapHandle = Owner<GdiObjectKind<HBITMAP>>;
using BrushHandle = Owner<GdiObjectKind<HBRUSH>>;
using MemoryDc = Owner<MemoryDcKind>;
using ImageList = Owner<ImageListKind>;
using WindowDc = Owner<WindowDcKind>;
using IconHandle = Owner<IconKind>;
template <class Interface>
using ComPointer = Owner<ComPointerKind<Interface>>;
template <class Block>
using TaskMemory = Owner<TaskMemoryKind<Block>>;

/// Selects an object into a device context until this is destroyed. Does nothing for a null object
/// or device context.
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
