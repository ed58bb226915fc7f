#include "support/RealTimeGuard.h"

#include <cstddef>
#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    #define SOLVANE_COUNTS_LOCKS 0
#else
    #define SOLVANE_COUNTS_LOCKS 1
    #include <dlfcn.h>
    #include <pthread.h>
#endif

namespace
{
thread_local int allocationCount = 0;
thread_local int lockCount = 0;

void* allocate (std::size_t size)
{
    ++allocationCount;

    if (auto* memory = std::malloc (size > 0 ? size : 1))
        return memory;

    throw std::bad_alloc();
}

void* allocateAligned (std::size_t size, std::align_val_t alignment)
{
    ++allocationCount;
    const auto boundary = static_cast<std::size_t> (alignment);

    if (auto* memory = std::aligned_alloc (boundary, (size + boundary) / boundary * boundary))
        return memory;

    throw std::bad_alloc();
}

void* allocateOrNull (std::size_t size) noexcept
{
    ++allocationCount;
    return std::malloc (size > 0 ? size : 1);
}

void release (void* memory) noexcept
{
    ++allocationCount;
    std::free (memory);
}
} // namespace

void* operator new (std::size_t size)
{
    return allocate (size);
}

void* operator new[] (std::size_t size)
{
    return allocate (size);
}

void* operator new (std::size_t size, std::align_val_t alignment)
{
    return allocateAligned (size, alignment);
}

void* operator new[] (std::size_t size, std::align_val_t alignment)
{
    return allocateAligned (size, alignment);
}

void* operator new (std::size_t size, const std::nothrow_t&) noexcept
{
    return allocateOrNull (size);
}

void* operator new[] (std::size_t size, const std::nothrow_t&) noexcept
{
    return allocateOrNull (size);
}

void operator delete (void* memory) noexcept
{
    release (memory);
}

void operator delete[] (void* memory) noexcept
{
    release (memory);
}

void operator delete (void* memory, std::size_t) noexcept
{
    release (memory);
}

void operator delete[] (void* memory, std::size_t) noexcept
{
    release (memory);
}

void operator delete (void* memory, std::align_val_t) noexcept
{
    release (memory);
}

void operator delete[] (void* memory, std::align_val_t) noexcept
{
    release (memory);
}

void operator delete (void* memory, std::size_t, std::align_val_t) noexcept
{
    release (memory);
}

void operator delete[] (void* memory, std::size_t, std::align_val_t) noexcept
{
    release (memory);
}

#if SOLVANE_COUNTS_LOCKS

namespace
{
template <typename Function>
Function* nextDefinitionOf (const char* name) noexcept
{
    return reinterpret_cast<Function*> (dlsym (RTLD_NEXT, name));
}
} // namespace

// The C library declares these with the same exception specification; a pointer is looked up at the first call.
extern "C"
{
    int pthread_mutex_lock (pthread_mutex_t* mutex) noexcept
    {
        static auto* const next = nextDefinitionOf<int (pthread_mutex_t*)> ("pthread_mutex_lock");
        ++lockCount;
        return next (mutex);
    }

    int pthread_mutex_trylock (pthread_mutex_t* mutex) noexcept
    {
        static auto* const next = nextDefinitionOf<int (pthread_mutex_t*)> ("pthread_mutex_trylock");
        ++lockCount;
        return next (mutex);
    }

    int pthread_rwlock_rdlock (pthread_rwlock_t* lock) noexcept
    {
        static auto* const next = nextDefinitionOf<int (pthread_rwlock_t*)> ("pthread_rwlock_rdlock");
        ++lockCount;
        return next (lock);
    }

    int pthread_rwlock_wrlock (pthread_rwlock_t* lock) noexcept
    {
        static auto* const next = nextDefinitionOf<int (pthread_rwlock_t*)> ("pthread_rwlock_wrlock");
        ++lockCount;
        return next (lock);
    }
}

#endif

RealTimeGuard::RealTimeGuard() noexcept : allocationsBefore (allocationCount), locksBefore (lockCount) {}

int RealTimeGuard::allocations() const noexcept
{
    return allocationCount - allocationsBefore;
}

int RealTimeGuard::locks() const noexcept
{
    return lockCount - locksBefore;
}

bool RealTimeGuard::countsLocks() noexcept
{
    return SOLVANE_COUNTS_LOCKS != 0;
}
