#include "utilities/online/FreeSoundOrg.h"

#include "utilities/base/StoreCut.h"
#include "utilities/online/FreeSoundRecord.h"
#include "utilities/online/JsonMembers.h"
#include "utilities/online/RecordBlock.h"
#include "utilities/online/ServiceUrl.h"
#include "utilities/text/html/HtmlText.h"
#include "vtrfutls/Log.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr char ownKey[] = "5f0c2e9a71b3d4486e2a90c1f7d35b8e0a4c6d21";
constexpr char fields[] =
    "id,name,username,url,created,tags,license,duration,bitdepth,bitrate,samplerate,filesize,"
    "channels,num_downloads,avg_rating,num_ratings,previews,analysis,description,";
constexpr char descriptors[] = "rhythm.bpm,tonal.key_key,tonal.key_scale";
constexpr std::size_t urlSize = 2048;

const char* SortText(_sbos_type sort) {
    switch (sort) {
    case sbosDuration:
        return "duration";
    case sbosCreated:
        return "created_asc";
    case sbosDownloads:
        return "downloads_asc";
    case sbosRating:
        return "rating_asc";
    default:
        return "";
    }
}

const char* LicenseFilter(_licType licence) {
    switch (licence) {
    case licCreativeCommons0:
        return "&filter=license:\"Creative Commons 0\"";
    case licAttribution:
        return "&filter=license:\"Attribution\"";
    case licAttributionNoncommercial:
        return "&filter=license:\"Attribution Noncommercial\"";
    default:
        return "";
    }
}

bool HasBadWords(_osrSndItem& record) {
    return HasBadWord(record.name) || HasBadWord(record.description) || HasBadWord(record.tags);
}

} // namespace

CFreeSoundOrg::CFreeSoundOrg(bool filter, MyInternetAccess* session) noexcept
    : COnlineSoundRepo(filter, session) {
    vtr::StoreCut(ownKey, apiKey, sizeof apiKey);
}

CFreeSoundOrg::CFreeSoundOrg(const CFreeSoundOrg& other) noexcept = default;
CFreeSoundOrg& CFreeSoundOrg::operator=(const CFreeSoundOrg& other) noexcept = default;
CFreeSoundOrg::~CFreeSoundOrg() = default;

bool CFreeSoundOrg::DoSearch(char* query, _sbos_type sort, _sbosdescasc_t /*order*/, int page,
                             int pageSize, _licType licence) {
    lastPageSize = pageSize;
    char url[urlSize];
    const int length = std::snprintf(
        url, sizeof url,
        "%s/apiv2/search/text/?query=%s&token=%s&fields=%s&descriptors=%s&page=%lld&page_size=%d"
        "&sort=%s%s",
        vtr::SoundRepoUrl().text, query != nullptr ? query : "", apiKey, fields, descriptors,
        page + 1LL, pageSize, SortText(sort), LicenseFilter(licence));
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof url)
        return StartOnlineRequest(url);
    ClearLastDownload();
    state = fsFailed;
    LogFmtA("Failed to start online request\r\n%s", url);
    return false;
}

bool CFreeSoundOrg::LoadDataFromJSONResult() {
    totalResults = vtr::Integer(vtr::Member(&root, "count"));
    const Json::Value* const results = vtr::Member(&root, "results");
    if (results == nullptr || !results->isArray()) {
        Log("CFreeSoundOrg::LoadDataFromJSONResult() - null results - returning false");
        return false;
    }
    const unsigned count = results->size();
    if (count == 0)
        return true;
    vtr::OwnedChars<_osrSndItem> made = vtr::MakeRecords(count);
    if (made == nullptr) {
        totalResults = 0;
        state = fsFailed;
        return false;
    }
    int kept = 0;
    for (const Json::Value& result : *results) {
        _osrSndItem& record = made.get()[kept];
        vtr::ReadSound(result, record);
        if (filterBadWords && HasBadWords(record))
            std::memset(&record, 0, sizeof record);
        else
            ++kept;
    }
    records = made.release();
    numReturned = kept;
    return true;
}
