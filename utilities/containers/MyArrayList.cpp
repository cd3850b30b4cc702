#include "utilities/containers/MyArrayList.h"

#include "utilities/containers/MyArrayListInternals.h"
#include "vtrfutls/Log.h"

#include <limits>

namespace {

using Elements = vtr::ElementBlock<long long>;

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
    Elements list(elements);
    const int count = list.Count();
    int index = 0;
    if (count > 0 && sortValue > list[0].sortValue)
        index = sortValue >= list[count - 1].sortValue ? count : list.Bisect(sortValue) + 1;
    const bool inserted = list.Insert(index, item, sortValue, growStep);
    return inserted || index < count || count == 0 ? index : index - 1;
}

int CMyArrayList::Grow(int needed) noexcept {
    return Elements(elements).Grow(needed, growStep) ? 1 : 0;
}

int CMyArrayList::InsertNewHead(void* item, long long sortValue) noexcept {
    if (Elements(elements).Insert(0, item, sortValue, growStep))
        sorted = false;
    return 0;
}

int CMyArrayList::InsertToIndex(int index, void* item, long long sortValue) noexcept {
    Elements list(elements);
    if (list.IsEmpty())
        return InsertNewHead(item, sortValue);
    if (index >= list.Count())
        return AppendToTail(item, sortValue);
    const int place = index > 0 ? index : 0;
    if (!list.Insert(place, item, sortValue, growStep))
        return -1;
    sorted = false;
    return place;
}

void* CMyArrayList::ElemBySortValue(long long value, int* indexOut, _tscanDir dir) noexcept {
    Elements list(elements);
    int found = list.FindPrevious(value);
    if (found >= 0 && dir == scanAtOrAfter) {
        const int count = list.Count();
        do
            ++found;
        while (found < count && list[found].sortValue < value);
        if (found == count)
            found = -1;
    } else if (found >= 0 && dir != scanAtOrBefore) {
        const bool hit = dir == scanExact && list[found].sortValue == value;
        found = hit ? found : -1;
    }
    return list.Report(found, indexOut, nullptr);
}

void* CMyArrayList::PrevElemBySortValue(long long value, int* indexOut,
                                        long long* sortValueOut) noexcept {
    Elements list(elements);
    return list.Report(list.FindPrevious(value), indexOut, sortValueOut);
}

void* CMyArrayList::FirstOfValue(long long value, int* indexOut) noexcept {
    return FirstOfValueAtIndex(Elements(elements).FindEqual(value), indexOut);
}

void* CMyArrayList::LastOfValue(long long value, int* indexOut) noexcept {
    return Elements(elements).ReportRunEnd(value, indexOut);
}

void* CMyArrayList::FirstOfValueAtIndex(int index, int* indexOut) noexcept {
    return Elements(elements).ReportRunStart(index, indexOut);
}

int CMyArrayList::MemberIndex(void* item, long long sortValue) noexcept {
    Elements list(elements);
    return list.SearchesRun(sortValue) ? list.FindItemInRun(item, sortValue) : list.FindItem(item);
}

int CMyArrayList::Member(void* item, long long sortValue) noexcept {
    return MemberIndex(item, sortValue) >= 0 ? 1 : 0;
}

bool CMyArrayList::Remove(void* item, long long sortValue) noexcept {
    Elements list(elements);
    return list.RemoveItem(item, sortValue, list.SearchesRun(sortValue), growStep);
}

void CMyArrayList::RemoveByIndex(int index) noexcept {
    Elements list(elements);
    if (list.Contains(index))
        list.Remove(index, growStep);
}

void CMyArrayList::RemoveAll() noexcept {
    Elements list(elements);
    list.Clear(growStep);
    sorted = true;
    if (list.HasBlock())
        Log("RemoveAll list is not NULL!");
}

void CMyArrayList::RemoveAllButLeaveAllocation() noexcept {
    Elements(elements).ForgetElements();
    sorted = true;
}

void CMyArrayList::AdjustAllSortValues(long delta) noexcept {
    for (auto& element : Elements(elements))
        element.sortValue =
            static_cast<long long>(static_cast<unsigned long long>(element.sortValue) +
                                   static_cast<unsigned long long>(delta));
}

void CMyArrayList::ScaleAllSortValues(double factor) noexcept {
    for (auto& element : Elements(elements))
        element.sortValue = Truncate(static_cast<double>(element.sortValue) * factor);
}

bool CMyArrayList::VerifyListIsSorted() noexcept {
    long long previous = lowestSorted;
    sorted = Elements(elements).FindDescent(previous) < 0;
    return sorted;
}

void CMyArrayList::Copy(const CMyArrayList& other) noexcept {
    if (this == &other)
        return;
    Elements(elements).Copy(other.elements, growStep);
    sorted = other.sorted;
}
