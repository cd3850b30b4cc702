#include "tests/support/TestFolder.h"
#include "tests/text/IniDocuments.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

struct ModelSection {
    std::string name;
    std::vector<std::string> parents;
    std::vector<std::pair<std::string, std::string>> pairs;
};
using Model = std::vector<ModelSection>;

bool Same(const std::string& a, const std::string& b) {
    return _stricmp(a.c_str(), b.c_str()) == 0;
}

/// Gives a section what it lacks by the words of the rule, over every path.
void Inherit(Model& model, ModelSection& child, int depth) {
    for (const std::string& name : child.parents) {
        const auto parent = std::find_if(model.begin(), model.end(), [&](const auto& candidate) {
            return Same(candidate.name, name);
        });
        if (parent == model.end() || &*parent == &child)
            continue;
        if (depth < 10)
            Inherit(model, *parent, depth + 1);
        for (const auto& pair : parent->pairs) {
            const auto own =
                std::find_if(child.pairs.begin(), child.pairs.end(), [&](const auto& candidate) {
                    return Same(candidate.first, pair.first);
                });
            if (own == child.pairs.end())
                child.pairs.push_back(pair);
            else if (own->second.empty())
                own->second = pair.second;
        }
    }
}

Model RandomModel(std::mt19937& random) {
    const auto name = [&random](const char* letters, unsigned number) {
        return std::string(1, letters[random() % 2]) + std::to_string(number);
    };
    Model model(2 + random() % 14);
    const unsigned count = static_cast<unsigned>(model.size());
    for (unsigned s = 0; s < count; ++s) {
        // Mostly one of a name, whose parent is the next, so that there are circles and chains of
        // more than ten levels.
        model[s].name = name("sS", random() % 16 == 0 ? random() % count : s);
        for (unsigned k = 1 + random() % 3; k > 0; --k)
            model[s].pairs.emplace_back(name("kK", random() % 8),
                                        random() % 4 == 0 ? "" : std::to_string(s));
        for (unsigned p = random() % 8 == 0 ? 0 : 1 + random() % 2; p > 0; --p)
            model[s].parents.push_back(
                name("sS", random() % 3 == 0 ? random() % (count + 1) : (s + 1) % count));
    }
    return model;
}

std::string Inherited(CIniFileReader& document, const std::string& text, bool sort = false) {
    const TestFolder folder;
    EXPECT_TRUE(document.Init(folder.Write("a.ini", text).c_str(), sort));
    for (int i = 0; i < static_cast<int>(document.NumSections()); ++i)
        EXPECT_EQ(document.GetSection(i)->NumParents(), 0);
    return Content(document);
}

} // namespace

TEST(IniInheritance, FollowsTheRuleOnRandomGraphs) {
    constexpr unsigned seed = 17;
    std::mt19937 random(seed);
    for (int round = 0; round < 300; ++round) {
        Model model = RandomModel(random);
        std::string file;
        for (const ModelSection& section : model) {
            file += "[" + section.name + "]";
            for (const std::string& parent : section.parents)
                file += " : [" + parent + "]";
            for (const auto& [key, value] : section.pairs)
                file += "\n" + key + "=" + value;
            file += "\n";
        }
        std::string expected;
        for (ModelSection& section : model) {
            Inherit(model, section, 1);
            section.parents.clear();
        }
        for (const ModelSection& section : model) {
            expected += "{" + section.name + ":";
            for (const auto& [key, value] : section.pairs)
                expected += " " + key + "=" + value + ";";
            expected += "}";
        }
        CIniFileReader document;
        ASSERT_EQ(Inherited(document, file), expected)
            << "seed " << seed << ", round " << round << "\n"
            << file;
    }
}

TEST(IniInheritance, SectionWithoutOwnPairsIsGone) {
    const char* const text = "[C] : [B]\n[D] : [B]\nz=1\n[B]\nx=2\nA=3\nm=\n";
    CIniFileReader document;
    EXPECT_EQ(Inherited(document, text), "{D: z=1; x=2; A=3; m=;}{B: x=2; A=3; m=;}");
    EXPECT_EQ(Inherited(document, text, /*sort=*/true),
              "{B: A=3; m=; x=2;}{D: A=3; m=; x=2; z=1;}");
    CIniFileReader loaded;
    ASSERT_TRUE(Load(loaded, text));
    EXPECT_EQ(loaded.GetSection("D")->NumParents(), 1) << "a buffer alone keeps parents";
    EXPECT_FALSE(loaded.KeyExists("D", "x"));
}

TEST(IniInheritance, SortedSectionWithRepeatedKeysGetsPairByPair) {
    // Each pair that is added sorts the section again and so turns its repeated keys around.
    const std::string text = "[D] : [B]\nz=1\nz=2\na=1\n[B]\nx=2\nz=3\nb=4\n";
    CIniFileReader expected;
    ASSERT_TRUE(Load(expected, text, /*sort=*/true));
    CIniSection& child = *expected.GetSection("D");
    const CIniSection& parent = *expected.GetSection("B");
    for (unsigned i = 0; i < parent.NumValues(); ++i) {
        const CIniValue& pair = *parent.GetValue(i);
        if (!child.HasValue(pair.Key())) {
            ASSERT_TRUE(child.SetValue(pair.Key(), pair.Value()));
        }
    }
    CIniFileReader document;
    EXPECT_EQ(Inherited(document, text, /*sort=*/true), Content(expected));
}

TEST(IniInheritance, CostsNoMoreThanItMustOnHostileGraphs) {
    // Every section names every other: taken path by path, years.
    std::string text;
    for (int s = 0; s < 30; ++s) {
        text += "[s" + std::to_string(s) + "]";
        for (int p = 0; p < 30; ++p)
            text += " : [s" + std::to_string(p) + "]";
        text += "\nk" + std::to_string(s) + "=1\n";
    }
    CIniFileReader document;
    Inherited(document, text);
    for (int s = 0; s < 30; ++s)
        EXPECT_EQ(document.GetNumValues(s), 30);

    // One child of many parents, and many children of one parent.
    std::string child = "[child]";
    std::string parents;
    std::string children;
    for (int p = 0; p < 20'000; ++p) {
        const std::string number = std::to_string(p);
        child += " : [p" + number + "]";
        parents += "[p" + number + "]\nk" + number + "=1\n";
        children += "[c" + number + "] : [base]\nk=1\n";
    }
    Inherited(document, child + "\nown=1\n" + parents);
    EXPECT_EQ(document.GetNumValues(0), 20'001);
    Inherited(document, children + "[base]\nb=1\n");
    EXPECT_EQ(document.GetNumValues(19'999), 2);

    // A result too large to build is refused: 3,000 heirs of 3,000 pairs each.
    std::string base = "[base]\n";
    std::string heirs;
    for (int n = 0; n < 3'000; ++n) {
        base += "k" + std::to_string(n) + "=1\n";
        heirs += "[h" + std::to_string(n) + "] : [base]\nx=1\n";
    }
    const TestFolder folder;
    EXPECT_FALSE(document.Init(folder.Write("heirs.ini", base + heirs).c_str(), false));
    EXPECT_FALSE(document.Initialized());
}
