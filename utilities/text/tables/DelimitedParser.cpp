#include "utilities/text/tables/DelimitedParser.h"

namespace vtr {

DelimitedParser::DelimitedParser(char* text, unsigned length, char delimiter, char quote)
    : at(text), end(text + length), lastQuote(nullptr), outOfMemory(false) {
    constexpr unsigned firstBeyondAscii = 0x80;
    for (unsigned c = 0; c < sizeof kinds; ++c)
        kinds[c] = steps.Multibyte() && c >= firstBeyondAscii ? Kind::lead : Kind::ordinary;
    kinds[static_cast<unsigned char>(delimiter)] = Kind::delimiter;
    kinds[static_cast<unsigned char>(quote)] = Kind::quote;
    kinds[static_cast<unsigned char>('\r')] = Kind::lineEnd;
    kinds[static_cast<unsigned char>('\n')] = Kind::lineEnd;
    kinds[0] = Kind::zero;
}

bool DelimitedParser::NextLine() {
    fields.Forget();
    while (at < end) {
        char* start = at;
        const Kind stop = ScanField();
        // There is no field after a delimiter that ends the text.
        if (stop == Kind::zero && *start == '\0')
            break;
        if (!fields.Append(FinishField(start))) {
            outOfMemory = true;
            return false;
        }
        if (stop == Kind::zero)
            break;
        ++at;
        if (stop == Kind::lineEnd) {
            while (KindOf(*at) == Kind::lineEnd)
                ++at;
            break;
        }
    }
    return fields.Count() > 0;
}

/// Quotes protect delimiters, not line ends.
DelimitedParser::Kind DelimitedParser::ScanField() {
    bool quoted = false;
    for (;; ++at) {
        while (KindOf(*at) == Kind::ordinary)
            ++at;
        switch (KindOf(*at)) {
        case Kind::zero:
            if (at == end)
                return Kind::zero;
            break;
        case Kind::delimiter:
            if (!quoted)
                return Kind::delimiter;
            break;
        case Kind::quote:
            quoted = !quoted;
            lastQuote = at;
            break;
        case Kind::lineEnd:
            return Kind::lineEnd;
        case Kind::lead:
            at += steps.Length(at, static_cast<std::size_t>(end - at)) - 1;
            break;
        case Kind::ordinary:
            break;
        }
    }
}

char* DelimitedParser::FinishField(char* start) const {
    char* stop = at;
    if (stop > start && KindOf(*start) == Kind::quote)
        ++start;
    if (stop > start && lastQuote == stop - 1)
        --stop;
    *stop = '\0';
    return *start != '\0' ? start : nullptr;
}

} // namespace vtr
