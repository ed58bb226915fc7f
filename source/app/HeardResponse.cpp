#include "app/HeardResponse.h"

#include "app/OfflineRenderer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{
constexpr int blockLength = 4096;

/** Room on either side of an impulse for what the longest filters make of it: 1254 samples of delay above 96 kHz, and
    the ringing of the rate conversion. */
constexpr int halfLength = 4096;
constexpr int impulseLength = 2 * halfLength;

/** An answer below this share of the impulse lies in the rounding of single precision. */
constexpr float roundingFloor = 1.0e-9f;
} // namespace

HeardResponse::HeardResponse (double sampleRate, int channelCount, EqualiserSettings settings) : rate (sampleRate)
{
    settings.outputGainDb = 0.0f;
    OfflineRenderer renderer (sampleRate, channelCount, blockLength, settings);
    const auto channels = static_cast<std::size_t> (channelCount);
    std::vector<std::vector<float>> output (channels);

    // First an impulse in the middle, then one on the sides.
    renderer.render (
        channelCount * impulseLength,
        [] (juce::AudioBuffer<float>& block, juce::int64 start, int count)
        {
            for (int channel = 0; channel < block.getNumChannels(); ++channel)
                for (int index = 0; index < block.getNumChannels(); ++index)
                    if (const auto position = index * impulseLength + halfLength - start;
                        position >= 0 && position < count)
                        block.setSample (channel, static_cast<int> (position), channel * index == 1 ? -1.0f : 1.0f);
        },
        [&] (const juce::AudioBuffer<float>& block, int start, int count)
        {
            for (int channel = 0; channel < channelCount; ++channel)
            {
                const auto* samples = block.getReadPointer (channel, start);
                auto& target = output[static_cast<std::size_t> (channel)];
                target.insert (target.end(), samples, samples + count);
            }
        });

    const auto take = [&] (int first)
    {
        const auto begin = output[0].begin() + first;
        const auto isHeard = [] (float sample) { return std::abs (sample) > roundingFloor; };
        const auto start = std::find_if (begin, begin + impulseLength, isHeard);
        Answer answer;
        answer.offset = static_cast<double> (start - begin - halfLength);
        answer.samples.assign (start, begin + impulseLength);

        while (! answer.samples.empty() && std::abs (answer.samples.back()) <= static_cast<double> (roundingFloor))
            answer.samples.pop_back();

        return answer;
    };

    middle = take (0);
    sides = channelCount == 2 ? take (impulseLength) : middle;
}

std::complex<double> HeardResponse::at (Signal signal, double frequencyHz) const
{
    const auto& answer = answerTo (signal);
    const auto omega = 2.0 * std::numbers::pi * frequencyHz / rate;
    const auto step = std::polar (1.0, -omega);
    auto phasor = std::polar (1.0, -omega * answer.offset);
    std::complex<double> sum;

    for (const auto sample : answer.samples)
    {
        sum += sample * phasor;
        phasor *= step;
    }

    return sum;
}

double HeardResponse::decibelsAt (Signal signal, double frequencyHz) const
{
    return 20.0 * std::log10 (std::abs (at (signal, frequencyHz)));
}
