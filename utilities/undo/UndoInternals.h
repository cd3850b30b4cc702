#ifndef VTRUTILS_UNDO_UNDOINTERNALS_H
#define VTRUTILS_UNDO_UNDOINTERNALS_H

#include "utilities/base/Layout.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/PtrArray.h"
#include "utilities/undo/UndoMgr.h"

struct CUndoMgr::SetName {
    unsigned set; ///< the low 32 bits of the set's number
    vtr::OwnedText name;
};

/// What the sources of the undo manager share. Private to the library. One thread at a time.
template <>
struct vtr::Internals<CUndoMgr> {
    static_assert(sizeof(CUndoAtom) == 24);
    VTR_FIELD_AT(CUndoAtom, undoSetID, 8);
    VTR_FIELD_AT(CUndoAtom, nodeID, 16);

    static_assert(sizeof(CUndoMgr) == vtr::ByPointer(128, 104));
    VTR_FIELD_AT(CUndoMgr, currentSet, 8);
    VTR_FIELD_AT(CUndoMgr, nextNodeID, 16);
    VTR_FIELD_AT(CUndoMgr, atoms, 24);
    VTR_FIELD_AT(CUndoMgr, currentIndex, 40, 36);
    VTR_FIELD_AT(CUndoMgr, one, 44, 40);
    VTR_FIELD_AT(CUndoMgr, maxUndos, 48, 44);
    VTR_FIELD_AT(CUndoMgr, dirty, 52, 48);
    VTR_FIELD_AT(CUndoMgr, dirtyStatusCallback, 56, 52);
    VTR_FIELD_AT(CUndoMgr, dirtyStatusUserData, 64, 56);
    VTR_FIELD_AT(CUndoMgr, setDirtyCallback, 72, 60);
    VTR_FIELD_AT(CUndoMgr, savedIndex, 80, 64);
    VTR_FIELD_AT(CUndoMgr, disableCount, 84, 68);
    VTR_FIELD_AT(CUndoMgr, currentSetHasAtoms, 88, 72);
    VTR_FIELD_AT(CUndoMgr, freezeCount, 92, 76);
    VTR_FIELD_AT(CUndoMgr, setNames, 96, 80);
    VTR_FIELD_AT(CUndoMgr, undoInProgress, 112, 92);
    VTR_FIELD_AT(CUndoMgr, redoInProgress, 113, 93);

    using SetName = CUndoMgr::SetName;

    // Atoms: UndoMgr.cpp.

    static Pointers<CUndoAtom> Atoms(CUndoMgr& manager) {
        return Pointers<CUndoAtom>(manager.atoms);
    }

    /// Of those in the history; what is removed is after it until it is deleted.
    static int LastIndex(const CUndoMgr& manager) {
        return static_cast<int>(manager.atoms.count - manager.removed) - 1;
    }

    /// Null when out of range.
    static CUndoAtom* AtomAt(const CUndoMgr& manager, int index) {
        return index >= 0 && index <= LastIndex(manager) ? manager.atoms.slots[index] : nullptr;
    }

    /// -1 when it is not in the history.
    static int IndexOf(const CUndoMgr& manager, const CUndoAtom* atom);

    /// Before what is removed, whose order does not matter then.
    static bool Append(CUndoMgr& manager, CUndoAtom* atom);

    /// The atoms from `index` on are not in the history any more.
    static void RemoveFrom(CUndoMgr& manager, int index);

    /// Deletes what was removed, the last first. Destructors of atoms may call back into the
    /// manager: what they remove is deleted here too, by the outermost call, however many of them
    /// do so.
    static void DeleteRemoved(CUndoMgr& manager);
    static void DiscardRedoChain(CUndoMgr& manager);
    static void Trim(CUndoMgr& manager);

    // Names of sets: UndoSets.cpp.

    static Pointers<SetName> Names(CUndoMgr& manager) {
        return Pointers<SetName>(manager.setNames);
    }

    /// Where the record of the set is, or would be.
    static unsigned NameIndex(const CUndoMgr& manager, long long set);

    /// Null when there is none.
    static SetName* NameOf(const CUndoMgr& manager, long long set);

    /// Null when memory runs out.
    static SetName* MakeNameOfCurrentSet(CUndoMgr& manager);

    /// Deletes the records of all sets before the oldest and after the newest atom.
    static void ForgetNames(CUndoMgr& manager);

    /// From `first` to before `last`. That of the current set stays: it may have been made before
    /// the set's first atom.
    static void ForgetNames(CUndoMgr& manager, unsigned first, unsigned last);

    // Undoing and redoing: UndoWalk.cpp.

    static bool Walking(const CUndoMgr& manager) {
        return manager.undoInProgress || manager.redoInProgress;
    }

    /// False when the atom, or the index, is not where it was: the walk over the set has lost its
    /// place.
    static bool PerformCurrent(CUndoMgr& manager, bool redo);

    // Dirty or not: UndoDirty.cpp.

    static void NotifyStatus(CUndoMgr& manager);
    static void NotifyChange(CUndoMgr& manager);
    static void ChangeDirty(CUndoMgr& manager, int value);
};

#endif
