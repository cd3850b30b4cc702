#include "vtrfutls/Log.h"

#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/support/ThreadTeam.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::string Minute() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    char text[32];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute);
    return text;
}

} // namespace

TEST(Log, OneLineACall) {
    EXPECT_FALSE(LoggingNow());
    Log("goes nowhere");
    const CapturedLog log;
    EXPECT_TRUE(LoggingNow());
    Log("two\r\nlines\n");
    Log("100 % %s");
    Log(nullptr);
    LogFmtA("%s is %d", "answer", 42);
    LogFmtA(nullptr);
    std::vector<std::string> expected = {"two  lines ", "100 % %s", "answer is 42"};
    // Around the longest line that needs no memory, and far above it.
    for (const std::size_t length : {1022u, 1023u, 1024u, 1025u, 100'000u}) {
        expected.emplace_back(length, 'y');
        LogFmtA("%s", expected.back().c_str());
    }
    EXPECT_EQ(log.Lines(), expected);
}

TEST(Log, FileGetsWholeStampedLines) {
    const TestFolder folder;
    const std::string file = folder.File("log.txt");
    const std::string before = Minute();
    for (const char* text : {"one", "two"}) {
        ASSERT_TRUE(SetLogFile(file.c_str()));
        EXPECT_TRUE(LoggingNow());
        Log(text);
        EXPECT_TRUE(SetLogFile(nullptr));
        EXPECT_FALSE(LoggingNow());
    }
    const std::string bytes = ReadBytes(file);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 2);
    EXPECT_NE(bytes.find("] one\r\n"), std::string::npos) << bytes;
    EXPECT_TRUE(bytes.starts_with(before) || bytes.starts_with(Minute())) << bytes;
    EXPECT_TRUE(bytes.ends_with("] two\r\n")) << bytes;
    EXPECT_FALSE(SetLogFile(folder.File("missing\\log.txt").c_str()));
    EXPECT_FALSE(LoggingNow());
}

TEST(Log, LinesOfThreadsStayWhole) {
    constexpr int linesEach = 2000;
    const TestFolder folder;
    const std::string file = folder.File("log.txt");
    ASSERT_TRUE(SetLogFile(file.c_str()));
    const CapturedLog log;
    RunTeam("logging", 4, [](unsigned thread) {
        for (int i = 0; i < linesEach; ++i)
            LogFmtA("%u %d", thread, i);
    });
    SetLogFile("");
    ASSERT_EQ(log.Lines().size(), 4u * linesEach);
    int next[4] = {};
    for (const std::string& line : log.Lines()) {
        ASSERT_TRUE(line[0] >= '0' && line[0] < '4') << line;
        EXPECT_EQ(line.substr(1), " " + std::to_string(next[line[0] - '0']++));
    }
    const std::string bytes = ReadBytes(file);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), 4 * linesEach);
}

TEST(Log, SinkMayLog) {
    int calls = 0;
    SetLogSink(
        [](const char*, void* count) {
            ++*static_cast<int*>(count);
            Log("from the sink");
        },
        &calls);
    Log("from outside");
    SetLogSink(nullptr, nullptr);
    EXPECT_EQ(calls, 1);
}
