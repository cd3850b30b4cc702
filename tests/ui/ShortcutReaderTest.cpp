#include "utilities/ui/ShortcutReader.h"

#include "tests/support/Shortcut.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestWindow.h"
#include "tests/support/ThreadTeam.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

/// What a shortcut leads to; "-" if to nothing.
std::string TargetOf(CShortcutReader& reader, const std::string& shortcut, int size = MAX_PATH) {
    char target[MAX_PATH] = "before";
    const bool found = reader.GetShortcutTarget(shortcut.c_str(), target, size, 0);
    EXPECT_EQ(found, target[0] != '\0');
    return found ? target : "-";
}

/// Reading from it takes until it is closed.
vtr::FileHandle MakePipe(const std::string& name) {
    return vtr::FileHandle(
        CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, 64, 64, 0, nullptr));
}

} // namespace

TEST(ShortcutReader, FindsWhereShortcutsLead) {
    const TestFolder folder;
    const std::string sub = folder.File("sub");
    std::filesystem::create_directory(sub);
    const std::string file = folder.Write("file.txt", "x");
    const std::string longest = "C:\\" + std::string(256, 'n');
    struct Row {
        const char* name;
        std::string target;
        int size;
        std::string found;
    };
    CShortcutReader reader;
    for (const Row& row :
         {Row{"folder", sub, MAX_PATH, sub}, Row{"file", file, MAX_PATH, file},
          Row{"drive", "C:\\", MAX_PATH, "C:\\"},
          Row{"missing", folder.File("gone"), MAX_PATH, folder.File("gone")},
          Row{"cut", sub, 10, sub.substr(0, 9)}, Row{"no room", sub, 1, "-"},
          Row{"longest", longest, MAX_PATH, longest},
          Row{"itself", folder.File("itself.lnk"), MAX_PATH, folder.File("itself.lnk")}}) {
        SCOPED_TRACE(row.name);
        const std::string shortcut =
            MakeShortcut(folder.File(std::string(row.name) + ".lnk"), row.target);
        EXPECT_EQ(TargetOf(reader, shortcut, row.size), row.found);
    }
    EXPECT_EQ(TargetOf(reader, folder.File("gone.lnk")), "-");
    EXPECT_EQ(TargetOf(reader, std::string(600, 'x')), "-");
    EXPECT_EQ(TargetOf(reader, ""), "-");
    char target[8] = "kept";
    EXPECT_FALSE(reader.GetShortcutTarget(nullptr, target, 8, 0));
    EXPECT_FALSE(reader.GetShortcutTarget(file.c_str(), nullptr, 8, 0));
    EXPECT_FALSE(reader.GetShortcutTarget(file.c_str(), target, 0, 0));
    EXPECT_STREQ(target, "kept");

    const std::string whole = ReadBytes(folder.File("folder.lnk"));
    for (std::size_t length = 0; length < whole.size(); length += length < 80 ? 4 : 13) {
        const std::string cut = TargetOf(reader, folder.Write("cut.lnk", whole.substr(0, length)));
        EXPECT_TRUE(cut == "-" || cut == sub) << length << ": " << cut;
    }

    // Several threads at once get each their own.
    RunTeam("readers", 4, [&](unsigned i) {
        const bool isDrive = i % 2 == 0;
        for (int k = 0; k < 20; ++k)
            EXPECT_EQ(TargetOf(reader, folder.File(isDrive ? "drive.lnk" : "folder.lnk")),
                      isDrive ? "C:\\" : sub);
    });
    EXPECT_FALSE(reader.ThreadBusy() || reader.AbortRequested());
    reader.RequestAbort();
    EXPECT_TRUE(reader.AbortRequested());
    EXPECT_EQ(TargetOf(reader, folder.File("folder.lnk")), "-");
}

TEST(ShortcutReader, DoesNotWaitForAShellThatDoesNotComeBack) {
    const TestFolder folder;
    const std::string good = MakeShortcut(folder.File("good.lnk"), "C:\\");
    const std::string name = "\\\\.\\pipe\\vtrutils-test-" + std::to_string(GetCurrentProcessId());
    vtr::FileHandle pipe = MakePipe(name);
    {
        CShortcutReader reader;
        EXPECT_EQ(TargetOf(reader, good), "C:\\");
        EXPECT_EQ(TargetOf(reader, name), "-");
        EXPECT_TRUE(reader.ThreadBusy());
        EXPECT_EQ(TargetOf(reader, good), "-");
        pipe.Close();
        PumpUntil("the shell's return", [&] { return !reader.ThreadBusy(); });
        EXPECT_EQ(TargetOf(reader, good), "C:\\");
    }
    pipe = MakePipe(name);
    {
        CShortcutReader left;
        EXPECT_EQ(TargetOf(left, name), "-");
    }
    pipe.Close();
    CShortcutReader other;
    EXPECT_EQ(TargetOf(other, good), "C:\\");
}
