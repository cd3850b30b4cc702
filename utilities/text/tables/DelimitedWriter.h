#ifndef VTRUTILS_TEXT_TABLES_DELIMITEDWRITER_H
#define VTRUTILS_TEXT_TABLES_DELIMITEDWRITER_H

#include <cstddef>
#include <cstdio>

namespace vtr {

/// Writes delimited text in large pieces. Private to the library. One thread at a time.
class DelimitedWriter {
public:
    /// A quote of 0 means that there is none.
    DelimitedWriter(std::FILE* target, char delimiter, char quote);

    /// Writes it in quotes; its own quotes stay as they are.
    void Name(const char* text);
    /// Writes it in quotes. If these are double quotes, each double quote in it becomes "?".
    void Field(const char* text);
    void Delimiter() { Put(delimiter); }
    void EndLine();

    /// Writes what is left. False when something could not be written.
    bool Flush();

private:
    void Put(char c);
    void Put(const char* bytes, std::size_t count);

    std::FILE* stream;
    char delimiter;
    char quote;
    bool good;
    std::size_t used;
    char buffer[16 * 1024];
};

} // namespace vtr

#endif
