// INI documents: loading, sorting, looking up and saving.

#include "bench/peers/ProfileFunctions.h"
#include "bench/peers/SimpleIniDocument.h"
#include "bench/peers/StandardMapIni.h"
#include "bench/support/Comparison.h"
#include "bench/support/IniCorpus.h"
#include "bench/support/MeasuringFolder.h"
#include "utilities/text/ini/IniFileReader.h"

#include <cstdio>
#include <memory>
#include <optional>

namespace {

using bench::IniPair;

constexpr unsigned valueSize = 256;

/// Ours, with the operations that all contenders have.
template <bool sorted>
class OurDocument {
public:
    static constexpr const char* name = bench::ours;

    bool Load(const char* path) { return document.Init(path, sorted); }

    bool Find(const char* section, const char* key, char* buffer) const {
        return document.GetString(section, key, "", buffer, valueSize);
    }

    bool Save(const char* path) { return document.SetFileName(path) && document.Save(); }
    void Sort() { document.Sort(); }

    std::size_t Count() const { return Pairs().size(); }

    /// In the order of the document.
    std::vector<IniPair> Pairs() const {
        std::vector<IniPair> pairs;
        for (unsigned s = 0; s < document.NumSections(); ++s) {
            const int section = static_cast<int>(s);
            for (int i = 0; i < document.GetNumValues(section); ++i) {
                const CIniValue* pair = document.GetValue(section, i);
                pairs.push_back({document.SectionName(s), pair->Key(), pair->Value()});
            }
        }
        return pairs;
    }

private:
    CIniFileReader document;
};

using Unsorted = OurDocument<false>;
using Sorted = OurDocument<true>;

/// One document and all contenders that hold it.
struct Subject {
    Subject(const bench::MeasuringFolder& folder, std::size_t count, const char* sizeName)
        : size(sizeName), pairs(bench::MakeIniPairs(count)), bytes(bench::IniText(pairs).size()),
          path(folder.Write(std::to_string(count) + ".ini", bench::IniText(pairs))),
          savedPath(folder.File(std::to_string(count) + "-saved.ini")),
          shuffled(bench::Shuffled(pairs)) {}

    std::string size;
    std::vector<IniPair> pairs;
    std::size_t bytes;
    std::string path;
    std::string savedPath;
    bench::IniQuestions shuffled;
    std::optional<bench::IniQuestions> inOrder; ///< the order of the sorted document

    Sorted sorted;
    bench::SimpleIni simpleIni;
    bench::SimpleIniMultibyte simpleIniMultibyte;
    bench::HashMapIni hashMaps;
    bench::MapIni maps;
    bench::ProfileFunctions profile;
};

// A contender that does other work than ours is not a peer: before anything is measured, all must
// find every pair of the document with its value, and nothing else.

bool Complain(const Subject& subject, const char* contender, const char* what) {
    std::fprintf(stderr, "%s, %s: %s\n", subject.size.c_str(), contender, what);
    return false;
}

template <class Document>
bool FindsValues(const Subject& subject, const Document& document, std::size_t step) {
    for (std::size_t i = 0; i < subject.pairs.size(); i += step) {
        const IniPair& pair = subject.pairs[i];
        char value[valueSize] = "";
        if (!document.Find(pair.section.c_str(), pair.key.c_str(), value) || value != pair.value)
            return Complain(subject, Document::name, "finds other values");
    }
    return true;
}

template <class Document>
bool LoadsAll(const Subject& subject, Document& document, const std::string& path) {
    if (!document.Load(path.c_str()) || document.Count() != subject.pairs.size())
        return Complain(subject, Document::name, "loads other pairs");
    return FindsValues(subject, document, /*step=*/1);
}

template <class Document>
bool LoadsAll(const Subject& subject, Document& document) {
    return LoadsAll(subject, document, subject.path);
}

template <class Document>
bool SavesAll(const Subject& subject, Document& document) {
    Sorted saved;
    return (document.Save(subject.savedPath.c_str()) &&
            LoadsAll(subject, saved, subject.savedPath)) ||
           Complain(subject, Document::name, "saves other pairs");
}

bool Prepare(Subject& subject) {
    // A look-up by Windows takes so long that a part of the pairs must do.
    const std::size_t profileStep = subject.pairs.size() / 200;
    const bool agreed = LoadsAll(subject, subject.sorted) && LoadsAll(subject, subject.simpleIni) &&
                        LoadsAll(subject, subject.simpleIniMultibyte) &&
                        LoadsAll(subject, subject.hashMaps) && LoadsAll(subject, subject.maps) &&
                        subject.profile.Load(subject.path.c_str()) &&
                        FindsValues(subject, subject.profile, profileStep) &&
                        SavesAll(subject, subject.sorted) && SavesAll(subject, subject.simpleIni);
    subject.inOrder.emplace(subject.sorted.Pairs());
    return agreed;
}

/// Time of loading into a new document; freeing it is left out.
template <class Document>
void MeasureLoad(const Subject& subject, const char* work) {
    bench::Measure(work, subject.size, Document::name, [&subject](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            auto document = std::make_unique<Document>();
            state.ResumeTiming();
            if (!document->Load(subject.path.c_str()))
                return state.SkipWithError("cannot be loaded");
            state.PauseTiming();
            document.reset();
            state.ResumeTiming();
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(subject.bytes));
    });
}

void MeasureSort(const Subject& subject, const char* work) {
    bench::Measure(work, subject.size, bench::ours, [&subject](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            auto document = std::make_unique<Unsorted>();
            if (!document->Load(subject.path.c_str()))
                return state.SkipWithError("cannot be loaded");
            state.ResumeTiming();
            document->Sort();
            state.PauseTiming();
            document.reset();
            state.ResumeTiming();
        }
    });
}

template <class Document>
void MeasureSave(const Subject& subject, Document& document, const char* work) {
    bench::Measure(work, subject.size, Document::name, [&](benchmark::State& state) {
        for (auto _ : state) {
            if (!document.Save(subject.savedPath.c_str()))
                return state.SkipWithError("cannot be saved");
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(subject.bytes));
    });
}

/// Time of one look-up.
template <class Document>
void MeasureLookUp(const Subject& subject, const Document& document, const char* work,
                   bench::IniQuestions& questions, const char* name = Document::name) {
    bench::Measure(work, subject.size, name, [&](benchmark::State& state) {
        char value[valueSize];
        for (auto _ : state) {
            const bench::IniQuestions::Question& asked = questions.Next();
            if (!document.Find(asked.section, asked.key, value))
                return state.SkipWithError("finds nothing");
            benchmark::DoNotOptimize(value);
        }
    });
}

void MeasureAll(Subject& subject) {
    static constexpr char load[] = "INI load";
    MeasureLoad<Unsorted>(subject, load);
    MeasureLoad<bench::SimpleIni>(subject, load);
    MeasureLoad<bench::SimpleIniMultibyte>(subject, load);
    MeasureLoad<bench::HashMapIni>(subject, load);
    MeasureLoad<bench::ProfileFunctions>(subject, load);
    bench::ToReach(load, bench::SimpleIni::name, 1.5);
    bench::ToReach(load, bench::SimpleIniMultibyte::name, 1.5);
    bench::ToReach(load, bench::HashMapIni::name, 1);

    static constexpr char loadSorted[] = "INI load, sorted";
    MeasureLoad<Sorted>(subject, loadSorted);
    MeasureLoad<bench::SimpleIni>(subject, loadSorted);
    MeasureLoad<bench::SimpleIniMultibyte>(subject, loadSorted);
    MeasureLoad<bench::MapIni>(subject, loadSorted);

    static constexpr char sort[] = "INI sort";
    MeasureSort(subject, sort);

    static constexpr char random[] = "INI look-up, random";
    MeasureLookUp(subject, subject.sorted, random, subject.shuffled);
    MeasureLookUp(subject, subject.maps, random, subject.shuffled);
    MeasureLookUp(subject, subject.hashMaps, random, subject.shuffled);
    MeasureLookUp(subject, subject.simpleIni, random, subject.shuffled);
    MeasureLookUp(subject, subject.simpleIniMultibyte, random, subject.shuffled);
    MeasureLookUp(subject, subject.profile, random, subject.shuffled);
    bench::ToReach(random, bench::MapIni::name, 1);

    static constexpr char inOrder[] = "INI look-up, in order";
    static constexpr char mapAtRandom[] = "std::map, random";
    static constexpr char oursAtRandom[] = "ours, random";
    MeasureLookUp(subject, subject.sorted, inOrder, *subject.inOrder);
    MeasureLookUp(subject, subject.maps, inOrder, subject.shuffled, mapAtRandom);
    MeasureLookUp(subject, subject.sorted, inOrder, subject.shuffled, oursAtRandom);
    MeasureLookUp(subject, subject.maps, inOrder, *subject.inOrder);
    MeasureLookUp(subject, subject.hashMaps, inOrder, *subject.inOrder);
    MeasureLookUp(subject, subject.simpleIni, inOrder, *subject.inOrder);
    bench::ToReach(inOrder, mapAtRandom, 4);

    static constexpr char save[] = "INI save";
    MeasureSave(subject, subject.sorted, save);
    MeasureSave(subject, subject.simpleIni, save);
    bench::ToReach(save, bench::SimpleIni::name, 2);

    for (const char* work : {load, loadSorted, sort, random, inOrder, save})
        bench::GrowthToReach(work, 12);
}

} // namespace

int main(int argc, char** argv) {
    const bench::MeasuringFolder folder;
    Subject small(folder, 10'000, "10,000 pairs");
    Subject large(folder, 100'000, "100,000 pairs");
    if (!Prepare(small) || !Prepare(large))
        return 1;
    MeasureAll(small);
    MeasureAll(large);
    return bench::Run(argc, argv);
}
