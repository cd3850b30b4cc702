#include "tests/support/RandomText.h"
#include "tests/support/TestFolder.h"
#include "tests/text/ini/IniDocuments.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vector>

namespace {

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
    const unsigned near = 1 + random() % 4;
    Model model;
    for (unsigned s = 0; s < count; ++s) {
        const bool repeated = !namesDiffer && random() % 8 == 0;
        Section section{Name(random, "sS", repeated ? random() % count : s), {}, {}};
        for (unsigned k = 1 + random() % 4; k > 0; --k)
            section.pairs.push_back({Name(random, "kK", namesDiffer ? k * 5 % 8 : random() % 8),
                                     random() % 4 == 0 ? "" : std::to_string(s)});
        for (unsigned p = random() % 8 == 0 ? 0 : 1 + random() % 2; p > 0; --p)
            section.parents.push_back(Name(
                random, "sS", random() % near == 0 ? random() % (count + 1) : (s + 1) % count));
        model.push_back(section);
    }
    // A parent of so many keys that most sections are small beside it.
    if (random() % 4 == 0) {
        Section section{Name(random, "sS", count), {}, {}};
        for (unsigned k = 0; k < 300; ++k)
            section.pairs.push_back({"l" + std::to_string(k), random() % 4 == 0 ? "" : "1"});
        model.push_back(section);
    }
    if (random() % 2 == 0)
        std::shuffle(model.begin(), model.end(), random);
    return model;
}

} // namespace

TEST(IniModel, LoadInheritEditSaveAndReadBack) {
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
            ASSERT_EQ(Get(document, name.c_str(), key.c_str()), value.empty() ? "(none)" : value);
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
