#ifndef VTRUTILS_TEXT_LANGUAGE_STRINGFILE_H
#define VTRUTILS_TEXT_LANGUAGE_STRINGFILE_H

#include "utilities/base/TextFile.h"

namespace vtr {

/// One language string file, read line by line as the C run-time reads text files: CR LF is one
/// line end, Ctrl-Z ends the text, and of a line longer than 1,023 bytes each piece of that length
/// is a line. Private to the library. One thread at a time.
class StringFile {
public:
    /// As `FileBytes::Read`.
    template <class Char>
    bool Open(const Char* path) {
        return file.Read(path) && Start();
    }

    /// The text of the first key that is this one without regard to case, or null. Valid until the
    /// next call.
    const char* Find(const char* key);

private:
    bool Start();
    /// False at the end.
    bool NextLine();
    const char* TextIfKeyIs(const char* key, std::size_t keyLength);

    static constexpr std::size_t lineSize = 1024;

    FileBytes file;
    const char* at = nullptr;
    const char* end = nullptr;
    const char* line = nullptr; ///< without its end
    std::size_t length = 0;
    char copy[lineSize];
};

} // namespace vtr

#endif
