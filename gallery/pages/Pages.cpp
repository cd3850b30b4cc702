#include "gallery/pages/Pages.h"

#include "gallery/pages/dialogs/DialogsPage.h"
#include "gallery/pages/files/FilesPage.h"
#include "gallery/pages/folders/FoldersPage.h"
#include "gallery/pages/ini/IniDocumentPage.h"
#include "gallery/pages/language/LanguagePage.h"
#include "gallery/pages/observers/ObserversPage.h"
#include "gallery/pages/online/MusicPage.h"
#include "gallery/pages/online/SoundsPage.h"
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

constexpr HeaderCalls iniCalls[] = {
    {L"utilities/text/ini/IniFileReader.h", L"CIniFileReader, CIniSection, CIniValue"}};
constexpr HeaderCalls xmlCalls[] = {{L"utilities/xml/XMLFile.h", L"CXMLFile"},
                                    {L"utilities/xml/XMLNode.h", L"CXMLNode"},
                                    {L"utilities/xml/XMLValue.h", L"CXMLValue"}};
constexpr HeaderCalls tableCalls[] = {
    {L"utilities/text/tables/DelimitedTextFile.h", L"CDelimitedTextFile"}};
constexpr HeaderCalls textCalls[] = {
    {L"utilities/text/html/HtmlText.h",
     L"DeHTMLifyString, ParseForHTML, ParseCarriageReturns, MakeLengthString, MakeFileSizeString, "
     L"HasBadWord"},
    {L"utilities/ui/LinkControl.h", L"CLinkControl"}};
constexpr HeaderCalls languageCalls[] = {
    {L"utilities/text/language/LanguageStrings.h",
     L"SetLanguage, SetStringFile, SetBackupStringFile, GetStringFileFromLanguage, "
     L"GetCodePageFromLanguage, GetCharsetFromLanguage, MyLoadString"}};
constexpr HeaderCalls recentCalls[] = {{L"utilities/containers/MRUList.h", L"CMRUList"},
                                       {L"utilities/containers/LastDirList.h", L"CLastDirList"}};
constexpr HeaderCalls fileCalls[] = {
    {L"utilities/system/files/FileFunctions.h",
     L"ValidateFileName, MakeISO9660FriendlyName, MakeJolietFriendlyName, UniqueFileName, "
     L"StripUniqueID, GetExeDirectory, GetDesktopPath, GetMyDocumentsPath, GetKBFree, "
     L"OpenContainingFolder"}};
constexpr HeaderCalls folderCalls[] = {
    {L"utilities/ui/ExplorerTree.h", L"CExplorerTree, TExplorerTreeProperties"}};
constexpr HeaderCalls undoCalls[] = {{L"utilities/undo/UndoMgr.h", L"CUndoMgr"}};
constexpr HeaderCalls observerCalls[] = {
    {L"utilities/system/objects/Observable.h", L"Observable, Observer"}};
constexpr HeaderCalls regionCalls[] = {{L"utilities/containers/RectangleList.h", L"RectangleList"}};
constexpr HeaderCalls dialogCalls[] = {
    {L"utilities/ui/MessageBoxes.h", L"UT_MyMessageStr, UT_DoNotAskLastMessageAgain"},
    {L"utilities/ui/ProgressMeter.h", L"CProgressMeter"},
    {L"utilities/ui/LongOperationDlg.h", L"CLongOperationDlg"},
    {L"utilities/ui/WindowGeometry.h",
     L"CenterWindow, AdjustRectToFitOnScreen, IsRectOnTheScreen, SetWindowTransparency, "
     L"EnableFileDropping"},
    {L"utilities/ui/MyToolTip.h", L"CMyToolTip"}};
constexpr HeaderCalls soundCalls[] = {
    {L"utilities/online/FreeSoundOrg.h", L"CFreeSoundOrg"},
    {L"utilities/online/OnlineSoundRepo.h", L"COnlineSoundRepo"},
    {L"utilities/online/ServiceHosts.h", L"SetSoundRepoHost"},
    {L"vtrfutls/InternetAccess.h", L"MyInternetAccess, IsInternetConnectionAvailable"}};
constexpr HeaderCalls musicCalls[] = {
    {L"utilities/online/MusicBrainzLookup.h", L"MusicBrainzLookup"},
    {L"utilities/online/CDLookup.h", L"CDLookup"},
    {L"utilities/online/ServiceHosts.h", L"SetMusicLookupHost"}};
constexpr HeaderCalls promoCalls[] = {{L"utilities/promo/PromoScript.h", L"CPromoScript"}};
constexpr HeaderCalls systemCalls[] = {
    {L"utilities/system/info/SystemInfo.h",
     L"GetWindowsSystemVersion, OSIsNativeUnicode, SystemUsesXPThemes, SystemUsesAeroThemes, "
     L"CPUSpeed, BadIntelAppAcceleratorInstalled"},
    {L"utilities/system/info/CpuUsage.h", L"CCpuUsage"}};

constexpr PageEntry pages[] = {
    {.titleKey = "IniDocument",
     .groupKey = "GroupDocuments",
     .pictureName = L"ini-document",
     .extension = L"ini",
     .make = MakeIniDocumentPage,
     .sentenceKey = "IniSentence",
     .helpKey = "IniHelp",
     .calls = iniCalls},
    {.titleKey = "XmlDocument",
     .pictureName = L"xml-document",
     .extension = L"xml",
     .make = MakeXmlDocumentPage,
     .sentenceKey = "XmlSentence",
     .helpKey = "XmlHelp",
     .calls = xmlCalls},
    {.titleKey = "Table",
     .pictureName = L"table",
     .extension = L"csv",
     .make = MakeTablePage,
     .sentenceKey = "TableSentence",
     .helpKey = "TableHelp",
     .calls = tableCalls},
    {.titleKey = "TextPage",
     .groupKey = "GroupTexts",
     .pictureName = L"text",
     .make = MakeTextPage,
     .sentenceKey = "TextSentence",
     .helpKey = "TextHelp",
     .calls = textCalls},
    {.titleKey = "Language",
     .pictureName = L"language",
     .make = MakeLanguagePage,
     .sentenceKey = "LanguageSentence",
     .helpKey = "LanguageHelp",
     .calls = languageCalls},
    {.titleKey = "RecentFiles",
     .groupKey = "GroupFiles",
     .pictureName = L"recent-files",
     .make = MakeRecentFilesPage,
     .sentenceKey = "RecentSentence",
     .helpKey = "RecentHelp",
     .calls = recentCalls},
    {.titleKey = "Files",
     .pictureName = L"files",
     .make = MakeFilesPage,
     .sentenceKey = "FilesSentence",
     .helpKey = "FilesHelp",
     .calls = fileCalls},
    {.titleKey = "Folders",
     .pictureName = L"folders",
     .make = MakeFoldersPage,
     .sentenceKey = "FoldersSentence",
     .helpKey = "FoldersHelp",
     .calls = folderCalls},
    {.titleKey = "Undo",
     .groupKey = "GroupObjects",
     .pictureName = L"undo",
     .make = MakeUndoPage,
     .sentenceKey = "UndoSentence",
     .helpKey = "UndoHelp",
     .calls = undoCalls},
    {.titleKey = "Observers",
     .pictureName = L"observers",
     .make = MakeObserversPage,
     .sentenceKey = "ObserversSentence",
     .helpKey = "ObserversHelp",
     .calls = observerCalls},
    {.titleKey = "Regions",
     .pictureName = L"regions",
     .make = MakeRegionsPage,
     .sentenceKey = "RegionsSentence",
     .helpKey = "RegionsPageHelp",
     .calls = regionCalls},
    {.titleKey = "OnlineSounds",
     .groupKey = "GroupOnline",
     .pictureName = L"online-sounds",
     .make = MakeSoundsPage,
     .sentenceKey = "OnlineSoundsSentence",
     .helpKey = "OnlineSoundsHelp",
     .calls = soundCalls},
    {.titleKey = "OnlineMusic",
     .pictureName = L"online-music",
     .make = MakeMusicPage,
     .sentenceKey = "OnlineMusicSentence",
     .helpKey = "OnlineMusicHelp",
     .calls = musicCalls},
    {.titleKey = "Dialogs",
     .groupKey = "GroupSystem",
     .pictureName = L"dialogs",
     .make = MakeDialogsPage,
     .sentenceKey = "DialogsSentence",
     .helpKey = "DialogsHelp",
     .calls = dialogCalls},
    {.titleKey = "Promo",
     .pictureName = L"promo",
     .make = MakePromoPage,
     .sentenceKey = "PromoSentence",
     .helpKey = "PromoHelp",
     .calls = promoCalls},
    {.titleKey = "System",
     .pictureName = L"system",
     .make = MakeSystemPage,
     .sentenceKey = "SystemSentence",
     .helpKey = "SystemHelp",
     .calls = systemCalls},
};

} // namespace

std::span<const PageEntry> AllPages() {
    return pages;
}

} // namespace gallery
