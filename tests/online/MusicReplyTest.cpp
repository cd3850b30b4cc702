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

/// What a field of `size` bytes has of a text.
std::string Cut(const std::string& text, std::size_t size) {
    return text.substr(0, size - 1);
}

std::string Decoded(std::string text) {
    static const std::pair<std::string, std::string> references[] = {
        {"&amp;", "&"}, {"%20", " "}, {"&#65;", "A"}, {"&uuml;", "?"}};
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (const auto& [reference, meant] : references) {
            if (text.compare(at, reference.size(), reference) == 0) {
                text.replace(at, reference.size(), meant);
                break;
            }
        }
    }
    return text;
}

std::string Field(const Text& text, std::size_t size) {
    return Decoded(Cut(text.value_or(""), size));
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
        const Text id = Put("id");
        const Text name = Put("name");
        const Text told = Put("disambiguation");
        PutBelow("id", "no");
        PutBelow("disambiguation", "no");
        std::string shown = name.value_or("");
        if (told)
            shown = shown.substr(0, 252 - std::min<std::size_t>(252, told->size())) + " (" + *told +
                    ")";
        if (id && name)
            record = Cut(*id, 128) + "|" + Field(shown, 256);
    }

    void MakeAlbum() {
        const Text id = Put("id");
        const Text title = Put("title");
        const Text type = Put("type");
        const Text name = RandomText();
        const Text date = RandomText();
        const Text count = RandomNumber();
        if (name)
            PutBelow("name", *name);
        if (date)
            PutBelow("date", *date);
        for (const char* other : {"id", "title", "type"})
            PutBelow(other, "no");
        if (count)
            children += "<track-list count=\"" + *count + "\"/>";
        if (id && title)
            record = Cut(*id, 128) + "|" + Field(title, 256) + "|" + Field(name, 256) + "|" +
                     Field(date, 64) + "|" + Field(type, 64) + "|" + std::to_string(Number(count));
    }

    void MakeSong() {
        const Text title = Put("title");
        const Text duration = RandomNumber();
        if (duration)
            children += "<duration>" + *duration + "</duration>";
        PutBelow("title", "no");
        PutBelow("duration", "7");
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
    void PutBelow(const std::string& name, const std::string& value) {
        std::string inner = dice.Below(2) == 0
                                ? "<w " + name + "=\"" + value + "\"/>"
                                : "<w><" + name + ">" + value + "</" + name + "></w>";
        for (int depth = dice.Below(3); depth > 0; --depth)
            inner = "<w>" + inner + "</w>";
        children += inner;
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
        for (int depth = dice.Below(4); depth > 0; --depth)
            xml = "<r><list/>" + xml + "</r>";
        EXPECT_EQ(reader.Read(type, "<?xml version=\"1.0\"?>" + xml),
                  std::to_string(total) + ":" + expected);
    });
}

TEST(MusicReply, SurvivesWhateverComes) {
    const TestFolder folder;
    ReplyReader reader(folder);
    const auto nested = [](int depth, const std::string& inner) {
        std::string text;
        for (int i = 0; i < depth; ++i)
            text += "<a>";
        return text + inner;
    };
    const std::string artist = "<artist id=\"i\"><name>n</name>";
    const std::string longest(300, 'd');
    struct Row {
        const char* name;
        std::string reply;
        std::string outcome;
    };
    for (const Row& row : {
             Row{"empty", "", "error"},
             Row{"no XML", "\x80garbage", "error"},
             Row{"another list",
                 "<release-list count=\"3\"><e id=\"i\" title=\"t\"/></release-list>", "error"},
             Row{"no entries", "<artist-list count=\"2147483647\"/>", "2147483647:"},
             Row{"cut off", "<artist-list count=\"2\">" + artist, "2:\ni|n"},
             Row{"too long to tell apart",
                 "<artist-list>" + artist + "<disambiguation>" + longest + "</disambiguation>",
                 "0:\ni| (" + longest.substr(0, 253)},
             Row{"deep before", nested(100000, "<artist-list>" + artist), "0:\ni|n"},
             Row{"deep inside", "<artist-list>" + artist + nested(100000, ""), "0:\ni|n"},
         })
        EXPECT_EQ(reader.Read(cdArtistSearch, row.reply), row.outcome) << row.name;
    // A release is searched to its end for each field that may be anywhere in it.
    std::string wide = "<release-list>";
    for (int i = 0; i < 20000; ++i)
        wide += "<r id=\"i\" title=\"t\"><w><w/></w></r>";
    EXPECT_EQ(reader.Read(cdAlbumSearch, wide).size(), 2u + 20000 * 9);
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
