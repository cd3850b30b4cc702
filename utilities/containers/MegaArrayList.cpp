#include "utilities/containers/MegaArrayList.h"

#include "vtrfutls/Log.h"

#include <limits>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<CMegaArrayList> {
    static_assert(sizeof(CMegaArrayList) == 32);
    static_assert(offsetof(CMegaArrayList, elements) == 8);
    static_assert(offsetof(CMegaArrayList, sorted) == 24);
};

namespace {

constexpr unsigned growStep = 10;

} // namespace

CMegaArrayList::CMegaArrayList() noexcept : sorted(true) {}

CMegaArrayList::CMegaArrayList(const CMegaArrayList& other) noexcept : sorted(false) {
    Copy(other);
}

CMegaArrayList& CMegaArrayList::operator=(const CMegaArrayList& other) noexcept {
    Copy(other);
    return *this;
}

CMegaArrayList::~CMegaArrayList() {
    CMegaArrayList::RemoveAll(/*keepAllocation=*/false);
}

int CMegaArrayList::PlaceFor(double sortValue, _AddSortedLoc where) const noexcept {
    const int count = elements.Count();
    if (count == 0 || (where == addSortedDefault && elements[0].sortValue >= sortValue))
        return 0;
    if (sortValue > elements[count - 1].sortValue)
        return count;
    int place = elements.Bisect(sortValue);
    if (sortValue > elements[place].sortValue)
        ++place;
    if (where == addSortedAfterEquals) {
        while (place < count - 1 && elements[place + 1].sortValue == sortValue)
            ++place;
        if (elements[place].sortValue == sortValue)
            ++place;
    } else if (where == addSortedBeforeEquals) {
        while (place > 0 && elements[place - 1].sortValue == sortValue)
            --place;
    }
    return place;
}

int CMegaArrayList::AddSorted(void* item, double sortValue, _AddSortedLoc where) noexcept {
    const int count = elements.Count();
    const int place = PlaceFor(sortValue, where);
    if (elements.Insert(place, item, sortValue, growStep) || place < count || count == 0)
        return place;
    // Only what is above the last element goes to the tail, and is answered as there.
    return sortValue > elements[count - 1].sortValue ? place - 1 : place;
}

int CMegaArrayList::GrowAndAppend(void* item, double sortValue) noexcept {
    elements.Insert(elements.Count(), item, sortValue, growStep);
    return elements.Count() - 1;
}

int CMegaArrayList::InsertNewHead(void* item, double sortValue) noexcept {
    elements.Insert(0, item, sortValue, growStep);
    return 0;
}

int CMegaArrayList::InsertToIndex(int index, void* item, double sortValue) noexcept {
    if (elements.IsEmpty())
        return InsertNewHead(item, sortValue);
    if (index >= elements.Count())
        return AppendToTail(item, sortValue);
    const int place = index > 0 ? index : 0;
    return elements.Insert(place, item, sortValue, growStep) ? place : -1;
}

void* CMegaArrayList::Index(int index, double* sortValueOut) noexcept {
    if (!elements.HasBlock())
        LogFmtA("ERR>>Index called for index %d and list is NULL!!!", index);
    return elements.At(index, sortValueOut);
}

void* CMegaArrayList::ElemBySortValue(double value, int* indexOut) noexcept {
    return elements.Report(elements.FindEqual(value), indexOut, nullptr);
}

void* CMegaArrayList::PrevElemBySortValue(double value, int* indexOut,
                                          double* sortValueOut) noexcept {
    return elements.Report(elements.FindPrevious(value), indexOut, sortValueOut);
}

void* CMegaArrayList::FirstOfValue(double value, int* indexOut) noexcept {
    return elements.ReportRunStart(elements.FindEqual(value), indexOut);
}

void* CMegaArrayList::LastOfValue(double value, int* indexOut) noexcept {
    return elements.ReportRunEnd(value, indexOut);
}

void* CMegaArrayList::FirstOfValueAtIndex(int index, int* indexOut) noexcept {
    return elements.ReportRunStart(index, indexOut);
}

int CMegaArrayList::GetIndexOfItem(void* item, double sortValue, bool useSortValue) noexcept {
    return useSortValue && elements.SearchesRun(sortValue) ? elements.FindItemInRun(item, sortValue)
                                                           : elements.FindItem(item);
}

int CMegaArrayList::Member(void* item, double sortValue, bool useSortValue) noexcept {
    const int index = GetIndexOfItem(item, sortValue, useSortValue);
    if (index < 0)
        return 0;
    return useSortValue && elements.SearchesRun(sortValue) ? index : 1;
}

bool CMegaArrayList::Remove(void* item, double sortValue, bool useSortValue) noexcept {
    const bool inRun = useSortValue && elements.SearchesRun(sortValue);
    return elements.RemoveItem(item, sortValue, inRun, growStep);
}

bool CMegaArrayList::RemoveByIndex(int index) noexcept {
    if (!elements.Contains(index))
        return false;
    elements.Remove(index, growStep);
    return true;
}

bool CMegaArrayList::RemoveAll(bool keepAllocation) noexcept {
    if (keepAllocation) {
        elements.ForgetElements();
        return true;
    }
    elements.Clear(growStep);
    if (elements.HasBlock()) {
        Log("RemoveAll list is not NULL!");
        return false;
    }
    return true;
}

bool CMegaArrayList::SetSortValue(void* item, double value) noexcept {
    return SetSortValueByIndex(elements.FindItem(item), value);
}

bool CMegaArrayList::SetSortValueByIndex(int index, double value) noexcept {
    if (!elements.Contains(index))
        return false;
    elements[index].sortValue = value;
    return true;
}

void CMegaArrayList::AdjustAllSortValues(double delta) noexcept {
    for (auto& element : elements)
        element.sortValue += delta;
}

void CMegaArrayList::ScaleAllSortValues(double factor) noexcept {
    for (auto& element : elements)
        element.sortValue *= factor;
}

bool CMegaArrayList::VerifyListIsSorted() noexcept {
    double previous = std::numeric_limits<double>::lowest();
    const int index = elements.FindDescent(previous);
    if (index < 0)
        return true;
    LogFmtA("CMegaArrayList::VerifyListIsSorted() fails on item %d with sort value of %g being "
            "bigger than %g",
            index, elements[index].sortValue, previous);
    return false;
}

void CMegaArrayList::Copy(const CMegaArrayList& other) noexcept {
    if (this != &other)
        elements.Copy(other.elements, growStep);
}
