#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

#include <gtest/gtest.h>

namespace {

bool Init(CIniFileReader& document, const std::string& text, bool sort = false) {
    const TestFolder folder;
    return document.Init(folder.Write("a.ini", text).c_str(), sort);
}

} // namespace

TEST(IniInheritance, EndsTheParents) {
    const char* const text = "[C] : [B]\n[D] : [B]\nz=1\n[B]\nx=2\nA=3\nm=\n";
    CIniFileReader document;
    ASSERT_TRUE(Load(document, text));
    EXPECT_EQ(document.GetSection("D")->NumParents(), 1) << "a buffer alone keeps parents";
    EXPECT_FALSE(document.KeyExists("D", "x"));
    ASSERT_TRUE(Init(document, text));
    EXPECT_EQ(Content(document), "{D: z=1; x=2; A=3; m=;}{B: x=2; A=3; m=;}");
    EXPECT_EQ(document.GetSection("D")->NumParents(), 0);
    ASSERT_TRUE(Init(document, text, /*sort=*/true));
    EXPECT_EQ(Content(document), "{B: A=3; m=; x=2;}{D: A=3; m=; x=2; z=1;}");
    // Each pair that is added sorts the section again and so turns its repeated keys around.
    ASSERT_TRUE(Init(document, "[D] : [B]\nz=1\nz=2\na=1\n[B]\nx=2\nz=3\nb=4\n", /*sort=*/true));
    EXPECT_EQ(Content(document), "{B: b=4; x=2; z=3;}{D: a=1; b=4; x=2; z=2; z=1;}");
}

TEST(IniInheritance, CostsNoMoreThanItMustOnHostileGraphs) {
    std::string everyParent;
    for (int p = 0; p < 30; ++p)
        everyParent += " : [s" + std::to_string(p) + "]";
    std::string circles;
    for (int s = 0; s < 30; ++s)
        circles +=
            "[s" + std::to_string(s) + "]" + everyParent + "\nk" + std::to_string(s) + "=1\n";
    CIniFileReader document;
    ASSERT_TRUE(Init(document, circles)) << "taken path by path, years";
    for (int s = 0; s < 30; ++s)
        EXPECT_EQ(document.GetNumValues(s), 30);

    std::string children, keys;
    for (int n = 0; n < 20'000; ++n) {
        children += "[c" + std::to_string(n) + "] : [base]\nk=1\n";
        keys += n < 3'000 ? "k" + std::to_string(n) + "=1\n" : "";
    }
    ASSERT_TRUE(Init(document, children + "[base]\nb=1\n")) << "many children of one parent";
    EXPECT_EQ(document.GetNumValues(19'999), 2);
    std::string child = "[child]";
    for (int n = 0; n < 20'000; ++n)
        child += " : [base]";
    ASSERT_TRUE(Init(document, child + "\n" + keys + "[base]\nb=1\n" + keys))
        << "60,000,000 pairs to look at, one to copy";
    EXPECT_EQ(document.GetNumValues(0), 3'001);
    const CapturedLog log;
    EXPECT_FALSE(Init(document, children + "[base]\n" + keys)) << "60,000,000 pairs to copy";
    EXPECT_TRUE(!document.Initialized() && document.NumSections() == 0);
    EXPECT_EQ(log.Lines(), std::vector<std::string>{"CIniFileReader::ProcessInheritance: "
                                                    "departing, more than 16000000 pairs to copy"});
}
