#ifndef VTRUTILS_BENCH_PEERS_STANDARDMAPINI_H
#define VTRUTILS_BENCH_PEERS_STANDARDMAPINI_H

#include "bench/support/MeasuringFolder.h"

#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

/// What anyone would write in an hour with the standard library: a file read at once and split in
/// one pass into maps of maps. No quotes, no parents, no comments after values.

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

/// A document as `Sections`, a map from names to maps of keys and values, which are stored and
/// sought as `Name` gives them.
template <class Sections, class Name>
class MapsOfMaps {
public:
    bool Load(const char* path) {
        const std::string text = ReadWhole(path);
        std::string_view lastName;
        typename Sections::mapped_type* last = nullptr;
        SplitIni(text, [&](std::string_view section, std::string_view key, std::string_view value) {
            if (last == nullptr || lastName.data() != section.data())
                last = &sections[std::string(Name(section).Text())];
            lastName = section;
            (*last)[std::string(Name(key).Text())] = value;
        });
        return !sections.empty();
    }

    /// Requires: the value fits.
    bool Find(const char* section, const char* key, char* buffer) const {
        const auto found = sections.find(Name(section).Text());
        if (found == sections.end())
            return false;
        const auto pair = found->second.find(Name(key).Text());
        if (pair == found->second.end())
            return false;
        const std::string& value = pair->second;
        std::memcpy(buffer, value.c_str(), value.size() + 1);
        return true;
    }

    std::size_t Count() const {
        std::size_t count = 0;
        for (const auto& [name, pairs] : sections)
            count += pairs.size();
        return count;
    }

private:
    Sections sections;
};

class ExactName {
public:
    explicit ExactName(std::string_view text) : exact(text) {}
    std::string_view Text() const { return exact; }

private:
    std::string_view exact;
};

/// A name in lower case, without a block of memory of its own.
class FoldedName {
public:
    explicit FoldedName(std::string_view text) : length(text.size()) {
        for (std::size_t i = 0; i < length; ++i)
            folded[i] =
                text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] | 0x20) : text[i];
    }
    std::string_view Text() const { return {folded, length}; }

private:
    char folded[256];
    std::size_t length;
};

struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};

template <class Value>
using HashMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

template <class Value>
using OrderedMap = std::map<std::string, Value, std::less<>>;

/// Exact in case, so that nothing is spent on folding.
class HashMapIni : public MapsOfMaps<HashMap<HashMap<std::string>>, ExactName> {
public:
    static constexpr char name[] = "hash maps";
};

/// Like ours, blind to case and sorted.
class MapIni : public MapsOfMaps<OrderedMap<OrderedMap<std::string>>, FoldedName> {
public:
    static constexpr char name[] = "std::map";
};

} // namespace bench

#endif
