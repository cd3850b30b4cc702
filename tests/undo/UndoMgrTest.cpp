#include "utilities/undo/UndoMgr.h"
#include "tests/support/AllocationFault.h"

#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace {

/// Tells which atoms live, and lets each call back when it is performed or deleted.
struct Watch {
    std::set<const CUndoAtom*> alive;
    int performed = 0;
    std::function<void(CUndoAtom*)> onPerform;
    std::function<void()> onDelete;
};

class Atom : public CUndoAtom {
public:
    explicit Atom(Watch& watching) : watch(watching) { watch.alive.insert(this); }
    Atom(const Atom& other) : CUndoAtom(other), watch(other.watch) { watch.alive.insert(this); }
    Atom& operator=(const Atom&) = delete;
    ~Atom() override {
        watch.alive.erase(this);
        if (watch.onDelete)
            watch.onDelete();
    }
    CUndoAtom* Clone() override { return new Atom(*this); }
    void Perform(bool) override {
        ++watch.performed;
        if (watch.onPerform)
            watch.onPerform(this);
        EXPECT_EQ(watch.alive.count(this), 1u) << "deleted while it runs";
    }
    void GetDescription(char*, unsigned) override {}

private:
    Watch& watch;
};

struct History : Watch {
    explicit History(int maximum = 100) : manager(maximum) {}

    /// As many sets as numbers, each of as many atoms as its number says.
    void AddSets(std::initializer_list<int> sizes) {
        for (const int size : sizes) {
            manager.NextUndoSet();
            for (int i = 0; i < size; ++i)
                manager.AddUndoNode(new Atom(*this));
        }
    }

    CUndoMgr manager;
};

TEST(UndoMgr, NamesSetsAsTheyBegin) {
    History h;
    CUndoMgr& manager = h.manager;
    EXPECT_EQ(manager.AddUndoNode(static_cast<CUndoAtom*>(nullptr)), -1);
    EXPECT_FALSE(manager.NextUndoSet("Cut"));
    EXPECT_STREQ(manager.GetUndoSetName(1), "Cut");
    manager.AddUndoNode(new Atom(h));
    EXPECT_TRUE(manager.NextUndoSet("Paste"));
    EXPECT_FALSE(manager.NextUndoSet("Copy"));
    EXPECT_STREQ(manager.GetUndoSetName(2), "Copy");
    EXPECT_STREQ(manager.GetUndoSetName(), "Cut");
    manager.SetUndoSetName(1, "Move");
    EXPECT_STREQ(manager.GetUndoSetName(), "Move");
    manager.SetUndoSetName(1, manager.GetUndoSetName() + 2);
    EXPECT_STREQ(manager.GetUndoSetName(), "ve") << "a part of the old name";
    manager.SetUndoSetName(1, "");
    EXPECT_EQ(manager.GetUndoSetName(), nullptr);
    manager.SetUndoSetName(7, "x");
    EXPECT_EQ(manager.GetUndoSetName(7), nullptr);
    EXPECT_STREQ(manager.GetUndoSetName(2), "x") << "the current set";
}

TEST(UndoMgr, FindsNamesWhenSetNumbersWentBack) {
    History h;
    h.AddSets({1, 1, 1, 1, 1});
    h.manager.SetCurrentUndoSetName("five");
    h.manager.DeleteAllNodesAfterNode(h.manager.GetUndoNodeByID(2));
    EXPECT_TRUE(h.manager.NextUndoSet("three"));
    h.AddSets({1});
    EXPECT_TRUE(h.manager.NextUndoSet("four"));
    EXPECT_STREQ(h.manager.GetUndoSetName(3), "three");
    EXPECT_STREQ(h.manager.GetUndoSetName(4), "four");
    EXPECT_STREQ(h.manager.GetUndoSetName(5), "five");
}

TEST(UndoMgr, TrimsWholeSetsButNeverTheNewest) {
    History h(3);
    h.AddSets({2, 1});
    EXPECT_EQ(h.alive.size(), 3u);
    h.manager.AddUndoNode(new Atom(h));
    EXPECT_EQ(h.alive.size(), 2u) << "both atoms of set 1 are gone";
    h.manager.SetMaxUndos(-1);
    h.AddSets({5});
    EXPECT_EQ(h.alive.size(), 5u);
    h.manager.ClearUndoHistory();
    EXPECT_TRUE(h.alive.empty());
    EXPECT_EQ(h.manager.LastUndoNodeID(), 0);
    EXPECT_EQ(h.manager.AddUndoNode(new Atom(h)), 10) << "IDs go on";
}

TEST(UndoMgr, TellsSetsApartByTheLowHalfOfTheirNumbers) {
    History h;
    h.AddSets({1, 1, 1});
    h.manager.GetUndoNodeByID(2)->undoSetID = 0x100000003;
    h.manager.Undo();
    EXPECT_EQ(h.performed, 2);
    h.manager.Redo();
    EXPECT_EQ(h.performed, 4);
}

TEST(UndoMgr, GivesTheAnswersOnDirtinessThatTheHeaderWarnsOf) {
    struct Row {
        const char* name;
        std::function<void(History&)> act;
        int dirty;
    };
    const auto undo = [](History& h, int times) {
        for (; times > 0; --times)
            h.manager.Undo();
    };
    const Row rows[] = {
        {"undone, redone in part", [&](History& h) { undo(h, 2), h.manager.Redo(); }, 1},
        {"redone in full", [&](History& h) { undo(h, 2), h.manager.Redo(), h.manager.Redo(); }, 0},
        {"all undone", [&](History& h) { undo(h, 3); }, 0},
        {"other atoms",
         [&](History& h) {
             undo(h, 2), h.AddSets({1, 1});
         },
         1},
        {"other atoms at the saved index",
         [&](History& h) {
             undo(h, 2), h.AddSets({1, 1}), undo(h, 1), h.manager.Redo();
         },
         0},
        {"trimmed past the saved one",
         [&](History& h) {
             h.manager.SetMaxUndos(3), h.AddSets({1}), undo(h, 1), h.manager.Redo();
         },
         0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        History h;
        h.AddSets({1, 1, 1});
        h.manager.OnSave();
        row.act(h);
        EXPECT_EQ(h.manager.Dirty(), row.dirty);
    }
}

TEST(UndoMgr, DeletesASetWithoutMovingTheIndex) {
    History h;
    h.AddSets({1, 1, 1});
    h.manager.Undo();
    h.manager.DeleteUndoEventsByID(1);
    EXPECT_TRUE(h.manager.CanUndo() != 0 && h.manager.CanRedo() == 0) << "as if C were done";
    h.manager.DeleteUndoEventsByID(3);
    EXPECT_EQ(h.manager.CanUndo(), 0);
    EXPECT_EQ(h.manager.AddUndoNode(new Atom(h)), 4);
    EXPECT_EQ(h.manager.CanUndo(), 1);
}

int refreshes = 0;

TEST(UndoMgr, CallsBackAsOftenAsItsContractsSay) {
    std::vector<int> statuses;
    History h;
    h.manager.SetDirtyStatusCallback(
        [](int dirty, void* out) { static_cast<std::vector<int>*>(out)->push_back(dirty); },
        &statuses);
    h.manager.SetSetDirtyCallback([] { ++refreshes; });
    const auto calls = [&] {
        std::string text = std::to_string(refreshes) + ":";
        for (const int status : statuses)
            text += std::to_string(status);
        refreshes = 0;
        statuses.clear();
        return text;
    };
    Atom own(h);
    calls();
    h.manager.SetDirty(1);
    h.manager.AddUndoNode(own);
    EXPECT_EQ(calls(), "3:11") << "told of the first atom though it was dirty";
    h.manager.OnSave();
    h.manager.OnSave();
    h.manager.ForceSetDirty(0);
    EXPECT_EQ(calls(), "3:00");
    h.manager.Undo();
    EXPECT_EQ(calls(), "2:10") << "by the indices, then because nothing is left";
    h.manager.Redo();
    h.manager.ClearUndoHistory();
    EXPECT_EQ(calls(), "2:") << "clean throughout";
}

TEST(UndoSetFreezer, KeepsOneSetAndTakesAnEmptyOneBack) {
    History h;
    CUndoMgr& manager = h.manager;
    const CUndoSetFreezer none(nullptr, "none");
    h.AddSets({1});
    {
        const CUndoSetFreezer outer(&manager, "outer");
        {
            const CUndoSetFreezer inner(&manager, "inner");
            EXPECT_EQ(manager.GetUndoSetFreezeCount(), 2);
        }
        EXPECT_STREQ(manager.GetUndoSetName(2), "outer") << "neither renamed nor deleted";
        manager.SetUndoSetName(2, "renamed");
        EXPECT_STREQ(manager.GetUndoSetName(2), "outer");
        EXPECT_FALSE(manager.DeleteCurrentUndoSetIfEmpty());
    }
    EXPECT_EQ(manager.GetUndoSetName(2), nullptr);
    EXPECT_TRUE(manager.NextUndoSet()) << "set 1 has its atom";
    { const CUndoSetFreezer other(&manager, nullptr); }
    {
        const CUndoSetFreezer guard(&manager, nullptr);
        h.AddSets({1, 1});
    }
    manager.Undo();
    EXPECT_EQ(h.performed, 2) << "both in one set";
}

TEST(UndoMgr, IsSafeAgainstAtomsThatCallIt) {
    struct Row {
        const char* name;
        std::function<void(History&, CUndoAtom*)> act;
        int undone; ///< of a set of 3, below and above sets of 1
        std::size_t left;
    };
    const Row rows[] = {
        {"undo", [](History& h, CUndoAtom*) { h.manager.Undo(); }, 3, 5},
        {"redo", [](History& h, CUndoAtom*) { h.manager.Redo(); }, 3, 5},
        {"add",
         [](History& h, CUndoAtom*) {
             Atom own(h);
             EXPECT_EQ(h.manager.AddUndoNode(own), -1);
             EXPECT_TRUE(h.manager.IsUndoInProgress() && !h.manager.IsRedoInProgress());
             h.manager.EnableNewUndos();
             EXPECT_EQ(h.manager.AddUndoNode(&own), -1);
         },
         3, 5},
        {"clear", [](History& h, CUndoAtom*) { h.manager.ClearUndoHistory(); }, 1, 0},
        {"delete its set",
         [](History& h, CUndoAtom* a) { h.manager.DeleteUndoEventsByID(a->undoSetID); }, 1, 2},
        {"cut below it",
         [](History& h, CUndoAtom*) {
             h.manager.DeleteAllNodesAfterNode(h.manager.GetUndoNodeByID(1));
         },
         1, 1},
        {"cut nothing but move the index",
         [](History& h, CUndoAtom*) { h.manager.DeleteAllNodesAfterNode(h.manager.GetLastNode()); },
         1, 5},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        History h;
        h.AddSets({1, 3, 1});
        h.manager.Undo();
        h.performed = 0;
        h.onPerform = [&](CUndoAtom* atom) { row.act(h, atom); };
        h.manager.Undo();
        EXPECT_EQ(h.performed, row.undone);
        EXPECT_EQ(h.alive.size(), row.left);
        EXPECT_EQ(h.manager.GetDisableUndoCount(), 0);
        EXPECT_FALSE(h.manager.IsUndoInProgress());
        h.onPerform = nullptr;
        h.AddSets({1});
        EXPECT_NE(h.manager.CanUndo(), 0);
    }
}

TEST(UndoMgr, IsSafeAgainstDestructorsThatCallIt) {
    const std::function<void(History&)> removals[] = {
        [](History& h) { h.manager.ClearUndoHistory(); },
        [](History& h) { h.manager.DeleteUndoEventsByID(2); },
        [](History& h) { h.manager.DeleteAllNodesAfterNode(h.manager.GetUndoNodeByID(1)); },
        [](History& h) { h.manager.SetMaxUndos(2), h.AddSets({1}); },
    };
    for (const auto& outer : removals) {
        for (const auto& inner : removals) {
            History h;
            h.AddSets({1, 3, 3, 1});
            int depth = 0;
            h.onDelete = [&] {
                if (++depth < 3)
                    inner(h);
            };
            outer(h);
            h.onDelete = nullptr;
            for (long long id = h.manager.LastUndoNodeID(); id > 0; --id) {
                const CUndoAtom* atom = h.manager.GetUndoNodeByID(id);
                EXPECT_TRUE(atom == nullptr || h.alive.count(atom) == 1);
            }
            h.manager.ClearUndoHistory();
            EXPECT_TRUE(h.alive.empty());
        }
    }
}

TEST(UndoMgr, LeavesTheAtomWithItsCallerWhenMemoryRunsOut) {
    AllocationFault fault("vtrutils.dll");
    for (const int stored : {0, 8, 16}) {
        History h;
        h.AddSets({stored});
        Atom own(h);
        fault.FailAt(1);
        EXPECT_EQ(h.manager.AddUndoNode(&own), -1);
        fault.FailAt(1);
        EXPECT_EQ(h.manager.AddUndoNode(own), -1);
        EXPECT_EQ(h.alive.size(), static_cast<std::size_t>(stored) + 1) << "the clone is deleted";
        fault.FailAt(0);
        EXPECT_EQ(h.manager.AddUndoNode(own), stored + 1);
        fault.FailAt(1);
        h.manager.SetCurrentUndoSetName("name");
        EXPECT_EQ(h.manager.GetUndoSetName(), nullptr);
    }
}

} // namespace
