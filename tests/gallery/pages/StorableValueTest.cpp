#include "gallery/pages/ini/StorableValue.h"

#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"
#include "utilities/text/ini/IniFileReader.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

/// The value that a saved and loaded document has in place of `value`, for each of many values in
/// one document.
std::vector<std::string> AfterSavingAndLoading(const std::vector<std::string>& values) {
    const TestFolder folder;
    const std::string file = folder.Write("values.ini", "[S]\r\nfirst = 1\r\n");
    CIniFileReader document;
    EXPECT_TRUE(document.Init(file.c_str(), /*sort=*/false));
    CIniSection* section = document.GetSection("S");
    for (const std::string& value : values)
        EXPECT_TRUE(section->AddValue("key", value.c_str()));
    EXPECT_TRUE(document.Save());
    EXPECT_TRUE(document.Init(file.c_str(), /*sort=*/false));
    std::vector<std::string> result;
    for (unsigned i = 1; i < document.GetSection("S")->NumValues(); ++i) {
        const char* value = document.GetSection("S")->GetValue(i)->Value();
        result.emplace_back(value != nullptr ? value : "");
    }
    return result;
}

/// One pair stays one line for all of these values, so the document still has a pair a value.
TEST(StorableValue, IsWhatADocumentReadsBack) {
    constexpr unsigned seed = 20210314;
    std::mt19937 random(seed);
    std::vector<std::string> values;
    for (int i = 0; i < 20000; ++i)
        values.push_back(RandomText(random, 6, "\"\"\"  \t;=[]ab"));
    const std::vector<std::string> loaded = AfterSavingAndLoading(values);
    ASSERT_EQ(values.size(), loaded.size());
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(values[i] == loaded[i], gallery::WhyNotStorable(values[i]) == nullptr)
            << "<" << values[i] << "> came back as <" << loaded[i] << ">";
}

TEST(StorableValue, RefusesLineBreaksAndWhatIsTooLongToLoad) {
    EXPECT_NE(nullptr, gallery::WhyNotStorable("a\rb"));
    EXPECT_NE(nullptr, gallery::WhyNotStorable("a\nb"));
    EXPECT_NE(nullptr, gallery::WhyNotStorable(std::string(8191, 'a')));
    for (const char padding : {'a', ' '}) {
        std::string longest(8190, 'a');
        longest.back() = padding;
        EXPECT_EQ(nullptr, gallery::WhyNotStorable(longest));
        EXPECT_EQ(longest, AfterSavingAndLoading({longest}).at(0));
    }
}

} // namespace
