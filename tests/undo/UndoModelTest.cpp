#include "utilities/undo/UndoMgr.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

// A document edited at random through the manager, beside a plain list of what it looked like.

namespace {

using Document = std::vector<int>;
using Call = std::pair<long long, bool>; ///< node ID, redo

enum class Kind { add, change, remove };

struct Log {
    std::vector<Call> performed;
    std::vector<long long> deleted; ///< node IDs
    std::vector<int> statuses;

    bool operator==(const Log& other) const {
        return performed == other.performed && deleted == other.deleted &&
               statuses == other.statuses;
    }
};

struct Host {
    Document document;
    Log log;
    bool torn = false; ///< changes are missing from the history: the others no longer fit
};

class Edit : public CUndoAtom {
public:
    Edit(Host& edited, Kind done, std::size_t index, int value)
        : host(edited), kind(done), place(index), now(value),
          before(kind == Kind::add ? 0 : host.document[place]) {}
    Edit(const Edit&) = default;
    Edit& operator=(const Edit&) = delete;
    ~Edit() override { host.log.deleted.push_back(nodeID); }

    CUndoAtom* Clone() override { return new Edit(*this); }

    void Perform(bool redo) override {
        host.log.performed.emplace_back(nodeID, redo);
        if (!host.torn)
            Apply(redo);
    }

    void Apply(bool redo) {
        const auto at = host.document.begin() + static_cast<std::ptrdiff_t>(place);
        if (kind == Kind::change)
            *at = redo ? now : before;
        else if ((kind == Kind::add) == redo)
            host.document.insert(at, kind == Kind::add ? now : before);
        else
            host.document.erase(at);
    }

    void GetDescription(char* buffer, unsigned size) override {
        std::snprintf(buffer, size, "%lld", nodeID);
    }

private:
    Host& host;
    Kind kind;
    std::size_t place;
    int now;
    int before;
};

/// The rules, said plainly.
class Model {
public:
    struct Entry {
        long long id;
        long long set;
        Document after;
    };

    explicit Model(int most) : maximum(most) {}

    int Last() const { return static_cast<int>(entries.size()) - 1; }
    bool Has(int i) const { return i >= 0 && i <= Last(); }
    const Entry& At(int i) const { return entries[static_cast<std::size_t>(i)]; }

    void Status(int value, bool always = false) {
        if (dirty != value || always)
            log.statuses.push_back(value);
        dirty = value;
    }

    void Drop(int i) {
        log.deleted.push_back(At(i).id);
        entries.erase(entries.begin() + i);
    }

    void Add(const Document& after) {
        while (Last() > index)
            Drop(Last());
        entries.push_back({nextID++, set, after});
        hasAtoms = true;
        while (static_cast<int>(entries.size()) > maximum && At(0).set != set) {
            for (const long long oldest = At(0).set; At(0).set == oldest;) {
                base = At(0).after;
                Drop(0);
            }
        }
        index = Last();
        Status(1, entries.size() == 1);
    }

    void Undo() {
        if (!Has(index))
            return;
        const long long undone = At(index).set;
        for (; index >= 0 && At(index).set == undone; --index)
            log.performed.emplace_back(At(index).id, false);
        Status(index != saved ? 1 : 0);
        Status(index != saved && index >= 0 ? 1 : 0);
    }

    void Redo() {
        if (!Has(index + 1))
            return;
        const long long redone = At(index + 1).set;
        for (; Has(index + 1) && At(index + 1).set == redone; ++index)
            log.performed.emplace_back(At(index + 1).id, true);
        Status(index != saved ? 1 : 0);
    }

    bool Next(const std::string& name) {
        if (frozen > 0)
            return false;
        const bool advanced = hasAtoms;
        set += advanced ? 1 : 0;
        hasAtoms = false;
        names[set] = name;
        return advanced;
    }

    bool TakeBackEmptySet() {
        if (frozen > 0 || hasAtoms || set < 2)
            return false;
        names.erase(set--);
        hasAtoms = std::any_of(entries.begin(), entries.end(),
                               [&](const Entry& entry) { return entry.set == set; });
        return true;
    }

    bool DeleteSet(long long unwanted) {
        const std::size_t before = entries.size();
        for (int i = Last(); i >= 0; --i) {
            if (At(i).set == unwanted)
                Drop(i);
        }
        return entries.size() < before;
    }

    void Clear() {
        while (Last() >= 0)
            Drop(Last());
        index = saved = -1;
        names.clear();
        Status(0);
    }

    void CutAfter(int last) {
        index = last;
        set = At(last).set;
        hasAtoms = true;
        while (Last() > last)
            Drop(Last());
    }

    std::string NameAt(int i) const {
        const auto found = Has(i) ? names.find(At(i).set) : names.end();
        return found != names.end() ? found->second : "";
    }

    std::string Newest(int i, int step) const {
        while (step > 0 && Has(i) && Has(i + step) && At(i + step).set == At(i).set)
            i += step;
        return Has(i) ? std::to_string(At(i).id) : "";
    }

    std::vector<Entry> entries;
    Document base;
    Log log;
    std::map<long long, std::string> names;
    int maximum, index = -1, saved = -1, dirty = 0, frozen = 0, disabled = 0;
    long long set = 1, nextID = 1;
    bool hasAtoms = false;
};

class UndoModel : public testing::TestWithParam<int> {
protected:
    UndoModel() {
        manager.SetDirtyStatusCallback(
            [](int dirty, void* told) { static_cast<Host*>(told)->log.statuses.push_back(dirty); },
            &host);
    }

    unsigned Random(std::size_t below) { return static_cast<unsigned>(random() % below); }

    void AddEdit() {
        const Kind kind = host.document.empty() ? Kind::add : static_cast<Kind>(Random(3));
        const std::size_t place = Random(host.document.size() + (kind == Kind::add ? 1 : 0));
        const bool byClone = Random(2) == 0;
        auto edit = std::make_unique<Edit>(host, kind, place, static_cast<int>(Random(100)));
        const bool taken = model.disabled == 0;
        if (taken)
            edit->Apply(true);
        const long long id = byClone ? manager.AddUndoNode(*edit) : manager.AddUndoNode(edit.get());
        ASSERT_EQ(id, taken ? model.nextID : -1);
        if (taken)
            model.Add(host.document);
        if (taken && !byClone)
            static_cast<void>(edit.release());
        else
            model.log.deleted.push_back(0); // never stamped
    }

    void Begin() {
        const std::string name(Random(4), static_cast<char>('a' + Random(26)));
        ASSERT_EQ(manager.NextUndoSet(name.c_str()), model.Next(name));
    }

    void Remove() {
        switch (Random(4)) {
        case 0:
            manager.ClearUndoHistory();
            model.Clear();
            model.base = host.document;
            host.torn = false;
            break;
        case 1:
            if (!model.entries.empty() && !host.torn) {
                // Undone changes above the new end would be lost: only those in effect may be kept.
                const int last = static_cast<int>(Random(model.entries.size()));
                if (last == model.index) {
                    manager.DeleteAllNodesAfterNode(manager.GetUndoNodeByID(model.At(last).id));
                    model.CutAfter(last);
                }
            }
            break;
        case 2: {
            const long long unwanted = model.set - Random(4);
            manager.DeleteUndoEventsByID(unwanted);
            host.torn = model.DeleteSet(unwanted) || host.torn;
            break;
        }
        default:
            ASSERT_EQ(manager.DeleteCurrentUndoSetIfEmpty(), model.TakeBackEmptySet());
        }
    }

    void Step() {
        const unsigned choice = Random(100);
        if (choice < 30) {
            AddEdit();
        } else if (choice < 45) {
            Begin();
        } else if (choice < 65) {
            manager.Undo();
            model.Undo();
        } else if (choice < 80) {
            manager.Redo();
            model.Redo();
        } else if (choice < 85) {
            manager.OnSave();
            model.saved = model.index;
            model.Status(0);
        } else if (choice < 90) {
            const bool freeze = Random(2) == 0;
            freeze ? manager.FreezeUndoSet() : manager.UnfreezeUndoSet();
            model.frozen = std::max(model.frozen + (freeze ? 1 : -1), 0);
        } else if (choice < 94) {
            const bool disable = Random(3) == 0;
            disable ? manager.DisableNewUndos() : manager.EnableNewUndos();
            model.disabled = std::max(model.disabled + (disable ? 1 : -1), 0);
        } else if (choice < 97) {
            model.maximum = static_cast<int>(Random(40));
            manager.SetMaxUndos(model.maximum);
        } else {
            Remove();
        }
    }

    void Check() {
        ASSERT_TRUE(host.log == model.log);
        host.log = model.log = Log();
        ASSERT_EQ(manager.CanUndo() != 0, model.Has(model.index));
        ASSERT_EQ(manager.CanRedo() != 0, model.Has(model.index + 1));
        ASSERT_EQ(manager.Dirty(), model.dirty);
        ASSERT_EQ(manager.LastUndoNodeID(), model.entries.empty() ? 0 : model.entries.back().id);
        char text[32];
        manager.GetCurrentUndoText(text, sizeof text);
        ASSERT_EQ(text, model.Newest(model.index, 0));
        manager.GetCurrentRedoText(text, sizeof text);
        ASSERT_EQ(text, model.Newest(model.index + 1, 1));
        const auto orEmpty = [](const char* name) { return std::string(name ? name : ""); };
        ASSERT_EQ(orEmpty(manager.GetUndoSetName()), model.NameAt(model.index));
        ASSERT_EQ(orEmpty(manager.GetRedoSetName()), model.NameAt(model.index + 1));
        if (!host.torn && model.index <= model.Last()) {
            ASSERT_EQ(host.document, model.index < 0 ? model.base : model.At(model.index).after);
        }
    }

    std::mt19937 random{static_cast<unsigned>(GetParam())};
    Host host;
    Model model{20};
    CUndoMgr manager{20};
};

TEST_P(UndoModel, DoesWhatTheRulesSay) {
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(testing::Message() << "seed " << GetParam() << ", step " << step);
        ASSERT_NO_FATAL_FAILURE(Step());
        ASSERT_NO_FATAL_FAILURE(Check());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoModel, testing::Range(1, 9));

} // namespace
