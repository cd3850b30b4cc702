#include "utilities/text/tables/DelimitedTextFile.h"

#include "tests/support/CodePage.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>
#include <malloc.h>
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

int Order(const std::string& a, const std::string& b) {
    return _stricmp(a == "~" ? "" : a.c_str(), b == "~" ? "" : b.c_str());
}

/// What a table holds, by the rules that its header gives.
struct Model {
    Line names;
    std::vector<Line> rows;
    int column = -1; ///< that it is kept sorted on
    bool batch = false;
    bool pending = false;

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
        if (row >= rows.size() || field >= names.size() || rows[row][field] == text)
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

/// A table and its model, to which the same is done.
class Walk {
public:
    void Step() {
        const std::string text = Text(), other = Text();
        const char* bare = text == "~" ? "" : text.c_str();
        const unsigned row = Below(model.rows.size() + 1), column = Below(3);
        const bool on = Below(2) == 0;
        switch (model.rows.size() > 30 ? 0 : Below(20)) {
        case 0:
            model.rows.clear();
            if (on)
                model.names.clear();
            on ? table.Clear() : table.RemoveAllRows();
            break;
        case 1:
            Reopen();
            break;
        case 2:
        case 3:
        case 10:
        case 11:
            model.rows.insert(model.column >= 0 ? model.rows.begin() : model.rows.end(),
                              Line(model.names.size(), "~"));
            EXPECT_EQ(table.AddNewRow(), model.column >= 0 ? 0 : std::ssize(model.rows) - 1);
            break;
        case 4:
            model.names.push_back(other);
            for (Line& each : model.rows)
                each.push_back(text);
            EXPECT_EQ(table.AddNewCol(other.c_str(), bare), std::ssize(model.names) - 1);
            break;
        case 5:
            EXPECT_EQ(table.DeleteRow(row), row < model.rows.size());
            if (row < model.rows.size())
                model.rows.erase(std::next(model.rows.begin(), static_cast<int>(row)));
            break;
        case 6:
        case 7:
            model.ReplaceAll("a", text == "~" ? "" : text);
            table.ReplaceAll("a", bare);
            break;
        case 8:
            // Most often on the first column, the only one that sorts.
            model.column = row % 4 == 0 ? static_cast<int>(column) : row % 4 == 1 ? -1 : 0;
            model.Sort();
            table.SetMaintainSorted(model.column >= 0, model.column);
            break;
        case 9:
        case 12:
        case 13:
            model.SetBatch(on);
            table.SetSortBatchMode(on);
            break;
        default:
            EXPECT_EQ(table.EditField(row, column, bare), model.Edit(row, column, text));
            EXPECT_FALSE(table.EditField(row, column, table.GetField(row, column))) << "no change";
        }
        Check();
    }

private:
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(random() % limit); }
    /// As long as a sort key, shorter and longer; "~" for none.
    std::string Text() {
        static constexpr const char* starts[] = {"", "", "abcdefg", "ABCDEFGHabcdefg"};
        static constexpr const char* ends[] = {"",    "a", "A",  "b",    "ab",
                                               "aab", "h", "HI", "\xE4", "\xC4"};
        const std::string text = std::string(starts[Below(4)]) + ends[Below(std::size(ends))];
        return text.empty() ? "~" : text;
    }

    void Reopen() {
        model.names = {"A", "B"};
        model.rows.clear();
        std::string text = "A,B\n";
        for (unsigned i = Below(6); i > 0; --i) {
            model.rows.push_back({Text(), "b"});
            text += (model.rows.back()[0] == "~" ? "" : model.rows.back()[0]) + ",b\n";
        }
        model.Sort();
        EXPECT_TRUE(OpenText(table, folder, text));
    }

    void Check() {
        std::vector<Line> expected = model.rows;
        expected.insert(expected.begin(), model.names);
        ASSERT_EQ(Shown(Content(table)), Shown(expected));
        for (const unsigned column : {0u, 1u, 2u, 3u})
            ASSERT_NO_FATAL_FAILURE(CheckFind(column, Text()));
    }

    void CheckFind(unsigned column, const std::string& value) {
        const bool known = column < model.names.size() && value != "~";
        std::vector<int> orders;
        for (std::size_t row = 0; known && row < model.rows.size(); ++row)
            orders.push_back(Order(model.rows[row][column], value));
        const auto place = std::find(orders.begin(), orders.end(), 0);
        const int first = place == orders.end() ? -1 : static_cast<int>(place - orders.begin());
        const int found =
            table.FindRecordWithValue(static_cast<int>(column), value == "~" ? "" : value.c_str());
        const bool sorted = static_cast<int>(column) == model.column;
        const bool good =
            found >= 0 && sorted ? orders.at(static_cast<std::size_t>(found)) == 0 : found == first;
        ASSERT_TRUE(good || (found < 0 && sorted && !std::is_sorted(orders.begin(), orders.end())));
    }

    const TestFolder folder;
    std::mt19937 random{5};
    Model model;
    CDelimitedTextFile table;
};

constexpr char garbage = '\x16';
std::vector<void*> freed;

void KeepFreed(void* block) {
    if (block != nullptr)
        freed.push_back(std::memset(block, garbage, _msize(block)));
}

void* MoveAlways(void* block, std::size_t size) {
    void* moved = std::malloc(size);
    if (block != nullptr && moved != nullptr) {
        std::memcpy(moved, block, std::min(size, _msize(block)));
        KeepFreed(block);
    }
    return moved;
}

/// A table whose hooks call anything.
struct Wild : CDelimitedTextFile {
    void OnRowAdded(unsigned) override { Act(); }
    bool EditField(unsigned row, unsigned column, const char* text) override {
        const bool edited = CDelimitedTextFile::EditField(row, column, text);
        Act();
        return edited;
    }

    void Act() {
        if (budget == 0)
            return;
        --budget;
        using Kind = void (*)(Wild&, unsigned);
        static constexpr Kind acts[] = {
            [](Wild& table, unsigned) { table.Clear(); },
            [](Wild& table, unsigned) { table.RemoveAllRows(); },
            [](Wild& table, unsigned) { table.Open(table.file.c_str(), ',', true, '"'); },
            [](Wild& table, unsigned) { table.AddNewRow(); },
            [](Wild& table, unsigned) { table.AddNewCol("aa", "aaaa"); },
            [](Wild& table, unsigned any) { table.DeleteRow(any % 4); },
            [](Wild& table, unsigned) { table.ReplaceAll("a", "bab"); },
            [](Wild& table, unsigned any) { table.EditField(any % 4, any % 3, "a long text"); },
            [](Wild& table, unsigned any) { table.SetMaintainSorted(any % 2 == 0, 0); },
            [](Wild& table, unsigned any) { table.SetSortBatchMode(any % 2 == 0); },
        };
        acts[random() % std::size(acts)](*this, static_cast<unsigned>(random()));
        ASSERT_EQ(Shown(Content(*this)).find(garbage), std::string::npos) << "read what was freed";
    }

    const TestFolder folder;
    const std::string file = folder.Write("a.csv", "A,B\na,b\nc,a\nb,b\n");
    std::mt19937 random{5};
    int budget = 0;
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
}

TEST(DelimitedTextFile, IsEditedAsTheRulesSay) {
    Walk walk;
    for (int round = 0; round < 6000 && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("seed 5, round " + std::to_string(round));
        walk.Step();
    }
}

TEST(DelimitedTextFile, HooksMayCallAnything) {
    Wild table;
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    // What is freed is overwritten and kept, so that reading it gives garbage.
    const ImportPatch free(library, "msvcrt.dll", "free", reinterpret_cast<void*>(&KeepFreed));
    const ImportPatch move(library, "msvcrt.dll", "realloc", reinterpret_cast<void*>(&MoveAlways));
    for (int round = 0; round < 1000 && !testing::Test::HasFailure(); ++round) {
        table.budget = 12;
        table.Act();
    }
    for (void* block : std::exchange(freed, {}))
        std::free(block);
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
