#include "utilities/containers/MegaArrayList.h"

#include "utilities/base/ElementBlock.h"
#include "utilities/base/Layout.h"
#include "vtrfutls/Log.h"

#include <limits>

template <>
struct vtr::Internals<CMegaArrayList> {
    static_assert(sizeof(CMegaArrayList) == vtr::ByPointer(32, 20));
    VTR_FIELD_AT(CMegaArrayList, elements, 8, 4);
    VTR_FIELD_AT(CMegaArrayList, sorted, 24, 16);
};

namespace {

using Elements = vtr::ElementBlock<double>;

constexpr unsigned growStep = 10;

int PlaceFor(const Elements& elements, double sortValue, _AddSortedLoc where) {
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

int CMegaArrayList::AddSorted(void* item, double sortValue, _AddSortedLoc where) noexcept {
    Elements list(elements);
    const int count = list.Count();
    const int place = PlaceFor(list, sortValue, where);
    if (list.Insert(place, item, sortValue, growStep) || place < count || count == 0)
        return place;
    // Only what is above the last element goes to the tail, and is answered as there.
    return sortValue > list[count - 1].sortValue ? place - 1 : place;
}

int CMegaArrayList::Grow(int needed) noexcept {
    return Elements(elements).Grow(needed, growStep) ? 1 : 0;
}

int CMegaArrayList::InsertNewHead(void* item, double sortValue) noexcept {
    Elements(elements).Insert(0, item, sortValue, growStep);
    return 0;
}

int CMegaArrayList::InsertToIndex(int index, void* item, double sortValue) noexcept {
    Elements list(elements);
    if (list.IsEmpty())
        return InsertNewHead(item, sortValue);
    if (index >= list.Count())
        return AppendToTail(item, sortValue);
    const int place = index > 0 ? index : 0;
    return list.Insert(place, item, sortValue, growStep) ? place : -1;
}

void* CMegaArrayList::Index(int index, double* sortValueOut) noexcept {
    Elements list(elements);
    if (!list.HasBlock())
        LogFmtA("ERR>>Index called for index %d and list is NULL!!!", index);
    return elements.At(index, sortValueOut);
}

void* CMegaArrayList::ElemBySortValue(double value, int* indexOut) noexcept {
    Elements list(elements);
    return list.Report(list.FindEqual(value), indexOut, nullptr);
}

void* CMegaArrayList::PrevElemBySortValue(double value, int* indexOut,
                                          double* sortValueOut) noexcept {
    Elements list(elements);
    return list.Report(list.FindPrevious(value), indexOut, sortValueOut);
}

void* CMegaArrayList::FirstOfValue(double value, int* indexOut) noexcept {
    Elements list(elements);
    return list.ReportRunStart(list.FindEqual(value), indexOut);
}

void* CMegaArrayList::LastOfValue(double value, int* indexOut) noexcept {
    return Elements(elements).ReportRunEnd(value, indexOut);
}

void* CMegaArrayList::FirstOfValueAtIndex(int index, int* indexOut) noexcept {
    return Elements(elements).ReportRunStart(index, indexOut);
}

int CMegaArrayList::GetIndexOfItem(void* item, double sortValue, bool useSortValue) noexcept {
    Elements list(elements);
    return useSortValue && list.SearchesRun(sortValue) ? list.FindItemInRun(item, sortValue)
                                                       : list.FindItem(item);
}

int CMegaArrayList::Member(void* item, double sortValue, bool useSortValue) noexcept {
    const int index = GetIndexOfItem(item, sortValue, useSortValue);
    if (index < 0)
        return 0;
    return useSortValue && Elements(elements).SearchesRun(sortValue) ? index : 1;
}

bool CMegaArrayList::Remove(void* item, double sortValue, bool useSortValue) noexcept {
    Elements list(elements);
    const bool inRun = useSortValue && list.SearchesRun(sortValue);
    return list.RemoveItem(item, sortValue, inRun, growStep);
}

bool CMegaArrayList::RemoveByIndex(int index) noexcept {
    Elements list(elements);
    if (!list.Contains(index))
        return false;
    list.Remove(index, growStep);
    return true;
}

bool CMegaArrayList::RemoveAll(bool keepAllocation) noexcept {
    Elements list(elements);
    if (keepAllocation) {
        list.ForgetElements();
        return true;
    }
    list.Clear(growStep);
    if (list.HasBlock()) {
        Log("RemoveAll list is not NULL!");
        return false;
    }
    return true;
}

bool CMegaArrayList::SetSortValue(void* item, double value) noexcept {
    return SetSortValueByIndex(Elements(elements).FindItem(item), value);
}

bool CMegaArrayList::SetSortValueByIndex(int index, double value) noexcept {
    Elements list(elements);
    if (!list.Contains(index))
        return false;
    list[index].sortValue = value;
    return true;
}

void CMegaArrayList::AdjustAllSortValues(double delta) noexcept {
    for (auto& element : Elements(elements))
        element.sortValue += delta;
}

void CMegaArrayList::ScaleAllSortValues(double factor) noexcept {
    for (auto& element : Elements(elements))
        element.sortValue *= factor;
}

bool CMegaArrayList::VerifyListIsSorted() noexcept {
    Elements list(elements);
    double previous = std::numeric_limits<double>::lowest();
    const int index = list.FindDescent(previous);
    if (index < 0)
        return true;
    LogFmtA("CMegaArrayList::VerifyListIsSorted() fails on item %d with sort value of %g being "
            "bigger than %g",
            index, list[index].sortValue, previous);
    return false;
}

void CMegaArrayList::Copy(const CMegaArrayList& other) noexcept {
    if (this != &other)
        Elements(elements).Copy(other.elements, growStep);
}
