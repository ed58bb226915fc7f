#include "core/references/TrackConversion.h"

#include "dsp/simd/BlockOperations.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
/** A sample beyond this is damage; it would drown a meter for good. */
constexpr auto largestMagnitude = 1.0e9f;
} // namespace

void TrackConversion::FiniteSource::getNextAudioBlock (const juce::AudioSourceChannelInfo& info)
{
    source.getNextAudioBlock (info);

    for (int channel = 0; channel < info.buffer->getNumChannels(); ++channel)
    {
        auto* samples = info.buffer->getWritePointer (channel, info.startSample);
        BlockOperations::limitToFinite (samples, largestMagnitude, samples, info.numSamples);
    }
}

std::optional<int>
TrackConversion::sampleCountFor (juce::int64 lengthInSamples, double fileRate, double sessionRate) noexcept
{
    const auto count = std::ceil (static_cast<double> (lengthInSamples) / (fileRate / sessionRate));

    // Not-a-number fails both.
    if (! (count >= 0.0) || ! (count <= static_cast<double> (std::numeric_limits<int>::max())))
        return std::nullopt;

    return static_cast<int> (count);
}

TrackConversion::TrackConversion (juce::AudioSource& source,
                                  juce::int64 lengthInSamples,
                                  double fileRate,
                                  double sessionRate,
                                  int channelCount)
    : length (static_cast<double> (lengthInSamples) / (fileRate / sessionRate)),
      sampleCount (sampleCountFor (lengthInSamples, fileRate, sessionRate).value_or (0)),
      finite (source),
      resampler (&finite, false, channelCount)
{
    resampler.setResamplingRatio (std::max (0.0, fileRate / sessionRate));
    resampler.prepareToPlay (blockLength, fileRate);
}

int TrackConversion::take (juce::AudioBuffer<float>& block, int start)
{
    const auto count = std::min (blockLength, sampleCount - taken);

    if (count > 0)
    {
        resampler.getNextAudioBlock ({ &block, start, count });
        taken += count;
    }

    return count;
}
