#include "tests/support/AllocationFault.h"
#include "tests/support/GuardedBuffer.h"
#include "tests/support/HeapUse.h"
#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

using namespace std::string_literals;

struct Pair {
    std::string name;
    std::string value;
};

struct Section {
    std::string name;
    std::vector<std::string> parents;
    std::vector<Pair> pairs;
};

/// The first with that name, or the end.
template <class List>
auto Find(List& list, const std::string& name) {
    return std::find_if(list.begin(), list.end(), [&](const auto& candidate) {
        return _stricmp(candidate.name.c_str(), name.c_str()) == 0;
    });
}

template <class List>
void SortByName(List& list) {
    std::sort(list.begin(), list.end(), [](const auto& a, const auto& b) {
        return _stricmp(a.name.c_str(), b.name.c_str()) < 0;
    });
}

/// What a document should hold.
using Model = std::vector<Section>;

void Sort(Model& model) {
    SortByName(model);
    for (Section& section : model)
        SortByName(section.pairs);
}

/// Gives a section what it lacks by the words of the rule, over every path.
void Inherit(Model& model, Section& child, int depth) {
    for (const std::string& name : child.parents) {
        const auto parent = Find(model, name);
        if (parent == model.end() || &*parent == &child)
            continue;
        if (depth < 10)
            Inherit(model, *parent, depth + 1);
        for (const Pair& pair : parent->pairs) {
            const auto own = Find(child.pairs, pair.name);
            if (own == child.pairs.end())
                child.pairs.push_back(pair);
            else if (own->value.empty())
                own->value = pair.value;
        }
    }
}

/// The value, made when missing.
std::string& Value(Model& model, const std::string& name, const std::string& key) {
    auto section = Find(model, name);
    if (section == model.end())
        section = model.insert(section, Section{name, {}, {}});
    auto pair = Find(section->pairs, key);
    if (pair == section->pairs.end())
        pair = section->pairs.insert(pair, Pair{key, ""});
    return pair->value;
}

/// As a document is saved.
std::string Written(const Model& model) {
    std::string text;
    for (const Section& section : model) {
        text += "[" + section.name + "]";
        for (const std::string& parent : section.parents)
            text += " : [" + parent + "]";
        for (const auto& [key, value] : section.pairs) {
            const char* quote = value.starts_with(" ") || value.ends_with(" ") ? "\"" : "";
            text += "\r\n" + key + " = " + quote + value + quote;
        }
        text += "\r\n\r\n\r\n";
    }
    return text;
}

std::string Name(std::mt19937& random, const char* letters, unsigned number) {
    return std::string(1, letters[random() % 2]) + std::to_string(number);
}

/// In most, each section's parent is mostly the one made next, so that there are circles and chains
/// of more than ten levels.
Model RandomModel(std::mt19937& random, bool namesDiffer) {
    const unsigned count = 2 + random() % 14;
    const unsigned nearby = 1 + random() % 4;
    Model model;
    for (unsigned s = 0; s < count; ++s) {
        const bool repeated = !namesDiffer && random() % 8 == 0;
        Section section{Name(random, "sS", repeated ? random() % count : s), {}, {}};
        for (unsigned k = 1 + random() % 4; k > 0; --k)
            section.pairs.push_back({Name(random, "kK", namesDiffer ? k * 5 % 8 : random() % 8),
                                     random() % 4 == 0 ? "" : std::to_string(s)});
        for (unsigned p = random() % 8 == 0 ? 0 : 1 + random() % 2; p > 0; --p)
            section.parents.push_back(Name(
                random, "sS", random() % nearby == 0 ? random() % (count + 1) : (s + 1) % count));
        model.push_back(section);
    }
    if (random() % 2 == 0)
        std::shuffle(model.begin(), model.end(), random);
    return model;
}

/// One change of a section that is there, made to both.
void ChangeSection(std::mt19937& random, CIniFileReader& document, Model& model, bool namesDiffer) {
    const auto found = Find(model, model[random() % model.size()].name);
    CIniSection& section = *document.GetSection(found->name.c_str());
    std::vector<Pair>& pairs = found->pairs;
    const auto index = static_cast<unsigned>(random() % (pairs.size() + 1));
    const Pair pair{Name(random, "kK", random() % 9), std::to_string(random() % 9)};
    const auto same = [&](const Pair& each) {
        return _stricmp(each.name.c_str(), pair.name.c_str()) == 0;
    };
    // A section without pairs would not be read back.
    const bool leavesNone = pairs.size() < 2 || std::all_of(pairs.begin(), pairs.end(), same);
    if (random() % 3 == 0 && !leavesNone) {
        section.RemoveKey(pair.name.c_str());
        std::erase_if(pairs, same);
    } else if (!leavesNone && !section.KeepSorted()) {
        section.RemoveKey(index);
        if (index < pairs.size())
            pairs.erase(std::next(pairs.begin(), static_cast<int>(index)));
    } else if (!namesDiffer) {
        CIniValue own(pair.name.c_str(), pair.value.c_str());
        ASSERT_TRUE(index % 2 == 0 ? section.AddValue(own)
                                   : section.AddValue(own.Key(), own.Value()));
        pairs.push_back(pair);
        ASSERT_TRUE(document.SetValue(static_cast<int>(found - model.begin()),
                                      static_cast<int>(index), "set"));
        pairs[index].value = "set";
    }
}

} // namespace

TEST(IniFileReader, LoadInheritEditSaveAndReadBack) {
    constexpr unsigned seed = 17;
    std::mt19937 random(seed);
    const TestFolder folder;
    for (int round = 0; round < 250; ++round) {
        const bool namesDiffer = random() % 2 == 0;
        const bool sort = namesDiffer && random() % 2 == 0;
        Model model = RandomModel(random, namesDiffer);
        const std::string before = Written(model);
        SCOPED_TRACE("seed 17, round " + std::to_string(round) + "\n" + before);
        const std::string file = folder.Write("a.ini", before);
        CIniFileReader document;
        ASSERT_TRUE(document.Init(file.c_str(), sort));
        if (sort)
            Sort(model);
        for (Section& section : model) {
            Inherit(model, section, 1);
            section.parents.clear();
        }
        for (int i = 0; i < 60; ++i) {
            if (i % 5 == 0)
                ChangeSection(random, document, model, namesDiffer);
            // What is written without quotes can have neither blanks nor quotes around it.
            std::string name = Name(random, "sS", random() % 18);
            if (random() % 4 == 0)
                name = "n" + RandomText(random, 2, "\" \t=[:;aB\xE4\x80\r\n");
            std::string key = Name(random, "kK", random() % 9);
            if (random() % 4 == 0)
                key += RandomText(random, 9, "\" []:aB\xE4\x80") + "k";
            if (i % 3 == 0) {
                const std::string value = RandomText(random, 20, " =[]:aB\xE4\x80");
                ASSERT_TRUE(document.SetValue(name.c_str(), key.c_str(), value.c_str()));
                Value(model, name, key) = value;
            }
            const bool known = Find(model, name) != model.end();
            ASSERT_EQ(document.SectionExists(name.c_str()), known) << name;
            // Of equal names the one that is found depends on what was read before.
            if (!namesDiffer)
                continue;
            Model looked = known ? Model{*Find(model, name)} : Model{};
            const std::string value = Value(looked, name, key);
            ASSERT_EQ(document.KeyExists(name.c_str(), key.c_str()), !value.empty()) << key;
            GuardedBytes buffer(1 + random() % 12);
            const auto size = static_cast<unsigned>(buffer.View().size());
            ASSERT_EQ(document.GetString(name.c_str(), key.c_str(), "(none)", buffer.Data(), size),
                      known);
            ASSERT_EQ(buffer.Data(), (value.empty() ? "(none)" : value).substr(0, size - 1));
        }
        if (sort)
            Sort(model);
        ASSERT_TRUE(document.Save());
        ASSERT_EQ(ReadBytes(file), Written(model));
        CIniFileReader copy;
        ASSERT_TRUE(copy.Init(file.c_str(), sort));
        ASSERT_EQ(Content(copy), Content(document));
    }
}

TEST(IniFileReader, OutOfRangeIsNothing) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\na=NOPE_NO_KEY\nb=nope_no_key\n"));
    EXPECT_FALSE(document.KeyExists("A", "a")) << "the mark of a missing key";
    EXPECT_TRUE(document.KeyExists("A", "b"));
    EXPECT_FALSE(document.SectionExists("") || document.SectionExists(nullptr));
    EXPECT_EQ(document.SectionName(1), nullptr);
    for (const int place : {-1, 1}) {
        EXPECT_TRUE(!document.GetSection(place) && document.GetNumValues(place) == 0);
        EXPECT_TRUE(!document.GetValue(place, 0) && !document.SetValue(place, 0, "x"));
        EXPECT_TRUE(!document.GetValue(0, 3 * place) && !document.SetValue(0, 3 * place, "x"));
    }
    for (const char* none : {static_cast<const char*>(nullptr), ""})
        EXPECT_FALSE(document.SetValue(none, "k", "v") || document.SetValue("s", none, "v"));
    const unsigned char one[] = {'a'};
    EXPECT_FALSE(document.InitFromBuffer(nullptr, 5, false));
    EXPECT_FALSE(document.InitFromBuffer(one, 0x80000000u, false));
    EXPECT_TRUE(document.InitFromBuffer(one, 0, true));
}

TEST(IniFileReader, WithoutAValueTheRestIsZeroed) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[A]\nk=value\n"));
    const auto shown = [&](const char* section, const char* key, const char* defaultValue) {
        GuardedBytes buffer(4);
        const bool found = document.GetString(section, key, defaultValue, buffer.Data(), 4);
        return (found ? "found " : "") + std::string(buffer.View());
    };
    EXPECT_EQ(shown("A", "x", "default"), "found def\0"s);
    EXPECT_EQ(shown("A", "x", nullptr), "found \0\0\0\0"s);
    EXPECT_EQ(shown(nullptr, "k", "d"), "d\0\0\0"s);
    EXPECT_EQ(shown("A", nullptr, "d"), "\xCD\xCD\xCD\xCD") << "nothing written";
    char untouched = 'x';
    EXPECT_FALSE(document.GetString("A", "k", "d", &untouched, 0) ||
                 document.GetString("A", "k", "d", nullptr, 1));
    EXPECT_EQ(untouched, 'x');
}

TEST(IniFileReader, LooksFirstInTheSectionReadLastAndInTheNext) {
    struct Peek : CIniFileReader {
        using CIniFileReader::lastSectionIndex;
    } document;
    ASSERT_TRUE(Load(document, "x=0\n[Beta]\nb=2\n[Alpha]\na=1\n[beta]\nb=3\n"));
    EXPECT_EQ(Get(document, nullptr, "x"), "(none)");
    document.lastSectionIndex = 0;
    EXPECT_EQ(Get(document, nullptr, "x"), "0");
    EXPECT_EQ(Get(document, "Alpha", "a"), "1");
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(Get(document, "beta", "b"), "3") << "although there is an earlier one";
    EXPECT_EQ(Get(document, "alpha", "a"), "1");
    document.lastSectionIndex = 99;
    EXPECT_EQ(Get(document, "beta", "b"), "2");
}

TEST(IniFileReader, SortReversesEqualNames) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[b]\nz=1\nA=2\na=3\nM=4\n[B]\nk=1\n[a]\nk=2\n", true));
    EXPECT_EQ(Content(document), "{a: k=2;}{B: k=1;}{b: a=3; A=2; M=4; z=1;}");
    document.Sort();
    EXPECT_EQ(Content(document), "{a: k=2;}{b: A=2; a=3; M=4; z=1;}{B: k=1;}");
    document.GetSection("a")->SetKeepSorted(false);
    ASSERT_TRUE(document.SetValue("A", "b", "3") && document.SetValue("A0", "k", nullptr));
    EXPECT_EQ(Content(document), "{a: b=3; k=2;}{A0: k=;}{B: k=1;}{b: a=3; A=2; M=4; z=1;}");
}

TEST(IniFileReader, InitReadsFiles) {
    const TestFolder folder;
    const std::string file = folder.Write("a.ini", "[B]\nb=2\n[A]\na=1\n");
    CIniFileReader document;
    EXPECT_FALSE(document.Init(nullptr, false));
    for (const std::string& refused :
         {std::string(), folder.File("missing.ini"), folder.Path(), folder.Write("empty.ini", ""),
          folder.Write("bad.ini", "=1")}) {
        ASSERT_TRUE(document.Init(file.c_str(), true));
        EXPECT_TRUE(document.Initialized() && document.FileName() == file);
        EXPECT_EQ(Content(document), "{A: a=1;}{B: b=2;}");
        EXPECT_FALSE(document.Init(refused.c_str(), false)) << refused;
        EXPECT_TRUE(!document.Initialized() && Content(document).empty()) << refused;
    }
    ASSERT_TRUE(document.Init(file.c_str(), false));
    document.ClearValues();
    EXPECT_TRUE(!document.Initialized() && document.NumSections() == 0);
}

TEST(IniFileReader, LackOfMemoryLeavesAValidDocument) {
    std::string text = "top=1\n";
    for (int s = 0; s < 12; ++s) {
        text += "[S" + std::to_string(s) + "] : [S" + std::to_string(s / 2 + 7) + "]\n";
        for (int k = 0; k < 12; ++k)
            text += "k" + std::to_string(k * (s + 1)) + "=" + std::to_string(s) + "\n";
    }
    const auto edit = [](CIniFileReader& document) {
        bool good = document.SetValue("Added", "k", "v");
        good = document.SetValue("Added", "k", "longer") && good;
        good = document.SetValue("S0", "l", "w") && good;
        return document.SetValue(0, 0, "longest of all") && good;
    };
    const TestFolder folder;
    const std::string file = folder.Write("a.ini", text);
    AllocationFault fault("vtrutils.dll");
    CIniFileReader whole;
    ASSERT_TRUE(whole.Init(file.c_str(), true) && edit(whole));
    whole.Sort();
    // The first rounds, and what is run on a thread of its own, leave what the run-time keeps.
    const DWORD thread = GetCurrentThreadId();
    const auto fail = [&](unsigned n) {
        CIniFileReader document;
        const bool loaded = document.Init(file.c_str(), true), edited = edit(document);
        fault.FailAt(0);
        document.Sort();
        EXPECT_EQ(Content(document).find(" ="), std::string::npos) << "a pair without key";
        EXPECT_TRUE(!loaded || !edited || Content(document) == Content(whole)) << n;
        document.SetValue("Added", "again", "v");
        EXPECT_EQ(Get(document, "Added", "again"), "v");
    };
    const unsigned failures = fault.ForEachAllocation([&](unsigned n) {
        const std::size_t used = HeapUse();
        fail(n);
        EXPECT_TRUE(HeapUse() == used || n < 5 || GetCurrentThreadId() != thread) << n;
    });
    EXPECT_GT(failures, 200u);
}
