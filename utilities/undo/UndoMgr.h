#ifndef VTRUTILS_UNDO_UNDOMGR_H
#define VTRUTILS_UNDO_UNDOMGR_H

#include "utilities/Export.h"
#include "utilities/Fields.h"

/// One reversible change, as a host describes it. Hosts derive from it; the order of fields and
/// virtual operations is fixed. None of the operations may throw. `Perform` and the destructor may
/// call the manager, `Clone` and `GetDescription` may only ask it.
/// Thread-safety: one thread at a time.
class CUndoAtom {
public:
    virtual ~CUndoAtom() = default;

    /// A new copy, made with `new`; null when there is none.
    virtual CUndoAtom* Clone() = 0;

    /// Takes the change back, or with `redo` makes it again.
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
/// are compared, which gives answers that a host may not expect:
///  - all sets undone: clean, even if it was saved with five of them in effect;
///  - saved at index 2, undone to 0, two other atoms added: dirty, but clean after `Undo` and
///    `Redo`, which come back to index 2;
///  - of at most 2 atoms, each a set, both are saved (index 1) and a third is added: the oldest is
///    trimmed, and after `Undo` and `Redo` the unsaved atom at index 1 counts as saved.
///
/// Atoms and callbacks may call the manager, which must outlive every call. Within `Perform`
/// nothing is added, undone or redone; within an atom's destructor nothing is undone, redone or
/// trimmed, and nothing added once the manager is being destroyed. What is removed is out of the
/// history at once, and deleted when the outermost call that removes any ends; an atom that is
/// running, when it returns. Removing it or an earlier one ends the `Undo` or `Redo`, with the
/// current index as the removal left it. Thread-safety: one thread at a time. Callbacks and atoms
/// are called on the caller's thread.
class VTRUTILS_API CUndoMgr {
public:
    /// See `SetMaxUndos`.
    explicit CUndoMgr(int maxUndos) noexcept;
    CUndoMgr(const CUndoMgr&) = delete;
    CUndoMgr& operator=(const CUndoMgr&) = delete;
    /// Calls `ClearUndoHistory`, and so the callbacks.
    virtual ~CUndoMgr();

    /// Adds the atom to the current set, as the newest in effect, and marks the document dirty; the
    /// status callback is called in any case for the first atom of an empty history. What could be
    /// redone is deleted, the newest first. Then the oldest sets, each as a whole, are deleted
    /// while there are more atoms than the maximum; the set of the new atom never is. The names of
    /// both are forgotten. Returns the node ID. -1 for null, while new undos are disabled, and when
    /// memory runs out: the atom then stays its caller's. Requires: the atom was made with `new`
    /// and is in no manager.
    long long AddUndoNode(CUndoAtom* atom);

    /// Adds a clone, and marks the document dirty also when there is none or no memory for it. The
    /// atom stays its caller's. -1 as above and when there is no clone.
    long long AddUndoNode(CUndoAtom& atom);

    /// Takes back the atoms of the set at the current index, the newest first; `Redo` makes the set
    /// above it again, the oldest first. Nothing when there is none. New undos are disabled
    /// meanwhile. Sets are told apart by the low 32 bits of their numbers.
    void Undo();
    void Redo();

    /// 1 or 0.
    int CanUndo() const noexcept;
    int CanRedo() const noexcept;

    /// Begins a new set: false, with the current set kept, while frozen or when the current set has
    /// no atoms yet.
    bool NextUndoSet() noexcept;

    /// The same; then the set that is current, a new one or not, gets the name. Nothing while
    /// frozen.
    bool NextUndoSet(const char* name) noexcept;

    /// Null or "" leaves the set without a name. Nothing while frozen or when memory runs out.
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

    /// The description of the newest atom of the set that `Undo` or `Redo` is for. "" when there is
    /// none; the first form then zeroes the whole buffer. Nothing for a null buffer or a size of 0.
    void GetCurrentUndoText(char* buffer, unsigned int size);
    void GetCurrentRedoText(char* buffer, unsigned int size);

    /// While frozen, once or several times, no set begins, is renamed or goes.
    void FreezeUndoSet() noexcept;
    void UnfreezeUndoSet() noexcept;
    bool UndoSetsFrozen() const noexcept;
    int GetUndoSetFreezeCount() const noexcept;

    /// While disabled, once or several times, no atom is added.
    void DisableNewUndos() noexcept;
    void EnableNewUndos() noexcept;
    int CanAddUndoNodes() const noexcept;
    int GetDisableUndoCount() const noexcept;

    bool IsUndoInProgress() const noexcept;
    bool IsRedoInProgress() const noexcept;
    int Dirty() const noexcept;

    /// The first calls the status callback when the value differs, the second always.
    void SetDirty(int value);
    void ForceSetDirty(int value);

    /// Dirty or clean as the indices tell.
    void UpdateDirtyStatus();

    /// The current index counts as saved from now on.
    void OnSave();

    /// Called when `Dirty()` changes, with 1, 0 or what `SetDirty` got. Null for none.
    void SetDirtyStatusCallback(void (*callback)(int dirty, void* userData),
                                void* userData) noexcept;

    /// Called after every change of the history or of the dirty state, for menus and titles.
    void SetSetDirtyCallback(void (*callback)()) noexcept;

    /// How many atoms are kept; heeded when the next one is added.
    void SetMaxUndos(int count) noexcept;

    /// Deletes all atoms and set names; clean afterwards, with nothing saved. Set numbers and node
    /// IDs go on from where they were.
    void ClearUndoHistory();

    /// Makes the atom the newest in effect, its set the current one, and deletes all above it, the
    /// newest first. Nothing when it is not in the history.
    void DeleteAllNodesAfterNode(CUndoAtom* atom);

    /// Deletes the atoms of the set, the newest first. Current and saved index stay as they are: of
    /// A, B and C with C undone, after the deletion of A the index is that of C, which then counts
    /// as in effect; without C, there would be nothing to undo until an atom is added.
    void DeleteUndoEventsByID(long long set);

    /// Goes back to the set before and forgets the name of this one. False while frozen, when the
    /// current set has atoms, and for the first.
    bool DeleteCurrentUndoSetIfEmpty() noexcept;

    bool AtomInList(CUndoAtom* atom) noexcept;

    /// The last atom of the history, in effect or not. Null, or an ID of 0, when there is none.
    CUndoAtom* GetLastNode() noexcept;
    const void* LastUndoNode() const noexcept;
    long long LastUndoNodeID() noexcept;

    /// Null when there is none.
    CUndoAtom* GetUndoNodeByID(long long nodeID) noexcept;

protected:
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
    CUndoAtom* performing; ///< the atom whose `Perform` runs; null for none or when it is removed
};

/// While it lives, what is recorded goes into one undo set.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CUndoSetFreezer {
public:
    /// Begins a set of this name, unless the name is null, and freezes it; within another guard,
    /// the outer one's set stays. Nothing for a null manager, which otherwise must outlive this.
    CUndoSetFreezer(CUndoMgr* manager, const char* name) noexcept;
    CUndoSetFreezer(const CUndoSetFreezer&) = delete;
    CUndoSetFreezer& operator=(const CUndoSetFreezer&) = delete;
    /// Takes the set back, if this began it, nothing was recorded and nothing else freezes it.
    ~CUndoSetFreezer();

private:
    friend struct vtr::Internals<CUndoSetFreezer>;

    CUndoMgr* manager;
    bool advanced; ///< this began a set
};

#endif
