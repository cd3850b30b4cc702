// Whether the document differs from what was saved, and who is told.

#include "utilities/undo/UndoInternals.h"

using Internals = vtr::Internals<CUndoMgr>;

int CUndoMgr::Dirty() const noexcept {
    return dirty;
}

void Internals::NotifyStatus(CUndoMgr& manager) {
    if (manager.dirtyStatusCallback != nullptr)
        manager.dirtyStatusCallback(manager.dirty, manager.dirtyStatusUserData);
}

void Internals::NotifyChange(CUndoMgr& manager) {
    if (manager.setDirtyCallback != nullptr)
        manager.setDirtyCallback();
}

void Internals::ChangeDirty(CUndoMgr& manager, int value) {
    if (manager.dirty == value)
        return;
    manager.dirty = value;
    NotifyStatus(manager);
}

void CUndoMgr::SetDirty(int value) {
    Internals::ChangeDirty(*this, value);
    Internals::NotifyChange(*this);
}

void CUndoMgr::ForceSetDirty(int value) {
    dirty = value;
    Internals::NotifyStatus(*this);
    Internals::NotifyChange(*this);
}

void CUndoMgr::UpdateDirtyStatus() {
    SetDirty(currentIndex != savedIndex ? 1 : 0);
}

void CUndoMgr::OnSave() {
    savedIndex = currentIndex;
    SetDirty(0);
}

void CUndoMgr::SetDirtyStatusCallback(void (*callback)(int, void*), void* userData) noexcept {
    dirtyStatusCallback = callback;
    dirtyStatusUserData = userData;
}

void CUndoMgr::SetSetDirtyCallback(void (*callback)()) noexcept {
    setDirtyCallback = callback;
}
