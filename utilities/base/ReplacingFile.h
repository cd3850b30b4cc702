#ifndef VTRUTILS_BASE_REPLACINGFILE_H
#define VTRUTILS_BASE_REPLACINGFILE_H

#include "common/Handles.h"
#include "common/WidePath.h"

namespace vtr {

/// A file written anew so that readers find either the old text or the whole new one: it is written
/// beside the old file and takes its place once it is complete and closed. Private to the library.
/// One thread at a time.
class ReplacingFile {
public:
    /// The path is in the current language code page.
    explicit ReplacingFile(const char* path);
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;
    /// Without `Commit` the old file stays as it was.
    ~ReplacingFile();

    /// False when the file may not be written or its folder takes no new file.
    bool Open();

    /// Open for binary writing between `Open` and `Commit`.
    std::FILE* Stream() const { return stream.Get(); }

    /// Flushes, closes and puts the new file in place. False, with the old file as it was, when any
    /// of that or an earlier write failed.
    bool Commit();

private:
    bool Replace() const;

    WidePath target;
    StreamHandle stream;
    wchar_t temporary[MAX_PATH] = L"";
};

} // namespace vtr

#endif
