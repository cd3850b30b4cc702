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
    unsigned slots = 0;
    EachRound(3, 20'000, [&](Dice& dice, int round) {
        int* item = &pool[dice.Below(16)];
        const int place = dice.Below(static_cast<int>(model.size()) + 1), kind = dice.Below(400);
        const auto at = model.begin() + place;
        const bool full = model.size() == slots, growing = round / 100 % 2 == 0;
        if (kind == 0) {
            array.Clear([](int*) {});
            model.clear();
            slots = 0;
        } else if (kind < 5) {
            unsigned disposed = 0;
            const auto unwanted = [item](const int* other) { return other < item; };
            const auto removed = std::erase_if(model, unwanted);
            ASSERT_EQ(array.RemoveIf(unwanted, [&disposed](int*) { ++disposed; }), removed);
            ASSERT_EQ(disposed, removed);
            while (slots > 8 && model.size() <= slots / 2)
                slots /= 2;
        } else if (kind < (growing ? 300 : 100)) {
            fault.FailAt(kind % 4 == 0);
            const bool fits = !full || kind % 4 != 0;
            ASSERT_EQ(array.Insert(static_cast<unsigned>(place), item), fits);
            fault.FailAt(0);
            if (fits) {
                model.insert(at, item);
                slots = full ? std::max(8u, slots * 2) : slots;
            }
        } else if (at != model.end()) {
            const unsigned failing =
                dice.Below(9) == 0; // a block that cannot shrink serves as it is
            fault.FailAt(failing);
            ASSERT_EQ(array.Remove(static_cast<unsigned>(place)), *at);
            fault.FailAt(0);
            model.erase(at);
            if (failing == 0 && slots > 8 && model.size() <= slots / 2)
                slots /= 2;
        }
        ASSERT_EQ(std::vector<int*>(array.begin(), array.end()), model);
        ASSERT_EQ(array.Capacity(), slots);
        ASSERT_EQ(array.At(array.Count()), nullptr);
    });
}
