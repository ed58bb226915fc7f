#include "targets/TargetSet.h"

#include <algorithm>

void TargetSet::set (float lufs, std::span<const float> values, std::optional<float> topBand) noexcept
{
    targetLufs.store (lufs, std::memory_order_relaxed);

    for (std::size_t band = 0; band < std::min (values.size(), targetValues.size()); ++band)
        targetValues[band].store (values[band], std::memory_order_relaxed);

    if (topBand.has_value())
        targetValues.back().store (*topBand, std::memory_order_relaxed);
}
