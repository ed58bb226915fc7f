#include "support/AllocationGuard.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace
{
thread_local long heapCalls = 0;

void* take (std::size_t size)
{
    ++heapCalls;

    if (auto* memory = std::malloc (size == 0 ? 1 : size))
        return memory;

    throw std::bad_alloc();
}

void* takeAligned (std::size_t size, std::align_val_t alignment)
{
    ++heapCalls;
    const auto step = static_cast<std::size_t> (alignment);

    if (auto* memory = std::aligned_alloc (step, (size + step - 1) / step * step))
        return memory;

    throw std::bad_alloc();
}

void giveBack (void* memory) noexcept
{
    ++heapCalls;
    std::free (memory);
}
} // namespace

void* operator new (std::size_t size)
{
    return take (size);
}

void* operator new[] (std::size_t size)
{
    return take (size);
}

void* operator new (std::size_t size, std::align_val_t alignment)
{
    return takeAligned (size, alignment);
}

void* operator new[] (std::size_t size, std::align_val_t alignment)
{
    return takeAligned (size, alignment);
}

void operator delete (void* memory) noexcept
{
    giveBack (memory);
}

void operator delete[] (void* memory) noexcept
{
    giveBack (memory);
}

void operator delete (void* memory, std::size_t) noexcept
{
    giveBack (memory);
}

void operator delete[] (void* memory, std::size_t) noexcept
{
    giveBack (memory);
}

void operator delete (void* memory, std::align_val_t) noexcept
{
    giveBack (memory);
}

void operator delete[] (void* memory, std::align_val_t) noexcept
{
    giveBack (memory);
}

void operator delete (void* memory, std::size_t, std::align_val_t) noexcept
{
    giveBack (memory);
}

void operator delete[] (void* memory, std::size_t, std::align_val_t) noexcept
{
    giveBack (memory);
}

AllocationGuard::AllocationGuard() noexcept : start (heapCalls) {}

long AllocationGuard::count() const noexcept
{
    return heapCalls - start;
}
