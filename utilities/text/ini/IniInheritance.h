#ifndef VTRUTILS_TEXT_INI_INIINHERITANCE_H
#define VTRUTILS_TEXT_INI_INIINHERITANCE_H

#include "utilities/base/NameIndex.h"
#include "utilities/base/NumberSet.h"
#include "utilities/base/ValueRun.h"
#include "utilities/text/ini/IniInternals.h"

#include <memory>

namespace vtr {

/// Gives the sections of a document the pairs of their parents. Private to the library. One thread
/// at a time.
///
/// A section is resolved by resolving each parent that still has parents of its own, to at most ten
/// levels, and then copying every pair of that parent whose key the section lacks. Taken literally
/// that visits a section once for every path that leads to it, and looks at every pair of a parent
/// each time. What comes out is the same here, but
///
/// - each section knows up to how many levels a visit would change nothing (`quiet`). A change of
///   an ancestor lowers that. So only visits that can change something are made;
/// - of each parent only what came since the last time is looked at, and large sections are
///   compared as sets of numbers, one for each key.
///
/// Ordinary documents, and very many hostile ones, take few steps for each pair. What remains are
/// keys that come one at a time to where hundreds of sections name each other, or where a header
/// names a hundred thousand parents: there each key makes all of these be looked at again. So both
/// the steps and the copies, which take memory, are limited. Copies are made when it is known which
/// and how many.
class IniInheritance {
public:
    static constexpr unsigned mostCopies = 16'000'000;
    /// Some seconds. Documents with as many copies as are allowed take a fifth of that.
    static constexpr int mostSteps = 300'000'000;
    static constexpr int mostLevels = 10;

    explicit IniInheritance(CIniFileReader& target)
        : document(target), sections(Internals<CIniFileReader>::Sections(target)) {}

    /// Resolves all sections in order, and forgets their parents. False when it is too much or
    /// memory runs out.
    bool ResolveAll();

    /// Resolves one section, up to so many levels. True when nothing was left out.
    bool Resolve(const CIniSection* section, int levels);

    enum class Trouble { none, memory, copies, steps };
    Trouble WhatFailed() const { return trouble; }

private:
    static constexpr unsigned none = ~0u;
    static constexpr unsigned char always = 127;

    /// Texts of pairs of the document; a value of null counts as none.
    struct Pair {
        const char* key;
        const char* value;
        unsigned number; ///< of the key; `none` for a pair without one
    };

    /// A parent in the header of a section.
    struct Mention {
        unsigned parent;
        int first;  ///< the first mention of this parent in the header; the others look there for
        int pairs;  ///< what the section has seen of the parent's pairs
        int filled; ///< and of those that were empty before
    };

    /// A section that names this one as a parent, and where it does so first.
    struct Heir {
        unsigned section;
        int mention;
    };

    struct Node {
        CIniSection* section = nullptr;
        int firstMention = 0, endOfMentions = 0;
        int firstHeir = 0, endOfHeirs = 0;
        int lastMention = -1;            ///< as a parent
        unsigned char quiet = 0;         ///< levels up to which a visit would change nothing
        bool resolved = false;           ///< its parents are forgotten
        int own = 0;                     ///< pairs that it had
        ValueRow<Pair, 2> pairs;         ///< its own, then the copies
        ValueRow<int, 2> filled;         ///< pairs that were empty before
        NumberSet known;                 ///< twice each key, and 1 more if it has a value
        ValueRow<unsigned, 2> halfEmpty; ///< keys first without, then with a value
        NumberTable empty;               ///< of each key without a value, where its first pair is
    };

    bool IsPart(const Node& parent, const Node& child);
    bool Prepare();
    bool Good() const { return trouble == Trouble::none; }
    void NeedMemory(bool got) { trouble = got ? trouble : Trouble::memory; }
    bool Spend(int steps);
    bool AddMentions(Node& node);
    bool AddMention(const Node& child, unsigned parent);
    bool ListHeirs();
    bool NumberKeys(Node& node);
    bool FillSets(Node& node);
    unsigned FindParent(const char* name) const;
    void Visit(Node& node, int levels);
    int NextToVisit(int from, int end, int levels) const;
    unsigned char QuietLevels(const Mention& mention) const;
    void Copy(Node& child, const Node& parent, Mention& seen);
    void Give(Node& child, const Pair& pair);
    bool AddPair(Node& child, const Pair& pair);
    bool FillPair(Node& child, const Pair& pair);
    void Disturb(const Node& node, unsigned char levels);
    bool MakeCopies();
    bool AddPairs(Node& node);
    bool FillPairs(Node& node);
    unsigned Limit() const { return keyNumbers.Count() * 2; }

    CIniFileReader& document;
    Pointers<CIniSection> sections; ///< of the document
    std::unique_ptr<Node[]> nodes;
    ValueRun<Mention> mentions;    ///< in the order of the document
    ValueRun<unsigned char> quiet; ///< levels up to which to look at a mention changes nothing
    ValueRun<Heir> heirs;          ///< of one parent after the other
    NameIndex sectionNumbers;
    NameIndex keyNumbers;
    unsigned copiesLeft = mostCopies;
    int stepsLeft = mostSteps;
    Trouble trouble = Trouble::none;
};

} // namespace vtr

#endif
