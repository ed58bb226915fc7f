#pragma once

/** Counts what the calling thread takes from the heap and gives back to it, from its construction on. */
class AllocationGuard
{
public:
    AllocationGuard() noexcept;

    [[nodiscard]] long count() const noexcept;

private:
    long start;
};
