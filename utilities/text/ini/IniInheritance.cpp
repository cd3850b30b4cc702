#include "utilities/base/NameIndex.h"
#include "utilities/text/ini/IniFileReader.h"

// How sections get the pairs of their parents.
//
// A section is resolved by resolving each parent that still has parents of its own, to at most ten
// levels, and then copying every pair of that parent whose key the section lacks. Taken literally
// that visits a section once for every path that leads to it, and paths multiply: a few dozen
// sections that name each other would keep a computer busy for years. Two facts cut that down
// without changing what comes out, unless a sorted section repeats a key, where any of them may be
// the one that is found:
//
// - A section whose ancestors all lie within the ten levels is complete after its first visit
//   (`inheritanceDone`).
// - A visit that changed nothing changes nothing when it is repeated, as deep or deeper, until some
//   pair is added somewhere (`quietDepth`, `quietRevision`).
//
// What remains is bounded by `mostSteps`, because a small document can ask for a vast result: a
// thousand sections, each heir to all others.

namespace {

constexpr int deepestLevel = 10;
constexpr unsigned mostSteps = 4'000'000;

/// Brings the index up to date with pairs that were appended to the section. False when memory runs
/// out.
bool CatchUp(vtr::NameIndex& keys, const CIniSection& section) {
    while (keys.Count() < section.NumValues()) {
        const char* key = section.GetValue(keys.Count())->Key();
        if (!keys.Add(key != nullptr ? key : ""))
            return false;
    }
    return true;
}

} // namespace

bool CIniFileReader::ProcessInheritance() noexcept {
    vtr::NameIndex names;
    bool hasParents = false;
    for (const CIniSection* section : sections)
        hasParents = hasParents || section->NumParents() > 0;
    if (!hasParents)
        return true;
    for (const CIniSection* section : sections) {
        if (!names.Add(section->Name()))
            return false;
    }
    sectionNames = &names;
    stepsLeft = mostSteps;
    for (CIniSection* section : sections) {
        ProcessParentage(section, 1);
        if (stepsLeft == 0 || outOfMemory)
            break;
        section->RemoveParents();
    }
    sectionNames = nullptr;
    return stepsLeft > 0 && !outOfMemory;
}

bool CIniFileReader::ProcessParentage(CIniSection* section, int depth) noexcept {
    if (depth > deepestLevel)
        return false;
    if (section->inheritanceDone)
        return true;
    const bool quiet = section->quietDepth > 0 && section->quietRevision == revision;
    if (quiet && depth >= section->quietDepth)
        return false;

    const bool sorted = section->keepSorted;
    const unsigned revisionBefore = revision;
    bool complete = true;
    vtr::NameIndex keys;
    for (int i = 0; i < section->NumParents(); ++i) {
        CIniSection* parent = FindParent(section->GetParent(i));
        if (parent == nullptr || parent == section)
            continue;
        const unsigned ownPairs = section->NumValues();
        if (parent->NumParents() > 0)
            complete = ProcessParentage(parent, depth + 1) && complete;
        if (section->NumValues() != ownPairs)
            keys = vtr::NameIndex(); // A circle led back here and added pairs.
        if (!CopyMissing(*section, *parent, keys)) {
            complete = false;
            break;
        }
    }
    if (sorted && !section->keepSorted)
        section->Sort();
    section->inheritanceDone = complete;
    if (revision == revisionBefore) {
        section->quietDepth = depth;
        section->quietRevision = revision;
    }
    return complete;
}

CIniSection* CIniFileReader::FindParent(const char* parentName) const noexcept {
    if (keepSorted || sectionNames == nullptr)
        return FindSection(parentName, nullptr);
    return sections.At(sectionNames->Find(parentName));
}

/// Copies what `child` lacks of `parent`. `keys` is the index of the child's keys, empty or left
/// from an earlier parent. False when the limit is reached or memory runs out.
bool CIniFileReader::CopyMissing(CIniSection& child, const CIniSection& parent,
                                 vtr::NameIndex& keys) noexcept {
    if (!TakeSteps(parent.NumValues() + 1 + child.NumValues() - keys.Count()))
        return false;
    if (!CatchUp(keys, child)) {
        outOfMemory = true;
        return false;
    }
    if (child.keepSorted && keys.HasRepeats())
        return CopyMissingOneByOne(child, parent);
    for (const CIniValue* from : parent.values) {
        if (from->Key() == nullptr)
            continue;
        const unsigned place = keys.Find(from->Key());
        CIniValue* own = child.GetValue(place);
        if (own != nullptr && (own->Value() != nullptr || from->Value() == nullptr))
            continue;
        const bool copied = own != nullptr ? child.SetValue(static_cast<int>(place), from->Value())
                                           : child.AddValue(from->Key(), from->Value());
        // Sorted once, after the last parent.
        child.keepSorted = child.keepSorted && own != nullptr;
        ++revision;
        if (!copied || !CatchUp(keys, child)) {
            outOfMemory = true;
            return false;
        }
    }
    return true;
}

/// For a sorted section with repeated keys, where each added pair reorders the repeated ones and so
/// decides which of them the next search finds.
bool CIniFileReader::CopyMissingOneByOne(CIniSection& child, const CIniSection& parent) noexcept {
    for (const CIniValue* from : parent.values) {
        if (!TakeSteps(child.NumValues()))
            return false;
        if (from->Key() == nullptr || child.HasValue(from->Key()))
            continue;
        if (!child.SetValue(from->Key(), from->Value())) {
            outOfMemory = true;
            return false;
        }
        ++revision;
    }
    return true;
}

bool CIniFileReader::TakeSteps(unsigned steps) noexcept {
    stepsLeft = stepsLeft > steps ? stepsLeft - steps : 0;
    return stepsLeft > 0;
}
