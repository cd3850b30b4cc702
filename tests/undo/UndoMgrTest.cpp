#include "utilities/undo/UndoMgr.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Dice.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

/// What atoms and callbacks tell; the callback for menus and titles has no data of its own.
std::string told;

struct Host {
    std::string document;
    bool torn = false; ///< changes are missing from the history: the others no longer fit
    int living = 0;
};

/// One text put in the place of another: adds, changes or removes.
class Edit : public CUndoAtom {
public:
    Edit(Host& edited, std::size_t at, std::size_t removed, std::string added)
        : host(edited), place(at), before(host.document.substr(place, removed)),
          after(std::move(added)) {
        ++host.living;
    }
    Edit(const Edit& other)
        : CUndoAtom(other), host(other.host), place(other.place), before(other.before),
          after(other.after) {
        ++host.living;
    }
    Edit& operator=(const Edit&) = delete;
    ~Edit() override {
        told += " deleted " + std::to_string(nodeID);
        --host.living;
    }

    CUndoAtom* Clone() override { return new Edit(*this); }

    void Perform(bool redo) override {
        told += (redo ? " redo " : " undo ") + std::to_string(nodeID);
        if (!host.torn)
            host.document.replace(place, (redo ? before : after).size(), redo ? after : before);
    }

    void GetDescription(char* buffer, unsigned size) override {
        std::snprintf(buffer, size, "%lld", nodeID);
    }

private:
    Host& host;
    std::size_t place;
    std::string before;
    std::string after;
};

struct History : Host {
    /// As many sets as numbers, each of as many atoms as its number says.
    void AddSets(std::initializer_list<int> sizes) {
        for (const int size : sizes) {
            manager.NextUndoSet();
            for (int i = 0; i < size; ++i)
                manager.AddUndoNode(new Edit(*this, 0, 0, ""));
        }
    }

    CUndoMgr manager{100};
};

TEST(UndoMgr, NamesSets) {
    History h;
    CUndoMgr& manager = h.manager;
    EXPECT_EQ(manager.AddUndoNode(static_cast<CUndoAtom*>(nullptr)), -1);
    EXPECT_FALSE(manager.NextUndoSet("Cut"));
    h.AddSets({1, 1, 1});
    manager.SetUndoSetName(1, manager.GetUndoSetName(1) + 1);
    EXPECT_STREQ(manager.GetUndoSetName(1), "ut") << "a part of the old name";
    manager.SetUndoSetName(7, "x");
    EXPECT_STREQ(manager.GetUndoSetName(3), "x") << "the current set";
    manager.DeleteAllNodesAfterNode(manager.GetUndoNodeByID(1));
    EXPECT_TRUE(manager.NextUndoSet("two"));
    EXPECT_STREQ(manager.GetUndoSetName(3), "x") << "set numbers went back";
}

TEST(UndoMgr, TellsSetsApartByTheLowHalfOfTheirNumbers) {
    History h;
    h.AddSets({1, 1, 1});
    h.manager.GetUndoNodeByID(2)->undoSetID = 0x100000003;
    told.clear();
    h.manager.Undo();
    h.manager.Redo();
    EXPECT_EQ(told, " undo 3 undo 2 redo 2 redo 3");
}

TEST(UndoSetFreezer, KeepsOneSetAndTakesAnEmptyOneBack) {
    History h;
    CUndoMgr& manager = h.manager;
    const CUndoSetFreezer none(nullptr, "none");
    h.AddSets({1});
    {
        const CUndoSetFreezer outer(&manager, "outer");
        { const CUndoSetFreezer inner(&manager, "inner"); }
        manager.SetUndoSetName(2, "renamed");
        EXPECT_FALSE(manager.DeleteCurrentUndoSetIfEmpty());
        EXPECT_STREQ(manager.GetUndoSetName(2), "outer") << "neither renamed nor deleted";
    }
    EXPECT_EQ(manager.GetUndoSetName(2), nullptr);
    EXPECT_TRUE(manager.NextUndoSet()) << "set 1 has its atom";
    {
        const CUndoSetFreezer guard(&manager, nullptr);
        h.AddSets({1, 1});
    }
    told.clear();
    manager.Undo();
    EXPECT_EQ(told, " undo 3 undo 2") << "both in one set";
}

/// A history whose atoms and callbacks call it at random, from everywhere.
class Zoo {
public:
    enum { addSet = 7, undo = 10, cut = 12, clear = 14 }; ///< of the table in `Act`

    explicit Zoo(unsigned seed) : dice(seed), onlyAdds(seed % 3 == 0) {
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

    /// Every destructor does the same, without end if the manager has none. Returns how often.
    int DeleteManyThatAll(int act) {
        manager->SetDirtyStatusCallback(nullptr, nullptr);
        manager->SetSetDirtyCallback(nullptr);
        manager->SetMaxUndos(20'000);
        for (int i = 0; i < 20'000; ++i)
            manager->NextUndoSet(), Add();
        always = act;
        manager->SetMaxUndos(1);
        budget = 1'000'000;
        manager->NextUndoSet(), Add();
        return 1'000'000 - std::exchange(budget, 0);
    }

    void Step() {
        budget = 20;
        Act();
        budget = 0;
        for (CUndoAtom* atom : living)
            ASSERT_TRUE(manager->AtomInList(atom)) << "neither kept nor deleted";
        ASSERT_TRUE(living.empty() || living.contains(manager->GetLastNode()));
        ASSERT_TRUE(manager->CanUndo() == 0 || manager->CanAddUndoNodes() != 0);
        for (long long id = manager->LastUndoNodeID(); onlyAdds && !living.empty(); --id) {
            ASSERT_EQ(manager->GetUndoNodeByID(id) != nullptr,
                      manager->LastUndoNodeID() - id < static_cast<long long>(living.size()))
                << "lost from the middle";
            if (manager->GetUndoNodeByID(id) == nullptr)
                break;
        }
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
            EXPECT_LT(zoo.always, 0) << "history was walked while atoms were deleted";
            zoo.Call();
            EXPECT_TRUE(zoo.living.contains(this)) << "deleted while it runs";
        }
        void GetDescription(char*, unsigned) override {}
        Zoo& zoo;
    };

    CUndoAtom* Any() {
        const auto id = manager->LastUndoNodeID() - dice.Below(8);
        return manager->GetUndoNodeByID(id);
    }

    void Call() {
        if (budget > 0 && (always >= 0 || dice.Below(2) == 0))
            Act();
    }

    void Add() {
        auto atom = std::make_unique<Wild>(*this);
        if (manager->AddUndoNode(atom.get()) >= 0)
            static_cast<void>(atom.release());
    }

    void Act() {
        using Kind = void (*)(Zoo&, CUndoMgr&);
        static constexpr Kind acts[] = {
            [](Zoo& zoo, CUndoMgr& m) { m.SetMaxUndos(zoo.dice.Below(12)); },
            [](Zoo&, CUndoMgr& m) { m.UpdateDirtyStatus(); },
            [](Zoo&, CUndoMgr& m) { m.OnSave(); },
            [](Zoo&, CUndoMgr& m) { m.ForceSetDirty(0); },
            [](Zoo&, CUndoMgr& m) { m.EnableNewUndos(); },
            [](Zoo&, CUndoMgr& m) { m.SetCurrentUndoSetName("name"); },
            [](Zoo& zoo, CUndoMgr& m) { CUndoSetFreezer(&m, "set"), zoo.Add(); },
            [](Zoo& zoo, CUndoMgr& m) { m.NextUndoSet(), zoo.Add(); },
            [](Zoo& zoo, CUndoMgr&) { zoo.Add(); },
            [](Zoo& zoo, CUndoMgr& m) {
                Wild own(zoo);
                m.AddUndoNode(own);
            },
            // What follows takes atoms out elsewhere than at the start.
            [](Zoo&, CUndoMgr& m) { m.Undo(); },
            [](Zoo&, CUndoMgr& m) { m.Redo(); },
            [](Zoo& zoo, CUndoMgr& m) { m.DeleteAllNodesAfterNode(zoo.Any()); },
            [](Zoo& zoo, CUndoMgr& m) {
                const CUndoAtom* any = zoo.Any();
                m.DeleteUndoEventsByID(any != nullptr ? any->undoSetID : 1);
            },
            [](Zoo&, CUndoMgr& m) { m.ClearUndoHistory(); },
        };
        --budget;
        const int act = dice.Below(onlyAdds ? undo : static_cast<int>(std::size(acts)));
        acts[always >= 0 ? always : act](*this, *manager);
    }

    Dice dice;
    bool onlyAdds;
    int budget = 0;
    int always = -1;
    std::set<CUndoAtom*> living;
    CUndoMgr* manager = new CUndoMgr(5);
    static inline Zoo* called;
};

TEST(UndoMgr, IsSafeAgainstAtomsAndCallbacksThatCallIt) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        Zoo zoo(seed);
        for (int step = 0; step < 100; ++step) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
            ASSERT_NO_FATAL_FAILURE(zoo.Step());
        }
    }
    for (const int act : {Zoo::addSet, Zoo::undo, Zoo::cut, Zoo::clear})
        EXPECT_LE(Zoo(1).DeleteManyThatAll(act), 20'001) << "each of them once";
}

TEST(UndoMgr, LeavesTheAtomWithItsCallerWhenMemoryRunsOut) {
    AllocationFault fault("vtrutils.dll");
    for (const int stored : {0, 8, 16}) {
        History h;
        h.AddSets({stored});
        Edit own(h, 0, 0, "");
        fault.FailAt(1);
        EXPECT_EQ(h.manager.AddUndoNode(&own), -1);
        fault.FailAt(1);
        EXPECT_EQ(h.manager.AddUndoNode(own), -1);
        EXPECT_EQ(h.living, stored + 1) << "the clone is deleted";
        fault.FailAt(0);
        EXPECT_EQ(h.manager.AddUndoNode(own), stored + 1);
        fault.FailAt(1);
        h.manager.SetCurrentUndoSetName("name");
        EXPECT_EQ(h.manager.GetUndoSetName(), nullptr);
    }
}

// A document edited at random through the manager, beside a plain list of what it looked like.

/// The rules, said plainly.
struct Model {
    struct Entry {
        long long id;
        long long set;
        std::string after;
    };

    int Last() const { return static_cast<int>(entries.size()) - 1; }
    bool Has(int i) const { return i >= 0 && i <= Last(); }
    const Entry& At(int i) const { return entries[static_cast<std::size_t>(i)]; }
    bool SameSet(int i, int j) const { return Has(i) && Has(j) && At(i).set == At(j).set; }

    void Status(int value, bool always = false) {
        if (dirty != value || always)
            log += " status " + std::to_string(value);
        dirty = value;
    }

    void SetDirty(int value, bool always = false) {
        Status(value, always);
        log += " changed";
    }

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

    void Add(const std::string& after) {
        if (Last() > index) {
            DropAbove(index);
            ForgetNames();
        }
        entries.push_back({nextID++, set, after});
        hasAtoms = true;
        while (static_cast<int>(entries.size()) > maximum && At(0).set != set) {
            for (const long long oldest = At(0).set; At(0).set == oldest; Drop(0))
                base = At(0).after;
            ForgetNames();
        }
        index = Last();
        SetDirty(1, entries.size() == 1);
    }

    void Walk(bool redo) {
        const int step = redo ? 1 : -1;
        const int first = redo ? index + 1 : index;
        if (!Has(first))
            return;
        int i = first;
        do {
            log += (redo ? " redo " : " undo ") + std::to_string(At(i).id);
            i += step;
        } while (SameSet(i, i - step));
        index = redo ? i - 1 : i;
        SetDirty(index != saved ? 1 : 0);
        if (!redo)
            SetDirty(index != saved && index >= 0 ? 1 : 0);
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

    void Name(long long wanted, const std::string& name) {
        if (frozen == 0)
            names[names.contains(wanted) ? wanted : set] = name;
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
        const int before = Last();
        for (int i = Last(); i >= 0; --i) {
            if (At(i).set == unwanted)
                Drop(i);
        }
        log += Last() < before ? " changed" : "";
        return Last() < before;
    }

    void Clear() {
        DropAbove(-1);
        index = saved = -1;
        names.clear();
        SetDirty(0);
    }

    std::string NameAt(int i) const {
        const auto found = Has(i) ? names.find(At(i).set) : names.end();
        return found != names.end() ? found->second : "";
    }

    std::string IDAt(int i) const { return Has(i) ? std::to_string(At(i).id) : ""; }

    std::vector<Entry> entries;
    std::string base; ///< the document below the oldest entry
    std::string log;
    std::map<long long, std::string> names;
    int maximum = 20, index = -1, saved = -1, dirty = 0, frozen = 0, disabled = 0;
    long long set = 1, nextID = 1;
    bool hasAtoms = false;
};

class UndoModel : public testing::TestWithParam<unsigned> {
protected:
    UndoModel() {
        manager.SetDirtyStatusCallback(
            [](int dirty, void* text) {
                *static_cast<std::string*>(text) += " status " + std::to_string(dirty);
            },
            &told);
        manager.SetSetDirtyCallback([] { told += " changed"; });
    }

    int Random(std::size_t below) { return static_cast<int>(random() % below); }

    void AddEdit() {
        const std::size_t place = random() % (host.document.size() + 1);
        auto edit =
            std::make_unique<Edit>(host, place, random() % 2,
                                   std::string(random() % 2, static_cast<char>('a' + Random(26))));
        const bool byClone = Random(2) == 0;
        const bool taken = model.disabled == 0;
        if (taken)
            edit->Perform(true);
        told.clear();
        const long long id = byClone ? manager.AddUndoNode(*edit) : manager.AddUndoNode(edit.get());
        ASSERT_EQ(id, taken ? model.nextID : -1);
        if (taken)
            model.Add(host.document);
        if (taken && byClone)
            model.SetDirty(1);
        if (taken && !byClone)
            static_cast<void>(edit.release());
        else
            model.log += " deleted 0"; // never stamped
    }

    void NameAny() {
        const long long set = model.set - Random(4);
        manager.SetUndoSetName(set, "any");
        model.Name(set, "any");
    }

    /// What is above the current index has been undone: only a cut right there keeps the document.
    void CutAboveCurrent() {
        if (!model.Has(model.index))
            return;
        const Model::Entry entry = model.At(model.index);
        manager.DeleteAllNodesAfterNode(manager.GetUndoNodeByID(entry.id));
        model.set = entry.set;
        model.hasAtoms = true;
        model.DropAbove(model.index);
        model.log += " changed";
    }

    void Step() {
        const int choice = Random(100);
        const int value = Random(3);
        if (choice < 30) {
            AddEdit();
        } else if (choice < 45) {
            const std::string name(random() % 4, static_cast<char>('a' + Random(26)));
            ASSERT_EQ(manager.NextUndoSet(name.c_str()), model.Next(name));
        } else if (choice < 65) {
            manager.Undo();
            model.Walk(/*redo=*/false);
        } else if (choice < 80) {
            manager.Redo();
            model.Walk(/*redo=*/true);
        } else if (choice < 84) {
            manager.OnSave();
            model.saved = model.index;
            model.SetDirty(0);
        } else if (choice < 86) {
            value == 0 ? manager.ForceSetDirty(1) : manager.SetDirty(value);
            model.SetDirty(value == 0 ? 1 : value, value == 0);
        } else if (choice < 90) {
            value == 0 ? manager.FreezeUndoSet() : manager.UnfreezeUndoSet();
            model.frozen = std::max(model.frozen + (value == 0 ? 1 : -1), 0);
        } else if (choice < 93) {
            value == 0 ? manager.DisableNewUndos() : manager.EnableNewUndos();
            model.disabled = std::max(model.disabled + (value == 0 ? 1 : -1), 0);
        } else if (choice < 95) {
            model.maximum = Random(40) - 1;
            manager.SetMaxUndos(model.maximum);
        } else if (choice < 96) {
            manager.ClearUndoHistory();
            model.Clear();
            model.base = host.document;
            host.torn = false;
        } else if (choice < 97) {
            value == 0 ? CutAboveCurrent() : NameAny();
        } else if (choice < 98) {
            const long long unwanted = model.set - value;
            manager.DeleteUndoEventsByID(unwanted);
            host.torn = model.DeleteSet(unwanted) || host.torn;
        } else {
            ASSERT_EQ(manager.DeleteCurrentUndoSetIfEmpty(), model.TakeBackEmptySet());
        }
    }

    void Check() {
        ASSERT_EQ(told, model.log);
        ASSERT_EQ(manager.CanUndo() != 0, model.Has(model.index));
        ASSERT_EQ(manager.CanRedo() != 0, model.Has(model.index + 1));
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
        const auto orEmpty = [](const char* name) { return std::string(name ? name : ""); };
        ASSERT_EQ(orEmpty(manager.GetUndoSetName()), model.NameAt(model.index));
        ASSERT_EQ(orEmpty(manager.GetRedoSetName()), model.NameAt(model.index + 1));
        for (long long set = std::max(model.set - 40, 0LL); set <= model.set + 1; ++set) {
            const auto named = model.names.find(set);
            ASSERT_EQ(orEmpty(manager.GetUndoSetName(static_cast<int>(set))),
                      named != model.names.end() ? named->second : "");
        }
        if (!host.torn) {
            ASSERT_EQ(host.document, model.index < 0 ? model.base : model.At(model.index).after);
        }
    }

    std::mt19937 random{GetParam()};
    Host host;
    Model model;
    CUndoMgr manager{20};
};

TEST_P(UndoModel, DoesWhatTheRulesSay) {
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(testing::Message() << "seed " << GetParam() << ", step " << step);
        told.clear();
        model.log.clear();
        ASSERT_NO_FATAL_FAILURE(Step());
        ASSERT_NO_FATAL_FAILURE(Check());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, UndoModel, testing::Range(1u, 9u));

} // namespace
