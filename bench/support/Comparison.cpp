#include "bench/support/Comparison.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <utility>
#include <vector>
#include <windows.h>

namespace bench {

namespace {

struct Work {
    std::string name;
    std::vector<std::string> sizes;
    std::vector<std::string> peers;
    std::map<std::string, double> ratios;
    std::map<std::string, std::string> reasons;
    std::optional<double> growth;
};

struct Result {
    double seconds = 0;
    double bytesPerSecond = 0;
};

std::vector<Work> works;

Work& FindWork(const std::string& name) {
    const auto found =
        std::find_if(works.begin(), works.end(), [&](const Work& w) { return w.name == name; });
    if (found != works.end())
        return *found;
    works.push_back({name, {}, {}, {}, {}, {}});
    return works.back();
}

void AddOnce(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(name);
}

std::string FullName(const std::string& work, const std::string& size,
                     const std::string& contender) {
    return work + "/" + size + "/" + contender;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 != 0 ? values[half] : (values[half - 1] + values[half]) / 2;
}

/// Three significant digits.
std::string FormatNumber(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", value < 10 ? 2 : value < 100 ? 1 : 0, value);
    return text;
}

/// As few digits as tell it.
std::string FormatTarget(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string FormatTime(double seconds) {
    static constexpr std::pair<double, const char*> units[] = {{1e-3, " ms"}, {1e-6, " us"}};
    for (const auto& [unit, name] : units) {
        if (seconds >= unit)
            return FormatNumber(seconds / unit) + name;
    }
    return FormatNumber(seconds * 1e9) + " ns";
}

/// Keeps the median of each measurement and tells on the error stream how far the run has come.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        std::vector<double> seconds;
        std::vector<double> bytesPerSecond;
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration)
                continue;
            if (run.error_occurred) {
                failed = true;
                std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(),
                             run.error_message.c_str());
                return;
            }
            seconds.push_back(run.real_accumulated_time / static_cast<double>(run.iterations));
            const auto bytes = run.counters.find("bytes_per_second");
            bytesPerSecond.push_back(bytes != run.counters.end() ? bytes->second.value : 0);
        }
        if (seconds.empty())
            return;
        const std::string& name = runs.front().run_name.function_name;
        results[name] = {Median(seconds), Median(bytesPerSecond)};
        std::fprintf(stderr, "%s: %s\n", name.c_str(), FormatTime(results[name].seconds).c_str());
    }

    bool Failed() const { return failed; }

    const Result* Find(const Work& work, const std::string& size,
                       const std::string& contender) const {
        const auto found = results.find(FullName(work.name, size, contender));
        return found != results.end() ? &found->second : nullptr;
    }

private:
    std::map<std::string, Result> results;
    bool failed = false;
};

class Table {
public:
    explicit Table(const Collector& measured) : collector(measured) {}

    void Print() const {
        for (const Work& work : works) {
            for (const std::string& size : work.sizes)
                PrintSize(work, size);
        }
    }

private:
    using Cells = std::vector<std::string>;

    struct Targets {
        std::string text;
        bool reached = true;

        void Add(const char* what, double value, bool isReached) {
            text += (text.empty() ? "" : ", ") + (what + FormatTarget(value));
            reached = reached && isReached;
        }
    };

    /// A size's first line has the figures of ours and what its growth is to reach; the lines of
    /// further peers below it have only their own.
    void PrintSize(const Work& work, const std::string& size) const {
        const Result* own = collector.Find(work, size, ours);
        std::vector<std::string> peers = work.peers;
        std::erase_if(peers, [&](const std::string& peer) {
            return collector.Find(work, size, peer) == nullptr;
        });
        if (peers.empty() && own != nullptr)
            peers.push_back("");
        for (const std::string& peer : peers) {
            const bool first = &peer == &peers.front();
            const Result* theirs = collector.Find(work, size, peer);
            Cells cells;
            Targets targets;
            if (first) {
                const std::optional<double> growth = Growth(work, size, ours);
                cells = {work.name, size};
                Append(cells, own, growth);
                if (growth && work.growth)
                    targets.Add("growth <= ", *work.growth, *growth <= *work.growth);
            } else {
                cells.resize(5);
            }
            cells.push_back(peer);
            Append(cells, theirs, Growth(work, size, peer));
            std::optional<double> ratio;
            if (own != nullptr && theirs != nullptr)
                ratio = theirs->seconds / own->seconds;
            const auto wanted = work.ratios.find(peer);
            if (ratio && wanted != work.ratios.end())
                targets.Add("ratio >= ", wanted->second, *ratio >= wanted->second);
            cells.push_back(ratio ? FormatNumber(*ratio) : "");
            cells.push_back(targets.text);
            cells.push_back(targets.text.empty() ? "" : targets.reached ? "yes" : "NO");
            PrintLine(cells);
            if (ratio && *ratio < asFast)
                Explain(work, size, peer);
        }
    }

    static void Explain(const Work& work, const std::string& size, const std::string& peer) {
        const auto reason = work.reasons.find(peer);
        if (reason == work.reasons.end())
            return;
        const std::string where = work.name + (size.empty() ? "" : ", ") + size;
        PrintLine({"why", where + ", " + peer + ": " + reason->second});
    }

    /// Time at the last size, in times at the first; none at other sizes.
    std::optional<double> Growth(const Work& work, const std::string& size,
                                 const std::string& contender) const {
        const Result* first = collector.Find(work, work.sizes.front(), contender);
        const Result* last = collector.Find(work, work.sizes.back(), contender);
        if (work.sizes.size() < 2 || size != work.sizes.back() || first == nullptr ||
            last == nullptr)
            return std::nullopt;
        return last->seconds / first->seconds;
    }

    static void Append(Cells& cells, const Result* result, std::optional<double> growth) {
        cells.push_back(result != nullptr ? FormatTime(result->seconds) : "");
        cells.push_back(result != nullptr && result->bytesPerSecond > 0
                            ? FormatNumber(result->bytesPerSecond / 1e6)
                            : "");
        cells.push_back(growth ? FormatNumber(*growth) : "");
    }

    static void PrintLine(const Cells& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            std::printf("%s%s", i > 0 ? "\t" : "", cells[i].c_str());
        std::printf("\n");
    }

    const Collector& collector;
};

benchmark::internal::Benchmark* Register(const std::string& work, const std::string& size,
                                         const std::string& contender, Body body) {
    Work& entry = FindWork(work);
    AddOnce(entry.sizes, size);
    if (contender != ours)
        AddOnce(entry.peers, contender);
    return benchmark::RegisterBenchmark(FullName(work, size, contender).c_str(), std::move(body));
}

double ProcessorSeconds() {
    FILETIME started, ended, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &started, &ended, &kernel, &user);
    const auto seconds = [](const FILETIME& time) {
        return (time.dwHighDateTime * 4294967296.0 + time.dwLowDateTime) / 1e7;
    };
    return seconds(kernel) + seconds(user);
}

} // namespace

void Measure(const std::string& work, const std::string& size, const std::string& contender,
             Body body) {
    Register(work, size, contender, std::move(body))->UseRealTime();
}

void MeasureProcessorTime(const std::string& work, const std::string& size,
                          const std::string& contender, Body iteration) {
    Register(work, size, contender, [iteration](benchmark::State& state) {
        for (auto _ : state) {
            const double before = ProcessorSeconds();
            iteration(state);
            state.SetIterationTime(ProcessorSeconds() - before);
        }
    })->UseManualTime();
}

void ToReach(const std::string& work, const std::string& peer, double ratio) {
    FindWork(work).ratios[peer] = ratio;
}

void Explain(const std::string& work, const std::string& peer, const std::string& reason) {
    FindWork(work).reasons[peer] = reason;
}

void GrowthToReach(const std::string& work, double most) {
    FindWork(work).growth = most;
}

int Run(int argc, char** argv) {
    std::string defaults[] = {"--benchmark_repetitions=15", "--benchmark_min_time=0.05",
                              "--benchmark_enable_random_interleaving=true"};
    std::vector<char*> arguments = {argv[0]};
    for (std::string& argument : defaults)
        arguments.push_back(argument.data());
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    Collector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);
    Table(collector).Print();
    return collector.Failed() ? 1 : 0;
}

} // namespace bench
