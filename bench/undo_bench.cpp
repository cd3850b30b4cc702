// The undo manager beside a vector of owners that does no more than keep and call the atoms.

#include "bench/support/Comparison.h"
#include "utilities/undo/UndoMgr.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr char owners[] = "vector of owners";

class Counting : public CUndoAtom {
public:
    explicit Counting(int& shared) : counter(shared) {}
    CUndoAtom* Clone() override { return new Counting(*this); }
    void Perform(bool redo) override { counter += redo ? 1 : -1; }
    void GetDescription(char*, unsigned) override {}

private:
    int& counter;
};

/// Keeps at most so many atoms, each a set.
class Peer {
public:
    explicit Peer(std::size_t most) : maximum(most) {}

    void Add(CUndoAtom* atom) {
        atoms.emplace_back(atom);
        if (atoms.size() > maximum)
            atoms.erase(atoms.begin());
        index = atoms.size();
    }
    void UndoAll() {
        while (index > 0)
            atoms[--index]->Perform(false);
    }
    void RedoAll() {
        while (index < atoms.size())
            atoms[index++]->Perform(true);
    }

private:
    std::size_t maximum;
    std::size_t index = 0;
    std::vector<std::unique_ptr<CUndoAtom>> atoms;
};

/// Sets of so many atoms; everything added, undone, redone and deleted.
void MeasureHistory(const char* work, int setSize) {
    for (const auto& [size, count] :
         {std::pair("100,000", 100'000), std::pair("1,000,000", 1'000'000)}) {
        bench::Measure(work, size, bench::ours, [count, setSize](benchmark::State& state) {
            int counter = 0;
            for (auto _ : state) {
                CUndoMgr manager(count);
                for (int i = 0; i < count; ++i) {
                    if (i % setSize == 0)
                        manager.NextUndoSet();
                    manager.AddUndoNode(new Counting(counter));
                }
                while (manager.CanUndo() != 0)
                    manager.Undo();
                while (manager.CanRedo() != 0)
                    manager.Redo();
            }
            if (counter != 0)
                state.SkipWithError("not every atom was performed");
        });
        bench::Measure(work, size, owners, [count](benchmark::State& state) {
            int counter = 0;
            for (auto _ : state) {
                Peer peer(static_cast<std::size_t>(count));
                for (int i = 0; i < count; ++i)
                    peer.Add(new Counting(counter));
                peer.UndoAll();
                peer.RedoAll();
            }
            if (counter != 0)
                state.SkipWithError("not every atom was performed");
        });
    }
    bench::GrowthToReach(work, 15);
}

/// A full history: for each new atom the oldest one is deleted.
void MeasureTrimming() {
    static constexpr char work[] = "undo, 100,000 sets through a full history";
    for (const auto& [size, most] : {std::pair("100", 100), std::pair("1,000", 1000)}) {
        constexpr int count = 100'000;
        bench::Measure(work, size, bench::ours, [most](benchmark::State& state) {
            int counter = 0;
            for (auto _ : state) {
                CUndoMgr manager(most);
                for (int i = 0; i < count; ++i) {
                    manager.NextUndoSet();
                    manager.AddUndoNode(new Counting(counter));
                }
            }
        });
        bench::Measure(work, size, owners, [most](benchmark::State& state) {
            int counter = 0;
            for (auto _ : state) {
                Peer peer(static_cast<std::size_t>(most));
                for (int i = 0; i < count; ++i)
                    peer.Add(new Counting(counter));
            }
        });
    }
}

} // namespace

int main(int argc, char** argv) {
    MeasureHistory("undo, add, undo and redo in sets of 10", 10);
    MeasureHistory("undo, add, undo and redo in sets of 1", 1);
    MeasureTrimming();
    return bench::Run(argc, argv);
}
