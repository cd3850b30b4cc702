#include "common/WidePath.h"
#include "utilities/base/PathText.h"
#include "utilities/system/files/FileFunctions.h"
#include "utilities/system/files/FolderListing.h"
#include "utilities/text/strings/StringFunctions.h"
#include "vtrfutls/FileNames.h"
#include "vtrfutls/Log.h"

#include <cstdio>
#include <cstring>

namespace {

unsigned lastUniqueFileId = 0;

/// A path cut in two; both parts are "" until `Split` succeeded.
struct SplitPath {
    char base[MAX_PATH] = "";
    char extension[MAX_PATH] = "";

    /// False for a path that names no file or is too long.
    bool Split(const char* path) {
        char name[MAX_PATH];
        const std::size_t length = std::strlen(path);
        if (length >= sizeof base || !ExtractFileName(path, name, sizeof name))
            return false;
        ExtractExtension(path, extension, sizeof extension);
        std::memcpy(base, path, length - std::strlen(extension));
        return true;
    }
};

bool FileMatches(const char* path) {
    const vtr::WidePath wide(path, vtr::CurrentCodePage());
    return static_cast<bool>(vtr::FolderListing(wide.Get()));
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The place after the mark that begins at `text`; null if none does.
const char* EndOfMark(const char* text) {
    if (*text != '[' || !IsDigit(text[1]))
        return nullptr;
    const char* p = text + 1;
    while (IsDigit(*p))
        ++p;
    return *p == ']' ? p + 1 : nullptr;
}

/// Removes the mark of a name and the spaces in front of it.
bool RemoveMark(char* name, const vtr::NameSteps& steps) {
    if (*name == '\0')
        return false;
    char* mark = nullptr;
    const char* markEnd = nullptr;
    for (char* p = name + steps.Length(name); *p != '\0'; p += steps.Length(p)) {
        const char* end = EndOfMark(p);
        if (end != nullptr || *p == '\\') {
            mark = end != nullptr ? p : nullptr;
            markEnd = end;
        }
    }
    if (mark == nullptr)
        return false;
    while (mark > name && mark[-1] == ' ')
        --mark;
    std::memmove(mark, markEnd, std::strlen(markEnd) + 1);
    return true;
}

} // namespace

int UniqueFileName(char* path, bool allowRename, char separator, bool bracketMode) {
    if (path == nullptr)
        return 0;
    if (!bracketMode && !DoesFileExist(path))
        return 1;
    SplitPath parts;
    if (!allowRename || !parts.Split(path))
        return 0;

    unsigned number = 1;
    if (bracketMode) {
        RemoveMark(parts.base, vtr::NameSteps(path));
        number = ++lastUniqueFileId;
    }
    // As a text, so that no separator is none, and not the end of each name that is tried.
    const char between[] = {separator, '\0'};
    char candidate[MAX_PATH];
    for (;; ++number) {
        const int length = bracketMode
                               ? std::snprintf(candidate, sizeof candidate, "%s [%d]%s", parts.base,
                                               static_cast<int>(number), parts.extension)
                               : std::snprintf(candidate, sizeof candidate, "%s%s%d%s", parts.base,
                                               between, static_cast<int>(number), parts.extension);
        if (length < 0 || length >= MAX_PATH)
            return 0;
        if (!FileMatches(candidate))
            break;
    }
    if (bracketMode)
        lastUniqueFileId = number;
    std::strcpy(path, candidate);
    LogFmtA("Created unique name '%s'", path);
    return 1;
}

bool StripUniqueID(char* name, bool trim) {
    if (name == nullptr || !RemoveMark(name, vtr::NameSteps(name)))
        return false;
    if (trim)
        TrimWhitespace(name, name);
    return true;
}

unsigned GetNextUniqueFileID() {
    return lastUniqueFileId;
}

void SetNextUniqueFileID(unsigned id) {
    lastUniqueFileId = id;
}
