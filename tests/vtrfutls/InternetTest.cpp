#include "common/Handles.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/ProcessUse.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestFolder.h"
#include "tests/support/ThreadTeam.h"
#include "vtrfutls/FileObj.h"

#include <cstring>
#include <gtest/gtest.h>
#include <vector>
#include <wininet.h>

namespace {

const std::string body(1000, 'b');

std::string Url(const std::string& port, const std::string& target, bool secure = false) {
    return (secure ? "https://" : "http://") + ServiceAddress(port) + target;
}

/// False while anybody has the file open.
bool IsFree(const std::string& file) {
    return static_cast<bool>(vtr::FileHandle(CreateFileA(
        file.c_str(), GENERIC_READ, /*dwShareMode=*/0, nullptr, OPEN_EXISTING, 0, nullptr)));
}

class Internet : public testing::Test {
protected:
    Internet() {
        std::memcpy(&session, &access, sizeof session);
        ServiceControl("reset");
        ServiceControl("reply/own", body);
    }

    bool Start(CInternetDownload& download, const std::string& url) {
        return download.StartDownload(session, url.c_str(), file.c_str(), 0);
    }

    bool Fetch(CInternetDownload& download, const std::string& url) {
        EXPECT_TRUE(Start(download, url));
        while (download.IsDownloading())
            Sleep(1);
        EXPECT_TRUE(IsFree(file));
        return download.WasSuccessful();
    }

    const TestFolder folder;
    const std::string file = folder.File("reply");
    MyInternetAccess access{"test", /*throughProxy=*/false};
    void* session = nullptr;
};

TEST_F(Internet, SucceedsWithWholeRepliesOnly) {
    const TrustedAuthority trusted;
    const struct {
        const char* port;
        const char* target;
        bool good;
        std::size_t received;
        std::size_t total;
    } rows[] = {
        {"plain", "/none", true, 1000, 1000},
        {"refused", "/", false, 0, 0},
        {"plain", "/fault-close-before", false, 0, 0},
        {"plain", "/fault-close-in-head", false, 0, 0},
        {"plain", "/fault-close-after-head", false, 0, 1000},
        {"plain", "/fault-cut", false, 500, 1000},
        {"plain", "/fault-long-length", false, 1000, 1010},
        {"plain", "/fault-short-length", true, 990, 990},
        {"plain", "/fault-no-length", true, 1000, 0},
        {"plain", "/fault-chunked", true, 1000, 0},
        {"plain", "/fault-empty", true, 0, 0},
        {"plain", "/fault-404", false, 0, 0},
        {"plain", "/fault-503", false, 0, 0},
        {"plain", "/fault-redirect/", true, 1000, 1000},
        {"plain", "/fault-redirect-loop/", false, 0, 0},
        {"tls", "/none", true, 1000, 1000},
        {"tls", "/fault-chunked", true, 1000, 0},
        {"tls", "/fault-cut", false, 500, 1000},
        {"tls", "/fault-redirect/", true, 1000, 1000},
        {"tls", "/fault-redirect-plain/", false, 0, 0},
        {"tls-unknown", "/none", false, 0, 0},
        {"tls-name", "/none", false, 0, 0},
        {"tls-expired", "/none", false, 0, 0},
    };
    CInternetDownload download;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.port) + row.target);
        const std::string url = Url(row.port, row.target, std::strncmp(row.port, "tls", 3) == 0);
        EXPECT_EQ(Fetch(download, url + "?reply-own"), row.good);
        EXPECT_EQ(download.BytesReceived(), row.received);
        EXPECT_EQ(download.TotalBytes(), row.total);
        EXPECT_EQ(ReadBytes(file), body.substr(0, row.received));
    }
    EXPECT_EQ(ServiceControl("requests").find("plain /redirected"),
              ServiceControl("requests").rfind("plain /redirected"))
        << "nothing secure was asked for in plain text";
}

TEST_F(Internet, SendsAUrlWithinTheCharactersOfUrls) {
    const std::string start = Url("plain", "/");
    const std::string longest = start + std::string(2083 - start.size(), 'x');
    CInternetDownload download;
    for (const std::string& url : {start + "a b\"\xE9%41?q=[\x7F]\r\nX: 1#frag", longest,
                                   Url("plain", "?q"), "HTTP" + Url("plain", "#frag").substr(4)})
        Fetch(download, url);
    std::string sent = ServiceControl("requests");
    for (const std::string& target : std::vector<std::string>{
             "/a%20b\"%E9%41?q=[%7F]%0D%0AX:%201", longest.substr(start.size() - 1), "/?q", "/"}) {
        const std::string line = " plain " + target + "\n";
        const std::size_t at = sent.find(line);
        EXPECT_NE(at, sent.npos) << target << " is not in\n" << sent;
        sent.erase(0, at == sent.npos ? 0 : at + line.size());
    }
    for (const std::string& url : std::vector<std::string>{
             longest + "x", "", "ftp://localhost/", "localhost", "http://", "http:///a",
             "http://a:0/", "http://a:65536/", "http://a:1b/", "http://me@a/", "http://a b/",
             "http://" + std::string(256, 'a') + "/"})
        EXPECT_FALSE(Start(download, url)) << url;
    const std::string good = Url("plain", "/");
    EXPECT_FALSE(download.StartDownload(nullptr, good.c_str(), file.c_str(), 0));
    EXPECT_FALSE(download.StartDownload(session, nullptr, file.c_str(), 0));
    EXPECT_FALSE(download.StartDownload(session, good.c_str(), nullptr, 0));
    for (const std::string& path :
         std::vector<std::string>{"", folder.Path(), folder.Path() + "none\\file"})
        EXPECT_FALSE(download.StartDownload(session, good.c_str(), path.c_str(), 0)) << path;
    AllocationFault fault("vtrfutls.dll");
    EXPECT_GE(fault.ForEachAllocation([&](unsigned) {
        CInternetDownload starved;
        Start(starved, good);
    }),
              2u);
}

TEST_F(Internet, TerminatesWhateverItWaitsFor) {
    const struct {
        const char* port;
        const char* target;
        bool secure;
        bool held;
    } rows[] = {
        {"full", "/", false, false},
        {"silent", "/", false, true},
        {"silent", "/", true, true},
        {"plain", "/fault-hold-head?reply-own", false, true},
        {"plain", "/fault-hold?reply-own", false, true},
        {"plain", "/fault-slow?reply-own", false, false},
        {"plain", "/fault-large", false, false},
    };
    CInternetDownload download;
    Fetch(download, Url("plain", "/"));
    download.TerminateDownload();
    const unsigned threads = Threads();
    const std::size_t handle = NextHandle();
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.port) + row.target + (row.secure ? " secure" : ""));
        ASSERT_TRUE(Start(download, Url(row.port, row.target, row.secure)));
        if (row.held)
            ServiceControl("held/1");
        else
            Sleep(50); // long enough to connect; it must end whatever it has come to
        EXPECT_TRUE(download.IsDownloading());
        EXPECT_FALSE(Start(download, Url("plain", "/"))) << "one at a time";
        RunTeam("terminating", 2, [&](unsigned) {
            const ULONGLONG begin = GetTickCount64();
            download.TerminateDownload();
            EXPECT_FALSE(download.IsDownloading());
            EXPECT_LT(GetTickCount64() - begin, 1000u);
        });
        EXPECT_FALSE(download.WasSuccessful());
        EXPECT_TRUE(IsFree(file));
    }
    // Less than one each time: the system has some of its own.
    EXPECT_LE(Threads(), threads + 4);
    EXPECT_LE(NextHandle(), handle + 16);
    EXPECT_TRUE(Fetch(download, Url("plain", "/none?reply-own"))) << "it can be used again";
}

TEST_F(Internet, LeavesNothingWhenDestroyedInMidTransfer) {
    ExpectNoGrowth(
        "destroyed",
        [&](int number) {
            CFileObj object;
            const char* target = number % 2 == 0 ? "/fault-hold?reply-own" : "/fault-large";
            for (int again = 0; again < 2; ++again)
                ASSERT_NE(
                    object.OpenFromInternet(&access, Url("plain", target).c_str(), file.c_str()),
                    0);
            if (number % 4 == 0)
                ServiceControl("held/1");
        },
        [&] { EXPECT_TRUE(IsFree(file)); });
}

HANDLE nameServerAsked = nullptr;
HANDLE nameServerAnswers = nullptr;

BOOL WINAPI WaitForNameServer(HINTERNET, LPCSTR, DWORD, LPVOID, DWORD) {
    SetEvent(nameServerAsked);
    WaitForSingleObject(nameServerAnswers, INFINITE);
    return FALSE;
}

/// Nothing ends the wait for the address of a server, so the thread is left to it.
TEST_F(Internet, LeavesAThreadThatCannotBeEnded) {
    const Watchdog watchdog("the thread that was left");
    const vtr::KernelHandle answers(CreateEventA(nullptr, /*bManualReset=*/TRUE, FALSE, nullptr));
    const vtr::KernelHandle asked(CreateEventA(nullptr, /*bManualReset=*/TRUE, FALSE, nullptr));
    nameServerAnswers = answers.Get();
    nameServerAsked = asked.Get();
    const ImportPatch patch(GetModuleHandleA("vtrfutls.dll"), "wininet.dll", "HttpSendRequestA",
                            reinterpret_cast<void*>(&WaitForNameServer));
    const unsigned threads = Threads();
    {
        CInternetDownload download;
        ASSERT_TRUE(Start(download, Url("plain", "/")));
        WaitForSingleObject(asked.Get(), INFINITE);
        download.TerminateDownload();
        EXPECT_FALSE(download.IsDownloading());
        EXPECT_TRUE(IsFree(file));
    }
    SetEvent(answers.Get());
    while (Threads() > threads)
        Sleep(1);
}

TEST_F(Internet, TellsProgressToOtherThreads) {
    CInternetDownload download;
    ASSERT_TRUE(Start(download, Url("plain", "/fault-large")));
    const std::size_t used = HeapUse();
    RunTeam("progress", 2, [&](unsigned) {
        unsigned long long last = 0;
        while (download.IsDownloading()) {
            const unsigned long long received = download.BytesReceived();
            EXPECT_GE(received, last);
            EXPECT_TRUE(download.TotalBytes() == 100u << 20 || received == 0);
            last = received;
            Sleep(1);
        }
        EXPECT_LT(HeapUse(), used + (1u << 20));
    });
    EXPECT_TRUE(download.WasSuccessful());
    EXPECT_EQ(download.BytesReceived(), 100u << 20);
}

TEST_F(Internet, FileIsReadOnceItIsWhole) {
    const std::string url = Url("plain", "/none?reply-own");
    const std::string held = Url("plain", "/fault-hold?reply-own");
    auto* object = new CFileObj;
    char bytes[2000];
    EXPECT_FALSE(object->IsOpen() || object->CompleteDownload(true) ||
                 object->CompleteDownload(false));
    EXPECT_STREQ(object->LocalPath(), "");
    EXPECT_EQ(object->OpenFromInternet(nullptr, url.c_str(), file.c_str()), 0);
    for (int round = 0; round < 2; ++round) {
        // The second time, a transfer under way is discarded first, and the path is its own.
        ASSERT_NE(object->OpenFromInternet(&access, url.c_str(),
                                           round == 0 ? file.c_str() : object->LocalPath()),
                  0);
        while (object->IsDownloading())
            Sleep(1);
        EXPECT_TRUE(object->IsOpen() && object->DownloadWasSuccessful());
        EXPECT_EQ(object->Size(), -1);
        EXPECT_EQ(object->Read(bytes, 1), -1);
        ASSERT_NE(object->CompleteDownload(false), 0);
        EXPECT_EQ(object->Size(), 1000);
        EXPECT_EQ(object->Read(bytes, 300), 300);
        ASSERT_NE(object->CompleteDownload(false), 0) << "where it was";
        EXPECT_EQ(object->Read(bytes + 300, 1700), 700);
        EXPECT_EQ(std::string(bytes, 1000), body);
        EXPECT_EQ(object->Read(bytes, 1), 0);
        EXPECT_EQ(object->Read(nullptr, 1), -1);
        EXPECT_EQ(object->Read(bytes, -1), -1);
        EXPECT_TRUE(object->CompleteDownload(true) && !object->DownloadWasSuccessful());
        ASSERT_NE(object->OpenFromInternet(&access, held.c_str(), file.c_str()), 0);
        ServiceControl("held/1");
    }
    while (object->BytesReceived() < 500)
        Sleep(1);
    EXPECT_EQ(object->CompleteDownload(false), 0) << "early";
    EXPECT_NE(object->CompleteDownload(true), 0);
    EXPECT_TRUE(object->IsOpen() && IsFree(file));
    EXPECT_EQ(ReadBytes(object->LocalPath()).size(), 500u);
    EXPECT_EQ(object->AddRef(), 2u);
    CFileObj* same = object;
    DeleteRefObject(&same);
    EXPECT_EQ(same, nullptr);
    object->Close();
    EXPECT_FALSE(object->IsOpen() || object->CompleteDownload(true));
    EXPECT_EQ(folder.Listing(), "reply");
    DeleteRefObject(&object);
    DeleteRefObject(&object);
    DeleteRefObject(nullptr);
}

TEST(InternetAccess, IsOpenWithAnyNameAndAnyWay) {
    const MyInternetAccess unnamed(nullptr);
    const MyInternetAccess direct("caf\xE9", /*throughProxy=*/false);
    EXPECT_TRUE(unnamed.IsOpen() && direct.IsOpen());
    EXPECT_TRUE(IsInternetConnectionAvailable());
}

} // namespace
