#ifndef VTRUTILS_ONLINE_FREESOUNDORG_H
#define VTRUTILS_ONLINE_FREESOUNDORG_H

#include "utilities/Export.h"
#include "utilities/online/OnlineSoundRepo.h"

/// Searches the sounds of the public service "freesound.org", or of the server that
/// `SetSoundRepoHost` names.
/// Thread-safety: one thread at a time.
class VTRUTILS_API CFreeSoundOrg : public COnlineSoundRepo {
public:
    /// With the library's own key for the service.
    CFreeSoundOrg(bool filterBadWords, MyInternetAccess* access) noexcept;
    CFreeSoundOrg(const CFreeSoundOrg& other) noexcept;
    CFreeSoundOrg& operator=(const CFreeSoundOrg& other) noexcept;
    ~CFreeSoundOrg() override;

    /// The words for the order are "", "duration", "created_asc", "downloads_asc" and "rating_asc",
    /// for `sort` from 0 to 4; any other value counts as 0.
    bool DoSearch(char* query, _sbos_type sort, _sbosdescasc_t order, int page, int pageSize,
                  _licType licence) override;

protected:
    /// False, without records, if the reply has no list "results", and with the state `fsFailed` if
    /// memory runs out.
    bool LoadDataFromJSONResult() override;
};

#endif
