#include "gallery/pages/Pages.h"

#include <algorithm>
#include <iterator>
#include <shlwapi.h>

// The table of pages: key of the title, name of the picture, extension of the files that it opens,
// and NAME for the function `MakeNAME` that the page's file in pages/ defines.
#define GALLERY_PAGES(PAGE)                                                                        \
    PAGE("IniDocument", L"ini-document", L"ini", IniDocumentPage)                                  \
    PAGE("XmlDocument", L"xml-document", L"xml", XmlDocumentPage)                                  \
    PAGE("Table", L"table", L"csv", TablePage)                                                     \
    PAGE("Language", L"language", nullptr, LanguagePage)                                           \
    PAGE("RecentFiles", L"recent-files", nullptr, RecentFilesPage)                                 \
    PAGE("Files", L"files", nullptr, FilesPage)                                                    \
    PAGE("TextPage", L"text", nullptr, TextPage)                                                   \
    PAGE("Observers", L"observers", nullptr, ObserversPage)                                        \
    PAGE("Regions", L"regions", nullptr, RegionsPage)                                              \
    PAGE("Undo", L"undo", nullptr, UndoPage)

namespace gallery {

#define GALLERY_DECLARE(titleKey, pictureName, extension, name) std::unique_ptr<Page> Make##name();
GALLERY_PAGES(GALLERY_DECLARE)

#define GALLERY_ENTRY(titleKey, pictureName, extension, name)                                      \
    {titleKey, pictureName, extension, Make##name},
const PageEntry pages[] = {GALLERY_PAGES(GALLERY_ENTRY)};
const int pageCount = static_cast<int>(std::size(pages));

int PageOfFile(const std::wstring& path) {
    const wchar_t* extension = PathFindExtensionW(path.c_str());
    const PageEntry* page = std::find_if(pages, pages + pageCount, [&](const PageEntry& entry) {
        return entry.extension != nullptr && *extension == L'.' &&
               lstrcmpiW(extension + 1, entry.extension) == 0;
    });
    return page != pages + pageCount ? static_cast<int>(page - pages) : 0;
}

} // namespace gallery
