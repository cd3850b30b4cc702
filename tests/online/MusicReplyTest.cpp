#include "tests/online/MusicSearch.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/HeapUse.h"
#include "tests/support/Rounds.h"

#include <algorithm>
#include <array>
#include <climits>
#include <optional>

namespace {

using Text = std::optional<std::string>;

/// Reads replies from files.
class ReplyReader : public MusicBrainzLookup {
public:
    explicit ReplyReader(const TestFolder& place)
        : MusicBrainzLookup(nullptr, place.Path().c_str()), folder(place) {}

    std::string Read(_cdRequestType type, const std::string& reply) {
        folder.Write("TEMPFILENAME", reply);
        requestType = type;
        ParseResults(this);
        EXPECT_TRUE(IsSearchComplete());
        if (type == cdArtistSearch)
            return Outcome<_cdArtistItem>(*this);
        return type == cdSongsOfAlbum ? Outcome<_cdSongItem>(*this) : Outcome<_cdAlbumItem>(*this);
    }

private:
    const TestFolder& folder;
};

/// What a field of `size` bytes has of a text, with its references decoded.
std::string Field(const Text& whole, std::size_t size) {
    static const std::pair<std::string, std::string> references[] = {
        {"&amp;", "&"}, {"%20", " "}, {"&#65;", "A"}, {"&uuml;", "?"}};
    std::string text = whole.value_or("").substr(0, size - 1);
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto there =
            std::find_if(std::begin(references), std::end(references), [&](const auto& pair) {
                return text.compare(at, pair.first.size(), pair.first) == 0;
            });
        if (there != std::end(references))
            text.replace(at, there->first.size(), there->second);
    }
    return text;
}

int Number(const Text& text) {
    if (!text)
        return 0;
    const long long number = std::strtoll(text->c_str(), nullptr, 10);
    return static_cast<int>(std::clamp<long long>(number, INT_MIN, INT_MAX));
}

/// An entry of a list, as XML and as the record that it gives; "" if it gives none.
class Entry {
public:
    Entry(Dice& random, _cdRequestType type) : dice(random) {
        if (type == cdArtistSearch)
            MakeArtist();
        else if (type == cdSongsOfAlbum)
            MakeSong();
        else
            MakeAlbum();
    }
    std::string Xml() const { return "<e" + attributes + ">" + children + "</e>"; }

    std::string record;

private:
    void MakeArtist() {
        const Text id = Put("id"), name = Put("name");
        const Text told = Put("disambiguation");
        PutBelow({"id", "disambiguation"}, "no");
        std::string shown = name.value_or("");
        if (told)
            shown = shown.substr(0, 252 - std::min<std::size_t>(252, told->size())) + " (" + *told +
                    ")";
        if (id && name)
            record = id->substr(0, 127) + "|" + Field(shown, 256);
    }

    void MakeAlbum() {
        const Text id = Put("id"), title = Put("title"), type = Put("type");
        const Text name = RandomText(), date = RandomText();
        const Text count = RandomNumber();
        if (name)
            PutBelow({"name"}, *name);
        if (date)
            PutBelow({"date"}, *date);
        PutBelow({"id", "title", "type"}, "no");
        if (count)
            children += "<track-list count=\"" + *count + "\"/>";
        if (id && title)
            record = id->substr(0, 127) + "|" + Field(title, 256) + "|" + Field(name, 256) + "|" +
                     Field(date, 64) + "|" + Field(type, 64) + "|" + std::to_string(Number(count));
    }

    void MakeSong() {
        const Text title = Put("title");
        const Text duration = RandomNumber();
        if (duration)
            children += "<duration>" + *duration + "</duration>";
        PutBelow({"title", "duration"}, "7");
        if (title)
            record = Field(title, 256) + "|" + std::to_string(Number(duration));
    }

    Text RandomText() {
        if (dice.Below(5) == 0)
            return {};
        std::string text = "x";
        const int length = dice.Below(3) == 0 ? 10 : 40 + dice.Below(160);
        while (static_cast<int>(text.size()) < length)
            text += std::array{"a", "\xC3\xBC", "&amp;", "%20", "&#65;", "&uuml;", "amp;", "b&c"}
                [static_cast<std::size_t>(dice.Below(8))];
        return text + std::string(static_cast<std::size_t>(dice.Below(3) * 60), 'y') + "z";
    }

    Text RandomNumber() {
        static constexpr const char* numbers[] = {"12",           "0",  "-3", "99999999999",
                                                  "-99999999999", "4x", "x"};
        return dice.Below(5) == 0 ? Text() : Text(numbers[dice.Below(7)]);
    }

    /// As an attribute, which comes first, as an element, as both or not at all.
    Text Put(const std::string& name) {
        const Text inTag = RandomText();
        const Text inside = RandomText();
        const int where = dice.Below(3);
        if (inTag && where != 0)
            attributes += " " + name + "=\"" + *inTag + "\"";
        if (inside && where != 1)
            children += "<" + name + ">" + *inside + "</" + name + ">";
        return inTag && where != 0 ? inTag : where != 1 ? inside : Text();
    }

    /// One to three elements down.
    void PutBelow(std::initializer_list<std::string> names, const std::string& value) {
        for (const std::string& name : names) {
            const int depth = dice.Below(3);
            children += Repeated("<w>", depth) +
                        (dice.Below(2) == 0 ? "<w " + name + "=\"" + value + "\"/>"
                                            : "<w><" + name + ">" + value + "</" + name + "></w>") +
                        Repeated("</w>", depth);
        }
    }

    Dice& dice;
    std::string attributes;
    std::string children;
};

constexpr const char* listNames[] = {"artist-list", "release-list", "release-list", "track-list"};

} // namespace

TEST(MusicReply, GivesTheRecordsOfAModel) {
    const TestFolder folder;
    ReplyReader reader(folder);
    EachRound(/*seed=*/7201, /*rounds=*/400, [&](Dice& dice, int round) {
        const auto type = static_cast<_cdRequestType>(round % 4);
        const int entries = dice.Below(4) == 0 ? 0 : dice.Below(12);
        const bool counted = dice.Below(4) > 0;
        std::string xml, expected;
        for (int i = 0; i < entries; ++i) {
            const Entry entry(dice, type);
            xml += entry.Xml();
            expected += entry.record.empty() ? "" : "\n" + entry.record;
        }
        const int total = type == cdSongsOfAlbum ? entries : counted ? -7 : 0;
        const std::string list = listNames[type];
        xml = "<" + list + (counted ? " count=\"-7\">" : ">") + xml + "</" + list + ">";
        const int depth = dice.Below(4);
        xml = Repeated("<r><list/>", depth) + xml + Repeated("</r>", depth);
        EXPECT_EQ(reader.Read(type, "<?xml version=\"1.0\"?>" + xml),
                  std::to_string(total) + ":" + expected);
    });
}

TEST(MusicReply, SurvivesWhateverComes) {
    const TestFolder folder;
    ReplyReader reader(folder);
    const std::string deep = Repeated("<a>", 100000);
    const std::string artist = "<artist id=\"i\"><name>n</name>";
    const std::string longest(300, 'd');
    const struct {
        const char* name;
        std::string reply;
        std::string outcome;
    } rows[] = {
        {"empty", "", "error"},
        {"no XML", "\x80garbage", "error"},
        {"another list", "<release-list count=\"3\"><e id=\"i\" title=\"t\"/></release-list>",
         "error"},
        {"no entries", "<artist-list count=\"2147483647\"/>", "2147483647:"},
        {"cut off", "<artist-list count=\"2\">" + artist, "2:\ni|n"},
        {"too long to tell apart",
         "<artist-list>" + artist + "<disambiguation>" + longest + "</disambiguation>",
         "0:\ni| (" + longest.substr(0, 253)},
        {"deep before", deep + "<artist-list>" + artist, "0:\ni|n"},
        {"deep inside", "<artist-list>" + artist + deep, "0:\ni|n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(reader.Read(cdArtistSearch, row.reply), row.outcome) << row.name;
    // A release is searched to its end for each field that may be anywhere in it.
    const std::string wide = Repeated("<r id=\"i\" title=\"t\"><w><w/></w></r>", 20000);
    EXPECT_EQ(reader.Read(cdAlbumSearch, "<release-list>" + wide).size(), 2u + 20000 * 9);
}

TEST(MusicReply, LeavesOutWhatThereIsNoMemoryFor) {
    const TestFolder folder;
    const std::string reply =
        "<artist-list count=\"2\"><a id=\"1\" name=\"n\"/><a id=\"2\" name=\"n\"/>";
    ReplyReader reader(folder);
    AllocationFault fault({"vtrutils.dll", "vtrfutls.dll"});
    std::size_t used = 0;
    for (const bool again : {false, true}) {
        EXPECT_GT(fault.ForEachAllocation([&](unsigned n) {
            const std::string outcome = reader.Read(cdArtistSearch, reply);
            fault.FailAt(0);
            EXPECT_TRUE(outcome == "error" || outcome.rfind("0:", 0) == 0 ||
                        outcome.rfind("2:", 0) == 0)
                << n << ": " << outcome;
            EXPECT_EQ(reader.Read(cdArtistSearch, reply), "2:\n1|n\n2|n");
        }),
                  5u);
        reader.Read(cdArtistSearch, "");
        EXPECT_TRUE(!again || HeapUse() <= used) << HeapUse() - used;
        used = HeapUse();
    }
}
