#include "gallery/app/DocumentHistory.h"

#include <cstdio>

namespace gallery {

void DocumentChange::Perform(bool redo) {
    Apply(redo);
    history->state = redo ? after : before;
}

void DocumentChange::GetDescription(char* buffer, unsigned int size) {
    std::snprintf(buffer, size, "%s", name);
}

bool DocumentHistory::Do(const char* name, std::unique_ptr<DocumentChange> change) {
    if (!change->Apply(/*make=*/true))
        return false;
    change->history = this;
    change->name = name;
    change->before = state;
    change->after = ++newest;
    manager.NextUndoSet(name);
    if (manager.AddUndoNode(change.get()) < 0) {
        change->Apply(/*make=*/false);
        return false;
    }
    state = change.release()->after;
    return true;
}

void DocumentHistory::Saved() {
    saved = state;
    manager.OnSave();
}

void DocumentHistory::Clear() {
    manager.ClearUndoHistory();
    saved = state = ++newest;
}

} // namespace gallery
