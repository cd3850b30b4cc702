#include "gallery/pages/online/SoundSearch.h"

#include "gallery/pages/online/WebText.h"
#include "gallery/text/Language.h"
#include "gallery/text/Text.h"

namespace gallery {

namespace {

constexpr ULONGLONG patience = 20000; ///< milliseconds

constexpr _licType licences[] = {licNotRecognized, licCreativeCommons0, licAttribution,
                                 licAttributionNoncommercial};

std::wstring LicenceName(_licType type) {
    constexpr struct {
        _licType type;
        const char* key;
    } names[] = {{licCreativeCommons0, "LicenceZero"},
                 {licAttribution, "LicenceAttribution"},
                 {licAttributionNoncommercial, "LicenceNoncommercial"},
                 {licSamplingPlus, "LicenceSampling"}};
    for (const auto& name : names) {
        if (name.type == type)
            return Text(name.key);
    }
    return Text("LicenceOther");
}

void AddFact(std::wstring& details, const char* key, const std::wstring& value) {
    if (!value.empty())
        details += Text(key, {value}) + L"\r\n";
}

/// The service writes "2009-01-03T10:00:07.000000".
std::wstring DayOf(const char* created) {
    const std::wstring text = LineOfService(created);
    return text.substr(0, text.find(L'T'));
}

std::wstring DetailsOf(const _osrSndItem& item) {
    std::wstring details;
    AddFact(details, "SoundCreated", DayOf(item.created));
    if (item.numDownloads > 0)
        AddFact(details, "SoundDownloads", std::to_wstring(item.numDownloads));
    if (item.numRatings > 0)
        details += Text("SoundRating", {Format(L"%.1f", static_cast<double>(item.avgRating)),
                                        std::to_wstring(item.numRatings)}) +
                   L"\r\n";
    if (item.bpm > 0)
        AddFact(details, "SoundTempo", Format(L"%.0f", static_cast<double>(item.bpm)));
    if (item.key[0] != '\0')
        AddFact(details, "SoundKey", LineOfService(item.key) + L" " + LineOfService(item.scale));
    return LinesOfService(item.description) + L"\r\n" + details;
}

Sound MadeOf(const _osrSndItem& item) {
    Sound sound;
    sound.name = LineOfService(item.name);
    sound.user = LineOfService(item.userName);
    sound.length = LengthText(static_cast<long>(item.duration * 1000));
    sound.rate = item.sampleRate > 0 ? Text("SoundRate", {std::to_wstring(item.sampleRate)}) : L"-";
    sound.licence = LicenceName(item.licenseType);
    sound.tags = LineOfService(item.tags);
    sound.details = DetailsOf(item);
    sound.page = LineOfService(item.url);
    sound.preview = LineOfService(item.previewURL);
    sound.licencePage = LineOfService(item.licenseURL);
    return sound;
}

} // namespace

SoundSearch::State SoundSearch::Start(const SoundQuestion& question, int newPage) {
    Cancel();
    page = newPage;
    repository = std::make_unique<CFreeSoundOrg>(question.withoutOffence, &access);
    std::string value = AddressValue(question.text);
    const bool started =
        repository->DoSearch(value.data(), static_cast<_sbos_type>(question.sort), sbosDescending,
                             page, pageSize, licences[question.licence]);
    begun = GetTickCount64();
    return state = started ? State::running : State::notStarted;
}

SoundSearch::State SoundSearch::Poll() {
    if (state != State::running)
        return state;
    switch (repository->GetState()) {
    case fsReplyReceived:
        TakeSounds();
        return state = State::found;
    case fsFailed:
        return state = State::notReadable;
    default:
        if (GetTickCount64() - begun < patience)
            return state;
        Cancel();
        return state = State::noAnswer;
    }
}

void SoundSearch::Cancel() {
    repository.reset();
    state = State::idle;
    sounds.clear();
    total = 0;
}

void SoundSearch::UpdateTexts() {
    if (state == State::found)
        TakeSounds();
}

void SoundSearch::TakeSounds() {
    sounds.clear();
    total = repository->NumTotalResults();
    auto item = std::make_unique<_osrSndItem>();
    for (int i = 0; repository->GetItem(i, *item); ++i)
        sounds.push_back(MadeOf(*item));
}

} // namespace gallery
