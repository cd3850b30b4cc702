// Functions on texts: replacing in place.

#include "bench/support/Comparison.h"
#include "utilities/text/strings/StringFunctions.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>
#include <windows.h>
// After it, because it needs it.
#include <mbstring.h>

namespace {

const unsigned char* Bytes(const char* text) {
    return reinterpret_cast<const unsigned char*>(text);
}

/// The same result as `SearchAndReplaceAll` for a replacement that is not empty, step by step: the
/// rest of the text is moved at each occurrence.
void ReplaceStepByStep(char* text, const char* find, const char* replacement, unsigned bufferSize,
                       bool caseSensitive) {
    const std::size_t findLength = std::strlen(find);
    const std::size_t replacementLength = std::strlen(replacement);
    std::size_t length = std::strlen(text);
    for (std::size_t at = 0; at + findLength <= length; ++at) {
        if (length + replacementLength >= bufferSize + findLength)
            return;
        const bool same = caseSensitive
                              ? std::memcmp(text + at, find, findLength) == 0
                              : _mbsnbicmp(Bytes(text + at), Bytes(find), findLength) == 0;
        if (!same)
            continue;
        std::memmove(text + at + replacementLength, text + at + findLength,
                     length - at - findLength + 1);
        std::memcpy(text + at, replacement, replacementLength);
        length += replacementLength - findLength;
        at += replacementLength - 1;
    }
}

struct Job {
    const char* work;
    const char* find;
    const char* replacement;
    bool caseSensitive;
};

constexpr Job jobs[] = {
    {"replace, growing", "%TITLE%", "The longest evening of the year", true},
    {"replace, shrinking", "%TITLE%", "Dusk", true},
    {"replace, same size", "%TITLE%", "Evening", true},
    {"replace, growing, any case", "%title%", "The longest evening of the year", false},
};

using Replace = void (*)(char*, const char*, const char*, unsigned, bool);

/// Text with an occurrence of the word that all jobs look for every hundred bytes.
std::string MakeText(std::size_t hits) {
    static constexpr char sentence[] =
        "Tracks are mixed in the order of their titles, and each fades into the next for "
        "%TITLE% seconds.\r\n";
    static_assert(sizeof sentence - 1 == 98);
    std::string text;
    for (std::size_t i = 0; i < hits; ++i)
        text += sentence;
    return text;
}

class Buffer {
public:
    explicit Buffer(const std::string& text) : source(text), bytes(text.size() * 2) {}

    char* Refill() {
        std::memcpy(bytes.data(), source.c_str(), source.size() + 1);
        return bytes.data();
    }

    void Run(Replace replace, const Job& job) {
        replace(bytes.data(), job.find, job.replacement, static_cast<unsigned>(bytes.size()),
                job.caseSensitive);
    }

    const char* Text() const { return bytes.data(); }

private:
    const std::string& source;
    std::vector<char> bytes;
};

/// Both must change the text, to the same.
bool Agree(const Job& job, const std::string& text) {
    Buffer own(text);
    Buffer peer(text);
    own.Refill();
    own.Run(SearchAndReplaceAll, job);
    peer.Refill();
    peer.Run(ReplaceStepByStep, job);
    const bool agreed = own.Text() != text && std::strcmp(own.Text(), peer.Text()) == 0;
    if (!agreed)
        std::fprintf(stderr, "%s: the results differ\n", job.work);
    return agreed;
}

void MeasureReplace(const Job& job, const char* size, const std::string& text,
                    const char* contender, Replace replace) {
    bench::Measure(job.work, size, contender, [&job, &text, replace](benchmark::State& state) {
        Buffer buffer(text);
        for (auto _ : state) {
            state.PauseTiming();
            benchmark::DoNotOptimize(buffer.Refill());
            state.ResumeTiming();
            buffer.Run(replace, job);
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    });
}

} // namespace

int main(int argc, char** argv) {
    static constexpr char naive[] = "step by step";
    const std::string small = MakeText(1'000);
    const std::string large = MakeText(10'000);
    for (const Job& job : jobs) {
        if (!Agree(job, small) || !Agree(job, large))
            return 1;
        for (const auto& [size, text] :
             {std::pair("100 KB, 1,000 hits", &small), std::pair("1 MB, 10,000 hits", &large)}) {
            MeasureReplace(job, size, *text, bench::ours, SearchAndReplaceAll);
            MeasureReplace(job, size, *text, naive, ReplaceStepByStep);
        }
        bench::GrowthToReach(job.work, 12);
    }
    return bench::Run(argc, argv);
}
