#ifndef VTRUTILS_TEXT_HTML_HTMLTEXT_H
#define VTRUTILS_TEXT_HTML_HTMLTEXT_H

#include "utilities/Export.h"

/// Texts made ready for display: HTML decoded and made, lengths and sizes in words, offensive words
/// found. Tags, entities and addresses are ASCII in every code page.
/// Thread-safety: immutable and safe.

/// Decodes references in place, from left to right and never what a reference gave: "%20" and
/// "&nbsp;" give a space; "&amp;", "&apos;" and "&quot;" their character; "&#65;" and "&#x41;", of
/// at most 15 digits, the byte of that value or "?" from 256 on, hexadecimal ones as
/// `HexStringToInt` reads them. "&lt" and "&gt" are names without a semicolon, so "&lt;" gives
/// "<;". The other names of ISO-8859-1 characters give "?", but "&yuml;" gives the byte 255. Names
/// are known in any case; anything else stays. "&#0;" ends the text. Does nothing for null, "" or a
/// `size` (that of the buffer) below 2.
VTRUTILS_API void DeHTMLifyString(char* text, unsigned size);

/// Copies `length` bytes of plain text or HTML, up to a zero byte, and makes links of words outside
/// tags. A word ends at white space, "<" and ">":
///
/// | word                                            | link and text                     |
/// |-------------------------------------------------|-----------------------------------|
/// | has "href"                                      | none, copied                      |
/// | "mailto:", "@", later "." that is not its end   | word, the rest after "mailto:"    |
/// | "@", later "." that is not its end              | "mailto:" and the word, the word  |
/// | begins with "http://"                           | the word, the word                |
/// | begins with "www" or has ".com", ".edu", ".org" | "http://" and the word, the word  |
///
/// The result is terminated, cut to `destinationSize` - 1 bytes; a word needs up to twice its
/// length plus 31. Null counts as empty. Does nothing for a null destination or a size below 1. The
/// texts must not overlap.
VTRUTILS_API void ParseForHTML(char* source, long length, char* destination, long destinationSize);

/// Copies the text with one carriage return for each "\r" and "\n", backslash and letter. `size` is
/// not used. Requires: room for the source, which may be the destination. Null counts as empty.
/// Does nothing for a null destination.
VTRUTILS_API void ParseCarriageReturns(const char* source, char* destination, long size);

/// "01:02:03" or, below one hour or with `omitHours`, "02:03"; `showMilliseconds` adds ":004".
/// Omitted hours are dropped, not added to the minutes. Requires: 18 bytes. Does nothing for null.
VTRUTILS_API void MakeLengthString(long milliseconds, char* buffer, int showMilliseconds,
                                   int omitHours);

/// "1023 Bytes", "1 KB" rounded down below 1,048,576 bytes, else "1.50 MB". `size` is not used.
/// Requires: 11 bytes. Does nothing for null.
VTRUTILS_API void MakeFileSizeString(unsigned long bytes, char* buffer, int size);

/// True when the text holds a word of the library's list of offensive words, also as part of
/// another word and in any case. False for null and "".
VTRUTILS_API bool HasBadWord(char* text);

#endif
