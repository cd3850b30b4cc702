// XML documents: loading, freeing and looking up.

#include "bench/peers/XMLPeers.h"
#include "bench/support/Comparison.h"
#include "bench/support/MeasuringFolder.h"
#include "utilities/xml/XMLFile.h"

#include <cstdio>
#include <memory>

namespace {

class OurDocument {
public:
    static constexpr const char* name = bench::ours;

    bool Load(const char* path) { return document.Open(path); }

    std::size_t Count() const { return Count(*document.GetChild(0)); }

    const char* Find(const char* wanted) const {
        const CXMLNode* node = document.FindNode(wanted);
        return node != nullptr ? node->GetContentString(0) : nullptr;
    }

    template <class Visit>
    void ForEachText(const char* wanted, Visit visit) const {
        const CXMLNode* list = document.GetChild(0)->GetChild(0);
        for (unsigned i = 0; i < list->NumChildren(); ++i) {
            const CXMLNode* child = list->GetChild(i)->GetChildByName(wanted);
            visit(child != nullptr ? child->GetContentString(0) : nullptr);
        }
    }

private:
    static std::size_t Count(const CXMLNode& node) {
        std::size_t count = 1;
        for (unsigned i = 0; i < node.NumChildren(); ++i)
            count += Count(*node.GetChild(i));
        return count;
    }

    CXMLFile document;
};

/// The reply of a web service that lists releases, 461 to 466 bytes each.
std::string MakeReply(std::size_t size) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<metadata xmlns=\"http://example.org/ns/mmd-1.0#\"><release-list "
                       "count=\"100\" offset=\"0\">\n";
    for (unsigned i = 0; text.size() < size; ++i) {
        const std::string id = std::to_string(i);
        text += "  <release type=\"Album Official\" id=\"b1f2c3d4-" + id +
                "\">\n    <title>The longest evening of the year, volume " + id +
                "</title>\n    <text-representation language=\"ENG\" script=\"Latn\"/>\n"
                "    <artist id=\"a74b1b7f-71a5-4011-9441-d0b5e4122711\">"
                "<name>Some &amp; Others</name><sort-name>Others, Some</sort-name></artist>\n"
                "    <release-event-list><event date=\"1999-05-17\" country=\"GB\"/>"
                "</release-event-list>\n    <disc-list count=\"1\"/><track-list offset=\"11\"/>\n"
                "  </release>\n";
    }
    return text + "<last>end</last></release-list></metadata>\n";
}

struct Subject {
    Subject(const bench::MeasuringFolder& folder, std::size_t length, const char* sizeName)
        : size(sizeName), text(MakeReply(length)),
          path(folder.Write(std::string(sizeName) + ".xml", text)) {}

    std::string size;
    std::string text;
    std::string path;
    OurDocument ours;
    bench::TinyXml2 tiny;
    bench::PugiXml pugi;
};

/// All must find the same.
template <class Document>
std::string Found(const Subject& subject, Document& document) {
    if (!document.Load(subject.path.c_str()))
        return "cannot load";
    std::string found = std::to_string(document.Count()) + document.Find("last");
    document.ForEachText("title",
                         [&](const char* title) { found += title != nullptr ? title : "-"; });
    return found;
}

bool Prepare(Subject& subject) {
    const std::string found = Found(subject, subject.ours);
    const bool agreed = found.size() > subject.text.size() / 20 &&
                        found == Found(subject, subject.tiny) &&
                        found == Found(subject, subject.pugi);
    if (!agreed)
        std::fprintf(stderr, "%s: the documents differ\n", subject.size.c_str());
    return agreed;
}

/// One of the two is measured: loading into a new document, or freeing it.
template <class Document>
void MeasureLife(const Subject& subject, const char* work, bool loading) {
    bench::Measure(work, subject.size, Document::name, [&, loading](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            auto document = std::make_unique<Document>();
            if (loading)
                state.ResumeTiming();
            if (!document->Load(subject.path.c_str()))
                return state.SkipWithError("cannot be loaded");
            if (loading)
                state.PauseTiming();
            else
                state.ResumeTiming();
            document.reset();
            if (loading)
                state.ResumeTiming();
        }
        state.SetBytesProcessed(state.iterations() *
                                static_cast<std::int64_t>(subject.text.size()));
    });
}

constexpr char load[] = "XML load";
constexpr char unload[] = "XML free";

/// What follows the name of a work in the table.
struct LookUps {
    std::string find;
    std::string children;
};

const LookUps lookUps = {"XML find by name", "XML child by name"};
/// The tree of the smallest document fits the caches of a processor and those of the others do not,
/// so only these two sizes tell whether look-ups are linear.
const LookUps largeLookUps = {"XML find by name, large", "XML child by name, large"};

template <class Document>
void MeasureLookUps(const Subject& subject, const Document& document, const LookUps& works) {
    bench::Measure(works.find, subject.size, Document::name, [&document](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(document.Find("last"));
    });
    bench::Measure(
        works.children, subject.size, Document::name, [&document](benchmark::State& state) {
            for (auto _ : state)
                document.ForEachText("track-list",
                                     [](const char* text) { benchmark::DoNotOptimize(text); });
        });
}

void MeasureLookUps(const Subject& subject, const LookUps& works) {
    MeasureLookUps(subject, subject.ours, works);
    MeasureLookUps(subject, subject.tiny, works);
    MeasureLookUps(subject, subject.pugi, works);
}

void MeasureLife(const Subject& subject) {
    for (const bool loading : {true, false}) {
        const char* work = loading ? load : unload;
        MeasureLife<OurDocument>(subject, work, loading);
        MeasureLife<bench::TinyXml2>(subject, work, loading);
        MeasureLife<bench::PugiXml>(subject, work, loading);
    }
}

void SetTargets() {
    bench::ToReach(load, bench::TinyXml2::name, 2);
    bench::GrowthToReach(load, 12);
    bench::GrowthToReach(unload, 12);
    for (const LookUps& works : {lookUps, largeLookUps}) {
        bench::ToReach(works.find, bench::TinyXml2::name, 1);
        bench::ToReach(works.children, bench::TinyXml2::name, 1);
    }
    bench::GrowthToReach(largeLookUps.find, 12);
    bench::GrowthToReach(largeLookUps.children, 12);
    bench::Explain(load, bench::PugiXml::name,
                   "it keeps the text and writes terminators into it; ours copies every text, and "
                   "its elements are larger");
}

} // namespace

int main(int argc, char** argv) {
    const bench::MeasuringFolder folder;
    Subject small(folder, 1'000'000, "1 MB");
    Subject large(folder, 10'000'000, "10 MB");
    Subject huge(folder, 100'000'000, "100 MB");
    if (!Prepare(small) || !Prepare(large) || !Prepare(huge))
        return 1;
    for (const Subject* subject : {&small, &large}) {
        MeasureLife(*subject);
        MeasureLookUps(*subject, lookUps);
    }
    for (const Subject* subject : {&large, &huge})
        MeasureLookUps(*subject, largeLookUps);
    SetTargets();
    return bench::Run(argc, argv);
}
