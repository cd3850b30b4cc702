// Texts from the web: decoding references and making links.

#include "bench/support/Comparison.h"
#include "utilities/text/html/HtmlText.h"

#include <cstring>
#include <string>
#include <vector>

namespace {

std::string Repeated(std::string_view part, std::size_t size) {
    std::string text;
    while (text.size() < size)
        text += part;
    return text;
}

void MeasureDecoding(const char* work, const char* size, const std::string& text) {
    bench::Measure(work, size, bench::ours, [&text](benchmark::State& state) {
        std::vector<char> buffer(text.size() + 1);
        for (auto _ : state) {
            state.PauseTiming();
            std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
            state.ResumeTiming();
            DeHTMLifyString(buffer.data(), static_cast<unsigned>(buffer.size()));
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    });
    bench::GrowthToReach(work, 12);
}

void MeasureLinks(const char* work, const char* size, const std::string& text) {
    bench::Measure(work, size, bench::ours, [&text](benchmark::State& state) {
        std::string source = text;
        std::vector<char> buffer(text.size() * 2);
        for (auto _ : state)
            ParseForHTML(source.data(), static_cast<long>(source.size()), buffer.data(),
                         static_cast<long>(buffer.size()));
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    });
    bench::GrowthToReach(work, 12);
}

void MeasureOffence(const char* work, const char* size, const std::string& text) {
    bench::Measure(work, size, bench::ours, [&text](benchmark::State& state) {
        std::string source = text;
        for (auto _ : state) {
            if (HasBadWord(source.data()))
                return state.SkipWithError("takes offence");
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    });
    bench::GrowthToReach(work, 12);
}

constexpr std::string_view prose =
    "Tracks are mixed in the order of their titles, and each fades into the next for a second. "
    "Rock &amp; Roll, Caf&eacute;&#32;del&nbsp;Mar; write to office@example.net or see "
    "www.example.com/mixes for more, <b>at any time</b>.\r\n";

} // namespace

int main(int argc, char** argv) {
    struct Size {
        const char* name;
        std::string prose;
        std::string references;
    };
    std::vector<Size> sizes;
    for (const auto& [name, size] :
         {std::pair("1 MB", 1'000'000u), std::pair("10 MB", 10'000'000u)})
        sizes.push_back({name, Repeated(prose, size), Repeated("&&x&zzzz", size)});
    for (const Size& size : sizes) {
        MeasureDecoding("HTML decode, prose", size.name, size.prose);
        MeasureDecoding("HTML decode, unknown references only", size.name, size.references);
        MeasureLinks("HTML links", size.name, size.prose);
        MeasureOffence("offensive words", size.name, size.prose);
    }
    return bench::Run(argc, argv);
}
