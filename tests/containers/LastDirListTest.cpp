#include "utilities/containers/LastDirList.h"

#include <algorithm>
#include <ctime>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

struct Dir {
    std::string path;
    long long time;
    int value;
};

class Model {
public:
    std::vector<Dir> dirs;

    auto Find(const std::string& path) {
        return std::find_if(dirs.begin(), dirs.end(), [&](const Dir& dir) {
            return _stricmp(dir.path.c_str(), path.c_str()) == 0;
        });
    }

    void Add(const Dir& dir) {
        auto place = dirs.begin();
        while (place != dirs.end() && place->time >= dir.time)
            ++place;
        dirs.insert(place, dir);
    }
};

} // namespace

TEST(LastDirList, KeepsTimeOrderAsAModelDoes) {
    constexpr unsigned seed = 11;
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE("seed 11, round " + std::to_string(round));
        CLastDirList list;
        Model model;
        for (int step = 0; step < 30; ++step) {
            std::string path(1, "abcdABCD"[random() % 8]);
            const Dir dir{path, static_cast<long long>(random() % 4), static_cast<int>(random())};
            const bool reposition = random() % 2 != 0;
            auto old = model.Find(path);
            switch (random() % 8) {
            case 0:
                EXPECT_EQ(list.AddPtr(new _lastDirList{{path[0]}, dir.time, dir.value}, 0), 1);
                model.Add(dir);
                break;
            case 1: {
                const int value = old != model.dirs.end() ? old->value : 1000;
                const long long before = _time64(nullptr);
                EXPECT_EQ(list.MoveOrAddToTop(path.data()), 1);
                const _lastDirList* top = list.ContainsDir(path.data());
                EXPECT_TRUE(top->time >= before && top->time <= _time64(nullptr));
                if (old != model.dirs.end())
                    model.dirs.erase(old);
                model.dirs.insert(model.dirs.begin(), {path, top->time, value});
                break;
            }
            case 2:
                list.DeletePath(path.data());
                std::erase_if(model.dirs, [&](const Dir& other) {
                    return _stricmp(other.path.c_str(), path.c_str()) == 0;
                });
                break;
            case 3:
                EXPECT_EQ(list.Sort(), 1);
                std::stable_sort(model.dirs.begin(), model.dirs.end(),
                                 [](const Dir& a, const Dir& b) { return a.time > b.time; });
                break;
            case 4:
                EXPECT_EQ(list.Add(path.data(), dir.time, dir.value, 0), 1);
                model.Add(dir);
                break;
            default:
                EXPECT_EQ(list.UpdateOrAdd(path.data(), dir.time, dir.value, reposition), 1);
                if (old == model.dirs.end()) {
                    model.Add(dir);
                } else {
                    Dir updated{old->path, dir.time, dir.value};
                    *old = updated;
                    if (reposition) {
                        model.dirs.erase(old);
                        model.Add(updated);
                    }
                }
            }
        }
        while (!model.dirs.empty()) {
            const Dir first = model.dirs.front();
            const _lastDirList* found = list.ContainsDir(model.dirs.front().path.data());
            ASSERT_NE(found, nullptr);
            ASSERT_EQ(found->path, first.path);
            ASSERT_EQ(found->time, first.time);
            ASSERT_EQ(found->value, first.value);
            list.DeleteIndex(0);
            model.dirs.erase(model.dirs.begin());
        }
        char any[] = "a";
        ASSERT_EQ(list.ContainsDir(any), nullptr);
    }
}

TEST(LastDirList, CutsLongPathsAndIgnoresNull) {
    CLastDirList list;
    std::string path(300, 'p');
    list.Add(path.data(), 1, 2, 0);
    list.Add(nullptr, 1, 2, 0);
    EXPECT_EQ(list.AddPtr(nullptr, 0), 0);
    EXPECT_EQ(list.MoveOrAddToTop(nullptr), 0);
    list.DeletePath(nullptr);
    list.DeleteIndex(1);
    list.DeleteIndex(-1);
    EXPECT_EQ(list.ContainsDir(nullptr), nullptr);
    path.resize(263);
    ASSERT_NE(list.ContainsDir(path.data()), nullptr);
    EXPECT_EQ(list.ContainsDir(path.data())->value, 2);
    list.DeleteAll();
    EXPECT_EQ(list.ContainsDir(path.data()), nullptr);
}
