#include "utilities/text/language/TextEscapes.h"

#include "tests/support/CodePage.h"
#include "tests/support/RandomText.h"
#include "utilities/base/CodePage.h"

#include <gtest/gtest.h>

namespace {

std::string ByPasses(std::string text) {
    for (const auto& [escape, result] :
         {std::pair{"\\r\\n", "\n"}, {"\\n", "\n"}, {"\\t", "\t"}, {"\\\"", "\""}, {"\\#", "#"}}) {
        for (std::size_t at; (at = text.find(escape)) != text.npos;)
            text.replace(at, std::string(escape).size(), result);
    }
    return text;
}

} // namespace

TEST(TextEscapes, OnePassGivesWhatFiveGive) {
    constexpr unsigned seed = 61;
    std::mt19937 random(seed);
    for (int round = 0; round < 100'000; ++round) {
        const std::string text = RandomText(random, 14, "\\\\\\rnt\"#x");
        std::string resolved = text;
        vtr::ResolveEscapes(resolved.data());
        ASSERT_EQ(resolved.c_str(), ByPasses(text)) << "seed " << seed << ": " << text;
    }
    const CodePage japanese(932);
    char text[] = "\x83\\n\\n";
    vtr::ResolveEscapes(text);
    EXPECT_STREQ(text, "\x83\\n\n") << "a trail byte is no backslash";
    vtr::SetCurrentCodePage(1252);
    vtr::ResolveEscapes(text);
    EXPECT_STREQ(text, "\x83\n\n") << "the language's page comes first";
    vtr::SetCurrentCodePage(0);
}
