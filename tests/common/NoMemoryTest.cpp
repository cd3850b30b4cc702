// With no memory at all, for ever, on a thread that has never allocated, each call ends, with the
// result that its header gives. Observers are left out, whose own tests show it.

#include "tests/support/AllocationFault.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"
#include "utilities/vtrutils.h"
#include "vtrfutls/vtrfutls.h"

#include <cstdlib>
#include <cstring>
#include <gtest/gtest.h>

namespace {

const TestFolder* folder;

std::string File(const char* name) {
    return folder->File(name);
}

constexpr char xml[] = "<?xml version=\"1.0\"?><a><b c=\"d\">e &amp; f</b></a>";

bool Documents() {
    CIniFileReader document;
    bool good = document.Init(File("a.ini").c_str(), true);
    good = document.SetFileName(File("saved.ini").c_str()) && good;
    good = document.SetValue("C", "key", "value") && good;
    document.Sort();
    char buffer[100];
    document.GetString("B", "l", "", buffer, sizeof buffer);
    return document.Save() && good;
}

bool Tables() {
    CDelimitedTextFile table;
    bool good = table.Open(File("a.csv").c_str(), ',', true, '"');
    table.SetMaintainSorted(true, 0);
    good = table.AddNewCol("C", "x") >= 0 && good;
    good = table.AddNewRow() >= 0 && good;
    good = table.EditField(0, 0, "longer") && good;
    table.ReplaceAll("l", "replaced by something longer");
    good = table.FindRecordWithValue(0, "3") >= 0 && good;
    return table.Save(File("saved.csv").c_str(), ',', true, '"') && good;
}

bool Xml() {
    CXMLFile document;
    document.SetShouldDeHTMLify(true);
    bool good = document.Open(File("a.xml").c_str());
    const CXMLNode copy(document);
    CXMLValue value;
    value.SetFieldName("name");
    value.SetValue("value", 0);
    std::string text = xml;
    good = document.LoadFromBuffer(text.data()) && good;
    return good && copy.GetChildByName("a") != nullptr && value.Value() != nullptr;
}

struct Atom final : CUndoAtom {
    CUndoAtom* Clone() override { return new Atom; }
    void Perform(bool) override {}
    void GetDescription(char*, unsigned) override {}
};

bool Undo() {
    CUndoMgr manager(10);
    Atom atom;
    const bool added = manager.AddUndoNode(atom) >= 0;
    manager.SetCurrentUndoSetName("name");
    manager.NextUndoSet("other");
    manager.Undo();
    return added && manager.GetRedoSetName() != nullptr;
}

bool Containers() {
    char key[] = "key";
    RECT big{0, 0, 100, 100}, small{10, 10, 20, 20}, cross{-10, 40, 110, 60};
    CMyArrayList array;
    CMegaArrayList mega;
    CMyList list;
    CMegaList megaList;
    CStack stack;
    CByteQueue queue;
    CHashTable table(7);
    CStringList strings;
    CStringDynArray wide(true), narrow(false);
    RectangleList rectangles(big), others(cross);
    for (int i = 0; i < 12; ++i) {
        array.AddSorted(key, -i);
        mega.AppendToTail(key, -i);
        list.AddSorted(key, i, true);
        megaList.AddSorted(key, i, true);
        stack.Push(key);
        queue.AddData(reinterpret_cast<unsigned char*>(key), 3);
        table.AddEntry(key, i);
        strings.AddSortedString(key);
        wide.AddString(key, true);
        narrow.AddString(L"text");
    }
    wide.Sort();
    rectangles.subtract(&small);
    rectangles.add(others);
    rectangles.clipTo(others);
    rectangles.consolidate();
    const CMegaArrayList megaCopy(mega);
    const CHashTable tableCopy(table);
    const CByteQueue queueCopy(queue);
    CStringDynArray wideCopy(wide);
    CMyArrayList arrayCopy(array);
    CMyList listCopy(list);
    CStringList stringsCopy(strings);
    RectangleList rectanglesCopy(rectangles);
    return arrayCopy.NumNodes() + listCopy.NumNodes() + stringsCopy.Count() == 36 &&
           !rectanglesCopy.isEmpty() && wideCopy.FindString("key") == 0;
}

bool Remembered() {
    const TestKey key;
    char name[] = "list";
    CMRUList files(name);
    files.Init(key.Root(), key.SubKey());
    files.AddFile(File("a.ini").c_str(), 1);
    files.MoveFileToTop(File("a.csv").c_str(), 2);
    CLastDirList folders;
    std::string first = folder->Path(), second = "C:\\other";
    folders.Add(first.data(), 2, 3, 0);
    folders.MoveOrAddToTop(second.data());
    folders.UpdateOrAdd(first.data(), 5, 6, 1);
    folders.Sort();
    return files.Contains(File("a.csv").c_str()) && folders.ContainsDir(second.data()) != nullptr;
}

bool Strings() {
    CCOMString text("text"), wide(L"wide");
    text += wide;
    text = text + "more" + L"more";
    text.Format("%s %d", "formatted", 5);
    text.Replace("formatted", "a longer replacement");
    const CCOMString part = text.Mid(2, 5);
    char source[200] = "a text with <b>marks</b>", destination[200];
    SearchAndReplaceAll(source, "marks", "many marks", sizeof source, false);
    ParseForHTML(source, static_cast<long>(strlen(source)), destination, sizeof destination);
    DeHTMLifyString(source, sizeof source);
    HasBadWord(source);
    GetCommandLineParameter(0, destination, sizeof destination);
    char* owned = nullptr;
    CopyStringA(&owned, "owned");
    const bool good = owned != nullptr;
    CopyStringA(&owned, nullptr);
    return good && part.GetLength() == 5;
}

bool Languages() {
    char buffer[200], english[] = "English";
    wchar_t wide[200];
    std::string key = "key " + std::to_string(GetCurrentThreadId()) + std::to_string(rand());
    SetLanguage(english);
    MyLoadString(key.c_str(), buffer, sizeof buffer, nullptr, true);
    MyLoadStringW(key.c_str(), wide, 200, nullptr, true);
    EXPECT_EQ(buffer, key) << "without a text, the key";
    GetLanguageName(0, buffer, sizeof buffer);
    return GetCodePageFromLanguage(english) == 1252;
}

bool Files() {
    char out[MAX_PATH + 1];
    std::string unique = File("a.csv");
    unique.resize(MAX_PATH);
    bool good = IsValidDirectory(folder->Path().c_str()) && DoesFileExist(File("a.ini").c_str());
    CreateMultiLevelDir(folder->File("x\\y\\z\\").c_str());
    FindFilesRecursively(folder->Path().c_str(), "*.csv", out);
    HasSubDir(folder->Path().c_str(), out);
    GetLongPathNameSafe(folder->Path().c_str(), out, sizeof out);
    GetMyDocumentsPath(out, sizeof out, false);
    UniqueFileName(unique.data(), true, '-', false);
    ValidateFileName("a:b?.txt", out, '_');
    MakeJolietFriendlyName("a:b?.txt", out, false, '_');
    MakeISO9660FriendlyName("a:b?.txt", out, false, '_');
    const TestKey key;
    return WriteRegistryString(key.Root(), key.SubKey(), "v", std::string(3000, 'v').c_str()) &&
           GetRegistryString(key.Root(), key.SubKey(), "v", out, sizeof out) && good;
}

TEST(NoMemory, EndsNoProcess) {
    struct Row {
        const char* name;
        bool (*act)(); // whether all of it could be done
        bool needsMemory;
    };
    const Row rows[] = {
        {"INI documents", &Documents, true},
        {"tables", &Tables, true},
        {"XML", &Xml, true},
        {"undo", &Undo, true},
        {"containers", &Containers, true},
        {"remembered lists", &Remembered, true},
        {"strings", &Strings, true},
        {"languages", &Languages, true},
        {"files and registry", &Files, false},
    };
    const TestFolder own;
    folder = &own;
    own.Write("a.ini", "[B] : [A]\r\nk=1\r\n[A]\r\nl=2\r\nm=3\r\n");
    own.Write("a.csv", "A,B\r\n1,2\r\n3,4\r\n");
    own.Write("a.xml", xml);
    own.Write("Languages.csv", "Name,Default,A,B,C,D,E,F,Charset,Code page\n"
                               "English,y,en.ini,,,,,,0,1252\n");
    std::string path = own.Path();
    SetLanguageFolderLocation(path.data());
    SetMasterLanguageFileFolder(path.data());
    const CapturedLog log;
    AllocationFault fault{"vtrutils.dll", "vtrfutls.dll"};
    for (const Row& row : rows) {
        unsigned needed = 0;
        fault.OnFreshThread(0, [&](unsigned) {
            EXPECT_TRUE(row.act()) << row.name << ", with memory";
            needed = fault.Count();
        });
        SCOPED_TRACE(row.name);
        for (unsigned n = 1; n <= needed; ++n)
            fault.OnFreshThread(n, [&](unsigned) {
                EXPECT_FALSE(row.act() && n == 1 && row.needsMemory) << row.name;
            });
        EXPECT_GE(needed > 0, row.needsMemory) << row.name;
    }
}

} // namespace
