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
    for (unsigned i = atoms.Count(); i-- > 0 && !currentSetHasAtoms;)
        currentSetHasAtoms = SetAt(i) == currentSet;
    return true;
}

/// Where the record of the set is, or would be.
unsigned CUndoMgr::NameIndex(unsigned set) const noexcept {
    const auto place = std::lower_bound(
        setNames.begin(), setNames.end(), set,
        [](const SetName* record, unsigned wanted) { return record->set < wanted; });
    return static_cast<unsigned>(place - setNames.begin());
}

CUndoMgr::SetName* CUndoMgr::NameOf(long long set) const noexcept {
    SetName* record = setNames.At(NameIndex(static_cast<unsigned>(set)));
    return record != nullptr && record->set == static_cast<unsigned>(set) ? record : nullptr;
}

/// Null when memory runs out.
CUndoMgr::SetName* CUndoMgr::MakeNameOfCurrentSet() noexcept {
    SetName* existing = NameOf(currentSet);
    if (existing != nullptr)
        return existing;
    const unsigned set = static_cast<unsigned>(currentSet);
    std::unique_ptr<SetName> record(new (std::nothrow) SetName{set, nullptr});
    if (record == nullptr || !setNames.Insert(NameIndex(set), record.get()))
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
        delete setNames.Remove(NameIndex(static_cast<unsigned>(set)));
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
