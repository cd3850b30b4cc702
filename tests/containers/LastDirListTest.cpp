#include "utilities/containers/LastDirList.h"

#include "tests/support/Rounds.h"

#include <algorithm>
#include <cctype>
#include <ctime>
#include <string>
#include <vector>

TEST(LastDirList, KeepsTimeOrderAsAModelDoes) {
    EachRound(11, 300, [](Dice& dice, int) {
        CLastDirList list;
        std::vector<_lastDirList> model;
        for (int step = 0; step < 30; ++step) {
            _lastDirList dir{{"abcd"[dice.Below(4)]}, dice.Below(4), dice.Below(9999)};
            char path[] = {dir.path[0], '\0'};
            if (dice.Below(2) == 0)
                path[0] = static_cast<char>(std::toupper(path[0]));
            const auto isSame = [&](const auto& other) { return other.path[0] == dir.path[0]; };
            const auto old = std::ranges::find_if(model, isSame);
            const bool known = old != model.end(), reposition = dice.Below(2) == 0;
            const int way = dice.Below(6);
            bool inserts = way == 3;
            if (way == 0) {
                EXPECT_EQ(list.MoveOrAddToTop(path), 1);
                dir.time = list.ContainsDir(path)->time;
                EXPECT_LE(std::abs(dir.time - _time64(nullptr)), 10);
                dir.value = known ? old->value : 1000;
                if (known)
                    model.erase(old);
                model.insert(model.begin(), dir);
            } else if (way == 1) {
                list.DeletePath(path);
                std::erase_if(model, isSame);
            } else if (way == 2) {
                EXPECT_EQ(list.Sort(), 1);
                std::ranges::stable_sort(model, std::ranges::greater(), &_lastDirList::time);
            } else if (way == 3) {
                EXPECT_EQ(list.Add(path, dir.time, dir.value, 0), 1);
            } else {
                EXPECT_EQ(list.UpdateOrAdd(path, dir.time, dir.value, reposition), 1);
                inserts = !known || reposition;
                if (known && reposition)
                    model.erase(old);
                else if (known)
                    *old = dir;
            }
            if (inserts)
                model.insert(std::ranges::find_if(
                                 model, [&](const auto& other) { return other.time < dir.time; }),
                             dir);
        }
        for (_lastDirList& dir : model) {
            const _lastDirList* found = list.ContainsDir(dir.path);
            ASSERT_NE(found, nullptr);
            ASSERT_EQ(found->value, dir.value);
            ASSERT_EQ(found->time, dir.time);
            list.DeleteIndex(0);
        }
        char any[] = "a";
        ASSERT_EQ(list.ContainsDir(any), nullptr);
    });
}

TEST(LastDirList, CutsLongPaths) {
    CLastDirList list;
    std::string path(300, 'p');
    EXPECT_EQ(list.AddPtr(nullptr, 0) + list.MoveOrAddToTop(nullptr), 0);
    EXPECT_EQ(list.MoveOrAddToTop(path.data()) + list.UpdateOrAdd(path.data(), 3, 4, 1), 2);
    const _lastDirList* only = list.ContainsDir(path.data());
    ASSERT_NE(only, nullptr);
    EXPECT_EQ(only->path, path.substr(0, 263));
    list.DeleteIndex(0);
    EXPECT_EQ(list.ContainsDir(path.data()), nullptr) << "found uncut, stored once";
}
