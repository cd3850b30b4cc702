#include "tests/support/DocumentExamples.h"
#include "tests/support/TestFolder.h"
#include "utilities/text/ini/IniFileReader.h"
#include "utilities/text/language/LanguageStrings.h"
#include "utilities/text/tables/DelimitedTextFile.h"

#include <gtest/gtest.h>

namespace {

using Row = DocumentRow;

DocumentExample ReadExample(const std::string& name) {
    for (const DocumentExample& example : ExamplesOf("file-formats.md")) {
        if (example.name == name)
            return example;
    }
    ADD_FAILURE() << name;
    return {};
}

} // namespace

TEST(FileFormats, ExamplesReadAsShown) {
    const TestFolder folder;
    const DocumentExample ini = ReadExample("settings.ini");
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

    const DocumentExample strings = ReadExample("english.ini");
    SetStringFile(folder.Write("english.ini", strings.bytes).data());
    for (const Row& row : strings.rows) {
        char text[64];
        MyLoadString(row[0].c_str(), text, sizeof text, nullptr, true);
        EXPECT_EQ(text, row[1]) << row[0];
    }

    const DocumentExample languages = ReadExample("Languages.csv");
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

    const DocumentExample tracks = ReadExample("tracks.csv");
    CDelimitedTextFile table;
    ASSERT_TRUE(table.Open(folder.Write("a.csv", tracks.bytes).c_str(), ',', true, '"'));
    EXPECT_EQ(table.NumRecords(), 3u);
    for (const Row& row : tracks.rows) {
        const char* field = table.GetField(std::stoul(row[0]), row[1].c_str());
        EXPECT_EQ(field != nullptr ? field : "", row[2]) << row[1];
    }
}
