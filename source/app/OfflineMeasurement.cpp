#include "app/OfflineMeasurement.h"

#include "dsp/rate/ReducedRate.h"
#include "targets/TopBand.h"

#include <algorithm>
#include <vector>

OfflineMeasurement::OfflineMeasurement (double sampleRate, int channelCount)
    : factor (decimationFactorFor (sampleRate).value_or (1)), stereo (channelCount == 2)
{
    rateConverter.setSampleRate (sampleRate);
    rateConverter.buildFilters();
    analyser.prepareBands (sampleRate / factor, sampleRate);
    analyser.fillLevels (-std::numeric_limits<float>::infinity());
    overall.setSampleRate (sampleRate);
    overall.prepare();
    overall.reset (resetLevelDb);
}

void OfflineMeasurement::process (const float* left, const float* right, int count)
{
    overall.integratedOfPlain ({ left, right }, count);
    analyser.processHigh (left, right, count);

    const auto whole = count - count % factor;
    const auto lowCount = static_cast<std::size_t> (whole / factor);

    if (stereo)
        rateConverter.decimateStereo (left, right, whole);
    else
        rateConverter.decimateSingle (left, whole);

    const auto toFloat = [lowCount] (const double* values)
    {
        std::vector<float> rounded (lowCount);
        std::transform (values, values + lowCount, rounded.begin(), [] (double x) { return static_cast<float> (x); });
        return rounded;
    };

    const auto lowLeft = toFloat (rateConverter.outputLeft());
    const auto lowRight = stereo ? toFloat (rateConverter.outputRight()) : std::vector<float>();
    analyser.processLow (lowLeft.data(), stereo ? lowRight.data() : nullptr, static_cast<int> (lowCount));
}

std::array<float, analysisBandCount> OfflineMeasurement::bands() const
{
    std::array<float, analysisBandCount> levels;

    for (std::size_t band = 0; band < levels.size(); ++band)
        levels[band] = analyser.bandLevels[band].load();

    makeTopBandValue (
        { static_cast<double> (levels[6]), static_cast<double> (levels[7]), static_cast<double> (levels[8]) },
        &levels[9]);
    return levels;
}
