#ifndef VTRUTILS_BENCH_PEERS_STANDARDMAPINI_H
#define VTRUTILS_BENCH_PEERS_STANDARDMAPINI_H

#include "bench/support/MeasuringFolder.h"

#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

/// What one would write in an hour with the standard library: a file read at once and split in one
/// pass into maps of maps. No quotes, no parents, no comments behind values.

namespace bench {

/// Calls `pair(section, key, value)` for each line "key = value".
template <class OnPair>
void SplitIni(std::string_view text, OnPair pair) {
    const auto trim = [](std::string_view part) {
        const std::size_t first = part.find_first_not_of(" \t\r");
        return first == part.npos ? std::string_view()
                                  : part.substr(first, part.find_last_not_of(" \t\r") - first + 1);
    };
    std::string_view section;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trim(text.substr(0, end));
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
        const std::size_t equals = line.find('=');
        if (line.empty() || line.front() == ';')
            continue;
        if (line.front() == '[')
            section = line.substr(1, line.find(']') - 1);
        else if (equals != line.npos)
            pair(section, trim(line.substr(0, equals)), trim(line.substr(equals + 1)));
    }
}

/// Requires: the value fits.
inline void CopyValue(std::string_view value, char* buffer) {
    std::memcpy(buffer, value.data(), value.size());
    buffer[value.size()] = '\0';
}

template <class Map>
std::size_t CountPairs(const Map& sections) {
    std::size_t count = 0;
    for (const auto& [name, pairs] : sections)
        count += pairs.size();
    return count;
}

/// Nested hash maps, exact in case, so that nothing is spent on folding.
class HashMapIni {
public:
    static constexpr char name[] = "hash maps";

    bool Load(const char* path) {
        const std::string text = ReadWhole(path);
        std::string_view lastName;
        Pairs* last = nullptr;
        SplitIni(text, [&](std::string_view section, std::string_view key, std::string_view value) {
            if (last == nullptr || lastName.data() != section.data())
                last = &sections[std::string(section)];
            lastName = section;
            (*last)[std::string(key)] = value;
        });
        return !sections.empty();
    }

    bool Find(const char* section, const char* key, char* buffer) const {
        const auto found = sections.find(std::string_view(section));
        if (found == sections.end())
            return false;
        const auto pair = found->second.find(std::string_view(key));
        if (pair == found->second.end())
            return false;
        CopyValue(pair->second, buffer);
        return true;
    }

    std::size_t Count() const { return CountPairs(sections); }

private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Pairs = std::unordered_map<std::string, std::string, Hash, std::equal_to<>>;

    std::unordered_map<std::string, Pairs, Hash, std::equal_to<>> sections;
};

/// Nested ordered maps whose keys are in lower case: like ours, blind to case and sorted.
class MapIni {
public:
    static constexpr char name[] = "std::map";

    bool Load(const char* path) {
        const std::string text = ReadWhole(path);
        std::string_view lastName;
        Pairs* last = nullptr;
        SplitIni(text, [&](std::string_view section, std::string_view key, std::string_view value) {
            if (last == nullptr || lastName.data() != section.data())
                last = &sections[std::string(Folded(section).Text())];
            lastName = section;
            (*last)[std::string(Folded(key).Text())] = value;
        });
        return !sections.empty();
    }

    bool Find(const char* section, const char* key, char* buffer) const {
        const auto found = sections.find(Folded(section).Text());
        if (found == sections.end())
            return false;
        const auto pair = found->second.find(Folded(key).Text());
        if (pair == found->second.end())
            return false;
        CopyValue(pair->second, buffer);
        return true;
    }

    std::size_t Count() const { return CountPairs(sections); }

private:
    /// A name in lower case, without a block of memory of its own.
    class Folded {
    public:
        explicit Folded(std::string_view text) : length(text.size()) {
            for (std::size_t i = 0; i < length; ++i)
                folded[i] =
                    text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] | 0x20) : text[i];
        }
        std::string_view Text() const { return {folded, length}; }

    private:
        char folded[256];
        std::size_t length;
    };
    using Pairs = std::map<std::string, std::string, std::less<>>;

    std::map<std::string, Pairs, std::less<>> sections;
};

} // namespace bench

#endif
