#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"
#include "tests/support/RandomText.h"
#include "tests/text/tables/DelimitedTables.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using namespace std::string_view_literals;

std::string FieldByRule(std::string raw, char quote) {
    if (quote != '\0' && !raw.empty() && raw.front() == quote)
        raw.erase(0, 1);
    if (quote != '\0' && !raw.empty() && raw.back() == quote)
        raw.pop_back();
    raw = raw.c_str();
    return raw.empty() ? "~" : raw;
}

/// Cuts the text into lines first and each line into fields then.
std::vector<Line> LinesByRule(const std::string& text, char delimiter, char quote) {
    std::vector<Line> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t stop = std::min(text.find_first_of("\r\n", at), text.size());
        std::vector<std::string> raw(1);
        bool quoted = false;
        for (const char c : text.substr(at, stop - at)) {
            quoted = quoted != (quote != '\0' && c == quote);
            if (c == delimiter && !quoted)
                raw.emplace_back();
            else
                raw.back() += c;
        }
        if (stop == text.size() && *raw.back().c_str() == '\0')
            raw.pop_back();
        if (raw.empty())
            break;
        for (std::string& field : raw)
            field = FieldByRule(field, quote);
        lines.push_back(raw);
        at = std::min(text.find_first_not_of("\r\n", stop), text.size());
    }
    return lines;
}

} // namespace

TEST(DelimitedText, ReadsByTheRuleAndReadsBackWhatItSaves) {
    constexpr unsigned seed = 41;
    std::mt19937 random(seed);
    const TestFolder folder;
    int readBack = 0;
    for (int round = 0; round < 400; ++round) {
        const bool header = random() % 2 == 0;
        const char quote = "\"'"[random() % 3];
        // The first two bytes tell that it is not UTF-16.
        std::string text = "ab" + RandomText(random, 80, "xYz,,,; \"'\x80\r\n\n\0"sv);
        std::vector<Line> expected = LinesByRule(text, ',', quote);
        if (header)
            std::erase_if(expected,
                          [&](const Line& line) { return line.size() != expected[0].size(); });
        else
            expected.insert(expected.begin(), expected[0]);
        if (text.find('\0') == text.npos && random() % 2 == 0) {
            std::string wide = random() % 2 == 0 ? "\xFF\xFE" : "";
            for (const char c : text)
                wide += {c, '\0'};
            text = wide;
        }
        CDelimitedTextFile table;
        ASSERT_TRUE(OpenText(table, folder, text, header, ',', quote));
        // Without a header rows may be longer or shorter than the first.
        for (Line& line : expected)
            line.resize(expected[0].size(), "~");
        SCOPED_TRACE("seed 41, round " + std::to_string(round) + ": " + text);
        ASSERT_EQ(Shown(Content(table)), Shown(expected));

        // A column without a name is not saved, an empty line not read, and a quote not doubled.
        const std::string shown = Shown(expected);
        if (Shown({expected[0]}).find('~') != shown.npos || expected[0].size() == 1 ||
            (quote != '\0' && shown.find(quote) != shown.npos))
            continue;
        ++readBack;
        ASSERT_TRUE(table.Save(table.FilePath(), ',', header, quote));
        ASSERT_TRUE(table.Open(folder.File("table.csv").c_str(), ',', header, quote));
        ASSERT_EQ(Shown(Content(table)), shown);
    }
    EXPECT_GT(readBack, 50);
}

TEST(DelimitedText, WhatDoesNotOpen) {
    const TestFolder folder;
    CDelimitedTextFile table;
    for (const std::string_view text : {""sv, "\xFF\xFE"sv, "\0\0\0\0"sv}) {
        ASSERT_TRUE(OpenText(table, folder, "A\n1"));
        EXPECT_FALSE(OpenText(table, folder, text));
        EXPECT_EQ(table.NumFields() + table.NumRecords(), 0u);
    }
    EXPECT_FALSE(table.Open(nullptr, ',', true, '"'));
    EXPECT_FALSE(table.Open((folder.Path() + std::string(260, 'x')).c_str(), ',', true, '"'));
    const CodePage japanese(932);
    ASSERT_TRUE(OpenText(table, folder, "\x83\x7C|B\n1|2\n", true, '|'));
    EXPECT_STREQ(table.FieldName(0), "\x83\x7C") << "a trail byte is no delimiter";
}

TEST(DelimitedText, LackOfMemory) {
    const TestFolder folder;
    CDelimitedTextFile whole;
    ASSERT_TRUE(OpenText(whole, folder, "A,B\n1,2\n3,4\n"));
    AllocationFault fault("vtrutils.dll");
    fault.ForEachAllocation([&](unsigned n) {
        CDelimitedTextFile table;
        const bool opened = table.Open(whole.FilePath(), ',', true, '"');
        const bool edited = table.EditField(0, 1, "longer text");
        const bool added = table.AddNewCol("C", "x") >= 0;
        fault.FailAt(0);
        EXPECT_EQ(table.AddNewCol("D", "y"), (opened ? 2 : 0) + (added ? 1 : 0)) << n;
        const std::string names = added ? "A|B|C|D|\n" : "A|B|D|\n";
        const std::string more = added ? "|x|y|\n" : "|y|\n";
        EXPECT_TRUE(!opened || Shown(Content(table)) == names + "1|" +
                                                            (edited ? "longer text" : "2") + more +
                                                            "3|4" + more)
            << n;
    });
}
