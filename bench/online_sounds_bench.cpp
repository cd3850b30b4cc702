// Online sounds: reading a reply, and a whole search against the recorded services.

#include "bench/support/Comparison.h"
#include "bench/support/MeasuringFolder.h"
#include "common/Handles.h"
#include "utilities/online/FreeSoundOrg.h"
#include "utilities/online/ServiceHosts.h"
#include "vtrfutls/InternetAccess.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <windows.h>

#include <wininet.h>

namespace {

constexpr char wholeSearch[] = "sounds, from search to records";
constexpr char bare[] = "WinINet, download alone";
constexpr char whole[] = "WinINet into a file, then parsed";
constexpr char reading[] = "sounds, from bytes to records";
constexpr char parsing[] = "Json::Reader::parse alone";

/// As the service sends one page, each sound with an analysis: about 1,400 bytes each.
std::string MakeReply(int sounds) {
    std::string text = "{\"count\":4711,\"next\":null,\"results\":[";
    for (int i = 0; i < sounds; ++i) {
        const std::string id = std::to_string(100'000 + i * 7);
        const std::string preview = "https://cdn.freesound.org/previews/100/" + id + "_71-";
        text += std::string(i > 0 ? "," : "") + "{\"id\":" + id +
                ",\"url\":\"https://freesound.org/people/someone/sounds/" + id +
                "/\",\"name\":\"Rain on a roof, take " + id +
                ".wav\",\"tags\":[\"rain\",\"weather\",\"field-recording\",\"water\",\"roof\"],"
                "\"description\":\"" +
                std::string(400, 'd') +
                "\",\"created\":\"2014-04-16T20:07:11.145\",\"license\":"
                "\"http://creativecommons.org/licenses/by/3.0/\",\"channels\":2,\"filesize\":4171,"
                "\"bitrate\":1411,\"bitdepth\":16,\"duration\":14.06621,\"samplerate\":44100.0,"
                "\"username\":\"someone\",\"previews\":{\"preview-lq-ogg\":\"" +
                preview + "lq.ogg\",\"preview-hq-ogg\":\"" + preview +
                "hq.ogg\",\"preview-lq-mp3\":\"" + preview + "lq.mp3\",\"preview-hq-mp3\":\"" +
                preview +
                "hq.mp3\"},\"num_downloads\":1709,\"avg_rating\":4.2857,\"num_ratings\":28,"
                "\"analysis\":{\"rhythm\":{\"bpm\":117.453},\"tonal\":{\"key_key\":\"A\","
                "\"key_scale\":\"minor\"}}}";
    }
    return text + "],\"previous\":null}";
}

/// Reads replies that did not come over the internet.
class Reading : public CFreeSoundOrg {
public:
    explicit Reading(bool filter) : CFreeSoundOrg(filter, nullptr) {}

    bool Read(const std::string& text) {
        ClearLastDownload();
        return parser.parse(text.data(), text.data() + text.size(), root) &&
               LoadDataFromJSONResult();
    }

private:
    Json::Reader parser;
};

void MeasureReading(const std::string& text, int sounds, bool filter) {
    const std::string work = std::string(reading) + (filter ? ", no bad words" : "");
    const std::string size = std::to_string(sounds);
    bench::Measure(work, size, bench::ours, [=](benchmark::State& state) {
        Reading repo(filter);
        for (auto _ : state) {
            if (!repo.Read(text) || repo.NumReturnedResults() != sounds)
                return state.SkipWithError("cannot be read");
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    });
    bench::Measure(work, size, parsing, [=](benchmark::State& state) {
        Json::Reader reader;
        Json::Value root;
        for (auto _ : state) {
            root = Json::Value();
            if (!reader.parse(text.data(), text.data() + text.size(), root))
                return state.SkipWithError("cannot be parsed");
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    });
    if (!filter)
        bench::ToReach(work, parsing, 1 / 1.2);
}

/// "localhost:40001", or "" where no services run.
std::string RecordedServices() {
    const char* const all = std::getenv("VTRUTILS_SERVICES");
    const std::string offers = all != nullptr ? all : "";
    const std::size_t at = offers.find("plain=");
    return at != offers.npos ? "localhost:" + offers.substr(at + 6, offers.find(' ', at) - at - 6)
                             : "";
}

constexpr char firstPage[] = "/apiv2/search/text/?query=bell&token=any&page=1";

/// The size of the reply, which goes into `file` unless that is null.
std::size_t Download(HINTERNET session, const std::string& url, HANDLE file = nullptr) {
    HINTERNET request =
        InternetOpenUrlA(session, url.c_str(), /*lpszHeaders=*/nullptr, /*dwHeadersLength=*/0,
                         INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE, /*dwContext=*/0);
    char bytes[65536];
    std::size_t size = 0;
    DWORD written = 0;
    for (DWORD got = 0; InternetReadFile(request, bytes, sizeof bytes, &got) && got > 0;) {
        size += got;
        if (file != nullptr)
            WriteFile(file, bytes, got, &written, /*lpOverlapped=*/nullptr);
    }
    InternetCloseHandle(request);
    return size;
}

void Save(HINTERNET session, const std::string& url, const std::string& path) {
    const vtr::FileHandle file(CreateFileA(path.c_str(), GENERIC_WRITE, /*dwShareMode=*/0,
                                           /*lpSecurityAttributes=*/nullptr, CREATE_ALWAYS,
                                           FILE_ATTRIBUTE_NORMAL, /*hTemplateFile=*/nullptr));
    Download(session, url, file.Get());
}

void MeasureSearch(MyInternetAccess& access, const std::string& host) {
    bench::Measure(wholeSearch, "10", bench::ours, [&access](benchmark::State& state) {
        CFreeSoundOrg repo(/*filterBadWords=*/false, &access);
        char query[] = "bell";
        for (auto _ : state) {
            repo.DoSearch(query, sbosScore, sbosDescending, 0, 10, licNotRecognized);
            while (repo.GetState() == fsUnderWay)
                Sleep(1); // as a host's timer: asking without a pause takes the server's time
            if (repo.NumReturnedResults() != 10)
                return state.SkipWithError("the search fails");
        }
    });
    bench::Measure(wholeSearch, "10", bare, [host](benchmark::State& state) {
        HINTERNET session = InternetOpenA("bench", INTERNET_OPEN_TYPE_DIRECT, /*lpszProxy=*/nullptr,
                                          /*lpszProxyBypass=*/nullptr, /*dwFlags=*/0);
        for (auto _ : state) {
            if (Download(session, "http://" + host + firstPage) < 10'000)
                state.SkipWithError("the download fails");
        }
        InternetCloseHandle(session);
    });
    bench::Measure(wholeSearch, "10", whole, [host](benchmark::State& state) {
        HINTERNET session = InternetOpenA("bench", INTERNET_OPEN_TYPE_DIRECT, /*lpszProxy=*/nullptr,
                                          /*lpszProxyBypass=*/nullptr, /*dwFlags=*/0);
        const bench::MeasuringFolder folder;
        const std::string path = folder.File("reply");
        Json::Reader reader;
        for (auto _ : state) {
            Json::Value root;
            Save(session, "http://" + host + firstPage, path);
            const std::string text = bench::ReadWhole(path.c_str());
            DeleteFileA(path.c_str());
            if (!reader.parse(text, root) || root["results"].size() != 10)
                state.SkipWithError("the download fails");
        }
        InternetCloseHandle(session);
    });
    bench::ToReach(wholeSearch, bare, 1 / 1.3);
    bench::Measure("sounds, asking for the state meanwhile", "", bench::ours,
                   [&access](benchmark::State& state) {
                       CFreeSoundOrg repo(/*filterBadWords=*/false, &access);
                       char query[] = "fault-hold";
                       repo.DoSearch(query, sbosScore, sbosDescending, 0, 10, licNotRecognized);
                       for (auto _ : state)
                           benchmark::DoNotOptimize(repo.GetState());
                       if (repo.GetState() != fsUnderWay)
                           state.SkipWithError("the search has ended");
                   });
}

} // namespace

int main(int argc, char** argv) {
    const std::string host = RecordedServices();
    if (host.empty() || !SetSoundRepoHost(("http://" + host).c_str())) {
        std::fprintf(stderr, "no recorded services\n");
        return 1;
    }
    for (const int sounds : {15, 150}) {
        for (const bool filter : {false, true})
            MeasureReading(MakeReply(sounds), sounds, filter);
    }
    MyInternetAccess access("bench", /*throughProxy=*/false);
    MeasureSearch(access, host);
    return bench::Run(argc, argv);
}
