#include "common/Handles.h"
#include "tests/support/AllocationFault.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

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
    const std::string file = folder.File("saved.ini");
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "lost=1\n[a]\nq=\"x\n[A]\nk=v\n", /*sort=*/true));
    EXPECT_FALSE(document.Save()) << "no file name";
    ASSERT_TRUE(document.SetFileName(file.c_str()));
    ASSERT_TRUE(document.Save());
    EXPECT_EQ(ReadBytes(file), "\r\n\r\n[a]\r\nq = \"x\r\n\r\n\r\n[A]\r\nk = v\r\n\r\n\r\n")
        << "equal names are reversed by each sort, when it is loaded and when it is saved";
    EXPECT_EQ(folder.Listing(), "saved.ini");
    EXPECT_TRUE(document.SetFileName("") && document.FileName() == nullptr);

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

TEST(IniSave, FailureLeavesThePreviousFile) {
    const TestFolder folder;
    const std::string before = "[Old]\r\nk = v\r\n";
    const std::string file = folder.Write("a.ini", before);
    CIniFileReader document;
    ASSERT_TRUE(document.Init(file.c_str(), false));
    for (int i = 0; i < 50; ++i)
        document.SetValue(("New" + std::to_string(i)).c_str(), "k", "v");
    const auto expectFailure = [&](const char* why) {
        EXPECT_FALSE(document.Save()) << why;
        EXPECT_EQ(ReadBytes(file), before) << why;
        EXPECT_EQ(folder.Listing(), "a.ini") << why;
    };
    const HMODULE library = GetModuleHandleA("vtrutils.dll");
    {
        const ImportPatch patch(library, "msvcrt.dll", "fwrite",
                                reinterpret_cast<void*>(&WriteToFullDisk));
        realWrite = reinterpret_cast<decltype(&std::fwrite)>(patch.Original());
        // Two writes a section; the 102nd ends the last.
        for (const DWORD writes : {0u, 1u, 50u, 101u}) {
            writesUntilFull = writes;
            expectFailure("full disk");
        }
    }
    {
        const ImportPatch patch(library, "msvcrt.dll", "fclose",
                                reinterpret_cast<void*>(&CloseOnFullDisk));
        expectFailure("full disk at the end");
    }
    {
        AllocationFault fault("vtrutils.dll");
        fault.FailAt(1);
        expectFailure("no memory");
    }
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY));
    expectFailure("write-protected");
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    {
        const vtr::FileHandle held(CreateFileA(file.c_str(), GENERIC_READ, /*dwShareMode=*/0,
                                               nullptr, OPEN_EXISTING, 0, nullptr));
        ASSERT_TRUE(held);
        EXPECT_FALSE(document.Save()) << "held by another program";
    }
    EXPECT_TRUE(document.Save());
    EXPECT_NE(ReadBytes(file), before);
    for (const std::string& impossible : {folder.File("missing\\a.ini"), folder.Path()}) {
        document.SetFileName(impossible.c_str());
        EXPECT_FALSE(document.Save()) << impossible;
    }
}
