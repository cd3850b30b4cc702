#include "utilities/online/ServiceHosts.h"

#include "utilities/base/ScopedLock.h"
#include "utilities/base/StoreCut.h"
#include "utilities/online/ServiceUrl.h"

#include <cstring>
#include <windows.h>

namespace {

constexpr char secure[] = "https://";
constexpr char plain[] = "http://";
constexpr std::size_t longestName = 253;

/// Needs no making and no freeing, so it is there from the process's first moment.
struct SettingLock {
    void Lock() { AcquireSRWLockExclusive(&lock); }
    void Unlock() { ReleaseSRWLockExclusive(&lock); }
    SRWLOCK lock = SRWLOCK_INIT;
};

struct Setting {
    SettingLock lock;
    vtr::ServiceUrl url;
};

Setting soundRepo{{}, {"https://freesound.org"}};
Setting musicLookup{{}, {"http://musicbrainz.org"}};

bool IsNameCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_';
}

bool IsPort(const char* text) {
    unsigned port = 0;
    const char* end = text;
    for (; *end >= '0' && *end <= '9' && port <= 0xFFFF; ++end)
        port = port * 10 + static_cast<unsigned>(*end - '0');
    return *end == '\0' && *text != '0' && port > 0 && port <= 0xFFFF;
}

/// "name" or "name:port".
bool IsServer(const char* text) {
    std::size_t length = 0;
    while (length <= longestName && IsNameCharacter(text[length]))
        ++length;
    if (length == 0 || length > longestName)
        return false;
    return text[length] == '\0' || (text[length] == ':' && IsPort(text + length + 1));
}

bool Set(Setting& setting, const char* host, const char* scheme) {
    if (_strnicmp(host, plain, sizeof plain - 1) == 0) {
        host += sizeof plain - 1;
        scheme = plain;
    }
    if (!IsServer(host))
        return false;
    const vtr::ScopedLock held(setting.lock);
    char* const text = setting.url.text;
    const std::size_t schemeLength = vtr::StoreCut(scheme, text, sizeof setting.url.text);
    vtr::StoreCut(host, text + schemeLength, sizeof setting.url.text - schemeLength);
    return true;
}

vtr::ServiceUrl Get(Setting& setting) {
    const vtr::ScopedLock held(setting.lock);
    return setting.url;
}

} // namespace

bool SetSoundRepoHost(const char* host) noexcept {
    return Set(soundRepo, host != nullptr ? host : "freesound.org", secure);
}

bool SetMusicLookupHost(const char* host) noexcept {
    return Set(musicLookup, host != nullptr ? host : "musicbrainz.org", plain);
}

vtr::ServiceUrl vtr::SoundRepoUrl() noexcept {
    return Get(soundRepo);
}

vtr::ServiceUrl vtr::MusicLookupUrl() noexcept {
    return Get(musicLookup);
}
