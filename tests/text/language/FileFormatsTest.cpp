#include "tests/support/TestFolder.h"
#include "utilities/text/ini/IniFileReader.h"
#include "utilities/text/language/LanguageStrings.h"
#include "utilities/text/tables/DelimitedTextFile.h"

#include <gtest/gtest.h>
#include <sstream>
#include <vector>
#include <windows.h>

namespace {

using Row = std::vector<std::string>;

/// One example of the document: a block with a name, and the table that shows what is read from it.
struct Example {
    std::string bytes;
    std::vector<Row> rows;
};

/// The cells of a table's line, without the quotes around code.
Row Cells(std::string line) {
    Row cells;
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

Example ReadExample(const std::string& name) {
    char program[MAX_PATH];
    GetModuleFileNameA(nullptr, program, sizeof program);
    const std::string folder = std::string(program).substr(0, std::string(program).rfind('\\') + 1);
    std::istringstream document(ReadBytes(folder + "file-formats.md"));
    Example example;
    std::string line;
    while (std::getline(document, line) &&
           (!line.starts_with("```") || !line.ends_with(" " + name)))
        ;
    while (std::getline(document, line) && line != "```")
        example.bytes += line + "\r\n";
    while (std::getline(document, line) && !line.starts_with("|---"))
        ;
    while (std::getline(document, line) && line.starts_with("|"))
        example.rows.push_back(Cells(line));
    EXPECT_GT(example.rows.size(), 3u) << name;
    return example;
}

} // namespace

TEST(FileFormats, ExamplesReadAsShown) {
    const TestFolder folder;
    const Example ini = ReadExample("settings.ini");
    CIniFileReader document;
    ASSERT_TRUE(document.Init(folder.Write("a.ini", ini.bytes).c_str(), false));
    for (const Row& row : ini.rows) {
        const CIniSection* section =
            row[0].empty() ? document.GetSection(0) : document.GetSection(row[0].c_str());
        ASSERT_NE(section, nullptr) << row[0];
        char value[64];
        section->GetString(row[1].c_str(), "", value, sizeof value);
        EXPECT_EQ(value, row[2]) << row[1];
    }

    const Example strings = ReadExample("english.ini");
    SetStringFile(folder.Write("english.ini", strings.bytes).data());
    for (const Row& row : strings.rows) {
        char text[64];
        MyLoadString(row[0].c_str(), text, sizeof text, nullptr, true);
        EXPECT_EQ(text, row[1]) << row[0];
    }

    const Example languages = ReadExample("Languages.csv");
    folder.Write("Languages.csv", languages.bytes);
    SetMasterLanguageFileFolder(std::string(folder.Path()).data());
    SetLanguageFolderLocation(std::string(folder.Path()).data());
    for (Row row : languages.rows) {
        char file[MAX_PATH];
        ASSERT_TRUE(GetStringFileFromLanguage(row[0].data(), StringFileColumn2, file, false));
        EXPECT_EQ(file, folder.File(row[1]));
        EXPECT_EQ(std::to_string(GetCodePageFromLanguage(row[0].data())), row[2]);
        EXPECT_EQ(std::to_string(GetCharsetFromLanguage(row[0].data())), row[3]);
    }

    const Example tracks = ReadExample("tracks.csv");
    CDelimitedTextFile table;
    ASSERT_TRUE(table.Open(folder.Write("a.csv", tracks.bytes).c_str(), ',', true, '"'));
    EXPECT_EQ(table.NumRecords(), 3u);
    for (const Row& row : tracks.rows) {
        const char* field = table.GetField(std::stoul(row[0]), row[1].c_str());
        EXPECT_EQ(field != nullptr ? field : "", row[2]) << row[1];
    }
}
