#include "utilities/containers/ByteQueue.h"
#include "utilities/containers/MyArrayList.h"
#include "utilities/containers/RectangleList.h"
#include "utilities/containers/StringDynArray.h"

#include <gtest/gtest.h>

TEST(Example, Containers) {
    // Items with a sort value: positions in a piece of music, say.
    int verse = 0;
    int chorus = 0;
    CMyArrayList marks;
    marks.AddSorted(&chorus, 9'500);
    marks.AddSorted(&verse, 1'000);
    EXPECT_EQ(marks.Index(0, /*sortValueOut=*/nullptr), &verse);

    CStringDynArray names;
    names.SetMaintainSorted(true);
    names.AddString("piano", true);
    names.AddString("Bass", true);
    EXPECT_STREQ(names.GetString(0), "Bass");
    EXPECT_EQ(names.FindString("PIANO"), 1);

    // Bytes from one thread to another.
    CByteQueue queue;
    queue.AddData(reinterpret_cast<const unsigned char*>("abc"), 3);
    unsigned char taken[2];
    EXPECT_EQ(queue.GetData(taken, sizeof taken), 2u);
    EXPECT_EQ(queue.TotalBytesAvailable(), 1u);

    // What is to be painted again.
    RectangleList region;
    RECT left{0, 0, 10, 10};
    RECT right{5, 0, 20, 10};
    region.add(&left);
    region.add(&right);
    EXPECT_EQ(region.getBounds().right, 20);
}
