#include "utilities/system/FileFunctions.h"

#include "tests/support/CapturedLog.h"
#include "tests/support/CodePage.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

namespace {

/// Looks for the mark from the end, as its description does; for single-byte text.
bool StripModel(std::string& name) {
    for (std::size_t i = name.size(); i-- > 1 && name[i] != '\\';) {
        const std::size_t end = name.find_first_not_of("0123456789", i + 1);
        if (name[i] != '[' || end == name.npos || name[end] != ']' || end == i + 1)
            continue;
        std::size_t begin = i;
        while (begin > 0 && name[begin - 1] == ' ')
            --begin;
        name.erase(begin, end + 1 - begin);
        return true;
    }
    return false;
}

std::string Friendly(bool (*make)(const char*, char*, bool, char), const std::string& name,
                     bool isPath) {
    GuardedBytes in(name);
    GuardedBytes out(name.size() + 1);
    const bool changed = make(in.Data(), out.Data(), isPath, '_');
    return (changed ? "changed " : "") + std::string(out.Data());
}

} // namespace

TEST(FileNames, UniqueMarkIsStripped) {
    std::mt19937 random(7);
    for (int i = 0; i < 20'000; ++i) {
        std::string expected = RandomText(random, 12, "[]12 a\\[]");
        GuardedBytes name(expected);
        SCOPED_TRACE(expected);
        const bool stripped = StripModel(expected);
        ASSERT_EQ(StripUniqueID(name.Data(), false), stripped);
        ASSERT_EQ(name.Data(), expected);
    }
    char trimmed[] = " \tSong [12] ";
    EXPECT_TRUE(StripUniqueID(trimmed, true));
    EXPECT_STREQ(trimmed, "Song");
    EXPECT_FALSE(StripUniqueID(nullptr, true));

    // 83 5B, 83 5C and 83 5D are one character each, and so no bracket or backslash.
    const CodePage japanese(932);
    for (const char* text : {"a\x83[12]", "a[12\x83]", "a[1]\\b"}) {
        std::string copy = text;
        EXPECT_FALSE(StripUniqueID(copy.data(), false));
    }
    char marked[] = "a [1]\x83\\.wav";
    EXPECT_TRUE(StripUniqueID(marked, false));
    EXPECT_STREQ(marked, "a\x83\\.wav");
}

TEST(FileNames, UniqueNameIsOneThatNoFileHas) {
    const TestFolder folder;
    for (const char* name : {"take.wav", "take_1.wav", "bare", "x [8].wav", "x [9].wav"})
        folder.Write(name, "");
    const std::string tooLong = std::string(MAX_PATH - 1 - folder.Path().size(), 'n');
    folder.Write(tooLong, "");
    const struct {
        const char* row;
        std::string name;
        const char* unique;
        unsigned counter; ///< before
        unsigned counterAfter;
        int result;
        bool allow;
        bool bracket;
    } rows[] = {
        {"free", "new.wav", "new.wav", 7, 7, 1, false, false},
        {"taken, renaming forbidden", "take.wav", "take.wav", 7, 7, 0, false, false},
        {"first number taken", "take.wav", "take_2.wav", 7, 7, 1, true, false},
        {"no extension", "bare", "bare_1", 7, 7, 1, true, false},
        {"no room", tooLong, tooLong.c_str(), 7, 7, 0, true, false},
        {"marks a free name", "y.wav", "y [1].wav", 0, 1, 1, true, true},
        {"marks none without leave", "y.wav", "y.wav", 0, 0, 0, false, true},
        {"old mark goes, taken numbers are passed", "x [3].wav", "x [10].wav", 7, 10, 1, true,
         true},
        {"a folder is no name", "", "", 7, 7, 0, true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.row);
        const CapturedLog log;
        char path[MAX_PATH];
        std::strcpy(path, folder.File(row.name).c_str());
        SetNextUniqueFileID(row.counter);
        EXPECT_EQ(UniqueFileName(path, row.allow, '_', row.bracket), row.result);
        EXPECT_EQ(path, folder.File(row.unique));
        EXPECT_EQ(GetNextUniqueFileID(), row.counterAfter);
        const std::string made = "Created unique name '" + folder.File(row.unique) + "'";
        EXPECT_EQ(log.Lines(), row.name == row.unique ? std::vector<std::string>{}
                                                      : std::vector<std::string>{made});
    }
    SetNextUniqueFileID(0);
}

TEST(FileNames, DiscNamesHoldAllowedBytes) {
    const std::string iso = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._";
    const std::string joliet = "\x1F !\"#$%&'()+,-./0123456789<=>";
    for (int c = 1; c < 256; ++c) {
        const char ch = static_cast<char>(c);
        const std::string one(1, ch);
        const std::string upper(1, c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : ch);
        for (const bool isPath : {false, true}) {
            const bool slash = ch == '/' || ch == '\\';
            const bool inIso = slash ? isPath : iso.find(upper) != iso.npos;
            EXPECT_EQ(Friendly(&MakeISO9660FriendlyName, one, isPath), inIso ? upper : "changed _")
                << c;
            const bool inJoliet =
                slash ? isPath : joliet.find(ch) != joliet.npos || (c >= 0x40 && c < 0x80);
            EXPECT_EQ(Friendly(&MakeJolietFriendlyName, one, isPath), inJoliet ? one : "changed _")
                << c;
        }
    }
    const CodePage japanese(932);
    EXPECT_EQ(Friendly(&MakeISO9660FriendlyName, "A\\\x83\\\x83z", true), "changed A\\____");
    EXPECT_EQ(Friendly(&MakeJolietFriendlyName, "a\\\x83\\\x83z", true), "changed a\\____");
    char valid[16];
    ValidateFileName("\x83\\a/b\\:*?\"<>|", valid, '-');
    EXPECT_STREQ(valid, "\x83\\a-b--------");
}

TEST(FileNames, DiscNamesAreShortenedInFrontOfTheExtension) {
    const auto letters = [](std::size_t count) { return std::string(count, 'A'); };
    const struct {
        const char* row;
        std::string name;
        bool isPath;
        std::string iso;
        std::string joliet;
    } rows[] = {
        {"29 bytes", letters(25) + ".WAV", false, letters(25) + ".WAV", letters(25) + ".WAV"},
        {"30 bytes", letters(26) + ".WAV", false, "changed " + letters(26) + ".WAV",
         letters(26) + ".WAV"},
        {"31 bytes", letters(27) + ".WAV", false, "changed " + letters(26) + ".WAV",
         "changed " + letters(27) + ".WAV"},
        {"40 bytes", letters(36) + ".WAV", false, "changed " + letters(26) + ".WAV",
         "changed " + letters(27) + ".WAV"},
        {"no dot", letters(40), false, letters(40), letters(40)},
        {"a path", letters(36) + ".WAV", true, letters(36) + ".WAV", letters(36) + ".WAV"},
        {"longer extension", "A." + letters(40), false, "changed ." + letters(29),
         "changed ." + letters(30)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.row);
        EXPECT_EQ(Friendly(&MakeISO9660FriendlyName, row.name, row.isPath), row.iso);
        EXPECT_EQ(Friendly(&MakeJolietFriendlyName, row.name, row.isPath), row.joliet);
    }
    char inPlace[] = "my song.mp3";
    EXPECT_TRUE(MakeISO9660FriendlyName(inPlace, inPlace, false, '_'));
    EXPECT_STREQ(inPlace, "MY_SONG.MP3");
}
