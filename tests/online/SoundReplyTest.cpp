#include "tests/online/SoundSearch.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cstring>
#include <vector>

namespace {

/// A value of a reply, and what is read where a text or a number is expected.
struct Value {
    std::string json;
    std::string text;
    double number = 0;
};

std::string Quoted(const std::string& text) {
    std::string json = "\"";
    for (const char c : text) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned char>(c));
        const bool plain = static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\';
        json += plain ? std::string(1, c) : escape;
    }
    return json + "\"";
}

Value RandomText(Dice& dice) {
    static const char* const parts[] = {"sound ", "\xD1\x8F", "\xFF\x80", "a\"b\\c\n",
                                        "alligatorbait"};
    const int rare = dice.Below(40);
    std::string text;
    for (int count = rare == 0 ? 700 : dice.Below(5); count > 0; --count)
        text += parts[dice.Below(rare == 1 ? 5 : 4)];
    return {Quoted(dice.Below(20) == 0 ? text + '\0' + "after" : text), text};
}

Value RandomNumber(Dice& dice) {
    static const std::string odd[] = {"2147483647",  "2147483648", "-2147483648",
                                      "-2147483649", "4294967295", "4294967296",
                                      "1e300",       "-3.99",      "3.5e38"};
    const std::string json = dice.Below(2) == 0 ? dice.Any(odd) : std::to_string(dice.Below(99999));
    return {json, "", std::strtod(json.c_str(), nullptr)};
}

/// Mostly of the kind that is asked for.
Value RandomValue(Dice& dice, bool text) {
    static const char* const others[] = {"null", "true", "[]", "{}", "[1,\"x\"]", "{\"bpm\":7}"};
    const int kind = dice.Below(8);
    if (kind == 0)
        return {dice.Any(others), ""};
    return (kind == 1) == text ? RandomNumber(dice) : RandomText(dice);
}

double Fitting(double number, double smallest, double largest) {
    return number >= smallest && number <= largest ? number : 0;
}

/// One result: its JSON as it is put together, and the record that it must give.
class Result {
public:
    explicit Result(Dice& source) : dice(source) { Make(); }

    std::string json = "{";
    _osrSndItem record{};

    bool Bad() const {
        for (const char* text : {record.name, record.description, record.tags}) {
            if (std::strstr(text, "alligatorbait") != nullptr)
                return true;
        }
        return false;
    }

private:
    void Add(const std::string& name, const std::string& value) {
        // The last of two members of one name counts.
        if (dice.Below(20) == 0)
            Add(name, "\"an earlier one\"");
        json += (json.back() == '{' ? "\"" : ",\"") + name + "\":" + value;
    }

    Value Member(const char* name, bool text) {
        const Value value = dice.Below(6) == 0 ? Value{} : RandomValue(dice, text);
        if (!value.json.empty())
            Add(name, value.json);
        return value;
    }
    template <std::size_t size>
    void Text(const char* name, char (&field)[size]) {
        std::strncpy(field, Member(name, /*text=*/true).text.c_str(), size - 1);
    }
    void Number(const char* name, int& field) {
        field = static_cast<int>(Fitting(Member(name, /*text=*/false).number, INT_MIN, INT_MAX));
    }
    void Number(const char* name, float& field) {
        field = static_cast<float>(Fitting(Member(name, /*text=*/false).number, -FLT_MAX, FLT_MAX));
    }

    /// An object that `fill` fills or, in its place, something else.
    template <class Fill>
    void Object(const char* name, Fill fill) {
        if (dice.Below(4) == 0) {
            Add(name, dice.Below(3) == 0 ? "{}" : RandomText(dice).json);
            return;
        }
        std::string outer = "{";
        outer.swap(json);
        fill();
        outer.swap(json);
        Add(name, outer + "}");
    }

    void Tags() {
        std::string list;
        std::string joined;
        for (int count = dice.Below(30), number = 0; number < count; ++number) {
            const Value tag = RandomValue(dice, /*text=*/true);
            list += (number > 0 ? "," : "") + tag.json;
            if (joined.size() != 254)
                joined += (number > 0 ? "," : "") + tag.text;
        }
        Add("tags", "[" + list + "]");
        std::strncpy(record.tags, joined.c_str(), 255);
    }

    void License() {
        static const std::string parts[] = {"creativecommons.org/publicdomain/zero/",
                                            "creativecommons.org/licenses/by/",
                                            "creativecommons.org/licenses/by-nc/",
                                            "creativecommons.org/licenses/sampling+/", "by/"};
        std::string text = std::string(static_cast<unsigned>(dice.Below(500)), '.');
        text += parts[dice.Below(5)] + parts[dice.Below(5)];
        Add("license", Quoted(text));
        text.resize(std::min<std::size_t>(text.size(), 511));
        std::strcpy(record.licenseURL, text.c_str());
        int type = 0;
        while (type < 4 && text.find(parts[type]) == text.npos)
            ++type;
        record.licenseType = static_cast<_licType>(type < 4 ? type : 6);
    }

    void Make() {
        record.soundID = static_cast<unsigned>(static_cast<long long>(
            Fitting(Member("id", /*text=*/false).number, INT_MIN, UINT_MAX)));
        Text("url", record.url);
        Text("username", record.userName);
        Text("name", record.name);
        Text("description", record.description);
        Text("created", record.created);
        Tags();
        License();
        Number("channels", record.channels);
        Number("bitdepth", record.bitDepth);
        Number("sampleRate", record.sampleRate);
        Number("duration", record.duration);
        Object("analysis", [this] {
            Object("rhythm", [this] { Number("bpm", record.bpm); });
            Object("tonal", [this] {
                Text("key_key", record.key);
                Text("key_scale", record.scale);
            });
        });
        Number("num_downloads", record.numDownloads);
        Number("num_ratings", record.numRatings);
        Number("avg_rating", record.avgRating);
        Object("previews", [this] { Text("preview-hq-ogg", record.previewURL); });
        json += "}";
    }

    Dice& dice;
};

TEST(SoundReply, RandomResultsAreThoseOfAnIndependentModel) {
    OnlineServices services;
    EachRound(/*seed=*/71, /*rounds=*/60, [&](Dice& dice, int round) {
        std::string list;
        std::vector<_osrSndItem> expected;
        const bool filter = round % 2 == 0;
        for (int count = dice.Below(12); count > 0; --count) {
            const Result result(dice);
            list += (list.empty() ? "" : ",") + result.json;
            if (!filter || !result.Bad())
                expected.push_back(result.record);
        }
        SoundSearch search(services, filter);
        ASSERT_EQ(
            search.Read("{\"count\":" + std::to_string(round) + ",\"results\":[" + list + "]}"),
            fsReplyReceived);
        EXPECT_EQ(search.NumTotalResults(), round);
        ASSERT_EQ(search.NumReturnedResults(), static_cast<int>(expected.size()));
        _osrSndItem item{};
        for (int index = 0; search.GetItem(index, item); ++index)
            ASSERT_EQ(std::memcmp(&item, &expected[static_cast<unsigned>(index)], sizeof item), 0)
                << item.name;
        EXPECT_FALSE(search.GetItem(-1, item));
    });
}

TEST(SoundReply, OddReplies) {
    const std::string noList =
        "CFreeSoundOrg::LoadDataFromJSONResult() - null results - returning false|";
    const struct {
        const char* name;
        std::string reply;
        int total;
        int returned;
        std::string log;
    } rows[] = {
        {"nothing but a list", "[1,2]", 0, 0, noList},
        {"no list", R"({"count":95})", 95, 0, noList},
        {"a number beyond all", R"({"results":[{}],"count":1e999})", 0, 0, notJson},
        {"an object for a list", R"({"count":"7","results":{"0":{}}})", 0, 0, noList},
        {"an empty list", R"({"count":-3,"results":[]})", -3, 0, ""},
        {"results of other types", R"({"results":[null,5,[]]})", 0, 3,
         Repeated("Unanticipated license type <>|", 3)},
        {"comments", "{\"results\":[] " + Repeated("/**/", 500'000) + "}", 0, 0, ""},
        {"more after the end", "{\"count\":1,\"results\":[]} }{", 1, 0, ""},
        {"a deep list", Repeated("[", 999) + Repeated("]", 999), 0, 0, noList},
        {"too deep a list", Repeated("[", 1'000'000), 0, 0, notJson},
        {"too deep an object", Repeated("{\"a\":", 1'000'000), 0, 0, notJson},
        {"a number of many digits", "{\"count\":" + Repeated("9", 300'000) + "}", 0, 0, notJson},
        {"a zero byte", std::string("{\"count\":1,\0\"results\":[]}", 25), 0, 0, notJson},
        {"cut off in a text", R"({"count":1,"results":[{"name":"Rai)", 0, 0, notJson},
    };
    OnlineServices services;
    SoundSearch search(services);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const CapturedLog log;
        EXPECT_EQ(search.Read(row.reply), row.log == notJson ? fsFailed : fsReplyReceived);
        EXPECT_EQ(search.NumTotalResults(), row.total);
        EXPECT_EQ(search.NumReturnedResults(), row.returned);
        EXPECT_EQ(OwnLines(log), row.log);
    }
}

TEST(SoundReply, ALackOfMemoryIsAFailure) {
    OnlineServices services;
    SoundSearch search(services);
    ServiceControl("reply/small",
                   R"({"count":1,"results":[{"id":7,"tags":["a","b"],"duration":1.5}]})");
    AllocationFault fault("vtrutils.dll");
    EXPECT_GT(fault.ForEachAllocation([&](unsigned) {
        const bool started = search.Start("reply-small");
        const _tFS_Q_State state = search.Finish();
        const int returned = search.NumReturnedResults();
        fault.FailAt(0);
        ASSERT_TRUE(state == fsReplyReceived ? started && returned == 1 : returned == 0) << state;
        ASSERT_NE(state, fsUnderWay);
    }),
              20u);
    EXPECT_EQ(search.Read(R"({"count":4,"results":[]})"), fsReplyReceived);
}

} // namespace
