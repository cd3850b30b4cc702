#include "utilities/text/CommandLineText.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

std::string Parameter(const std::string& commandLine, int index, int size = 1024) {
    GuardedBytes buffer(static_cast<std::size_t>(size));
    vtr::ParameterOfCommandLine(commandLine.c_str(), index, buffer.Data(), size);
    return buffer.Data();
}

} // namespace

TEST(ParameterOfCommandLine, QuotesAndSpaces) {
    static constexpr struct {
        const char* commandLine;
        int index;
        const char* parameter;
    } rows[] = {
        {"program one two", 0, "program"},
        {"program one two", 2, "two"},
        {"program one two", 3, ""},
        {"  program   one", 1, "one"},
        {"\"C:\\a b\\program.exe\" one", 0, "C:\\a b\\program.exe"},
        {"\"C:\\a b\\program.exe\" one", 1, "one"},
        {"\"program\"one", 1, "one"},
        {"program \" padded \"", 1, "padded"},
        {"program \"never closed", 1, "never closed"},
        {"program \"\" two", 1, ""},
        {"program \"\" two", 2, "two"},
        {"program a\"b c\"", 1, "a\"b"},
        {"", 0, ""},
        {"   ", 0, ""},
        {"program", -1, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Parameter(row.commandLine, row.index), row.parameter)
            << row.commandLine << " [" << row.index << "]";
    EXPECT_EQ(Parameter("program parameter", 1, 6), "param");
    EXPECT_EQ(Parameter("program parameter", 1, 1), "");
}

TEST(ParameterOfCommandLine, UnquotedPathsEndBehindAnExistingFile) {
    const TestFolder folder;
    const std::string first = folder.Write("first one.txt", "");
    const std::string second = folder.Write("second one.txt", "");
    const std::string inner = folder.File("no such file here.txt");

    // Both paths hold spaces; only the file system tells where the first one ends.
    const std::string both = "program " + first + " " + second;
    EXPECT_EQ(Parameter(both, 1), first);
    EXPECT_EQ(Parameter(both, 2), second);
    EXPECT_EQ(Parameter("program " + first + "   ", 1), first);
    EXPECT_EQ(Parameter(first + " next", 0), first);
    EXPECT_EQ(Parameter(first + " next", 1), "next");

    // A path that names no file takes everything that follows it.
    EXPECT_EQ(Parameter("program " + inner + " /switch", 1), inner + " /switch");
    // A folder is not a file.
    EXPECT_EQ(Parameter("program " + folder.Path() + " x", 1), folder.Path() + " x");
    EXPECT_EQ(Parameter("program " + std::string("C:\\") + std::string(5000, 'x') + " y", 1).size(),
              1023u);
}

TEST(ParameterOfCommandLine, RestThatNamesAFileIsOneParameter) {
    const TestFolder folder;
    folder.Write("a b.txt", "");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    // Without a drive the space would end it.
    EXPECT_EQ(Parameter("program a b.txt  ", 1), "a b.txt");
    EXPECT_EQ(Parameter("program a b.txt x", 1), "a");
    EXPECT_EQ(Parameter("program x a b.txt", 2), "a b.txt");
    EXPECT_EQ(Parameter("program x a b.txt", 1), "x");
    EXPECT_EQ(Parameter("a b.txt", 0), "a");
    EXPECT_EQ(Parameter("program a b.txt", 1, 5), "a b.");
    std::filesystem::current_path(before);
}
