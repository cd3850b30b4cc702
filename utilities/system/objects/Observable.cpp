#include "utilities/system/objects/Observable.h"

#include "common/Require.h"
#include "utilities/base/CriticalSection.h"
#include "utilities/containers/MyArrayListInternals.h"
#include "utilities/system/locks/Lock.h"

#include <cstdarg>
#include <new>

template <>
struct vtr::Internals<Observable> {
    static_assert(sizeof(Observable) == vtr::ByPointer(192, 116));
    VTR_FIELD_AT(Observable, alive, 8, 4);
    VTR_FIELD_AT(Observable, codes, 16, 8);
    VTR_FIELD_AT(Observable, removedDuringDelivery, 48, 32);
    VTR_FIELD_AT(Observable, section, 136, 84);
    VTR_FIELD_AT(Observable, deliveryDepth, 176, 108);

    static CMyArrayList* ListAt(Observable& subject, int index) {
        return static_cast<CMyArrayList*>(subject.codes.FastIndex(index));
    }
    static CMyArrayList* ListOf(Observable& subject, int code) {
        return static_cast<CMyArrayList*>(subject.codes.ElemBySortValue(code, nullptr, scanExact));
    }
    static CMyArrayList* MakeListOf(Observable& subject, int code);
    static void TakeOut(Observable& subject, Observer* observer);
    static void Blank(Observable& subject, const Observer* observer);
    static void FreeRemovedObservers(Observable& subject);
};

using Internals = vtr::Internals<Observable>;

/// A delivery under way, which holds the lock. The outermost one does the removals that waited for
/// it, also when an observer throws. Its list and even its subject may go away meanwhile.
class Observable::Delivery {
public:
    explicit Delivery(Observable& observable) : subject(&observable) {
        EnterCriticalSection(&subject->section);
        outer = subject->innermost;
        subject->innermost = this;
        if (subject->deliveryDepth == 0)
            Internals::FreeRemovedObservers(*subject);
        ++subject->deliveryDepth;
    }
    Delivery(const Delivery&) = delete;
    Delivery& operator=(const Delivery&) = delete;
    ~Delivery() {
        if (subject == nullptr)
            return;
        subject->innermost = outer;
        if (--subject->deliveryDepth == 0)
            Internals::FreeRemovedObservers(*subject);
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

/// Null when memory runs out.
CMyArrayList* Internals::MakeListOf(Observable& subject, int code) {
    auto* list = new (std::nothrow) CMyArrayList();
    if (list == nullptr)
        return nullptr;
    const int before = subject.codes.NumNodes();
    subject.codes.AddSorted(list, code);
    if (subject.codes.NumNodes() == before) {
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
        CMyArrayList* list = Internals::ListOf(*this, code);
        if (list == nullptr)
            list = Internals::MakeListOf(*this, code);
        if (list != nullptr && list->MemberIndex(observer, -1) < 0)
            list->AppendToTail(observer, 0);
    }
    va_end(arguments);
}

void Internals::TakeOut(Observable& subject, Observer* observer) {
    const int count = subject.codes.NumNodes();
    for (int i = 0; i < count; ++i)
        ListAt(subject, i)->Remove(observer, -1);
}

/// Leaves empty places, for good, so that the deliveries under way find the others where they were.
void Internals::Blank(Observable& subject, const Observer* observer) {
    const int count = subject.codes.NumNodes();
    for (int i = 0; i < count; ++i)
        vtr::Internals<CMyArrayList>::Blank(*ListAt(subject, i), observer);
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
        Internals::Blank(*this, observer);
    } else {
        Internals::TakeOut(*this, observer);
    }
}

void Internals::FreeRemovedObservers(Observable& subject) {
    const int count = subject.removedDuringDelivery.NumNodes();
    for (int i = 0; i < count; ++i)
        TakeOut(subject, static_cast<Observer*>(subject.removedDuringDelivery.Index(i, nullptr)));
    subject.removedDuringDelivery.RemoveAll();
}

void Observable::RemoveAllObservers() {
    const CSmartLock lock(&section);
    if (alive == 0)
        return;
    const int count = codes.NumNodes();
    for (int i = 0; i < count; ++i)
        delete Internals::ListAt(*this, i);
    codes.RemoveAll();
    Delivery::EndAll(*this);
}

void Observable::SendNotification(int code, void* data) {
    Delivery delivery(*this);
    CMyArrayList* list = Internals::ListOf(*this, code);
    const int count = list != nullptr ? list->NumNodes() : 0;
    for (int i = 0; i < count && !delivery.Ended(); ++i) {
        auto* observer = static_cast<Observer*>(list->FastIndex(i));
        if (observer != nullptr && removedDuringDelivery.Member(observer) == 0)
            observer->OnNotify(code, data, this);
    }
}
