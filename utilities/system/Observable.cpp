#include "utilities/system/Observable.h"

#include "utilities/system/Lock.h"

#include <cstdarg>
#include <cstddef>
#include <new>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<Observable> {
    static_assert(sizeof(Observable) == 184);
    static_assert(offsetof(Observable, alive) == 8);
    static_assert(offsetof(Observable, codes) == 16);
    static_assert(offsetof(Observable, removedDuringDelivery) == 48);
    static_assert(offsetof(Observable, section) == 136);
    static_assert(offsetof(Observable, deliveryDepth) == 176);
};

namespace {

CMyArrayList* ListAt(CMyArrayList& codes, int index) {
    return static_cast<CMyArrayList*>(codes.FastIndex(index));
}

/// Where the delivery goes on behind an observer that stood at `index`. It stands there still,
/// unless observers had to be taken out at once because memory ran out.
int PlaceBehind(CMyArrayList& list, int index, Observer* observer) {
    if (list.Index(index, nullptr) == observer)
        return index + 1;
    const int moved = list.MemberIndex(observer, -1);
    return moved < 0 ? index : moved + 1;
}

} // namespace

/// Marks the deliveries under way; the outermost one does the removals that waited for it, also
/// when an observer throws.
class Observable::Delivery {
public:
    explicit Delivery(Observable& observable) : subject(observable) {
        if (subject.deliveryDepth == 0)
            subject.FreeRemovedObservers();
        ++subject.deliveryDepth;
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;
    ~Delivery() {
        if (--subject.deliveryDepth == 0)
            subject.FreeRemovedObservers();
    }

private:
    Observable& subject;
};

Observable::Observable() noexcept : alive(1), deliveryDepth(0), clearings(0) {
    InitializeCriticalSection(&section);
}

Observable::~Observable() {
    {
        const CSmartLock lock(&section);
        RemoveAllObservers();
        alive = 0;
    }
    DeleteCriticalSection(&section);
}

CMyArrayList* Observable::ListOf(int code) {
    return static_cast<CMyArrayList*>(codes.ElemBySortValue(code, nullptr, scanExact));
}

/// Null when memory runs out.
CMyArrayList* Observable::MakeListOf(int code) {
    auto* list = new (std::nothrow) CMyArrayList();
    if (list == nullptr)
        return nullptr;
    const int before = codes.NumNodes();
    codes.AddSorted(list, code);
    if (codes.NumNodes() == before) {
        delete list;
        return nullptr;
    }
    return list;
}

void Observable::AddObserver(Observer* observer) {
    if (observer == nullptr)
        return;
    const CSmartLock lock(&section);
    if (!removedDuringDelivery.Remove(observer))
        observer->Attach(this);
}

void Observable::RegisterObservations(Observer* observer, ...) {
    if (observer == nullptr)
        return;
    va_list arguments;
    va_start(arguments, observer);
    for (int code = va_arg(arguments, int); code != -1; code = va_arg(arguments, int)) {
        if (code < 0)
            continue;
        CMyArrayList* list = ListOf(code);
        if (list == nullptr)
            list = MakeListOf(code);
        if (list != nullptr && list->MemberIndex(observer, -1) < 0)
            list->AppendToTail(observer, 0);
    }
    va_end(arguments);
}

void Observable::TakeOut(Observer* observer) {
    const int count = codes.NumNodes();
    for (int i = 0; i < count; ++i)
        ListAt(codes, i)->Remove(observer, -1);
}

void Observable::RemoveObserver(Observer* observer) {
    const CSmartLock lock(&section);
    if (alive == 0 || observer == nullptr)
        return;
    if (deliveryDepth > 0) {
        // Once, so that adding the observer again takes the removal back whole.
        if (removedDuringDelivery.Member(observer) != 0 ||
            removedDuringDelivery.AppendToTail(observer, 0) >= 0)
            return;
        // No memory to remember it by: it must go now, for the host may delete it.
    }
    TakeOut(observer);
}

void Observable::FreeRemovedObservers() {
    const int count = removedDuringDelivery.NumNodes();
    for (int i = 0; i < count; ++i)
        TakeOut(static_cast<Observer*>(removedDuringDelivery.Index(i, nullptr)));
    removedDuringDelivery.RemoveAll();
}

void Observable::RemoveAllObservers() {
    const CSmartLock lock(&section);
    if (alive == 0)
        return;
    const int count = codes.NumNodes();
    for (int i = 0; i < count; ++i)
        delete ListAt(codes, i);
    codes.RemoveAll();
    ++clearings;
}

void Observable::SendNotification(int code, void* data) {
    const CSmartLock lock(&section);
    const Delivery delivery(*this);
    CMyArrayList* list = ListOf(code);
    if (list == nullptr)
        return;
    const unsigned int clearingsBefore = clearings;
    int index = 0;
    for (int left = list->NumNodes(); left > 0; --left) {
        auto* observer = static_cast<Observer*>(list->Index(index, nullptr));
        if (observer == nullptr)
            return;
        if (removedDuringDelivery.Member(observer) == 0)
            observer->OnNotify(code, data, this);
        if (clearings != clearingsBefore)
            return;
        index = PlaceBehind(*list, index, observer);
    }
}
