#pragma once

#include "core/audio/BandEngine.h"
#include "core/audio/LevelMatch.h"
#include "core/audio/LiveAnalysis.h"
#include "core/audio/LoudnessMeters.h"
#include "core/model/HostTraits.h"
#include "core/model/PluginModel.h"
#include "core/references/TrackAudition.h"
#include "dsp/path/BypassDelay.h"
#include "dsp/path/PathMixer.h"
#include "dsp/path/PublishedLength.h"
#include "dsp/rate/RateConverter.h"
#include "dsp/threads/AudioFifo.h"

#include <functional>

/** The road of a block from the host and back.

    The host's blocks of any length go through a pair of FIFOs, so that the filters always get a multiple of the
    decimation factor; the silence that prepare puts into the second one covers what is left over. Everything here
    belongs to the audio thread, or to prepare while audio is stopped, but for updateLatency(). */
class AudioCallback
{
public:
    /** @param isOffline whether the current block is rendered offline; asked on the audio thread */
    AudioCallback (PluginModel& model,
                   BandEngine& engine,
                   LiveAnalysis& analysis,
                   TrackAudition& audition,
                   const HostTraits& host,
                   const HostDescription& description,
                   std::function<bool()> isOffline);

    /** Sizes and clears the buffers for the model's rate, block size, channels and decimation factor, and renews the
        rate converter's filters. Audio stopped. */
    void prepare();

    /** Sizes both delay lines for a base latency in samples. They are cleared at the next block; with `always` false
        only one whose length has changed. Any thread; real-time safe. */
    void updateLatency (int base, bool always = true) noexcept;

    /** The meters, of which the audio thread feeds all three. */
    [[nodiscard]] LoudnessMeters& loudnessMeters() noexcept { return meters; }
    [[nodiscard]] const LevelMatch& levelMatch() const noexcept { return match; }

    /** One block, in place. Audio thread; real-time safe. */
    void
    process (juce::AudioBuffer<float>& buffer, int inputCount, int outputCount, juce::AudioPlayHead* playHead) noexcept;

    /** One bypassed block, in place: the input, delayed by the reported latency. Audio thread; real-time safe. */
    void processBypassed (juce::AudioBuffer<float>& buffer, int inputCount, int outputCount) noexcept;

private:
    /** Read once for a block, since another thread may change them under it. */
    struct Snapshot
    {
        bool soloActive;
        bool mainBypass;
        bool useStereo;
        bool useMidSide;
        FilterPhase phase;
    };

    void recordThreadPriority() noexcept;
    void updateTransport (juce::AudioPlayHead* playHead) noexcept;
    [[nodiscard]] bool canProcess (int inputCount, int outputCount, int bufferChannelCount) const noexcept;
    void processPiece (const Snapshot& snapshot, float* const* channels, int channelCount, int sampleCount) noexcept;

    [[nodiscard]] BandEngine::Service serviceOfNow() const;

    /** Brings the host's samples into inputBlock, every one finite. Returns how many are there to be processed: a
        multiple of the factor; the rest waits in the FIFO. */
    [[nodiscard]] int takeInput (const float* const* channels, int channelCount, int sampleCount) noexcept;
    void filter (const Snapshot& snapshot, int sampleCount) noexcept;
    void filterStereo (const Snapshot& snapshot, int sampleCount) noexcept;
    void filterSingle (const Snapshot& snapshot, int sampleCount) noexcept;
    [[nodiscard]] Snapshot takeSnapshot() const noexcept;
    void measure (const Snapshot& snapshot, int sampleCount) noexcept;
    void updateLevelMatch (const Snapshot& snapshot) noexcept;
    void applyOutputGain (float* const* channels, int channelCount, int sampleCount) const noexcept;

    PluginModel& model;
    BandEngine& engine;
    LiveAnalysis& analysis;
    TrackAudition& audition;
    const HostTraits& host;
    const HostDescription& description;
    const std::function<bool()> isOffline;

    RateConverter rateConverter;
    juce::AudioBuffer<float> inputBlock;
    juce::AudioBuffer<float> outputBlock;
    AudioFifo inputFifo;
    AudioFifo outputFifo;
    PathMixer mixer;
    PublishedLength mixerLatency;
    BypassDelay bypassDelay;
    LoudnessMeters meters;
    LevelMatch match;
};
