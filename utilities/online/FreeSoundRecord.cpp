#include "utilities/online/FreeSoundRecord.h"

#include "utilities/online/JsonMembers.h"
#include "vtrfutls/Log.h"

#include <cstring>
#include <iterator>

namespace {

using vtr::Float;
using vtr::Integer;
using vtr::Member;
using vtr::StoreText;

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

void ReadAnalysis(const Json::Value* analysis, _osrSndItem& record) {
    record.bpm = Float(Member(Member(analysis, "rhythm"), "bpm"));
    const Json::Value* const tonal = Member(analysis, "tonal");
    StoreText(Member(tonal, "key_key"), record.key);
    StoreText(Member(tonal, "key_scale"), record.scale);
}

void ReadTags(const Json::Value* list, char (&tags)[256]) {
    if (!list->isArray())
        return;
    std::size_t length = 0;
    // Reaching an element by its number would take a search.
    for (auto tag = list->begin(); tag != list->end() && length + 2 < sizeof tags; ++tag) {
        if (tag != list->begin())
            tags[length++] = ',';
        length += StoreText(&*tag, tags + length, sizeof tags - length);
    }
}

/// The type of the licence whose text was stored.
void RecognizeLicense(_osrSndItem& record) {
    for (const KnownLicense& known : knownLicenses) {
        if (std::strstr(record.licenseURL, known.part) != nullptr) {
            record.licenseType = known.type;
            return;
        }
    }
    record.licenseType = licNotRecognized;
    LogFmtA("Unanticipated license type <%s>", record.licenseURL);
}

struct KnownMember {
    std::string_view name;
    void (*read)(const Json::Value* value, _osrSndItem& record);
};

// Services count beyond the signed numbers, so identifiers may too. In the order of the names, as
// the members of an object are: looking up each of them would take as long again as all the rest.
constexpr KnownMember knownMembers[] = {
    {"analysis", ReadAnalysis},
    {"avg_rating", [](auto* value, auto& record) { record.avgRating = Float(value); }},
    {"bitdepth", [](auto* value, auto& record) { record.bitDepth = Integer(value); }},
    {"channels", [](auto* value, auto& record) { record.channels = Integer(value); }},
    {"created", [](auto* value, auto& record) { StoreText(value, record.created); }},
    {"description", [](auto* value, auto& record) { StoreText(value, record.description); }},
    {"duration", [](auto* value, auto& record) { record.duration = Float(value); }},
    {"id",
     [](auto* value, auto& record) {
         record.soundID = static_cast<unsigned>(vtr::WholeNumber(value, INT_MIN, UINT_MAX));
     }},
    {"license", [](auto* value, auto& record) { StoreText(value, record.licenseURL, 512); }},
    {"name", [](auto* value, auto& record) { StoreText(value, record.name); }},
    {"num_downloads", [](auto* value, auto& record) { record.numDownloads = Integer(value); }},
    {"num_ratings", [](auto* value, auto& record) { record.numRatings = Integer(value); }},
    {"previews",
     [](auto* value, auto& record) {
         StoreText(Member(value, "preview-hq-ogg"), record.previewURL);
     }},
    {"sampleRate", [](auto* value, auto& record) { record.sampleRate = Integer(value); }},
    {"tags", [](auto* value, auto& record) { ReadTags(value, record.tags); }},
    {"url", [](auto* value, auto& record) { StoreText(value, record.url); }},
    {"username", [](auto* value, auto& record) { StoreText(value, record.userName); }},
};

} // namespace

void vtr::ReadSound(const Json::Value& result, _osrSndItem& record) {
    const KnownMember* known = knownMembers;
    const auto end = result.end();
    for (auto member = result.begin(); result.isObject() && member != end; ++member) {
        const char* nameEnd = nullptr;
        const char* const begin = member.memberName(&nameEnd);
        const std::string_view name(begin, static_cast<std::size_t>(nameEnd - begin));
        while (known != std::end(knownMembers) && known->name < name)
            ++known;
        if (known == std::end(knownMembers))
            break;
        if (known->name == name)
            known->read(&*member, record);
    }
    RecognizeLicense(record);
}
