#include "utilities/text/language/LanguageStrings.h"

#include "utilities/base/CodePage.h"
#include "utilities/base/LanguageSteps.h"
#include "utilities/base/OwnedText.h"
#include "utilities/base/PathBuilder.h"
#include "utilities/base/PathText.h"
#include "utilities/base/StoreCut.h"
#include "utilities/system/locks/Lock.h"
#include "utilities/text/language/LibraryText.h"
#include "utilities/text/language/ProfileText.h"
#include "utilities/text/language/StringFile.h"
#include "utilities/text/language/TextEscapes.h"
#include "utilities/text/strings/StringFunctions.h"
#include "vtrfutls/FileNames.h"

#include <cstdio>
#include <cstring>
#include <new>

using vtr::IsEmptyText;

namespace {

constexpr std::size_t numberSize = 64;

/// The second file for a key that `file`, or the current string file when that is null, lacks.
void FindBackup(const char* file, char (&path)[2 * MAX_PATH]) {
    const char* backup = vtr::Language().backupStringFile;
    if (file == nullptr || backup[0] == '\0') {
        vtr::StoreWhole(backup, path);
        return;
    }
    char folder[MAX_PATH];
    char name[MAX_PATH];
    ExtractDirectory(backup, folder, sizeof folder);
    ExtractFileName(file, name, sizeof name);
    std::snprintf(path, sizeof path, "%s%s", folder, name);
}

/// False when the key has no text. A null `file` stands for the current string file; `place`, if it
/// is not null, is where the system says that the file is.
bool ReadText(const char* key, const char* file, const wchar_t* place, char* buffer,
              std::size_t size) {
    vtr::StringFile strings;
    if (place != nullptr ? !strings.Open(place)
                         : !strings.Open(file != nullptr ? file : vtr::Language().stringFile))
        return false;
    const char* text = strings.Find(key);
    if (text == nullptr) {
        char backup[2 * MAX_PATH] = "";
        FindBackup(file, backup);
        if (backup[0] != '\0' && strings.Open(backup))
            text = strings.Find(key);
    }
    if (text != nullptr)
        vtr::StoreCut(text, buffer, size);
    return text != nullptr;
}

const char* FindKept(const char* key) {
    vtr::StringCache* cache = vtr::Language().stringCache;
    return cache != nullptr ? cache->Find(key) : nullptr;
}

void Keep(const char* key, const char* text) {
    vtr::StringCache*& cache = vtr::Language().stringCache;
    if (cache == nullptr)
        cache = new (std::nothrow) vtr::StringCache;
    if (cache != nullptr)
        cache->Add(key, text);
}

void RemoveQuotes(char* text) {
    const std::size_t length = std::strlen(text);
    if (length > 2 && text[0] == '"' && text[length - 1] == '"')
        TrimChar('"', text, text, /*maxCount=*/1);
}

void StoreFolder(const char* folder, char (&target)[MAX_PATH]) {
    char path[MAX_PATH + 1];
    if (!vtr::StoreWhole(folder, path))
        return;
    const std::size_t length = std::strlen(path);
    if (length < MAX_PATH && !vtr::EndsWithBackslash(path)) {
        path[length] = '\\';
        path[length + 1] = '\0';
    }
    vtr::StoreWhole(path, target);
}

/// False when the key has no text, and the buffer then holds the key; file and place are those of
/// `ReadText`. Requires: a buffer and a size above 0.
bool FindText(const char* key, char* buffer, std::size_t size, const char* file,
              const wchar_t* place, bool processEscapes) {
    if (key == nullptr)
        key = "";
    if (IsEmptyText(file))
        file = nullptr;
    const CSmartLock lock(&vtr::Language().stringLock);
    if (file == nullptr) {
        const char* kept = FindKept(key);
        if (kept != nullptr) {
            vtr::StoreCut(kept, buffer, size);
            return true;
        }
    }
    // The key may be what is in the buffer.
    const vtr::OwnedText ownKey = vtr::CopyText(key);
    if (!ReadText(key, file, place, buffer, size)) {
        vtr::StoreCut(key, buffer, size);
        return false;
    }
    if (processEscapes)
        vtr::ResolveEscapes(buffer);
    if (file == nullptr && ownKey != nullptr) {
        RemoveQuotes(buffer);
        Keep(ownKey.get(), buffer);
    }
    return true;
}

/// `MyLoadString` with the file and place of `ReadText`.
int LoadText(const char* key, char* buffer, int bufferSize, const char* file, const wchar_t* place,
             bool processEscapes) {
    if (buffer == nullptr || bufferSize < 1)
        return 0;
    FindText(key, buffer, static_cast<std::size_t>(bufferSize), file, place, processEscapes);
    return static_cast<int>(std::strlen(buffer));
}

} // namespace

int MyLoadString(const char* key, char* buffer, int bufferSize, char* file, bool processEscapes) {
    return LoadText(key, buffer, bufferSize, file, /*place=*/nullptr, processEscapes);
}

int vtr::LibraryText(const char* key, char* buffer, int size) {
    const LanguageState& state = Language();
    PathBuilder<2 * MAX_PATH> own;
    if (state.utilitiesStringFileSet || state.hostFolder[0] == L'\0' ||
        !own.Append(state.hostFolder) || !own.Append(L"utility-strings.ini"))
        return LoadText(key, buffer, size, state.utilitiesStringFile, /*place=*/nullptr,
                        /*processEscapes=*/true);
    return LoadText(key, buffer, size, "utility-strings.ini", own.Get(), /*processEscapes=*/true);
}

bool vtr::LanguageText(const char* key, char* buffer, int size) {
    return FindText(key, buffer, static_cast<std::size_t>(size), /*file=*/nullptr,
                    /*place=*/nullptr, /*processEscapes=*/true);
}

int MyLoadStringW(const char* key, wchar_t* buffer, int bufferLength, char* /*file*/,
                  bool /*processEscapes*/) {
    if (buffer == nullptr || bufferLength < 1)
        return 0;
    buffer[0] = L'\0';
    const vtr::OwnedText text(
        static_cast<char*>(std::malloc(static_cast<std::size_t>(bufferLength))));
    if (text == nullptr)
        return 0;
    const int length = MyLoadString(key, text.get(), bufferLength, /*file=*/nullptr,
                                    /*processEscapes=*/true);
    if (MultiByteToWideChar(GetCurrentCodePage(), /*dwFlags=*/0, text.get(), -1, buffer,
                            bufferLength) == 0)
        buffer[0] = L'\0';
    return length;
}

int MyLoadString_ToInt(const char* key, int defaultValue, char* file, bool processEscapes) {
    char text[numberSize];
    return MyLoadString(key, text, sizeof text, file, processEscapes) > 0
               ? std::strtol(text, nullptr, 10)
               : defaultValue;
}

double MyLoadString_ToDouble(const char* key, double defaultValue, char* file,
                             bool processEscapes) {
    char text[numberSize];
    return MyLoadString(key, text, sizeof text, file, processEscapes) > 0
               ? std::strtod(text, nullptr)
               : defaultValue;
}

int LoadLanguageString(const char* key, char* buffer, unsigned long size) {
    if (buffer == nullptr || size == 0)
        return 0;
    return vtr::ReadProfileText(key, buffer, size, vtr::Language().stringFile) != 0 ? 1 : 0;
}

int LoadLanguageStringFormatted(const char* key, char* buffer, unsigned long size) {
    if (key == nullptr || buffer == nullptr || size == 0)
        return 0;
    const int result = LoadLanguageString(key, buffer, size);
    const vtr::LanguageSteps steps;
    char* out = buffer;
    for (const char* in = buffer; *in != '\0';) {
        if (in[0] == '\\' && in[1] == 'n') {
            *out++ = '\r';
            *out++ = '\n';
            in += 2;
        } else if (in[0] == '\\' && in[1] == 't') {
            *out++ = '\t';
            in += 2;
        } else {
            for (std::size_t bytes = steps.Length(in); bytes > 0; --bytes)
                *out++ = *in++;
        }
    }
    *out = '\0';
    return result;
}

void SetStringFile(char* path) {
    vtr::StoreWhole(path, vtr::Language().stringFile);
}

void SetLanguageFile(const char* path) {
    vtr::StoreWhole(path, vtr::Language().stringFile);
}

char* GetStringFile() {
    return vtr::Language().stringFile;
}

void SetBackupStringFile(char* path) {
    vtr::StoreWhole(path, vtr::Language().backupStringFile);
}

void OverrideUtilitiesStringFile(char* path) {
    vtr::LanguageState& state = vtr::Language();
    if (vtr::StoreWhole(path, state.utilitiesStringFile))
        state.utilitiesStringFileSet = true;
}

void SetLanguageFolderLocation(char* folder) {
    StoreFolder(folder, vtr::Language().languageFolder);
}

void SetMasterLanguageFileFolder(char* folder) {
    StoreFolder(folder, vtr::Language().masterLanguageFolder);
}

unsigned int GetCurrentCodePage() {
    return vtr::CurrentCodePage();
}
