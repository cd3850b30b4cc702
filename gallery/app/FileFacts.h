#ifndef VTRUTILS_GALLERY_APP_FILEFACTS_H
#define VTRUTILS_GALLERY_APP_FILEFACTS_H

#include <string>
#include <string_view>

/// What a file says of itself before the library reads it. Immutable and safe.

namespace gallery {

enum class Encoding { ascii, codePage, utf8, utf16, binary };

/// What the text of a file looks like. Each page with documents shows one of these.
enum class Contents { none, ini, xml, table };

struct FileFacts {
    bool readable = false;
    Encoding encoding = Encoding::ascii;
    int lettersReduced = 0; ///< characters of UTF-16 that the library keeps the low byte of only
    Contents contents = Contents::none;
    // Of a file that may be a table:
    int lines = 0;        ///< that are not blank, and a blank one that begins the file
    char delimiter = ','; ///< of the fields
};

/// Reads all of the file. Not readable: missing, a folder, locked or of 2 GB or more.
FileFacts FactsOfFile(const std::wstring& path);

/// The text as the library reads it, in single bytes. "" for a file that is not readable.
std::string TextOfFile(const std::wstring& path);

/// The page that the file is for: that of its extension if its text can be that, or else what its
/// text looks like most. `none`, if the file has neither a telling text nor a known extension.
Contents ContentsOfFile(const std::wstring& path);

/// What files with these contents usually end with, as the table of pages has it; L"" for none.
const wchar_t* ExtensionOf(Contents contents);

/// The one of tab, semicolon and comma that the first lines have most evenly.
char DelimiterOf(std::string_view text);

/// Whether both names are those of one file.
bool IsSameFile(const std::wstring& one, const std::wstring& other);

/// When the file was written last, and its size. All 0 for a file that is not there.
struct FileStamp {
    unsigned long long written = 0;
    unsigned long long size = 0;
    bool operator==(const FileStamp&) const = default;
};
FileStamp StampOfFile(const std::wstring& path);

} // namespace gallery

#endif
