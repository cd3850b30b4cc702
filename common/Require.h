#ifndef VTR_COMMON_REQUIRE_H
#define VTR_COMMON_REQUIRE_H

/// `VTR_REQUIRE(condition)` asserts what a declaration requires of its caller. A debug build whose
/// condition is false says so on standard error and to the debugger, with file and line, and ends
/// the process at once: no dialog box asks, no exit handler runs, no memory is needed. With NDEBUG
/// the condition is compiled, so that what it names counts as used, but not evaluated. It is an
/// expression. Private to the libraries and the sample host, for it is not installed. Immutable and
/// safe.

#ifdef NDEBUG

#define VTR_REQUIRE(condition) static_cast<void>(sizeof((condition) ? 1 : 0))

#else

#include <cstddef>
#include <windows.h>

#define VTR_REQUIRE(condition)                                                                     \
    ((condition) ? static_cast<void>(0) : vtr::EndBrokenRequirement(__FILE__, __LINE__, #condition))

namespace vtr {

/// The exit code that Windows has for it, STATUS_ASSERTION_FAILURE.
inline constexpr unsigned brokenRequirementCode = 0xC0000420;

/// A line of text on the stack. What does not fit is cut.
class RequirementLine {
public:
    void Put(const char* text) {
        while (*text != '\0' && length < sizeof line - 1)
            line[length++] = *text++;
    }
    void Put(int number) {
        if (number > 9)
            Put(number / 10);
        const char digit[] = {static_cast<char>('0' + number % 10), '\0'};
        Put(digit);
    }
    const char* Get() const { return line; }
    DWORD Length() const { return static_cast<DWORD>(length); }

private:
    char line[1024] = "";
    std::size_t length = 0;
};

/// Stops in a debugger if there is one, where the stack shows the caller.
[[noreturn]] inline void EndBrokenRequirement(const char* file, int number, const char* condition) {
    RequirementLine line;
    line.Put(file);
    line.Put(":");
    line.Put(number);
    line.Put(": not as required: ");
    line.Put(condition);
    line.Put("\n");
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.Get(), line.Length(), &written,
              /*lpOverlapped=*/nullptr);
    OutputDebugStringA(line.Get());
    if (IsDebuggerPresent() != FALSE)
        DebugBreak();
    TerminateProcess(GetCurrentProcess(), brokenRequirementCode);
    for (;;) { // the process ends before
    }
}

} // namespace vtr

#endif

#endif
