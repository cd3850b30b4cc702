#include "gallery/pages/promo/ScriptSteps.h"

#include "utilities/text/ini/IniFileReader.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <windows.h>

namespace gallery {

namespace {

using Pair = std::pair<std::string, std::string>;

class Document {
public:
    explicit Document(const std::string& text) {
        read = !text.empty() &&
               reader.InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                                     static_cast<unsigned>(text.size()), /*sort=*/false);
    }

    int Sections() const { return read ? static_cast<int>(reader.NumSections()) : 0; }
    std::string Name(int section) const {
        return Whole(reader.SectionName(static_cast<unsigned>(section)));
    }

    /// "" when there is none.
    std::string Value(const std::string& section, const std::string& key) const {
        char value[1024] = "";
        if (read)
            reader.GetString(section.c_str(), key.c_str(), "", value, sizeof value);
        return value;
    }

    std::vector<Pair> Pairs(const std::string& section) const {
        std::vector<Pair> pairs;
        CIniSection* found = read ? reader.GetSection(section.c_str()) : nullptr;
        for (unsigned i = 0; found != nullptr && i < found->NumValues(); ++i)
            pairs.emplace_back(Whole(found->GetValue(i)->Key()),
                               Whole(found->GetValue(i)->Value()));
        return pairs;
    }

private:
    static std::string Whole(const char* text) { return text != nullptr ? text : ""; }

    mutable CIniFileReader reader; ///< look-ups change what it remembers
    bool read;
};

/// What comes before the last point, and the number after it; 0 for a name without one.
std::pair<std::string, int> Numbered(const std::string& name) {
    const std::size_t point = name.rfind('.');
    if (point == std::string::npos)
        return {name, 0};
    const std::string digits = name.substr(point + 1);
    const int number = digits.size() < 10 ? std::atoi(digits.c_str()) : 0;
    if (number < 1 || std::to_string(number) != digits)
        return {name, 0};
    return {name.substr(0, point), number};
}

std::string WithNumber(const std::string& name, int number) {
    return name + "." + std::to_string(number);
}

bool IsOneOf(const std::string& key, std::initializer_list<const char*> names) {
    return std::any_of(names.begin(), names.end(),
                       [&](const char* name) { return lstrcmpiA(key.c_str(), name) == 0; });
}

std::string TextAt(const Document& document, const std::string& section, int text) {
    const std::string found = document.Value(section, WithNumber("text", text));
    return !found.empty() ? found
                          : document.Value(section, WithNumber(WithNumber("random", text), 1));
}

/// All that stands there: a text is added to the one before, unless it clears that.
std::string ShownText(const Document& document, const std::string& section, int text) {
    int first = text;
    while (first > 1 && document.Value(section, WithNumber("clear", first)) != "1")
        --first;
    std::string shown;
    for (; first <= text; ++first)
        shown += TextAt(document, section, first);
    return shown;
}

/// As a line of the document: blanks and quotes at its ends would be taken off.
std::string Line(const std::string& key, const std::string& value) {
    const bool quotes = !value.empty() && (value.front() == ' ' || value.front() == '\t' ||
                                           value.front() == '"' || value.back() == ' ');
    return key + " = " + (quotes ? '"' + value + '"' : value) + "\r\n";
}

/// A section of the trial whose only text is what is shown at `at`, styled as there but for the
/// effect. It stays until the player is told to go on.
std::string TrialStep(const std::string& document, const ScriptPosition& at, int step,
                      const ScriptEffect& effect) {
    const Document source(document);
    const std::string section = WithNumber(at.script, at.step);
    std::string lines = "[" + WithNumber(trialScript, step) + "]\r\n" +
                        Line("text.1", ShownText(source, section, at.text));
    for (const auto& [key, value] : source.Pairs(section)) {
        const auto [plain, number] = Numbered(key);
        if (number != 0 && number != at.text)
            continue;
        if (!IsOneOf(plain, {"text", "wait", "clear", "goto.script", "returnto.script",
                             "returnto.step", "transition effect", "transition time"}) &&
            plain.rfind("random.", 0) != 0)
            lines += Line(number != 0 ? WithNumber(plain, 1) : key, value);
    }
    return lines + Line("wait.1", "notify") + Line("transition effect.1", effect.name) +
           Line("transition time.1", std::to_string(effect.milliseconds));
}

} // namespace

std::vector<ScriptStep> StepsOf(const std::string& document) {
    const Document source(document);
    std::vector<ScriptStep> steps;
    for (int i = 0; i < source.Sections(); ++i) {
        const std::string section = source.Name(i);
        const auto [script, number] = Numbered(section);
        if (number > 0 && !script.empty() && lstrcmpiA(script.c_str(), "style") != 0)
            steps.push_back(
                {script, number, TextAt(source, section, 1), source.Value(section, "goto.script")});
    }
    return steps;
}

std::string TextAt(const std::string& document, const ScriptPosition& at) {
    return TextAt(Document(document), WithNumber(at.script, at.step), at.text);
}

bool WaitsForResume(const std::string& document, const ScriptPosition& at) {
    const std::string wait =
        Document(document).Value(WithNumber(at.script, at.step), WithNumber("wait", at.text));
    return lstrcmpiA(wait.c_str(), "notify") == 0;
}

std::string ScriptWithTrial(const std::string& document, const ScriptPosition& at,
                            const ScriptEffect& effect) {
    // A jump to a script without steps comes back at once. The document is the last: what it does
    // not close must not take what follows.
    return TrialStep(document, at, 1, effect) + "[" + WithNumber(trialScript, 2) + "]\r\n" +
           Line("goto.script", std::string(trialScript) + " end") +
           Line("returnto.script", at.script) + Line("returnto.step", std::to_string(at.step)) +
           document;
}

std::string ScriptWithChange(const std::string& document, const ScriptPosition& first,
                             const ScriptPosition& second, const ScriptEffect& effect) {
    return TrialStep(document, first, 1, {"none", 0}) + TrialStep(document, second, 2, effect) +
           document;
}

} // namespace gallery
