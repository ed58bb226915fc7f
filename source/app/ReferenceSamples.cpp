#include "app/ReferenceSamples.h"

#include "app/CommandError.h"

#include <algorithm>

/** The file as a source of the framework, from its start on, with silence behind its end. */
class ReferenceSamples::Source final : public juce::AudioSource
{
public:
    explicit Source (AudioInput& inputToRead) : input (inputToRead) {}

    void rewind() noexcept { position = 0; }
    [[nodiscard]] juce::int64 notFiniteCount() const noexcept { return notFinite; }

    void prepareToPlay (int, double) override {}
    void releaseResources() override {}

    void getNextAudioBlock (const juce::AudioSourceChannelInfo& info) override
    {
        info.clearActiveBufferRegion();
        const auto count = static_cast<int> (std::clamp<juce::int64> (input.length() - position, 0, info.numSamples));

        if (count == 0)
            return;

        const auto before = input.notFiniteCount();
        part.setSize (input.channelCount(), count, false, false, true);
        input.read (part, position, count);
        position += count;

        // A second reading falls into the same blocks.
        if (position > furthest)
        {
            notFinite += input.notFiniteCount() - before;
            furthest = position;
        }

        for (int channel = 0; channel < std::min (part.getNumChannels(), info.buffer->getNumChannels()); ++channel)
            info.buffer->copyFrom (channel, info.startSample, part, channel, 0, count);
    }

private:
    AudioInput& input;
    juce::int64 position = 0;
    juce::int64 furthest = 0;
    juce::int64 notFinite = 0;
    juce::AudioBuffer<float> part;
};

namespace
{
int countedSamples (const AudioInput& input, double sessionRate, const std::string& name)
{
    const auto count = TrackConversion::sampleCountFor (input.length(), input.sampleRate(), sessionRate);

    if (! count.has_value())
        throw CommandError (ExitCode::unsupportedAudio, "'" + name + "' is too long for a reference track.");

    return *count;
}
} // namespace

ReferenceSamples::ReferenceSamples (AudioInput& inputToRead, const std::string& name, double sessionRate)
    : input (inputToRead),
      rate (sessionRate),
      total (countedSamples (input, sessionRate, name)),
      source (std::make_unique<Source> (input)),
      window (input.channelCount(), 2 * blockLength)
{
    rewind();
}

ReferenceSamples::~ReferenceSamples() = default;

void ReferenceSamples::rewind()
{
    windowStart = 0;
    windowCount = 0;
    source->rewind();

    conversion =
        std::make_unique<TrackConversion> (*source, input.length(), input.sampleRate(), rate, input.channelCount());
}

void ReferenceSamples::readOn()
{
    if (windowCount > blockLength)
    {
        for (int channel = 0; channel < window.getNumChannels(); ++channel)
            window.copyFrom (channel, 0, window, channel, blockLength, windowCount - blockLength);

        windowStart += blockLength;
        windowCount -= blockLength;
    }

    windowCount += conversion->take (window, windowCount);
}

orvik::ChannelPointers ReferenceSamples::at (int start, int wanted)
{
    jassert (start >= 0 && wanted <= blockLength && wanted <= total - start);

    if (start < windowStart)
        rewind();

    while (start + wanted > windowStart + windowCount)
        readOn();

    return { window.getReadPointer (0, start - windowStart),
             window.getNumChannels() == 2 ? window.getReadPointer (1, start - windowStart) : nullptr };
}

juce::int64 ReferenceSamples::notFiniteCount() const noexcept
{
    return source->notFiniteCount();
}
