#include "dsp/rate/RateConverter.h"

#include "dsp/rate/ReducedRate.h"

#include <algorithm>

RateConverter::RateConverter() = default;

void RateConverter::buildFilters() noexcept
{
    if (const auto factor = decimationFactorFor (sampleRate))
        filters.prepare (*factor == rateTableByFour.factor ? rateTableByFour : rateTableByEight);
}

int RateConverter::decimationFactor() const noexcept
{
    return filters.table() != nullptr ? filters.table()->factor : 0;
}

void RateConverter::decimateStereo (const float* left, const float* right, int count) noexcept
{
    const float* const input[] { left, right };
    decimate (input, 2, count);
}

void RateConverter::decimateSingle (const float* input, int count) noexcept
{
    decimate (&input, 1, count);
}

void RateConverter::interpolateStereo (const double* left, const double* right, int reducedCount) noexcept
{
    const double* const input[] { left, right };
    interpolate (input, 2, reducedCount);
}

void RateConverter::interpolateSingle (const double* input, int reducedCount) noexcept
{
    interpolate (&input, 1, reducedCount);
}

void RateConverter::decimate (const float* const* input, int channelCount, int count) noexcept
{
    const auto factor = decimationFactor();

    if (factor == 0)
        return;

    const auto usable = std::clamp (count, 0, maxBlock);
    double* const results[] { output[0].data(), output[1].data() };
    filters.decimate (input, results, channelCount, usable - usable % factor);
}

void RateConverter::interpolate (const double* const* input, int channelCount, int reducedCount) noexcept
{
    const auto factor = decimationFactor();

    if (factor == 0)
        return;

    double* const results[] { interpolated[0].data(), interpolated[1].data() };
    filters.interpolate (input, results, channelCount, std::clamp (reducedCount, 0, maxBlock / factor));
}
