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
        EXPECT_EQ(log.Lines().back(), "Leaving CXMLFile::Open, normal exit");
    }
    const std::pair<std::string, const char*> refused[] = {
        {"", "blank file name"},
        {folder.File("none"), "blank file name"},
        {folder.Path(), "can't open file"},
        {folder.Write("empty", ""), "file length < 1"},
        {folder.Write("zero", "\0<a/>"sv), "file length < 1"},
    };
    for (const auto& [file, reason] : refused) {
        EXPECT_FALSE(document.Open(file.c_str()));
        const std::vector<std::string> said(log.Lines().end() - 2, log.Lines().end());
        EXPECT_EQ(said[0], "Entered CXMLFile::Open, file <" + file + ">");
        EXPECT_EQ(said[1], std::string("Leaving CXMLFile::Open, ") + reason);
    }
    EXPECT_FALSE(document.Open(nullptr));
    const std::size_t logged = log.Lines().size();
    char empty[] = "";
    EXPECT_FALSE(document.LoadFromBuffer(empty) || document.LoadFromBuffer(nullptr));
    EXPECT_EQ(log.Lines().size(), logged);
    EXPECT_EQ(Shown(document), Shown(whole)) << "what failed to load changed the document";
    {
        AllocationFault fault("vtrutils.dll");
        fault.FailAt(1);
        EXPECT_FALSE(document.Open(folder.Write("a.xml", "<a/>").c_str()));
    }
    EXPECT_EQ(log.Lines().back(), "Leaving CXMLFile::Open, can't alloc buffer of 6 bytes");
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

    std::string large = Document(1000);
    fault.FailAt(0);
    ASSERT_TRUE(whole.LoadFromBuffer(large.data()));
    EXPECT_LT(fault.Count(), 4100u)
        << "8,000 objects and texts; each list of an element is a block";
}
