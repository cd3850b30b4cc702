#ifndef VTRUTILS_TESTS_SUPPORT_CAPTUREDLOG_H
#define VTRUTILS_TESTS_SUPPORT_CAPTUREDLOG_H

#include "vtrfutls/Log.h"

#include <string>
#include <vector>

/// Collects what is logged while it lives.
class CapturedLog {
public:
    CapturedLog() { SetLogSink(&CapturedLog::Take, this); }
    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;
    ~CapturedLog() { SetLogSink(nullptr, nullptr); }

    const std::vector<std::string>& Lines() const { return lines; }

private:
    static void Take(const char* line, void* self) {
        static_cast<CapturedLog*>(self)->lines.emplace_back(line);
    }
    std::vector<std::string> lines;
};

#endif
