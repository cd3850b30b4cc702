#ifndef VTRUTILS_GALLERY_OUTPUT_H
#define VTRUTILS_GALLERY_OUTPUT_H

#include <string>

namespace gallery {

enum class Stream { output, error };

/// Writes the text and the end of a line to the console that started the program, or as UTF-8 to
/// the file or pipe that stands for it. False when there is none.
bool Print(Stream stream, const std::wstring& text);

} // namespace gallery

#endif
