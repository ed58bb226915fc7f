#pragma once

#include "app/EqualiserSettings.h"
#include "core/PluginProcessor.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <functional>
#include <vector>

/** Drives the plug-in's processor offline, with the delay of its path taken off.

    The settings act from the first sample: the filters are designed and handed over before audio runs. One thread. */
class OfflineRenderer
{
public:
    /** @param sampleRate one of the six that the filters serve
        @param channelCount 1 or 2
        @param blockSize 1 to 8192 */
    OfflineRenderer (double sampleRate, int channelCount, int blockSize, const EqualiserSettings& settings);

    using ReadBlock = std::function<void (juce::AudioBuffer<float>& block, juce::int64 start, int count)>;
    using WriteBlock = std::function<void (const juce::AudioBuffer<float>& block, int start, int count)>;

    /** Renders `length` samples: asks `read` for the input block by block, gives exactly `length` samples to `write`.
     */
    void render (juce::int64 length, const ReadBlock& read, const WriteBlock& write);

    /** The delay of the path in samples, as it really is. */
    [[nodiscard]] int delaySamples() const noexcept;

    /** The paths, in words, on which the bands above 1500 Hz do nothing, because in minimum phase no filter can be made
        from cuts as broad and deep as theirs. */
    [[nodiscard]] std::vector<const char*> pathsWithRefusedHighBands();

    [[nodiscard]] VelmoraAudioProcessor& processor() noexcept { return plugin; }

private:
    void settle();
    void process (juce::AudioBuffer<float>& block);

    VelmoraAudioProcessor plugin;
    const int channels;
    const int blockLength;
    bool solo = false;
};
