#include "tests/text/tables/DelimitedTables.h"

#include <gtest/gtest.h>

namespace {

struct WatchedTable : CDelimitedTextFile {
    bool EditField(unsigned row, unsigned column, const char* text) override {
        log += "edit " + std::to_string(row) + "; ";
        return CDelimitedTextFile::EditField(row, column, text);
    }
    void OnRowAdded(unsigned row) override { log += "row " + std::to_string(row) + "; "; }

    std::string log;
};

std::string FirstColumn(const CDelimitedTextFile& table) {
    std::string shown;
    for (unsigned r = 0; r < table.NumRecords(); ++r)
        shown +=
            (table.GetField(r, 0u) != nullptr ? table.GetField(r, 0u) : "~") + std::string(" ");
    return shown;
}

} // namespace

TEST(DelimitedTextEdit, FieldsRowsAndColumns) {
    const TestFolder folder;
    WatchedTable table;
    ASSERT_TRUE(OpenText(table, folder, "Name,Code\none,1\ntwo,\n"));
    EXPECT_STREQ(table.GetField(0, "code"), "1");
    EXPECT_EQ(table.GetField(2, "code"), nullptr);
    EXPECT_EQ(table.GetFieldIndex("none"), -1);
    EXPECT_FALSE(table.EditField(0, 0, "one") || table.EditField(1, 1, "")) << "no change";
    EXPECT_FALSE(table.EditField(2, 0, "x") || table.EditField(0, 2, "x")) << "out of range";
    EXPECT_TRUE(table.EditField(0, 0, "ONE"));
    EXPECT_TRUE(table.EditField(0, 0, table.GetField(0, 0u) + 1)) << "part of itself";
    EXPECT_TRUE(table.EditField(0, 1, ""));
    table.log.clear();
    EXPECT_EQ(table.AddNewCol("", "d"), 2);
    EXPECT_EQ(table.AddNewRow(), 2);
    table.SetMaintainSorted(true, 1);
    EXPECT_EQ(table.AddNewRow(), 0);
    EXPECT_EQ(Shown(Content(table)), "Name|Code|~|\n~|~|~|\nNE|~|d|\ntwo|~|d|\n~|~|~|\n");
    EXPECT_EQ(table.log, "row 2; row 0; ");
    EXPECT_TRUE(table.DeleteRow(0));
    EXPECT_FALSE(table.DeleteRow(3));
}

TEST(DelimitedTextEdit, Sorting) {
    const TestFolder folder;
    CDelimitedTextFile table;
    ASSERT_TRUE(OpenText(table, folder, "K\nbeta\nAlpha\n\"\"\ngamma\nALPHA\n"));
    table.SetMaintainSorted(true, 1);
    EXPECT_EQ(FirstColumn(table), "beta Alpha ~ gamma ALPHA ") << "only column 0 is sorted";
    table.SetMaintainSorted(true, 0);
    EXPECT_EQ(FirstColumn(table), "~ ALPHA Alpha beta gamma ");
    table.SetSortBatchMode(true);
    table.EditField(3, 0, "x");
    table.EditField(0, 0, "x");
    EXPECT_EQ(FirstColumn(table), "x ALPHA Alpha x gamma ");
    table.SetSortBatchMode(false);
    table.SetSortBatchMode(false);
    EXPECT_EQ(FirstColumn(table), "Alpha ALPHA gamma x x ") << "equal rows are reversed once";
    ASSERT_TRUE(OpenText(table, folder, "K\nb\na\nA\n"));
    EXPECT_EQ(FirstColumn(table), "A a b ") << "sorted when it is opened";
}

TEST(DelimitedTextEdit, FindingByBisection) {
    const struct {
        const char* name;
        const char* rows;
        int column;
        const char* value;
        int found;
    } cases[] = {
        {"the middle of equals", "a,\na,\na,\n", 0, "A", 1},
        {"the probe begins at half", "a,\na,\na,\na,\n", 0, "a", 2},
        {"the first of two", "a,\nb,\n", 0, "a", 0},
        {"empty fields are less", ",1\n,2\na,3\n", 0, "a", 2},
        {"unsorted, passed by", "1,c\n2,a\n3,b\n", 1, "c", -1},
        {"unsorted, met", "1,c\n2,a\n3,b\n", 1, "b", 2},
        {"not the sort column", "1,c\n2,a\n3,c\n", 2, "c", -1},
    };
    const TestFolder folder;
    for (const auto& c : cases) {
        CDelimitedTextFile table;
        ASSERT_TRUE(OpenText(table, folder, "K,V\n" + std::string(c.rows)));
        table.SetMaintainSorted(true, c.column);
        EXPECT_EQ(table.FindRecordWithValue(c.column, c.value), c.found) << c.name;
    }
}

TEST(DelimitedTextEdit, ReplaceAll) {
    const TestFolder folder;
    WatchedTable table;
    ASSERT_TRUE(OpenText(table, folder, "K\nab\nAaA\nbab\n"));
    table.SetMaintainSorted(true, 0);
    table.log.clear();
    table.ReplaceAll("ba", "zzab");
    EXPECT_EQ(FirstColumn(table), "AaA ab zzabb ");
    EXPECT_EQ(table.log, "edit 2; ") << "growing fields only";
    table.ReplaceAll("a", "zz");
    EXPECT_EQ(FirstColumn(table), "AzzA zzb zzzzbb ") << "sorted at the end only";
    table.ReplaceAll("zzb", "");
    EXPECT_EQ(FirstColumn(table), "~ AzzA zzb ") << "what follows a removed text is not searched";
    table.ReplaceAll(table.GetField(2, 0u) + 2, "q");
    EXPECT_EQ(FirstColumn(table), "~ AzzA zzq ") << "find may be a field's own text";
    EXPECT_EQ(table.GetField(0, 0u), nullptr);
}
