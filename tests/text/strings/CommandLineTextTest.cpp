#include "utilities/text/strings/CommandLineText.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "utilities/text/strings/StringFunctions.h"

#include <filesystem>
#include <gtest/gtest.h>

TEST(CommandLineText, Parameters) {
    const TestFolder folder;
    const std::string first = folder.Write("first one.txt", "");
    const std::string second = folder.Write("second one.txt", "");
    const std::string missing = folder.File("no such file.txt") + " /switch";
    const std::string endless = "C:\\" + std::string(5000, 'x');
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const struct {
        std::string commandLine;
        int index;
        std::string parameter;
        std::size_t size = 1024;
    } rows[] = {
        {"  program   one two", 0, "program"},
        {"  program   one two", 2, "two"},
        {"\"C:\\a b\\program.exe\"one", 1, "one"},
        {"program \"never closed", 1, "never closed"},
        {"program \"\" two", 2, "two"},
        {"program a\"b c\"", 1, "a\"b"},
        {"program parameter", 1, "param", 6},
        // Both paths hold spaces; only the file system tells where the first one ends.
        {first + " " + second, 0, first},
        {"program " + first + " " + second, 2, second},
        // A path that names no file takes all that follows it, and a folder is not a file.
        {"program " + missing, 1, missing},
        {"program " + folder.Path() + " x", 1, folder.Path() + " x"},
        {"program " + endless, 1, endless.substr(0, 1023)},
        // Without a drive the space ends it, unless the whole rest is a file.
        {"program first one.txt  ", 1, "first one.txt"},
        {"program x first one.txt", 2, "first one.txt"},
    };
    for (const auto& row : rows) {
        GuardedBytes buffer(row.size);
        const std::wstring wide(row.commandLine.begin(), row.commandLine.end());
        vtr::ParameterOfCommandLine(wide.c_str(), row.index, buffer.Data(),
                                    static_cast<int>(row.size));
        EXPECT_EQ(buffer.Data(), row.parameter) << row.commandLine << " [" << row.index << "]";
        EXPECT_EQ(buffer.View().back(), '\0') << "the whole buffer is zeroed first";
    }
    std::filesystem::current_path(before);
    char text[MAX_PATH] = "x";
    vtr::ParameterOfCommandLine(L"program", 0, text, 0);
    vtr::ParameterOfCommandLine(L"program", 0, nullptr, 5);
    EXPECT_STREQ(text, "x");
    GetCommandLineParameter(0, text, sizeof text);
    EXPECT_EQ(std::filesystem::path(text).filename(), "internal_test.exe") << "of this process";
}
