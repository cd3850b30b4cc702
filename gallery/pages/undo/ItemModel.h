#ifndef VTRUTILS_GALLERY_PAGES_UNDO_ITEMMODEL_H
#define VTRUTILS_GALLERY_PAGES_UNDO_ITEMMODEL_H

#include "utilities/undo/UndoMgr.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace gallery {

/// The list of texts that the page "Undo" edits, with its history. Names of undo sets and
/// descriptions of changes are keys of texts. One thread at a time.
class ItemModel {
public:
    using Items = std::vector<std::wstring>;

    /// `newDirtyChanged` is called when the list becomes dirty or clean.
    explicit ItemModel(std::function<void()> newDirtyChanged);

    const Items& All() const { return items; }
    CUndoMgr& History() { return history; }
    const CUndoMgr& History() const { return history; }

    // Each is a set of its own, or part of the group. False when memory runs out. Requires: the
    // place is there; `Add` also takes the one after the last.
    bool Add(int place, const std::wstring& text);
    bool Change(int place, const std::wstring& text);
    bool Remove(int place);

    /// Other items, without a history; they count as saved.
    void Reset(const Items& newItems);

    // What the items were when `MarkSaved` was called last, whatever the history says: it compares
    // places, which several states can share.
    void MarkSaved();
    bool DiffersFromSaved() const { return items != saved; }

    /// While on, all changes go into one set, which is dropped if there are none.
    void Group(bool on);

    void UndoAll();
    void RedoAll();

private:
    class Edit;

    bool Do(std::unique_ptr<Edit> edit);

    std::function<void()> dirtyChanged;
    Items items;
    Items saved;
    CUndoMgr history;
    std::unique_ptr<CUndoSetFreezer> group;
};

} // namespace gallery

#endif
