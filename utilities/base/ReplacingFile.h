#ifndef VTRUTILS_BASE_REPLACINGFILE_H
#define VTRUTILS_BASE_REPLACINGFILE_H

#include "common/Handles.h"
#include "utilities/base/OwnedText.h"

namespace vtr {

/// A file written anew so that readers find either the old text or the whole new one: it is written
/// to a second file ("vtr....tmp" in the same folder), which takes the place of the first once it
/// is complete and closed. Attributes stay. What a symbolic link names is replaced, the link stays;
/// other hard links keep the old text. Private to the library. One thread at a time; several of
/// these, on any threads, may save to one path, and the last one wins.
///
/// The new text is copied over the old one instead where the second file cannot take its place:
/// another program has the first one open without letting it be deleted, it has permissions of its
/// own, or its folder takes no new file; then the second one is in the folder for temporary files.
/// A device is written to directly.
///
/// When the process is ended, the first file is as it was and the second one stays; it has the
/// whole new text from the closing in `Commit` on. Only while text is copied is the first file part
/// new, part old, and only while the old one is replaced although another program has it open may
/// its name be missing: the second file has the whole new text then.
class ReplacingFile {
public:
    /// The path is in the current language code page, of any length. A later change of the current
    /// folder does not matter.
    explicit ReplacingFile(const char* path);
    ReplacingFile(const ReplacingFile&) = delete;
    ReplacingFile& operator=(const ReplacingFile&) = delete;
    /// Without `Commit` the old file stays as it was.
    ~ReplacingFile();

    /// False, with no file left, if the file may not be written, no second file can be made or
    /// memory runs out.
    bool Open();

    /// Open for binary writing between `Open` and `Commit`.
    std::FILE* Stream() const { return stream.Get(); }

    /// Flushes, closes and puts the new text in place. False, with the old file as it was and the
    /// second one removed, when any of that or an earlier write failed; only if the old text is
    /// lost by then, because copying over it failed, does the second file stay, and a log line
    /// names it.
    bool Commit();

private:
    enum class Outcome { done, refused, oldTextLost };

    bool Prepare();
    bool Inspect(HANDLE old);
    HANDLE MakeSecondFile(const wchar_t* folder, std::size_t length);
    bool WriteTo(FileHandle file);
    Outcome PutInPlace() const;
    Outcome CopyOver() const;

    OwnedChars<wchar_t> target;
    OwnedChars<wchar_t> temporary;
    StreamHandle stream;
    DWORD attributes = 0;
    bool exists = false;
    bool inPlace = false;
};

} // namespace vtr

#endif
