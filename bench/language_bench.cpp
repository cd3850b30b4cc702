// Language strings: looking up texts that are kept and texts that are read from their file.

#include "bench/support/Comparison.h"
#include "bench/support/MeasuringFolder.h"
#include "common/Handles.h"
#include "utilities/containers/HashTable.h"
#include "utilities/system/locks/Lock.h"
#include "utilities/text/language/LanguageStrings.h"

#include <cstdio>
#include <cstring>
#include <deque>
#include <string>
#include <utility>

namespace {

constexpr int bufferSize = 256;

/// Keys and texts as applications have them, each named after the size it belongs to.
struct Subject {
    Subject(const bench::MeasuringFolder& folder, const char* sizeName, int count)
        : size(sizeName) {
        std::string bytes = "[Strings]\r\n";
        for (int i = 0; i < count; ++i) {
            keys.push_back("Dialog" + std::to_string(count) + "_Caption" + std::to_string(i));
            texts.push_back("Choose the folder for track " + std::to_string(i));
            bytes += keys.back() + " = " + texts.back() + "\r\n";
        }
        length = bytes.size();
        file = folder.Write(std::to_string(count) + ".ini", bytes);
    }

    std::string size;
    std::deque<std::string> keys;
    std::deque<std::string> texts;
    std::string file;
    std::size_t length = 0;
};

/// What the cache is made of, and the measure of a look-up in it: a lock and a table of as many
/// buckets. Texts stay in the library's cache for good, so that both hold the keys of all sizes, in
/// the same order, before anything is measured.
struct Kept {
    CHashTable table{25};
    CLock lock;

    void Add(Subject& subject) {
        SetStringFile(subject.file.data());
        char text[bufferSize];
        for (std::string& key : subject.keys) {
            MyLoadString(key.c_str(), text, bufferSize, nullptr, true);
            table.AddEntry(key.data(), 1);
        }
    }
};

/// Time of one look-up of a key that was looked up before.
void MeasureKept(Subject& subject, Kept& kept) {
    static constexpr char work[] = "language string, kept";
    static constexpr char parts[] = "lock and hash look-up";
    bench::Measure(work, subject.size, bench::ours, [&subject](benchmark::State& state) {
        SetStringFile(subject.file.data());
        char text[bufferSize];
        std::size_t next = 0;
        for (auto _ : state) {
            next = next + 1 < subject.keys.size() ? next + 1 : 0;
            benchmark::DoNotOptimize(
                MyLoadString(subject.keys[next].c_str(), text, bufferSize, nullptr, true));
        }
        if (text != subject.texts[next])
            state.SkipWithError("another text");
    });
    bench::Measure(work, subject.size, parts, [&subject, &kept](benchmark::State& state) {
        std::size_t next = 0;
        for (auto _ : state) {
            next = next + 1 < subject.keys.size() ? next + 1 : 0;
            long long value = 0;
            kept.lock.Lock();
            benchmark::DoNotOptimize(kept.table.Find(subject.keys[next].c_str(), value));
            kept.lock.Unlock();
        }
    });
    bench::ToReach(work, parts, 0.5);
}

/// The same, line by line.
bool FindByLines(const char* file, const char* key, char* text) {
    const vtr::StreamHandle stream(std::fopen(file, "r"));
    char line[1024];
    while (stream && std::fgets(line, sizeof line, stream.Get()) != nullptr) {
        char* equals = std::strchr(line, '=');
        if (line[0] == '[' || line[0] == ';' || equals == nullptr)
            continue;
        equals[-1] = '\0';
        if (_stricmp(line, key) != 0)
            continue;
        std::snprintf(text, bufferSize, "%s", equals + 2);
        text[std::strcspn(text, "\n")] = '\0';
        return true;
    }
    return false;
}

/// Time of finding the last text of a file.
void MeasureReading(Subject& subject) {
    static constexpr char work[] = "language string, read";
    const auto measure = [&subject](const char* contender, auto find) {
        bench::Measure(work, subject.size, contender, [&subject, find](benchmark::State& state) {
            char text[bufferSize] = "";
            for (auto _ : state)
                find(subject.file.data(), subject.keys.back().c_str(), text);
            if (text != subject.texts.back())
                state.SkipWithError("another text");
            state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(subject.length));
        });
    };
    measure(bench::ours, [](char* file, const char* key, char* text) {
        MyLoadString(key, text, bufferSize, file, true);
    });
    measure("fgets", [](char* file, const char* key, char* text) { FindByLines(file, key, text); });
    measure("profile functions", [](char* file, const char* key, char* text) {
        GetPrivateProfileStringA("Strings", key, "", text, bufferSize, file);
    });
}

} // namespace

int main(int argc, char** argv) {
    const bench::MeasuringFolder folder;
    Subject few(folder, "50 keys", 50);
    Subject many(folder, "2,000 keys", 2000);
    Kept kept;
    for (Subject* subject : {&few, &many}) {
        kept.Add(*subject);
        MeasureKept(*subject, kept);
        MeasureReading(*subject);
    }
    return bench::Run(argc, argv);
}
