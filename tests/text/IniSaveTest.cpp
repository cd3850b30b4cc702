#include "tests/support/AllocationFault.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"
#include "tests/text/IniDocuments.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <windows.h>

namespace {

DWORD writesUntilFull = 0;
decltype(&std::fwrite) realWrite = nullptr;

std::size_t WriteToFullDisk(const void* data, std::size_t size, std::size_t count,
                            std::FILE* stream) {
    if (writesUntilFull == 0)
        return 0;
    --writesUntilFull;
    return realWrite(data, size, count, stream);
}

int CloseOnFullDisk(std::FILE* stream) {
    std::fclose(stream);
    return EOF;
}

} // namespace

TEST(IniSave, WritesWhatUsersExpect) {
    const TestFolder folder;
    CIniFileReader document;
    EXPECT_FALSE(document.Save()) << "no file name";
    ASSERT_TRUE(Load(document, "lost=1\n[B]\nz = \" padded\"\nempty=\n[a]\nq=\"x\n[A]\nk=v\n"));
    const std::string file = folder.File("saved.ini");
    ASSERT_TRUE(document.SetFileName(file.c_str()));
    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadBytes(file), "\r\n\r\n[B]\r\nz = \" padded\"\r\nempty = \r\n\r\n\r\n"
                               "[a]\r\nq = \"x\r\n\r\n\r\n[A]\r\nk = v\r\n\r\n\r\n");
    document.Sort();
    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadBytes(file), "\r\n\r\n[a]\r\nq = \"x\r\n\r\n\r\n[A]\r\nk = v\r\n\r\n\r\n"
                               "[B]\r\nempty = \r\nz = \" padded\"\r\n\r\n\r\n")
        << "each sort reverses equal names";
    EXPECT_EQ(folder.Listing(), "saved.ini");
    EXPECT_TRUE(document.SetFileName(""));
    EXPECT_EQ(document.FileName(), nullptr);
    EXPECT_FALSE(document.Save());

    CIniSection section("S");
    section.AddValue(new CIniValue(nullptr, "no key"));
    section.AddValue("k", "v");
    std::FILE* stream = std::fopen(file.c_str(), "wb");
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(section.Save(stream));
    EXPECT_FALSE(section.Save(nullptr));
    section.SetName("");
    EXPECT_FALSE(section.Save(stream));
    std::fclose(stream);
    EXPECT_EQ(ReadBytes(file), "[S]\r\nk = v\r\n");
}

TEST(IniSave, ReadsBackToTheSame) {
    constexpr unsigned seed = 13;
    std::mt19937 random(seed);
    const TestFolder folder;
    const std::string file = folder.File("a.ini");
    for (int round = 0; round < 300; ++round) {
        CIniFileReader document;
        document.SetFileName(file.c_str());
        for (unsigned pairs = random() % 40; pairs > 0; --pairs) {
            // No blanks and quotes around what is written without quotes.
            const std::string name = "n" + RandomText(random, 3, "\" \t=[:;aB\xE4\x80\r\n");
            const std::string key = "k" + RandomText(random, 12, "\" []:aB\xE4\x80") + "k";
            const std::string value = RandomText(random, 20, " =[]:aB\xE4\x80");
            ASSERT_TRUE(document.SetValue(name.c_str(), key.c_str(), value.c_str()));
        }
        if (random() % 2 == 0)
            document.Sort();
        ASSERT_TRUE(document.Save());
        CIniFileReader copy;
        const bool sort = random() % 2 == 0;
        ASSERT_EQ(copy.Init(file.c_str(), sort), document.NumSections() > 0)
            << "seed " << seed << ", round " << round;
        if (sort)
            document.Sort();
        ASSERT_EQ(Content(copy), Content(document)) << "seed " << seed << ", round " << round;
    }
}

TEST(IniSave, FailureLeavesThePreviousFile) {
    const TestFolder folder;
    const std::string before = "[Old]\r\nk = v\r\n";
    const std::string file = folder.Write("a.ini", before);
    CIniFileReader document;
    ASSERT_TRUE(document.Init(file.c_str(), false));
    for (int i = 0; i < 50; ++i)
        document.SetValue(("New" + std::to_string(i)).c_str(), "k", "v");
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    {
        const ImportPatch patch(library, "msvcrt.dll", "fwrite",
                                reinterpret_cast<void*>(&WriteToFullDisk));
        realWrite = reinterpret_cast<decltype(&std::fwrite)>(patch.Original());
        // Two writes a section; the 102nd ends the last.
        for (const DWORD writes : {0u, 1u, 50u, 101u}) {
            writesUntilFull = writes;
            EXPECT_FALSE(document.Save()) << writes;
            EXPECT_EQ(ReadBytes(file), before) << writes;
            EXPECT_EQ(folder.Listing(), "a.ini") << writes;
        }
    }
    {
        const ImportPatch patch(library, "msvcrt.dll", "fclose",
                                reinterpret_cast<void*>(&CloseOnFullDisk));
        EXPECT_FALSE(document.Save());
    }
    EXPECT_EQ(ReadBytes(file), before);
    AllocationFault fault("vtrutils.dll");
    fault.FailAt(1);
    EXPECT_FALSE(document.Save());
    EXPECT_EQ(ReadBytes(file), before);

    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(document.Save());
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    {
        const HANDLE held = CreateFileA(file.c_str(), GENERIC_READ, /*dwShareMode=*/0, nullptr,
                                        OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(held, INVALID_HANDLE_VALUE);
        EXPECT_FALSE(document.Save()) << "held by another program";
        CloseHandle(held);
    }
    EXPECT_EQ(ReadBytes(file), before);
    EXPECT_EQ(folder.Listing(), "a.ini");
    EXPECT_TRUE(document.Save());
    EXPECT_NE(ReadBytes(file), before);

    document.SetFileName(folder.File("missing\\a.ini").c_str());
    EXPECT_FALSE(document.Save());
    document.SetFileName(folder.Path().c_str());
    EXPECT_FALSE(document.Save());
}
