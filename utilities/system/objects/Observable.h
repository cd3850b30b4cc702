#ifndef VTRUTILS_SYSTEM_OBJECTS_OBSERVABLE_H
#define VTRUTILS_SYSTEM_OBJECTS_OBSERVABLE_H

#include "utilities/Export.h"
#include "utilities/containers/MyArrayList.h"
#include "utilities/containers/MyList.h"

#include <windows.h>

class Observable;

/// What a host implements to be told of what a subject does.
/// Thread-safety: one thread at a time; the subject's lock is held during each call.
class Observer {
public:
    /// A subject notified with one of the codes that this observer is registered for.
    virtual void OnNotify(int code, void* data, Observable* source) = 0;

    /// Calls `RegisterObservations` of the subject with the codes that it wants.
    virtual void Attach(Observable* subject) = 0;

protected:
    Observer() = default;
    Observer(const Observer&) = default;
    Observer& operator=(const Observer&) = default;
    /// The subject never deletes its observers.
    ~Observer() = default;
};

/// Delivers notifications, each a code and a pointer, to the observers registered for the code.
///
/// From within `OnNotify` an observer may add and remove observers, itself included, and notify,
/// which is delivered at once. It may also destroy the subject, which ends all its deliveries. It
/// must not do so in `Attach`.
/// Thread-safety: locked by itself. Observers are called with the lock held, on the thread that
/// notifies.
class VTRUTILS_API Observable {
public:
    Observable() noexcept;
    Observable(const Observable&) = delete;
    Observable& operator=(const Observable&) = delete;
    /// Requires: no other thread is at the subject.
    virtual ~Observable();

    /// Calls the observer's `Attach`. If the observer was removed during a delivery that has not
    /// ended, takes that removal back instead. Does nothing for null.
    void AddObserver(Observer* observer);

    /// Registers the observer for codes, arguments of type `int` that end with -1; other negative
    /// codes are left out. Registering a code again changes nothing. A code is not registered if
    /// memory runs out. Call it from `Attach`, where the lock is held.
    void RegisterObservations(Observer* observer, ...);

    /// During a delivery, the observer gets no more notifications at once, and is removed when the
    /// delivery ends.
    void RemoveObserver(Observer* observer);

    /// During a delivery, ends it.
    void RemoveAllObservers();

    /// Calls, in the order in which they registered, those observers of the code that were there at
    /// the start and have not been removed when their turn comes.
    void SendNotification(int code, void* data);

private:
    friend struct vtr::Internals<Observable>;
    class Delivery;

    int alive; ///< 1 until destruction
    CMyArrayList codes;
    CMyList removedDuringDelivery;
    CRITICAL_SECTION section;
    int deliveryDepth;

    Delivery* innermost; ///< of the deliveries under way; null: none
};

#endif
