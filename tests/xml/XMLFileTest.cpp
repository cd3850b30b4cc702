#include "tests/support/AllocationFault.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/xml/XMLTrees.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::string Wide(std::string_view text) {
    std::string wide;
    for (const char c : text)
        wide += {c, '\0'};
    return wide;
}

std::string Document(int items) {
    std::string text = "<?xml version=\"1.0\"?><list>";
    for (int i = 0; i < items; ++i)
        text += "<item id=\"" + std::to_string(i) +
                "\" b=\"2\" c=\"3\"><b>text</b> more &amp; <!-- c -->more</item>";
    return text + "</list>";
}

} // namespace

TEST(XMLFile, OpensFiles) {
    using namespace std::string_view_literals;
    const TestFolder folder;
    std::string text = Document(2);
    CXMLFile whole;
    ASSERT_TRUE(whole.LoadFromBuffer(text.data()));
    CXMLFile document;
    const CapturedLog log;
    for (const std::string& bytes :
         {text, Wide(text), "\xFF\xFE" + Wide(text), text + std::string("\0<c/>"sv)}) {
        ASSERT_TRUE(document.Open(folder.Write("a.xml", bytes).c_str()));
        EXPECT_EQ(Shown(document), Shown(whole));
    }
    for (const std::string& file : {std::string(), folder.File("none"), folder.Path(),
                                    folder.Write("empty", ""), folder.Write("zero", "\0<a/>"sv)})
        EXPECT_FALSE(document.Open(file.c_str())) << file;
    EXPECT_EQ(log.Lines().back(), "Leaving CXMLFile::Open, file length < 1");
    char empty[] = "";
    EXPECT_FALSE(document.Open(nullptr) || document.LoadFromBuffer(empty) ||
                 document.LoadFromBuffer(nullptr));
    EXPECT_EQ(Shown(document), Shown(whole)) << "what failed to load changed the document";
    {
        AllocationFault fault("vtrutils.dll");
        fault.FailAt(1);
        EXPECT_FALSE(document.Open(folder.Write("a.xml", "<a/>").c_str()));
    }
}

TEST(XMLFile, ProgressIsToldForEachNodeAndToken) {
    std::string told;
    CXMLFile document;
    document.SetProgressCallback(
        [](unsigned position, unsigned size, void* user) {
            *static_cast<std::string*>(user) +=
                std::to_string(position) + "/" + std::to_string(size) + " ";
        },
        &told);
    char text[] = "<a>t<b/></a>";
    ASSERT_TRUE(document.LoadFromBuffer(text));
    EXPECT_EQ(told, "0/12 3/12 3/12 8/12 ");
}

TEST(XMLFile, LackOfMemoryLeavesASmallerTree) {
    const TestFolder folder;
    const std::string path = folder.Write("a.xml", Document(40));
    CXMLFile whole;
    ASSERT_TRUE(whole.Open(path.c_str()));
    const std::string expected = Shown(whole);
    const auto nodes = [](const CXMLNode& node) {
        const std::string shown = Shown(node);
        return std::count(shown.begin(), shown.end(), '(');
    };
    AllocationFault fault("vtrutils.dll");
    unsigned different = 0;
    const unsigned failures = fault.ForEachAllocation([&](unsigned) {
        CXMLFile document;
        document.Open(path.c_str());
        CXMLNode copy(document);
        CXMLNode* added = new CXMLNode(copy);
        fault.FailAt(0);
        different += Shown(document) + Shown(copy) == expected + expected ? 0u : 1u;
        EXPECT_LE(nodes(copy), nodes(document));
        delete added;
        EXPECT_TRUE(document.Open(path.c_str()));
        EXPECT_EQ(Shown(document), expected);
    });
    EXPECT_GT(std::min(failures, different), 50u);
}
