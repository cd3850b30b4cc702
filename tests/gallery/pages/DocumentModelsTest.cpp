#include "gallery/pages/ini/IniLosses.h"
#include "gallery/pages/ini/IniModel.h"
#include "gallery/pages/table/TableLosses.h"
#include "gallery/pages/table/TableModel.h"
#include "gallery/text/Text.h"
#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

using gallery::Widen;

std::string Shown(const gallery::IniModel& model) {
    std::string text = model.Sorted() ? "sorted" : "";
    for (int section = 0; section < model.Sections(); ++section) {
        std::wstring line = L"[" + model.SectionName(section) + L"]";
        for (int pair = 0; pair < model.Pairs(section); ++pair)
            line += model.Key({section, pair}) + L"=" + model.Value({section, pair}) + L";";
        std::string narrow;
        gallery::Narrow(line, narrow);
        text += narrow;
    }
    return text;
}

std::string Shown(const gallery::TableModel& model) {
    std::string text = model.Sorted() ? "sorted" : "";
    for (int row = 0; row < model.Rows(); ++row) {
        for (int column = 0; column < model.Columns(); ++column) {
            std::string narrow;
            gallery::Narrow(model.Field({row, column}), narrow);
            text += narrow + "|";
        }
    }
    return text;
}

const char* ChangeSomething(gallery::IniModel& model, std::mt19937& random) {
    const int section = static_cast<int>(random() % 4);
    const int pair = static_cast<int>(random() % 4);
    const std::wstring text = Widen(RandomText(random, 2, "abAB").c_str());
    switch (random() % 9) {
    case 0:
        return model.AddSection(text);
    case 1:
        return model.DeleteSection(section);
    case 2:
        return model.DeletePair({section, pair});
    case 3:
        return random() % 4 == 0 ? model.Sort() : "";
    case 4:
    case 5:
        return model.SetValue({section, pair}, text);
    default:
        return model.AddPair(section, text);
    }
}

const char* ChangeSomething(gallery::TableModel& model, std::mt19937& random) {
    const gallery::TablePlace place{static_cast<int>(random() % 5), static_cast<int>(random() % 2)};
    const std::wstring text = Widen(RandomText(random, 2, "abAB1").c_str());
    int fields = 0;
    switch (random() % 9) {
    case 0:
    case 1:
        return model.AddRow();
    case 2:
        return model.DeleteRow(place.row);
    case 3:
        return model.KeepSorted(!model.Sorted(), place);
    case 4:
        return model.Sort(place.column, random() % 2 == 0, place);
    case 5:
        return model.ReplaceAll(text, L"ba", fields, place);
    default:
        return model.SetField(place, text);
    }
}

/// What is shown after each change comes back, step by step, in both directions.
template <class Model>
void ExpectUndoAndRedo(const std::string& file, std::mt19937& random) {
    Model model;
    ASSERT_TRUE(model.Load(Widen(file.c_str())));
    gallery::DocumentHistory& history = model.History();
    std::vector<std::string> states{Shown(model)};
    for (int i = 0; i < 60; ++i) {
        if (random() % 4 == 0 && history.CanUndo()) {
            history.Undo();
            states.pop_back();
            ASSERT_EQ(states.back(), Shown(model)) << i;
            continue;
        }
        const bool before = history.Changed();
        ChangeSomething(model, random);
        if (Shown(model) != states.back())
            states.push_back(Shown(model));
        else
            ASSERT_EQ(before, history.Changed()) << "what cannot be seen is no change";
    }
    for (std::size_t i = states.size() - 1; i > 0; --i) {
        ASSERT_EQ(states[i], Shown(model)) << i;
        history.Undo();
    }
    EXPECT_EQ(states[0], Shown(model));
    EXPECT_FALSE(history.CanUndo() || history.Changed());
    for (std::size_t i = 1; i < states.size(); ++i) {
        history.Redo();
        ASSERT_EQ(states[i], Shown(model)) << i;
    }
    // Saved is a state, not a place in the history.
    const std::wstring saved = model.Path() + L".saved";
    ASSERT_TRUE(model.SaveAs(saved));
    EXPECT_FALSE(history.Changed());
    if (history.CanUndo()) {
        while (history.CanUndo())
            history.Undo();
        EXPECT_TRUE(history.Changed());
    }
}

TEST(DocumentModels, TakeBackAndMakeAgainWhatWasDone) {
    const TestFolder folder;
    const std::string ini = folder.Write(
        "a.ini", "x = 1\r\n[b]\r\nb = 2\r\na = 1\r\nB = 3\r\n[a]\r\na = 1\r\n[B]\r\nx = y\r\n");
    const std::string csv = folder.Write("a.csv", "A,B\r\nb,1\r\na,2\r\nB,3\r\nb,1\r\n,\r\n");
    constexpr unsigned seed = 4711;
    std::mt19937 random(seed);
    for (int round = 0; round < 150 && !testing::Test::HasFatalFailure(); ++round) {
        SCOPED_TRACE(round);
        ExpectUndoAndRedo<gallery::IniModel>(ini, random);
        ExpectUndoAndRedo<gallery::TableModel>(csv, random);
    }
}

/// A document of which nothing is said to be lost reads back from its saved file as it was.
TEST(DocumentModels, SayWhatASavedIniDocumentLacks) {
    const TestFolder folder;
    constexpr unsigned seed = 815;
    std::mt19937 random(seed);
    int whole = 0;
    for (int round = 0; round < 1000; ++round) {
        const std::string text =
            "[s]\r\na=1\r\n" + RandomText(random, 14, "ab=\r\n\r\n[]; \t:\"") + "\r\n";
        const std::string file = folder.Write("a.ini", text);
        gallery::IniModel model;
        if (!model.Load(Widen(file.c_str())))
            continue;
        const gallery::Losses losses = model.WouldLose();
        const std::string before = Shown(model);
        ASSERT_TRUE(model.Save());
        gallery::IniModel after;
        ASSERT_TRUE(after.Load(Widen(file.c_str())));
        whole += losses.empty() ? 1 : 0;
        EXPECT_TRUE(before == Shown(after) || !losses.empty()) << text;
    }
    EXPECT_GT(whole, 100);
}

TEST(DocumentModels, CountTheLinesThatATableLeavesOut) {
    const TestFolder folder;
    constexpr unsigned seed = 99;
    std::mt19937 random(seed);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = "a;b" + RandomText(random, 16, "ab;;\r\n\n\"");
        const std::string file = folder.Write("a.csv", text);
        CDelimitedTextFile table;
        if (!table.Open(file.c_str(), ';', /*firstLineIsHeader=*/true, '"'))
            continue;
        int lines = 0;
        for (std::size_t at = text.find_first_not_of("\r\n"); at != std::string::npos; ++lines)
            at = text.find_first_not_of("\r\n", text.find_first_of("\r\n", at));
        EXPECT_EQ(lines - 1 - static_cast<int>(table.NumRecords()),
                  gallery::LinesLeftOut(text, ';'))
            << text;
    }
}

TEST(FileFacts, TellEncodingContentsAndDelimiter) {
    using gallery::Contents;
    using gallery::Encoding;
    const TestFolder folder;
    const struct {
        const char* name;
        std::string bytes;
        Encoding encoding;
        Contents contents;
        char delimiter;
    } rows[] = {
        {"empty.csv", "", Encoding::ascii, Contents::table, ','},
        {"pairs.txt", "; x\n[a]\nb = c, d\n", Encoding::ascii, Contents::ini, ','},
        {"comments.ini", "; only\n", Encoding::ascii, Contents::ini, ','},
        {"table.ini", "a,b\r\n1,2\r\n", Encoding::ascii, Contents::table, ','},
        {"tabs.csv", "a\tb,c\n1\t2\n3\t4,5\n", Encoding::ascii, Contents::table, '\t'},
        {"semicolons.csv", "a;b\n\"1,2\";2,5\n\"3\";4\n", Encoding::ascii, Contents::table, ';'},
        {"tree.csv", " <a>1,2</a>", Encoding::ascii, Contents::xml, ','},
        {"words.txt", "plain words\n", Encoding::ascii, Contents::none, ','},
        {"marked.ini", "\xEF\xBB\xBF[a]\nb=c\n", Encoding::utf8, Contents::ini, ','},
        {"utf8.csv", "a,b\n\xF0\x9F\x8E\xB5,\xC3\xA4\n", Encoding::utf8, Contents::table, ','},
        {"cut.csv", "a,b\n1,\xC3", Encoding::codePage, Contents::table, ','},
        {"latin.csv", "a,b\n\xE4\xC3\xA4,2\n", Encoding::codePage, Contents::table, ','},
        {"wide.ini", std::string("\xFF\xFE[\0a\0]\0\n\0b\0=\0\x10\x04", 16), Encoding::utf16,
         Contents::ini, ','},
        {"zero.ini", std::string("[a]\nb=\0c\n", 10), Encoding::binary, Contents::ini, ','},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::wstring file = Widen(folder.Write(row.name, row.bytes).c_str());
        const gallery::FileFacts facts = gallery::FactsOfFile(file);
        EXPECT_TRUE(facts.readable);
        EXPECT_EQ(row.encoding, facts.encoding);
        EXPECT_EQ(row.contents, facts.contents);
        EXPECT_EQ(row.contents, gallery::ContentsOfFile(file));
        EXPECT_EQ(row.delimiter, facts.delimiter);
        EXPECT_EQ(row.encoding == Encoding::utf16 ? 1 : 0, facts.lettersReduced);
    }
    EXPECT_FALSE(gallery::FactsOfFile(Widen(folder.File("missing.ini").c_str())).readable);
}

} // namespace
