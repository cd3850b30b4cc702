// Undo sets: their numbers, names and freezing.

#include "utilities/undo/UndoInternals.h"

#include <algorithm>
#include <memory>
#include <new>

using Internals = vtr::Internals<CUndoMgr>;

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
    for (int i = Internals::LastIndex(*this); i >= 0 && !currentSetHasAtoms; --i)
        currentSetHasAtoms = Internals::AtomAt(*this, i)->undoSetID == currentSet;
    return true;
}

unsigned Internals::NameIndex(const CUndoMgr& manager, long long set) {
    const vtr::ConstPointers<SetName> names(manager.setNames);
    const auto place = std::lower_bound(
        names.begin(), names.end(), static_cast<unsigned>(set),
        [](const SetName* record, unsigned wanted) { return record->set < wanted; });
    return static_cast<unsigned>(place - names.begin());
}

Internals::SetName* Internals::NameOf(const CUndoMgr& manager, long long set) {
    SetName* record = manager.setNames.At(NameIndex(manager, set));
    return record != nullptr && record->set == static_cast<unsigned>(set) ? record : nullptr;
}

Internals::SetName* Internals::MakeNameOfCurrentSet(CUndoMgr& manager) {
    SetName* existing = NameOf(manager, manager.currentSet);
    if (existing != nullptr)
        return existing;
    std::unique_ptr<SetName> record(
        new (std::nothrow) SetName{static_cast<unsigned>(manager.currentSet), nullptr});
    if (record == nullptr ||
        !Names(manager).Insert(NameIndex(manager, manager.currentSet), record.get()))
        return nullptr;
    return record.release();
}

void CUndoMgr::SetUndoSetName(long long set, const char* name, bool) noexcept {
    if (UndoSetsFrozen())
        return;
    SetName* record = Internals::NameOf(*this, set);
    if (record == nullptr)
        record = Internals::MakeNameOfCurrentSet(*this);
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
    const SetName* record = Internals::NameOf(*this, set);
    return record != nullptr ? record->name.get() : nullptr;
}

const char* CUndoMgr::GetUndoSetName() const noexcept {
    const CUndoAtom* atom = Internals::AtomAt(*this, currentIndex);
    return atom != nullptr ? GetUndoSetName(static_cast<int>(atom->undoSetID)) : nullptr;
}

const char* CUndoMgr::GetRedoSetName() const noexcept {
    const CUndoAtom* atom = Internals::AtomAt(*this, currentIndex + 1);
    return atom != nullptr ? GetUndoSetName(static_cast<int>(atom->undoSetID)) : nullptr;
}

void CUndoMgr::ClearUndoSetNames() noexcept {
    Internals::Names(*this).Clear([](const SetName* record) { delete record; });
}

void CUndoMgr::DeleteUndoSetNameInfo(long long set) noexcept {
    if (Internals::NameOf(*this, set) != nullptr)
        delete Internals::Names(*this).Remove(Internals::NameIndex(*this, set));
}

void Internals::ForgetNames(CUndoMgr& manager) {
    const CUndoAtom* newest = AtomAt(manager, LastIndex(manager));
    unsigned kept = 0;
    if (newest != nullptr)
        kept = NameIndex(manager, newest->undoSetID) +
               (NameOf(manager, newest->undoSetID) != nullptr ? 1 : 0);
    ForgetNames(manager, kept, Names(manager).Count());
    if (newest != nullptr)
        ForgetNames(manager, 0, NameIndex(manager, AtomAt(manager, 0)->undoSetID));
}

void Internals::ForgetNames(CUndoMgr& manager, unsigned first, unsigned last) {
    const auto destroy = [](const SetName* record) { delete record; };
    const unsigned own = NameIndex(manager, manager.currentSet);
    if (NameOf(manager, manager.currentSet) != nullptr && own >= first && own < last) {
        Names(manager).RemoveRange(own + 1, last, destroy);
        last = own;
    }
    Names(manager).RemoveRange(first, last, destroy);
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
struct vtr::Internals<CUndoSetFreezer> {
    static_assert(sizeof(CUndoSetFreezer) == vtr::ByPointer(16, 8));
    VTR_FIELD_AT(CUndoSetFreezer, manager, 0);
    VTR_FIELD_AT(CUndoSetFreezer, advanced, 8, 4);
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
