#include "utilities/containers/MyArrayList.h"

#include "vtrfutls/Log.h"

#include <limits>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CMyArrayList> {
    static_assert(sizeof(CMyArrayList) == 32);
    static_assert(offsetof(CMyArrayList, elements) == 8);
    static_assert(offsetof(CMyArrayList, growStep) == 24);
    static_assert(offsetof(CMyArrayList, sorted) == 28);
};

namespace {

constexpr unsigned defaultStep = 10;

/// The smallest sort value that a sorted list may start with.
constexpr long long lowestSorted = -2147483647;

long long Truncate(double value) {
    using Limits = std::numeric_limits<long long>;
    constexpr double limit = 9223372036854775808.0;
    if (value >= limit)
        return Limits::max();
    if (value < -limit)
        return Limits::min();
    return value == value ? static_cast<long long>(value) : 0;
}

} // namespace

CMyArrayList::CMyArrayList() noexcept : CMyArrayList(defaultStep) {}

CMyArrayList::CMyArrayList(unsigned int step) noexcept
    : growStep(step > 0 ? step : 1), sorted(true) {}

CMyArrayList::CMyArrayList(const CMyArrayList& other) noexcept : CMyArrayList(other.growStep) {
    Copy(other);
}

CMyArrayList& CMyArrayList::operator=(const CMyArrayList& other) noexcept {
    Copy(other);
    return *this;
}

CMyArrayList::~CMyArrayList() {
    CMyArrayList::RemoveAll();
}

int CMyArrayList::AddSorted(void* item, long long sortValue) noexcept {
    const int count = elements.Count();
    int index = 0;
    if (count > 0 && sortValue > elements[0].sortValue)
        index = sortValue >= elements[count - 1].sortValue ? count : elements.Bisect(sortValue) + 1;
    const bool inserted = elements.Insert(index, item, sortValue, growStep);
    return inserted || index < count || count == 0 ? index : index - 1;
}

int CMyArrayList::GrowAndAppend(void* item, long long sortValue) noexcept {
    const bool first = elements.IsEmpty();
    if (elements.Insert(elements.Count(), item, sortValue, growStep))
        sorted = first;
    return elements.Count() - 1;
}

int CMyArrayList::InsertNewHead(void* item, long long sortValue) noexcept {
    if (elements.Insert(0, item, sortValue, growStep))
        sorted = false;
    return 0;
}

int CMyArrayList::InsertToIndex(int index, void* item, long long sortValue) noexcept {
    if (elements.IsEmpty())
        return InsertNewHead(item, sortValue);
    if (index >= elements.Count())
        return AppendToTail(item, sortValue);
    const int place = index > 0 ? index : 0;
    if (!elements.Insert(place, item, sortValue, growStep))
        return -1;
    sorted = false;
    return place;
}

void* CMyArrayList::ElemBySortValue(long long value, int* indexOut, _tscanDir dir) noexcept {
    int found = elements.FindPrevious(value);
    if (found >= 0 && dir == scanAtOrAfter) {
        const int count = elements.Count();
        do
            ++found;
        while (found < count && elements[found].sortValue < value);
        if (found == count)
            found = -1;
    } else if (found >= 0 && dir != scanAtOrBefore) {
        const bool hit = dir == scanExact && elements[found].sortValue == value;
        found = hit ? found : -1;
    }
    return elements.Report(found, indexOut, nullptr);
}

void* CMyArrayList::PrevElemBySortValue(long long value, int* indexOut,
                                        long long* sortValueOut) noexcept {
    return elements.Report(elements.FindPrevious(value), indexOut, sortValueOut);
}

void* CMyArrayList::FirstOfValue(long long value, int* indexOut) noexcept {
    return FirstOfValueAtIndex(elements.FindEqual(value), indexOut);
}

void* CMyArrayList::LastOfValue(long long value, int* indexOut) noexcept {
    return elements.ReportRunEnd(value, indexOut);
}

void* CMyArrayList::FirstOfValueAtIndex(int index, int* indexOut) noexcept {
    return elements.ReportRunStart(index, indexOut);
}

int CMyArrayList::MemberIndex(void* item, long long sortValue) noexcept {
    return elements.SearchesRun(sortValue) ? elements.FindItemInRun(item, sortValue)
                                           : elements.FindItem(item);
}

int CMyArrayList::Member(void* item, long long sortValue) noexcept {
    return MemberIndex(item, sortValue) >= 0 ? 1 : 0;
}

bool CMyArrayList::Remove(void* item, long long sortValue) noexcept {
    return elements.RemoveItem(item, sortValue, elements.SearchesRun(sortValue), growStep);
}

void CMyArrayList::RemoveByIndex(int index) noexcept {
    if (elements.Contains(index))
        elements.Remove(index, growStep);
}

void CMyArrayList::RemoveAll() noexcept {
    elements.Clear(growStep);
    sorted = true;
    if (elements.HasBlock())
        Log("RemoveAll list is not NULL!");
}

void CMyArrayList::RemoveAllButLeaveAllocation() noexcept {
    elements.ForgetElements();
    sorted = true;
}

void CMyArrayList::AdjustAllSortValues(long delta) noexcept {
    for (auto& element : elements)
        element.sortValue =
            static_cast<long long>(static_cast<unsigned long long>(element.sortValue) +
                                   static_cast<unsigned long long>(delta));
}

void CMyArrayList::ScaleAllSortValues(double factor) noexcept {
    for (auto& element : elements)
        element.sortValue = Truncate(static_cast<double>(element.sortValue) * factor);
}

bool CMyArrayList::VerifyListIsSorted() noexcept {
    long long previous = lowestSorted;
    sorted = elements.FindDescent(previous) < 0;
    return sorted;
}

void CMyArrayList::Copy(const CMyArrayList& other) noexcept {
    if (this == &other)
        return;
    elements.Copy(other.elements, growStep);
    sorted = other.sorted;
}
