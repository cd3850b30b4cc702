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

/// False when atoms were removed meanwhile: the walk over the set has then lost its place.
bool CUndoMgr::PerformCurrent(bool redo) {
    CUndoAtom* atom = AtomAt(currentIndex);
    if (atom == nullptr)
        return true;
    const unsigned count = atoms.Count();
    const int index = currentIndex;
    performing = atom;
    performingRemoved = false;
    atom->Perform(redo);
    performing = nullptr;
    if (performingRemoved)
        delete atom;
    return atoms.Count() == count && currentIndex == index;
}

void CUndoMgr::Undo() {
    if (CanUndo() == 0 || Walking())
        return;
    DisableNewUndos();
    undoInProgress = true;
    const long long set = AtomAt(currentIndex)->undoSetID;
    const auto goesOn = [&] {
        const CUndoAtom* atom = AtomAt(currentIndex);
        return currentIndex >= 0 && (atom == nullptr || SameSet(atom->undoSetID, set));
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
    if (CanRedo() == 0 || Walking())
        return;
    ++currentIndex;
    DisableNewUndos();
    redoInProgress = true;
    const long long set = AtomAt(currentIndex)->undoSetID;
    const auto goesOn = [&] {
        const CUndoAtom* next = AtomAt(currentIndex + 1);
        return currentIndex < LastIndex() && (next == nullptr || SameSet(next->undoSetID, set));
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
        CUndoAtom* atom = AtomAt(i);
        if (atom != nullptr && !SameSet(atom->undoSetID, last->undoSetID))
            break;
        if (atom != nullptr)
            last = atom;
    }
    last->GetDescription(buffer, size);
}
