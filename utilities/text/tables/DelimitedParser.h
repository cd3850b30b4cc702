#ifndef VTRUTILS_TEXT_TABLES_DELIMITEDPARSER_H
#define VTRUTILS_TEXT_TABLES_DELIMITEDPARSER_H

#include "utilities/base/MultibyteText.h"
#include "utilities/base/PtrArray.h"

namespace vtr {

/// Splits delimited text into lines of fields, in place: each field is terminated where it is,
/// over its delimiter, closing quote or line end. Private to the library. One thread at a time.
class DelimitedParser {
public:
    /// Reads `length` bytes, and writes to them and to the zero byte that must come after them. A
    /// delimiter or quote of 0 means that there is none.
    DelimitedParser(char* text, unsigned length, char delimiter, char quote);

    /// False at the end of the text, for a line without a field, and when memory runs out.
    bool NextLine();

    /// The fields of the last line, null where empty.
    const PtrArray<char>& Fields() const { return fields; }

    bool OutOfMemory() const { return outOfMemory; }

private:
    enum class Kind : unsigned char { ordinary, zero, delimiter, quote, lineEnd, lead };

    Kind KindOf(char c) const { return kinds[static_cast<unsigned char>(c)]; }
    /// Moves to the byte after a field that starts here, and tells what is there; `zero` is the end
    /// of the text.
    Kind ScanField();
    /// The field from `start` to here.
    char* FinishField(char* start) const;

    char* at;
    char* const end;
    const char* lastQuote; ///< the last quote character before `at`
    bool outOfMemory;
    CharacterSteps steps;
    PtrArray<char> fields;
    Kind kinds[256];
};

} // namespace vtr

#endif
