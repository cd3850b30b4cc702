#include "gallery/pages/files/FilesModel.h"

#include "gallery/text/Text.h"
#include "utilities/system/files/FileFunctions.h"

#include <iterator>

namespace gallery {

namespace {

/// The code page of the library's paths.
constexpr unsigned systemCodePage = CP_ACP;

using Maker = bool (*)(const char* name, char* out);

struct NameFunction {
    const wchar_t* name;
    bool returnsNothing;
    Maker make;
};

constexpr NameFunction nameFunctions[] = {
    {L"ValidateFileName", true,
     [](const char* name, char* out) {
         ValidateFileName(name, out, '_');
         return true;
     }},
    {L"MakeISO9660FriendlyName", false,
     [](const char* name, char* out) {
         return MakeISO9660FriendlyName(name, out, /*isPath=*/false, '_');
     }},
    {L"MakeJolietFriendlyName", false,
     [](const char* name, char* out) {
         return MakeJolietFriendlyName(name, out, /*isPath=*/false, '_');
     }},
    {L"StripUniqueID", false,
     [](const char* name, char* out) {
         lstrcpyA(out, name);
         return StripUniqueID(out, /*trim=*/true);
     }},
};

MadeName UniqueNameOf(const std::string& path, bool brackets) {
    char unique[MAX_PATH];
    lstrcpynA(unique, path.c_str(), MAX_PATH);
    // Only shows what the next name would be.
    const unsigned number = GetNextUniqueFileID();
    const int result = UniqueFileName(unique, /*allowRename=*/true, '_', brackets);
    SetNextUniqueFileID(number);
    return {L"UniqueFileName", brackets ? "WithBrackets" : "WithSeparator",
            NameOfFile(Widen(unique, systemCodePage)), result != 0 ? L"1" : L"0"};
}

SpecialFolder Found(const char* nameKey, bool found, const char* path) {
    return {nameKey, found ? Widen(path, systemCodePage) : L"",
            found ? GetKBFree(path) * 1024 : 0.0};
}

} // namespace

std::vector<MadeName> NamesMadeOf(const std::wstring& name, const std::wstring& folder) {
    std::vector<MadeName> made;
    std::string narrow;
    std::string path;
    const bool separated = folder.empty() || folder.back() == L'\\';
    if (!Narrow(name, narrow, systemCodePage) ||
        !Narrow(folder + (separated ? L"" : L"\\") + name, path, systemCodePage) ||
        path.size() >= MAX_PATH)
        return made;
    for (const NameFunction& function : nameFunctions) {
        char out[MAX_PATH] = "";
        const bool result = function.make(narrow.c_str(), out);
        made.push_back({function.name, nullptr, Widen(out, systemCodePage),
                        function.returnsNothing ? L"" : (result ? L"true" : L"false")});
    }
    made.push_back(UniqueNameOf(path, /*brackets=*/false));
    made.push_back(UniqueNameOf(path, /*brackets=*/true));
    return made;
}

std::vector<SpecialFolder> SpecialFolders() {
    std::vector<SpecialFolder> folders;
    char path[MAX_PATH] = "";
    bool found = GetExeDirectory(path, MAX_PATH, /*module=*/nullptr);
    folders.push_back(Found("FolderProgram", found, path));
    using Finder = bool (*)(char* out, int size, bool create);
    constexpr struct {
        const char* nameKey;
        Finder find;
    } finders[] = {
        {"FolderDesktop", GetDesktopPath},
        {"FolderDocuments", GetMyDocumentsPath},
        {"FolderMusic", GetMyMusicPath},
        {"FolderPictures", GetMyPicturesPath},
        {"FolderUserData", GetCurrentUserAppDataPath},
        {"FolderCommonData", GetCommonAppDataPath},
        {"FolderInternetCache",
         [](char* out, int size, bool) { return GetInternetCachePath(out, size); }},
    };
    for (const auto& finder : finders) {
        found = finder.find(path, MAX_PATH, /*create=*/false);
        folders.push_back(Found(finder.nameKey, found, path));
    }
    return folders;
}

std::wstring ProgramPath() {
    std::wstring path(32768, L'\0');
    path.resize(
        GetModuleFileNameW(/*hModule=*/nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

bool ShowInFolder(const std::wstring& path, HWND window) {
    std::string narrow;
    return Narrow(path, narrow, systemCodePage) &&
           reinterpret_cast<INT_PTR>(OpenContainingFolder(narrow.c_str(), window)) > 32;
}

} // namespace gallery
