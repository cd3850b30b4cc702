#include "utilities/undo/UndoMgr.h"

#include <algorithm>
#include <cstddef>
#include <memory>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CUndoMgr> {
    static_assert(sizeof(CUndoAtom) == 24);
    static_assert(offsetof(CUndoAtom, undoSetID) == 8 && offsetof(CUndoAtom, nodeID) == 16);

    static_assert(sizeof(PtrArray<CUndoAtom>) == 16 && sizeof(CUndoMgr) == 128);
    static_assert(offsetof(CUndoMgr, currentSet) == 8 && offsetof(CUndoMgr, nextNodeID) == 16);
    static_assert(offsetof(CUndoMgr, atoms) == 24 && offsetof(CUndoMgr, currentIndex) == 40);
    static_assert(offsetof(CUndoMgr, one) == 44 && offsetof(CUndoMgr, maxUndos) == 48);
    static_assert(offsetof(CUndoMgr, dirty) == 52);
    static_assert(offsetof(CUndoMgr, dirtyStatusCallback) == 56);
    static_assert(offsetof(CUndoMgr, dirtyStatusUserData) == 64);
    static_assert(offsetof(CUndoMgr, setDirtyCallback) == 72);
    static_assert(offsetof(CUndoMgr, savedIndex) == 80 && offsetof(CUndoMgr, disableCount) == 84);
    static_assert(offsetof(CUndoMgr, currentSetHasAtoms) == 88);
    static_assert(offsetof(CUndoMgr, freezeCount) == 92 && offsetof(CUndoMgr, setNames) == 96);
    static_assert(offsetof(CUndoMgr, undoInProgress) == 112);
    static_assert(offsetof(CUndoMgr, redoInProgress) == 113);
};

CUndoMgr::CUndoMgr(int maximum) noexcept
    : currentSet(1), nextNodeID(1), currentIndex(-1), one(1), maxUndos(maximum), dirty(0),
      dirtyStatusCallback(nullptr), dirtyStatusUserData(nullptr), setDirtyCallback(nullptr),
      savedIndex(-1), disableCount(0), currentSetHasAtoms(false), freezeCount(0),
      undoInProgress(false), redoInProgress(false), performingRemoved(false), performing(nullptr) {}

CUndoMgr::~CUndoMgr() {
    // Destructors of atoms may call the manager: what they added now would never be deleted.
    DisableNewUndos();
    ClearUndoHistory();
}

CUndoAtom* CUndoMgr::AtomAt(int index) const noexcept {
    return index >= 0 ? atoms.At(static_cast<unsigned>(index)) : nullptr;
}

/// 0, which is no set, for a null slot.
long long CUndoMgr::SetAt(unsigned index) const noexcept {
    const CUndoAtom* atom = atoms.At(index);
    return atom != nullptr ? atom->undoSetID : 0;
}

int CUndoMgr::LastIndex() const noexcept {
    return static_cast<int>(atoms.Count()) - 1;
}

long long CUndoMgr::AddUndoNode(CUndoAtom* atom) {
    if (atom == nullptr || disableCount > 0 || Walking())
        return -1;
    DeleteRedoChain();
    if (!atoms.Append(atom))
        return -1;
    const long long node = nextNodeID++;
    atom->undoSetID = currentSet;
    atom->nodeID = node;
    currentSetHasAtoms = true;
    currentIndex = LastIndex();
    Trim();
    if (atoms.Count() == 1) {
        dirty = 1;
        NotifyStatus();
    } else {
        ChangeDirty(1);
    }
    NotifyChange();
    return node;
}

long long CUndoMgr::AddUndoNode(CUndoAtom& atom) {
    if (disableCount > 0)
        return -1;
    std::unique_ptr<CUndoAtom> clone(atom.Clone());
    const long long node = AddUndoNode(clone.get());
    if (node < 0)
        return -1;
    static_cast<void>(clone.release());
    SetDirty(1);
    return node;
}

/// The destructors of atoms may call back into the manager. Each atom is therefore taken out of the
/// array before it is deleted, and what is left to do is looked up anew after each.
void CUndoMgr::DeleteRedoChain() {
    while (LastIndex() > currentIndex)
        Delete(atoms.Remove(atoms.Count() - 1));
}

void CUndoMgr::DeleteSlot(unsigned index) {
    if (index < atoms.Count())
        Delete(atoms.Replace(index, nullptr));
}

void CUndoMgr::Delete(CUndoAtom* atom) {
    if (atom != nullptr && atom == performing)
        performingRemoved = true;
    else
        delete atom;
}

void CUndoMgr::CloseGaps() noexcept {
    atoms.RemoveIf([](const CUndoAtom* atom) { return atom == nullptr; }, [](CUndoAtom*) {});
}

void CUndoMgr::Trim() {
    const unsigned count = atoms.Count();
    const long long newest = SetAt(count - 1);
    unsigned unwanted = 0;
    while (static_cast<int>(count - unwanted) > maxUndos && SetAt(unwanted) != newest) {
        const long long oldest = SetAt(unwanted);
        while (SetAt(unwanted) == oldest)
            ++unwanted;
    }
    if (unwanted == 0)
        return;
    for (unsigned i = 0; i < unwanted; ++i)
        DeleteSlot(i);
    CloseGaps();
    currentIndex = LastIndex();
}

void CUndoMgr::SetMaxUndos(int count) noexcept {
    maxUndos = count;
}

void CUndoMgr::ClearUndoHistory() {
    currentIndex = savedIndex = -1;
    DeleteRedoChain();
    if (atoms.Count() == 0)
        atoms.Clear([](CUndoAtom*) {});
    ClearUndoSetNames();
    ChangeDirty(0);
    NotifyChange();
}

void CUndoMgr::DeleteAllNodesAfterNode(CUndoAtom* atom) {
    const auto place = std::find(atoms.begin(), atoms.end(), atom);
    if (atom == nullptr || place == atoms.end())
        return;
    currentIndex = static_cast<int>(place - atoms.begin());
    currentSet = atom->undoSetID;
    currentSetHasAtoms = true;
    DeleteRedoChain();
    NotifyChange();
}

void CUndoMgr::DeleteUndoEventsByID(long long set) {
    bool found = false;
    for (unsigned i = atoms.Count(); i-- > 0;) {
        if (AtomAt(static_cast<int>(i)) == nullptr || SetAt(i) != set)
            continue;
        found = true;
        DeleteSlot(i);
    }
    if (!found)
        return;
    CloseGaps();
    NotifyChange();
}

bool CUndoMgr::AtomInList(CUndoAtom* atom) noexcept {
    return atom != nullptr && std::find(atoms.begin(), atoms.end(), atom) != atoms.end();
}

CUndoAtom* CUndoMgr::GetLastNode() noexcept {
    return AtomAt(LastIndex());
}

const void* CUndoMgr::LastUndoNode() const noexcept {
    return AtomAt(LastIndex());
}

long long CUndoMgr::LastUndoNodeID() noexcept {
    const CUndoAtom* last = GetLastNode();
    return last != nullptr ? last->nodeID : 0;
}

CUndoAtom* CUndoMgr::GetUndoNodeByID(long long nodeID) noexcept {
    for (int i = LastIndex(); i >= 0; --i) {
        CUndoAtom* atom = AtomAt(i);
        if (atom != nullptr && atom->nodeID == nodeID)
            return atom;
    }
    return nullptr;
}

void CUndoMgr::DisableNewUndos() noexcept {
    ++disableCount;
}

void CUndoMgr::EnableNewUndos() noexcept {
    if (disableCount > 0)
        --disableCount;
}

int CUndoMgr::CanAddUndoNodes() const noexcept {
    return disableCount == 0 ? 1 : 0;
}

int CUndoMgr::GetDisableUndoCount() const noexcept {
    return disableCount;
}
