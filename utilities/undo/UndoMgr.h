#ifndef VTRUTILS_UNDO_UNDOMGR_H
#define VTRUTILS_UNDO_UNDOMGR_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

/// One reversible change, as a host describes it. Hosts derive from it; the order of fields and
/// virtual operations is fixed. None of the operations may throw. `Perform` and the destructor may
/// call any function of the manager; `Clone` and `GetDescription` may only call those that change
/// nothing.
/// Thread-safety: one thread at a time.
class CUndoAtom {
public:
    virtual ~CUndoAtom() = default;

    /// A new copy, made with `new`; null when there is none.
    virtual CUndoAtom* Clone() = 0;

    /// Takes the change back or, with `redo`, makes it again.
    virtual void Perform(bool redo) = 0;

    /// Writes a text of at most `size` bytes, its terminator included.
    virtual void GetDescription(char* buffer, unsigned int size) = 0;

    // Written by the manager when it takes the atom.
    long long undoSetID = 0; ///< the undo set that it belongs to
    long long nodeID = 0;    ///< unique and increasing per manager

protected:
    CUndoAtom() = default;
    CUndoAtom(const CUndoAtom&) = default;
    CUndoAtom& operator=(const CUndoAtom&) = default;
};

/// The undo history of a document: owned atoms in the order in which they were added, grouped into
/// numbered undo sets, one for each action of the user. The current index is that of the newest
/// atom in effect, -1 for none; the atoms above it can be redone.
/// For each action a host calls `NextUndoSet` (or makes a `CUndoSetFreezer`), then `AddUndoNode`
/// for each elementary change; `Undo` and `Redo` from its menu; `OnSave` after saving.
///
/// The document counts as clean while the current index is the one at the last save. Only indices
/// are compared, so some answers may surprise a host:
///  - all sets undone: clean, even if it was saved with five of them in effect;
///  - saved at index 2, undone to 0, two other atoms added: dirty, but clean after `Undo` and
///    `Redo`, which return to index 2;
///  - with a maximum of 2, two sets of one atom each are saved (index 1), and a third is added: the
///    oldest is trimmed, and after `Undo` and `Redo` the document counts as saved, though the atom
///    at index 1 is not.
///
/// Atoms and callbacks may call the manager, which must outlive every call. While `Perform` runs,
/// calls to add, undo or redo do nothing. While an atom's destructor runs, calls to undo or redo do
/// nothing and no atom is trimmed; once the manager is being destroyed, none is added either. A
/// removed atom leaves the history at once. It is deleted when the outermost call that removes
/// atoms ends, or, if its `Perform` is running, when that returns. If that atom or an earlier one
/// is removed, the `Undo` or `Redo` ends, and the current index stays as the removal left it.
/// Thread-safety: one thread at a time. Callbacks and atoms are called on the caller's thread.
class VTRUTILS_API CUndoMgr {
public:
    /// See `SetMaxUndos`.
    explicit CUndoMgr(int maxUndos) noexcept;
    CUndoMgr(const CUndoMgr&) = delete;
    CUndoMgr& operator=(const CUndoMgr&) = delete;
    /// Calls `ClearUndoHistory`, which calls the callbacks.
    virtual ~CUndoMgr();

    /// Adds the atom to the current set, as the newest in effect, and marks the document dirty; for
    /// the first atom of an empty history, the status callback is called even if the document was
    /// dirty. What could be redone is deleted, the newest first. Then, while there are more atoms
    /// than the maximum, the oldest set is deleted as a whole, but never the set of the new atom.
    /// The names of all deleted sets are forgotten. Returns the node ID. -1 for null, while new
    /// undos are disabled, and if memory runs out: the atom then stays the caller's. Requires: the
    /// atom was made with `new` and is in no manager.
    long long AddUndoNode(CUndoAtom* atom);

    /// Adds a clone. The atom stays the caller's. -1 while new undos are disabled, if `Clone` gives
    /// null, and if memory runs out; in the last two cases the document is marked dirty all the
    /// same.
    long long AddUndoNode(CUndoAtom& atom);

    /// Takes back the atoms of the set at the current index, the newest first; `Redo` makes the set
    /// above it again, the oldest first. Does nothing if there is no such set. New undos are
    /// disabled meanwhile. Sets are told apart by the low 32 bits of their numbers.
    void Undo();
    void Redo();

    /// 1 or 0.
    int CanUndo() const noexcept;
    int CanRedo() const noexcept;

    /// Begins a new set: false, with the current set kept, while frozen or when the current set has
    /// no atoms yet.
    bool NextUndoSet() noexcept;

    /// The same; then the current set, new or not, gets the name. Does nothing while frozen.
    bool NextUndoSet(const char* name) noexcept;

    /// Null or "" leaves the set without a name. Does nothing while frozen or if memory runs out.
    void SetCurrentUndoSetName(const char* name) noexcept;

    /// Names the set if it was ever named before; otherwise the current set gets the name, whatever
    /// `set` is.
    void SetUndoSetName(long long set, const char* name) noexcept;

protected:
    /// The names stay in order in any case; the flag has no effect.
    void SetUndoSetName(long long set, const char* name, bool sort) noexcept;

public:
    /// Null when the set has no name or there is no such atom or set. Valid until the name changes
    /// or is forgotten. Undo: the set of the atom at the current index; redo: that of the next one.
    const char* GetUndoSetName() const noexcept;
    const char* GetUndoSetName(int set) const noexcept;
    const char* GetRedoSetName() const noexcept;

    /// The description of the newest atom of the set that `Undo` or `Redo` is for. "" if there is
    /// none; the first function then zeroes the whole buffer. Does nothing for a null buffer or a
    /// size of 0.
    void GetCurrentUndoText(char* buffer, unsigned int size);
    void GetCurrentRedoText(char* buffer, unsigned int size);

    /// While frozen, once or several times, no set is begun, renamed or taken back.
    void FreezeUndoSet() noexcept;
    void UnfreezeUndoSet() noexcept;
    bool UndoSetsFrozen() const noexcept;
    int GetUndoSetFreezeCount() const noexcept;

    /// While disabled, once or several times, no atom is added.
    void DisableNewUndos() noexcept;
    void EnableNewUndos() noexcept;
    int CanAddUndoNodes() const noexcept;
    int GetDisableUndoCount() const noexcept;

    /// True while `Undo` or `Redo` runs.
    bool IsUndoInProgress() const noexcept;
    bool IsRedoInProgress() const noexcept;
    /// Not 0 if the document differs from what was saved.
    int Dirty() const noexcept;

    /// The first calls the status callback when the value differs, the second always.
    void SetDirty(int value);
    void ForceSetDirty(int value);

    /// Makes the document dirty or clean, as the indices tell.
    void UpdateDirtyStatus();

    /// From now on, the current index counts as saved.
    void OnSave();

    /// Called when `Dirty()` changes, with 1, 0 or what `SetDirty` got. Null: no callback.
    void SetDirtyStatusCallback(void (*callback)(int dirty, void* userData),
                                void* userData) noexcept;

    /// Called after every change of the history or of the dirty state, for menus and titles.
    void SetSetDirtyCallback(void (*callback)()) noexcept;

    /// How many atoms are kept; heeded when the next one is added.
    void SetMaxUndos(int count) noexcept;

    /// Deletes all atoms and set names. The document is clean afterwards, and no index counts as
    /// saved. Set numbers and node IDs continue from where they were.
    void ClearUndoHistory();

    /// Makes the atom the newest in effect and its set the current one, and deletes all atoms above
    /// it, the newest first. Does nothing if the atom is not in the history.
    void DeleteAllNodesAfterNode(CUndoAtom* atom);

    /// Deletes the atoms of the set, the newest first. Current and saved index stay as they are: of
    /// A, B and C with C undone, after the deletion of A the index is that of C, which then counts
    /// as in effect; without C, there would be nothing to undo until an atom is added.
    void DeleteUndoEventsByID(long long set);

    /// Goes back to the set before and forgets the name of this one. False while frozen, if the
    /// current set has atoms, and if it is the first.
    bool DeleteCurrentUndoSetIfEmpty() noexcept;

    /// True for an atom of the history, in effect or not.
    bool AtomInList(CUndoAtom* atom) noexcept;

    /// The last atom of the history, in effect or not. Null, or an ID of 0, if there is none.
    CUndoAtom* GetLastNode() noexcept;
    const void* LastUndoNode() const noexcept;
    long long LastUndoNodeID() noexcept;

    /// Null when there is none.
    CUndoAtom* GetUndoNodeByID(long long nodeID) noexcept;

protected:
    /// Forgets the names of all sets, or of one, if it has a name.
    void ClearUndoSetNames() noexcept;
    void DeleteUndoSetNameInfo(long long set) noexcept;

private:
    friend struct vtr::Internals<CUndoMgr>;
    struct SetName;

    long long currentSet;
    long long nextNodeID;
    vtr::PointerFields<CUndoAtom> atoms; ///< those in the history, then `removed` that are not
    int currentIndex;
    [[maybe_unused]] int one; ///< always 1
    int maxUndos;
    int dirty;
    void (*dirtyStatusCallback)(int, void*);
    void* dirtyStatusUserData;
    void (*setDirtyCallback)();
    int savedIndex;
    int disableCount;
    bool currentSetHasAtoms;
    int freezeCount;
    vtr::PointerFields<SetName> setNames; ///< in ascending order of set numbers, each once
    bool undoInProgress;
    bool redoInProgress;
    bool deleting; ///< removed atoms
    bool closing;  ///< the destructor runs
    unsigned removed;
    CUndoAtom* performing; ///< the atom whose `Perform` runs; null: none, or it was removed
};

/// While it exists, all atoms that are added belong to one undo set.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CUndoSetFreezer {
public:
    /// Begins a set of this name, unless the name is null, and freezes it; within another guard,
    /// the outer one's set stays. The manager must outlive this object. Does nothing for a null
    /// manager.
    CUndoSetFreezer(CUndoMgr* manager, const char* name) noexcept;
    CUndoSetFreezer(const CUndoSetFreezer&) = delete;
    CUndoSetFreezer& operator=(const CUndoSetFreezer&) = delete;
    /// Takes the set back if this object began it, it has no atoms, and nothing else freezes it.
    ~CUndoSetFreezer();

private:
    friend struct vtr::Internals<CUndoSetFreezer>;

    CUndoMgr* manager;
    bool advanced; ///< this began a set
};

#endif
