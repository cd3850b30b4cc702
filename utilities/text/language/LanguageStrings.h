#ifndef VTRUTILS_TEXT_LANGUAGE_LANGUAGESTRINGS_H
#define VTRUTILS_TEXT_LANGUAGE_LANGUAGESTRINGS_H

#include "utilities/Export.h"

/// Texts for users, looked up by key in language string files, and the table of languages
/// "Languages.csv"; docs/file-formats.md describes both files.
///
/// An application calls, in this order: `SetMasterLanguageFileFolder`, `SetLanguageFolderLocation`,
/// `GetStringFileFromLanguage`, `SetStringFile` with the result, `SetBackupStringFile` with the
/// file of the default language, `SetLanguage`, and then looks up texts on any thread.
///
/// Paths have at most 259 bytes. A setter leaves the path as it was when it is given a longer one;
/// null counts as "". FileFunctions.h says in which code page a path is.
/// Thread-safety: one thread at a time for all but `MyLoadString` and its `W`, `_ToInt` and
/// `_ToDouble` forms, which are locked by themselves while no path or language is set.

/// A column of "Languages.csv" that names a file of each language. What the columns 2 to 7 name is
/// up to the application that ships the table; it may use any other column by its number.
enum StringFileFields : int {
    StringFileColumn2 = 2,
    StringFileColumn3 = 3,
    StringFileColumn4 = 4,
    StringFileColumn5 = 5,
    StringFileColumn6 = 6,
    StringFileColumn7 = 7,
};

// Look-ups. A key without a text yields the key, so that users see something.

/// Writes the text of the key, cut to `bufferSize` - 1 bytes, and returns the length of what is in
/// the buffer; 0 with nothing written for a null buffer or a size below 1. A null key counts as "".
/// The key, too, is cut where it is the answer: a buffer must hold the keys it is used for.
///
/// With a null or empty `file` the text comes from the current string file or, when the key is not
/// in it, from the backup file; double quotes around the whole text, if it has more than two
/// characters, are removed. What was found is kept as it is now in the buffer. Until the library is
/// unloaded, it is the answer to this key in this spelling whenever no file is given, whatever the
/// files, size and escapes are then.
///
/// With a `file` the text comes from it or, when the key is not in it, from the file of the same
/// name in the folder of the backup file. Quotes stay, and nothing is kept.
///
/// If the first file cannot be read, the second is not tried: the answer is the key.
///
/// `processEscapes` replaces `\r\n` and `\n` by a line feed, `\t` by a tab, `\"` by a double quote
/// and `\#` by "#"; there is no escape for the backslash. All backslashes right before an escaped
/// double quote or "#" are removed.
VTRUTILS_API int MyLoadString(const char* key, char* buffer, int bufferSize, char* file,
                              bool processEscapes);

/// As `MyLoadString` with the current string file and escapes, whatever the last two arguments are,
/// converted with the current code page. `bufferLength` is in units; the result is the number of
/// bytes of the text, 0 when memory runs out.
VTRUTILS_API int MyLoadStringW(const char* key, wchar_t* buffer, int bufferLength, char* file,
                               bool processEscapes);

/// The number at the start of the first 63 bytes of the text, 0 if there is none; the default for
/// an empty text only. A key without a text thus gives the number that the key begins with, or 0.
VTRUTILS_API int MyLoadString_ToInt(const char* key, int defaultValue, char* file,
                                    bool processEscapes);
VTRUTILS_API double MyLoadString_ToDouble(const char* key, double defaultValue, char* file,
                                          bool processEscapes);

/// Reads the text from the section "Strings" of the current string file, as Windows reads profiles,
/// in the ANSI page. The backup file is not tried. Returns 1 if the buffer is not empty, else 0.
VTRUTILS_API int LoadLanguageString(const char* key, char* buffer, unsigned long size);

/// The same with `\n` replaced by CR LF and `\t` by a tab. 0 for a null key or buffer or a size
/// of 0.
VTRUTILS_API int LoadLanguageStringFormatted(const char* key, char* buffer, unsigned long size);

// Where texts come from. Texts that look-ups have kept stay as they are.

/// The string file of the current language, "" at the start. The two are the same.
VTRUTILS_API void SetStringFile(char* path);
VTRUTILS_API void SetLanguageFile(const char* path);
/// Never null. The library keeps the text.
VTRUTILS_API char* GetStringFile();
/// "", as at the start: no backup file.
VTRUTILS_API void SetBackupStringFile(char* path);
/// The file of the library's own texts; at the start "utility-strings.ini" in the host's folder.
VTRUTILS_API void OverrideUtilitiesStringFile(char* path);
/// Where the files that "Languages.csv" names are; at the start the host's folder, as for the
/// folder of "Languages.csv" itself. A backslash is added where there is none at the end.
VTRUTILS_API void SetLanguageFolderLocation(char* folder);
VTRUTILS_API void SetMasterLanguageFileFolder(char* folder);

// Languages. "Languages.csv" is read anew by each call; languages are named by its column 0,
// without regard to case.

/// Makes the language's code page and character set the current ones. The string file stays as it
/// is.
VTRUTILS_API void SetLanguage(char* language);

/// The code page of narrow texts and paths. 0, as at the start, is the system's ANSI code page.
VTRUTILS_API unsigned int GetCurrentCodePage();

/// The number in column 9 of the first row of the language that has one; 0 when it is below 2, for
/// an unknown language and without a table.
VTRUTILS_API unsigned int GetCodePageFromLanguage(char* language);

/// The low byte of the number in column 8; 1 in all those cases.
VTRUTILS_API unsigned char GetCharsetFromLanguage(char* language);

/// Writes the language folder followed by the file name in column `field` of the first row of the
/// language that has one; without such a row, or with `useDefault`, of the last row with "Y" in
/// column 1. False, with nothing written, when there is none either, without a table, and for a
/// path of 260 bytes or more. `path` has room for 260 bytes.
VTRUTILS_API bool GetStringFileFromLanguage(char* language, StringFileFields field, char* path,
                                            bool useDefault);

/// The rows of the table; 0 without a table.
VTRUTILS_API int GetNumberOfLanguageStringFiles();

/// Writes the name in row `index`, at most `size` bytes: without a terminator when the name fills
/// them. False, with nothing written, when out of range, for a row without a name, a null buffer
/// and a size below 1.
VTRUTILS_API bool GetLanguageName(int index, char* buffer, int size);

#endif
