#include "common/WidePath.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/base/SameText.h"
#include "utilities/text/language/LanguageState.h"
#include "utilities/text/language/LanguageStrings.h"
#include "utilities/text/tables/DelimitedTextFileInternals.h"

#include <cstdio>
#include <cstring>

namespace {

enum Column : unsigned { languageName = 0, defaultMark = 1, charset = 8, codePage = 9 };

/// A folder that was set, or the host's. False when it does not fit.
template <std::size_t capacity>
bool AppendFolder(const char* folder, vtr::PathBuilder<capacity>& path) {
    return path.Append(*folder != '\0' ? vtr::WidePath(folder, vtr::CurrentCodePage()).Get()
                                       : vtr::Language().hostFolder);
}

/// "Languages.csv" in the master language folder, read anew.
class LanguageTable {
public:
    LanguageTable() {
        vtr::PathBuilder<2 * MAX_PATH> path;
        if (AppendFolder(vtr::Language().masterLanguageFolder, path) &&
            path.Append(L"Languages.csv"))
            vtr::Internals<CDelimitedTextFile>::Open(table, path.Get(), /*narrowPath=*/nullptr, ',',
                                                     /*firstLineIsHeader=*/true, '"');
    }

    unsigned Count() const { return table.NumRecords(); }

    /// Null where there is none.
    const char* Field(unsigned row, unsigned column) const { return table.GetField(row, column); }

    /// The field in the first row of the language that has one, or null.
    const char* FirstField(const char* language, unsigned column) const {
        for (unsigned row = 0; row < Count() && !vtr::IsEmptyText(language); ++row) {
            if (vtr::SameText(Field(row, languageName), language) && Field(row, column) != nullptr)
                return Field(row, column);
        }
        return nullptr;
    }

    /// The field of the default language, or null.
    const char* DefaultField(unsigned column) const {
        unsigned found = Count();
        for (unsigned row = 0; row < Count(); ++row) {
            if (vtr::SameText(Field(row, defaultMark), "Y"))
                found = row;
        }
        return Field(found, column);
    }

    /// 0 where there is none.
    long FirstNumber(const char* language, unsigned column) const {
        const char* field = FirstField(language, column);
        return field != nullptr ? std::strtol(field, nullptr, 10) : 0;
    }

private:
    CDelimitedTextFile table;
};

/// False for what no host can pass back.
bool StorePathInHostFolder(const char* name, char* path) {
    vtr::PathBuilder<> wide;
    if (!wide.Append(vtr::Language().hostFolder) ||
        !wide.Append(vtr::WidePath(name, vtr::CurrentCodePage()).Get()))
        return false;
    const vtr::OwnedText narrow = vtr::NarrowPath(wide.Get());
    if (narrow == nullptr || std::strlen(narrow.get()) >= MAX_PATH)
        return false;
    std::strcpy(path, narrow.get());
    return true;
}

} // namespace

void SetLanguage(char* language) {
    vtr::SetCurrentCodePage(GetCodePageFromLanguage(language));
    vtr::Language().currentCharset = GetCharsetFromLanguage(language);
}

unsigned int GetCodePageFromLanguage(char* language) {
    const long number = LanguageTable().FirstNumber(language, codePage);
    return number > 1 ? static_cast<unsigned>(number) : 0;
}

unsigned char GetCharsetFromLanguage(char* language) {
    const long number = LanguageTable().FirstNumber(language, charset) & 0xFF;
    return static_cast<unsigned char>(number > 1 ? number : 1);
}

bool GetStringFileFromLanguage(char* language, StringFileFields field, char* path,
                               bool useDefault) {
    const LanguageTable table;
    const unsigned column = static_cast<unsigned>(field);
    const char* name = useDefault ? nullptr : table.FirstField(language, column);
    if (name == nullptr)
        name = table.DefaultField(column);
    const char* folder = vtr::Language().languageFolder;
    if (path == nullptr || name == nullptr)
        return false;
    if (*folder == '\0')
        return StorePathInHostFolder(name, path);
    if (std::strlen(folder) + std::strlen(name) >= MAX_PATH)
        return false;
    std::snprintf(path, MAX_PATH, "%s%s", folder, name);
    return true;
}

int GetNumberOfLanguageStringFiles() {
    return static_cast<int>(LanguageTable().Count());
}

bool GetLanguageName(int index, char* buffer, int size) {
    const LanguageTable table;
    const char* name =
        index >= 0 ? table.Field(static_cast<unsigned>(index), languageName) : nullptr;
    if (name == nullptr || buffer == nullptr || size < 1)
        return false;
    const std::size_t length = std::strlen(name) + 1;
    const std::size_t room = static_cast<std::size_t>(size);
    std::memcpy(buffer, name, length < room ? length : room);
    return true;
}
