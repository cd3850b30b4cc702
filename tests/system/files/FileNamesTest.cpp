#include "utilities/system/files/FileFunctions.h"

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

    const CodePage japanese(932);
    char marked[] = "a [1]\x83\\.wav";
    EXPECT_TRUE(StripUniqueID(marked, false));
    EXPECT_STREQ(marked, "a\x83\\.wav");
}

TEST(FileNames, UniqueNameIsOneThatNoFileHas) {
    const TestFolder folder;
    const std::string tooLong = std::string(MAX_PATH - 1 - folder.Path().size(), 'n');
    for (const std::string& name : {std::string("a.wav"), std::string("a_1.wav"),
                                    std::string("x [8].wav"), std::string("x [9].wav"), tooLong})
        folder.Write(name, "");
    const struct {
        std::string name, unique;
        unsigned counterAfter; ///< 7 before
        bool allow, bracket;
        int result;
    } rows[] = {
        {"new.wav", "new.wav", 7, false, false, 1}, {"a.wav", "a.wav", 7, false, false, 0},
        {"a.wav", "a_2.wav", 7, true, false, 1},    {tooLong, tooLong, 7, true, false, 0},
        {"y", "y [8]", 8, true, true, 1},           {"x [3].wav", "x [10].wav", 10, true, true, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name + " to " + row.unique);
        std::string path = folder.File(row.name);
        path.resize(MAX_PATH);
        SetNextUniqueFileID(7);
        EXPECT_EQ(UniqueFileName(path.data(), row.allow, '_', row.bracket), row.result);
        EXPECT_EQ(path.c_str(), folder.File(row.unique));
        EXPECT_EQ(GetNextUniqueFileID(), row.counterAfter);
    }
}

TEST(FileNames, DiscNamesHoldAllowedBytes) {
    const std::string iso = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._";
    const std::string joliet = "\x1F !\"#$%&'()+,-.0123456789<=>";
    for (int c = 1; c < 256; ++c) {
        const std::string one(1, static_cast<char>(c));
        const std::string upper(1, static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c));
        for (const bool isPath : {false, true}) {
            const bool slash = c == '/' || c == '\\';
            const bool inIso = slash ? isPath : iso.find(upper) != iso.npos;
            const bool inJoliet =
                slash ? isPath : joliet.find(one) != joliet.npos || (c >= 0x40 && c < 0x80);
            EXPECT_EQ(Friendly(&MakeISO9660FriendlyName, one, isPath), inIso ? upper : "changed _");
            EXPECT_EQ(Friendly(&MakeJolietFriendlyName, one, isPath), inJoliet ? one : "changed _");
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
    const auto wav = [](std::size_t count) { return std::string(count, 'A') + ".WAV"; };
    const std::string none(40, 'A');
    const struct {
        std::string name, iso, joliet;
        bool isPath;
    } rows[] = {
        {wav(25), wav(25), wav(25), false},
        {wav(26), "changed " + wav(26), wav(26), false},
        {wav(36), "changed " + wav(26), "changed " + wav(27), false},
        {none, none, none, false},
        {"A." + none, "changed ." + none.substr(11), "changed ." + none.substr(10), false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Friendly(&MakeISO9660FriendlyName, row.name, row.isPath), row.iso);
        EXPECT_EQ(Friendly(&MakeJolietFriendlyName, row.name, row.isPath), row.joliet);
    }
}
