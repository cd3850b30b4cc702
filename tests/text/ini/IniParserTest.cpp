#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"
#include "tests/text/ini/IniDocuments.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace std::string_view_literals;

/// The document as text, from a buffer that ends where the text ends, with a line of the parents of
/// each section; "refused" when it is.
std::string Parsed(std::string_view text) {
    const GuardedBytes buffer(text, /*terminated=*/false);
    CIniFileReader document;
    std::string shown = Load(document, buffer.View()) ? "" : "refused ";
    shown += Content(document);
    for (int s = 0; s < static_cast<int>(document.NumSections()); ++s) {
        const CIniSection& section = *document.GetSection(s);
        EXPECT_FALSE(section.GetParent(section.NumParents()) || section.GetParent(-1));
        for (int p = 0; p < section.NumParents(); ++p)
            shown += (p == 0 ? "\n" : "|") + std::string(section.GetParent(p));
    }
    return shown;
}

std::string WithoutTrailing(const std::string& text, const char* set) {
    return text.substr(0, text.find_last_not_of(set) + 1);
}

/// What a header's line says after the name.
std::string ParentsByRule(const std::string& line) {
    std::string parents;
    for (std::size_t at = 0; (at = line.find('[', line.find(':', at))) != line.npos;) {
        const std::size_t close = line.find(']', at);
        if (close == line.npos)
            break;
        std::string name = line.substr(at + 1, close - at - 1);
        name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
        name = WithoutTrailing(name.substr(0, 511).c_str(), " ");
        if (!name.empty())
            parents += (parents.empty() ? "\n" : "|") + name;
        at = close;
    }
    return parents;
}

/// What the rules make of single-byte text, line by line; a header goes on to its "]".
std::string ParsedByRule(const std::string& text) {
    struct Section {
        std::string name, parents, pairs;
    };
    std::vector<Section> sections(1);
    std::size_t current = 0, end = 0;
    bool good = true;
    for (std::size_t at; good && (at = text.find_first_not_of(" \t\r\n", end)) != text.npos;) {
        const std::size_t close = text[at] == '[' ? text.find(']', at) : at;
        if (close == text.npos)
            break;
        end = std::min(text.find_first_of("\r\n", close), text.size());
        if (text[at] == '[') {
            std::string name = text.substr(at + 1, close - at - 1);
            std::erase(name, '\0');
            current = 0;
            if (name.empty())
                continue;
            if (sections.size() == 1 || !sections.back().pairs.empty())
                sections.emplace_back();
            current = sections.size() - 1;
            sections[current] = {name.substr(0, 63), ParentsByRule(text.substr(close, end - close)),
                                 ""};
        }
        const std::string line = text.substr(at, end - at);
        const std::size_t equals = std::min(line.find('='), line.size());
        if (text[at] == '[' || text[at] == ';')
            continue;
        good = equals < 8191;
        if (!good || equals == line.size())
            continue;
        std::string key = WithoutTrailing(line.substr(0, equals).c_str(), " \t");
        std::replace(key.begin(), key.end(), '\t', ' ');
        const std::size_t start = line.find_first_not_of(" \t", equals + 1);
        std::string value = start == line.npos ? "" : line.substr(start);
        good = value.empty() || !key.empty();
        const std::size_t last = value.find_last_not_of(" \t");
        const bool quoted = !value.empty() && value[0] == '"' && last > 0 && value[last] == '"';
        value = quoted ? value.substr(1, last - 1) : value;
        value.resize(std::min(value.find(';'), value.size()));
        good = good && value.size() < 8191;
        value = quoted ? value.c_str() : WithoutTrailing(value.c_str(), " ");
        if (good && !key.empty())
            sections[current].pairs += " " + key + "=" + value + ";";
    }
    std::string shown = good ? "" : "refused ", parents;
    for (const Section& section : sections) {
        shown += section.pairs.empty() ? "" : "{" + section.name + ":" + section.pairs + "}";
        parents += section.pairs.empty() ? "" : section.parents;
    }
    return shown + parents;
}

std::string Wide(std::string_view text) {
    std::string wide;
    for (const char c : text)
        wide += {c, '\0'};
    return wide;
}

} // namespace

TEST(IniParser, GivesTheDocumentedAnswers) {
    static constexpr struct {
        const char* name;
        std::string_view text;
        std::string_view result;
    } rows[] = {
        {"empty name", "[A]\n[]\nx=0\n[B]\nb=2\n[]\ny=0", "{: x=0; y=0;}{B: b=2;}"},
        {"not closed", "[A\na=1\n[B]\nb=2", "{A\na=1\n[B: b=2;}"},
        {"quotes", "q = \"\tsay \"hi\" \"\nr=\"a ;b\"\ns=\"a\" ;",
         "{: q=\tsay \"hi\" ; r=a ; s=\"a\";}"},
        {"UTF-16 loses its upper bytes", "\xFF\xFE[\0S\0\xE4\0]\0\n\0k\0=\0\x41\x30"sv,
         "{S\xE4: k=A;}"},
        {"UTF-16 without a mark", "[\0S\0]\0\n\0k\0=\0v\0"sv, "{S: k=v;}"},
        {"a mark alone", "\xFF\xFE", ""},
        {"a mark inside", "\xFF\xFE\xFF\x01\xFE\x01k\x01=\x01v\x01", "{: k=v;}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Parsed(row.text), row.result) << row.name;
    const CodePage japanese(932);
    EXPECT_EQ(Parsed("[\x83\x5D] : [\x83\x5D\x83\x5B]\nk=1"), "{\x83\x5D: k=1;}\n\x83\x5D\x83\x5B")
        << "a trail byte is not a bracket";
    const CodePage korean(1361);
    EXPECT_EQ(Parsed("k\x88==v\x88;w;x"), "{: k\x88==v\x88;w;}") << "nor = or ;";
}

TEST(IniParser, RandomTextsAreReadByTheRule) {
    constexpr unsigned seed = 23;
    std::mt19937 random(seed);
    for (unsigned round = 0; round < 30'000; ++round) {
        std::string text = RandomText(random, 90, "[]]=;\": \t\r\n\nab\0\xFF\xFE\xE4"sv);
        if (round % 4 == 0)
            text += "\n[c]:[ b ]" + RandomText(random, 30, "\n=[]: b;\"");
        SCOPED_TRACE(testing::Message() << "seed 23, round " << round << ": " << text);
        // Two bytes tell that it is not UTF-16; without them it only must not do harm.
        const bool told = text.size() > 1 && text[0] * text[1] != 0 && text[0] != '\xFF';
        const std::string parsed = Parsed(text);
        ASSERT_EQ(parsed, told ? ParsedByRule(text) : parsed);
        std::erase(text, '\0');
        ASSERT_EQ(Parsed("\xFF\xFE" + Wide("k=" + text)), ParsedByRule("k=" + text));
    }
    for (const unsigned length : {63u, 64u, 511u, 512u, 600u, 8190u, 8191u}) {
        const std::string most(length, 'x'), blanks(length, ' ');
        for (const std::string& text :
             {most + "=1", most, "k=" + blanks + " " + most, "k=\"" + most + "\"", "k=1;" + most,
              "x" + blanks + "=1", "[" + most + "]:[" + most + "]\nk=1", ";x" + most + "\nk=1"})
            EXPECT_EQ(Parsed("a=1\n[B]\nb=2\n" + text), ParsedByRule("a=1\n[B]\nb=2\n" + text));
    }
}

TEST(IniParser, TenOrAHundredMegabytes) {
    static constexpr struct {
        const char* name;
        std::string_view start;
        std::string_view repeated;
        std::size_t megabytes;
        bool good;
    } rows[] = {
        {"taken for UTF-16, then for one endless key", "", "\0"sv, 100, false},
        {"one value", "k=", "v", 100, false},
        {"one comment", ";", "\"", 100, true},
        {"one header", "", "[", 100, true},
        {"blanks", "", " ", 10, true},
        {"lines", "", "\n", 10, true},
        {"headers", "", "[A]:[A]:[A]\n", 10, true},
        {"sections", "", "k=\"\"\n[A]:[B]\n", 10, true},
    };
    for (const auto& row : rows) {
        std::string bytes(row.start);
        while (bytes.size() < row.megabytes * 1'000'000)
            bytes += row.repeated;
        CIniFileReader document;
        EXPECT_EQ(Load(document, bytes), row.good) << row.name;
        document.Sort();
    }
}
