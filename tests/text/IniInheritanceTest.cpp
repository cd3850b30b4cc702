#include "tests/support/TestFolder.h"
#include "tests/text/IniDocuments.h"

#include <gtest/gtest.h>
#include <random>

namespace {

/// Resolves parents exactly by the words of the rule, over every path, on plain data.
class Model {
public:
    struct Section {
        IniSectionText text;
        std::vector<std::string> parents;
    };
    std::vector<Section> sections;

    void Resolve() {
        for (Section& section : sections) {
            Process(section, 1);
            section.parents.clear();
        }
    }

    std::string File() const {
        std::string text;
        for (const Section& section : sections) {
            text += "[" + section.text.name + "]";
            for (const std::string& parent : section.parents)
                text += " : [" + parent + "]";
            text += "\n";
            for (const auto& [key, value] : section.text.pairs)
                text += key + "=" + value + "\n";
        }
        return text;
    }

    IniText Text() const {
        IniText text;
        for (const Section& section : sections)
            text.push_back(section.text);
        return text;
    }

private:
    using Pair = std::pair<std::string, std::string>;

    static Pair* Find(Section& section, const std::string& key) {
        for (Pair& pair : section.text.pairs) {
            if (pair.first == key)
                return &pair;
        }
        return nullptr;
    }

    void Process(Section& section, int depth) {
        if (depth > 10)
            return;
        for (const std::string& name : section.parents) {
            Section* parent = nullptr;
            for (Section& candidate : sections) {
                if (candidate.text.name == name && parent == nullptr)
                    parent = &candidate;
            }
            if (parent == nullptr || parent == &section)
                continue;
            if (!parent->parents.empty())
                Process(*parent, depth + 1);
            for (const Pair& pair : parent->text.pairs) {
                Pair* own = Find(section, pair.first);
                if (own == nullptr)
                    section.text.pairs.push_back(pair);
                else if (own->second.empty())
                    own->second = pair.second;
            }
        }
    }
};

IniText Inherited(const std::string& text, bool sort = false) {
    const TestFolder folder;
    CIniFileReader document;
    EXPECT_TRUE(document.Init(folder.Write("a.ini", text).c_str(), sort));
    for (int i = 0; i < static_cast<int>(document.NumSections()); ++i)
        EXPECT_EQ(document.GetSection(i)->NumParents(), 0);
    return Content(document);
}

/// A document of `count` sections, each of which names the next as parent.
std::string Chain(int count) {
    std::string text;
    for (int i = 1; i <= count; ++i) {
        const std::string name = std::to_string(i);
        text += "[s" + name + "] : [s" + std::to_string(i + 1) + "]\nk" + name + "=" + name + "\n";
    }
    return text;
}

} // namespace

TEST(IniInheritance, WhatAChildGets) {
    static constexpr struct {
        const char* name;
        const char* text;
        const char* resolved;
    } rows[] = {
        {"what it lacks", "[D] : [B]\na=1\n[B]\nA=2\nb=3\n", "{D: a=1; b=3;}{B: A=2; b=3;}"},
        {"empty counts as lacking", "[D] : [B]\na=\n[B]\na=2\n", "{D: a=2;}{B: a=2;}"},
        {"earlier parents win", "[D] : [B] : [C]\nd=1\n[B]\nx=b\n[C]\nx=c\ny=c\n",
         "{D: d=1; x=b; y=c;}{B: x=b;}{C: x=c; y=c;}"},
        {"grandparents", "[D] : [C]\nd=1\n[C] : [B]\nc=1\n[B]\nb=1\n",
         "{D: d=1; c=1; b=1;}{C: c=1; b=1;}{B: b=1;}"},
        {"itself", "[D] : [d]\na=1\n", "{D: a=1;}"},
        {"missing parent", "[D] : [X] : [B]\na=1\n[B]\nb=1\n", "{D: a=1; b=1;}{B: b=1;}"},
        {"parent of the same name comes first", "[B]\nb=1\n[B]\nb=2\n[D] : [b]\na=1\n",
         "{B: b=1;}{B: b=2;}{D: a=1; b=1;}"},
        {"two that name each other", "[A] : [B]\na=1\n[B] : [A]\nb=1\n",
         "{A: a=1; b=1;}{B: b=1; a=1;}"},
        {"section without own pairs is gone", "[D] : [B]\n[B]\nb=1\n", "{B: b=1;}"},
        {"first value of a repeated key", "[D] : [B]\na=1\n[B]\nb=1\nb=2\n",
         "{D: a=1; b=1;}{B: b=1; b=2;}"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Shown(Inherited(row.text)), row.resolved) << row.name;
}

TEST(IniInheritance, StopsBehindTenLevels) {
    const IniText text = Inherited(Chain(14));
    EXPECT_EQ(text[0].pairs.size(), 11u) << "its own and those of ten ancestors";
    EXPECT_EQ(text[0].pairs.back().first, "k11");
    EXPECT_EQ(text[1].pairs.back().first, "k12") << "the second has ten of its own";
    EXPECT_EQ(text[13].pairs.size(), 1u);
}

TEST(IniInheritance, SortedDocumentResolvesToTheSamePairs) {
    const IniText text = Inherited("[D] : [B]\nz=1\n[B]\nx=2\nA=3\nm=\n", true);
    EXPECT_EQ(Shown(text), "{B: A=3; m=; x=2;}{D: A=3; m=; x=2; z=1;}");
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
    EXPECT_EQ(Inherited(text, /*sort=*/true), Content(expected));
}

TEST(IniInheritance, FollowsTheRuleOnRandomGraphs) {
    constexpr unsigned seed = 17;
    std::mt19937 random(seed);
    for (int round = 0; round < 1500; ++round) {
        Model model;
        const unsigned count = 2 + random() % 14;
        for (unsigned s = 0; s < count; ++s) {
            Model::Section section;
            section.text.name = "s" + std::to_string(s);
            const unsigned pairs = 1 + random() % 3;
            for (unsigned k = 0; k < pairs; ++k)
                section.text.pairs.emplace_back("k" + std::to_string(random() % 8),
                                                random() % 4 == 0 ? "" : section.text.name);
            // Mostly the next one, so that chains longer than ten levels and circles appear.
            const unsigned parents = random() % 3;
            for (unsigned p = 0; p < parents; ++p) {
                const unsigned parent =
                    random() % 3 == 0 ? random() % (count + 1) : (s + 1) % count;
                section.parents.push_back("s" + std::to_string(parent));
            }
            model.sections.push_back(section);
        }
        const std::string file = model.File();
        model.Resolve();
        ASSERT_EQ(Inherited(file), model.Text()) << "seed " << seed << ", round " << round << "\n"
                                                 << file;
    }
}

TEST(IniInheritance, BufferAloneKeepsParents) {
    CIniFileReader document;
    ASSERT_TRUE(Load(document, "[D] : [B]\na=1\n[B]\nb=1\n"));
    EXPECT_EQ(document.GetSection("D")->NumParents(), 1);
    EXPECT_FALSE(document.KeyExists("D", "b"));
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
    const IniText all = Inherited(text);
    for (const IniSectionText& section : all)
        EXPECT_EQ(section.pairs.size(), 30u);

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
    EXPECT_EQ(Inherited(child + "\nown=1\n" + parents)[0].pairs.size(), 20'001u);
    EXPECT_EQ(Inherited(children + "[base]\nb=1\n")[19'999].pairs.size(), 2u);

    // A result too large to build is refused: 3,000 heirs of 3,000 pairs each.
    std::string heirs = "[base]\n";
    for (int k = 0; k < 3'000; ++k)
        heirs += "k" + std::to_string(k) + "=1\n";
    for (int h = 0; h < 3'000; ++h)
        heirs += "[h" + std::to_string(h) + "] : [base]\nx=1\n";
    const TestFolder folder;
    CIniFileReader document;
    EXPECT_FALSE(document.Init(folder.Write("heirs.ini", heirs).c_str(), false));
    EXPECT_FALSE(document.Initialized());
}
