#include "dsp/design/BandCurves.h"

#include "dsp/rate/ReducedRate.h"
#include <algorithm>
#include <cstddef>

namespace
{
/** Scale of a solo curve in which no band has a deviation. */
constexpr double emptySoloScale = 50.0;

/** The curves of a sum, in band order. */
struct Summands
{
    std::array<const double*, bandCount> curves {};
    std::size_t count = 0;

    void add (const std::vector<double>& curve) noexcept { curves[count++] = curve.data(); }

    /** The sum at one point less `offset`, rounded to single precision at each step. */
    double sumAt (std::size_t point, float offset) const noexcept
    {
        auto sum = 0.0f;

        for (std::size_t index = 0; index < count; ++index)
            sum = static_cast<float> (static_cast<double> (sum) + curves[index][point]);

        return static_cast<double> (sum - offset);
    }

    void sumInto (std::vector<double>& result, float offset) const noexcept
    {
        for (std::size_t point = 0; point < result.size(); ++point)
            result[point] = sumAt (point, offset);
    }

    float offsetToOne() const noexcept { return static_cast<float> (count) - 1.0f; }
};

bool isInUse (const BandSettings& band) noexcept
{
    return band.gainDb != 0.0f && band.bypass != 1.0f;
}
} // namespace

BandCurves::BandCurves (BlockProcessorMode modeToUse)
    : curveMode (modeToUse),
      high (curvePointCount, 0.0),
      low (curvePointCount, 0.0),
      solo (curvePointCount, 0.0),
      display (curvePointCount, 1.0)
{
    bandCurves.fill (Curve (curvePointCount, 1.0));
    soloBandCurves.fill (Curve (curvePointCount, 1.0));
}

void BandCurves::designBand (BandMessageName message, float value, const DesignSettings& settings) noexcept
{
    drawBand (message.band, bandDrawingFor (message, value, curveMode, settings), settings);
}

void BandCurves::drawBand (int band, const BandDrawing& drawing, const DesignSettings& settings) noexcept
{
    const auto index = static_cast<std::size_t> (band);
    shapes[index] = bandShapeFor (drawing, band, curveMode, settings);
    evaluateBandCurve (shapes[index], settings.soloActive ? soloBandCurves[index] : bandCurves[index]);
}

void BandCurves::sumBands (const DesignSettings& settings) noexcept
{
    Summands highBands;
    Summands lowBands;

    for (std::size_t band = 0; band < bandCurves.size(); ++band)
    {
        const auto& bandSettings = settings.bands[band];

        if (isInUse (bandSettings))
        {
            const auto isHigh = static_cast<double> (bandSettings.frequencyHz) > lowPathLimitHz;
            (isHigh ? highBands : lowBands).add (bandCurves[band]);
        }
    }

    highBands.sumInto (high, highBands.offsetToOne());
    lowBands.sumInto (low, lowBands.offsetToOne());
    presence = { highBands.count > 0, lowBands.count > 0 };
}

void BandCurves::sumDisplay (int decimationFactor) noexcept
{
    const auto factor = static_cast<std::size_t> (decimationFactor);
    const auto lowPointCount = display.size() / factor;

    for (std::size_t point = 0; point < lowPointCount; ++point)
        display[point] = high[point] + low[point * factor] - 1.0;

    std::copy (high.begin() + static_cast<std::ptrdiff_t> (lowPointCount),
               high.end(),
               display.begin() + static_cast<std::ptrdiff_t> (lowPointCount));
}

void BandCurves::sumSolo (const DesignSettings& settings) noexcept
{
    Summands allBands;

    for (std::size_t band = 0; band < soloBandCurves.size(); ++band)
    {
        if (settings.bands[band].solo == 0.0f)
            std::fill (soloBandCurves[band].begin(), soloBandCurves[band].end(), 1.0);

        allBands.add (soloBandCurves[band]);
    }

    allBands.sumInto (solo, static_cast<float> (bandCount));

    const auto maximum = *std::max_element (solo.begin(), solo.end());
    const auto scale = maximum == 0.0 ? emptySoloScale : 1.0 / maximum;

    for (auto& value : solo)
        value *= scale;
}

const BandShape& BandCurves::bandShape (int band) const noexcept
{
    return shapes[static_cast<std::size_t> (band)];
}

std::span<const double> BandCurves::bandCurve (int band) const noexcept
{
    return bandCurves[static_cast<std::size_t> (band)];
}

std::span<const double> BandCurves::soloBandCurve (int band) const noexcept
{
    return soloBandCurves[static_cast<std::size_t> (band)];
}
