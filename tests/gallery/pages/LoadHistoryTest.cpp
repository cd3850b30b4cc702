#include "gallery/pages/system/LoadHistory.h"

#include "tests/support/Dice.h"

#include <gtest/gtest.h>

namespace {

using gallery::LoadHistory;

TEST(LoadHistory, KeepsTheLastMinuteAndWhereItsCurveComesFrom) {
    Dice dice(20261123);
    LoadHistory history;
    std::vector<LoadHistory::Sample> all;
    long long time = 0;
    bool joined = false;
    for (int step = 0; step < 3000; ++step) {
        const int chance = dice.Below(100);
        if (chance == 0) {
            history.Clear();
            all.clear();
        }
        if (chance < 10) {
            history.Skip();
            joined = false;
            continue;
        }
        // Also gaps that leave nothing inside but the newest.
        time += chance < 12 ? dice.Below(150'000) : dice.Below(3000);
        history.Add(time, chance);
        all.push_back({time, static_cast<double>(chance), joined});
        joined = true;
        std::size_t first = 0;
        while (first + 1 < all.size() && time - all[first + 1].time >= LoadHistory::span)
            ++first;
        const auto& kept = history.Samples();
        ASSERT_EQ(all.size() - first, kept.size()) << "step " << step;
        for (std::size_t i = 0; i < kept.size(); ++i) {
            ASSERT_EQ(all[first + i].time, kept[i].time) << "step " << step;
            ASSERT_EQ(all[first + i].percent, kept[i].percent) << "step " << step;
            ASSERT_EQ(all[first + i].joined, kept[i].joined) << "step " << step;
        }
    }
}

} // namespace
