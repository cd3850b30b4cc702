#ifndef VTRUTILS_SYSTEM_FILES_FILEFUNCTIONS_H
#define VTRUTILS_SYSTEM_FILES_FILEFUNCTIONS_H

#include "utilities/Export.h"

#include <windows.h>

/// Files, folders, drives, the clipboard's files, the shell and strings in the registry.
///
/// A narrow path, here and wherever the library takes one, is text in the code page of the language
/// (`SetLanguage`; the system's ANSI code page before that), of at most 259 bytes and a terminator.
/// It is text in the ANSI page if it names nothing in the language's page but something in the ANSI
/// page, if only its folder is found so, or if its bytes are characters of the ANSI page alone:
/// paths that a host had from the system stay good in every language. The second byte of a two-byte
/// character is never taken for a separator.
///
/// A path that the library hands out can be handed back. What is found below a path of the host's
/// stays in the page of that path. What the system gave is in the language's page, or in the ANSI
/// page if the language's lacks one of its letters, or the short name if both do. What has no such
/// text is passed over, or counts as missing.
///
/// Sizes of buffers are in characters, the terminator included, and what does not fit is cut off; a
/// buffer without a size holds 260. Null is accepted where a contract says what it gives. A path on
/// a server that does not answer holds the caller up for as long as Windows tries. Thread-safety:
/// immutable and safe.

// Folders.

/// Makes every missing folder whose name ends with a backslash: "C:\a\b" makes "C:\a" only,
/// "C:\a\b\" both. Of a network path the first folder made is the share. Not 0 when none is missing
/// afterwards, and where a file has the folder's name; 0 for null, fewer than 3 characters, a local
/// path without a colon, a path without such a folder, and a folder that cannot be made.
VTRUTILS_API int CreateMultiLevelDir(const char* path);

/// Writes to `out` the full path of the first file that matches `pattern`: in `folder` itself, then
/// in each of its folders in listing order, each with everything below it. Links to folders are not
/// followed, because they may lead in circles. 1, or 0 with `out` empty when there is none and for
/// a null folder or pattern; 0 for a null `out`.
VTRUTILS_API int FindFilesRecursively(const char* folder, const char* pattern, char* out);

/// True for a folder that cannot be listed, and for one whose first entry is a folder and all
/// others carry FILE_ATTRIBUTE_NORMAL. So a folder below a drive's root, which lists its parent as
/// second entry, is never empty. True for null.
VTRUTILS_API bool FolderEmpty(const char* path);

/// Writes to `out` the name of the first folder that does not begin with "." among the entries that
/// match `path` followed by "*": a folder is given with its trailing backslash. 1, or 0 with `out`
/// empty. A null path has none; 0 for a null `out`.
VTRUTILS_API int HasSubDir(const char* path, char* out);

/// True for one or two characters, whatever they are, and for a letter, ":" and "\".
VTRUTILS_API bool IsRootFolder(const char* path);

/// True for an existing folder. False for null.
VTRUTILS_API bool IsValidDirectory(const char* path);

// Drives.

/// True when the path up to its first backslash or slash names a fixed drive; a path that begins
/// with one is answered for the current drive. False without either and for null.
VTRUTILS_API bool IsOnLocalHardDrive(const char* path);

/// What the caller may still write there, in kilobytes of 1,024 bytes. The drive is asked that ends
/// with the first backslash behind a colon, or the whole path where there is none. When that fails,
/// 2,048,000 for a network path with a share, so that hosts let the user try, and 0 for any other
/// and for null.
VTRUTILS_API double GetKBFree(const char* path);

/// Logs a line for each drive, with the space on fixed ones. Nothing while logging is off; no
/// further drive is asked after 20 seconds.
VTRUTILS_API void LogCurrentHardDriveSpace();

// Special places.

/// The folder of a module's file, with its trailing backslash and long names; null is the running
/// program. False for a null buffer and a size below 1; false, with an empty buffer, for what is
/// not a module.
VTRUTILS_API bool GetExeDirectory(char* out, int size, HMODULE module);

/// Writes the path with the long name of each component; a folder gets a trailing backslash. The
/// whole buffer is zeroed first, and stays so for a null, empty or too long path, when a component
/// does not exist, when the result does not fit, and for a path that begins with a backslash. One
/// without a drive is read from the current folder. Nothing for a null buffer or a size below 1.
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

// Files that were copied to the clipboard. None when another program has the clipboard open.

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

// Strings in the registry. Text of the ANSI page or of the language's is read as it was written,
// byte for byte. Other programs see it as the ANSI page has it; only bytes that are not characters
// there are seen as the language's page has them. False for a null or missing argument.

/// Reads a string value into `out`, all of which is zeroed first. It stays so when there is no such
/// value, when it is none of a string, and when it does not fit: these are true, as long as the key
/// could be opened. False too for a size of 0.
VTRUTILS_API bool GetRegistryString(HKEY root, const char* subKey, const char* valueName, char* out,
                                    unsigned size);

/// Makes the key where it is missing. False when it cannot be opened or written.
VTRUTILS_API bool WriteRegistryString(HKEY root, const char* subKey, const char* valueName,
                                      const char* text);

// Names of files.

/// Copies `in` with `replacement` in place of each of / \ : * ? " < > |. `out` holds as many bytes
/// as `in` and may be `in`. Nothing for null.
VTRUTILS_API void ValidateFileName(const char* in, char* out, char replacement);

/// Puts a name that no file has in place of `path`, a buffer of 260 bytes: the name, `separator`
/// (none when it is 0) and the first free number from 1 on, or in bracket mode the name without its
/// old mark, a space and "[number]" with the number counted on from the last one; the extension
/// stays. 1 with the path as
/// it was when it names no file, unless in bracket mode, where a free name is marked too. 0, with
/// the path as it was, for a name that is taken and every name in bracket mode without
/// `allowRename`, for a path without a file name, and when the new path would not fit. Each number
/// that is taken costs a look at the disk.
/// The counter is one for the process: callers on several threads must take turns.
VTRUTILS_API int UniqueFileName(char* path, bool allowRename, char separator, bool bracketMode);

/// Removes the last mark of a file name, "[", digits and "]", and the spaces in front of it; with
/// `trim` then also what `TrimWhitespace` removes. A mark at the very start is none. False, with
/// nothing changed, when there is none behind the last backslash, and for null.
VTRUTILS_API bool StripUniqueID(char* name, bool trim);

/// The number that bracket mode used last; the next one is greater by 1.
VTRUTILS_API unsigned GetNextUniqueFileID();
VTRUTILS_API void SetNextUniqueFileID(unsigned id);

/// Copies a name for a disc, in upper case: everything but A to Z, digits, "." and "_" becomes
/// `replacement`, and what is no path (in which "/" and "\" stay) and has a dot is shortened from
/// 30 bytes on to 30, extension included. `out` holds as many bytes as `in` and may be `in`. True
/// when anything was replaced or shortened, which a name of 30 bytes counts as. False for null.
VTRUTILS_API bool MakeISO9660FriendlyName(const char* in, char* out, bool isPath, char replacement);

/// The same with other rules: names of 31 bytes or more are shortened to 31, the case stays, and
/// replaced are bytes from 0x80 on, two-byte characters, control bytes below 0x1F, * : ; ? and in
/// what is no path "/" and "\".
VTRUTILS_API bool MakeJolietFriendlyName(const char* in, char* out, bool isPath, char replacement);

#endif
