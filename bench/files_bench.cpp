// The list of recent files beside the registry and file system calls that it cannot do without.

#include "bench/support/Comparison.h"
#include "bench/support/MeasuringFolder.h"
#include "common/Handles.h"
#include "utilities/containers/MRUList.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>
#include <windows.h>

namespace {

constexpr char place[] = "Software\\vtrutils-bench";

/// A key that exists while this lives.
class Key {
public:
    explicit Key(const char* contender) : name(std::string(place) + "-" + contender) {
        HKEY opened = nullptr;
        RegCreateKeyExA(HKEY_CURRENT_USER, Name(), 0, nullptr, REG_OPTION_VOLATILE, KEY_ALL_ACCESS,
                        nullptr, &opened, nullptr);
        key.Reset(opened);
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() { RegDeleteTreeA(HKEY_CURRENT_USER, Name()); }

    const char* Name() const { return name.c_str(); }

    void Write(const std::string& value, const std::string& text) const {
        RegSetValueExA(key.Get(), value.c_str(), 0, REG_SZ,
                       reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>(text.size() + 1));
    }

private:
    std::string name;
    vtr::RegistryKey key;
};

/// Existing files in one folder.
class Files {
public:
    explicit Files(int count) {
        for (int i = 0; i < count; ++i)
            paths.push_back(folder.Write("recording " + std::to_string(i) + ".wav", ""));
    }

    const std::vector<std::string>& Paths() const { return paths; }

private:
    bench::MeasuringFolder folder;
    std::vector<std::string> paths;
};

/// The list under `key` before it is loaded.
void WriteList(const Key& key, const Files& files) {
    int k = 0;
    for (const std::string& path : files.Paths())
        key.Write("List." + std::to_string(++k), path);
}

void MeasureAdding(const char* size, int count) {
    static constexpr char work[] = "recent files, add the last one and save";
    static constexpr char calls[] = "the same look-ups and writes alone";
    const auto files = std::make_shared<Files>(count);
    bench::Measure(work, size, bench::ours, [files](benchmark::State& state) {
        const Key key("ours");
        WriteList(key, *files);
        char name[] = "List";
        CMRUList list(name);
        list.Init(HKEY_CURRENT_USER, key.Name());
        const unsigned last = static_cast<unsigned>(files->Paths().size()) - 1;
        for (auto _ : state)
            list.AddFile(list.GetFileWithPath(last), 1);
        if (list.GetFileWithPath(last) == nullptr || list.GetFileWithPath(last + 1) != nullptr)
            state.SkipWithError("another number of entries");
    });
    bench::Measure(work, size, calls, [files](benchmark::State& state) {
        const Key key("alone");
        const std::size_t entries = files->Paths().size();
        std::size_t first = 0;
        std::uint64_t time = 133'000'000'000'000'000;
        for (auto _ : state) {
            // Each round moves every entry, as adding the last one does.
            first = (first == 0 ? entries : first) - 1;
            for (std::size_t i = 0; i < entries; ++i) {
                const std::string& path = files->Paths()[(first + i) % entries];
                const std::string number = std::to_string(i + 1);
                benchmark::DoNotOptimize(GetFileAttributesA(path.c_str()));
                key.Write("List." + number, path);
                key.Write("List-last-length." + number, "1");
                key.Write("List-last-time." + number, std::to_string(++time));
            }
            for (std::size_t blank = 1; blank <= 5; ++blank)
                key.Write("List." + std::to_string(entries + blank), "");
        }
    });
    bench::ToReach(work, calls, bench::asFast);
    bench::Explain(
        work, calls,
        "adding also asks twice about the file added, and opens the key for each save: a "
        "fixed cost, which a short list feels");
    // A hundred times the entries, and the registry finds a value among 3,000 more slowly than
    // among 30.
    bench::GrowthToReach(work, 150);
}

} // namespace

int main(int argc, char** argv) {
    MeasureAdding("10", 10);
    MeasureAdding("1,000", 1000);
    return bench::Run(argc, argv);
}
