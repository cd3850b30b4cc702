#include "vtrfutls/Log.h"

#include "common/Handles.h"
#include "common/WidePath.h"
#include "vtrfutls/CriticalLock.h"
#include "vtrfutls/FileNames.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

class LogState {
public:
    std::atomic<bool> on{false};

    void SetSink(LogSink newSink, void* newContext) {
        const vtr::CriticalLock::Holder held(lock);
        sink = newSink;
        context = newContext;
        Refresh();
    }

    bool SetFile(const char* path) {
        vtr::FileHandle opened;
        const bool wanted = path != nullptr && *path != '\0';
        if (wanted) {
            const vtr::WidePath wide(path, GetCodePageForFiles());
            opened.Reset(CreateFileW(wide.Get(), FILE_APPEND_DATA,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                     /*lpSecurityAttributes=*/nullptr, OPEN_ALWAYS,
                                     FILE_ATTRIBUTE_NORMAL, /*hTemplateFile=*/nullptr));
        }
        const bool good = static_cast<bool>(opened) == wanted;
        const vtr::CriticalLock::Holder held(lock);
        file = std::move(opened);
        Refresh();
        return good;
    }

    /// `line` holds `length` characters and room for CR LF and a terminator after them.
    void Write(char* line, std::size_t length) {
        for (std::size_t i = 0; i < length; ++i) {
            if (line[i] == '\r' || line[i] == '\n')
                line[i] = ' ';
        }
        // A sink may call back into the log.
        const vtr::CriticalLock::Holder held(lock);
        if (writing)
            return;
        writing = true;
        if (file)
            WriteToFile(line, length);
        line[length] = '\0';
        if (sink != nullptr)
            sink(line, context);
        writing = false;
    }

private:
    void Refresh() { on = sink != nullptr || static_cast<bool>(file); }

    void WriteToFile(char* line, std::size_t length) {
        SYSTEMTIME now;
        GetLocalTime(&now);
        char stamp[64];
        const int stampLength = std::snprintf(
            stamp, sizeof stamp, "%04u-%02u-%02u %02u:%02u:%02u.%03u [%lu] ", now.wYear, now.wMonth,
            now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds, GetCurrentThreadId());
        // One write a line: lines of other processes in the same file stay whole.
        const std::size_t total = static_cast<std::size_t>(stampLength) + length + 2;
        char* whole = static_cast<char*>(std::malloc(total));
        if (whole == nullptr)
            return;
        std::memcpy(whole, stamp, static_cast<std::size_t>(stampLength));
        std::memcpy(whole + stampLength, line, length);
        std::memcpy(whole + total - 2, "\r\n", 2);
        DWORD written = 0;
        WriteFile(file.Get(), whole, static_cast<DWORD>(total), &written, /*lpOverlapped=*/nullptr);
        std::free(whole);
    }

    vtr::CriticalLock lock;
    LogSink sink = nullptr;
    void* context = nullptr;
    vtr::FileHandle file;
    bool writing = false;
};

LogState state;

constexpr std::size_t shortLine = 1024;
constexpr std::size_t roomForLineEnd = 3;

} // namespace

void SetLogSink(LogSink sink, void* context) {
    state.SetSink(sink, context);
}

bool SetLogFile(const char* path) {
    return state.SetFile(path);
}

bool LoggingNow() {
    return state.on.load(std::memory_order_relaxed);
}

void Log(const char* text) {
    if (LoggingNow() && text != nullptr)
        LogFmtA("%s", text);
}

void LogFmtA(const char* format, ...) {
    if (!LoggingNow() || format == nullptr)
        return;
    char small[shortLine + roomForLineEnd];
    va_list arguments;
    va_start(arguments, format);
    const int needed = std::vsnprintf(small, shortLine, format, arguments);
    va_end(arguments);
    if (needed < 0)
        return;
    const std::size_t length = static_cast<std::size_t>(needed);
    if (length < shortLine) {
        state.Write(small, length);
        return;
    }
    char* large = static_cast<char*>(std::malloc(length + roomForLineEnd));
    if (large == nullptr) {
        state.Write(small, shortLine - 1);
        return;
    }
    va_start(arguments, format);
    std::vsnprintf(large, length + 1, format, arguments);
    va_end(arguments);
    state.Write(large, length);
    std::free(large);
}
