#include "utilities/base/PtrArray.h"

#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <vector>

TEST(PtrArray, DoesWhatAVectorDoes) {
    AllocationFault fault("internal_test.exe");
    int pool[16] = {};
    vtr::PtrArray<int> array;
    std::vector<int*> model;
    EachRound(3, 20'000, [&](Dice& dice, int round) {
        int* item = &pool[dice.Below(16)];
        const int place = dice.Below(static_cast<int>(model.size()) + 1), kind = dice.Below(400);
        const bool growing = round / 100 % 2 == 0;
        const unsigned failing = dice.Below(4) == 0;
        if (kind == 0) {
            array.Clear([](int*) {});
            model.clear();
        } else if (kind < 5) {
            unsigned disposed = 0;
            const auto unwanted = [item](const int* other) { return other < item; };
            const auto removed = std::erase_if(model, unwanted);
            ASSERT_EQ(array.RemoveIf(unwanted, [&disposed](int*) { ++disposed; }), removed);
            ASSERT_EQ(disposed, removed);
        } else if (kind < (growing ? 300 : 100)) {
            fault.FailAt(failing);
            const bool added = array.Insert(static_cast<unsigned>(place), item);
            fault.FailAt(0);
            ASSERT_TRUE(added || (failing > 0 && model.size() == array.Capacity()));
            if (added)
                model.insert(model.begin() + place, item);
        } else if (place < std::ssize(model)) {
            fault.FailAt(failing); // a block that cannot shrink serves as it is
            const int* removed = array.Remove(static_cast<unsigned>(place));
            fault.FailAt(0);
            ASSERT_EQ(removed, model.begin()[place]);
            model.erase(model.begin() + place);
        }
        ASSERT_EQ(std::vector<int*>(array.begin(), array.end()), model);
        ASSERT_EQ(array.At(array.Count()), nullptr);
    });
}
