#ifndef VTRUTILS_TESTS_SUPPORT_PERMITS_H
#define VTRUTILS_TESTS_SUPPORT_PERMITS_H

#include <windows.h>

/// A counter that threads wait at while it is 0. (The semaphore of the compiler's own library
/// sometimes leaves a thread asleep.) Locked by itself.
class Permits {
public:
    explicit Permits(int atStart) : number(atStart) {}
    Permits(const Permits&) = delete;
    Permits& operator=(const Permits&) = delete;

    void Give() {
        AcquireSRWLockExclusive(&lock);
        ++number;
        ReleaseSRWLockExclusive(&lock);
        WakeConditionVariable(&given);
    }

    void Take() {
        AcquireSRWLockExclusive(&lock);
        while (number == 0)
            SleepConditionVariableSRW(&given, &lock, INFINITE, /*Flags=*/0);
        --number;
        ReleaseSRWLockExclusive(&lock);
    }

private:
    SRWLOCK lock = SRWLOCK_INIT;
    CONDITION_VARIABLE given = CONDITION_VARIABLE_INIT;
    int number;
};

#endif
