#include "utilities/text/ini/IniInheritance.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace vtr {

bool IniInheritance::Prepare() {
    const unsigned count = sections.Count();
    nodes.reset(new (std::nothrow) Node[count]);
    NeedMemory(nodes != nullptr);
    for (unsigned i = 0; i < count && Good(); ++i) {
        nodes[i].section = sections[i];
        NeedMemory(sectionNumbers.Number(nodes[i].section->Name(), i) != none);
    }
    for (unsigned i = 0; i < count && Good(); ++i)
        NeedMemory(AddMentions(nodes[i]));
    NeedMemory(!Good() || ListHeirs());
    // All keys have a number before the first set is made: its limit depends on how many there are.
    for (const auto& step : {&IniInheritance::NumberKeys, &IniInheritance::FillSets}) {
        for (unsigned i = 0; i < count && Good(); ++i) {
            Node& node = nodes[i];
            if (node.lastMention >= 0 || node.firstMention != node.endOfMentions)
                NeedMemory((this->*step)(node));
        }
    }
    return Good();
}

bool IniInheritance::AddMentions(Node& node) {
    node.firstMention = mentions.Count();
    bool good = true;
    for (int i = 0; i < node.section->NumParents() && good; ++i) {
        const unsigned parent = FindParent(node.section->GetParent(i));
        good = parent == none || &nodes[parent] == &node || AddMention(node, parent);
    }
    node.endOfMentions = mentions.Count();
    return good;
}

/// A header may name a parent often: what is seen at one place is seen at all.
bool IniInheritance::AddMention(const Node& child, unsigned parent) {
    Node& node = nodes[parent];
    const int index = mentions.Count();
    const bool isFirst = node.lastMention < child.firstMention;
    const int first = isFirst ? index : mentions[node.lastMention].first;
    node.lastMention = index;
    node.endOfHeirs += isFirst ? 1 : 0;
    return mentions.Append({parent, first, 0, 0}) && quiet.Append(0);
}

bool IniInheritance::ListHeirs() {
    const unsigned count = sections.Count();
    int total = 0;
    for (unsigned i = 0; i < count; ++i) {
        nodes[i].firstHeir = total;
        total += nodes[i].endOfHeirs;
        nodes[i].endOfHeirs = nodes[i].firstHeir;
    }
    while (heirs.Count() < total) {
        if (!heirs.Append({}))
            return false;
    }
    for (unsigned i = 0; i < count; ++i) {
        for (int m = nodes[i].firstMention; m < nodes[i].endOfMentions; ++m) {
            if (mentions[m].first == m)
                heirs[nodes[mentions[m].parent].endOfHeirs++] = {i, m};
        }
    }
    return true;
}

/// The first of that name; in a sorted document, any.
unsigned IniInheritance::FindParent(const char* name) const {
    if (!document.KeepSorted())
        return sectionNumbers.Find(name);
    return static_cast<unsigned>(Internals<CIniFileReader>::Find(document, name));
}

bool IniInheritance::NumberKeys(Node& node) {
    for (const CIniValue* pair : Internals<CIniSection>::Values(*node.section)) {
        unsigned number = none;
        if (pair->Key() != nullptr) {
            number = keyNumbers.Number(pair->Key(), keyNumbers.Count());
            if (number == none)
                return false;
        }
        if (!node.pairs.Append({pair->Key(), pair->Value(), number}))
            return false;
    }
    return true;
}

/// A key has a value when any of its pairs has one; it lacks one when the first has none.
bool IniInheritance::FillSets(Node& node) {
    for (int i = 0; i < node.pairs.Count(); ++i) {
        const unsigned key = node.pairs[i].number;
        if (key == none)
            continue;
        const bool isFirst = !node.known.Has(key * 2);
        const bool hasValue = node.pairs[i].value != nullptr;
        if (isFirst && !node.known.Add(key * 2, Limit()))
            return false;
        if (isFirst && !hasValue && !node.empty.Set(key, static_cast<unsigned>(i)))
            return false;
        if (!hasValue || node.known.Has(key * 2 + 1))
            continue;
        if (!node.known.Add(key * 2 + 1, Limit()) || (!isFirst && !node.halfEmpty.Append(key)))
            return false;
    }
    return true;
}

bool IniInheritance::ResolveAll() {
    bool hasParents = false;
    for (const CIniSection* section : sections)
        hasParents = hasParents || section->NumParents() > 0;
    if (!hasParents)
        return true;
    if (!Prepare())
        return false;
    for (unsigned i = 0; i < sections.Count(); ++i) {
        Visit(nodes[i], mostLevels);
        if (!Good())
            return false;
        nodes[i].resolved = true;
    }
    for (CIniSection* section : sections)
        section->RemoveParents();
    return MakeCopies();
}

bool IniInheritance::Resolve(const CIniSection* section, int levels) {
    if (levels < 1 || !Prepare())
        return false;
    Node* const end = nodes.get() + sections.Count();
    Node* const node =
        std::find_if(nodes.get(), end, [&](const Node& n) { return n.section == section; });
    if (node == end)
        return false;
    Visit(*node, levels);
    return Good() && MakeCopies() && node->quiet == always;
}

/// Counts work: a step takes some nanoseconds. False when it is too much; the rest is then left
/// alone.
bool IniInheritance::Spend(int steps) {
    if (Good() && steps > stepsLeft)
        trouble = Trouble::steps;
    if (Good())
        stepsLeft -= steps;
    return Good();
}

void IniInheritance::Visit(Node& node, int levels) {
    if (node.quiet >= levels || !Spend((node.endOfMentions - node.firstMention) / 4 + 1))
        return;
    for (int i = node.firstMention;; ++i) {
        i = NextToVisit(i, node.endOfMentions, levels);
        if (i == node.endOfMentions)
            break;
        const int first = mentions[i].first;
        if (!Spend(1))
            return;
        if (quiet[first] >= levels)
            continue;
        Node& parent = nodes[mentions[i].parent];
        if (!parent.resolved)
            Visit(parent, levels - 1);
        if (Good())
            Copy(node, parent, mentions[first]);
        if (!Good())
            return;
        quiet[first] = QuietLevels(mentions[first]);
    }
    unsigned char least = always;
    for (int i = node.firstMention; i < node.endOfMentions; ++i)
        least = std::min(least, quiet[mentions[i].first]);
    node.quiet = least;
}

/// Where a header names thousands of parents, mostly one or two of them have changed: eight are
/// passed over at a time.
int IniInheritance::NextToVisit(int from, int end, int levels) const {
    constexpr unsigned long long one = ~0ULL / 255;
    const unsigned char* const mention = quiet.begin();
    int i = from;
    for (unsigned long long eight = 0; i + 8 <= end; i += 8) {
        std::memcpy(&eight, mention + i, sizeof eight);
        // Not 0 when some byte is smaller: all are below 128.
        if (((eight - one * static_cast<unsigned>(levels)) & one * 128) != 0)
            break;
    }
    while (i < end && mention[i] >= levels)
        ++i;
    return i;
}

/// A visit visits the parent for one level less and looks at what is new in it.
unsigned char IniInheritance::QuietLevels(const Mention& mention) const {
    const Node& parent = nodes[mention.parent];
    if (mention.pairs != parent.pairs.Count() || mention.filled != parent.filled.Count())
        return 0;
    return parent.resolved || parent.quiet == always ? always
                                                     : static_cast<unsigned char>(parent.quiet + 1);
}

/// True when the child lacks nothing, as far as that can be told fast.
bool IniInheritance::IsPart(const Node& parent, const Node& child) {
    return Spend(static_cast<int>(Limit() / 256) + child.halfEmpty.Count()) &&
           parent.known.IsKnownPartOf(child.known, Limit()) &&
           std::none_of(child.halfEmpty.begin(), child.halfEmpty.end(), [&](unsigned key) {
               return child.empty.Find(key) != none && parent.known.Has(key * 2 + 1);
           });
}

/// Gives the child what it lacks of what is new in the parent.
void IniInheritance::Copy(Node& child, const Node& parent, Mention& seen) {
    const int pairs = child.pairs.Count();
    const int filled = child.filled.Count();
    const auto unseen = static_cast<unsigned>(parent.pairs.Count() - seen.pairs);
    if (unseen > Limit() / 64 && IsPart(parent, child)) {
        seen.pairs = parent.pairs.Count();
        seen.filled = parent.filled.Count();
    }
    if (!Spend(parent.pairs.Count() - seen.pairs + parent.filled.Count() - seen.filled))
        return;
    for (; seen.pairs < parent.pairs.Count() && Good(); ++seen.pairs)
        Give(child, parent.pairs[seen.pairs]);
    for (; seen.filled < parent.filled.Count() && Good(); ++seen.filled)
        Give(child, parent.pairs[parent.filled[seen.filled]]);
    if (child.pairs.Count() != pairs || child.filled.Count() != filled)
        Disturb(child, 0);
}

void IniInheritance::Give(Node& child, const Pair& pair) {
    if (pair.number == none)
        return;
    const bool isMissing = !child.known.Has(pair.number * 2);
    if (!isMissing && (pair.value == nullptr || child.empty.Find(pair.number) == none))
        return;
    if (copiesLeft-- == 0)
        trouble = Trouble::copies;
    else
        NeedMemory(isMissing ? AddPair(child, pair) : FillPair(child, pair));
}

bool IniInheritance::AddPair(Node& child, const Pair& pair) {
    const unsigned place = static_cast<unsigned>(child.pairs.Count());
    return child.pairs.Append(pair) && child.known.Add(pair.number * 2, Limit()) &&
           (pair.value != nullptr ? child.known.Add(pair.number * 2 + 1, Limit())
                                  : child.empty.Set(pair.number, place));
}

bool IniInheritance::FillPair(Node& child, const Pair& pair) {
    const int place = static_cast<int>(child.empty.Find(pair.number));
    child.pairs[place].value = pair.value;
    return child.empty.Set(pair.number, none) && child.filled.Append(place) &&
           (child.known.Has(pair.number * 2 + 1) || child.known.Add(pair.number * 2 + 1, Limit()));
}

/// The node has changed, or one so many levels above it: visits of its children may change them.
void IniInheritance::Disturb(const Node& node, unsigned char levels) {
    if (!Spend(node.endOfHeirs - node.firstHeir))
        return;
    for (int i = node.firstHeir; i < node.endOfHeirs; ++i) {
        const Heir heir = heirs[i];
        Node& child = nodes[heir.section];
        quiet[heir.mention] = std::min(quiet[heir.mention], levels);
        if (child.quiet <= levels)
            continue;
        child.quiet = levels;
        if (levels < mostLevels)
            Disturb(child, static_cast<unsigned char>(levels + 1));
    }
}

/// All pairs are added before any value changes: the texts are those of pairs of the document.
bool IniInheritance::MakeCopies() {
    for (const auto& step : {&IniInheritance::AddPairs, &IniInheritance::FillPairs}) {
        for (unsigned i = 0; i < sections.Count() && Good(); ++i)
            NeedMemory((this->*step)(nodes[i]));
    }
    return Good();
}

bool IniInheritance::AddPairs(Node& node) {
    CIniSection& section = *node.section;
    node.own = static_cast<int>(section.NumValues());
    for (int i = node.own; i < node.pairs.Count(); ++i) {
        if (!section.AddValue(node.pairs[i].key, node.pairs[i].value))
            return false;
    }
    return true;
}

/// A section that is kept sorted is as if it had been sorted after each pair that it got, which
/// turns its repeated keys around each time.
bool IniInheritance::FillPairs(Node& node) {
    CIniSection& section = *node.section;
    for (int i = 0; i < node.filled.Count(); ++i) {
        const int place = node.filled[i];
        if (!section.SetValue(place, node.pairs[place].value))
            return false;
    }
    const int added = static_cast<int>(section.NumValues()) - node.own;
    for (int i = added > 0 ? 2 - added % 2 : 0; i > 0 && section.KeepSorted(); --i)
        section.Sort();
    return true;
}

} // namespace vtr
