#include "tests/support/AllocationFault.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/xml/XMLModel.h"

#include <gtest/gtest.h>

namespace {

std::string Document(int items) {
    std::string text = "<?xml version=\"1.0\"?><list>";
    for (int i = 0; i < items; ++i)
        text += "<item id=\"" + std::to_string(i) +
                "\" b=\"2\" c=\"3\"><b>text</b> more &amp; <!-- c -->more</item>";
    return text + "</list>";
}

unsigned CountNodes(const CXMLNode& node) {
    unsigned count = 1;
    for (unsigned i = 0; i < node.NumChildren(); ++i)
        count += CountNodes(*node.GetChild(i));
    return count;
}

} // namespace

TEST(XMLAllocation, EveryFailureLeavesASmallerTree) {
    const TestFolder folder;
    const std::string path = folder.Write("a.xml", Document(40));
    CXMLFile whole;
    ASSERT_TRUE(whole.Open(path.c_str()));
    const std::string expected = Shown(whole);

    AllocationFault fault("vtrutils.dll");
    unsigned different = 0;
    const unsigned failures = fault.ForEachAllocation([&](unsigned) {
        CXMLFile document;
        document.Open(path.c_str());
        CXMLNode copy(document);
        CXMLNode* added = new CXMLNode(copy);
        fault.FailAt(0);
        const std::string shown = Shown(document) + Shown(copy);
        different += shown == expected + expected ? 0u : 1u;
        EXPECT_LE(CountNodes(copy), CountNodes(document));
        delete added;
        EXPECT_TRUE(document.Open(path.c_str()));
        EXPECT_EQ(Shown(document), expected);
    });
    EXPECT_GT(failures, 50u);
    EXPECT_GT(different, 50u);
}

TEST(XMLAllocation, AFileThatDoesNotFitIsReported) {
    const TestFolder folder;
    const std::string path = folder.Write("a.xml", "<a/>");
    CXMLFile document;
    const CapturedLog log;
    AllocationFault fault("vtrutils.dll");
    fault.FailAt(1);
    EXPECT_FALSE(document.Open(path.c_str()));
    EXPECT_EQ(log.Lines().back(), "Leaving CXMLFile::Open, can't alloc buffer of 6 bytes");
}

TEST(XMLAllocation, LoadingTakesABlockForManyObjects) {
    std::string text = Document(1000);
    AllocationFault fault("vtrutils.dll");
    CXMLFile document;
    ASSERT_TRUE(document.LoadFromBuffer(text.data()));
    EXPECT_LT(fault.Count(), 4100u)
        << "8,000 objects and texts; each list of an element is a block";
}
