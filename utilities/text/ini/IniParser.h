#ifndef VTRUTILS_TEXT_INI_INIPARSER_H
#define VTRUTILS_TEXT_INI_INIPARSER_H

#include "utilities/base/MultibyteText.h"
#include "utilities/base/PtrArray.h"
#include "utilities/text/ini/IniFileReader.h"

namespace vtr {

/// Fills an empty document from single-byte text. Private to the library. One thread at a time.
///
/// This is a state machine. Each state is one function, which reads from `at` on and names the
/// state that follows.
///
///     lineStart --";"------------> skipLine --line end--> lineStart
///         |-------"["------------> header ---"]"--------> skipLine
///         `-------anything else--> key -----"="---------> valueStart --> value --> skipLine
///
/// Every state ends the parse at the end of the text.
class IniParser {
public:
    /// The text must stay where it is while this lives. It needs no terminator.
    IniParser(CIniFileReader& target, const char* source, unsigned size);

    /// False for a key or value that is too long, for a value without a key, and when memory runs
    /// out. The document then has the sections and pairs that came before. No section is left
    /// empty.
    bool Run();

    /// Adds the parents that the rest of a header line names. False when memory runs out.
    static bool ScanForParents(const char* begin, const char* end, CIniSection& section);

    /// True when the last character of the line that is neither space nor tab is a double quote;
    /// `innerQuotes` is raised by the number of quotes that come before it.
    static bool EndsInQuote(const char* begin, const char* end, int& innerQuotes);

private:
    enum class State { lineStart, skipLine, header, key, valueStart, value, done, failed };

    /// A part of the text, not terminated.
    struct Slice {
        const char* begin;
        const char* end;
        std::size_t Length() const { return static_cast<std::size_t>(end - begin); }
    };

    State LineStart();
    State SkipLine();
    State Header();
    State Key();
    State ValueStart();
    State Value();

    bool AtEnd() const { return at == length; }
    bool AtLineEnd() const { return text[at] == '\r' || text[at] == '\n'; }
    /// Moves to the first character from `at` on that `isEnd` accepts, to the end of the text, or
    /// so far that it is too long. In code page 1361 a ";" or "=" may be the second byte of a
    /// character.
    template <class Predicate>
    void SkipTo(Predicate isEnd);
    void SkipBlanks();
    bool IsTooLong(unsigned start) const;

    /// The section that a new header names: the last one, when nothing was put into it, or a new
    /// one. Null when memory runs out.
    CIniSection* SectionForHeader();
    /// Puts the pair of `pendingKey` into the current section.
    State StorePair(Slice value);
    void RemoveEmptySections();

    CIniFileReader& document;
    Pointers<CIniSection> sections; ///< of the document
    const char* text;
    unsigned length;
    unsigned at;
    CharacterSteps steps;

    CIniSection* unnamed; ///< takes the pairs that no section has claimed
    CIniSection* current; ///< null: the unnamed section
    Slice pendingKey;     ///< trimmed
    bool quoted;          ///< the value to come is in double quotes
    int innerQuotes;      ///< double quotes that belong to a quoted value
};

} // namespace vtr

#endif
