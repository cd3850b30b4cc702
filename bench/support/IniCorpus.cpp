#include "bench/support/IniCorpus.h"

#include <random>
#include <utility>

namespace bench {

namespace {

constexpr const char* subjects[] = {"Mixer",  "Track",  "Effect",  "Export", "Theme",  "Window",
                                    "Device", "Preset", "Library", "Folder", "Import", "Timeline"};
constexpr const char* things[] = {"Volume", "Fade",  "Length", "Colour", "Position", "Format",
                                  "Rate",   "Title", "Path",   "Level",  "Channel",  "Curve"};
constexpr const char* values[] = {
    "44100", "C:\\Media\\Mixes\\", "0.7071",  "true", "Linear", "#3F7FBF", "Arial, 10", "stereo",
    "12",    "Every Friday night", "-3.25 dB"};

/// The distributions of the standard library differ from one implementation to the next; these do
/// not.
class Random {
public:
    std::size_t Below(std::size_t limit) { return engine() % limit; }

    template <std::size_t size>
    const char* Of(const char* const (&texts)[size]) {
        return texts[Below(size)];
    }

    template <class T>
    void Shuffle(std::vector<T>& items) {
        for (std::size_t i = items.size(); i > 1; --i)
            std::swap(items[i - 1], items[Below(i)]);
    }

private:
    std::mt19937 engine{20240229};
};

} // namespace

std::vector<IniPair> MakeIniPairs(std::size_t count) {
    Random random;
    std::vector<IniPair> pairs;
    for (std::size_t section = 0; pairs.size() < count; ++section) {
        const std::string name = std::string(random.Of(subjects)) + " " + random.Of(things) + " " +
                                 std::to_string(section);
        std::size_t left = 20 + random.Below(6);
        for (; left > 0 && pairs.size() < count; --left) {
            const std::string key =
                std::string(random.Of(things)) + random.Of(subjects) + std::to_string(left);
            pairs.push_back({name, key, random.Of(values)});
        }
    }
    return pairs;
}

std::string IniText(const std::vector<IniPair>& pairs) {
    std::string text;
    const std::string* section = nullptr;
    for (const IniPair& pair : pairs) {
        if (section == nullptr || *section != pair.section)
            text += (section != nullptr ? "\r\n[" : "[") + pair.section + "]\r\n";
        section = &pair.section;
        text += pair.key + " = " + pair.value + "\r\n";
    }
    return text;
}

IniQuestions::IniQuestions(const std::vector<IniPair>& inOrder) {
    std::size_t size = 0;
    for (const IniPair& pair : inOrder)
        size += pair.section.size() + pair.key.size() + 2;
    texts.reserve(size);
    questions.reserve(inOrder.size());
    const auto store = [this](const std::string& text) {
        const char* stored = texts.data() + texts.size();
        texts.append(text.c_str(), text.size() + 1);
        return stored;
    };
    for (const IniPair& pair : inOrder) {
        const char* section = store(pair.section);
        questions.push_back({section, store(pair.key)});
    }
}

std::vector<IniPair> Shuffled(std::vector<IniPair> pairs) {
    Random().Shuffle(pairs);
    return pairs;
}

} // namespace bench
