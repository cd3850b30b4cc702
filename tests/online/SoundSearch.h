#ifndef VTRUTILS_TESTS_ONLINE_SOUNDSEARCH_H
#define VTRUTILS_TESTS_ONLINE_SOUNDSEARCH_H

#include "tests/support/CapturedLog.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestFolder.h"
#include "utilities/online/FreeSoundOrg.h"
#include "utilities/online/ServiceHosts.h"
#include "vtrfutls/FileObj.h"
#include "vtrfutls/InternetAccess.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <windows.h>

inline constexpr char noResults[] =
    "CFreeSoundOrg::LoadDataFromJSONResult() - null results - returning false|";
inline constexpr char notJson[] =
    "COnlineSoundRepo::ProcessResultsToJSON() - Failed to parse JSON reply!|";

/// The lines that sound repositories log, each with "|" after it.
inline std::string OwnLines(const CapturedLog& log) {
    std::string lines;
    for (const std::string& line : log.Lines()) {
        for (const char* own :
             {"COnlineSoundRepo::", "CFreeSoundOrg::", "Failed to start", "Unantic"})
            lines += line.rfind(own, 0) == 0 ? line + "|" : "";
    }
    return lines;
}

/// Tells when its transfer has ended, well or not.
class WatchedRepo : public CFreeSoundOrg {
public:
    using CFreeSoundOrg::CFreeSoundOrg;
    bool Transfers() const { return file != nullptr && file->IsDownloading(); }
};

/// A repository that asks the recorded services and has a folder of its own for temporary files.
class SoundSearch {
public:
    explicit SoundSearch(const std::string& host = "http://" + ServiceAddress("plain")) {
        char before[MAX_PATH];
        GetEnvironmentVariableA("TMP", before, sizeof before);
        folderBefore = before;
        SetEnvironmentVariableA("TMP", folder.Path().c_str());
        EXPECT_TRUE(SetSoundRepoHost(host.c_str()));
        ServiceControl("reset");
        Renew(/*filter=*/false);
    }
    SoundSearch(const SoundSearch&) = delete;
    SoundSearch& operator=(const SoundSearch&) = delete;
    ~SoundSearch() {
        repo.reset();
        EXPECT_EQ(folder.Listing(), "");
        SetSoundRepoHost(nullptr);
        SetEnvironmentVariableA("TMP", folderBefore.c_str());
    }

    void Renew(bool filter) { repo = std::make_unique<WatchedRepo>(filter, &access); }

    bool Start(char* query) {
        return repo->DoSearch(query, sbosScore, sbosDescending, /*page=*/0, /*pageSize=*/10,
                              licSamplingPlus);
    }

    /// To the end of the transfer.
    _tFS_Q_State Finish() {
        while (repo->Transfers())
            Sleep(1);
        return repo->GetState();
    }

    _tFS_Q_State Run(std::string query) {
        return Start(query.data()) ? Finish() : repo->GetState();
    }

    /// What comes of a whole reply.
    _tFS_Q_State Read(const std::string& reply) {
        ServiceControl("reply/own", reply);
        return Run("reply-own");
    }

    TestFolder folder;
    MyInternetAccess access{"online_test", /*throughProxy=*/false};
    std::unique_ptr<WatchedRepo> repo;

private:
    std::string folderBefore;
};

#endif
