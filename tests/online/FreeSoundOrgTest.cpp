#include "tests/online/SoundSearch.h"

#include <algorithm>

namespace {

TEST(SoundSearch, ARequestIsAsTheServiceWantsIt) {
    const std::string head = "/apiv2/search/text/?query=";
    const std::string middle =
        "&token=5f0c2e9a71b3d4486e2a90c1f7d35b8e0a4c6d21&fields=id,name,username,url,created,tags,"
        "license,duration,bitdepth,bitrate,samplerate,filesize,channels,num_downloads,avg_rating,"
        "num_ratings,previews,analysis,description,&descriptors=rhythm.bpm,tonal.key_key,"
        "tonal.key_scale&page=";
    OnlineServices services;
    const std::string start = "http://" + ServiceAddress("plain") + head;
    const std::string end = "1&page_size=15&sort=duration";
    const std::size_t room = 2047 - (start + middle + end).size();
    const struct {
        std::string query;
        int sort;
        int page;
        int licence;
        std::string end;
        bool started = true;
    } rows[] = {
        {"a%20b", 0, 0, 6, "1&page_size=15&sort="},
        {"x", 1, 1, 0, "2&page_size=15&sort=duration&filter=license:\"Creative%20Commons%200\""},
        {"x", 2, 9, 1, "10&page_size=15&sort=created_asc&filter=license:\"Attribution\""},
        {"x", 3, 0, 2,
         "1&page_size=15&sort=downloads_asc&filter=license:\"Attribution%20Noncommercial\""},
        {"x", 4, 0, 3, "1&page_size=15&sort=rating_asc"},
        {"x", 5, 0, -1, "1&page_size=15&sort="},
        {std::string(room, 'q'), 1, 0, 6, end},
        {std::string(room + 1, 'q'), 1, 0, 6, end, false},
    };
    SoundSearch search(services);
    for (auto row : rows) {
        SCOPED_TRACE(row.query.substr(0, 5) + std::to_string(row.sort) + row.end);
        ServiceControl("reset");
        const CapturedLog log;
        EXPECT_EQ(search.DoSearch(row.query.data(), static_cast<_sbos_type>(row.sort),
                                  sbosDescending, row.page, /*pageSize=*/15,
                                  static_cast<_licType>(row.licence)),
                  row.started);
        const _tFS_Q_State state = search.Finish();
        const std::string target = row.query + middle + row.end;
        if (row.started) {
            EXPECT_EQ(services.Requests().at(0).target, head + target);
            continue;
        }
        EXPECT_EQ(state, fsFailed);
        EXPECT_TRUE(services.Requests().empty() && services.folder.Listing().empty());
        EXPECT_EQ(OwnLines(log),
                  "Failed to start online request  " + (start + target).substr(0, 2047) + "|");
    }
    CFreeSoundOrg offline(/*filterBadWords=*/true, /*access=*/nullptr);
    EXPECT_FALSE(offline.DoSearch(nullptr, sbosScore, sbosAscending, 0, 10, licAttribution));
    EXPECT_EQ(offline.GetState(), fsFailed);
}

TEST(SoundSearch, CopiesHaveSettingsAndNoRecords) {
    OnlineServices services;
    SoundSearch search(services);
    ASSERT_EQ(search.Run("bell"), fsReplyReceived);
    EXPECT_EQ(search.NumTotalPages(), 2);
    SoundSearch copy(search);
    std::strcpy(search.APIKey(), "changed");
    for (const char* key : {"5f0c2e9a71b3d4486e2a90c1f7d35b8e0a4c6d21", "changed"}) {
        _osrSndItem item{};
        EXPECT_EQ(copy.GetState(), fsReplyReceived);
        EXPECT_EQ(copy.NumReturnedResults(), 0);
        EXPECT_FALSE(copy.GetItem(0, item));
        EXPECT_EQ(copy.NumTotalResults(), 20);
        EXPECT_EQ(copy.LastPageSize(), 10);
        EXPECT_STREQ(copy.APIKey(), key);
        // With a transfer, its file and, the second time, settings of its own.
        ASSERT_TRUE(copy.Start("fault-hold"));
        ServiceControl("held/1");
        copy = search;
        const std::string files = services.folder.Listing();
        EXPECT_EQ(files.find("tmp-"), files.rfind("tmp-")) << files;
    }
    SoundSearch& same = search;
    same = search;
    EXPECT_EQ(same.NumReturnedResults(), 10);
}

TEST(ServiceHosts, AreNamesWithPorts) {
    using Texts = std::vector<std::string>;
    const std::string longest(253, 'a');
    for (const auto set : {SetSoundRepoHost, SetMusicLookupHost}) {
        for (const auto& host : Texts{"A-b_c.example:65535", "HTTP://a", longest + ":1"})
            EXPECT_TRUE(set(host.c_str())) << host;
        for (const auto& host :
             Texts{"", "http://", "https://a", "a:", "a:0", "a:65536", "a:080", "a:4294967297",
                   "a:1/x", "a%sb", ":1", "a@b", "\xE9", longest + "a"})
            EXPECT_FALSE(set(host.c_str())) << host;
        EXPECT_TRUE(set(nullptr));
    }
}

TEST(SoundID, TextAndNumber) {
    char buffer[8] = "before";
    EXPECT_TRUE(OSRSoundIDToString(4294967295, buffer, sizeof buffer));
    EXPECT_STREQ(buffer, "4294967");
    EXPECT_FALSE(OSRSoundIDToString(95, buffer, 0) || OSRSoundIDToString(95, nullptr, 5));
    EXPECT_EQ(StringToOSRSoundID("0x10"), 16u);
    EXPECT_EQ(StringToOSRSoundID(" 010 x"), 8u);
    EXPECT_EQ(StringToOSRSoundID("99999999999"), 4294967295u);
    EXPECT_EQ(StringToOSRSoundID(nullptr), 0u);
}

} // namespace
