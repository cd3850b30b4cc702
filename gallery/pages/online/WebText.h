#ifndef VTRUTILS_GALLERY_PAGES_ONLINE_WEBTEXT_H
#define VTRUTILS_GALLERY_PAGES_ONLINE_WEBTEXT_H

#include <string>

/// Between the texts of windows and those of web services, which are UTF-8. One thread at a time.

namespace gallery {

/// As a value in an address: all but ASCII letters, digits, "-", "_", "." and "~" is escaped.
std::string AddressValue(const std::wstring& text);

/// Line breaks and other control characters become spaces: lists and fields show one line.
std::wstring LineOfService(const char* utf8);

/// The same with its line breaks, and without the tags that descriptions have.
std::wstring LinesOfService(const char* utf8);

/// "3:07"; with hours where there are any.
std::wstring LengthText(long milliseconds);

/// Which part of all results is shown: "21 to 40 of 95"; "" for none.
std::wstring RangeText(int first, int count, int total);

} // namespace gallery

#endif
