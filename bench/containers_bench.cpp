// Array lists, linked lists and the hash table, beside the containers of the standard library.

#include "bench/support/Comparison.h"
#include "utilities/containers/HashTable.h"
#include "utilities/containers/MegaArrayList.h"
#include "utilities/containers/MegaList.h"
#include "utilities/containers/MyArrayList.h"
#include "utilities/containers/MyList.h"
#include "utilities/system/locks/Lock.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <list>
#include <random>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

struct Pair {
    long long first;
    void* second;
};
constexpr int listSize = 1'000'000;

using Pairs = std::vector<Pair>;

constexpr std::pair<const char*, int> sizes[] = {
    {"10,000", 10'000}, {"100,000", 100'000}, {"1,000,000", 1'000'000}};

bool Below(const Pair& pair, long long value) {
    return pair.first < value;
}
bool Above(long long value, const Pair& pair) {
    return value < pair.first;
}

/// Values in random order; the same count gives the same.
std::vector<long long> MakeValues(int count) {
    std::mt19937 random(7);
    std::vector<long long> values(static_cast<std::size_t>(count));
    for (long long& value : values)
        value = static_cast<long long>(random());
    return values;
}

void MeasureSortedInserts() {
    static constexpr char work[] = "array list, sorted inserts";
    static constexpr char vector[] = "vector, upper_bound";
    for (const auto& [size, count] : {sizes[0], sizes[1]}) {
        const std::vector<long long> values = MakeValues(count);
        bench::Measure(work, size, bench::ours, [values](benchmark::State& state) {
            for (auto _ : state) {
                CMyArrayList list;
                for (const long long value : values)
                    list.AddSorted(nullptr, value);
                benchmark::DoNotOptimize(list.FastIndex(0));
            }
        });
        bench::Measure(work, size, vector, [values](benchmark::State& state) {
            for (auto _ : state) {
                Pairs pairs;
                for (const long long value : values)
                    pairs.insert(std::upper_bound(pairs.begin(), pairs.end(), value, Above),
                                 {value, nullptr});
                benchmark::DoNotOptimize(pairs.data());
            }
        });
    }
    bench::ToReach(work, vector, bench::asFast);
}

void MeasureLookUps() {
    static constexpr char work[] = "array list, a million look-ups by value";
    static constexpr char vector[] = "vector, lower_bound";
    for (const auto& [size, count] : {sizes[0], sizes[1]}) {
        std::vector<long long> values = MakeValues(count);
        std::vector<long long> questions(1'000'000);
        std::mt19937 random(8);
        for (long long& question : questions)
            question = values[random() % values.size()];
        std::sort(values.begin(), values.end());
        bench::Measure(work, size, bench::ours, [values, questions](benchmark::State& state) {
            CMyArrayList list;
            for (const long long& value : values)
                list.AppendToTail(const_cast<long long*>(&value), value);
            for (auto _ : state) {
                for (const long long question : questions)
                    benchmark::DoNotOptimize(list.ElemBySortValue(question, nullptr, scanExact));
            }
        });
        bench::Measure(work, size, vector, [values, questions](benchmark::State& state) {
            Pairs pairs;
            for (const long long value : values)
                pairs.push_back({value, nullptr});
            for (auto _ : state) {
                for (const long long question : questions) {
                    const auto found =
                        std::lower_bound(pairs.begin(), pairs.end(), question, Below);
                    const bool hit = found != pairs.end() && found->first == question;
                    benchmark::DoNotOptimize(hit ? found->second : nullptr);
                }
            }
        });
    }
    bench::ToReach(work, vector, bench::asFast);
}

/// Appending with a reallocation at each step of ten and nothing else.
void AppendByTen(int count) {
    Pair* block = nullptr;
    int capacity = 0;
    for (int i = 0; i < count; ++i) {
        if (i == capacity) {
            capacity += 10;
            auto* grown = static_cast<Pair*>(std::realloc(
                static_cast<void*>(block), static_cast<std::size_t>(capacity) * sizeof(Pair)));
            if (grown == nullptr)
                break;
            block = grown;
        }
        block[i] = {i, nullptr};
    }
    benchmark::DoNotOptimize(block);
    std::free(block);
}

void MeasureAppends() {
    static constexpr char work[] = "array list, appends";
    for (const auto& [size, count] : sizes) {
        bench::Measure(work, size, bench::ours, [count](benchmark::State& state) {
            for (auto _ : state) {
                CMyArrayList list;
                for (int i = 0; i < count; ++i)
                    list.AppendToTail(nullptr, i);
                benchmark::DoNotOptimize(list.FastIndex(0));
            }
        });
        bench::Measure(work, size, "vector", [count](benchmark::State& state) {
            for (auto _ : state) {
                Pairs pairs;
                for (int i = 0; i < count; ++i)
                    pairs.push_back({i, nullptr});
                benchmark::DoNotOptimize(pairs.data());
            }
        });
        if (count < 1'000'000)
            bench::Measure(work, size, "realloc by ten", [count](benchmark::State& state) {
                for (auto _ : state)
                    AppendByTen(count);
            });
    }
    // A vector does not count steps of ten, so that only what counts them says what can be reached.
    bench::ToReach(work, "realloc by ten", bench::asFast);
    bench::Explain(
        work, "vector",
        "each append is a call into the DLL and counts the capacity in steps of ten; the "
        "memory behind it grows as the vector's does, so that the two meet as the block "
        "becomes large");
}

struct NoLock {
    void Lock() {}
    void Unlock() {}
};

/// Peers of a list named `peer`, whose every operation takes the lock.
template <class Lock>
void MeasureStandardList(const std::string& append, const std::string& walk, const char* peer) {
    bench::Measure(append, "", peer, [](benchmark::State& state) {
        Lock lock;
        for (auto _ : state) {
            std::list<Pair> list;
            for (int i = 0; i < listSize; ++i) {
                lock.Lock();
                list.push_back({i, nullptr});
                lock.Unlock();
            }
            benchmark::DoNotOptimize(list.size());
            state.PauseTiming();
            list.clear();
            state.ResumeTiming();
        }
    });
    bench::Measure(walk, "", peer, [](benchmark::State& state) {
        Lock lock;
        std::list<Pair> list;
        for (int i = 0; i < listSize; ++i)
            list.push_back({i, nullptr});
        for (auto _ : state) {
            for (const Pair& pair : list) {
                lock.Lock();
                benchmark::DoNotOptimize(pair.second);
                lock.Unlock();
            }
        }
    });
    bench::ToReach(append, peer, bench::asFast);
    bench::ToReach(walk, peer, bench::asFast);
}

template <class List, class Lock>
void MeasureList(const std::string& name, const char* peer) {
    const std::string append = name + ", a million appends";
    const std::string walk = name + ", a million steps by index";
    bench::Measure(append, "", bench::ours, [](benchmark::State& state) {
        for (auto _ : state) {
            List list;
            for (int i = 0; i < listSize; ++i)
                list.AppendToTail(nullptr, i);
            benchmark::DoNotOptimize(list.NumNodes());
            state.PauseTiming();
            list.RemoveAll();
            state.ResumeTiming();
        }
    });
    bench::Measure(walk, "", bench::ours, [](benchmark::State& state) {
        List list;
        for (int i = 0; i < listSize; ++i)
            list.AppendToTail(nullptr, i);
        for (auto _ : state) {
            for (int i = 0; i < listSize; ++i)
                benchmark::DoNotOptimize(list.Index(i, nullptr));
        }
    });
    MeasureStandardList<Lock>(append, walk, peer);
}

/// Chains as the table has them, without the table: what a search by walking them costs at least.
class Chains {
public:
    explicit Chains(std::size_t count) : chains(count) {}

    void Add(const char* key, long long value) { chains[ChainOf(key)].push_back({key, value}); }

    long long Find(const char* key) const {
        for (const auto& [other, value] : chains[ChainOf(key)]) {
            if (std::strcmp(other, key) == 0)
                return value;
        }
        return -1;
    }

private:
    std::size_t ChainOf(const char* key) const {
        unsigned sum = 0;
        for (; *key != '\0'; ++key)
            sum += static_cast<unsigned>(static_cast<signed char>(*key));
        return sum % static_cast<unsigned>(chains.size());
    }

    std::vector<std::vector<std::pair<const char*, long long>>> chains;
};

void MeasureHashTable() {
    static constexpr char work[] = "hash table, find among 1,000 keys";
    static constexpr char map[] = "unordered_map";
    static constexpr char chain[] = "the same chains, strcmp";
    static std::vector<std::string> keys;
    std::mt19937 random(9);
    for (int i = 0; i < 1000; ++i) {
        std::string key;
        for (std::size_t length = 8 + random() % 16; key.size() < length;)
            key += static_cast<char>('a' + random() % 26);
        keys.push_back(key);
    }
    // Asked with other copies of the keys, in another order.
    static std::vector<std::string> questions = keys;
    std::shuffle(questions.begin(), questions.end(), random);

    for (const auto& [size, buckets] :
         {std::pair("25 buckets", 25), std::pair("1,009 buckets", 1009)}) {
        bench::Measure(work, size, bench::ours, [buckets](benchmark::State& state) {
            CHashTable table(buckets);
            for (std::string& key : keys)
                table.AddEntry(key.data(), 1);
            std::size_t next = 0;
            for (auto _ : state) {
                long long value = 0;
                benchmark::DoNotOptimize(table.Find(questions[next].c_str(), value));
                next = next + 1 < questions.size() ? next + 1 : 0;
            }
        });
        bench::Measure(work, size, chain, [buckets](benchmark::State& state) {
            Chains chains(static_cast<std::size_t>(buckets));
            for (const std::string& key : keys)
                chains.Add(key.c_str(), 1);
            std::size_t next = 0;
            for (auto _ : state) {
                benchmark::DoNotOptimize(chains.Find(questions[next].c_str()));
                next = next + 1 < questions.size() ? next + 1 : 0;
            }
        });
        bench::Measure(work, size, map, [](benchmark::State& state) {
            std::unordered_map<std::string_view, long long> table;
            for (const std::string& key : keys)
                table.emplace(key, 1);
            std::size_t next = 0;
            for (auto _ : state) {
                // The length is not known to a host that asks our table either.
                benchmark::DoNotOptimize(table.find(std::string_view(questions[next].c_str())));
                next = next + 1 < questions.size() ? next + 1 : 0;
            }
        });
    }
    bench::ToReach(work, chain, bench::asFast);
    bench::Explain(work, chain,
                   "a bucket is an array list that hosts may ask for, so that a search passes two "
                   "pointers more and a call into the DLL; with one key a bucket that is half the "
                   "time");
    bench::Explain(
        work, map,
        "the sum of a key's bytes, by which it is put into a bucket, puts many keys into "
        "one where lengths are alike, and 25 buckets hold 40 keys each: the same chains "
        "are what can be reached");
}

/// Both must hold the same, in the same order, at the end.
bool Agree() {
    const std::vector<long long> values = MakeValues(20'000);
    CMyArrayList list;
    Pairs pairs;
    for (const long long value : values) {
        list.AddSorted(nullptr, value);
        pairs.insert(std::upper_bound(pairs.begin(), pairs.end(), value, Above), {value, nullptr});
    }
    for (int i = 0; i < list.NumNodes(); ++i) {
        long long value = 0;
        list.Index(i, &value);
        if (value != pairs[static_cast<std::size_t>(i)].first) {
            std::fprintf(stderr, "sorted inserts: the results differ\n");
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (!Agree())
        return 1;
    MeasureSortedInserts();
    MeasureLookUps();
    MeasureAppends();
    MeasureList<CMegaList, NoLock>("linked list", "std::list");
    MeasureList<CMyList, CLock>("locked linked list", "std::list and a lock");
    MeasureHashTable();
    return bench::Run(argc, argv);
}
