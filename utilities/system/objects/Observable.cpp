#include "utilities/system/objects/Observable.h"

#include "common/Require.h"
#include "utilities/base/CriticalSection.h"
#include "utilities/containers/MyArrayListInternals.h"
#include "utilities/system/locks/Lock.h"

#include <cstdarg>
#include <cstddef>
#include <new>

#pragma GCC diagnostic ignored "-Winvalid-offsetof" // asserted on, which is safe

template <>
struct vtr::Layout<Observable> {
    static_assert(sizeof(Observable) == 192);
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

} // namespace

/// A delivery under way, which holds the lock. The outermost one does the removals that waited for
/// it, also when an observer throws. Its list and even its subject may go away meanwhile.
class Observable::Delivery {
public:
    explicit Delivery(Observable& observable) : subject(&observable) {
        EnterCriticalSection(&subject->section);
        outer = subject->innermost;
        subject->innermost = this;
        if (subject->deliveryDepth == 0)
            subject->FreeRemovedObservers();
        ++subject->deliveryDepth;
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;
    ~Delivery() {
        if (subject == nullptr)
            return;
        subject->innermost = outer;
        if (--subject->deliveryDepth == 0)
            subject->FreeRemovedObservers();
        LeaveCriticalSection(&subject->section);
    }

    bool Ended() const { return ended; }

    static void EndAll(Observable& observable) {
        for (Delivery* each = observable.innermost; each != nullptr; each = each->outer)
            each->ended = true;
    }

    /// They leave the lock and touch the subject no more.
    static void ForgetSubject(Observable& observable) {
        for (Delivery* each = observable.innermost; each != nullptr; each = each->outer) {
            each->subject = nullptr;
            LeaveCriticalSection(&observable.section);
        }
    }

private:
    Observable* subject;
    Delivery* outer = nullptr;
    bool ended = false;
};

Observable::Observable() noexcept : alive(1), deliveryDepth(0), innermost(nullptr) {
    InitializeCriticalSection(&section);
}

Observable::~Observable() {
    VTR_REQUIRE(vtr::IsFree(section) || vtr::IsHeldHere(section));
    {
        const CSmartLock lock(&section);
        RemoveAllObservers();
        alive = 0;
        Delivery::ForgetSubject(*this);
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

/// Leaves empty places, for good, so that the deliveries under way find the others where they were.
void Observable::Blank(const Observer* observer) {
    const int count = codes.NumNodes();
    for (int i = 0; i < count; ++i)
        vtr::Internals<CMyArrayList>::Blank(*ListAt(codes, i), observer);
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
        // No memory to remember it by, and the host may delete it.
        Blank(observer);
    } else {
        TakeOut(observer);
    }
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
    Delivery::EndAll(*this);
}

void Observable::SendNotification(int code, void* data) {
    Delivery delivery(*this);
    CMyArrayList* list = ListOf(code);
    const int count = list != nullptr ? list->NumNodes() : 0;
    for (int i = 0; i < count && !delivery.Ended(); ++i) {
        auto* observer = static_cast<Observer*>(list->FastIndex(i));
        if (observer != nullptr && removedDuringDelivery.Member(observer) == 0)
            observer->OnNotify(code, data, this);
    }
}
