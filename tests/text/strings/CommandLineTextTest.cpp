#include "utilities/text/strings/CommandLineText.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "utilities/text/strings/StringFunctions.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

std::string Parameter(const std::string& commandLine, int index, int size = 1024) {
    GuardedBytes buffer(static_cast<std::size_t>(size));
    const std::wstring wide(commandLine.begin(), commandLine.end());
    vtr::ParameterOfCommandLine(wide.c_str(), index, buffer.Data(), size);
    EXPECT_EQ(buffer.View().back(), '\0') << "the whole buffer is zeroed first";
    return buffer.Data();
}

} // namespace

TEST(ParameterOfCommandLine, OfThisProcess) {
    char program[MAX_PATH];
    GetCommandLineParameter(0, program, sizeof program);
    EXPECT_EQ(std::filesystem::path(program).filename(), "internal_test.exe");
    GetCommandLineParameter(1000, program, sizeof program);
    EXPECT_STREQ(program, "");
}

TEST(ParameterOfCommandLine, QuotesAndSpaces) {
    static constexpr struct {
        const char* commandLine;
        int index;
        const char* parameter;
    } rows[] = {
        {"  program   one two", 0, "program"},
        {"  program   one two", 2, "two"},
        {"\"C:\\a b\\program.exe\"one", 1, "one"},
        {"program \" padded \"", 1, "padded"},
        {"program \"never closed", 1, "never closed"},
        {"program \"\" two", 2, "two"},
        {"program a\"b c\"", 1, "a\"b"},
        {"program", -1, ""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Parameter(row.commandLine, row.index), row.parameter)
            << row.commandLine << " [" << row.index << "]";
    EXPECT_EQ(Parameter("program parameter", 1, 6), "param");
    EXPECT_EQ(Parameter("program parameter", 1, 1), "");
    char untouched[] = "x";
    vtr::ParameterOfCommandLine(L"program", 0, untouched, 0);
    vtr::ParameterOfCommandLine(L"program", 0, nullptr, 5);
    EXPECT_STREQ(untouched, "x");
}

TEST(ParameterOfCommandLine, UnquotedPathsEndBehindAnExistingFile) {
    const TestFolder folder;
    const std::string first = folder.Write("first one.txt", "");
    const std::string second = folder.Write("second one.txt", "");
    // Both paths hold spaces; only the file system tells where the first one ends.
    EXPECT_EQ(Parameter(first + " " + second, 0), first);
    EXPECT_EQ(Parameter("program " + first + " " + second, 2), second);
    // A path that names no file takes everything that follows it, and a folder is not a file.
    const std::string missing = folder.File("no such file here.txt") + " /switch";
    EXPECT_EQ(Parameter("program " + missing, 1), missing);
    EXPECT_EQ(Parameter("program " + folder.Path() + " x", 1), folder.Path() + " x");
    EXPECT_EQ(Parameter("program C:\\" + std::string(5000, 'x'), 1).size(), 1023u);
}

TEST(ParameterOfCommandLine, RestThatNamesAFileIsOneParameter) {
    const TestFolder folder;
    folder.Write("a b.txt", "");
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    // Without a drive the space would end it.
    EXPECT_EQ(Parameter("program a b.txt  ", 1), "a b.txt");
    EXPECT_EQ(Parameter("program x a b.txt", 2), "a b.txt");
    EXPECT_EQ(Parameter("a b.txt", 0), "a");
    std::filesystem::current_path(before);
}
