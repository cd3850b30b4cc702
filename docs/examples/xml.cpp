#include "utilities/xml/XMLFile.h"

#include <gtest/gtest.h>

TEST(Example, Xml) {
    char text[] = "<album id=\"7\"><title>Dawn &amp; dusk</title></album>";
    CXMLFile document;
    document.SetShouldDeHTMLify(true);
    ASSERT_TRUE(document.LoadFromBuffer(text));

    EXPECT_STREQ(document.Name(), "album");
    EXPECT_STREQ(document.GetValue("id", /*recurse=*/false), "7");
    EXPECT_STREQ(document.GetValue("title", /*recurse=*/true), "Dawn & dusk");
    ASSERT_NE(document.FindNode("title"), nullptr);
    EXPECT_EQ(document.FindNode("artist"), nullptr);
}
