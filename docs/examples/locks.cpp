#include "utilities/system/locks/Lock.h"
#include "utilities/system/locks/ReadWriteLock.h"
#include "utilities/system/locks/SlipLock.h"

#include <gtest/gtest.h>
#include <thread>

TEST(Example, Locks) {
    CLock lock;
    int total = 0;
    const auto add = [&] {
        for (int i = 0; i < 1'000; ++i) {
            lock.Lock();
            ++total;
            lock.Unlock();
        }
    };
    std::thread other(add);
    add();
    other.join();
    EXPECT_EQ(total, 2'000);

    CReadWriteLock document;
    document.ReadLock(); // others may read, too
    document.ReadUnlock();

    CSlipLock device;
    EXPECT_TRUE(device.LockWithTimeout(/*milliseconds=*/100));
    std::thread([&] { EXPECT_FALSE(device.RequestLock()); }).join();
    device.Unlock();
}
