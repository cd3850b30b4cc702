#include "tests/online/MusicSearch.h"

#include "common/Handles.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Dice.h"
#include "tests/support/HeapUse.h"
#include "tests/support/ThreadTeam.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <tlhelp32.h>
#include <vector>

namespace {

constexpr char fooId[] = "1f3a0000-4d2c-4e1a-9b7f-000000a1b2c3";

struct Asked {
    double seconds;
    std::string target;
};

/// What reached the server.
std::vector<Asked> Requests() {
    std::istringstream lines(ServiceControl("requests"));
    std::vector<Asked> requests;
    Asked next;
    for (std::string port; lines >> next.seconds >> port >> next.target;)
        requests.push_back(next);
    return requests;
}

/// Of this process. Under Wine nothing tells how many handles it has, but a fresh one's value does.
struct Held {
    Held() {
        const vtr::KernelHandle all(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
        THREADENTRY32 entry{};
        entry.dwSize = sizeof entry;
        for (BOOL more = Thread32First(all.Get(), &entry); more;
             more = Thread32Next(all.Get(), &entry))
            threads += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
        std::vector<vtr::KernelHandle> fresh;
        for (int i = 0; i < 32; ++i) {
            fresh.emplace_back(CreateEventA(nullptr, TRUE, FALSE, nullptr));
            handle = std::max(handle, reinterpret_cast<UINT_PTR>(fresh.back().Get()));
        }
        bytes = HeapUse();
    }
    int threads = 0;
    UINT_PTR handle = 0;
    std::size_t bytes = 0;
};

/// Stops the thread that logs that it opens a reply, until it is told to go on.
class ReadingStop {
public:
    ReadingStop() { SetLogSink(&ReadingStop::Take, this); }
    ReadingStop(const ReadingStop&) = delete;
    ReadingStop& operator=(const ReadingStop&) = delete;
    ~ReadingStop() { SetLogSink(nullptr, nullptr); }

    std::function<void()> atReading;
    vtr::KernelHandle reached{CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    vtr::KernelHandle goOn{CreateEventA(nullptr, TRUE, FALSE, nullptr)};

private:
    static void Take(const char* line, void* self) {
        auto& stop = *static_cast<ReadingStop*>(self);
        if (std::string(line).rfind("Entered CXMLFile::Open", 0) != 0)
            return;
        stop.atReading();
        SetEvent(stop.reached.Get());
        WaitForSingleObject(stop.goOn.Get(), INFINITE);
    }
};

} // namespace

TEST(MusicBrainzLookup, AsksOnceASecondAndReadsWhatComes) {
    MusicServices services;
    MusicSearch lookup(services);
    CDLookup& search = lookup;
    char foo[] = "Foo", title[] = "The%20Rooms", id[] = "1f5fc5ec";
    struct Row {
        const char* target;
        std::function<bool()> post;
        std::function<std::string()> finished;
        std::string begin;
        int records;
    };
    const Row rows[] = {
        {"/ws/1/artist/?type=xml&offset=0&limit=100&name=Foo",
         [&] { return search.SearchArtists(foo, 0); }, [&] { return Finished(search); },
         "8:\n" + std::string(fooId) + "|Foo (UK band)\n", 6},
        {"/ws/1/release/?type=xml&offset=100&releasetypes=Official&limit=100&artist=Foo&title="
         "The%20Rooms",
         [&] { return search.SearchAlbums(foo, title, 100); },
         [&] { return Finished<_cdAlbumItem>(search); },
         "130:\n1f6753e8-4d2c-4e1a-9b7f-0000031d236b|S\xC3\xBC"
         "den S\xC3\xBC"
         "den, volume 7|Foo|"
         "2003-05|Album Official|11\n",
         30},
        {"/ws/1/release/?type=xml&offset=-1&releasetypes=Official&limit=100&artistid=Foo",
         [&] { return search.GetAlbums(foo, -1); }, [&] { return Finished<_cdAlbumItem>(search); },
         "0:", 0},
        {"/ws/1/release/1f5fc5ec?type=xml&inc=tracks", [&] { return search.GetSongs(id); },
         [&] { return Finished<_cdSongItem>(search); },
         "7:\nHarbour Lights|201466\nS\xC3\xBC"
         "den & Meer|187000\n",
         5},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(row.post()) << row.target;
        const std::string outcome = row.finished();
        EXPECT_EQ(outcome.substr(0, row.begin.size()), row.begin) << outcome;
        EXPECT_EQ(std::count(outcome.begin(), outcome.end(), '\n'), row.records) << outcome;
        EXPECT_EQ(search.GetPercentageComplete(), 100);
    }
    const std::vector<Asked> requests = Requests();
    ASSERT_EQ(requests.size(), std::size(rows));
    for (std::size_t i = 0; i < requests.size(); ++i) {
        EXPECT_EQ(requests[i].target, rows[i].target);
        EXPECT_TRUE(i == 0 || requests[i].seconds >= requests[i - 1].seconds + 1) << i;
    }
}

TEST(MusicBrainzLookup, RefusesWhatCannotBeAsked) {
    MusicServices services;
    const QuickWaits quick;
    MusicSearch lookup(services);
    const std::string before = lookup.Run("Foo");
    const std::string rest =
        "http://" + ServiceAddress("plain") + "/ws/1/artist/?type=xml&offset=0&limit=100&name=";
    char foo[] = "Foo";
    EXPECT_FALSE(lookup.Post(std::string(2048 - rest.size(), 'n')));
    EXPECT_FALSE(lookup.SearchArtists(nullptr, 0));
    EXPECT_FALSE(lookup.SearchAlbums(foo, nullptr, 0) || lookup.SearchAlbums(nullptr, foo, 0));
    EXPECT_FALSE(lookup.GetAlbums(nullptr, 0) || lookup.GetSongs(nullptr));
    EXPECT_EQ(Outcome<_cdArtistItem>(lookup), before);
    EXPECT_EQ(Requests().size(), 1u);
    EXPECT_NE(lookup.Run(std::string(2047 - rest.size(), 'n')), "refused");

    const std::string folder = services.folder.Path() + std::string(300, '\\');
    for (const std::size_t length : {248u, 263u, 300u})
        EXPECT_FALSE(MusicBrainzLookup(&services.access, folder.substr(0, length).c_str())
                         .SearchArtists(foo, 0))
            << length;
    MusicBrainzLookup longest(&services.access, folder.substr(0, 247).c_str());
    EXPECT_TRUE(longest.SearchArtists(foo, 0));
    EXPECT_EQ(Finished(longest), before);
    MusicBrainzLookup without(nullptr, services.folder.Path().c_str());
    EXPECT_FALSE(without.SearchArtists(foo, 0) || without.IsSearchComplete());
    EXPECT_EQ(without.GetPercentageComplete(), 100);

    std::optional<ImportPatch> noThreads(
        std::in_place, GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "CreateThread",
        reinterpret_cast<void*>(+[]() -> HANDLE { return nullptr; }));
    MusicSearch later(services);
    EXPECT_FALSE(later.Post("Foo"));
    noThreads.reset();
    EXPECT_EQ(later.Run("Foo"), before);
}

TEST(MusicBrainzLookup, EndsWellOrNotForEveryFault) {
    MusicServices services;
    const QuickWaits quick;
    const std::string whole = MusicSearch(services).Run("Foo");
    const std::string opened = "Leaving CXMLFile::Open, normal exit";
    const std::string empty = "Leaving CXMLFile::Open, file length < 1";
    struct Row {
        const char* fault;
        std::string outcome; ///< its begin
        std::string log;
    };
    const Row rows[] = {{"refused", "error", empty},
                        {"close-before", "error", empty},
                        {"close-in-head", "error", empty},
                        {"close-after-head", "error", empty},
                        {"404", "error", empty},
                        {"500", "error", empty},
                        {"503", "error", empty},
                        {"redirect-loop", "error", empty},
                        {"empty", "error", empty},
                        {"garbage", "error", opened},
                        {"redirect", whole, opened},
                        {"no-length", whole, opened},
                        {"chunked", whole, opened},
                        {"short-length", whole, opened},
                        {"long-length", whole, opened},
                        {"cut", whole.substr(0, 100), opened},
                        {"chunked-cut", whole.substr(0, 100), opened},
                        {"large", "1:\n1|large large ", opened}};
    for (const Row& row : rows) {
        const bool refused = row.fault == std::string("refused");
        SetMusicLookupHost(ServiceAddress(refused ? "refused" : "plain").c_str());
        const CapturedLog log;
        {
            MusicSearch lookup(services);
            const std::string outcome = lookup.Run(std::string("fault-") + row.fault);
            EXPECT_EQ(outcome.substr(0, row.outcome.size()), row.outcome) << row.fault;
            EXPECT_EQ(services.folder.Listing(), "TEMPFILENAME");
        }
        EXPECT_EQ(services.folder.Listing(), "");
        EXPECT_EQ(log.Lines().back(), row.log) << row.fault;
    }
    // A file that cannot be made: no earlier reply is read in its place.
    MusicSearch lookup(services);
    lookup.Run("Foo");
    const vtr::FileHandle keeper(CreateFileA(services.folder.File("TEMPFILENAME").c_str(),
                                             GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                             0, nullptr));
    EXPECT_EQ(lookup.Run("Foo"), "error");
}

TEST(MusicBrainzLookup, ShowsProgressAndStopsWhenItIsTold) {
    MusicServices services;
    const QuickWaits quick;
    MusicSearch lookup(services);
    const std::string whole = lookup.Run("Foo");
    EXPECT_TRUE(lookup.Post("fault-hold"));
    while (lookup.GetPercentageComplete() == 0)
        Sleep(1);
    EXPECT_TRUE(lookup.GetPercentageComplete() >= 40 && lookup.GetPercentageComplete() <= 60);
    EXPECT_FALSE(lookup.IsSearchComplete());
    lookup.CancelCurrentSearch();
    const std::string part = Finished(lookup);
    EXPECT_TRUE(part.size() > 3 && part.size() < whole.size() && whole.rfind(part, 0) == 0) << part;
    EXPECT_TRUE(lookup.Post("fault-hold-head"));
    ServiceControl("held/1");
    EXPECT_EQ(lookup.GetPercentageComplete(), 0);
    lookup.CancelCurrentSearch();
    EXPECT_EQ(Finished(lookup), "error");

    // Before the thread has taken the search, with the reply of an earlier one still there.
    lookup.Run("Foo");
    const std::size_t asked = Requests().size();
    QuickWaits::Hold();
    lookup.Post("Bar");
    lookup.CancelCurrentSearch();
    QuickWaits::LetGo();
    EXPECT_EQ(Finished(lookup), "error");
    EXPECT_EQ(Requests().size(), asked);
}

TEST(MusicBrainzLookup, LeavesNothingBehind) {
    MusicServices services;
    const QuickWaits quick;
    const std::string whole = MusicSearch(services).Run("Foo");
    const auto inTransfer = [](MusicSearch& lookup) {
        EXPECT_TRUE(lookup.Post("fault-hold"));
        while (lookup.GetPercentageComplete() == 0)
            Sleep(1);
    };
    const std::function<void(int)> works[] = {[&](int times) {
                                                  MusicSearch lookup(services);
                                                  for (int i = 0; i < times; ++i)
                                                      EXPECT_EQ(lookup.Run("Foo"), whole);
                                              },
                                              [&](int times) {
                                                  MusicSearch lookup(services);
                                                  for (int i = 0; i < times; ++i) {
                                                      if (i % 2 == 0)
                                                          inTransfer(lookup);
                                                      else
                                                          lookup.Post("Bar");
                                                  }
                                                  EXPECT_EQ(lookup.Run("Foo"), whole);
                                              },
                                              [&](int times) {
                                                  for (int i = 0; i < times; ++i) {
                                                      MusicSearch lookup(services);
                                                      inTransfer(lookup);
                                                  }
                                              }};
    for (const auto& work : works) {
        work(10);
        const Held before;
        work(100);
        const Held after;
        EXPECT_LE(after.threads, before.threads);
        EXPECT_LE(after.handle, before.handle + 32);
        EXPECT_LE(after.bytes, before.bytes + 4096);
        EXPECT_EQ(services.folder.Listing(), "");
    }
}

TEST(MusicBrainzLookup, ServesManyThreadsAndTheLastSearch) {
    MusicServices services;
    const QuickWaits quick;
    MusicSearch lookup(services);
    const std::string whole = lookup.Run("Foo");
    RunTeam("searchers", 4, [&](unsigned number) {
        Dice dice(number);
        for (int i = 0; i < 200; ++i) {
            bool error = false;
            int count = 0;
            CMyList* list = nullptr;
            lookup.GetSearchResults(error, count, list);
            EXPECT_TRUE(list == nullptr ? count == 0 : count == 8 || count == 0);
            const int progress = lookup.GetPercentageComplete();
            EXPECT_TRUE(progress >= 0 && progress <= 100);
            if (dice.Below(4) == 0)
                EXPECT_TRUE(lookup.Post(dice.Below(2) == 0 ? "nothing" : "fault-chunked"));
            else if (dice.Below(3) == 0)
                lookup.CancelCurrentSearch();
            else if (dice.Below(8) == 0)
                Finished(lookup);
        }
    });
    EXPECT_EQ(lookup.Run("Foo"), whole);
}

TEST(MusicBrainzLookup, CopiesSettingsButNoRecordsAndNoThread) {
    MusicServices services;
    const QuickWaits quick;
    auto first = std::make_unique<MusicSearch>(services);
    const std::string whole = first->Run("Foo");
    MusicSearch copy(*first);
    MusicSearch target(services);
    target.Post("fault-hold-head");
    target = *first;
    for (MusicSearch* search : {&copy, &target}) {
        EXPECT_TRUE(search->IsSearchComplete());
        EXPECT_EQ(search->GetPercentageComplete(), 100);
        EXPECT_EQ(Finished(*search), "8:");
    }
    EXPECT_EQ(Finished(*first), whole);
    EXPECT_EQ(MusicSearch::MusicBrainzWorker(first.get()), 0u);
    first.reset();
    EXPECT_EQ(target.Run("Foo"), whole);
    EXPECT_EQ(copy.Run("Foo"), whole);

    // A copy that is served by a thread of the host's.
    auto served = std::make_unique<MusicSearch>(copy);
    const int threads = Held().threads;
    std::thread server(
        [&served, lookup = served.get()] { MusicSearch::MusicBrainzWorker(lookup); });
    EXPECT_EQ(served->Run("Foo"), whole);
    EXPECT_EQ(Held().threads, threads + 1);
    served.reset();
    server.join();
}

TEST(MusicBrainzLookup, IsLeftByAThreadThatDoesNotEnd) {
    MusicServices services;
    const QuickWaits quick;
    for (const bool fromOwnThread : {false, true}) {
        // Whatever touches the lookup after its end ends the program.
        void* page = VirtualAlloc(nullptr, sizeof(MusicSearch), MEM_COMMIT, PAGE_READWRITE);
        auto* lookup = new (page) MusicSearch(services);
        const auto destroy = [&] {
            lookup->~MusicSearch();
            VirtualFree(page, 0, MEM_RELEASE);
        };
        const int threads = Held().threads;
        ReadingStop stop;
        stop.atReading = [&] {
            if (fromOwnThread)
                destroy();
        };
        QuickWaits::leave = 50;
        lookup->Post("Foo");
        WaitForSingleObject(stop.reached.Get(), INFINITE);
        if (!fromOwnThread)
            destroy();
        QuickWaits::leave = 10000;
        EXPECT_EQ(services.folder.Listing(), "TEMPFILENAME");
        SetEvent(stop.goOn.Get());
        while (Held().threads >= threads)
            Sleep(1);
    }
}
