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
    if (dice.Below(20) == 0)
        return {Quoted(text + '\0' + "after"), text};
    return {Quoted(text), text};
}

Value RandomNumber(Dice& dice) {
    static const char* const odd[] = {"2147483647",
                                      "2147483648",
                                      "-2147483648",
                                      "-2147483649",
                                      "4294967295",
                                      "4294967296",
                                      "18446744073709551616",
                                      "1e300",
                                      "-3.99",
                                      "1e-300",
                                      "-0.0",
                                      "3.5e38"};
    const std::string json =
        dice.Below(2) == 0 ? odd[dice.Below(12)] : std::to_string(dice.Below(99999));
    return {json, "", std::strtod(json.c_str(), nullptr)};
}

Value RandomOther(Dice& dice) {
    static const char* const others[] = {"null", "true", "[]", "{}", "[1,\"x\"]", "{\"bpm\":7}"};
    return {others[dice.Below(6)], ""};
}

/// Mostly of the kind that is asked for.
Value RandomValue(Dice& dice, bool text) {
    const int kind = dice.Below(8);
    return kind == 0             ? RandomOther(dice)
           : (kind == 1) == text ? RandomNumber(dice)
                                 : RandomText(dice);
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

/// The number of bytes that are equal before it.
std::size_t FirstDifference(const _osrSndItem& one, const _osrSndItem& other) {
    const auto bytes = [](const _osrSndItem& item) { return reinterpret_cast<const char*>(&item); };
    return static_cast<std::size_t>(
        std::mismatch(bytes(one), bytes(one) + sizeof one, bytes(other)).first - bytes(one));
}

std::string Nested(const char* open, std::size_t levels) {
    std::string text;
    while (levels-- > 0)
        text += open;
    return text;
}

TEST(SoundReply, RandomResultsAreThoseOfAnIndependentModel) {
    SoundSearch search;
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
        search.Renew(filter);
        ASSERT_EQ(
            search.Read("{\"count\":" + std::to_string(round) + ",\"results\":[" + list + "]}"),
            fsReplyReceived);
        EXPECT_EQ(search.repo->NumTotalResults(), round);
        ASSERT_EQ(search.repo->NumReturnedResults(), static_cast<int>(expected.size()));
        _osrSndItem item{};
        for (int index = 0; search.repo->GetItem(index, item); ++index)
            ASSERT_EQ(FirstDifference(item, expected[static_cast<unsigned>(index)]), sizeof item)
                << index;
        EXPECT_FALSE(search.repo->GetItem(-1, item));
    });
}

TEST(SoundReply, OddReplies) {
    const std::string comments = Nested("/**/", 500'000);
    const struct {
        const char* name;
        std::string reply;
        _tFS_Q_State state;
        int total;
        int returned;
        std::string log;
    } rows[] = {
        {"nothing but a list", "[1,2]", fsReplyReceived, 0, 0, noResults},
        {"a number", "5", fsReplyReceived, 0, 0, noResults},
        {"no list", R"({"count":95})", fsReplyReceived, 95, 0, noResults},
        {"null for a list", R"({"count":95,"results":null})", fsReplyReceived, 95, 0, noResults},
        {"an object for a list", R"({"count":"7","results":{"0":{}}})", fsReplyReceived, 0, 0,
         noResults},
        {"an empty list", R"({"count":-3,"results":[]})", fsReplyReceived, -3, 0, ""},
        {"results of other types", R"({"results":[null,5,[]]})", fsReplyReceived, 0, 3,
         Nested("Unanticipated license type <>|", 3)},
        {"two lists", R"({"results":[{}],"results":[]})", fsReplyReceived, 0, 0, ""},
        {"comments", "{\"results\":[] " + comments + "}", fsReplyReceived, 0, 0, ""},
        {"more after the end", "{\"count\":1,\"results\":[]} }{", fsReplyReceived, 1, 0, ""},
        {"a deep list", Nested("[", 999) + Nested("]", 999), fsReplyReceived, 0, 0, noResults},
        {"too deep a list", Nested("[", 1'000'000), fsFailed, 0, 0, notJson},
        {"too deep an object", Nested("{\"a\":", 1'000'000), fsFailed, 0, 0, notJson},
        {"no number", R"({"results":[{}],"count":NaN})", fsFailed, 0, 0, notJson},
        {"a number beyond all", R"({"results":[{}],"count":1e999})", fsFailed, 0, 0, notJson},
        {"a number of many digits", "{\"count\":" + Nested("9", 300'000) + "}", fsFailed, 0, 0,
         notJson},
        {"a zero byte", std::string("{\"count\":1,\0\"results\":[]}", 25), fsFailed, 0, 0, notJson},
        {"cut off in a text", R"({"count":1,"results":[{"name":"Rai)", fsFailed, 0, 0, notJson},
    };
    SoundSearch search;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const CapturedLog log;
        EXPECT_EQ(search.Read(row.reply), row.state);
        EXPECT_EQ(search.repo->NumTotalResults(), row.total);
        EXPECT_EQ(search.repo->NumReturnedResults(), row.returned);
        EXPECT_EQ(OwnLines(log), row.log);
    }
}

TEST(SoundReply, ALackOfMemoryIsAFailure) {
    SoundSearch search;
    ServiceControl("reply/small",
                   R"({"count":1,"results":[{"id":7,"tags":["a","b"],"duration":1.5}]})");
    AllocationFault fault("vtrutils.dll");
    char query[] = "reply-small";
    const unsigned failures = fault.ForEachAllocation([&](unsigned) {
        const unsigned first = search.Start(query) ? 1 : 0;
        search.Finish();
        const _tFS_Q_State state = search.repo->GetState();
        const int returned = search.repo->NumReturnedResults();
        fault.FailAt(0);
        ASSERT_TRUE(state == fsReplyReceived ? first == 1 && returned == 1 : returned == 0)
            << state;
        ASSERT_NE(state, fsUnderWay);
    });
    EXPECT_GT(failures, 20u);
    EXPECT_EQ(search.Read(R"({"count":4,"results":[]})"), fsReplyReceived);
}

} // namespace
