#include "tests/support/FreedMemory.h"
#include "tests/text/tables/DelimitedTables.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

const std::string texts[] = {"a",
                             "A",
                             "b",
                             "ab",
                             "aab",
                             "~",
                             "abcdefgh",
                             "abcdefgH",
                             "abcdefghI",
                             "\xE4",
                             "\xC4",
                             "abcdefg\xE4",
                             "abcdefgh\xE4",
                             "abcdefghabcdefgh",
                             "ABCDEFGHABCDEFGHa"};

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

    int Find(unsigned field, const std::string& value) const {
        if (field >= names.size() || value == "~" || rows.empty())
            return -1;
        const auto order = [&](std::size_t row) { return Order(At(row, field), value); };
        std::size_t probe = 0;
        if (static_cast<int>(field) != column) {
            while (probe < rows.size() && order(probe) != 0)
                ++probe;
            return probe < rows.size() ? static_cast<int>(probe) : -1;
        }
        std::size_t low = 0, high = rows.size() - 1;
        for (probe = rows.size() / 2; order(probe) != 0;) {
            if (low >= high)
                return -1;
            (order(probe) < 0 ? low : high) = probe;
            const std::size_t last = probe;
            probe = (low + high) / 2;
            if (probe == last && ++low > high)
                return -1;
            probe += probe == last ? 1 : 0;
        }
        return static_cast<int>(probe);
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
    std::string Text() { return texts[Below(std::size(texts))]; }

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
        for (const unsigned column : {0u, 1u, 2u, 3u}) {
            const std::string value = Text();
            ASSERT_EQ(
                FindRecordWithValue(static_cast<int>(column), value == "~" ? "" : value.c_str()),
                model.Find(column, value));
        }
    }

    const TestFolder folder;
    std::mt19937 random{5};
    Model model;
    std::vector<Reading*> opens; ///< what is under way; null for `AddNewRow`
    bool careless = false;       ///< rows are moved while a text is replaced in them
};

} // namespace

TEST(DelimitedTextWalk, HooksMayCallAnything) {
    Walk table;
    const FreedMemory freed("vtrutils.dll");
    for (int round = 0; round < 6000 && !HasFailure(); ++round) {
        SCOPED_TRACE("seed 5, round " + std::to_string(round));
        table.Step();
    }
    EXPECT_GT(table.nested, 1000);
    EXPECT_EQ(freed.Misused(), 0u);
}

TEST(DelimitedTextWalk, HooksThatNeverEndAreStopped) {
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
