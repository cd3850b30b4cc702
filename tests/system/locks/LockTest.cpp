#include "utilities/system/locks/Lock.h"
#include "tests/support/ThreadTeam.h"

#include <gtest/gtest.h>

namespace {

bool OtherThreadGets(CLock& lock) {
    return OnOtherThread([&lock] {
        const bool got = lock.TryToLock() != 0;
        if (got)
            lock.Unlock();
        return got;
    });
}

TEST(Lock, IsHeldAsOftenAsItWasTaken) {
    CLock lock, copy;
    auto* section = reinterpret_cast<CRITICAL_SECTION*>(&lock);
    {
        const CSmartLock held(section), again(section), nothing(nullptr);
        EXPECT_FALSE(OtherThreadGets(lock));
    }
    EXPECT_TRUE(OtherThreadGets(lock));
    lock.Lock();
    EXPECT_NE(lock.TryToLock(), 0);
    copy = lock;
    EXPECT_FALSE(OtherThreadGets(copy)) << "held as the source is";
    for (CLock* each : {&lock, &copy}) {
        each->Unlock();
        EXPECT_FALSE(OtherThreadGets(*each));
        each->Unlock();
        EXPECT_TRUE(OtherThreadGets(*each));
    }
}

} // namespace
