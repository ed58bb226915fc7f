#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <optional>

/** Brings sound of any rate to a session's rate, a block at a time and from its start: the one way in which reference
    tracks are converted, so that plug-in and program measure the same. One thread. */
class TrackConversion
{
public:
    static constexpr int blockLength = 65536;

    /** How many samples sound of this length makes at the session's rate; nothing where an int32 cannot hold them, or
        where a rate is none. */
    [[nodiscard]] static std::optional<int>
    sampleCountFor (juce::int64 lengthInSamples, double fileRate, double sessionRate) noexcept;

    /** @param source          stands at its start, gives silence behind its end, and outlives this object
        @param lengthInSamples of the source, at its own rate; sampleCountFor() must have an answer
        @param fileRate        in Hz
        @param sessionRate     in Hz
        @param channelCount    how many channels are asked of the source */
    TrackConversion (juce::AudioSource& source,
                     juce::int64 lengthInSamples,
                     double fileRate,
                     double sessionRate,
                     int channelCount);

    /** The whole length at the session's rate, with its fraction. */
    [[nodiscard]] double expectedLength() const noexcept { return length; }

    /** Puts the next samples into a block, every one finite, and says how many; 0 when all are out.
        @param block of as many channels as were asked for
        @param start from where on the block is filled; blockLength samples must fit behind it */
    [[nodiscard]] int take (juce::AudioBuffer<float>& block, int start = 0);

private:
    /** A sample that is no number would stay in the converter's filter for good, so none gets that far. */
    class FiniteSource final : public juce::AudioSource
    {
    public:
        explicit FiniteSource (juce::AudioSource& sourceToRead) : source (sourceToRead) {}

        void prepareToPlay (int blockSize, double rate) override { source.prepareToPlay (blockSize, rate); }
        void releaseResources() override { source.releaseResources(); }
        void getNextAudioBlock (const juce::AudioSourceChannelInfo& info) override;

    private:
        juce::AudioSource& source;
    };

    const double length;
    const int sampleCount;
    FiniteSource finite;
    juce::ResamplingAudioSource resampler;
    int taken = 0;
};
