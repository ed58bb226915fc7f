#include "targets/MeanTarget.h"

#include <algorithm>

std::optional<MeanTarget> MeanTarget::of (std::span<const TrackReading> readings)
{
    const auto count = static_cast<float> (std::ranges::count_if (readings, &TrackReading::exists));

    if (count == 0.0f)
        return std::nullopt;

    MeanTarget target;

    for (const auto& reading : readings)
    {
        if (! reading.exists)
            continue;

        target.lufs += reading.lufs;

        for (std::size_t band = 0; band < target.values.size(); ++band)
            target.values[band] += reading.bands[band] / count;
    }

    target.lufs /= count;
    return target;
}
