#include "utilities/text/language/LibraryText.h"

#include "tests/support/TestFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

TEST(LanguageState, FoldersAreThoseOfTheProgram) {
    vtr::CreateLanguageState();
    const vtr::LanguageState& state = vtr::Language();
    EXPECT_EQ(state.hostFolder, std::filesystem::path(_wpgmptr).parent_path().wstring() + L"\\");
    EXPECT_STREQ(state.masterLanguageFolder, "");
    EXPECT_STREQ(state.languageFolder, "");
    EXPECT_EQ(GetCurrentCodePage(), 0u);
    EXPECT_TRUE(TryEnterCriticalSection(&vtr::Language().stringLock));
    LeaveCriticalSection(&vtr::Language().stringLock);
    char text[64];
    vtr::LibraryText("DoNotAsk", text, sizeof text);
    EXPECT_STREQ(text, "&Do not ask this again.");
    const TestFolder folder;
    std::string language = folder.Write("language.ini", "DoNotAsk = language's\n");
    SetStringFile(language.data());
    OverrideUtilitiesStringFile(folder.Write("own.ini", "DoNotAsk = own\n").data());
    vtr::LibraryText("DoNotAsk", text, sizeof text);
    EXPECT_STREQ(text, "own");
    EXPECT_EQ(GetStringFile(), language);
    vtr::FreeLanguageState();
}
