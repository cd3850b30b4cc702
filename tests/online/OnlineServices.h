#ifndef VTRUTILS_TESTS_ONLINE_ONLINESERVICES_H
#define VTRUTILS_TESTS_ONLINE_ONLINESERVICES_H

#include "tests/support/RecordedServices.h"
#include "tests/support/TestFolder.h"
#include "utilities/online/ServiceHosts.h"
#include "vtrfutls/InternetAccess.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>
#include <windows.h>

/// What both services ask meanwhile: the recorded ones. Their downloads get a folder of their own.
class OnlineServices {
public:
    OnlineServices() {
        char before[MAX_PATH];
        GetEnvironmentVariableA("TMP", before, sizeof before);
        folderBefore = before;
        SetEnvironmentVariableA("TMP", folder.Path().c_str());
        ServiceControl("reset");
        Ask("plain");
    }
    OnlineServices(const OnlineServices&) = delete;
    OnlineServices& operator=(const OnlineServices&) = delete;
    ~OnlineServices() {
        EXPECT_EQ(folder.Listing(), "");
        EXPECT_TRUE(SetSoundRepoHost(nullptr) && SetMusicLookupHost(nullptr));
        SetEnvironmentVariableA("TMP", folderBefore.c_str());
    }

    /// For sounds a port whose name begins with "tls" is asked for them over TLS.
    static void Ask(const std::string& port) {
        const std::string address = ServiceAddress(port);
        EXPECT_TRUE(
            SetSoundRepoHost(((port.rfind("tls", 0) == 0 ? "" : "http://") + address).c_str()));
        EXPECT_TRUE(SetMusicLookupHost(address.c_str()));
    }

    struct Request {
        double seconds;
        std::string target;
    };
    /// What reached the server.
    static std::vector<Request> Requests() {
        std::istringstream lines(ServiceControl("requests"));
        std::vector<Request> requests;
        Request next;
        for (std::string port; lines >> next.seconds >> port >> next.target;)
            requests.push_back(next);
        return requests;
    }

    TestFolder folder;
    MyInternetAccess access{"online_test", /*throughProxy=*/false};

private:
    std::string folderBefore;
};

inline std::string Repeated(const std::string& part, int times) {
    std::string text;
    while (times-- > 0)
        text += part;
    return text;
}

#endif
