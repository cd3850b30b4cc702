#include "gallery/pages/Pages.h"

#include "gallery/pages/dialogs/DialogsPage.h"
#include "gallery/pages/files/FilesPage.h"
#include "gallery/pages/folders/FoldersPage.h"
#include "gallery/pages/ini/IniDocumentPage.h"
#include "gallery/pages/language/LanguagePage.h"
#include "gallery/pages/observers/ObserversPage.h"
#include "gallery/pages/promo/PromoPage.h"
#include "gallery/pages/recent/RecentFilesPage.h"
#include "gallery/pages/regions/RegionsPage.h"
#include "gallery/pages/system/SystemPage.h"
#include "gallery/pages/table/TablePage.h"
#include "gallery/pages/text/TextPage.h"
#include "gallery/pages/undo/UndoPage.h"
#include "gallery/pages/xml/XmlDocumentPage.h"

namespace gallery {

namespace {

constexpr PageEntry pages[] = {
    {.titleKey = "IniDocument",
     .pictureName = L"ini-document",
     .extension = L"ini",
     .make = MakeIniDocumentPage},
    {.titleKey = "XmlDocument",
     .pictureName = L"xml-document",
     .extension = L"xml",
     .make = MakeXmlDocumentPage},
    {.titleKey = "Table", .pictureName = L"table", .extension = L"csv", .make = MakeTablePage},
    {.titleKey = "Language", .pictureName = L"language", .make = MakeLanguagePage},
    {.titleKey = "RecentFiles", .pictureName = L"recent-files", .make = MakeRecentFilesPage},
    {.titleKey = "Files", .pictureName = L"files", .make = MakeFilesPage},
    {.titleKey = "Folders", .pictureName = L"folders", .make = MakeFoldersPage},
    {.titleKey = "TextPage", .pictureName = L"text", .make = MakeTextPage},
    {.titleKey = "Observers", .pictureName = L"observers", .make = MakeObserversPage},
    {.titleKey = "Regions", .pictureName = L"regions", .make = MakeRegionsPage},
    {.titleKey = "Dialogs", .pictureName = L"dialogs", .make = MakeDialogsPage},
    {.titleKey = "Promo", .pictureName = L"promo", .make = MakePromoPage},
    {.titleKey = "System", .pictureName = L"system", .make = MakeSystemPage},
    {.titleKey = "Undo", .pictureName = L"undo", .make = MakeUndoPage},
};

} // namespace

std::span<const PageEntry> AllPages() {
    return pages;
}

} // namespace gallery
