#ifndef VTRUTILS_PROMO_PROMOSEQUENCER_H
#define VTRUTILS_PROMO_PROMOSEQUENCER_H

#include "utilities/text/ini/IniFileReader.h"

namespace vtr {

/// Where playback is, and where it goes on after a jump: fields of the script object.
struct PromoPosition {
    char (&script)[260];
    int& step;
    int& subStep;
    char (&returnScript)[260]; ///< "": none
    int& returnStep;           ///< -1: none
};

/// The host's part in texts, as `CPromoScript::SetSpecialEventHandler` says. Not asked while a
/// handler runs.
struct PromoEvents {
    bool (*handler)(const char* eventName, const char* text, char* outText, int outSize,
                    void* context);
    void* context;
    bool*& mark; ///< for PromoHandlerCall
};

/// Finds the texts of a script, and the one that comes next. It knows neither window nor time.
/// Private to the library. One thread at a time.
class PromoSequencer {
public:
    enum class Found {
        text,
        nothing,
        gone, ///< the handler destroyed the script object
    };

    PromoSequencer(CIniFileReader& script, const PromoEvents& asked)
        : document(script), events(asked) {}

    /// The text of a sub-step, or one of its alternatives at random. `out` holds anything when
    /// there is none.
    Found Text(const char* script, int step, int subStep, char* out, int size) const;

    /// Moves on to the next text; after as many tries as a script may need that jumps, to nothing.
    /// Requires: size > 0.
    Found Next(const PromoPosition& at, char* out, int size) const;

    /// As `CPromoScript::ScriptExists`.
    bool Exists(const char* script) const;

private:
    void RandomText(const char* section, int subStep, char* out, int size) const;
    int Alternatives(const char* section, const char* key) const;
    Found Ask(const char* eventName, char* out, int size) const;
    bool Jump(const PromoPosition& at) const;
    static bool Return(const PromoPosition& at);

    CIniFileReader& document;
    PromoEvents events;
};

/// Turns a backslash with "n" into CR LF and one with "t" into a tab, in place.
void UnescapePromoText(char* text);

} // namespace vtr

#endif
