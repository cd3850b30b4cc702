#include "utilities/text/tables/DelimitedWriter.h"

#include <cstring>

namespace vtr {

DelimitedWriter::DelimitedWriter(std::FILE* target, char delimiterCharacter, char quoteCharacter)
    : stream(target), delimiter(delimiterCharacter), quote(quoteCharacter), good(true), used(0) {}

void DelimitedWriter::Name(const char* text) {
    if (quote != '\0')
        Put(quote);
    Put(text, std::strlen(text));
    if (quote != '\0')
        Put(quote);
}

void DelimitedWriter::Field(const char* text) {
    if (quote != '"')
        return Name(text);
    Put(quote);
    for (; *text != '\0'; ++text)
        Put(*text == quote ? '?' : *text);
    Put(quote);
}

void DelimitedWriter::EndLine() {
    Put("\r\n", 2);
}

bool DelimitedWriter::Flush() {
    good = good && std::fwrite(buffer, 1, used, stream) == used;
    used = 0;
    return good;
}

void DelimitedWriter::Put(char c) {
    if (used == sizeof buffer)
        Flush();
    buffer[used++] = c;
}

void DelimitedWriter::Put(const char* bytes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        Put(bytes[i]);
}

} // namespace vtr
