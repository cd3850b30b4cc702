#include "utilities/promo/PromoSequencer.h"

#include "utilities/base/LanguageSteps.h"
#include "utilities/base/NameIndex.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/promo/PromoDocument.h"
#include "utilities/promo/PromoHandlerCall.h"

#include <climits>
#include <cstdlib>
#include <cstring>

namespace vtr {

namespace {

constexpr int mostRounds = 64;

using Found = PromoSequencer::Found;

void Raise(int& number) {
    if (number < INT_MAX)
        ++number;
}

} // namespace

Found PromoSequencer::Text(const char* script, int step, int subStep, char* out, int size) const {
    if (script == nullptr || out == nullptr || size < 1)
        return Found::nothing;
    const NumberedName section(script, step);
    document.GetString(section.Get(), NumberedName("text", subStep).Get(), "", out,
                       static_cast<unsigned>(size));
    if (out[0] == '\0')
        RandomText(section.Get(), subStep, out, size);
    if (out[0] == '\0')
        return Found::nothing;
    char eventName[520];
    if (events.handler != nullptr && events.mark == nullptr &&
        PromoSection(document, section.Get(), subStep).Text("special event", eventName))
        return Ask(eventName, out, size);
    return Found::text;
}

void PromoSequencer::RandomText(const char* section, int subStep, char* out, int size) const {
    const NumberedName key("random", subStep);
    const int count = Alternatives(section, key.Get());
    if (count > 0)
        document.GetString(section, NumberedName(key.Get(), std::rand() % count + 1).Get(), "", out,
                           static_cast<unsigned>(size));
}

/// How many of "KEY.1", "KEY.2", ... have a value, up to the first that has none. Looking each up
/// in the section would take quadratic time.
int PromoSequencer::Alternatives(const char* section, const char* key) const {
    CIniSection* found = document.GetSection(section);
    if (found == nullptr)
        return 0;
    NameIndex keys;
    for (unsigned i = 0; i < found->NumValues(); ++i) {
        const char* name = found->GetValue(i)->Key();
        if (name != nullptr && keys.Number(name, i) == NameIndex::none)
            return 0;
    }
    for (int count = 0;; ++count) {
        const unsigned place = keys.Find(NumberedName(key, count + 1).Get());
        if (place == NameIndex::none || IsEmptyText(found->GetValue(place)->Value()))
            return count;
    }
}

Found PromoSequencer::Ask(const char* eventName, char* out, int size) const {
    char text[520] = "";
    StoreWhole(out, text);
    const PromoHandlerCall call(events.mark);
    const bool accepted = events.handler(eventName, text, out, size, events.context);
    if (call.Gone())
        return Found::gone;
    out[size - 1] = '\0';
    return accepted && out[0] != '\0' ? Found::text : Found::nothing;
}

Found PromoSequencer::Next(const PromoPosition& at, char* out, int size) const {
    for (int round = 0; round < mostRounds; ++round) {
        Raise(at.subStep);
        Found found = Text(at.script, at.step, at.subStep, out, size);
        if (found != Found::nothing)
            return found;
        Raise(at.step);
        at.subStep = 1;
        if (Jump(at))
            continue;
        found = Text(at.script, at.step, at.subStep, out, size);
        if (found != Found::nothing)
            return found;
        if (Return(at))
            continue;
        at.step = 1;
        at.subStep = 1;
        found = Text(at.script, at.step, at.subStep, out, size);
        if (found != Found::nothing)
            return found;
    }
    out[0] = '\0';
    return Found::nothing;
}

bool PromoSequencer::Jump(const PromoPosition& at) const {
    const NumberedName name(at.script, at.step);
    const PromoSection section(document, name.Get());
    char target[260];
    if (!section.Text("goto.script", target))
        return false;
    section.Text("returnto.script", at.returnScript);
    at.returnStep = -1;
    section.Number("returnto.step", at.returnStep);
    StoreCut(target, at.script, sizeof at.script);
    at.step = 1;
    at.subStep = 0;
    return true;
}

/// False when there is nowhere to go back to.
bool PromoSequencer::Return(const PromoPosition& at) {
    const bool toScript = at.returnScript[0] != '\0';
    if (!toScript && at.returnStep < 1)
        return false;
    if (toScript)
        StoreCut(at.returnScript, at.script, sizeof at.script);
    at.step = at.returnStep < 1 ? 1 : at.returnStep;
    at.subStep = 0;
    at.returnScript[0] = '\0';
    at.returnStep = -1;
    return true;
}

bool PromoSequencer::Exists(const char* script) const {
    constexpr std::size_t longest = 260;
    if (IsEmptyText(script) || strnlen(script, longest + 1) > longest)
        return false;
    char text[1024];
    const Found found = Text(script, 1, 1, text, sizeof text);
    if (found != Found::nothing)
        return found == Found::text;
    return PromoSection(document, NumberedName(script, 1).Get()).Text("goto.script", text);
}

void UnescapePromoText(char* text) {
    const LanguageSteps steps;
    char* out = text;
    for (const char* in = text; *in != '\0';) {
        if (in[0] == '\\' && in[1] == 'n') {
            *out++ = '\r';
            *out++ = '\n';
            in += 2;
        } else if (in[0] == '\\' && in[1] == 't') {
            *out++ = '\t';
            in += 2;
        } else {
            for (std::size_t bytes = steps.Length(in); bytes > 0 && *in != '\0'; --bytes)
                *out++ = *in++;
        }
    }
    *out = '\0';
}

} // namespace vtr
