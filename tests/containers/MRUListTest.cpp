#include "utilities/containers/MRUList.h"

#include "common/Handles.h"
#include "tests/support/Rounds.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"

#include <climits>

namespace {

constexpr unsigned long long accessTicks = 30'000'000ull << 32;

unsigned long long Now() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return static_cast<unsigned long long>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
}

bool IsThere(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsFile(const std::string& path) {
    return (GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

/// Last read at `accessTicks` and written at another time.
void MakeFile(const std::string& path) {
    const vtr::FileHandle file(
        CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
    const FILETIME read{0, accessTicks >> 32}, written{0, 20'000'000};
    EXPECT_TRUE(SetFileTime(file.Get(), nullptr, &read, &written));
}

std::string Shown(const _MRUData& entry) {
    return std::string(entry.path) + "|" + std::to_string(entry.lastTime) + "|" +
           std::to_string(entry.lastLength) + "|" + std::to_string(entry.exists);
}

/// The list and the registry as they should be: the key of the list and another.
struct Model {
    std::vector<_MRUData> entries;
    std::map<std::string, std::string> values[2];

    static std::string Name(const char* kind, std::size_t k) {
        return std::string("My%Files") + kind + "." + std::to_string(k);
    }
    std::string Text(int key, const char* kind, std::size_t k) const {
        const auto found = values[key].find(Name(kind, k));
        return found != values[key].end() ? found->second : "";
    }

    void LoadPathsOf(int key) {
        for (std::size_t k = 1; !Text(key, "", k).empty(); ++k) {
            const std::string path = Text(key, "", k), time = Text(0, "-last-time", k);
            if (!IsThere(path))
                continue;
            _MRUData entry{};
            entry.exists = IsFile(path);
            path.copy(entry.path, MAX_PATH);
            entry.lastLength =
                static_cast<unsigned>(std::atoll(Text(0, "-last-length", k).c_str()));
            entry.lastTime = !time.empty() ? std::stoull(time) : entry.exists ? accessTicks : 0;
            entries.push_back(entry);
        }
    }

    void Save() {
        std::size_t w = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (!IsThere(entries[i].path))
                continue;
            values[0][Name("", ++w)] = entries[i].path;
            values[0][Name("-last-length", i + 1)] =
                std::to_string(static_cast<int>(entries[i].lastLength));
            values[0][Name("-last-time", i + 1)] = std::to_string(entries[i].lastTime);
        }
        while (w < entries.size() + 5)
            values[0][Name("", ++w)] = "";
    }
};

class MRUList : public testing::Test {
protected:
    /// A file comes or goes, or another process writes to a key.
    void ChangeAround(Dice& dice, const std::string& path, int key) {
        if (dice.Below(5) < 2)
            return dice.Below(3) != 0 ? MakeFile(path)
                                      : static_cast<void>(DeleteFileA(path.c_str()));
        const char* kinds[] = {"", "", "-last-length", "-last-time"};
        const char* kind = kinds[dice.Below(4)];
        const std::string name = Model::Name(kind, static_cast<std::size_t>(dice.Below(5)) + 1);
        const std::string text = *kind == '\0' ? path : dice.Below(2) == 0 ? "3000000000" : "";
        keys[key].SetText(name.c_str(), text);
        model.values[key][name] = text;
    }

    void Add(const std::string& path, unsigned length) {
        const unsigned long long before = Now();
        list.AddFile(path.c_str(), length);
        if (!IsThere(path))
            return;
        const _MRUData added = list.GetMRUItem(0);
        EXPECT_TRUE(added.lastTime >= before && added.lastTime <= Now());
        EXPECT_EQ(added.path, path);
        EXPECT_EQ(added.lastLength, length);
        EXPECT_EQ(added.exists, IsFile(path));
        std::erase_if(model.entries, [&](const _MRUData& entry) {
            return _stricmp(entry.path, path.c_str()) == 0;
        });
        model.entries.insert(model.entries.begin(), added);
        model.Save();
    }

    void Change(int choice, std::string path, unsigned number, bool other) {
        if (choice < 2) {
            list.Init(keys[0].Root(), keys[0].SubKey());
            model.entries.clear();
            return model.LoadPathsOf(0);
        }
        if (choice == 2) {
            list.LoadFrom(keys[1].Root(), keys[1].SubKey());
            model.LoadPathsOf(1);
        } else if (choice == 3) {
            list.ClearMRUList(/*save=*/other);
            model.entries.clear();
            if (!other)
                return;
        } else if (choice < 6) {
            list.RemoveFile(number % 8, /*save=*/true);
            if (number % 8 < model.entries.size())
                model.entries.erase(model.entries.begin() + static_cast<int>(number % 8));
        } else {
            if (other)
                path.back() = static_cast<char>(std::toupper(path.back()));
            return Add(choice == 6 ? folder.Path() : path, number);
        }
        model.Save();
    }

    const TestFolder folder;
    TestKey keys[2];
    Model model;
    char baseName[9] = "My%Files";
    CMRUList list{baseName};
};

TEST_F(MRUList, IsInTheRegistryWhatItsRulesSay) {
    EXPECT_FALSE(list.Initialized());
    list.Init(keys[0].Root(), keys[0].SubKey());
    EXPECT_TRUE(list.Initialized());
    EachRound(5, 600, [this](Dice& dice, int) {
        const std::string path =
            folder.File(std::string(1, static_cast<char>('a' + dice.Below(6))));
        const unsigned number = static_cast<unsigned>(dice.Below(INT_MAX)) * 2;
        const int choice = dice.Below(18), other = dice.Below(2);
        choice < 5 ? ChangeAround(dice, path, other) : Change(choice - 5, path, number, other == 0);
        unsigned count = 0;
        for (const _MRUData& entry : model.entries)
            ASSERT_EQ(Shown(list.GetMRUItem(count++)), Shown(entry));
        ASSERT_EQ(list.GetFileWithPath(count), nullptr);
        ASSERT_EQ(keys[0].Texts(), model.values[0]);
    });
}

TEST_F(MRUList, LivesInMemoryWithoutAKey) {
    std::string longName(200, 'n');
    CMRUList files(longName.data());
    files.AddFile(folder.Write("a.wav", "").c_str(), 1);
    files.AddFile(folder.Write("b.wav", "").c_str(), 2);
    files.MoveFileToTop(files.GetFileWithPath(1), 3);
    EXPECT_STREQ(files.GetFileNameOnly(0), "a.wav");
    EXPECT_EQ(files.IndexOf(folder.File("B.WAV").c_str()), 1);
    for (const std::string& path : {std::string(), folder.Path() + std::string(300, 'x')})
        files.AddFile(path.c_str(), 1);
    EXPECT_EQ(files.GetFileNameOnly(2), nullptr);
    EXPECT_EQ(Shown(files.GetMRUItem(2)), "|0|0|0");

    files.Init(keys[0].Root(), keys[0].SubKey());
    files.AddFile(folder.File("a.wav").c_str(), 1);
    EXPECT_EQ(keys[0].Texts()[std::string(124, 'n') + ".1"], folder.File("a.wav"));
    EXPECT_EQ(keys[0].Texts()[std::string(112, 'n') + "-last-length.1"], "1");
}

} // namespace
