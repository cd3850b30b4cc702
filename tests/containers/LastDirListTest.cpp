#include "utilities/containers/LastDirList.h"

#include <algorithm>
#include <ctime>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

TEST(LastDirList, KeepsTimeOrderAsAModelDoes) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE("seed 11, round " + std::to_string(round));
        CLastDirList list;
        std::vector<_lastDirList> model;
        const auto add = [&](const _lastDirList& dir) {
            model.insert(std::find_if(model.begin(), model.end(),
                                      [&](const auto& other) { return other.time < dir.time; }),
                         dir);
        };
        for (int step = 0; step < 30; ++step) {
            const char name = "abcd"[random() % 4];
            char path[] = {static_cast<char>(random() % 2 ? name : name - 32), '\0'};
            _lastDirList dir{{name}, static_cast<int>(random() % 4), static_cast<int>(random())};
            const auto old = std::find_if(model.begin(), model.end(),
                                          [&](const auto& other) { return other.path[0] == name; });
            const bool known = old != model.end();
            switch (random() % 6) {
            case 0:
                EXPECT_EQ(list.MoveOrAddToTop(path), 1);
                dir.time = list.ContainsDir(path)->time;
                EXPECT_LE(std::abs(dir.time - _time64(nullptr)), 10);
                dir.value = known ? old->value : 1000;
                if (known)
                    model.erase(old);
                model.insert(model.begin(), dir);
                break;
            case 1:
                list.DeletePath(path);
                std::erase_if(model, [&](const auto& other) { return other.path[0] == name; });
                break;
            case 2:
                EXPECT_EQ(list.Sort(), 1);
                std::stable_sort(model.begin(), model.end(),
                                 [](const auto& a, const auto& b) { return a.time > b.time; });
                break;
            case 3:
                EXPECT_EQ(list.Add(path, dir.time, dir.value, 0), 1);
                add(dir);
                break;
            default:
                const bool reposition = random() % 2 != 0;
                EXPECT_EQ(list.UpdateOrAdd(path, dir.time, dir.value, reposition), 1);
                if (known && !reposition)
                    *old = dir;
                else if (known)
                    model.erase(old);
                if (!known || reposition)
                    add(dir);
            }
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
    }
}

TEST(LastDirList, CutsLongPathsAndIgnoresNull) {
    CLastDirList list;
    std::string path(300, 'p');
    EXPECT_EQ(list.Add(nullptr, 1, 2, 0), 1);
    EXPECT_EQ(list.AddPtr(nullptr, 0) + list.MoveOrAddToTop(nullptr), 0);
    EXPECT_EQ(list.AddPtr(new _lastDirList{}, 0), 1);
    list.Add(path.data(), 1, 2, 0);
    list.DeleteIndex(2);
    path.resize(263);
    EXPECT_NE(list.ContainsDir(path.data()), nullptr);
}
