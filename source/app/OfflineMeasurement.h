#pragma once

#include "dsp/meters/BandAnalyser.h"
#include "dsp/meters/LUFSProcessor.h"
#include "dsp/rate/RateConverter.h"

#include <array>

/** What the plug-in's live analysis would read of a recording, measured as fast as it goes.

    The same meters, filters and decimation, without the threads between them. A reading that never came, since a
    recording is shorter than a second or silent in a band, is minus infinity. One thread. */
class OfflineMeasurement
{
public:
    /** @param sampleRate one of the six that the filters serve; @param channelCount 1 or 2 */
    OfflineMeasurement (double sampleRate, int channelCount);

    /** Takes a block; `right` is null for mono. Blocks are multiples of the decimation factor but for the last one,
       whose rest does not reach the low bands. At most RateConverter::maxBlock samples. */
    void process (const float* left, const float* right, int count);

    /** Overall unweighted loudness in LUFS. */
    [[nodiscard]] float lufs() const noexcept { return overall.integratedValue(); }

    /** The ten band levels in LUFS, the last one extrapolated from the three below it where that can be done. */
    [[nodiscard]] std::array<float, analysisBandCount> bands() const;

private:
    const int factor;
    const bool stereo;
    RateConverter rateConverter;
    BandAnalyser analyser { BandAnalyser::Storing::everyReturn };
    orvik::LUFSProcessor<3000> overall;
};
