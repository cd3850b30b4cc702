// Whether the document differs from what was saved, and who is told.

#include "utilities/undo/UndoMgr.h"

int CUndoMgr::Dirty() const noexcept {
    return dirty;
}

void CUndoMgr::NotifyStatus() {
    if (dirtyStatusCallback != nullptr)
        dirtyStatusCallback(dirty, dirtyStatusUserData);
}

void CUndoMgr::NotifyChange() {
    if (setDirtyCallback != nullptr)
        setDirtyCallback();
}

void CUndoMgr::ChangeDirty(int value) {
    if (dirty == value)
        return;
    dirty = value;
    NotifyStatus();
}

void CUndoMgr::SetDirty(int value) {
    ChangeDirty(value);
    NotifyChange();
}

void CUndoMgr::ForceSetDirty(int value) {
    dirty = value;
    NotifyStatus();
    NotifyChange();
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
