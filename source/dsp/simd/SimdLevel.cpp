#include "dsp/simd/SimdLevel.h"

#include "dsp/simd/FunctionVersions.h"

#include <atomic>

namespace
{
SimdLevel detectLevel() noexcept
{
#if SOLVANE_HAS_FUNCTION_VERSIONS
    __builtin_cpu_init();

    if (__builtin_cpu_supports ("x86-64-v4"))
        return SimdLevel::v4;

    if (__builtin_cpu_supports ("x86-64-v3"))
        return SimdLevel::v3;
#endif

    return SimdLevel::baseline;
}

std::atomic<SimdLevel>& levelInUse() noexcept
{
    static std::atomic<SimdLevel> level { detectLevel() };
    return level;
}
} // namespace

SimdLevel simdLevel() noexcept
{
    return levelInUse().load (std::memory_order_relaxed);
}

SimdLevel bestSimdLevel() noexcept
{
    static const auto best = detectLevel();
    return best;
}

bool setSimdLevel (SimdLevel level) noexcept
{
    if (level > bestSimdLevel())
        return false;

    levelInUse().store (level, std::memory_order_relaxed);
    return true;
}
