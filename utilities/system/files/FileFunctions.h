#ifndef VTRUTILS_SYSTEM_FILES_FILEFUNCTIONS_H
#define VTRUTILS_SYSTEM_FILES_FILEFUNCTIONS_H

#include "utilities/Export.h"

#include <windows.h>

/// Files, folders, drives, the clipboard's files, the shell and strings in the registry.
///
/// A path is either wide (UTF-16) or narrow. A narrow path, in this header and wherever the library
/// takes one, has at most 259 bytes and a terminator. Its bytes can be read in two code pages:
///  - the language's page, which `SetLanguage` sets;
///  - the ANSI page, in which Windows gives narrow paths to programs; it is also the language's
///    page until `SetLanguage` is called.
/// The library reads a path in the language's page first. It takes the ANSI page instead if the
/// path names a file or folder only when read in that page; if neither reading does, but more of
/// its folders are found so; or if some bytes are characters in the ANSI page only. So a host may
/// pass on paths that Windows gave it, whatever the language. The second byte of a two-byte
/// character is never taken for a separator.
///
/// A path that the library hands out can be handed back to it. What is found below a host's path is
/// in the page of that path. What Windows gave is in the language's page; if that page lacks a
/// letter of it, in the ANSI page; if both lack one, it is the short name, in ASCII. A file without
/// any such text is passed over, or counts as missing.
///
/// Sizes of buffers are in characters, the terminator included, and what does not fit is cut off; a
/// buffer without a size holds 260. Null is allowed where a comment says what it gives. A path on a
/// server that does not answer holds the caller up for as long as Windows tries.
/// Thread-safety: immutable and safe.

// Folders.

/// Makes every missing folder whose name ends with a backslash: "C:\a\b" makes "C:\a" only,
/// "C:\a\b\" both. Of a network path the first folder made is the share. Not 0 if none is missing
/// afterwards, or if a file has the folder's name. 0 for null, for fewer than 3 characters, for a
/// local path without a colon, for a path without such a folder, and if a folder cannot be made.
VTRUTILS_API int CreateMultiLevelDir(const char* path);

/// Writes to `out` the full path of the first file that matches `pattern`: in `folder` itself, then
/// in each of its folders in listing order, each with everything below it. Links to folders are not
/// followed, because they may lead in circles. Returns 1. 0, with `out` empty, if there is none and
/// for a null folder or pattern; 0 for a null `out`.
VTRUTILS_API int FindFilesRecursively(const char* folder, const char* pattern, char* out);

/// True for a folder that cannot be listed, and for one whose first entry is a folder and whose
/// other entries all have FILE_ATTRIBUTE_NORMAL. So the answer is false for every folder below a
/// drive's root, because its second entry is its parent. True for null.
VTRUTILS_API bool FolderEmpty(const char* path);

/// Writes to `out` the name of the first folder that does not begin with "." among the entries that
/// match `path` followed by "*": a folder is given with its trailing backslash. Returns 1. 0, with
/// `out` empty, if there is none and for a null path; 0 for a null `out`.
VTRUTILS_API int HasSubDir(const char* path, char* out);

/// True for one or two characters, whatever they are, and for a letter, ":" and "\".
VTRUTILS_API bool IsRootFolder(const char* path);

/// True for an existing folder. False for null.
VTRUTILS_API bool IsValidDirectory(const char* path);

// Drives.

/// True when the path up to its first backslash or slash names a fixed drive; a path that begins
/// with one is answered for the current drive. False without either and for null.
VTRUTILS_API bool IsOnLocalHardDrive(const char* path);

/// What the caller may still write there, in kilobytes of 1,024 bytes. The drive is the path up to
/// the first backslash after a colon, or the whole path if there is none. If Windows does not tell:
/// 2,048,000 for a network path with a share, so that hosts let the user try, and 0 for any other
/// and for null.
VTRUTILS_API double GetKBFree(const char* path);

/// Logs a line for each drive, with the free space of fixed ones. Does nothing while logging is
/// off. Asks no further drive after 20 seconds.
VTRUTILS_API void LogCurrentHardDriveSpace();

// Special places.

/// The folder of a module's file, with its trailing backslash and long names; null is the running
/// program. False for a null buffer and a size below 1; false, with an empty buffer, for what is
/// not a module.
VTRUTILS_API bool GetExeDirectory(char* out, int size, HMODULE module);

/// Writes the path with the long name of each component; a folder gets a trailing backslash. The
/// whole buffer is zeroed first, and stays so for a null, empty or too long path, when a component
/// does not exist, when the result does not fit, and for a path that begins with a backslash. A
/// path without a drive is taken from the current folder. Does nothing for a null buffer or a size
/// below 1.
VTRUTILS_API void GetLongPathNameSafe(const char* shortPath, char* out, int size);

/// The folder with this shell identifier (CSIDL), without a trailing backslash; with `create` it is
/// made when it is missing. The whole buffer is zeroed first. False when there is no such folder,
/// when a missing one cannot be made, and for a null buffer or a size below 1.
VTRUTILS_API bool GetSpecialFolderPath(char* out, int size, int folderId, bool create);

/// `GetSpecialFolderPath` of one folder each.
VTRUTILS_API bool GetDesktopPath(char* out, int size, bool create);
VTRUTILS_API bool GetMyMusicPath(char* out, int size, bool create);
VTRUTILS_API bool GetCurrentUserAppDataPath(char* out, int size, bool create);
VTRUTILS_API bool GetInternetCachePath(char* out, int size);
VTRUTILS_API bool GetCommonAppDataPath(char* out, int size, bool create);
VTRUTILS_API bool GetMyPicturesPath(char* out, int size, bool create);

/// The same, but "C:\My Documents" when there is no such folder, and "C:\" when it is missing and
/// cannot be made. False only for a null buffer or a size below 1.
VTRUTILS_API bool GetMyDocumentsPath(char* out, int size, bool create);

// Times of files. A file is opened for reading, also while others read or write it.

/// -1, 0 or 1 when the first file was written before, with or after the second; -100 when one of
/// them is missing or cannot be opened, and for null.
VTRUTILS_API int CompareFileTimeStampsA(const char* file1, const char* file2);
VTRUTILS_API int CompareFileTimeStampsW(const wchar_t* file1, const wchar_t* file2);

/// When the file was last written. False, with nothing written, when it cannot be opened and for
/// null.
VTRUTILS_API bool GetFileLastModificationDateA(const char* file, FILETIME* lastWrite);
VTRUTILS_API bool GetFileLastModificationDateW(const wchar_t* file, FILETIME* lastWrite);
VTRUTILS_API bool GetFileLastModificationTime(const char* file, FILETIME* lastWrite);

// Files that were copied to the clipboard.

/// 0 while another program has the clipboard open.
VTRUTILS_API unsigned NumFileNamesOnClipboard();

/// "" when there are no more than `index` files and when memory runs out. Does nothing for a null
/// buffer or a size of 0.
VTRUTILS_API void GetFileNameFromClipboardA(unsigned index, char* out, unsigned size);
VTRUTILS_API void GetFileNameFromClipboardW(unsigned index, wchar_t* out, unsigned size);

// The shell. `window` owns messages that the shell shows, and may be null; `showCommand` is one of
// the SW_ values.

/// Opens the URL with what is registered for it; failing that, runs the program that opens ".html"
/// files, and then Internet Explorer, with it. False when nothing could be started and for null.
VTRUTILS_API bool LaunchBrowser(const char* url, HWND window, int showCommand);

/// Shows the file selected in its folder; for a path with a comma, which cannot be selected that
/// way, the folder alone. Returns what `ShellExecuteA` gave, which is above 32 on success; null,
/// with nothing started, for null, for a path that is too long, and when there is no folder to
/// open.
VTRUTILS_API HINSTANCE OpenContainingFolder(const char* path, HWND window);

// Strings in the registry. A text is read as it was written, byte for byte, in the ANSI page and in
// the language's. Other programs see it as text of the ANSI page; if its bytes are not characters
// there, as text of the language's page. False for a null or missing argument.

/// Reads a string value into `out`, all of which is zeroed first. It stays so if there is no such
/// value, if the value is not a string, and if it does not fit; the answer is true all the same if
/// the key could be opened. False for a size of 0, too.
VTRUTILS_API bool GetRegistryString(HKEY root, const char* subKey, const char* valueName, char* out,
                                    unsigned size);

/// Makes the key where it is missing. False when it cannot be opened or written.
VTRUTILS_API bool WriteRegistryString(HKEY root, const char* subKey, const char* valueName,
                                      const char* text);

// Names of files.

/// Copies `in` with `replacement` in place of each of / \ : * ? " < > |. `out` holds as many bytes
/// as `in` and may be `in`. Does nothing for null.
VTRUTILS_API void ValidateFileName(const char* in, char* out, char replacement);

/// Changes `path`, a buffer of 260 bytes, to a name that no file has. The extension stays. The new
/// name is the old one, `separator` (left out if it is 0) and the first free number from 1 on. In
/// bracket mode, it is the old one without its mark, a space and "[number]", with numbers that
/// continue from the last one used. Returns 1. A path that names no file stays as it is, with a
/// result of 1, but in bracket mode a free name is marked too. 0, with the path as it was, without
/// `allowRename` if the name would have to be changed, for a path without a file name, and if the
/// new path would not fit. Each number that is taken costs a look at the disk. The process has one
/// counter: callers on several threads must take turns.
VTRUTILS_API int UniqueFileName(char* path, bool allowRename, char separator, bool bracketMode);

/// Removes the last mark of a file name, "[", digits and "]", and the spaces before it; with
/// `trim`, then also what `TrimWhitespace` removes. "[", digits and "]" at the very start are not a
/// mark. False, with nothing changed, if there is no mark after the last backslash, and for null.
VTRUTILS_API bool StripUniqueID(char* name, bool trim);

/// The number that bracket mode used last; the next one is greater by 1.
VTRUTILS_API unsigned GetNextUniqueFileID();
VTRUTILS_API void SetNextUniqueFileID(unsigned id);

/// Copies a name for a disc, in upper case. Everything but A to Z, digits, "." and "_" becomes
/// `replacement`; with `isPath`, "/" and "\" stay. Without `isPath`, a name of 30 bytes or more
/// that has a dot is shortened to 30, extension included. `out` holds as many bytes as `in` and may
/// be `in`. True if anything was replaced or shortened; a name of exactly 30 bytes counts as
/// shortened. False for null.
VTRUTILS_API bool MakeISO9660FriendlyName(const char* in, char* out, bool isPath, char replacement);

/// The same with other rules: names of 31 bytes or more are shortened to 31, the case stays, and
/// these are replaced: bytes from 0x80 on, two-byte characters, control bytes below 0x1F, * : ; ?
/// and, without `isPath`, "/" and "\".
VTRUTILS_API bool MakeJolietFriendlyName(const char* in, char* out, bool isPath, char replacement);

#endif
