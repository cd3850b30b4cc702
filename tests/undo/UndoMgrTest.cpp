#include "utilities/undo/UndoMgr.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

/// What atoms and callbacks tell; the callback for menus and titles has no data of its own.
std::string told;

class Teller : public CUndoAtom {
public:
    ~Teller() override { told += " deleted " + std::to_string(nodeID); }
    CUndoAtom* Clone() override { return new Teller(*this); }
    void Perform(bool redo) override {
        told += (redo ? " redo " : " undo ") + std::to_string(nodeID);
    }
    void GetDescription(char* buffer, unsigned size) override {
        std::snprintf(buffer, size, "%lld", nodeID);
    }
};

/// The rules, said plainly, under the names that the manager has for them.
struct Model {
    struct Entry {
        long long id;
        long long set;
    };

    int Last() const { return static_cast<int>(entries.size()) - 1; }
    bool Has(int i) const { return i >= 0 && i <= Last(); }
    const Entry& At(int i) const { return entries[static_cast<std::size_t>(i)]; }
    bool SameSet(int i, int j) const { return Has(i) && Has(j) && At(i).set == At(j).set; }

    void Tell(int value, bool always) {
        if (dirty != value || always)
            log += " status " + std::to_string(value);
        dirty = value;
        log += " changed";
    }
    void SetDirty(int value) { Tell(value, /*always=*/false); }
    void ForceSetDirty(int value) { Tell(value, /*always=*/true); }
    void OnSave() { saved = index, SetDirty(0); }

    void Drop(int i) {
        log += " deleted " + std::to_string(At(i).id);
        entries.erase(entries.begin() + i);
    }
    void DropAbove(int last) {
        while (Last() > last)
            Drop(Last());
    }
    /// The current set's name stays, and names within the range of what is left.
    void ForgetNames() {
        std::erase_if(names, [&](const auto& named) {
            return named.first != set &&
                   (entries.empty() || named.first < At(0).set || named.first > entries.back().set);
        });
    }

    /// What a clone is for has been done.
    bool Add(bool clone) {
        if (disabled > 0)
            return false;
        if (Last() > index) {
            DropAbove(index);
            ForgetNames();
        }
        entries.push_back({nextID++, set});
        hasAtoms = true;
        while (Last() >= maximum && At(0).set != set) {
            for (const long long oldest = At(0).set; At(0).set == oldest;)
                Drop(0);
            ForgetNames();
        }
        index = Last();
        Tell(1, /*always=*/entries.size() == 1);
        if (clone)
            SetDirty(1);
        return true;
    }

    void Undo() {
        const int first = index;
        for (; Has(index) && (index == first || SameSet(index, index + 1)); --index)
            log += " undo " + std::to_string(At(index).id);
        if (index != first) {
            SetDirty(index != saved ? 1 : 0);
            SetDirty(index != saved && index >= 0 ? 1 : 0);
        }
    }
    void Redo() {
        const int first = index;
        for (; Has(index + 1) && (index == first || SameSet(index, index + 1)); ++index)
            log += " redo " + std::to_string(At(index + 1).id);
        if (index != first)
            SetDirty(index != saved ? 1 : 0);
    }

    bool NextUndoSet(const char* name) {
        if (frozen > 0)
            return false;
        const bool advanced = hasAtoms;
        set += advanced ? 1 : 0;
        hasAtoms = false;
        names[set] = name;
        return advanced;
    }
    bool DeleteCurrentUndoSetIfEmpty() {
        if (frozen > 0 || hasAtoms || set < 2)
            return false;
        names.erase(set--);
        hasAtoms = std::ranges::count(entries, set, &Entry::set) > 0;
        return true;
    }
    void FreezeUndoSet() { ++frozen; }
    void UnfreezeUndoSet() { frozen = std::max(frozen - 1, 0); }
    void DisableNewUndos() { ++disabled; }
    void EnableNewUndos() { disabled = std::max(disabled - 1, 0); }
    void SetMaxUndos(int count) { maximum = count; }

    void DeleteUndoEventsByID(long long unwanted) {
        const int before = Last();
        for (int i = Last(); i >= 0; --i) {
            if (At(i).set == unwanted)
                Drop(i);
        }
        log += Last() < before ? " changed" : "";
    }
    void CutAfter(int i) {
        if (!Has(i))
            return;
        index = i;
        set = At(i).set;
        hasAtoms = true;
        DropAbove(i);
        log += " changed";
    }
    void ClearUndoHistory() {
        DropAbove(-1);
        index = saved = -1;
        names.clear();
        SetDirty(0);
    }

    std::string NameOf(long long wanted) const {
        const auto found = names.find(wanted);
        return found != names.end() ? found->second : "";
    }
    std::string NameAt(int i) const { return Has(i) ? NameOf(At(i).set) : ""; }
    std::string IDAt(int i) const { return Has(i) ? std::to_string(At(i).id) : ""; }

    std::vector<Entry> entries;
    std::string log;
    std::map<long long, std::string> names;
    int maximum = 20, index = -1, saved = -1, dirty = 0, frozen = 0, disabled = 0;
    long long set = 1, nextID = 1;
    bool hasAtoms = false;
};

std::string OrEmpty(const char* name) {
    return name != nullptr ? name : "";
}

/// One call, of the manager and of its model.
template <class Undos>
bool Call(Undos& undos, int choice, long long set, int value) {
    static constexpr const char* names[] = {"", "Cut", "Paste", "Type"};
    if (choice < 15)
        return undos.NextUndoSet(names[value]);
    if (choice < 18)
        return undos.DeleteCurrentUndoSetIfEmpty();
    choice < 38   ? undos.Undo()
    : choice < 52 ? undos.Redo()
    : choice < 56 ? undos.OnSave()
    : choice < 57 ? undos.ForceSetDirty(1)
    : choice < 58 ? undos.SetDirty(value)
    : choice < 60 ? value > 0 ? undos.UnfreezeUndoSet() : undos.FreezeUndoSet()
    : choice < 63 ? value > 0 ? undos.EnableNewUndos() : undos.DisableNewUndos()
    : choice < 65 ? undos.SetMaxUndos(value * 13 - 1)
    : choice < 66 ? undos.ClearUndoHistory()
                  : undos.DeleteUndoEventsByID(set);
    return true;
}

/// A manager and its model, to which the same is done.
class Pair {
public:
    Pair() {
        manager.SetDirtyStatusCallback(
            [](int dirty, void* text) {
                *static_cast<std::string*>(text) += " status " + std::to_string(dirty);
            },
            &told);
        manager.SetSetDirtyCallback([] { told += " changed"; });
    }

    void Step(Dice& dice) {
        told.clear();
        model.log.clear();
        const int choice = dice.Below(105), value = dice.Below(4);
        const long long set = model.set - dice.Below(4);
        if (choice < 68)
            ASSERT_EQ(Call(manager, choice, set, value), Call(model, choice, set, value));
        else if (choice < 98)
            Add(/*clone=*/value < 2);
        else if (choice < 103)
            AddFrozen(value);
        else if (choice < 104)
            CutAfter(model.Last() - value);
        else
            Rename(set);
    }

    void Check() {
        ASSERT_EQ(told, model.log);
        ASSERT_EQ(manager.CanUndo() != 0, model.Has(model.index));
        ASSERT_EQ(manager.CanRedo() != 0, model.Has(model.index + 1));
        ASSERT_EQ(manager.CanAddUndoNodes() != 0, model.disabled == 0);
        ASSERT_EQ(manager.Dirty(), model.dirty);
        ASSERT_EQ(manager.LastUndoNodeID(), model.entries.empty() ? 0 : model.entries.back().id);
        char text[32];
        manager.GetCurrentUndoText(text, sizeof text);
        ASSERT_EQ(text, model.IDAt(model.index));
        int newest = model.index + 1;
        while (model.SameSet(newest, newest + 1))
            ++newest;
        manager.GetCurrentRedoText(text, sizeof text);
        ASSERT_EQ(text, model.IDAt(newest));
        ASSERT_EQ(OrEmpty(manager.GetUndoSetName()), model.NameAt(model.index));
        ASSERT_EQ(OrEmpty(manager.GetRedoSetName()), model.NameAt(model.index + 1));
        for (long long set = std::max(model.set - 40, 0LL); set <= model.set + 40; ++set)
            ASSERT_EQ(OrEmpty(manager.GetUndoSetName(static_cast<int>(set))), model.NameOf(set));
    }

private:
    void Add(bool clone) {
        auto atom = std::make_unique<Teller>();
        const long long id = clone ? manager.AddUndoNode(*atom) : manager.AddUndoNode(atom.get());
        const bool taken = model.Add(clone);
        ASSERT_EQ(id, taken ? model.nextID - 1 : -1);
        if (taken && !clone)
            static_cast<void>(atom.release());
        else
            model.log += " deleted 0"; // never stamped
    }

    /// An action of a host.
    void AddFrozen(int atoms) {
        const bool advances = model.NextUndoSet("frozen");
        ++model.frozen;
        {
            const CUndoSetFreezer freezer(&manager, "frozen");
            for (; atoms > 0; --atoms)
                Add(/*clone=*/atoms == 1);
        }
        if (--model.frozen == 0 && advances)
            model.DeleteCurrentUndoSetIfEmpty();
    }

    void CutAfter(int place) {
        const long long id = model.Has(place) ? model.At(place).id : -1;
        manager.DeleteAllNodesAfterNode(manager.GetUndoNodeByID(id));
        model.CutAfter(place);
    }

    /// To a part of the present name; an empty name is null.
    void Rename(long long set) {
        const char* const name = manager.GetUndoSetName(static_cast<int>(set));
        const std::string newName = name != nullptr ? name + 1 : "any";
        manager.SetUndoSetName(set, name != nullptr ? name + 1 : "any");
        if (model.frozen == 0)
            model.names[model.names.contains(set) ? set : model.set] = newName;
    }

    Model model;
    CUndoMgr manager{20};
};

TEST(UndoMgr, DoesWhatTheRulesSay) {
    for (unsigned seed = 1; seed <= 8; ++seed) {
        Pair pair;
        EachRound(seed, 3000, [&](Dice& dice, int) {
            ASSERT_NO_FATAL_FAILURE(pair.Step(dice));
            ASSERT_NO_FATAL_FAILURE(pair.Check());
        });
    }
    CUndoMgr manager(1);
    const CUndoSetFreezer none(nullptr, "none");
    EXPECT_EQ(manager.AddUndoNode(static_cast<CUndoAtom*>(nullptr)), -1);
}

/// A history whose atoms and callbacks call it at random, from everywhere.
class Zoo {
public:
    explicit Zoo(unsigned seed) : dice(seed) {
        manager->SetDirtyStatusCallback([](int, void* zoo) { static_cast<Zoo*>(zoo)->Call(); },
                                        this);
        called = this;
        manager->SetSetDirtyCallback([] { called->Call(); });
    }
    ~Zoo() {
        budget = 20;
        delete manager;
        EXPECT_TRUE(living.empty()) << "not deleted";
    }

    void Step() {
        budget = 20;
        Act();
        budget = 0;
        for (CUndoAtom* atom : living)
            ASSERT_TRUE(manager->AtomInList(atom)) << "neither kept nor deleted";
        ASSERT_TRUE(living.empty() || living.contains(manager->GetLastNode()));
    }

private:
    struct Wild : CUndoAtom {
        explicit Wild(Zoo& owner) : zoo(owner) { zoo.living.insert(this); }
        ~Wild() override {
            EXPECT_EQ(zoo.living.erase(this), 1u);
            zoo.Call();
        }
        CUndoAtom* Clone() override { return zoo.dice.Below(4) == 0 ? nullptr : new Wild(zoo); }
        void Perform(bool) override {
            zoo.Call();
            EXPECT_TRUE(zoo.living.contains(this)) << "deleted while it runs";
        }
        void GetDescription(char*, unsigned) override {}
        Zoo& zoo;
    };

    CUndoAtom* Any() { return manager->GetUndoNodeByID(manager->LastUndoNodeID() - dice.Below(8)); }

    void Call() {
        if (budget > 0 && dice.Below(2) == 0)
            Act();
    }

    void Add() {
        auto atom = std::make_unique<Wild>(*this);
        if (manager->AddUndoNode(atom.get()) >= 0)
            static_cast<void>(atom.release());
    }

    void Act() {
        --budget;
        const int choice = dice.Below(110);
        const CUndoAtom* any = Any();
        if (choice < 68) {
            ::Call(*manager, choice, any != nullptr ? any->undoSetID : 1, dice.Below(4));
        } else if (choice < 94) {
            Add();
        } else if (choice < 102) {
            Wild own(*this);
            manager->AddUndoNode(own);
        } else {
            manager->DeleteAllNodesAfterNode(Any());
        }
    }

    Dice dice;
    int budget = 0;
    std::set<CUndoAtom*> living;
    CUndoMgr* manager = new CUndoMgr(5);
    static inline Zoo* called;
};

TEST(UndoMgr, IsSafeAgainstAtomsAndCallbacksThatCallIt) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Zoo zoo(seed);
        EachRound(seed, 100, [&](Dice&, int) { zoo.Step(); });
    }
}

} // namespace
