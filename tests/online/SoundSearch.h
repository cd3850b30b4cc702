#ifndef VTRUTILS_TESTS_ONLINE_SOUNDSEARCH_H
#define VTRUTILS_TESTS_ONLINE_SOUNDSEARCH_H

#include "tests/online/OnlineServices.h"
#include "tests/support/CapturedLog.h"
#include "utilities/online/FreeSoundOrg.h"
#include "vtrfutls/FileObj.h"

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

class SoundSearch : public CFreeSoundOrg {
public:
    explicit SoundSearch(OnlineServices& services, bool filter = false)
        : CFreeSoundOrg(filter, &services.access) {}
    using CFreeSoundOrg::ClearLastDownload;

    bool Start(std::string query) {
        return DoSearch(query.data(), sbosScore, sbosDescending, /*page=*/0, /*pageSize=*/10,
                        licSamplingPlus);
    }

    /// To the end of the transfer, well or not.
    _tFS_Q_State Finish() {
        while (file != nullptr && file->IsDownloading())
            Sleep(1);
        return GetState();
    }

    _tFS_Q_State Run(const std::string& query) { return Start(query) ? Finish() : GetState(); }

    /// What comes of a whole reply.
    _tFS_Q_State Read(const std::string& reply) {
        ServiceControl("reply/own", reply);
        return Run("reply-own");
    }
};

#endif
