#include "targets/TopBand.h"

#include "targets/MakimaCurve.h"

namespace
{
constexpr std::array knotsHz { 6000.0, 10000.0, 15000.0 };
constexpr double topBandHz = 18000.0;
} // namespace

void makeTopBandValue (const std::array<double, 3>& threeValues, float* result)
{
    const MakimaCurve curve (knotsHz, threeValues);

    if (curve.isDefined())
        *result = static_cast<float> (curve.segment (curve.segmentCount() - 1).at (topBandHz));
}
