#include "utilities/text/language/LibraryText.h"

#include <filesystem>
#include <gtest/gtest.h>

TEST(LanguageState, FoldersAreThoseOfTheProgram) {
    char program[MAX_PATH];
    ASSERT_GT(GetModuleFileNameA(nullptr, program, sizeof program), 0u);
    const std::string folder = std::filesystem::path(program).parent_path().string() + "\\";

    vtr::CreateLanguageState();
    const vtr::LanguageState& state = vtr::Language();
    EXPECT_EQ(state.masterLanguageFolder, folder);
    EXPECT_EQ(state.languageFolder, folder);
    EXPECT_EQ(state.utilitiesStringFile, folder + "utility-strings.ini");
    EXPECT_EQ(GetCurrentCodePage(), 0u);
    EXPECT_TRUE(TryEnterCriticalSection(&vtr::Language().stringLock));
    LeaveCriticalSection(&vtr::Language().stringLock);
    char text[64];
    vtr::LibraryText("DoNotAsk", text, sizeof text);
    EXPECT_STREQ(text, "&Do not ask this again.");
    vtr::FreeLanguageState();
}
