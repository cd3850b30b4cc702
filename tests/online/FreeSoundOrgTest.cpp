#include "tests/online/SoundSearch.h"
#include "tests/support/HeapUse.h"

#include "common/Owner.h"

#include <algorithm>
#include <functional>
#include <windows.h>

#include <tlhelp32.h>

namespace {

constexpr char notStarted[] = "Failed to start online request  ";

/// Files of searches in the folder for temporary files.
unsigned FilesLeft(const SoundSearch& search) {
    const std::string files = search.folder.Listing();
    unsigned count = 0;
    for (std::size_t at = 0; (at = files.find("tmp-", at)) != files.npos; ++at)
        ++count;
    return count;
}

TEST(SoundSearch, WhatEachFaultGives) {
    const struct {
        const char* port;
        const char* query;
        _tFS_Q_State state;
        int returned;
        const char* log;
    } rows[] = {
        {"plain", "bell", fsReplyReceived, 10, ""},
        {"plain", "nothing", fsReplyReceived, 0, ""},
        {"plain", "fault-close-before", fsUnderWay, 0, ""},
        {"plain", "fault-close-in-head", fsUnderWay, 0, ""},
        {"plain", "fault-close-after-head", fsUnderWay, 0, ""},
        {"plain", "fault-cut", fsUnderWay, 0, ""},
        {"plain", "fault-long-length", fsUnderWay, 0, ""},
        {"plain", "fault-short-length", fsFailed, 0, notJson},
        {"plain", "fault-no-length", fsReplyReceived, 10, ""},
        {"plain", "fault-chunked", fsReplyReceived, 10, ""},
        {"plain", "fault-chunked-cut", fsFailed, 0, notJson},
        {"plain", "fault-404", fsUnderWay, 0, ""},
        {"plain", "fault-500", fsUnderWay, 0, ""},
        {"plain", "fault-503", fsUnderWay, 0, ""},
        {"plain", "fault-redirect", fsReplyReceived, 10, ""},
        {"plain", "fault-redirect-loop", fsUnderWay, 0, ""},
        {"plain", "fault-garbage", fsFailed, 0, notJson},
        {"plain", "fault-empty", fsFailed, 0, notJson},
        {"plain", "fault-large", fsReplyReceived, 1, "Unanticipated license type <>|"},
        {"refused", "bell", fsUnderWay, 0, ""},
        {"tls", "bell", fsReplyReceived, 10, ""},
        {"tls", "fault-cut", fsUnderWay, 0, ""},
        {"tls", "fault-redirect", fsReplyReceived, 10, ""},
        {"tls", "fault-redirect-plain", fsUnderWay, 0, ""},
        {"tls-unknown", "bell", fsUnderWay, 0, ""},
        {"tls-name", "bell", fsUnderWay, 0, ""},
        {"tls-expired", "bell", fsUnderWay, 0, ""},
    };
    const TrustedAuthority trusted;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.port) + ", " + row.query);
        const CapturedLog log;
        const std::string scheme = row.port[0] == 't' ? "" : "http://";
        SoundSearch search(scheme + ServiceAddress(row.port));
        EXPECT_EQ(search.Run(row.query), row.state);
        EXPECT_EQ(search.repo->GetState(), row.state);
        EXPECT_EQ(search.repo->NumReturnedResults(), row.returned);
        EXPECT_EQ(FilesLeft(search), 1u);
        EXPECT_EQ(OwnLines(log), row.log);
    }
}

TEST(SoundSearch, ARequestIsAsTheServiceWantsIt) {
    const std::string head = "/apiv2/search/text/?query=";
    const std::string middle =
        "&token=5f0c2e9a71b3d4486e2a90c1f7d35b8e0a4c6d21&fields=id,name,username,url,created,tags,"
        "license,duration,bitdepth,bitrate,samplerate,filesize,channels,num_downloads,avg_rating,"
        "num_ratings,previews,analysis,description,&descriptors=rhythm.bpm,tonal.key_key,"
        "tonal.key_scale&page=";
    const std::string prefix = "http://" + ServiceAddress("plain") + head;
    const std::string ending = "1&page_size=15&sort=duration";
    const std::size_t room = 2047 - (prefix + middle + ending).size();
    const struct {
        std::string query;
        int sort;
        int page;
        int licence;
        std::string end; ///< "" for a request that does not start
    } rows[] = {
        {"a%20b", 0, 0, 6, "1&page_size=15&sort="},
        {"x", 1, 1, 0, "2&page_size=15&sort=duration&filter=license:\"Creative%20Commons%200\""},
        {"x", 2, 9, 1, "10&page_size=15&sort=created_asc&filter=license:\"Attribution\""},
        {"x", 3, 0, 2,
         "1&page_size=15&sort=downloads_asc&filter=license:\"Attribution%20Noncommercial\""},
        {"x", 4, 0, 3, "1&page_size=15&sort=rating_asc"},
        {"x", 5, 0, -1, "1&page_size=15&sort="},
        {std::string(room, 'q'), 1, 0, 6, "1&page_size=15&sort=duration"},
        {std::string(room + 1, 'q'), 1, 0, 6, ""},
        {std::string(5000, 'q'), 1, 0, 6, ""},
    };
    SoundSearch search;
    for (auto row : rows) {
        SCOPED_TRACE(row.query.substr(0, 5) + std::to_string(row.sort) + row.end);
        ServiceControl("reset");
        const CapturedLog log;
        const bool started = search.repo->DoSearch(
            row.query.data(), static_cast<_sbos_type>(row.sort), sbosDescending, row.page,
            /*pageSize=*/15, static_cast<_licType>(row.licence));
        search.Finish();
        const std::string sent = ServiceControl("requests");
        EXPECT_EQ(started, !row.end.empty());
        EXPECT_EQ(search.repo->LastPageSize(), 15);
        if (started) {
            EXPECT_EQ(sent.substr(std::min(sent.size(), sent.find('/'))),
                      head + row.query + middle + row.end + "\n");
        } else {
            EXPECT_EQ(search.repo->GetState(), fsFailed);
            EXPECT_EQ(sent, "");
            EXPECT_EQ(OwnLines(log),
                      notStarted + (prefix + row.query + middle + ending).substr(0, 2047) + "|");
            EXPECT_EQ(FilesLeft(search), 0u);
        }
    }
    WatchedRepo offline(/*filterBadWords=*/true, /*access=*/nullptr);
    EXPECT_FALSE(offline.DoSearch(nullptr, sbosScore, sbosAscending, 0, 10, licAttribution));
    EXPECT_EQ(offline.GetState(), fsFailed);
}

TEST(SoundSearch, CopiesHaveSettingsAndNoRecords) {
    SoundSearch search;
    ASSERT_EQ(search.Run("bell"), fsReplyReceived);
    EXPECT_EQ(search.repo->NumTotalPages(), 2);
    WatchedRepo copy(*search.repo);
    std::strcpy(search.repo->APIKey(), "changed");
    for (int round = 0; round < 2; ++round) {
        _osrSndItem item{};
        EXPECT_EQ(copy.GetState(), fsReplyReceived);
        EXPECT_EQ(copy.NumReturnedResults(), 0);
        EXPECT_FALSE(copy.GetItem(0, item));
        EXPECT_EQ(copy.NumTotalResults(), 20);
        EXPECT_EQ(copy.LastPageSize(), 10);
        EXPECT_EQ(copy.APIKey(),
                  round == 0 ? "5f0c2e9a71b3d4486e2a90c1f7d35b8e0a4c6d21" : std::string("changed"));
        // With a transfer and its file.
        char query[] = "fault-hold";
        ASSERT_TRUE(copy.DoSearch(query, sbosScore, sbosAscending, 0, 7, licAttribution));
        ServiceControl("held/1");
        copy = *search.repo;
        EXPECT_EQ(FilesLeft(search), 1u);
    }
    WatchedRepo& same = *search.repo;
    same = *search.repo;
    EXPECT_EQ(same.NumReturnedResults(), 10);
}

/// What a process uses: its threads, the place of the next handle, bytes.
struct Use {
    unsigned threads = 0;
    std::size_t nextHandle = 0;
    std::size_t bytes = 0;
};

Use OwnUse() {
    Use use;
    const vtr::KernelHandle event(CreateEventA(nullptr, FALSE, FALSE, nullptr));
    use.nextHandle = reinterpret_cast<std::size_t>(event.Get());
    const vtr::KernelHandle all(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(all.Get(), &entry); more; more = Thread32Next(all.Get(), &entry))
        use.threads += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1u : 0u;
    use.bytes = HeapUse();
    return use;
}

TEST(SoundSearch, AHundredOfEachKindLeaveNothing) {
    SoundSearch search;
    char held[] = "fault-hold";
    char slow[] = "fault-slow";
    const auto start = [&](int round) {
        ASSERT_TRUE(search.Start(round % 2 == 0 ? held : slow));
        if (round % 2 == 0)
            ServiceControl("held/1");
    };
    const struct {
        const char* name;
        std::function<void(int)> step;
    } kinds[] = {
        {"one after the other", [&](int) { ASSERT_EQ(search.Run("bell"), fsReplyReceived); }},
        {"overtaken",
         [&](int round) {
             start(round);
             ASSERT_EQ(FilesLeft(search), 1u);
         }},
        {"destroyed in mid-transfer",
         [&](int round) {
             search.Renew(/*filter=*/false);
             start(round);
         }},
    };
    for (const auto& kind : kinds) {
        SCOPED_TRACE(kind.name);
        Use before;
        // What the system keeps from its first transfers.
        for (int round = 0; round < 110 && !HasFatalFailure(); ++round) {
            if (round == 10) {
                search.Renew(/*filter=*/false);
                before = OwnUse();
            }
            kind.step(round);
        }
        search.Renew(/*filter=*/false);
        EXPECT_EQ(search.folder.Listing(), "");
        const Use after = OwnUse();
        EXPECT_LE(after.threads, before.threads);
        EXPECT_LE(after.nextHandle, before.nextHandle + 16);
        EXPECT_LE(after.bytes, before.bytes + 1024);
    }
}

TEST(SoundSearch, ServersThatCanBeSet) {
    const struct {
        std::string host;
        bool good;
    } rows[] = {{"a", true},
                {"A-b_c.example:65535", true},
                {"http://a:1", true},
                {"HTTP://a", true},
                {"", false},
                {"http://", false},
                {"https://a", false},
                {"a:", false},
                {"a:0", false},
                {"a:65536", false},
                {"a:080", false},
                {"a:4294967297", false},
                {"a:1/x", false},
                {"a b", false},
                {"a%sb", false},
                {"a/b", false},
                {":1", false},
                {"a@b", false},
                {"::1", false},
                {"\xE9", false},
                {std::string(253, 'a') + ":65535", true},
                {std::string(254, 'a'), false}};
    for (const auto& row : rows) {
        for (const auto set : {SetSoundRepoHost, SetMusicLookupHost})
            EXPECT_EQ(set(row.host.c_str()), row.good) << row.host;
    }
    EXPECT_TRUE(SetSoundRepoHost(nullptr) && SetMusicLookupHost(nullptr));
}

TEST(SoundID, TextAndNumber) {
    char buffer[8] = "before";
    EXPECT_TRUE(OSRSoundIDToString(4294967295, buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "4294967");
    EXPECT_TRUE(OSRSoundIDToString(95, buffer, 1));
    EXPECT_STREQ(buffer, "");
    EXPECT_FALSE(OSRSoundIDToString(95, buffer, 0));
    EXPECT_FALSE(OSRSoundIDToString(95, nullptr, 5));
    EXPECT_EQ(StringToOSRSoundID("0x10"), 16u);
    EXPECT_EQ(StringToOSRSoundID(" 010 x"), 8u);
    EXPECT_EQ(StringToOSRSoundID("99999999999"), 4294967295u);
    EXPECT_EQ(StringToOSRSoundID(nullptr), 0u);
}

} // namespace
