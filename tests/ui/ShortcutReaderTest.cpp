#include "utilities/ui/ShortcutReader.h"

#include "tests/support/Shortcut.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestWindow.h"
#include "tests/support/ThreadTeam.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <tuple>

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
    const std::string missing = folder.File("gone");
    const std::string longest = "C:\\" + std::string(256, 'n');
    CShortcutReader reader;
    using Row = std::tuple<const char*, std::string, int, std::string>;
    for (const auto& [name, target, size, found] :
         {Row{"folder", sub, MAX_PATH, sub}, Row{"drive", "C:\\", MAX_PATH, "C:\\"},
          Row{"missing", missing, MAX_PATH, missing}, Row{"cut", sub, 10, sub.substr(0, 9)},
          Row{"no room", sub, 1, "-"}, Row{"longest", longest, MAX_PATH, longest}}) {
        const std::string shortcut = MakeShortcut(folder.File(name) + ".lnk", target);
        EXPECT_EQ(TargetOf(reader, shortcut, size), found) << name;
    }
    for (const std::string& path : {missing, std::string(600, 'x'), std::string()})
        EXPECT_EQ(TargetOf(reader, path), "-") << path;

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
    reader.RequestAbort();
    EXPECT_EQ(TargetOf(reader, folder.File("folder.lnk")), "-");
}

TEST(ShortcutReader, DoesNotWaitForAShellThatDoesNotComeBack) {
    const TestFolder folder;
    const std::string good = MakeShortcut(folder.File("good.lnk"), "C:\\");
    const std::string name = "\\\\.\\pipe\\vtrutils-test-" + std::to_string(GetCurrentProcessId());
    for (const bool comesBack : {true, false}) {
        vtr::FileHandle pipe = MakePipe(name);
        CShortcutReader reader;
        EXPECT_EQ(TargetOf(reader, name), "-");
        EXPECT_TRUE(reader.ThreadBusy());
        EXPECT_EQ(TargetOf(reader, good), "-");
        if (!comesBack)
            continue; // The pipe is closed after the reader is destroyed.
        pipe.Close();
        PumpUntil("the shell's return", [&] { return !reader.ThreadBusy(); });
        EXPECT_EQ(TargetOf(reader, good), "C:\\");
    }
    CShortcutReader other;
    EXPECT_EQ(TargetOf(other, good), "C:\\");
}
