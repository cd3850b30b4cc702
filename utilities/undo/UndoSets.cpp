// Undo sets: their numbers, names and freezing.

#include "utilities/base/OwnedText.h"
#include "utilities/undo/UndoMgr.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

struct CUndoMgr::SetName {
    unsigned set; ///< the low 32 bits of the set's number
    vtr::OwnedText name;
};

bool CUndoMgr::NextUndoSet() noexcept {
    if (UndoSetsFrozen() || !currentSetHasAtoms)
        return false;
    ++currentSet;
    currentSetHasAtoms = false;
    return true;
}

bool CUndoMgr::NextUndoSet(const char* name) noexcept {
    if (UndoSetsFrozen())
        return false;
    const bool advanced = NextUndoSet();
    SetUndoSetName(currentSet, name, /*sort=*/false);
    return advanced;
}

bool CUndoMgr::DeleteCurrentUndoSetIfEmpty() noexcept {
    if (UndoSetsFrozen() || currentSetHasAtoms || currentSet < 2)
        return false;
    DeleteUndoSetNameInfo(currentSet);
    --currentSet;
    for (int i = LastIndex(); i >= 0 && !currentSetHasAtoms; --i)
        currentSetHasAtoms = AtomAt(i)->undoSetID == currentSet;
    return true;
}

/// Where the record of the set is, or would be.
unsigned CUndoMgr::NameIndex(long long set) const noexcept {
    const auto place = std::lower_bound(
        setNames.begin(), setNames.end(), static_cast<unsigned>(set),
        [](const SetName* record, unsigned wanted) { return record->set < wanted; });
    return static_cast<unsigned>(place - setNames.begin());
}

CUndoMgr::SetName* CUndoMgr::NameOf(long long set) const noexcept {
    SetName* record = setNames.At(NameIndex(set));
    return record != nullptr && record->set == static_cast<unsigned>(set) ? record : nullptr;
}

/// Null when memory runs out.
CUndoMgr::SetName* CUndoMgr::MakeNameOfCurrentSet() noexcept {
    SetName* existing = NameOf(currentSet);
    if (existing != nullptr)
        return existing;
    std::unique_ptr<SetName> record(new (std::nothrow)
                                        SetName{static_cast<unsigned>(currentSet), nullptr});
    if (record == nullptr || !setNames.Insert(NameIndex(currentSet), record.get()))
        return nullptr;
    return record.release();
}

void CUndoMgr::SetUndoSetName(long long set, const char* name, bool) noexcept {
    if (UndoSetsFrozen())
        return;
    SetName* record = NameOf(set);
    if (record == nullptr)
        record = MakeNameOfCurrentSet();
    if (record != nullptr)
        record->name = vtr::CopyText(name);
}

void CUndoMgr::SetUndoSetName(long long set, const char* name) noexcept {
    SetUndoSetName(set, name, /*sort=*/true);
}

void CUndoMgr::SetCurrentUndoSetName(const char* name) noexcept {
    SetUndoSetName(currentSet, name, /*sort=*/false);
}

const char* CUndoMgr::GetUndoSetName(int set) const noexcept {
    const SetName* record = NameOf(set);
    return record != nullptr ? record->name.get() : nullptr;
}

const char* CUndoMgr::GetUndoSetName() const noexcept {
    const CUndoAtom* atom = AtomAt(currentIndex);
    return atom != nullptr ? GetUndoSetName(static_cast<int>(atom->undoSetID)) : nullptr;
}

const char* CUndoMgr::GetRedoSetName() const noexcept {
    const CUndoAtom* atom = AtomAt(currentIndex + 1);
    return atom != nullptr ? GetUndoSetName(static_cast<int>(atom->undoSetID)) : nullptr;
}

void CUndoMgr::ClearUndoSetNames() noexcept {
    setNames.Clear([](const SetName* record) { delete record; });
}

void CUndoMgr::DeleteUndoSetNameInfo(long long set) noexcept {
    if (NameOf(set) != nullptr)
        delete setNames.Remove(NameIndex(set));
}

/// Deletes the records of all sets before the oldest and after the newest atom.
void CUndoMgr::ForgetNames() noexcept {
    const CUndoAtom* newest = AtomAt(LastIndex());
    unsigned kept = 0;
    if (newest != nullptr)
        kept = NameIndex(newest->undoSetID) + (NameOf(newest->undoSetID) != nullptr ? 1 : 0);
    ForgetNames(kept, setNames.Count());
    if (newest != nullptr)
        ForgetNames(0, NameIndex(AtomAt(0)->undoSetID));
}

/// From `first` to before `last`. That of the current set stays: it may have been made before the
/// set's first atom.
void CUndoMgr::ForgetNames(unsigned first, unsigned last) noexcept {
    const auto destroy = [](const SetName* record) { delete record; };
    const unsigned own = NameIndex(currentSet);
    if (NameOf(currentSet) != nullptr && own >= first && own < last) {
        setNames.RemoveRange(own + 1, last, destroy);
        last = own;
    }
    setNames.RemoveRange(first, last, destroy);
}

void CUndoMgr::FreezeUndoSet() noexcept {
    ++freezeCount;
}

void CUndoMgr::UnfreezeUndoSet() noexcept {
    if (freezeCount > 0)
        --freezeCount;
}

bool CUndoMgr::UndoSetsFrozen() const noexcept {
    return freezeCount > 0;
}

int CUndoMgr::GetUndoSetFreezeCount() const noexcept {
    return freezeCount;
}

template <>
struct vtr::Layout<CUndoSetFreezer> {
    static_assert(sizeof(CUndoSetFreezer) == 16 && offsetof(CUndoSetFreezer, manager) == 0);
    static_assert(offsetof(CUndoSetFreezer, advanced) == 8);
};

CUndoSetFreezer::CUndoSetFreezer(CUndoMgr* guarded, const char* name) noexcept
    : manager(guarded), advanced(false) {
    if (manager == nullptr)
        return;
    advanced = name != nullptr && manager->NextUndoSet(name);
    manager->FreezeUndoSet();
}

CUndoSetFreezer::~CUndoSetFreezer() {
    if (manager == nullptr)
        return;
    manager->UnfreezeUndoSet();
    if (advanced && !manager->UndoSetsFrozen())
        manager->DeleteCurrentUndoSetIfEmpty();
}
