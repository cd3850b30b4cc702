#include "vtrfutls/Log.h"

#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <thread>

TEST(Log, IsOffUntilAskedFor) {
    EXPECT_FALSE(LoggingNow());
    Log("goes nowhere");
    {
        const CapturedLog log;
        EXPECT_TRUE(LoggingNow());
    }
    EXPECT_FALSE(LoggingNow());
}

TEST(Log, OneLineACall) {
    const CapturedLog log;
    Log("first");
    Log("two\r\nlines\n");
    Log("100 % %s");
    Log(nullptr);
    LogFmtA("%s is %d", "answer", 42);
    LogFmtA(nullptr);
    const std::string longText(100'000, 'x');
    LogFmtA("<%s>", longText.c_str());
    for (const std::size_t length : {1022u, 1023u, 1024u, 1025u})
        LogFmtA("%s", std::string(length, 'y').c_str());
    const std::vector<std::string> expected = {
        "first",
        "two  lines ",
        "100 % %s",
        "answer is 42",
        "<" + longText + ">",
        std::string(1022, 'y'),
        std::string(1023, 'y'),
        std::string(1024, 'y'),
        std::string(1025, 'y'),
    };
    EXPECT_EQ(log.Lines(), expected);
}

TEST(Log, FileGetsWholeStampedLines) {
    const TestFolder folder;
    const std::string file = folder.File("log.txt");
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
    EXPECT_TRUE(bytes.ends_with("] two\r\n")) << bytes;

    EXPECT_FALSE(SetLogFile(folder.File("missing\\log.txt").c_str()));
    EXPECT_FALSE(LoggingNow());
}

TEST(Log, LinesOfThreadsStayWhole) {
    constexpr int threads = 4;
    constexpr int linesEach = 2000;
    const TestFolder folder;
    const std::string file = folder.File("log.txt");
    ASSERT_TRUE(SetLogFile(file.c_str()));
    std::vector<std::string> seen;
    {
        const CapturedLog log;
        std::vector<std::thread> workers;
        for (int t = 0; t < threads; ++t)
            workers.emplace_back([t] {
                for (int i = 0; i < linesEach; ++i)
                    LogFmtA("%d %d", t, i);
            });
        for (std::thread& worker : workers)
            worker.join();
        seen = log.Lines();
    }
    SetLogFile("");
    ASSERT_EQ(seen.size(), static_cast<std::size_t>(threads * linesEach));
    std::map<int, int> next;
    for (const std::string& line : seen) {
        int thread = -1;
        int number = -1;
        std::istringstream(line) >> thread >> number;
        EXPECT_EQ(number, next[thread]++) << line;
    }
    const std::string bytes = ReadBytes(file);
    EXPECT_EQ(std::count(bytes.begin(), bytes.end(), '\n'), threads * linesEach);
}

TEST(Log, SinkMayLog) {
    static int calls;
    calls = 0;
    SetLogSink(
        [](const char*, void*) {
            ++calls;
            Log("from the sink");
        },
        nullptr);
    Log("from outside");
    SetLogSink(nullptr, nullptr);
    EXPECT_EQ(calls, 1);
}
