#include "utilities/undo/UndoMgr.h"

#include "common/Require.h"
#include "utilities/undo/UndoInternals.h"

#include <algorithm>
#include <memory>

using Internals = vtr::Internals<CUndoMgr>;

namespace {

/// Found by its node ID, because atoms are in that order: quick even if there are many.
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
    Internals::Atoms(*this).Reset();
}

int Internals::IndexOf(const CUndoMgr& manager, const CUndoAtom* atom) {
    CUndoAtom* const* const first = manager.atoms.slots;
    CUndoAtom* const* const end = first + LastIndex(manager) + 1;
    CUndoAtom* const* const place = std::find(first, end, atom);
    return place != end ? static_cast<int>(place - first) : -1;
}

long long CUndoMgr::AddUndoNode(CUndoAtom* atom) {
    VTR_REQUIRE(atom == nullptr ||
                !Stands(atom, atoms.slots, atoms.slots + Internals::LastIndex(*this) + 1));
    if (atom == nullptr || disableCount > 0 || closing || Internals::Walking(*this))
        return -1;
    Internals::DiscardRedoChain(*this);
    if (!Internals::Append(*this, atom))
        return -1;
    const long long node = nextNodeID++;
    atom->undoSetID = currentSet;
    atom->nodeID = node;
    currentSetHasAtoms = true;
    currentIndex = Internals::LastIndex(*this);
    // Atoms whose destructors add others would never come to an end.
    if (!deleting)
        Internals::Trim(*this);
    if (Internals::LastIndex(*this) == 0) {
        dirty = 1;
        Internals::NotifyStatus(*this);
    } else {
        Internals::ChangeDirty(*this, 1);
    }
    Internals::NotifyChange(*this);
    return node;
}

long long CUndoMgr::AddUndoNode(CUndoAtom& atom) {
    if (disableCount > 0 || closing || Internals::Walking(*this))
        return -1;
    std::unique_ptr<CUndoAtom> clone(atom.Clone());
    const long long node = AddUndoNode(clone.get());
    if (node >= 0)
        static_cast<void>(clone.release());
    // The document has changed, also when that could not be recorded.
    SetDirty(1);
    return node;
}

bool Internals::Append(CUndoMgr& manager, CUndoAtom* atom) {
    vtr::Pointers<CUndoAtom> all = Atoms(manager);
    if (manager.removed == 0)
        return all.Append(atom);
    const unsigned place = all.Count() - manager.removed;
    if (!all.Append(all[place]))
        return false;
    all.Replace(place, atom);
    return true;
}

void Internals::RemoveFrom(CUndoMgr& manager, int index) {
    if (index <= LastIndex(manager))
        manager.removed += static_cast<unsigned>(LastIndex(manager) + 1 - index);
}

void Internals::DeleteRemoved(CUndoMgr& manager) {
    if (manager.deleting)
        return;
    manager.deleting = true;
    while (manager.removed > 0) {
        --manager.removed;
        CUndoAtom* atom = Atoms(manager).Remove(Atoms(manager).Count() - 1);
        if (atom == manager.performing)
            manager.performing = nullptr;
        else
            delete atom;
    }
    manager.deleting = false;
}

void Internals::DiscardRedoChain(CUndoMgr& manager) {
    if (LastIndex(manager) <= manager.currentIndex)
        return;
    RemoveFrom(manager, manager.currentIndex + 1);
    ForgetNames(manager);
    DeleteRemoved(manager);
}

void Internals::Trim(CUndoMgr& manager) {
    CUndoAtom** const first = manager.atoms.slots;
    CUndoAtom** const end = first + LastIndex(manager) + 1;
    CUndoAtom** oldest = first;
    while (end - oldest > manager.maxUndos && (*oldest)->undoSetID != end[-1]->undoSetID) {
        const long long set = (*oldest)->undoSetID;
        while ((*oldest)->undoSetID == set)
            ++oldest;
    }
    if (oldest == first)
        return;
    // After those that stay, and turned around, as the last is deleted first.
    manager.removed += static_cast<unsigned>(oldest - first);
    std::reverse(std::rotate(first, oldest, end), end);
    ForgetNames(manager);
    manager.currentIndex = LastIndex(manager);
    DeleteRemoved(manager);
}

void CUndoMgr::SetMaxUndos(int count) noexcept {
    maxUndos = count;
}

void CUndoMgr::ClearUndoHistory() {
    currentIndex = savedIndex = -1;
    ClearUndoSetNames();
    Internals::RemoveFrom(*this, 0);
    Internals::DeleteRemoved(*this);
    if (atoms.count == 0)
        Internals::Atoms(*this).Reset();
    UpdateDirtyStatus();
}

void CUndoMgr::DeleteAllNodesAfterNode(CUndoAtom* atom) {
    const int index = Internals::IndexOf(*this, atom);
    if (index < 0)
        return;
    currentIndex = index;
    currentSet = atom->undoSetID;
    currentSetHasAtoms = true;
    Internals::RemoveFrom(*this, index + 1);
    Internals::DeleteRemoved(*this);
    Internals::NotifyChange(*this);
}

void CUndoMgr::DeleteUndoEventsByID(long long set) {
    CUndoAtom** kept = atoms.slots;
    CUndoAtom** const end = kept + Internals::LastIndex(*this) + 1;
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
    Internals::DeleteRemoved(*this);
    Internals::NotifyChange(*this);
}

bool CUndoMgr::AtomInList(CUndoAtom* atom) noexcept {
    return Internals::IndexOf(*this, atom) >= 0;
}

CUndoAtom* CUndoMgr::GetLastNode() noexcept {
    return Internals::AtomAt(*this, Internals::LastIndex(*this));
}

const void* CUndoMgr::LastUndoNode() const noexcept {
    return Internals::AtomAt(*this, Internals::LastIndex(*this));
}

long long CUndoMgr::LastUndoNodeID() noexcept {
    const CUndoAtom* last = GetLastNode();
    return last != nullptr ? last->nodeID : 0;
}

CUndoAtom* CUndoMgr::GetUndoNodeByID(long long nodeID) noexcept {
    for (int i = Internals::LastIndex(*this); i >= 0; --i) {
        if (Internals::AtomAt(*this, i)->nodeID == nodeID)
            return Internals::AtomAt(*this, i);
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
