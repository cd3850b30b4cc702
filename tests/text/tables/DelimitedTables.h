#ifndef VTRUTILS_TESTS_TEXT_TABLES_DELIMITEDTABLES_H
#define VTRUTILS_TESTS_TEXT_TABLES_DELIMITEDTABLES_H

#include "tests/support/TestFolder.h"
#include "utilities/text/tables/DelimitedTextFile.h"

#include <string>
#include <vector>

using Line = std::vector<std::string>; ///< null as "~"

inline std::string Shown(const std::vector<Line>& lines) {
    std::string shown;
    for (const Line& line : lines) {
        for (const std::string& field : line)
            shown += field + "|";
        shown += "\n";
    }
    return shown;
}

/// The line of names, then the rows.
inline std::vector<Line> Content(const CDelimitedTextFile& table) {
    const auto text = [](const char* field) { return std::string(field != nullptr ? field : "~"); };
    std::vector<Line> lines(1 + table.NumRecords());
    for (unsigned c = 0; c < table.NumFields(); ++c) {
        lines[0].push_back(text(table.FieldName(c)));
        for (unsigned r = 0; r < table.NumRecords(); ++r)
            lines[r + 1].push_back(text(table.GetField(r, c)));
    }
    return lines;
}

inline bool OpenText(CDelimitedTextFile& table, const TestFolder& folder, std::string_view text,
                     bool header = true, char delimiter = ',', char quote = '"') {
    return table.Open(folder.Write("table.csv", text).c_str(), delimiter, header, quote);
}

#endif
