#ifndef VTRFUTLS_FILENAMES_H
#define VTRFUTLS_FILENAMES_H

#include "vtrfutls/Export.h"

/// File existence and the parts of a path. A path is narrow text in the code page for files
/// (`SetCodePageForFiles`). If the file, or else its folder, is found only when the text is read in
/// the system's ANSI code page, the text counts as text of that page. "\" and "/" separate folders,
/// and the second byte of a two-byte character is never taken for either.
/// Thread-safety: locked by itself.

/// Sets and gets the code page for files, that of every narrow path in the two libraries. 0, as at
/// the start, is the system's ANSI code page. `SetLanguage` of the other library sets it to the
/// page of the language.
VTRFUTLS_API void SetCodePageForFiles(unsigned codePage);
VTRFUTLS_API unsigned GetCodePageForFiles();

/// True for an existing file; false for a folder, a null or empty path, a missing or unreachable
/// file.
VTRFUTLS_API bool DoesFileExist(const char* path);

/// Each writes one part of `path`, terminated, into `buffer` of `size` bytes. False, with an empty
/// buffer, when the path has no such part or the part does not fit; a null path or buffer or a size
/// of 0 is false too. `buffer` may be `path`.
///
/// | path             | directory  | file name   | extension |
/// |------------------|------------|-------------|-----------|
/// | "C:\a\b.txt"     | "C:\a\"    | "b.txt"     | ".txt"    |
/// | "C:b.tar.gz"     | "C:"       | "b.tar.gz"  | ".gz"     |
/// | "b"              | none       | "b"         | none      |
/// | "C:\a.b\"        | "C:\a.b\"  | none        | none      |
/// | "C:\a.b\c"       | "C:\a.b\"  | "c"         | none      |
/// | "C:\.profile"    | "C:\"      | ".profile"  | ".profile"|
VTRFUTLS_API bool ExtractDirectory(const char* path, char* buffer, unsigned size);
VTRFUTLS_API bool ExtractFileName(const char* path, char* buffer, unsigned size);
VTRFUTLS_API bool ExtractExtension(const char* path, char* buffer, unsigned size);

#endif
