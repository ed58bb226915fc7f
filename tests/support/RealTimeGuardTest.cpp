#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace
{
// Through a volatile pointer, so that the compiler cannot leave the pair of calls out.
void allocateAndRelease()
{
    auto* volatile memory = ::operator new (16);
    ::operator delete (memory);
}

TEST (RealTimeGuardTest, seesAllocationsAndReleasesOfItsOwnThread)
{
    const RealTimeGuard guard;
    EXPECT_EQ (guard.allocations(), 0);
    allocateAndRelease();
    EXPECT_EQ (guard.allocations(), 2);
}

TEST (RealTimeGuardTest, ignoresOtherThreads)
{
    auto seen = 0;
    std::thread other (
        [&seen]
        {
            const RealTimeGuard guard;
            std::vector<std::unique_ptr<int>> values (3);
            seen = guard.allocations();
        });
    const RealTimeGuard guard;
    other.join();
    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_GE (seen, 1);
}

TEST (RealTimeGuardTest, seesLocksWhereItCountsThem)
{
    std::mutex mutex;
    const RealTimeGuard guard;

    {
        const std::lock_guard lock (mutex);
    }

    if (mutex.try_lock())
        mutex.unlock();

    EXPECT_EQ (guard.locks(), RealTimeGuard::countsLocks() ? 2 : 0);
}
} // namespace
