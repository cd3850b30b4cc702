#include "common/WidePath.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"
#include "utilities/base/CodePage.h"
#include "utilities/base/NarrowPath.h"
#include "utilities/text/language/LibraryText.h"
#include "utilities/vtrutils.h"
#include "vtrfutls/vtrfutls.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <process.h>
#include <set>

// What hosts do with paths, in folders with letters of three code pages, in each language. CTest
// runs it on systems with each of these ANSI code pages, and it runs itself in such folders.

namespace {

namespace fs = std::filesystem;

constexpr unsigned pages[] = {0, 1252, 1251, 932};
/// The second byte of both Japanese characters would be a backslash by itself.
constexpr const wchar_t* letters[] = {L"M\xFCller", L"\x41F\x440\x438\x432\x435\x442",
                                      L"\x8868\x30BD", L"ascii"};

/// A folder with a trailing backslash, and names of these letters in the same page.
struct Place {
    std::string path;
    std::string name;
    fs::path wide;

    std::string File(const char* file) const { return path + file; }
    bool Has(const wchar_t* file) const { return fs::exists(wide / file); }
    bool Holds(const wchar_t* file, std::string_view text) const {
        std::ifstream stream(wide / file, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {}).find(text) !=
               std::string::npos;
    }
};

void Write(const fs::path& file, std::string_view text) {
    std::ofstream(file, std::ios::binary) << text;
}

void Write(const std::string& path) {
    Write(vtr::WidePath(path.c_str(), vtr::CurrentCodePage()).Get(), "");
}

/// "" when the code page does not have all of it.
std::string Exact(const std::wstring& text, unsigned codePage) {
    char narrow[MAX_PATH];
    BOOL lost = FALSE;
    const int bytes = WideCharToMultiByte(codePage, WC_NO_BEST_FIT_CHARS, text.c_str(), -1, narrow,
                                          sizeof narrow, nullptr, &lost);
    return bytes > 0 && !lost ? narrow : "";
}

/// Of letters that none of the pages has.
constexpr wchar_t foreign[] = L"\xE01\xE02";

using PathBuffer = std::array<char, MAX_PATH>;

PathBuffer BufferWith(const std::string& path) {
    PathBuffer buffer{};
    path.copy(buffer.data(), buffer.size() - 1);
    return buffer;
}

bool Ini(const Place& place) {
    Write(place.wide / L"a.ini", "[Section]\r\nKey=old\r\n");
    CIniFileReader ini, again;
    char value[16];
    return ini.Init(place.File("a.ini").c_str(), false) && ini.SetValue("Section", "Key", "new") &&
           ini.Save() && place.Holds(L"a.ini", "Key = new") &&
           again.Init(place.File("a.ini").c_str(), false) &&
           again.GetString("Section", "Key", "", value, sizeof value) &&
           value == std::string("new");
}

bool Table(const Place& place) {
    Write(place.wide / L"t.csv", "A,B\r\n1,2\r\n");
    CDelimitedTextFile table, again;
    return table.Open(place.File("t.csv").c_str(), ',', true, '"') &&
           table.Save(place.File("new\\t2.csv").c_str(), ',', true, '"') &&
           place.Holds(L"new\\t2.csv", "\"A\"") &&
           again.Open(place.File("new\\t2.csv").c_str(), ',', true, '"') && again.NumRecords() == 1;
}

bool Xml(const Place& place) {
    Write(place.wide / L"x.xml", "<a><b/></a>");
    CXMLFile xml;
    return xml.Open(place.File("x.xml").c_str());
}

/// Kept texts stay, so that each look-up asks for another key.
bool Strings(const Place& place) {
    static int number = 0;
    const std::string key = "K" + std::to_string(++number);
    Write(place.wide / L"s.ini", "[Strings]\r\nProfile = text [x]\r\n");
    Write(place.wide / L"backup.ini", key + " = text\r\n");
    std::string file = place.File("s.ini"), backup = place.File("backup.ini");
    SetStringFile(file.data());
    SetBackupStringFile(backup.data());
    char found[32];
    const bool inBackup = MyLoadString(key.c_str(), found, sizeof found, nullptr, true) == 4;
    SetBackupStringFile(nullptr);
    return inBackup && MyLoadString("Profile", found, sizeof found, file.data(), true) == 8 &&
           LoadLanguageString("Profile", found, sizeof found) == 1;
}

bool Folders(const Place& place) {
    const std::string made = place.File("one\\") + place.name + "\\";
    fs::create_directories(place.wide / L"two" / foreign);
    PathBuffer sub{}, shortName{};
    return HasSubDir(place.File("two\\").c_str(), shortName.data()) == 1 &&
           IsValidDirectory((place.File("two\\") + shortName.data()).c_str()) &&
           CreateMultiLevelDir(made.c_str()) != 0 && IsValidDirectory(made.c_str()) &&
           HasSubDir(place.File("one\\").c_str(), sub.data()) == 1 && sub.data() == place.name &&
           IsOnLocalHardDrive(place.path.c_str()) && GetKBFree(place.path.c_str()) > 0;
}

bool Search(const Place& place) {
    fs::create_directory(place.wide / foreign);
    Write(place.wide / foreign / L"f.ogg", "");
    const std::string named = place.name + ".mp3";
    Write(place.File(named.c_str()));
    PathBuffer shortName{}, asNamed{};
    return FindFilesRecursively(place.path.c_str(), "*.ogg", shortName.data()) == 1 &&
           DoesFileExist(shortName.data()) &&
           FindFilesRecursively(place.path.c_str(), named.c_str(), asNamed.data()) == 1 &&
           asNamed.data() == place.File(named.c_str());
}

bool UniqueNames(const Place& place) {
    // A backslash after the mark would hide it.
    const std::string stem = place.File("x") + place.name;
    for (const char* tail : {".wav", "_1.wav", " [8].wav"})
        Write(stem + tail);
    PathBuffer plain = BufferWith(stem + ".wav");
    PathBuffer marked = BufferWith(place.File("x[3]") + place.name + ".wav"), stripped = marked;
    SetNextUniqueFileID(7);
    return UniqueFileName(plain.data(), true, '_', false) == 1 && plain.data() == stem + "_2.wav" &&
           UniqueFileName(marked.data(), true, '_', true) == 1 &&
           marked.data() == stem + " [9].wav" && StripUniqueID(stripped.data(), false) &&
           stripped.data() == stem + ".wav";
}

bool Names(const Place& place) {
    const std::string name = place.name + ".mp3", file = place.path + name;
    PathBuffer part{}, whole{}, longName{};
    GetLongPathNameSafe(place.path.c_str(), longName.data(), sizeof longName);
    FILETIME time{};
    return DoesFileExist(file.c_str()) && ExtractDirectory(file.c_str(), part.data(), MAX_PATH) &&
           part.data() == place.path && ExtractFileName(file.c_str(), whole.data(), MAX_PATH) &&
           whole.data() == name && ExtractExtension(file.c_str(), part.data(), MAX_PATH) &&
           part.data() == std::string(".mp3") &&
           (longName.data() == place.path || place.path.find('~') != std::string::npos) &&
           CompareFileTimeStampsA(file.c_str(), file.c_str()) == 0 &&
           GetFileLastModificationDateA(file.c_str(), &time) &&
           GetFileLastModificationTime(file.c_str(), &time);
}

constexpr std::pair<const char*, bool (*)(const Place&)> operations[] = {
    {"ini", &Ini},
    {"table", &Table},
    {"xml", &Xml},
    {"strings", &Strings},
    {"folders", &Folders},
    {"search", &Search},
    {"unique names", &UniqueNames},
    {"names", &Names},
};

std::string ShortName(const std::wstring& path) {
    wchar_t name[MAX_PATH] = L"";
    GetShortPathNameW(path.c_str(), name, MAX_PATH);
    return Exact(name, CP_ACP);
}

void TryAll(const Place& place, const std::string& what) {
    for (const auto& [operation, good] : operations)
        EXPECT_TRUE(good(place)) << operation << ", ANSI " << GetACP() << ", language "
                                 << vtr::CurrentCodePage() << ", " << what;
    for (const auto& entry : fs::directory_iterator(place.wide))
        fs::remove_all(entry);
}

/// A copy of this program runs this in a folder of its own.
void RunAsHost() {
    const fs::path folder = fs::path(_wpgmptr).parent_path();
    fs::create_directory(folder / L"sub");
    for (const unsigned page : pages) {
        SCOPED_TRACE(page);
        std::string language = std::to_string(page);
        SetLanguage(language.data());
        EXPECT_EQ(GetCurrentCodePage(), page);
        EXPECT_EQ(GetNumberOfLanguageStringFiles(), 4);
        PathBuffer text{};
        EXPECT_TRUE(
            GetStringFileFromLanguage(language.data(), StringFileColumn2, text.data(), false));
        EXPECT_TRUE(DoesFileExist(text.data())) << text.data();
        vtr::LibraryText("Own", text.data(), sizeof text);
        EXPECT_STREQ(text.data(), "own text");
        GetCommandLineParameter(0, text.data(), sizeof text);
        EXPECT_TRUE(DoesFileExist(text.data())) << text.data();
        ASSERT_TRUE(GetExeDirectory(text.data(), sizeof text, nullptr));
        TryAll({std::string(text.data()) + "sub\\", "name", folder / L"sub"},
               "in the program's folder");
    }
}

TEST(CodePages, PathsInAFolderOfEachPage) {
    const TestFolder folder;
    for (const wchar_t* word : letters) {
        const fs::path wide = fs::path(folder.Path()) / word / L"";
        fs::create_directory(wide);
        for (const unsigned language : pages) {
            vtr::SetCurrentCodePage(language);
            std::set<std::string> paths;
            for (const unsigned page : {language, 0u}) {
                const std::string path = Exact(wide.wstring(), page);
                if (!path.empty() && paths.insert(path).second)
                    TryAll({path, Exact(word, page), wide}, path);
            }
            if (paths.empty())
                TryAll({ShortName(wide.wstring()), "name", wide}, "short name");
        }
    }
    vtr::SetCurrentCodePage(0);
}

TEST(CodePages, ProgramInAFolderOfEachPage) {
    const TestFolder folder;
    for (const wchar_t* word : letters) {
        const fs::path host = fs::path(folder.Path()) / word / L"host.exe";
        fs::create_directory(host.parent_path());
        fs::copy_file(_wpgmptr, host);
        fs::copy_file(fs::path(_wpgmptr).replace_filename(L"vtrfutls.dll"),
                      fs::path(host).replace_filename(L"vtrfutls.dll"));
        Write(host.parent_path() / L"Languages.csv",
              "Name,D,A,,,,,,Charset,Page\r\n0,Y,s.ini,,,,,,,0\r\n"
              "1252,,s.ini,,,,,,,1252\r\n1251,,s.ini,,,,,,,1251\r\n932,,s.ini,,,,,,,932\r\n");
        Write(host.parent_path() / L"s.ini", "");
        Write(host.parent_path() / L"utility-strings.ini", "Own = own text\r\n");
        const std::wstring quoted = L'"' + host.wstring() + L'"';
        EXPECT_EQ(_wspawnl(_P_WAIT, host.c_str(), quoted.c_str(), L"--host", nullptr), 0)
            << Exact(word, CP_UTF8);
    }
}

} // namespace

int main(int argc, char** argv) {
    vtr::CreateLanguageState();
    testing::InitGoogleTest(&argc, argv);
    if (argc == 1)
        return RUN_ALL_TESTS();
    RunAsHost();
    return testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}
