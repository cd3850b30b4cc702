#include "utilities/text/language/LanguageStrings.h"

#include "common/Handles.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/HeapUse.h"
#include "tests/support/Rounds.h"
#include "tests/support/TestFolder.h"
#include "tests/support/ThreadTeam.h"
#include "vtrfutls/FileNames.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace {

std::string Text(const char* key, std::string file = "", bool escapes = false, int size = 2048) {
    std::string buffer(static_cast<std::size_t>(size), '\0');
    const int length = MyLoadString(key, buffer.data(), size, file.data(), escapes);
    return buffer.substr(0, static_cast<std::size_t>(length));
}

/// Line by line with the run-time's own text mode.
std::string TextByRule(const std::string& path, const char* key) {
    static constexpr char blanks[] = " \t\r\n\v\f";
    const vtr::StreamHandle stream(std::fopen(path.c_str(), "r"));
    char line[1024];
    while (std::fgets(line, sizeof line, stream.Get()) != nullptr) {
        std::string text = line;
        const std::size_t equals = text.find('=');
        if (text[0] == '[' || text[0] == ';' || equals == text.npos)
            continue;
        const std::string name = text.substr(0, equals);
        if (_stricmp(name.substr(0, name.find_last_not_of(blanks) + 1).c_str(), key) != 0)
            continue;
        text.erase(0, text.find_first_not_of(blanks, equals + 1));
        if (!text.empty() && text.back() == '\n')
            text.pop_back();
        return text;
    }
    return key;
}

template <class Function>
Function Find(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace

TEST(LanguageStrings, ReadsFilesByTheRule) {
    using namespace std::string_view_literals;
    const std::string longText(1015, 'x');
    const std::string_view pieces[] = {"k",    "K",      "=",    "=",     " ",  "\t",    "\r\n",
                                       "\r\n", "\n",     "\r",   ";",     "[",  "v",     "\"",
                                       "\0"sv, longText, "xxxx", "k = v", "k=", longText};
    const TestFolder folder;
    EachRound(67, 500, [&](Dice& dice, int) {
        std::string bytes;
        for (int count = dice.Below(25); count > 0; --count)
            bytes += pieces[dice.Below(std::size(pieces))];
        bytes += dice.Below(4) == 0 ? "\x1A\nk=behind the end" : "";
        const std::string file = folder.Write("a.ini", bytes);
        ASSERT_EQ(Text("k", file), TextByRule(file, "k")) << bytes;
    });
}

TEST(LanguageStrings, OtherFormsOfLookUps) {
    const TestFolder folder;
    std::string file = folder.Write(
        "a.ini", "[Strings]\nQuoted = \"a\\nb\\tc\"\nTwo = \"\"\nNone =\nCount = -42.5 tracks\n");
    SetStringFile(file.data());
    for (const char* visit : {"read", "kept"})
        EXPECT_EQ(Text("Quoted", "", true), "a\nb\tc") << visit;
    EXPECT_EQ(Text("Quoted", file, true), "\"a\nb\tc\"");
    EXPECT_EQ(Text("Two"), "\"\"");
    EXPECT_EQ(MyLoadString_ToInt("Count", 7, nullptr, false), -42);
    EXPECT_EQ(MyLoadString_ToDouble("Count", 7, file.data(), false), -42.5);
    EXPECT_EQ(MyLoadString_ToInt("None", 7, nullptr, false), 7);
    EXPECT_EQ(MyLoadString_ToInt("MissingKey", 7, nullptr, false), 0);
    wchar_t wide[4];
    EXPECT_EQ(MyLoadStringW("Quoted", wide, 4, file.data(), false), 3);
    EXPECT_STREQ(wide, L"a\nb");
    char buffer[32];
    EXPECT_EQ(LoadLanguageStringFormatted("Quoted", buffer, sizeof buffer), 1);
    EXPECT_STREQ(buffer, "a\r\nb\tc");
    EXPECT_EQ(LoadLanguageString("None", buffer, sizeof buffer), 0);
}

TEST(LanguageStrings, BackupCacheAndSmallBuffers) {
    const TestFolder first;
    const TestFolder second;
    std::string current = first.Write("a.ini", "Kept = first\n");
    std::string backup = second.Write("b.ini", "kept = second\nSpare = in backup\n");
    second.Write("a.ini", "Same = of the same name\n");
    SetStringFile(current.data());
    EXPECT_EQ(Text("Spare"), "Spare");
    SetBackupStringFile(backup.data());
    EXPECT_EQ(Text("Spare"), "in backup");
    EXPECT_EQ(Text("Same", current), "of the same name");
    EXPECT_EQ(Text("Kept"), "first");
    SetLanguageFile(backup.c_str());
    EXPECT_EQ(Text("Kept"), "first") << "kept";
    EXPECT_EQ(Text("kept"), "second") << "another spelling is another key";
    std::string missing = first.File("missing.ini");
    SetStringFile(missing.data());
    EXPECT_EQ(Text("SPARE"), "SPARE") << "no backup for a missing file";
    SetStringFile(current.data());
    for (const char* key : {"Kept", "KEPT", "unknown"}) {
        GuardedBytes buffer(4);
        EXPECT_EQ(MyLoadString(key, buffer.Data(), 4, nullptr, true), 3);
        EXPECT_EQ(buffer.View()[3], '\0') << key;
    }
    SetBackupStringFile(nullptr);
}

TEST(LanguageStrings, ManyThreadsAtOnce) {
    const TestFolder folder;
    std::string lines;
    for (int i = 0; i < 50; ++i)
        lines += "Thread" + std::to_string(i) + " = text " + std::to_string(i) + "\n";
    std::string file = folder.Write("a.ini", lines);
    SetStringFile(file.data());
    RunTeam("look-ups", 4, [](unsigned number) {
        for (unsigned i = 0; i < 200; ++i) {
            const std::string name = std::to_string((i + number * 7) % 50);
            EXPECT_EQ(Text(("Thread" + name).c_str()), "text " + name);
        }
    });
}

TEST(LanguageStrings, ChoosesLanguages) {
    const TestFolder folder;
    std::string path = folder.Path().substr(0, folder.Path().size() - 1);
    SetMasterLanguageFileFolder(path.data());
    SetLanguageFolderLocation(path.data());
    char english[] = "English", polish[] = "polish", none[] = "none", file[MAX_PATH];
    EXPECT_EQ(GetNumberOfLanguageStringFiles(), 0) << "no table";
    EXPECT_EQ(GetCharsetFromLanguage(english), 1);
    folder.Write("Languages.csv", "Name,Default,A,B,C,D,E,F,Charset,Code page\n"
                                  "English,y,en.ini,,,,,,0,1252\nPolish,Y,pl.ini,,,,,,494,1250\n"
                                  "English,,x,e.ini,,,,,9,9\n");
    EXPECT_EQ(GetNumberOfLanguageStringFiles(), 3);
    EXPECT_EQ(GetCharsetFromLanguage(polish), 494 - 256);
    EXPECT_TRUE(GetStringFileFromLanguage(english, StringFileColumn3, file, false));
    EXPECT_EQ(file, folder.File("e.ini")) << "the first row that has one";
    EXPECT_TRUE(GetStringFileFromLanguage(english, StringFileColumn2, file, true));
    EXPECT_EQ(file, folder.File("pl.ini")) << "the last default";
    EXPECT_FALSE(GetStringFileFromLanguage(english, StringFileColumn7, file, false));
    GuardedBytes name(4);
    EXPECT_TRUE(GetLanguageName(1, name.Data(), 4));
    EXPECT_EQ(name.View(), "Poli");
    EXPECT_FALSE(GetLanguageName(4, name.Data(), 4) || GetLanguageName(-1, name.Data(), 4));
    SetLanguage(polish);
    EXPECT_EQ(GetCurrentCodePage(), 1250u);
    EXPECT_EQ(GetCodePageForFiles(), 1250u);
    SetLanguage(none);
    EXPECT_EQ(GetCurrentCodePage(), 0u);
}

TEST(LanguageStrings, UnloadingFreesWhatLookUpsKept) {
    const TestFolder folder;
    // A copy has a state of its own: the library itself stays loaded.
    const std::string copy = folder.File("copy.dll");
    char library[MAX_PATH];
    GetModuleFileNameA(GetModuleHandleA("vtrutils.dll"), library, sizeof library);
    ASSERT_TRUE(CopyFileA(library, copy.c_str(), /*bFailIfExists=*/TRUE));
    std::string file = folder.Write("a.ini", "One = first text\nTwo = second text\n");
    const auto visit = [&] {
        const HMODULE module = LoadLibraryA(copy.c_str());
        ASSERT_NE(module, nullptr);
        const auto load = Find<decltype(&MyLoadString)>(module, "_Z12MyLoadStringPKcPciS1_b");
        Find<decltype(&SetStringFile)>(module, "_Z13SetStringFilePc")(file.data());
        char text[32];
        EXPECT_EQ(load("One", text, sizeof text, nullptr, true), 10);
        EXPECT_EQ(load("Two", text, sizeof text, nullptr, true), 11);
        FreeLibrary(module);
    };
    for (int i = 0; i < 10; ++i)
        visit();
    const std::size_t used = HeapUse();
    EXPECT_GT(used, 10'000u) << "heaps are seen";
    for (int i = 0; i < 1000; ++i)
        visit();
    EXPECT_LT(HeapUse(), used + 1000) << "less than a byte each time";
}
