#pragma once

/** Counts what the calling thread asks of the heap and of locks while it lives. Guards may be nested.

    The test binary replaces operator new and delete and stands before pthread's locking functions. Locks are counted in
    builds without sanitizers only, since those stand in the same place; `countsLocks` tells. */
class RealTimeGuard
{
public:
    RealTimeGuard() noexcept;

    /** Calls of operator new and delete by this thread since construction. */
    [[nodiscard]] int allocations() const noexcept;

    /** Mutexes and read-write locks that this thread has taken, or tried to take, since construction. */
    [[nodiscard]] int locks() const noexcept;

    [[nodiscard]] static bool countsLocks() noexcept;

private:
    int allocationsBefore;
    int locksBefore;
};
