#include "utilities/text/LanguageStrings.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "vtrfutls/FileNames.h"

#include <gtest/gtest.h>

TEST(LanguageTable, ChoosesLanguages) {
    const TestFolder folder;
    std::string path = folder.Path().substr(0, folder.Path().size() - 1);
    SetMasterLanguageFileFolder(path.data());
    SetLanguageFolderLocation(path.data());
    char english[] = "ENGLISH", polish[] = "Polish", odd[] = "Odd", none[] = "none";
    EXPECT_EQ(GetNumberOfLanguageStringFiles(), 0) << "no table";
    EXPECT_EQ(GetCharsetFromLanguage(english), 1);
    folder.Write("Languages.csv", "Name,Default,A,B,C,D,E,F,Charset,Code page\n"
                                  "\"English\",y,en.ini,,,,,,0,1252\nPolish,,pl.ini,,,,,,238,1250\n"
                                  "Odd,Y,odd.ini,b.ini,,,,,257,1\nEnglish,,x,e.ini,,,,,9,9\n");
    EXPECT_EQ(GetNumberOfLanguageStringFiles(), 4);
    const struct {
        char* language;
        unsigned codePage;
        int charset;
        const char* a;
        const char* b;
    } cases[] = {{english, 1252, 1, "en.ini", "e.ini"},
                 {polish, 1250, 238, "pl.ini", "b.ini"},
                 {odd, 0, 1, "odd.ini", "b.ini"},
                 {none, 0, 1, "odd.ini", "b.ini"}};
    char file[MAX_PATH];
    for (const auto& c : cases) {
        EXPECT_EQ(GetCodePageFromLanguage(c.language), c.codePage) << c.language;
        EXPECT_EQ(GetCharsetFromLanguage(c.language), c.charset) << c.language;
        EXPECT_TRUE(GetStringFileFromLanguage(c.language, StringFileColumn2, file, false));
        EXPECT_EQ(file, folder.File(c.a));
        EXPECT_TRUE(GetStringFileFromLanguage(c.language, StringFileColumn3, file, false));
        EXPECT_EQ(file, folder.File(c.b));
    }
    EXPECT_TRUE(GetStringFileFromLanguage(english, StringFileColumn2, file, true));
    EXPECT_EQ(file, folder.File("odd.ini"));
    EXPECT_FALSE(GetStringFileFromLanguage(english, StringFileColumn7, file, false));
    SetLanguageFolderLocation(std::string(255, 'f').data());
    EXPECT_FALSE(GetStringFileFromLanguage(polish, StringFileColumn2, file, false)) << "too long";
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
