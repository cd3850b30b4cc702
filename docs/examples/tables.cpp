#include "utilities/text/tables/DelimitedTextFile.h"

#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

TEST(Example, Tables) {
    const TestFolder folder;
    const std::string path = folder.Write("tracks.csv", "Title,Artist\r\n"
                                                        "\"Harbour, at dawn\",The Lights\r\n"
                                                        "Anthem,\r\n");
    CDelimitedTextFile tracks;
    ASSERT_TRUE(tracks.Open(path.c_str(), ',', /*firstLineIsHeader=*/true, '"'));
    EXPECT_EQ(tracks.NumRecords(), 2u);
    EXPECT_STREQ(tracks.GetField(0, "title"), "Harbour, at dawn");
    EXPECT_EQ(tracks.GetField(1, "Artist"), nullptr); // an empty field

    EXPECT_TRUE(tracks.EditField(1, 1, "Unknown"));
    EXPECT_EQ(tracks.FindRecordWithValue(/*column=*/1, "unknown"), 1);
    EXPECT_TRUE(tracks.Save(path.c_str(), ';', /*writeHeader=*/true, '"'));
    EXPECT_EQ(ReadBytes(path), "\"Title\";\"Artist\"\r\n"
                               "\"Harbour, at dawn\";\"The Lights\"\r\n"
                               "\"Anthem\";\"Unknown\"\r\n");
}
