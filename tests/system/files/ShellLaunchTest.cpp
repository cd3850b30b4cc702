#include "utilities/system/files/FileFunctions.h"

#include "tests/support/CapturedLog.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/TestKey.h"

#include <gtest/gtest.h>
#include <shellapi.h>

namespace {

std::wstring asked; ///< what the shell was asked to do, a line a call
int refusals = 0;   ///< how often it refuses next

HINSTANCE WINAPI Execute(HWND, const wchar_t* operation, const wchar_t* file,
                         const wchar_t* parameters, const wchar_t*, INT) {
    const std::wstring given = parameters != nullptr ? std::wstring(L" ") + parameters : L"";
    asked += std::wstring(operation) + L" " + file + given + L"\n";
    return reinterpret_cast<HINSTANCE>(refusals-- > 0 ? 32ll : 33ll);
}

class ShellLaunch : public testing::Test {
protected:
    ShellLaunch() { asked.clear(), refusals = 0; }

    const ImportPatch patch{GetModuleHandleA("vtrutils.dll"), "SHELL32.dll", "ShellExecuteW",
                            reinterpret_cast<void*>(&Execute)};
};

} // namespace

TEST_F(ShellLaunch, BrowserIsWhatIsRegisteredForTheUrlOrForPages) {
    const std::wstring own = _wpgmptr, url = L"vtrtest://host/a%20b?c=d";
    const std::wstring byUrl = L"open " + url + L"\n",
                       byPages = L"open " + own + L" " + url + L"\n",
                       known = L"open c:\\program files\\internet explorer\\iexplore.exe " + url +
                               L"\n";
    const TestKey page(".html", HKEY_CLASSES_ROOT);
    const TestKey kind("vtrtestpage", HKEY_CLASSES_ROOT);
    const TestKey command("vtrtestpage\\shell\\open\\command", HKEY_CLASSES_ROOT);
    command.SetText("", "\"" + std::string(_pgmptr) + "\" %1");
    const struct {
        const char *name, *pages; ///< the class of pages
        int refused;
        bool good;
        std::wstring asked;
    } rows[] = {
        {"knows the URL", "vtrtestpage", 0, true, byUrl},
        {"has a program for pages", "vtrtestpage", 1, true, byUrl + byPages},
        {"whose program does not start", "vtrtestpage", 2, true, byUrl + byPages + known},
        {"knows nothing", "none", 1, true, byUrl + known},
        {"has nothing", "none", 2, false, byUrl + known},
    };
    for (const auto& row : rows) {
        page.SetText("", row.pages);
        asked.clear();
        refusals = row.refused;
        EXPECT_EQ(LaunchBrowser("vtrtest://host/a%20b?c=d", nullptr, SW_HIDE), row.good)
            << row.name;
        EXPECT_EQ(asked, row.asked) << row.name;
    }
    EXPECT_FALSE(LaunchBrowser(nullptr, nullptr, SW_HIDE));
}

TEST_F(ShellLaunch, FileIsSelectedInItsFolder) {
    const CapturedLog log;
    for (const char* path : {"C:\\windows\\win.ini", "C:\\windows\\a,b.txt"})
        EXPECT_NE(OpenContainingFolder(path, nullptr), nullptr);
    for (const char* path : {static_cast<const char*>(nullptr), "a,b"})
        EXPECT_EQ(OpenContainingFolder(path, nullptr), nullptr);
    EXPECT_EQ(asked, L"open explorer.exe /select, C:\\windows\\win.ini\nopen C:\\windows\\\n");
    EXPECT_EQ(log.Lines()[1], "Open Containing folder for C:\\windows\\a,b.txt");
}
