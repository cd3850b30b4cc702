#include "gallery/pages/promo/ScriptSteps.h"

#include "utilities/text/ini/IniFileReader.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <windows.h>

namespace gallery {

namespace {

/// Without sections when it cannot be read.
class Document {
public:
    explicit Document(const std::string& text) {
        if (!text.empty())
            reader.InitFromBuffer(reinterpret_cast<const unsigned char*>(text.data()),
                                  static_cast<unsigned>(text.size()), /*sort=*/false);
    }

    int Sections() const { return static_cast<int>(reader.NumSections()); }
    const CIniSection* Section(int index) { return reader.GetSection(index); }

    /// Null when there is none.
    const CIniSection* Step(const ScriptPosition& at) {
        return reader.GetSection((at.script + "." + std::to_string(at.step)).c_str());
    }

private:
    CIniFileReader reader;
};

/// The library has null for an empty text.
std::string Whole(const char* text) {
    return text != nullptr ? text : "";
}

/// "" when there is none.
std::string Value(const CIniSection* section, const std::string& key) {
    char value[1024] = "";
    if (section != nullptr)
        section->GetString(key.c_str(), "", value, sizeof value);
    return value;
}

/// What comes before the last point, and the number after it; 0 for a name without one.
std::pair<std::string, int> Numbered(const std::string& name) {
    const std::size_t point = name.rfind('.');
    if (point == std::string::npos)
        return {name, 0};
    const std::string digits = name.substr(point + 1);
    const int number = digits.size() < 10
                           ? static_cast<int>(std::strtol(digits.c_str(), nullptr, /*base=*/10))
                           : 0;
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

std::string TextOf(const CIniSection* section, int text) {
    const std::string found = Value(section, WithNumber("text", text));
    return !found.empty() ? found : Value(section, WithNumber(WithNumber("random", text), 1));
}

/// All that stands there: a text is added to the one before, unless it clears that.
std::string ShownText(const CIniSection* section, int text) {
    int first = text;
    while (first > 1 && Value(section, WithNumber("clear", first)) != "1")
        --first;
    std::string shown;
    for (; first <= text; ++first)
        shown += TextOf(section, first);
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
    Document source(document);
    const CIniSection* section = source.Step(at);
    std::string lines =
        "[" + WithNumber(trialScript, step) + "]\r\n" + Line("text.1", ShownText(section, at.text));
    for (unsigned i = 0; section != nullptr && i < section->NumValues(); ++i) {
        const CIniValue& pair = *section->GetValue(i);
        const std::string key = Whole(pair.Key());
        const auto [plain, number] = Numbered(key);
        if (number != 0 && number != at.text)
            continue;
        if (!IsOneOf(plain, {"text", "wait", "clear", "goto.script", "returnto.script",
                             "returnto.step", "transition effect", "transition time"}) &&
            !IsOneOf(Numbered(plain).first, {"random"}))
            lines += Line(number != 0 ? WithNumber(plain, 1) : key, Whole(pair.Value()));
    }
    return lines + Line("wait.1", "notify") + Line("transition effect.1", effect.name) +
           Line("transition time.1", std::to_string(effect.milliseconds));
}

} // namespace

std::vector<ScriptStep> StepsOf(const std::string& document) {
    Document source(document);
    std::vector<ScriptStep> steps;
    for (int i = 0; i < source.Sections(); ++i) {
        const CIniSection* section = source.Section(i);
        const auto [script, number] = Numbered(section->Name());
        if (number > 0 && !script.empty() && lstrcmpiA(script.c_str(), "style") != 0)
            steps.push_back({script, number, TextOf(section, 1), Value(section, "goto.script")});
    }
    return steps;
}

std::string TextAt(const std::string& document, const ScriptPosition& at) {
    return TextOf(Document(document).Step(at), at.text);
}

bool WaitsForResume(const std::string& document, const ScriptPosition& at) {
    const std::string wait = Value(Document(document).Step(at), WithNumber("wait", at.text));
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
