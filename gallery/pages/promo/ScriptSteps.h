#ifndef VTRUTILS_GALLERY_PAGES_PROMO_SCRIPTSTEPS_H
#define VTRUTILS_GALLERY_PAGES_PROMO_SCRIPTSTEPS_H

#include <string>
#include <vector>

/// What a page needs to know of a promo script's document beside playing it. Texts are in the code
/// page of the language. Immutable and safe.

namespace gallery {

/// One step, as its section says.
struct ScriptStep {
    std::string script;
    int number;         ///< from 1
    std::string text;   ///< the first one, or its first alternative; "" for none
    std::string target; ///< the script that the step jumps to; "" for none
};

/// A text of a script. Both numbers count from 1.
struct ScriptPosition {
    std::string script;
    int step = 0;
    int text = 0;
    bool operator==(const ScriptPosition&) const = default;
};

/// In the order of the document.
std::vector<ScriptStep> StepsOf(const std::string& document);

/// As the script has it, or its first alternative; "" for none.
std::string TextAt(const std::string& document, const ScriptPosition& at);

/// Whether that text stays until the player is told to go on.
bool WaitsForResume(const std::string& document, const ScriptPosition& at);

/// How a text is shown.
struct ScriptEffect {
    std::string name;
    int milliseconds = 0;
};

/// The name of the script of `ScriptWithTrial` and of `ScriptWithChange`.
constexpr char trialScript[] = "gallery trial";

/// The document with a script that shows the text at `at` with this effect, stays until the player
/// is told to go on, and then returns to that step. Of alternatives it has the first.
std::string ScriptWithTrial(const std::string& document, const ScriptPosition& at,
                            const ScriptEffect& effect);

/// The document with a script that shows the text at `first` at once, and then the one at `second`
/// with this effect.
std::string ScriptWithChange(const std::string& document, const ScriptPosition& first,
                             const ScriptPosition& second, const ScriptEffect& effect);

} // namespace gallery

#endif
