#include "tests/online/MusicSearch.h"

#include "common/Handles.h"
#include "tests/support/Dice.h"
#include "tests/support/ThreadTeam.h"
#include "vtrfutls/Log.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <thread>

namespace {

/// No lookup gets a thread while it lives.
struct NoThreads {
    ImportPatch patch{GetModuleHandleA("vtrutils.dll"), "KERNEL32.dll", "CreateThread",
                      reinterpret_cast<void*>(+[]() -> HANDLE { return nullptr; })};
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
    OnlineServices services;
    MusicSearch lookup(services);
    CDLookup& search = lookup;
    char foo[] = "Foo", title[] = "The%20Rooms", id[] = "1f5fc5ec";
    const std::string albums = "/ws/1/release/?type=xml&offset=";
    const struct {
        std::string target;
        std::function<bool()> post;
        std::function<std::string()> finished;
        std::string begin;
        int records;
    } rows[] = {
        {"/ws/1/artist/?type=xml&offset=0&limit=100&name=Foo",
         [&] { return search.SearchArtists(foo, 0); }, [&] { return Finished(search); },
         "8:\n1f3a0000-4d2c-4e1a-9b7f-000000a1b2c3|Foo (UK band)\n", 6},
        {albums + "100&releasetypes=Official&limit=100&artist=Foo&title=The%20Rooms",
         [&] { return search.SearchAlbums(foo, title, 100); },
         [&] { return Finished<_cdAlbumItem>(search); },
         "130:\n1f6753e8-4d2c-4e1a-9b7f-0000031d236b|S\xC3\xBC"
         "den S\xC3\xBC"
         "den, volume 7|Foo|2003-05|Album Official|11\n",
         30},
        {albums + "-1&releasetypes=Official&limit=100&artistid=Foo",
         [&] { return search.GetAlbums(foo, -1); }, [&] { return Finished<_cdAlbumItem>(search); },
         "0:", 0},
        {"/ws/1/release/1f5fc5ec?type=xml&inc=tracks", [&] { return search.GetSongs(id); },
         [&] { return Finished<_cdSongItem>(search); },
         "7:\nHarbour Lights|201466\nS\xC3\xBC"
         "den & Meer|187000\n",
         5},
    };
    double last = 0;
    for (const auto& row : rows) {
        ASSERT_TRUE(row.post()) << row.target;
        const std::string outcome = row.finished();
        EXPECT_EQ(outcome.substr(0, row.begin.size()), row.begin) << outcome;
        EXPECT_EQ(std::count(outcome.begin(), outcome.end(), '\n'), row.records) << outcome;
        EXPECT_EQ(search.GetPercentageComplete(), 100);
        const OnlineServices::Request request = services.Requests().back();
        EXPECT_EQ(request.target, row.target);
        EXPECT_GE(request.seconds, last);
        last = request.seconds + 1;
    }
}

TEST(MusicBrainzLookup, RefusesWhatCannotBeAsked) {
    OnlineServices services;
    const QuickWaits quick;
    MusicSearch lookup(services);
    const std::string before = lookup.Run("Foo");
    const std::size_t room = 2047 - ("http://" + ServiceAddress("plain") +
                                     "/ws/1/artist/?type=xml&offset=0&limit=100&name=")
                                        .size();
    char foo[] = "Foo";
    EXPECT_FALSE(lookup.Post(std::string(room + 1, 'n')));
    EXPECT_FALSE(lookup.SearchArtists(nullptr, 0));
    EXPECT_FALSE(lookup.SearchAlbums(foo, nullptr, 0) || lookup.SearchAlbums(nullptr, foo, 0));
    EXPECT_FALSE(lookup.GetAlbums(nullptr, 0) || lookup.GetSongs(nullptr));
    EXPECT_EQ(Outcome<_cdArtistItem>(lookup), before);
    EXPECT_EQ(services.Requests().size(), 1u);
    EXPECT_NE(lookup.Run(std::string(room, 'n')), "refused");

    const std::string folder = services.folder.Path() + std::string(300, '\\');
    for (const std::size_t length : {247u, 248u, 263u, 300u}) {
        MusicBrainzLookup longer(&services.access, folder.substr(0, length).c_str());
        EXPECT_EQ(longer.SearchArtists(foo, 0), length == 247) << length;
        EXPECT_TRUE(length != 247 || Finished(longer) == before);
    }
    MusicBrainzLookup without(nullptr, services.folder.Path().c_str());
    EXPECT_FALSE(without.SearchArtists(foo, 0) || without.IsSearchComplete());
    EXPECT_EQ(without.GetPercentageComplete(), 100);

    std::optional<NoThreads> none(std::in_place);
    MusicSearch later(services);
    EXPECT_FALSE(later.Post("Foo"));
    none.reset();
    EXPECT_EQ(later.Run("Foo"), before);
}

TEST(MusicBrainzLookup, ShowsProgressAndStopsWhenItIsTold) {
    OnlineServices services;
    const QuickWaits quick;
    MusicSearch lookup(services);
    const std::string whole = lookup.Run("Foo");
    lookup.PostToHalf();
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

    // No earlier reply is read where the file cannot be made, and where the thread has not taken
    // the search.
    lookup.Run("Foo");
    {
        const vtr::FileHandle keeper(CreateFileA(services.folder.File("TEMPFILENAME").c_str(),
                                                 GENERIC_READ, FILE_SHARE_READ, nullptr,
                                                 OPEN_EXISTING, 0, nullptr));
        EXPECT_EQ(lookup.Run("Foo"), "error");
    }
    lookup.Run("Foo");
    const std::size_t asked = services.Requests().size();
    QuickWaits::Hold();
    lookup.Post("Bar");
    lookup.CancelCurrentSearch();
    QuickWaits::LetGo();
    EXPECT_EQ(Finished(lookup), "error");
    EXPECT_EQ(services.Requests().size(), asked);
}

TEST(MusicBrainzLookup, ServesManyThreadsAndTheLastSearch) {
    OnlineServices services;
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
                while (!lookup.IsSearchComplete())
                    Sleep(1); // the records are for one thread
        }
    });
    EXPECT_EQ(lookup.Run("Foo"), whole);
}

TEST(MusicBrainzLookup, CopiesSettingsButNoRecordsAndNoThread) {
    OnlineServices services;
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
    const NoThreads none;
    std::thread server(
        [&served, lookup = served.get()] { MusicSearch::MusicBrainzWorker(lookup); });
    while (!served->Post("Foo"))
        Sleep(1);
    EXPECT_EQ(Finished(*served), whole);
    served.reset();
    server.join();
}

TEST(MusicBrainzLookup, IsLeftByAThreadThatDoesNotEnd) {
    OnlineServices services;
    const QuickWaits quick;
    for (const bool fromOwnThread : {false, true}) {
        // Whatever touches the lookup after its end ends the program.
        void* page = VirtualAlloc(nullptr, sizeof(MusicSearch), MEM_COMMIT, PAGE_READWRITE);
        auto* lookup = new (page) MusicSearch(services);
        const auto destroy = [&] {
            lookup->~MusicSearch();
            VirtualFree(page, 0, MEM_RELEASE);
        };
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
        while (services.folder.Listing().find("TEMPFILENAME") != std::string::npos)
            Sleep(1); // the thread deletes the file
    }
}
