#include "gui/heat/HeatRows.h"

#include "gui/room/RoomGeometry.h"

#include <algorithm>
#include <cmath>
#include <numeric>

void HeatRows::prepare (int height, double sampleRate)
{
    if (height == preparedHeight && sampleRate == preparedRate)
        return;

    preparedHeight = height;
    preparedRate = sampleRate;
    rows.assign (static_cast<std::size_t> ((std::max (height, 0) + rowHeight - 1) / rowHeight), {});

    if (! (sampleRate > 0.0))
        return;

    RoomGeometry geometry;
    geometry.height = static_cast<float> (height);
    const auto binAt = [&] (int aboveFloor)
    {
        const auto frequency = geometry.frequencyFromFront (static_cast<float> (height - aboveFloor));
        return static_cast<double> (frequency) * SpectrumAnalyser::frameLength / sampleRate;
    };
    constexpr auto highest = static_cast<double> (HeatPeaks::binCount - 1);

    for (auto bottom = 0; auto& row : rows)
    {
        row = { static_cast<int> (std::min (std::floor (binAt (bottom)), highest)),
                static_cast<int> (std::min (std::ceil (binAt (std::min (bottom + rowHeight, height))), highest)) };
        bottom += rowHeight;
    }
}

bool HeatRows::alphas (HeatPeaks::Magnitudes peaks, std::span<std::uint8_t> destination) const noexcept
{
    auto any = false;

    for (std::size_t row = 0; row < std::min (rows.size(), destination.size()); ++row)
    {
        const auto sum = std::accumulate (peaks.begin() + rows[row].first, peaks.begin() + rows[row].last + 1, 0.0f);
        destination[row] = alphaOf (sum);
        any = any || destination[row] > 0;
    }

    return any;
}

std::uint8_t HeatRows::alphaOf (float sum) noexcept
{
    return static_cast<std::uint8_t> (std::lround (std::clamp (sum, 0.0f, 1.0f) * 255.0f));
}
