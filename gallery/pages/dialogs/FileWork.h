#ifndef VTRUTILS_GALLERY_PAGES_DIALOGS_FILEWORK_H
#define VTRUTILS_GALLERY_PAGES_DIALOGS_FILEWORK_H

#include <cstddef>
#include <string>
#include <vector>

namespace gallery {

/// Work that takes a while: all files of one folder are read, a step for each. One thread at a
/// time.
class FileWork {
public:
    /// Lists the files, without those of folders in it.
    void Start(const std::wstring& newFolder);

    /// Reads the next file. Requires: `Done() < Total()`.
    void Step();

    int Total() const { return static_cast<int>(files.size()); }
    int Done() const { return done; }
    /// The name of the file that `Step` reads next; "" after the last.
    std::wstring Next() const;
    /// Read so far.
    double Bytes() const { return static_cast<double>(bytes); }

private:
    std::wstring folder; ///< with a trailing backslash
    std::vector<std::wstring> files;
    int done = 0;
    unsigned long long bytes = 0;
};

} // namespace gallery

#endif
