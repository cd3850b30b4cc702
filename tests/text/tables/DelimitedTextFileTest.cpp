#include "utilities/text/tables/DelimitedTextFile.h"

#include "tests/support/AllocationFault.h"
#include "tests/support/CodePage.h"
#include "tests/support/FreedMemory.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"

#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>
#include <vector>
#include <windows.h>

namespace {

using namespace std::string_view_literals;

using Line = std::vector<std::string>; ///< null as "~"

std::string Shown(const std::vector<Line>& lines) {
    std::string shown;
    for (const Line& line : lines) {
        for (const std::string& field : line)
            shown += field + "|";
        shown += "\n";
    }
    return shown;
}

/// The line of names, then the rows.
std::vector<Line> Content(const CDelimitedTextFile& table) {
    const auto text = [](const char* field) { return std::string(field != nullptr ? field : "~"); };
    std::vector<Line> lines(1 + table.NumRecords());
    for (unsigned c = 0; c < table.NumFields(); ++c) {
        lines[0].push_back(text(table.FieldName(c)));
        for (unsigned r = 0; r < table.NumRecords(); ++r)
            lines[r + 1].push_back(text(table.GetField(r, c)));
    }
    return lines;
}

bool OpenText(CDelimitedTextFile& table, const TestFolder& folder, std::string_view text,
              bool header = true, char delimiter = ',', char quote = '"') {
    return table.Open(folder.Write("table.csv", text).c_str(), delimiter, header, quote);
}

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

unsigned writes = 0;

/// The disk is full for a moment.
std::size_t WriteOnceInVain(const void*, std::size_t, std::size_t count, std::FILE*) {
    return writes++ == 0 ? 0 : count;
}

int Order(const std::string& a, const std::string& b) {
    return _stricmp(a == "~" ? "" : a.c_str(), b == "~" ? "" : b.c_str());
}

/// What a table holds, by the rules that its header gives.
struct Model {
    Line names;
    std::vector<Line> rows; ///< which need not all have as many fields
    int column = -1;        ///< that it is kept sorted on
    bool batch = false;
    bool pending = false;

    std::string At(std::size_t row, std::size_t field) const {
        return row < rows.size() && field < rows[row].size() ? rows[row][field] : "~";
    }

    void Sort() {
        pending = pending || (column >= 0 && batch);
        if (batch || column != 0)
            return;
        std::reverse(rows.begin(), rows.end());
        std::stable_sort(rows.begin(), rows.end(), [](const Line& a, const Line& b) {
            return Order(a.empty() ? "~" : a[0], b.empty() ? "~" : b[0]) < 0;
        });
    }

    void SetBatch(bool on) {
        batch = on;
        if (!on && pending)
            Sort();
        pending = pending && on;
    }

    bool Edit(unsigned row, unsigned field, const std::string& text) {
        if (row >= rows.size() || field >= rows[row].size() || rows[row][field] == text)
            return false;
        rows[row][field] = text;
        if (static_cast<int>(field) == column)
            Sort();
        return true;
    }

    void ReplaceAll(const std::string& find, const std::string& by) {
        for (Line& row : rows) {
            for (std::string& text : row) {
                for (std::size_t at = 0; (at = text.find(find, at)) != text.npos;
                     at += std::max<std::size_t>(by.size(), 1))
                    text.replace(at, find.size(), by);
                text = text.empty() ? "~" : text;
            }
        }
        Sort();
    }
};

/// A table whose hooks call anything, and the model to which the same is done.
class Walk : public CDelimitedTextFile {
public:
    void Step() {
        const std::string text = Text(), other = Text();
        const char* bare = text == "~" ? "" : text.c_str();
        const unsigned row = Below(model.rows.size() + 1), column = Below(3);
        const bool on = Below(2) == 0;
        switch (model.rows.size() > 30 ? 0 : Below(12)) {
        case 0:
            End(on);
            on ? Clear() : RemoveAllRows();
            break;
        case 1:
            Reopen(on);
            break;
        case 2:
        case 3:
            Add(model.column >= 0 ? 0 : static_cast<int>(model.rows.size()));
            break;
        case 4:
            model.names.push_back(other);
            for (Line& each : model.rows)
                each.push_back(text);
            AddNewCol(other.c_str(), bare);
            break;
        case 5:
            EXPECT_EQ(DeleteRow(row), row < model.rows.size());
            if (row < model.rows.size())
                model.rows.erase(model.rows.begin() + row);
            break;
        case 6:
        case 7:
            Replace(GetField(row, column), bare);
            break;
        case 8:
            model.column = on ? static_cast<int>(column) : -1;
            model.Sort();
            SetMaintainSorted(on, static_cast<int>(column));
            break;
        case 9:
            model.SetBatch(on);
            SetSortBatchMode(on);
            break;
        default:
            EXPECT_FALSE(EditField(row, column, GetField(row, column))) << "no change";
            EXPECT_EQ(EditField(row, column, bare), model.Edit(row, column, text));
        }
        Check();
    }

    int nested = 0; ///< steps within a hook

private:
    struct Reading {
        std::vector<Line> lines;
        bool header;
        std::size_t next = header ? 1 : 0;
        bool ended = false;

        void Skip(const Model& model) {
            while (header && next < lines.size() && lines[next].size() != model.names.size())
                ++next;
        }
    };

    void OnRowAdded(unsigned row) override {
        if (careless)
            return;
        Line line(model.names.size(), "~");
        if (Reading* own = opens.back(); own != nullptr) {
            own->Skip(model);
            ASSERT_LT(own->next, own->lines.size());
            line = own->lines[own->next++];
        }
        model.rows.insert(model.rows.begin() + row, line);
        Check();
        if (opens.size() < 4 && Below(2) == 0) {
            ++nested;
            Step();
        }
    }

    bool EditField(unsigned row, unsigned column, const char* text) override {
        const bool edited = CDelimitedTextFile::EditField(row, column, text);
        if (careless) {
            AddNewCol("", "aaaa");
            AddNewRow();
            Below(2) == 0 ? Clear() : static_cast<void>(DeleteRow(row));
        }
        return edited;
    }

    unsigned Below(std::size_t limit) { return static_cast<unsigned>(random() % limit); }
    /// As long as a sort key, shorter and longer; "~" for none.
    std::string Text() {
        static constexpr const char* starts[] = {"", "", "abcdefg", "ABCDEFGHabcdefg"};
        static constexpr const char* ends[] = {"",    "a", "A",  "b",    "ab",
                                               "aab", "h", "HI", "\xE4", "\xC4"};
        const std::string text = std::string(starts[Below(4)]) + ends[Below(std::size(ends))];
        return text.empty() ? "~" : text;
    }

    void End(bool alsoColumns) {
        model.rows.clear();
        if (!alsoColumns)
            return;
        model.names.clear();
        for (Reading* each : opens) {
            if (each != nullptr)
                each->ended = true;
        }
    }

    void Add(int index) {
        opens.push_back(nullptr);
        EXPECT_EQ(AddNewRow(), index);
        opens.pop_back();
    }

    void Reopen(bool header) {
        Reading own{std::vector<Line>(1 + Below(6)), header};
        std::string text;
        for (Line& line : own.lines) {
            // An empty field at the end would be none at the end of the text.
            line.resize(1 + Below(3), "a");
            line[0] = line.size() > 1 ? Text() : "a";
            for (const std::string& field : line)
                text += (field == "~" ? "" : field) + (&field == &line.back() ? "\n" : ",");
        }
        End(/*alsoColumns=*/true);
        model.names = own.lines[0];
        const bool batchWasOn = std::exchange(model.batch, true);
        opens.push_back(&own);
        const bool opened = Open(folder.Write("a.csv", text).c_str(), ',', header, '"');
        EXPECT_NE(opened, own.ended);
        opens.pop_back();
        own.Skip(model);
        EXPECT_TRUE(own.ended || own.next == own.lines.size()) << "lines that were not read";
        if (!batchWasOn)
            model.SetBatch(false);
        if (!own.ended)
            model.Sort();
    }

    void Replace(const char* find, const char* by) {
        careless = Below(4) == 0;
        if (find == nullptr || careless)
            find = "a";
        model.ReplaceAll(std::string(find), by);
        ReplaceAll(find, by);
        if (!careless)
            return;
        careless = false;
        End(/*alsoColumns=*/true);
        Clear();
    }

    void Check() {
        std::vector<Line> expected = model.rows;
        for (Line& line : expected)
            line.resize(model.names.size(), "~");
        expected.insert(expected.begin(), model.names);
        ASSERT_EQ(Shown(Content(*this)), Shown(expected));
        ASSERT_TRUE(Below(20) != 0 || Save(folder.File("saved.csv").c_str(), ',', true, '"'));
        for (const unsigned column : {0u, 1u, 2u, 3u})
            ASSERT_NO_FATAL_FAILURE(CheckFind(column, Text()));
    }

    void CheckFind(unsigned column, const std::string& value) {
        const bool known = column < model.names.size() && value != "~";
        std::vector<int> orders;
        for (std::size_t row = 0; known && row < model.rows.size(); ++row)
            orders.push_back(Order(model.At(row, column), value));
        const auto place = std::find(orders.begin(), orders.end(), 0);
        const int first = place == orders.end() ? -1 : static_cast<int>(place - orders.begin());
        const int found =
            FindRecordWithValue(static_cast<int>(column), value == "~" ? "" : value.c_str());
        const bool sorted = static_cast<int>(column) == model.column;
        const bool good =
            found >= 0 && sorted ? orders.at(static_cast<std::size_t>(found)) == 0 : found == first;
        ASSERT_TRUE(good || (found < 0 && sorted && !std::is_sorted(orders.begin(), orders.end())));
    }

    const TestFolder folder;
    std::mt19937 random{5};
    Model model;
    std::vector<Reading*> opens; ///< what is under way; null for `AddNewRow`
    bool careless = false;       ///< rows are moved while a text is replaced in them
};

} // namespace

TEST(DelimitedTextFile, ReadsByTheRuleAndReadsBackWhatItSaves) {
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

TEST(DelimitedTextFile, WhatDoesNotOpen) {
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

TEST(DelimitedTextFile, LackOfMemory) {
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

TEST(DelimitedTextFile, WritesWhatUsersExpect) {
    const TestFolder folder;
    CDelimitedTextFile table;
    ASSERT_TRUE(OpenText(table, folder, "Name,,Code\n\"say \"hi\"\",x,\n,y,2\n"));
    EXPECT_STREQ(table.GetField(1, "CODE"), "2");
    EXPECT_EQ(table.GetField(1, "none"), nullptr);
    const std::string file = folder.File("new\\deep\\saved.csv");
    ASSERT_TRUE(table.Save(file.c_str(), ',', true, '"'));
    EXPECT_EQ(ReadBytes(file), "\"Name\",\"Code\"\r\n\"say ?hi?\",\"x\",\r\n,\"y\",\"2\"\r\n");
    ASSERT_TRUE(table.Save(file.c_str(), ';', false, '\''));
    EXPECT_EQ(ReadBytes(file), "'say \"hi\"';'x';\r\n;'y';'2'\r\n");
    table.SetColumnSerializable(1, false);
    ASSERT_TRUE(table.Save(file.c_str(), ';', true, '\0'));
    EXPECT_EQ(ReadBytes(file), "Name;Code\r\nsay \"hi\";\r\n;2\r\n");
    EXPECT_EQ(table.FilePath(), folder.File("table.csv"));
    CDelimitedTextFile empty;
    EXPECT_FALSE(empty.Save("", ',', true, '"'));
    EXPECT_FALSE(empty.Save(folder.Path().c_str(), ',', true, '"'));
    EXPECT_STREQ(empty.FilePath(), "");
    ASSERT_TRUE(empty.Save(file.c_str(), ',', true, '"'));
    EXPECT_EQ(empty.FilePath(), file);

    // Larger than what is written at once.
    table.EditField(0, 0, std::string(100'000, 'x').c_str());
    const std::string before = ReadBytes(file);
    {
        const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "msvcrt.dll", "fwrite",
                                reinterpret_cast<void*>(&WriteOnceInVain));
        EXPECT_FALSE(table.Save(file.c_str(), ',', true, '"'));
        EXPECT_EQ(writes, 1u);
    }
    EXPECT_EQ(ReadBytes(file), before);
    EXPECT_TRUE(table.Save(file.c_str(), ',', true, '"') && ReadBytes(file) != before);
}

TEST(DelimitedTextFile, HooksMayCallAnything) {
    Walk table;
    const FreedMemory freed("vtrutils.dll");
    for (int round = 0; round < 6000 && !HasFailure(); ++round) {
        SCOPED_TRACE("seed 5, round " + std::to_string(round));
        table.Step();
    }
    EXPECT_GT(table.nested, 1000);
    EXPECT_EQ(freed.Misused(), 0u);
}

TEST(DelimitedTextFile, HooksThatNeverEndAreStopped) {
    struct Endless : CDelimitedTextFile {
        void OnRowAdded(unsigned) override {
            *path != '\0' ? Open(path, ',', true, '"') : AddNewRow();
        }
        const char* path = "";
    } table;
    EXPECT_EQ(table.AddNewRow(), 0);
    EXPECT_EQ(table.NumRecords(), 250u);
    const TestFolder folder;
    const std::string file = folder.Write("a.csv", "A\n1\n");
    table.path = file.c_str();
    EXPECT_FALSE(table.Open(table.path, ',', true, '"'));
    EXPECT_EQ(table.NumFields() + table.NumRecords(), 0u);
}
