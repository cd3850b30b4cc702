#ifndef VTRUTILS_BASE_TEXTFILE_H
#define VTRUTILS_BASE_TEXTFILE_H

#include "utilities/base/OwnedText.h"

/// Text files read whole, and UTF-16 reduced to single bytes. Private to the library. One thread at
/// a time.

namespace vtr {

/// A file of 2 GB or more counts as one for which memory runs out.
enum class FileReading { good, cannotOpen, noMemory, cannotRead };

/// The bytes of one file, with two zero bytes after them.
class FileBytes {
public:
    FileReading TryRead(const char* path);
    FileReading TryRead(const wchar_t* path);
    template <class Char>
    bool Read(const Char* path) {
        return TryRead(path) == FileReading::good;
    }

    const unsigned char* Data() const { return bytes.get(); }
    /// The size of the file, even if there was no memory for it.
    unsigned Size() const { return size; }

private:
    friend class TextBlock;

    OwnedBytes bytes;
    unsigned size = 0;
};

/// Text of a buffer as single bytes: the buffer itself, or, when it looks like UTF-16, a copy in
/// which each unit keeps its low byte. A byte-order mark is left out. The buffer must outlive this.
class SingleByteText {
public:
    /// Requires: length < 2 GB.
    SingleByteText(const unsigned char* data, unsigned length);

    /// False when there was no memory for the copy.
    bool Good() const { return text != nullptr; }
    const char* Text() const { return text; }
    unsigned Length() const { return size; }

private:
    friend class TextBlock;

    OwnedText copy;
    const char* text;
    unsigned size;
};

/// The text of one file as single bytes, in a block that may be written to and kept.
class TextBlock {
public:
    /// As `FileBytes::Read`.
    bool Read(const wchar_t* path);

    /// A zero byte, which may be written to as well, is after the text.
    char* Text() const { return block.get() + start; }
    unsigned Length() const { return length; }

    /// The block, in which the text stays where it is, and the number of its bytes that hold text.
    OwnedText Release(std::size_t& size) {
        size = start + length;
        return std::move(block);
    }

private:
    OwnedText block;
    std::size_t start = 0;
    unsigned length = 0;
};

} // namespace vtr

#endif
