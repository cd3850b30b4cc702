#include "utilities/text/language/LanguageStrings.h"

#include "tests/support/GuardedBuffer.h"
#include "tests/support/TestFolder.h"
#include "vtrfutls/FileNames.h"

#include <gtest/gtest.h>

TEST(LanguageTable, ChoosesLanguages) {
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
