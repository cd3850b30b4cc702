// Undoing and redoing one set, and what both will be for.

#include "utilities/undo/UndoInternals.h"

#include <cstring>

using Internals = vtr::Internals<CUndoMgr>;

namespace {

bool SameSet(long long left, long long right) {
    return static_cast<unsigned>(left) == static_cast<unsigned>(right);
}

} // namespace

int CUndoMgr::CanUndo() const noexcept {
    return Internals::AtomAt(*this, currentIndex) != nullptr ? 1 : 0;
}

int CUndoMgr::CanRedo() const noexcept {
    return Internals::AtomAt(*this, currentIndex + 1) != nullptr ? 1 : 0;
}

bool CUndoMgr::IsUndoInProgress() const noexcept {
    return undoInProgress;
}

bool CUndoMgr::IsRedoInProgress() const noexcept {
    return redoInProgress;
}

bool Internals::PerformCurrent(CUndoMgr& manager, bool redo) {
    const int index = manager.currentIndex;
    CUndoAtom* atom = AtomAt(manager, index);
    manager.performing = atom;
    atom->Perform(redo);
    const bool isRemoved = manager.performing == nullptr;
    manager.performing = nullptr;
    if (isRemoved)
        delete atom;
    return !isRemoved && manager.currentIndex == index && AtomAt(manager, index) == atom;
}

void CUndoMgr::Undo() {
    if (CanUndo() == 0 || Internals::Walking(*this) || deleting)
        return;
    DisableNewUndos();
    undoInProgress = true;
    const long long set = Internals::AtomAt(*this, currentIndex)->undoSetID;
    const auto goesOn = [&] {
        const CUndoAtom* atom = Internals::AtomAt(*this, currentIndex);
        return atom != nullptr && SameSet(atom->undoSetID, set);
    };
    while (goesOn() && Internals::PerformCurrent(*this, /*redo=*/false))
        --currentIndex;

    UpdateDirtyStatus();
    Internals::ChangeDirty(*this, currentIndex == savedIndex || currentIndex < 0 ? 0 : 1);
    Internals::NotifyChange(*this);
    EnableNewUndos();
    undoInProgress = false;
}

void CUndoMgr::Redo() {
    if (CanRedo() == 0 || Internals::Walking(*this) || deleting)
        return;
    ++currentIndex;
    DisableNewUndos();
    redoInProgress = true;
    const long long set = Internals::AtomAt(*this, currentIndex)->undoSetID;
    const auto goesOn = [&] {
        const CUndoAtom* next = Internals::AtomAt(*this, currentIndex + 1);
        return next != nullptr && SameSet(next->undoSetID, set);
    };
    while (Internals::PerformCurrent(*this, /*redo=*/true) && goesOn())
        ++currentIndex;

    UpdateDirtyStatus();
    EnableNewUndos();
    redoInProgress = false;
}

void CUndoMgr::GetCurrentUndoText(char* buffer, unsigned int size) {
    if (buffer == nullptr || size == 0)
        return;
    std::memset(buffer, 0, size);
    CUndoAtom* atom = Internals::AtomAt(*this, currentIndex);
    if (atom != nullptr)
        atom->GetDescription(buffer, size);
}

void CUndoMgr::GetCurrentRedoText(char* buffer, unsigned int size) {
    if (buffer == nullptr || size == 0)
        return;
    buffer[0] = '\0';
    CUndoAtom* last = Internals::AtomAt(*this, currentIndex + 1);
    if (last == nullptr)
        return;
    for (int i = currentIndex + 2; i <= Internals::LastIndex(*this); ++i) {
        if (!SameSet(Internals::AtomAt(*this, i)->undoSetID, last->undoSetID))
            break;
        last = Internals::AtomAt(*this, i);
    }
    last->GetDescription(buffer, size);
}
