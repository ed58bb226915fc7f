#include "targets/DisplayCurve.h"

#include "targets/MakimaCurve.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace DisplayCurve
{
namespace
{
constexpr int lowestRow = 2;
} // namespace

std::vector<double> frequencies (int height)
{
    std::vector<double> result;

    if (height <= 0)
        return result;

    const auto logLow = std::log10 (static_cast<double> (lowHz));
    const auto logRange = std::log10 (static_cast<double> (highHz)) - logLow;
    const auto count = (height - 1) / rowStep + 1;
    result.reserve (static_cast<std::size_t> (count));

    for (int i = 0; i < count; ++i)
    {
        const auto fromFloor = static_cast<double> (lowestRow + i * rowStep);
        result.push_back (std::pow (10.0, fromFloor / height * logRange + logLow));
    }

    return result;
}

std::vector<double> valuesAt (std::span<const double> frequenciesHz,
                              std::span<const float, analysisBandCount> gainTargets)
{
    std::array<double, analysisBandCount + 1> knots;
    std::array<double, analysisBandCount + 1> values;
    std::ranges::copy (analysisCentresHz, knots.begin());
    std::ranges::copy (gainTargets, values.begin());
    knots.back() = static_cast<double> (highHz);
    values.back() = values[analysisBandCount - 1];
    const MakimaCurve curve (knots, values);

    std::vector<double> result;
    result.reserve (frequenciesHz.size());

    for (const auto frequency : frequenciesHz)
    {
        // The last band at or below the frequency.
        const auto above = std::upper_bound (knots.begin(), knots.begin() + analysisBandCount, frequency);
        const auto segment = static_cast<std::size_t> (std::max<std::ptrdiff_t> (above - knots.begin() - 1, 0));
        const auto& cubic = curve.segment (segment);
        result.push_back (cubic.isDefined() ? static_cast<double> (static_cast<float> (cubic.at (frequency))) : 0.0);
    }

    return result;
}
} // namespace DisplayCurve
