#include "utilities/system/files/FileFunctions.h"

#include "common/Handles.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/TestKey.h"

#include <gtest/gtest.h>
#include <tlhelp32.h>
#include <winternl.h>

namespace {

constexpr DWORD longestStart = 20'000;

template <class T>
T ReadFrom(HANDLE process, const void* address) {
    T value{};
    EXPECT_TRUE(ReadProcessMemory(process, address, &value, sizeof value, nullptr));
    return value;
}

std::string CommandLineOf(HANDLE process) {
    PROCESS_BASIC_INFORMATION basic{};
    EXPECT_EQ(
        NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof basic, nullptr),
        0);
    const auto* parameters = ReadFrom<PEB>(process, basic.PebBaseAddress).ProcessParameters;
    const UNICODE_STRING line =
        ReadFrom<RTL_USER_PROCESS_PARAMETERS>(process, parameters).CommandLine;
    std::wstring text(line.Length / sizeof(wchar_t), L' ');
    EXPECT_TRUE(ReadProcessMemory(process, line.Buffer, text.data(), line.Length, nullptr));
    return {text.begin(), text.end()};
}

/// The command line of the process that the shell started for this one, which is ended. The shell
/// has made it when it returns, but its command line is in place only when it waits for input.
std::string Started() {
    const vtr::FileHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32 entry;
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32First(snapshot.Get(), &entry); more;
         more = Process32Next(snapshot.Get(), &entry)) {
        if (entry.th32ParentProcessID != GetCurrentProcessId() ||
            _stricmp(entry.szExeFile, "conhost.exe") == 0)
            continue;
        const vtr::KernelHandle process(
            OpenProcess(PROCESS_ALL_ACCESS, FALSE, entry.th32ProcessID));
        WaitForInputIdle(process.Get(), longestStart);
        const std::string line = CommandLineOf(process.Get());
        TerminateProcess(process.Get(), 0);
        WaitForSingleObject(process.Get(), INFINITE);
        return line;
    }
    return "nothing";
}

/// Has the shell run the handler for a class of files or URLs.
class Handler {
public:
    explicit Handler(const std::string& name)
        : kind(name, HKEY_CLASSES_ROOT),
          command(name + "\\shell\\open\\command", HKEY_CLASSES_ROOT) {
        char folder[MAX_PATH];
        EXPECT_TRUE(GetExeDirectory(folder, sizeof folder, nullptr));
        program = "\"" + std::string(folder) + "shell_handler.exe\" ";
        kind.SetText("URL Protocol", "");
        command.SetText("", program + "%1");
    }

    const std::string& Program() const { return program; }

private:
    TestKey kind;
    TestKey command;
    std::string program;
};

} // namespace

TEST(ShellLaunch, BrowserIsWhatIsRegisteredForTheUrlOrForPages) {
    constexpr char url[] = "vtrtest://host/a%20b?c=d";
    {
        const Handler protocol("vtrtest");
        EXPECT_TRUE(LaunchBrowser(url, nullptr, SW_HIDE));
        EXPECT_EQ(Started(), protocol.Program() + url);
    }
    {
        const TestKey page(".html", HKEY_CLASSES_ROOT);
        page.SetText("", "vtrtestpage");
        const Handler pages("vtrtestpage");
        EXPECT_TRUE(LaunchBrowser(url, nullptr, SW_HIDE));
        EXPECT_EQ(Started(), pages.Program() + url);
    }
    EXPECT_TRUE(LaunchBrowser(url, nullptr, SW_HIDE));
    EXPECT_EQ(Started(),
              std::string("\"c:\\program files\\internet explorer\\iexplore.exe\" ") + url);
    EXPECT_FALSE(LaunchBrowser(nullptr, nullptr, SW_HIDE));
}

TEST(ShellLaunch, FileIsSelectedInItsFolder) {
    const CapturedLog log;
    OpenContainingFolder("C:\\windows\\win.ini", nullptr);
    EXPECT_TRUE(Started().ends_with("explorer.exe\" /select, C:\\windows\\win.ini"));
    OpenContainingFolder("C:\\windows\\a,b.txt", nullptr);
    EXPECT_TRUE(Started().ends_with("explorer.exe\" \"C:\\windows\\\""));

    for (const char* path : {static_cast<const char*>(nullptr), "a,b"})
        EXPECT_EQ(OpenContainingFolder(path, nullptr), nullptr);
    EXPECT_EQ(Started(), "nothing");
    EXPECT_EQ(log.Lines()[1], "Open Containing folder for C:\\windows\\a,b.txt");
}
