// The string class beside the standard one.

#include "bench/support/Comparison.h"
#include "utilities/text/strings/COMString.h"

#include <string>
#include <utility>

namespace {

constexpr char standard[] = "std::string";

void MeasureAppend() {
    static constexpr char work[] = "string, append 10 bytes so many times";
    for (const auto& [size, count] : {std::pair("100", 100), std::pair("1,000", 1000)}) {
        bench::Measure(work, size, bench::ours, [count](benchmark::State& state) {
            for (auto _ : state) {
                CCOMString text;
                for (int i = 0; i < count; ++i)
                    text += "0123456789";
                benchmark::DoNotOptimize(static_cast<const char*>(text));
            }
        });
        bench::Measure(work, size, standard, [count](benchmark::State& state) {
            for (auto _ : state) {
                std::string text;
                for (int i = 0; i < count; ++i)
                    text += "0123456789";
                benchmark::DoNotOptimize(text.data());
            }
        });
    }
    bench::Explain(work, standard,
                   "the object is two words by contract, without length or spare room: each append "
                   "measures the text and reallocates the block");
}

std::string ReplaceInOnePass(const std::string& text, const std::string& find,
                             const std::string& by) {
    std::string done;
    std::size_t from = 0;
    for (std::size_t hit; (hit = text.find(find, from)) != std::string::npos;) {
        done.append(text, from, hit - from).append(by);
        from = hit + find.size();
    }
    return done.append(text, from);
}

void MeasureReplace() {
    static constexpr char work[] = "string, replace 4 bytes by 6 in each 100";
    for (const auto& [size, lines] : {std::pair("10 KB", 100), std::pair("100 KB", 1000)}) {
        std::string source;
        for (int i = 0; i < lines; ++i)
            source += std::string(96, 'x') + "find";
        const std::string wanted = ReplaceInOnePass(source, "find", "change");
        const auto bytes = static_cast<std::int64_t>(source.size());
        bench::Measure(work, size, bench::ours, [=](benchmark::State& state) {
            CCOMString text;
            for (auto _ : state) {
                text = source.c_str();
                benchmark::DoNotOptimize(text.Replace("find", "change"));
            }
            if (wanted != static_cast<const char*>(text))
                state.SkipWithError("other text than the peer's");
            state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * bytes);
        });
        bench::Measure(work, size, standard, [=](benchmark::State& state) {
            std::string text;
            for (auto _ : state) {
                text = source;
                text = ReplaceInOnePass(text, "find", "change");
                benchmark::DoNotOptimize(text.data());
            }
            state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * bytes);
        });
    }
    bench::ToReach(work, standard, bench::asFast);
    bench::GrowthToReach(work, 15);
}

} // namespace

int main(int argc, char** argv) {
    MeasureAppend();
    MeasureReplace();
    return bench::Run(argc, argv);
}
