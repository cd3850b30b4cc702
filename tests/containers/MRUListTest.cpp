#include "utilities/containers/MRUList.h"

#include "tests/support/CapturedLog.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestKey.h"
#include "utilities/system/Handles.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <random>

namespace {

constexpr char files[] = "abcdef";
constexpr unsigned long long accessTicks = 30'000'000ull << 32;

unsigned long long Now() {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    return static_cast<unsigned long long>(now.dwHighDateTime) << 32 | now.dwLowDateTime;
}

/// Makes the file, last read at `accessTicks` and written at another time, or removes it.
void SetExists(const std::string& path, bool exists) {
    if (!exists) {
        DeleteFileA(path.c_str());
        return;
    }
    const vtr::FileHandle file(
        CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS, 0, nullptr));
    const FILETIME read{0, accessTicks >> 32};
    const FILETIME written{0, 20'000'000};
    EXPECT_TRUE(SetFileTime(file.Get(), nullptr, &read, &written));
}

/// The list and the registry as they should be.
struct Model {
    std::vector<_MRUData> entries;
    std::map<std::string, std::string> values;

    static std::string Name(const char* kind, std::size_t k) {
        return std::string("My%Files") + kind + "." + std::to_string(k);
    }
    static DWORD Attributes(const std::string& path) { return GetFileAttributesA(path.c_str()); }

    void Load() {
        entries.clear();
        for (std::size_t k = 1; !values[Name("", k)].empty(); ++k) {
            const std::string path = values[Name("", k)];
            if (Attributes(path) == INVALID_FILE_ATTRIBUTES)
                continue;
            _MRUData entry{};
            std::strcpy(entry.path, path.c_str());
            entry.exists = (Attributes(path) & FILE_ATTRIBUTE_DIRECTORY) == 0;
            entry.lastLength =
                static_cast<unsigned>(std::atoi(values[Name("-last-length", k)].c_str()));
            const std::string& time = values[Name("-last-time", k)];
            entry.lastTime = !time.empty() ? std::stoull(time) : entry.exists ? accessTicks : 0;
            entries.push_back(entry);
        }
    }

    void Add(const _MRUData& entry) {
        std::erase_if(entries,
                      [&](const auto& other) { return _stricmp(other.path, entry.path) == 0; });
        entries.insert(entries.begin(), entry);
    }

    void Save() {
        std::size_t w = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            if (Attributes(entries[i].path) == INVALID_FILE_ATTRIBUTES)
                continue;
            values[Name("", w + 1)] = entries[i].path;
            values[Name("-last-length", i + 1)] =
                std::to_string(static_cast<int>(entries[i].lastLength));
            values[Name("-last-time", i + 1)] = std::to_string(entries[i].lastTime);
            w = w + 1;
        }
        while (w < entries.size() + 5) {
            w = w + 1;
            values[Name("", w)] = "";
        }
    }
};

std::string Shown(const _MRUData& entry) {
    return std::string(entry.path) + " " + std::to_string(entry.lastTime) + " " +
           std::to_string(entry.lastLength) + " " + std::to_string(entry.exists);
}

std::map<std::string, std::string> WithText(std::map<std::string, std::string> values) {
    std::erase_if(values, [](const auto& value) { return value.second.empty(); });
    return values;
}

} // namespace

TEST(MRUList, IsInTheRegistryWhatItsRulesSay) {
    constexpr unsigned seed = 5;
    std::mt19937 random(seed);
    const TestFolder folder;
    const TestKey key;
    Model model;
    char baseName[] = "My%Files";
    CMRUList list(baseName);
    EXPECT_FALSE(list.Initialized());
    list.Init(key.Root(), key.SubKey());
    EXPECT_TRUE(list.Initialized());

    for (int step = 0; step < 600; ++step) {
        SCOPED_TRACE("seed 5, step " + std::to_string(step));
        std::string path = folder.File(std::string(1, files[random() % 6]));
        const unsigned number = static_cast<unsigned>(random());
        switch (random() % 8) {
        case 0:
            SetExists(path, random() % 3 != 0);
            break;
        case 1: { // another process
            const std::size_t k = 1 + random() % 5;
            const char* kinds[] = {"", "-last-length", "-last-time"};
            const std::string name = Model::Name(kinds[random() % 3], k);
            const std::string text = name == Model::Name("", k) ? path : random() % 2 ? "77" : "";
            key.SetText(name.c_str(), text);
            model.values[name] = text;
            break;
        }
        case 2:
            list.Init(key.Root(), key.SubKey());
            model.Load();
            break;
        case 3: {
            const unsigned index = number % 8;
            list.RemoveFile(index, true);
            if (index < model.entries.size())
                model.entries.erase(model.entries.begin() + static_cast<int>(index));
            model.Save();
            break;
        }
        case 4:
            path = folder.Path();
            [[fallthrough]];
        default: {
            if (random() % 2 != 0)
                path.back() = static_cast<char>(std::toupper(path.back()));
            const unsigned long long before = Now();
            list.AddFile(path.c_str(), number);
            if (Model::Attributes(path) == INVALID_FILE_ATTRIBUTES)
                break;
            const _MRUData added = list.GetMRUItem(0);
            EXPECT_TRUE(added.lastTime >= before && added.lastTime <= Now());
            EXPECT_EQ(added.path, path);
            EXPECT_EQ(added.lastLength, number);
            EXPECT_EQ(added.exists, (Model::Attributes(path) & FILE_ATTRIBUTE_DIRECTORY) == 0);
            model.Add(added);
            model.Save();
        }
        }
        unsigned count = 0;
        for (const _MRUData& entry : model.entries)
            ASSERT_EQ(Shown(list.GetMRUItem(count++)), Shown(entry));
        ASSERT_EQ(list.GetFileWithPath(count), nullptr);
        ASSERT_EQ(WithText(key.Texts()), WithText(model.values));
    }
}

TEST(MRUList, LeavesGapsInLengthsAndTimesAndBlanksBehindThePaths) {
    const CapturedLog log;
    const TestFolder folder;
    const TestKey from;
    const TestKey key;
    for (int k = 1; k <= 3; ++k) {
        const std::string number = std::to_string(k);
        from.SetText(("N." + number).c_str(), folder.Write(number, ""));
        from.SetText(("N-last-length." + number).c_str(), "4");
        key.SetText(("N-last-length." + number).c_str(), "3000000000");
        key.SetText(("N-last-time." + number).c_str(), number);
    }
    char baseName[] = "N";
    CMRUList list(baseName);
    list.Init(key.Root(), key.SubKey());
    list.LoadFrom(from.Root(), from.SubKey());
    EXPECT_EQ(list.GetMRUItem(1).lastLength, 3'000'000'000u);
    EXPECT_EQ(key.Texts()["N.3"], folder.File("3"));
    key.Clear();
    SetExists(folder.File("2"), false);
    list.RemoveFile(99, true);
    const std::map<std::string, std::string> expected = {
        {"N.1", folder.File("1")},
        {"N.2", folder.File("3")},
        {"N-last-length.1", "-1294967296"},
        {"N-last-length.3", "-1294967296"},
        {"N-last-time.1", "1"},
        {"N-last-time.3", "3"},
        {"N.3", ""},
        {"N.4", ""},
        {"N.5", ""},
        {"N.6", ""},
        {"N.7", ""},
        {"N.8", ""},
    };
    EXPECT_EQ(key.Texts(), expected);
    list.ClearMRUList(true);
    EXPECT_EQ(key.Texts()["N.1"] + key.Texts()["N.5"], "");
    EXPECT_EQ(log.Lines().front(), "CMRUList::Init - enter");
    EXPECT_EQ(log.Lines()[1], "CMRUList::Init - exit");
    EXPECT_EQ(log.Lines()[2], "CMRUList::void CMRUList::SaveList() - enter");
    EXPECT_EQ(log.Lines().back(), "CMRUList::void CMRUList::SaveList() - exit");
}

TEST(MRUList, LivesInMemoryWithoutAKey) {
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
    EXPECT_EQ(Shown(list.GetMRUItem(2)), " 0 0 0");

    const TestKey key;
    list.Init(key.Root(), key.SubKey());
    list.AddFile(folder.File("a.wav").c_str(), 1);
    EXPECT_EQ(key.Texts()[std::string(124, 'n') + ".1"], folder.File("a.wav"));
    EXPECT_EQ(key.Texts()[std::string(112, 'n') + "-last-length.1"], "1");
}
