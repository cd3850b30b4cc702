#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"
#include "tests/support/Watchdog.h"
#include "utilities/xml/XMLFile.h"

#include <gtest/gtest.h>

namespace {

std::string Repeated(std::string_view part, std::size_t count) {
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

/// Does all that goes through the whole tree. A step that takes more than linear time, or more
/// stack for a deeper tree, does not come back.
unsigned Exercise(std::string text) {
    CXMLFile document;
    document.SetShouldDeHTMLify(true);
    EXPECT_TRUE(document.LoadFromBuffer(text.data()));
    EXPECT_EQ(document.FindNode("not there"), nullptr);
    EXPECT_EQ(document.GetValue("not there", true), nullptr);
    document.DeHTMLAll();
    CXMLNode copy(document);
    EXPECT_EQ(copy.FindNode("not there"), nullptr);
    unsigned depth = 0;
    for (const CXMLNode* node = &copy; node->NumChildren() > 0; ++depth)
        node = node->GetChild(node->NumChildren() - 1);
    return depth;
}

} // namespace

TEST(XMLHostile, DeepTrees) {
    const Watchdog watchdog("XMLHostile.DeepTrees", 20);
    EXPECT_EQ(Exercise(Repeated("<a>", 1'000'000)), 999'999u);
    constexpr unsigned depth = 100'000;
    EXPECT_EQ(Exercise(Repeated("<a>", depth) + "<" + std::string(depth, ' ')), depth - 1);
    EXPECT_EQ(Exercise(Repeated("</a>", depth) + "<b x=\""), 0u) << "the first closes the second";
    EXPECT_EQ(Exercise(Repeated("<a>", depth / 2) + Repeated("</a>", depth / 2)), depth / 2 - 1);
    EXPECT_EQ(Exercise(Repeated("<!DOCTYPE a>", depth)), 0u);
}

TEST(XMLHostile, EndlessTexts) {
    const Watchdog watchdog("XMLHostile.EndlessTexts", 20);
    constexpr std::size_t size = 200'000;
    for (const std::string_view part :
         {"<",     ">",     "\"",  "'",     "<!--",   "<a x=\"", "<a x='>",
          "<!-- ", "<a b=", "<a ", "=",     "<?",     "</",      "<!DOCTYPE \"",
          "&",     "&#1",   "-",   "<a>\"", "<a>'\n", "<!---->"}) {
        Exercise("<r>" + Repeated(part, size / part.size()));
        Exercise("<r b" + Repeated(part, size / part.size()) + "\"'>-->");
    }
}

TEST(XMLHostile, HundredMegabytes) {
    const Watchdog watchdog("XMLHostile.HundredMegabytes", 20);
    std::string text(100'000'000, '<');
    EXPECT_EQ(Exercise(std::move(text)), 0u);
}

TEST(XMLHostile, RandomBytes) {
    constexpr unsigned seed = 43;
    std::mt19937 random(seed);
    for (unsigned round = 0; round < 5'000; ++round) {
        std::string bytes = "<" + RandomText(random, 200, "<>/?!-\"'= ab\n&#;DOCTYPE");
        for (char& c : bytes)
            c = random() % (1 + round % 6) == 0 ? static_cast<char>(1 + random() % 255) : c;
        GuardedBytes guarded(bytes);
        CXMLFile document;
        document.SetShouldDeHTMLify(true);
        ASSERT_TRUE(document.LoadFromBuffer(guarded.Data()));
        ASSERT_EQ(guarded.Data(), bytes) << "the text was changed, seed " << seed;
        const CXMLNode copy(document);
        ASSERT_EQ(copy.FindNode("not there"), nullptr);
    }
}
