#include "utilities/online/FreeSoundRecord.h"

#include "utilities/online/JsonMembers.h"
#include "vtrfutls/Log.h"

#include <cstring>

namespace {

struct KnownLicense {
    const char* part; ///< of its URL
    _licType type;
};

/// The first that fits counts.
constexpr KnownLicense knownLicenses[] = {
    {"creativecommons.org/publicdomain/zero/", licCreativeCommons0},
    {"creativecommons.org/licenses/by/", licAttribution},
    {"creativecommons.org/licenses/by-nc/", licAttributionNoncommercial},
    {"creativecommons.org/licenses/sampling+/", licSamplingPlus},
};

void ReadTags(const Json::Value& result, char (&tags)[256]) {
    const Json::Value* const list = vtr::ArrayMember(&result, "tags");
    if (list == nullptr)
        return;
    std::size_t length = 0;
    // A list in this order: reaching an element by its number takes a search.
    for (auto tag = list->begin(); tag != list->end() && length + 2 < sizeof tags; ++tag) {
        if (tag != list->begin())
            tags[length++] = ',';
        length += vtr::StoreCut(vtr::Text(&*tag), tags + length, sizeof tags - length);
    }
}

void ReadLicense(const Json::Value& result, _osrSndItem& record) {
    char text[512];
    vtr::StoreMember(&result, "license", text);
    vtr::StoreCut(text, record.licenseURL, sizeof record.licenseURL);
    for (const KnownLicense& known : knownLicenses) {
        if (std::strstr(text, known.part) != nullptr) {
            record.licenseType = known.type;
            return;
        }
    }
    record.licenseType = licNotRecognized;
    LogFmtA("Unanticipated license type <%s>", text);
}

} // namespace

void vtr::ReadSound(const Json::Value& result, _osrSndItem& record) {
    // Services count beyond the signed numbers.
    record.soundID = static_cast<unsigned>(WholeNumber(&result, "id", INT_MIN, UINT_MAX));
    StoreMember(&result, "url", record.url);
    StoreMember(&result, "username", record.userName);
    StoreMember(&result, "name", record.name);
    StoreMember(&result, "description", record.description);
    StoreMember(&result, "created", record.created);
    ReadTags(result, record.tags);
    ReadLicense(result, record);
    record.channels = Integer(&result, "channels");
    record.bitDepth = Integer(&result, "bitdepth");
    record.sampleRate = Integer(&result, "sampleRate");
    record.duration = Float(&result, "duration");
    const Json::Value* const analysis = ObjectMember(&result, "analysis");
    record.bpm = Float(ObjectMember(analysis, "rhythm"), "bpm");
    const Json::Value* const tonal = ObjectMember(analysis, "tonal");
    StoreMember(tonal, "key_key", record.key);
    StoreMember(tonal, "key_scale", record.scale);
    record.numDownloads = Integer(&result, "num_downloads");
    record.numRatings = Integer(&result, "num_ratings");
    record.avgRating = Float(&result, "avg_rating");
    StoreMember(ObjectMember(&result, "previews"), "preview-hq-ogg", record.previewURL);
}
