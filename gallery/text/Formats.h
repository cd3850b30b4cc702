#ifndef VTRUTILS_GALLERY_TEXT_FORMATS_H
#define VTRUTILS_GALLERY_TEXT_FORMATS_H

#include <string>
#include <windows.h>

/// Numbers, sizes and times as the language that is chosen writes them: as the user's own settings
/// say if these are for the same language. One thread at a time.

namespace gallery {

/// With separators between groups of digits.
std::wstring Number(long long number);
std::wstring Number(double number, unsigned decimals);

/// In bytes below 1,024, or in the largest of KB, MB, GB and TB that makes it 1 or more.
std::wstring Size(double bytes);

/// In local time; "" for a time that is none.
std::wstring DateAndTime(const FILETIME& time);

} // namespace gallery

#endif
