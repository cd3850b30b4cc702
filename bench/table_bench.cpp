// Delimited text tables: loading, saving and finding rows.

#include "bench/peers/LibcsvTable.h"
#include "bench/support/Comparison.h"
#include "utilities/text/tables/DelimitedTextFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <optional>
#include <random>

namespace {

using bench::TableRows;

constexpr unsigned columnCount = 10;

class OurTable {
public:
    static constexpr const char* name = bench::ours;

    bool Load(const char* path) { return table.Open(path, ',', /*firstLineIsHeader=*/true, '"'); }
    bool Save(const char* path) { return table.Save(path, ',', /*writeHeader=*/true, '"'); }

    CDelimitedTextFile table;
};

/// What anyone would write in an hour: line by line, character by character.
class LineSplitter {
public:
    static constexpr const char* name = "getline and split";

    bool Load(const char* path) {
        std::ifstream stream(path);
        std::string line;
        while (std::getline(stream, line)) {
            std::vector<std::string> row(1);
            bool quoted = false;
            for (const char c : line) {
                if (c == '"')
                    quoted = !quoted;
                else if (c == ',' && !quoted)
                    row.emplace_back();
                else
                    row.back() += c;
            }
            rows.push_back(std::move(row));
        }
        return !rows.empty();
    }

    bool Save(const char* path) const {
        std::ofstream stream(path, std::ios::binary);
        for (const std::vector<std::string>& row : rows) {
            for (std::size_t i = 0; i < row.size(); ++i) {
                stream << (i > 0 ? "," : "");
                if (!row[i].empty())
                    stream << '"' << row[i] << '"';
            }
            stream << "\r\n";
        }
        return stream.good();
    }

    TableRows rows;
};

/// A row is a track: names, some with a comma, numbers, and fields that are often empty.
TableRows MakeRows(unsigned count) {
    static constexpr const char* words[] = {
        "Evening", "Harbour, at dawn", "Lights", "Snow", "Northern line",
        "Glass",   "Two hands",        "River"};
    std::mt19937 random(20240301);
    const auto word = [&random] { return std::string(words[random() % std::size(words)]); };
    TableRows rows = {
        {"Id", "Title", "Artist", "Album", "Year", "Length", "Rate", "Genre", "Note", "Path"}};
    for (unsigned i = 0; i < count; ++i)
        rows.push_back({"T" + std::to_string(1'000'000 + i), word() + " " + word(), word(), word(),
                        std::to_string(1960 + random() % 60), std::to_string(random() % 600),
                        "44100", random() % 2 == 0 ? "Dance" : "", random() % 4 == 0 ? word() : "",
                        "C:\\Music\\" + std::to_string(random() % 10'000) + ".wav"});
    std::shuffle(rows.begin() + 1, rows.end(), random);
    return rows;
}

std::string Text(const TableRows& rows) {
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        for (const std::string& field : row)
            text += (field.find(',') == field.npos ? field : '"' + field + '"') + ",";
        text.replace(text.size() - 1, 1, "\r\n");
    }
    return text;
}

struct Subject {
    Subject(const bench::MeasuringFolder& folder, unsigned count, const char* sizeName)
        : size(sizeName), rows(MakeRows(count)), bytes(Text(rows).size()),
          path(folder.Write(std::to_string(count) + ".csv", Text(rows))),
          savedPath(folder.File(std::to_string(count) + "-saved.csv")) {
        for (std::size_t i = 1; i < rows.size(); ++i)
            sortedIds.push_back(rows[i][0]);
        std::sort(sortedIds.begin(), sortedIds.end());
    }

    std::string size;
    TableRows rows;
    std::size_t bytes;
    std::string path;
    std::string savedPath;
    std::vector<std::string> sortedIds;
    OurTable unsorted;
    OurTable sorted;
    bench::LibcsvTable libcsv;
    LineSplitter splitter;
};

// A contender that does other work than ours is not a peer: before anything is measured, all must
// load all rows, and write what ours loads again.

TableRows RowsOf(const OurTable& loaded) {
    const CDelimitedTextFile& table = loaded.table;
    TableRows rows(1);
    for (unsigned c = 0; c < table.NumFields(); ++c)
        rows[0].push_back(table.FieldName(c));
    for (unsigned r = 0; r < table.NumRecords(); ++r) {
        rows.emplace_back();
        for (unsigned c = 0; c < columnCount; ++c)
            rows.back().push_back(table.GetField(r, c) != nullptr ? table.GetField(r, c) : "");
    }
    return rows;
}

template <class Peer>
TableRows RowsOf(const Peer& peer) {
    return peer.rows;
}

template <class Table>
bool LoadsAndSaves(const Subject& subject, Table& table) {
    OurTable saved;
    const bool good = table.Load(subject.path.c_str()) && RowsOf(table) == subject.rows &&
                      table.Save(subject.savedPath.c_str()) &&
                      saved.Load(subject.savedPath.c_str()) && RowsOf(saved) == subject.rows;
    if (!good)
        std::fprintf(stderr, "%s, %s: other rows\n", subject.size.c_str(), Table::name);
    return good;
}

/// Time of loading into a new table; freeing it is left out.
template <class Table>
void MeasureLoad(const Subject& subject, const char* work) {
    bench::Measure(work, subject.size, Table::name, [&subject](benchmark::State& state) {
        for (auto _ : state) {
            state.PauseTiming();
            auto table = std::make_unique<Table>();
            state.ResumeTiming();
            if (!table->Load(subject.path.c_str()))
                return state.SkipWithError("cannot be loaded");
            state.PauseTiming();
            table.reset();
            state.ResumeTiming();
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(subject.bytes));
    });
}

template <class Table>
void MeasureSave(const Subject& subject, Table& table, const char* work) {
    bench::Measure(work, subject.size, Table::name, [&](benchmark::State& state) {
        for (auto _ : state) {
            if (!table.Save(subject.savedPath.c_str()))
                return state.SkipWithError("cannot be saved");
        }
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(subject.bytes));
    });
}

/// Time of finding one row; `find` returns its index, or -1.
template <class Find>
void MeasureFind(const Subject& subject, const char* work, const char* contender, Find find) {
    bench::Measure(work, subject.size, contender, [&subject, find](benchmark::State& state) {
        std::size_t next = 0;
        for (auto _ : state) {
            next = (next + 7919) % subject.sortedIds.size();
            if (find(subject.sortedIds[next].c_str()) < 0)
                return state.SkipWithError("finds nothing");
        }
    });
}

void MeasureFinding(Subject& subject) {
    MeasureFind(subject, "table find, sorted", bench::ours, [&subject](const char* id) {
        return subject.sorted.table.FindRecordWithValue(0, id);
    });
    MeasureFind(subject, "table find, sorted", "lower_bound, _stricmp", [&](const char* id) {
        const auto found = std::lower_bound(
            subject.sortedIds.begin(), subject.sortedIds.end(), id,
            [](const std::string& a, const char* b) { return _stricmp(a.c_str(), b) < 0; });
        return _stricmp(found->c_str(), id) == 0
                   ? static_cast<int>(found - subject.sortedIds.begin())
                   : -1;
    });
    MeasureFind(subject, "table find, unsorted", bench::ours, [&subject](const char* id) {
        return subject.unsorted.table.FindRecordWithValue(0, id);
    });
    MeasureFind(subject, "table find, unsorted", "find_if, _stricmp", [&](const char* id) {
        const auto found =
            std::find_if(subject.rows.begin() + 1, subject.rows.end(),
                         [id](const auto& row) { return _stricmp(row[0].c_str(), id) == 0; });
        return static_cast<int>(found - subject.rows.begin());
    });
}

/// Time of changing one name in the column that the table is kept sorted on.
void MeasureEdit(Subject& subject) {
    bench::Measure("table edit, sorted", subject.size, bench::ours, [&](benchmark::State& state) {
        CDelimitedTextFile& table = subject.sorted.table;
        const unsigned row = table.NumRecords() / 2;
        const std::string id = table.GetField(row, 0u);
        bool longer = false;
        for (auto _ : state) {
            longer = !longer;
            if (!table.EditField(row, 0, (longer ? id + "x" : id).c_str()))
                return state.SkipWithError("cannot be edited");
        }
        if (longer)
            table.EditField(row, 0, id.c_str());
    });
}

} // namespace

int main(int argc, char** argv) {
    static constexpr char load[] = "table load, 10 columns";
    static constexpr char save[] = "table save, 10 columns";
    const bench::MeasuringFolder folder;
    std::optional<Subject> subjects[2];
    subjects[0].emplace(folder, 10'000, "10,000");
    subjects[1].emplace(folder, 100'000, "100,000");
    for (std::optional<Subject>& each : subjects) {
        Subject& subject = *each;
        if (!LoadsAndSaves(subject, subject.unsorted) || !LoadsAndSaves(subject, subject.libcsv) ||
            !LoadsAndSaves(subject, subject.splitter) || !subject.sorted.Load(subject.path.c_str()))
            return 1;
        subject.sorted.table.SetMaintainSorted(true, 0);
        MeasureLoad<OurTable>(subject, load);
        MeasureLoad<bench::LibcsvTable>(subject, load);
        MeasureLoad<LineSplitter>(subject, load);
        MeasureSave(subject, subject.unsorted, save);
        MeasureSave(subject, subject.libcsv, save);
        MeasureSave(subject, subject.splitter, save);
        MeasureFinding(subject);
        MeasureEdit(subject);
    }
    bench::ToReach(load, bench::LibcsvTable::name, 1.5);
    bench::GrowthToReach(load, 15);
    bench::GrowthToReach(save, 15);
    bench::ToReach("table find, sorted", "lower_bound, _stricmp", bench::asFast);
    bench::GrowthToReach("table edit, sorted", 15);
    return bench::Run(argc, argv);
}
