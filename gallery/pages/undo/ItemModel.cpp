#include "gallery/pages/undo/ItemModel.h"

#include "common/Require.h"

#include <cstdio>
#include <utility>

namespace gallery {

namespace {

constexpr int mostChanges = 1000;

} // namespace

/// The text at a place, before and after; null where there is none.
class ItemModel::Edit final : public CUndoAtom {
public:
    using Item = std::unique_ptr<std::wstring>;

    Edit(Items& edited, int index, Item oldText, Item newText)
        : items(edited), place(index), before(std::move(oldText)), after(std::move(newText)) {}

    // The model adds its changes themselves, so that no copies are needed.
    CUndoAtom* Clone() override { return nullptr; }

    void Perform(bool redo) override {
        const Item& from = redo ? before : after;
        const Item& to = redo ? after : before;
        const auto at = items.begin() + place;
        if (from == nullptr)
            items.insert(at, *to);
        else if (to == nullptr)
            items.erase(at);
        else
            *at = *to;
    }

    void GetDescription(char* buffer, unsigned int size) override {
        std::snprintf(buffer, size, "%s", Name());
    }

    const char* Name() const {
        if (before == nullptr)
            return "SetAdd";
        return after == nullptr ? "SetRemove" : "SetChange";
    }

private:
    Items& items;
    int place;
    Item before;
    Item after;
};

ItemModel::ItemModel(std::function<void()> newDirtyChanged)
    : dirtyChanged(std::move(newDirtyChanged)), history(mostChanges) {
    history.SetDirtyStatusCallback(
        [](int, void* self) { static_cast<ItemModel*>(self)->dirtyChanged(); }, this);
}

bool ItemModel::Do(std::unique_ptr<Edit> edit) {
    history.NextUndoSet(edit->Name());
    Edit& added = *edit;
    if (history.AddUndoNode(edit.get()) < 0)
        return false;
    static_cast<void>(edit.release());
    added.Perform(/*redo=*/true);
    return true;
}

bool ItemModel::Add(int place, const std::wstring& text) {
    VTR_REQUIRE(place >= 0 && static_cast<std::size_t>(place) <= items.size());
    return Do(std::make_unique<Edit>(items, place, nullptr, std::make_unique<std::wstring>(text)));
}

bool ItemModel::Change(int place, const std::wstring& text) {
    VTR_REQUIRE(place >= 0 && static_cast<std::size_t>(place) < items.size());
    const std::wstring& old = items[static_cast<std::size_t>(place)];
    return Do(std::make_unique<Edit>(items, place, std::make_unique<std::wstring>(old),
                                     std::make_unique<std::wstring>(text)));
}

bool ItemModel::Remove(int place) {
    VTR_REQUIRE(place >= 0 && static_cast<std::size_t>(place) < items.size());
    const std::wstring& old = items[static_cast<std::size_t>(place)];
    return Do(std::make_unique<Edit>(items, place, std::make_unique<std::wstring>(old), nullptr));
}

void ItemModel::Reset(const Items& newItems) {
    group.reset();
    history.ClearUndoHistory();
    items = newItems;
    MarkSaved();
}

void ItemModel::MarkSaved() {
    saved = items;
    history.OnSave();
}

void ItemModel::Group(bool on) {
    group.reset();
    if (on)
        group = std::make_unique<CUndoSetFreezer>(&history, "SetGroup");
}

void ItemModel::UndoAll() {
    while (history.CanUndo() != 0)
        history.Undo();
}

void ItemModel::RedoAll() {
    while (history.CanRedo() != 0)
        history.Redo();
}

} // namespace gallery
