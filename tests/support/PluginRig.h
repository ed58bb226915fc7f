#pragma once

#include "core/PluginProcessor.h"

#include <vector>

/** A host for one processor: sets it up, feeds it, waits for its workers. */
class PluginRig
{
public:
    using Signal = std::vector<std::vector<float>>;

    explicit PluginRig (const HostDescription& host = plainHost());

    /** A host that we know nothing about, with the priority of a normal thread. */
    [[nodiscard]] static HostDescription plainHost();

    void prepare (double sampleRate, int blockSize, int channelCount = 2);

    /** Renders offline: updates act at once, on the calling thread. Before prepare(). */
    void renderOffline() { processor.setNonRealtime (true); }

    void set (const juce::String& id, float plainValue) { processor.model.setParameterValue (id, plainValue); }
    void set (int band, Settings::Parameter kind, float plainValue);

    /** Activates a band with these values, gain last. */
    void setBand (int band, float frequencyHz, float gainDb, float q = 1.0f);

    /** Waits until no worker has anything to do. */
    void waitForWorkers();

    /** The taps that one mode's worker designed last. Waits for it. */
    [[nodiscard]] TapSets designedTaps (BlockProcessorMode mode);

    /** Waits until no worker has anything to do, then runs blocks until every tap set has been handed over. */
    void settle();

    /** Sends a signal through in blocks of this size, or of the sizes that `nextSize` gives. */
    [[nodiscard]] Signal run (const Signal& input, int blockSize);
    [[nodiscard]] Signal run (const Signal& input, const std::function<int()>& nextSize);

    /** One block of these samples, as a host sends it. */
    void process (juce::AudioBuffer<float>& buffer);

    /** `count` samples of silence, block by block. */
    void runSilence (int count, int blockSize);

    /** Serves the message thread's timers and messages until `done` holds; throws when that takes a minute. On the thread
        that made the framework. */
    static void serveMessagesUntil (const std::function<bool()>& done);

    /** Samples from input to output when nothing is soloed, whatever has been reported. */
    [[nodiscard]] int trueLatency() const { return processor.model.baseLatency + processor.model.decimationFactor; }

    [[nodiscard]] int reportedLatency() const { return processor.getLatencySamples(); }

    VelmoraAudioProcessor processor;

private:
    int channels = 2;
    int block = 512;
};

namespace signals
{
/** Uniform noise between -amplitude and amplitude; the same for the same seed. */
[[nodiscard]] PluginRig::Signal noise (int channelCount, int length, unsigned seed, float amplitude = 0.5f);

/** A single 1 on sample 0 of one channel. */
[[nodiscard]] PluginRig::Signal impulse (int channelCount, int length, int channel);

/** The signal `samples` later in the same length, with zeros before it. */
[[nodiscard]] PluginRig::Signal delayedBy (const PluginRig::Signal& signal, int samples);

/** A description of the first difference between two signals, empty if there is none. What is no number differs. */
[[nodiscard]] std::string
firstDifference (const PluginRig::Signal& actual, const PluginRig::Signal& expected, float tolerance = 0.0f);

/** The magnitude in dB of a sequence's spectrum at one frequency. */
[[nodiscard]] double magnitudeDb (const std::vector<double>& sequence, double frequencyHz, double sampleRate);
} // namespace signals
