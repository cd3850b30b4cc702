#include "tests/support/ImportPatch.h"
#include "tests/text/tables/DelimitedTables.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

unsigned writes = 0;

/// The disk is full for a moment.
std::size_t WriteOnceInVain(const void*, std::size_t, std::size_t count, std::FILE*) {
    return writes++ == 0 ? 0 : count;
}

} // namespace

TEST(DelimitedTextSave, WritesWhatUsersExpect) {
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

TEST(DelimitedTextSave, FailureLeavesThePreviousFile) {
    const TestFolder folder;
    CDelimitedTextFile table;
    ASSERT_TRUE(OpenText(table, folder, "A\nold\n"));
    const std::string before = ReadBytes(table.FilePath());
    // Larger than what is written at once.
    table.EditField(0, 0, std::string(100'000, 'x').c_str());
    {
        const ImportPatch patch(GetModuleHandleA("vtrutils.dll"), "msvcrt.dll", "fwrite",
                                reinterpret_cast<void*>(&WriteOnceInVain));
        EXPECT_FALSE(table.Save(table.FilePath(), ',', true, '"'));
        EXPECT_EQ(writes, 1u);
    }
    EXPECT_EQ(ReadBytes(table.FilePath()), before);
    EXPECT_EQ(folder.Listing(), "table.csv");
    EXPECT_TRUE(table.Save(table.FilePath(), ',', true, '"'));
    EXPECT_NE(ReadBytes(table.FilePath()), before);
}
