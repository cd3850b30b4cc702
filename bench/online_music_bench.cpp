// What becomes of a reply of the music service: from its file to records, beside opening the file.

#include "bench/support/Comparison.h"
#include "bench/support/MeasuringFolder.h"
#include "utilities/online/MusicBrainzLookup.h"
#include "utilities/xml/XMLFile.h"

#include <cstdio>

namespace {

constexpr char work[] = "music reply to records";
constexpr char openAlone[] = "CXMLFile::Open alone";
constexpr int releases = 100;

std::string MakeReply() {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<metadata><release-list "
                       "count=\"130\" offset=\"0\">\n";
    for (int i = 0; i < releases; ++i) {
        const std::string number = std::to_string(1000 + i);
        text += "  <release type=\"Album Official\" id=\"1f5fc5ec-4d2c-4e1a-9b7f-00000000" +
                number + "\"><title>The longest evening of the year, volume " + number +
                "</title><text-representation language=\"ENG\" script=\"Latn\"/>"
                "<artist id=\"1f3a0000-4d2c-4e1a-9b7f-000000a1b2c3\"><name>Some &amp; Others</name>"
                "</artist><release-event-list><event date=\"1999-05-17\" country=\"GB\"/>"
                "</release-event-list><track-list count=\"11\"/></release>\n";
    }
    return text + "</release-list></metadata>\n";
}

/// Reads without asking for it.
class Reader : public MusicBrainzLookup {
public:
    explicit Reader(const bench::MeasuringFolder& folder)
        : MusicBrainzLookup(/*access=*/nullptr, folder.File("").c_str()) {
        requestType = cdAlbumSearch;
    }

    int Read() {
        ParseResults(this);
        return results != nullptr ? results->NumNodes() : -1;
    }
};

} // namespace

int main(int argc, char** argv) {
    const bench::MeasuringFolder folder;
    const std::string path = folder.Write("TEMPFILENAME", MakeReply());
    Reader reader(folder);
    const std::string size = std::to_string(releases) + " releases";
    bench::Measure(work, size, bench::ours, [&reader](benchmark::State& state) {
        for (auto _ : state) {
            if (reader.Read() != releases)
                return state.SkipWithError("records are missing");
        }
    });
    bench::Measure(work, size, openAlone, [&path](benchmark::State& state) {
        for (auto _ : state) {
            CXMLFile document;
            if (!document.Open(path.c_str()))
                return state.SkipWithError("cannot be opened");
        }
    });
    bench::ToReach(work, openAlone, 1 / 1.2);
    return bench::Run(argc, argv);
}
