#include "utilities/undo/UndoMgr.h"

#include "common/Require.h"

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

namespace {

/// Found by its node ID, as these stand in that order: quick also with many of them.
[[maybe_unused]] bool Stands(const CUndoAtom* atom, CUndoAtom* const* first,
                             CUndoAtom* const* last) {
    CUndoAtom* const* place =
        std::lower_bound(first, last, atom, [](const CUndoAtom* a, const CUndoAtom* b) {
            return a->nodeID < b->nodeID;
        });
    return place != last && *place == atom;
}

} // namespace

CUndoMgr::CUndoMgr(int maximum) noexcept
    : currentSet(1), nextNodeID(1), currentIndex(-1), one(1), maxUndos(maximum), dirty(0),
      dirtyStatusCallback(nullptr), dirtyStatusUserData(nullptr), setDirtyCallback(nullptr),
      savedIndex(-1), disableCount(0), currentSetHasAtoms(false), freezeCount(0),
      undoInProgress(false), redoInProgress(false), deleting(false), closing(false), removed(0),
      performing(nullptr) {}

CUndoMgr::~CUndoMgr() {
    closing = true;
    DisableNewUndos();
    ClearUndoHistory();
    // Callbacks and atoms may have given the current set a name.
    ClearUndoSetNames();
}

/// Null when out of range.
CUndoAtom* CUndoMgr::AtomAt(int index) const noexcept {
    return index >= 0 && index <= LastIndex() ? atoms[static_cast<unsigned>(index)] : nullptr;
}

/// Of those in the history; what is removed stands after it until it is deleted.
int CUndoMgr::LastIndex() const noexcept {
    return static_cast<int>(atoms.Count() - removed) - 1;
}

int CUndoMgr::IndexOf(const CUndoAtom* atom) const noexcept {
    const auto end = atoms.begin() + LastIndex() + 1;
    const auto place = std::find(atoms.begin(), end, atom);
    return place != end ? static_cast<int>(place - atoms.begin()) : -1;
}

long long CUndoMgr::AddUndoNode(CUndoAtom* atom) {
    VTR_REQUIRE(atom == nullptr || !Stands(atom, atoms.begin(), atoms.begin() + LastIndex() + 1));
    if (atom == nullptr || disableCount > 0 || closing || Walking())
        return -1;
    DiscardRedoChain();
    if (!Append(atom))
        return -1;
    const long long node = nextNodeID++;
    atom->undoSetID = currentSet;
    atom->nodeID = node;
    currentSetHasAtoms = true;
    currentIndex = LastIndex();
    // Atoms whose destructors add others would never come to an end.
    if (!deleting)
        Trim();
    if (LastIndex() == 0) {
        dirty = 1;
        NotifyStatus();
    } else {
        ChangeDirty(1);
    }
    NotifyChange();
    return node;
}

long long CUndoMgr::AddUndoNode(CUndoAtom& atom) {
    if (disableCount > 0 || closing || Walking())
        return -1;
    std::unique_ptr<CUndoAtom> clone(atom.Clone());
    const long long node = AddUndoNode(clone.get());
    if (node >= 0)
        static_cast<void>(clone.release());
    // The document has changed, also when that could not be recorded.
    SetDirty(1);
    return node;
}

/// Before what is removed, whose order is of no matter then.
bool CUndoMgr::Append(CUndoAtom* atom) noexcept {
    if (removed == 0)
        return atoms.Append(atom);
    const unsigned place = atoms.Count() - removed;
    if (!atoms.Append(atoms[place]))
        return false;
    atoms.Replace(place, atom);
    return true;
}

/// The atoms from `index` on are not in the history any more.
void CUndoMgr::RemoveFrom(int index) noexcept {
    if (index <= LastIndex())
        removed += static_cast<unsigned>(LastIndex() + 1 - index);
}

/// Deletes what was removed, the last first. Destructors of atoms may call back into the manager:
/// what they remove is deleted here too, by the outermost call, however many of them do so.
void CUndoMgr::DeleteRemoved() {
    if (deleting)
        return;
    deleting = true;
    while (removed > 0) {
        --removed;
        CUndoAtom* atom = atoms.Remove(atoms.Count() - 1);
        if (atom == performing)
            performing = nullptr;
        else
            delete atom;
    }
    deleting = false;
}

void CUndoMgr::DiscardRedoChain() {
    if (LastIndex() <= currentIndex)
        return;
    RemoveFrom(currentIndex + 1);
    ForgetNames();
    DeleteRemoved();
}

void CUndoMgr::Trim() {
    CUndoAtom** const first = atoms.begin();
    CUndoAtom** const end = first + LastIndex() + 1;
    CUndoAtom** oldest = first;
    while (end - oldest > maxUndos && (*oldest)->undoSetID != end[-1]->undoSetID) {
        const long long set = (*oldest)->undoSetID;
        while ((*oldest)->undoSetID == set)
            ++oldest;
    }
    if (oldest == first)
        return;
    // After those that stay, and turned around, as the last is deleted first.
    removed += static_cast<unsigned>(oldest - first);
    std::reverse(std::rotate(first, oldest, end), end);
    ForgetNames();
    currentIndex = LastIndex();
    DeleteRemoved();
}

void CUndoMgr::SetMaxUndos(int count) noexcept {
    maxUndos = count;
}

void CUndoMgr::ClearUndoHistory() {
    currentIndex = savedIndex = -1;
    ClearUndoSetNames();
    RemoveFrom(0);
    DeleteRemoved();
    if (atoms.Count() == 0)
        atoms.Clear([](CUndoAtom*) {});
    UpdateDirtyStatus();
}

void CUndoMgr::DeleteAllNodesAfterNode(CUndoAtom* atom) {
    const int index = IndexOf(atom);
    if (index < 0)
        return;
    currentIndex = index;
    currentSet = atom->undoSetID;
    currentSetHasAtoms = true;
    RemoveFrom(index + 1);
    DeleteRemoved();
    NotifyChange();
}

void CUndoMgr::DeleteUndoEventsByID(long long set) {
    CUndoAtom** const end = atoms.begin() + LastIndex() + 1;
    CUndoAtom** kept = atoms.begin();
    for (CUndoAtom** atom = kept; atom != end; ++atom) {
        if ((*atom)->undoSetID != set)
            std::swap(*kept++, *atom);
    }
    if (kept == end)
        return;
    // Those to be deleted were swapped out of their order.
    std::sort(kept, end,
              [](const CUndoAtom* a, const CUndoAtom* b) { return a->nodeID < b->nodeID; });
    removed += static_cast<unsigned>(end - kept);
    DeleteRemoved();
    NotifyChange();
}

bool CUndoMgr::AtomInList(CUndoAtom* atom) noexcept {
    return IndexOf(atom) >= 0;
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
        if (AtomAt(i)->nodeID == nodeID)
            return AtomAt(i);
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
