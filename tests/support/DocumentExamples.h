#ifndef VTRUTILS_TESTS_SUPPORT_DOCUMENTEXAMPLES_H
#define VTRUTILS_TESTS_SUPPORT_DOCUMENTEXAMPLES_H

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>
#include <windows.h>

using DocumentRow = std::vector<std::string>;

/// One example of a document: a block with a name, and the table that shows what comes of it.
struct DocumentExample {
    std::string name;
    std::string bytes;
    std::vector<DocumentRow> rows;
};

/// The cells of a table's line, without the quotes around code; signs stand for breaks and tabs.
inline DocumentRow CellsOf(std::string line) {
    DocumentRow cells;
    line.erase(0, 2);
    for (std::size_t bar; (bar = line.find(" |")) != line.npos; line.erase(0, bar + 3)) {
        std::string cell = line.substr(0, bar);
        if (cell.front() == '`')
            cell = cell.substr(1, cell.size() - 2);
        for (const auto& [sign, meant] : {std::pair("⏎", "\n"), {"⇥", "\t"}}) {
            for (std::size_t at; (at = cell.find(sign)) != cell.npos;)
                cell.replace(at, std::string(sign).size(), meant);
        }
        cells.push_back(cell);
    }
    return cells;
}

/// Those of a document that the build copied beside the test program.
inline std::vector<DocumentExample> ExamplesOf(const std::string& file) {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    const std::string folder = std::string(program).substr(0, std::string(program).rfind('\\') + 1);
    std::istringstream document(ReadBytes(folder + file));
    std::vector<DocumentExample> examples;
    for (std::string line; std::getline(document, line);) {
        if (!line.starts_with("```") || line.find(' ') == line.npos)
            continue;
        DocumentExample example{line.substr(line.find(' ') + 1), "", {}};
        while (std::getline(document, line) && line != "```")
            example.bytes += line + "\r\n";
        while (std::getline(document, line) && !line.starts_with("|---"))
            ;
        while (std::getline(document, line) && line.starts_with("|"))
            example.rows.push_back(CellsOf(line));
        EXPECT_GT(example.rows.size(), 2u) << example.name;
        examples.push_back(example);
    }
    return examples;
}

#endif
