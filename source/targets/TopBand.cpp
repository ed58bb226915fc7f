#include "targets/TopBand.h"

#include "targets/MakimaCurve.h"

namespace
{
constexpr std::array knotsHz { 6000.0, 10000.0, 15000.0 };
constexpr double topBandHz = 18000.0;
} // namespace

std::optional<float> topBandValueOf (const std::array<double, 3>& threeValues)
{
    const MakimaCurve curve (knotsHz, threeValues);

    if (! curve.isDefined())
        return std::nullopt;

    return static_cast<float> (curve.segment (curve.segmentCount() - 1).at (topBandHz));
}

void makeTopBandValue (const std::array<double, 3>& threeValues, float* result)
{
    if (const auto value = topBandValueOf (threeValues))
        *result = *value;
}

void RememberedTopBand::makeTopBandValue (const std::array<double, 3>& threeValues, float* result)
{
    if (known != threeValues)
    {
        value = topBandValueOf (threeValues);
        known = threeValues;
    }

    if (value)
        *result = *value;
}
