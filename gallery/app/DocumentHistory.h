#ifndef VTRUTILS_GALLERY_APP_DOCUMENTHISTORY_H
#define VTRUTILS_GALLERY_APP_DOCUMENTHISTORY_H

#include "utilities/undo/UndoMgr.h"

#include <memory>

namespace gallery {

class DocumentHistory;

/// One change of a document that can be taken back.
class DocumentChange : public CUndoAtom {
public:
    /// Makes the change, again or for the first time, or takes it back. False, with all as it was,
    /// when it cannot be made for the first time.
    virtual bool Apply(bool make) = 0;

    void Perform(bool redo) final;
    /// The history gets every change itself, so that no copies are needed.
    CUndoAtom* Clone() final { return nullptr; }
    void GetDescription(char* buffer, unsigned int size) final;

private:
    friend class DocumentHistory;
    DocumentHistory* history = nullptr;
    const char* name = "";
    long long before = 0; ///< the states of the document
    long long after = 0;
};

/// What was done to a document, in the library's undo manager, and whether that is saved. The
/// manager compares places in the history, which several states can share: a document that may be
/// lost is asked for its very state. One thread at a time.
class DocumentHistory {
public:
    /// Makes the change and keeps it. `name` is the key of what it is called, and is not copied.
    /// False, with nothing done, when it cannot be made or memory runs out.
    bool Do(const char* name, std::unique_ptr<DocumentChange> change);

    bool CanUndo() const { return manager.CanUndo() != 0; }
    bool CanRedo() const { return manager.CanRedo() != 0; }
    /// The key of the name of what would be undone or redone; "" for nothing.
    const char* UndoName() const { return NotNull(manager.GetUndoSetName()); }
    const char* RedoName() const { return NotNull(manager.GetRedoSetName()); }
    void Undo() { manager.Undo(); }
    void Redo() { manager.Redo(); }

    bool Changed() const { return state != saved; }
    void Saved();
    /// For another document, which counts as saved.
    void Clear();

private:
    friend class DocumentChange;

    static constexpr int mostChanges = 1000;
    static const char* NotNull(const char* text) { return text != nullptr ? text : ""; }

    CUndoMgr manager{mostChanges};
    long long state = 0; ///< every one that was ever reached has its own number
    long long saved = 0;
    long long newest = 0;
};

} // namespace gallery

#endif
