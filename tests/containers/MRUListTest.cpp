#include "utilities/containers/MRUList.h"

#include "common/Handles.h"
#include "tests/support/CapturedLog.h"
#include "tests/support/Dice.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"

#include <climits>
#include <gtest/gtest.h>

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

bool IsFolder(const std::string& path) {
    return (GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Last read at `accessTicks` and written at another time.
void MakeFile(const std::string& path) {
    const vtr::FileHandle file(
        CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
    const FILETIME read{0, accessTicks >> 32};
    const FILETIME written{0, 20'000'000};
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
            const std::string path = Text(key, "", k);
            if (!IsThere(path))
                continue;
            _MRUData entry{};
            path.copy(entry.path, MAX_PATH);
            entry.exists = !IsFolder(path);
            const std::string length = Text(0, "-last-length", k);
            entry.lastLength = static_cast<unsigned>(std::strtoll(length.c_str(), nullptr, 10));
            const std::string time = Text(0, "-last-time", k);
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

TEST(MRUList, IsInTheRegistryWhatItsRulesSay) {
    constexpr unsigned seed = 5;
    Dice dice(seed);
    const TestFolder folder;
    const TestKey keys[2];
    Model model;
    char baseName[] = "My%Files";
    CMRUList list(baseName);
    EXPECT_FALSE(list.Initialized());
    list.Init(keys[0].Root(), keys[0].SubKey());
    EXPECT_TRUE(list.Initialized());

    for (int step = 0; step < 600; ++step) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ", step " << step);
        std::string path = folder.File(std::string(1, static_cast<char>('a' + dice.Below(6))));
        const unsigned number = static_cast<unsigned>(dice.Below(INT_MAX)) * 2;
        const int choice = dice.Below(18), other = dice.Below(2);
        if (choice < 2) {
            dice.Below(3) != 0 ? MakeFile(path) : static_cast<void>(DeleteFileA(path.c_str()));
        } else if (choice < 5) { // another process
            const char* kinds[] = {"", "", "-last-length", "-last-time"};
            const char* kind = kinds[dice.Below(4)];
            const std::string name = Model::Name(kind, static_cast<std::size_t>(dice.Below(5)) + 1);
            const std::string text = *kind == '\0' ? path : dice.Below(2) == 0 ? "3000000000" : "";
            keys[other].SetText(name.c_str(), text);
            model.values[other][name] = text;
        } else if (choice < 7) {
            list.Init(keys[0].Root(), keys[0].SubKey());
            model.entries.clear();
            model.LoadPathsOf(0);
        } else if (choice == 7) {
            list.LoadFrom(keys[1].Root(), keys[1].SubKey());
            model.LoadPathsOf(1);
            model.Save();
        } else if (choice == 8) {
            list.ClearMRUList(/*save=*/other == 0);
            model.entries.clear();
            if (other == 0)
                model.Save();
        } else if (choice < 11) {
            list.RemoveFile(number % 8, /*save=*/true);
            if (number % 8 < model.entries.size())
                model.entries.erase(model.entries.begin() + static_cast<int>(number % 8));
            model.Save();
        } else {
            if (choice == 11)
                path = folder.Path();
            if (dice.Below(2) == 0)
                path.back() = static_cast<char>(std::toupper(path.back()));
            const unsigned long long before = Now();
            list.AddFile(path.c_str(), number);
            if (IsThere(path)) {
                const _MRUData added = list.GetMRUItem(0);
                EXPECT_TRUE(added.lastTime >= before && added.lastTime <= Now());
                EXPECT_EQ(added.path, path);
                EXPECT_EQ(added.lastLength, number);
                EXPECT_EQ(added.exists, !IsFolder(path));
                std::erase_if(model.entries, [&](const _MRUData& entry) {
                    return _stricmp(entry.path, path.c_str()) == 0;
                });
                model.entries.insert(model.entries.begin(), added);
                model.Save();
            }
        }
        unsigned count = 0;
        for (const _MRUData& entry : model.entries)
            ASSERT_EQ(Shown(list.GetMRUItem(count++)), Shown(entry));
        ASSERT_EQ(list.GetFileWithPath(count), nullptr);
        ASSERT_EQ(keys[0].Texts(), model.values[0]);
    }
}

TEST(MRUList, LivesInMemoryWithoutAKey) {
    const CapturedLog log;
    const TestFolder folder;
    std::string baseName(200, 'n');
    CMRUList list(baseName.data());
    list.AddFile(folder.Write("a.wav", "").c_str(), 1);
    list.AddFile(folder.Write("b.wav", "").c_str(), 2);
    list.MoveFileToTop(list.GetFileWithPath(1), 3);
    EXPECT_STREQ(list.GetFileNameOnly(0), "a.wav");
    EXPECT_EQ(list.IndexOf(folder.File("B.WAV").c_str()), 1);
    for (const std::string& path : {std::string(), folder.Path() + std::string(300, 'x')})
        list.AddFile(path.c_str(), 1);
    EXPECT_EQ(list.GetFileNameOnly(2), nullptr);
    EXPECT_EQ(Shown(list.GetMRUItem(2)), "|0|0|0");

    const TestKey key;
    list.Init(key.Root(), key.SubKey());
    list.AddFile(folder.File("a.wav").c_str(), 1);
    EXPECT_EQ(key.Texts()[std::string(124, 'n') + ".1"], folder.File("a.wav"));
    EXPECT_EQ(key.Texts()[std::string(112, 'n') + "-last-length.1"], "1");
    const std::vector<std::string> lines(log.Lines().end() - 4, log.Lines().end());
    EXPECT_EQ(lines, (std::vector<std::string>{"CMRUList::Init - enter", "CMRUList::Init - exit",
                                               "CMRUList::void CMRUList::SaveList() - enter",
                                               "CMRUList::void CMRUList::SaveList() - exit"}));
}

} // namespace
