#include "tests/online/MusicSearch.h"
#include "tests/online/SoundSearch.h"
#include "tests/support/ProcessUse.h"

#include <optional>

namespace {

std::string WholeOutcome(OnlineServices& services) {
    return MusicSearch(services).Run("Foo");
}

TEST(OnlineSearches, EndWellOrNotForEveryFault) {
    OnlineServices services;
    const QuickWaits quick;
    const TrustedAuthority trusted;
    const std::string whole = WholeOutcome(services);
    const std::string part = whole.substr(0, 100);
    const struct {
        const char* port;
        const char* query;
        _tFS_Q_State state;
        int returned;
        const char* log;     ///< of the sounds
        std::string outcome; ///< its begin, of the music; "" where that is not asked
    } rows[] = {
        {"plain", "bell", fsReplyReceived, 10, "", whole},
        {"plain", "nothing", fsReplyReceived, 0, "", "0:"},
        {"plain", "fault-close-before", fsUnderWay, 0, "", "error"},
        {"plain", "fault-close-in-head", fsUnderWay, 0, "", "error"},
        {"plain", "fault-close-after-head", fsUnderWay, 0, "", "error"},
        {"plain", "fault-cut", fsUnderWay, 0, "", part},
        {"plain", "fault-long-length", fsUnderWay, 0, "", whole},
        {"plain", "fault-short-length", fsFailed, 0, notJson, whole},
        {"plain", "fault-no-length", fsReplyReceived, 10, "", whole},
        {"plain", "fault-chunked", fsReplyReceived, 10, "", whole},
        {"plain", "fault-chunked-cut", fsFailed, 0, notJson, part},
        {"plain", "fault-404", fsUnderWay, 0, "", "error"},
        {"plain", "fault-500", fsUnderWay, 0, "", "error"},
        {"plain", "fault-503", fsUnderWay, 0, "", "error"},
        {"plain", "fault-redirect", fsReplyReceived, 10, "", whole},
        {"plain", "fault-redirect-loop", fsUnderWay, 0, "", "error"},
        {"plain", "fault-garbage", fsFailed, 0, notJson, "error"},
        {"plain", "fault-empty", fsFailed, 0, notJson, "error"},
        {"plain", "fault-large", fsReplyReceived, 1, "Unanticipated license type <>|",
         "1:\n1|large large "},
        {"refused", "bell", fsUnderWay, 0, "", "error"},
        {"tls", "bell", fsReplyReceived, 10, "", ""},
        {"tls", "fault-redirect-plain", fsUnderWay, 0, "", ""},
        {"tls-unknown", "bell", fsUnderWay, 0, "", ""},
        {"tls-name", "bell", fsUnderWay, 0, "", ""},
        {"tls-expired", "bell", fsUnderWay, 0, "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.port) + ", " + row.query);
        OnlineServices::Ask(row.port);
        const CapturedLog log;
        SoundSearch sounds(services);
        EXPECT_EQ(sounds.Run(row.query), row.state);
        EXPECT_EQ(sounds.GetState(), row.state);
        EXPECT_EQ(sounds.NumReturnedResults(), row.returned);
        EXPECT_EQ(OwnLines(log), row.log);
        EXPECT_EQ(services.folder.Listing().rfind("tmp-", 0), 0u);
        sounds.ClearLastDownload();
        EXPECT_EQ(services.folder.Listing(), "");
        if (!row.outcome.empty()) {
            MusicSearch lookup(services);
            EXPECT_EQ(lookup.Run(row.query).substr(0, row.outcome.size()), row.outcome);
            EXPECT_EQ(services.folder.Listing(), "TEMPFILENAME");
        }
    }
}

TEST(OnlineSearches, AHundredOfEachKindLeaveNothing) {
    OnlineServices services;
    const QuickWaits quick;
    const std::string whole = WholeOutcome(services);
    std::optional<SoundSearch> sounds;
    std::optional<MusicSearch> lookup;
    const auto renew = [&](int /*round*/ = 0) {
        sounds.emplace(services);
        lookup.emplace(services);
    };
    const auto start = [&](int round) {
        ASSERT_TRUE(sounds->Start(round % 3 == 0 ? "fault-hold" : "fault-slow"));
        if (round % 2 == 0)
            lookup->PostToHalf();
        else
            ASSERT_TRUE(lookup->Post("Bar"));
        if (round % 3 == 0)
            ServiceControl("held/1");
    };
    const auto end = [&] {
        sounds.reset();
        lookup.reset();
        EXPECT_EQ(services.folder.Listing(), "");
        renew();
    };
    renew();
    ExpectNoGrowth(
        "one after the other",
        [&](int) {
            ASSERT_EQ(sounds->Run("bell"), fsReplyReceived);
            ASSERT_EQ(lookup->Run("Foo"), whole);
        },
        end);
    ExpectNoGrowth("overtaken", start, end);
    EXPECT_EQ(lookup->Run("Foo"), whole);
    ExpectNoGrowth(
        "destroyed in mid-transfer",
        [&](int round) {
            renew();
            start(round);
        },
        end);
}

} // namespace
