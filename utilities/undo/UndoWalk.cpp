// Undoing and redoing one set, and what both will be for.

#include "utilities/undo/UndoMgr.h"

#include <cstring>

namespace {

bool SameSet(long long left, long long right) {
    return static_cast<unsigned>(left) == static_cast<unsigned>(right);
}

} // namespace

bool CUndoMgr::Walking() const noexcept {
    return undoInProgress || redoInProgress;
}

int CUndoMgr::CanUndo() const noexcept {
    return AtomAt(currentIndex) != nullptr ? 1 : 0;
}

int CUndoMgr::CanRedo() const noexcept {
    return AtomAt(currentIndex + 1) != nullptr ? 1 : 0;
}

bool CUndoMgr::IsUndoInProgress() const noexcept {
    return undoInProgress;
}

bool CUndoMgr::IsRedoInProgress() const noexcept {
    return redoInProgress;
}

/// False when the atom, or the index, is not where it was: the walk over the set has lost its
/// place.
bool CUndoMgr::PerformCurrent(bool redo) {
    const int index = currentIndex;
    CUndoAtom* atom = AtomAt(index);
    performing = atom;
    atom->Perform(redo);
    const bool isRemoved = performing == nullptr;
    performing = nullptr;
    if (isRemoved)
        delete atom;
    return !isRemoved && currentIndex == index && AtomAt(index) == atom;
}

void CUndoMgr::Undo() {
    if (CanUndo() == 0 || Walking() || deleting)
        return;
    DisableNewUndos();
    undoInProgress = true;
    const long long set = AtomAt(currentIndex)->undoSetID;
    const auto goesOn = [&] {
        const CUndoAtom* atom = AtomAt(currentIndex);
        return atom != nullptr && SameSet(atom->undoSetID, set);
    };
    while (goesOn() && PerformCurrent(/*redo=*/false))
        --currentIndex;

    UpdateDirtyStatus();
    ChangeDirty(currentIndex == savedIndex || currentIndex < 0 ? 0 : 1);
    NotifyChange();
    EnableNewUndos();
    undoInProgress = false;
}

void CUndoMgr::Redo() {
    if (CanRedo() == 0 || Walking() || deleting)
        return;
    ++currentIndex;
    DisableNewUndos();
    redoInProgress = true;
    const long long set = AtomAt(currentIndex)->undoSetID;
    const auto goesOn = [&] {
        const CUndoAtom* next = AtomAt(currentIndex + 1);
        return next != nullptr && SameSet(next->undoSetID, set);
    };
    while (PerformCurrent(/*redo=*/true) && goesOn())
        ++currentIndex;

    UpdateDirtyStatus();
    EnableNewUndos();
    redoInProgress = false;
}

void CUndoMgr::GetCurrentUndoText(char* buffer, unsigned int size) {
    if (buffer == nullptr || size == 0)
        return;
    std::memset(buffer, 0, size);
    CUndoAtom* atom = AtomAt(currentIndex);
    if (atom != nullptr)
        atom->GetDescription(buffer, size);
}

void CUndoMgr::GetCurrentRedoText(char* buffer, unsigned int size) {
    if (buffer == nullptr || size == 0)
        return;
    buffer[0] = '\0';
    CUndoAtom* last = AtomAt(currentIndex + 1);
    if (last == nullptr)
        return;
    for (int i = currentIndex + 2; i <= LastIndex(); ++i) {
        if (!SameSet(AtomAt(i)->undoSetID, last->undoSetID))
            break;
        last = AtomAt(i);
    }
    last->GetDescription(buffer, size);
}
