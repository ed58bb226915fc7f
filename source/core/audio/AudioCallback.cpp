#include "core/audio/AudioCallback.h"

#include "dsp/simd/BlockOperations.h"

#include <algorithm>
#include <cmath>

namespace
{
constexpr double lowestWorkingRate = 44100.0;
constexpr int longestWorkingBlock = 8192;
constexpr int longestDecimationFactor = 8;

/** Above any level that audio has, and far below where a recursive filter or a meter overflows. */
constexpr float largestMagnitude = 1.0e9f;

/** A host hands over old data in outputs that have no input. */
void clearOutputsWithoutInput (juce::AudioBuffer<float>& buffer, int inputCount, int outputCount) noexcept
{
    for (int channel = inputCount; channel < std::min (outputCount, buffer.getNumChannels()); ++channel)
        buffer.clear (channel, 0, buffer.getNumSamples());
}

bool isStereoBand (const PluginModel& model, int band) noexcept
{
    return model.getBandValue (band, Settings::Parameter::midSide) == 0.5f;
}
} // namespace

AudioCallback::AudioCallback (PluginModel& modelToUse,
                              BandEngine& engineToUse,
                              LiveAnalysis& analysisToUse,
                              TrackAudition& auditionToUse,
                              const HostTraits& hostToUse,
                              const HostDescription& descriptionToUse,
                              std::function<bool()> isOfflineToUse)
    : model (modelToUse),
      engine (engineToUse),
      analysis (analysisToUse),
      audition (auditionToUse),
      host (hostToUse),
      description (descriptionToUse),
      isOffline (std::move (isOfflineToUse)),
      inputFifo (2, longestDecimationFactor + 1),
      outputFifo (2, longestDecimationFactor + 1),
      bypassDelay (maxBaseLatencySamples + longestDecimationFactor)
{
}

void AudioCallback::prepare()
{
    const auto channels = std::clamp (model.numChannels.load(), 0, 2);
    const auto announced = model.maxBlockSize.load();

    // Longer blocks pass by, so nothing is kept for them.
    const auto blockSize = announced <= longestWorkingBlock ? std::max (0, announced) : 0;

    // One host block and what the block before left over, which is less than the factor.
    const auto fifoCapacity = std::max (2 * blockSize, blockSize + longestDecimationFactor + 1);
    const auto blockCapacity = std::max (2 * blockSize, blockSize + longestDecimationFactor);

    rateConverter.setSampleRate (model.sampleRate);
    rateConverter.buildFilters();
    inputFifo.resize (channels, fifoCapacity);
    outputFifo.resize (channels, fifoCapacity);
    inputBlock.setSize (channels, blockCapacity);
    outputBlock.setSize (channels, blockCapacity);
    inputBlock.clear();
    outputBlock.clear();

    // Covers what a block that is no multiple of the factor leaves in the input FIFO.
    outputFifo.write (outputBlock.getArrayOfReadPointers(), channels, model.decimationFactor);

    if (model.sampleRate > 0.0)
        meters.prepare (model.sampleRate);
}

void AudioCallback::updateLatency (int base, bool always) noexcept
{
    const auto withFifos = base + (model.fifosEngaged ? model.decimationFactor.load() : 0);

    if (always || mixerLatency.latest() != base)
        mixerLatency.publish (base);

    if (always || bypassDelay.length() != withFifos)
        bypassDelay.setLength (withFifos);
}

void AudioCallback::process (juce::AudioBuffer<float>& buffer,
                             int inputCount,
                             int outputCount,
                             juce::AudioPlayHead* playHead) noexcept
{
    recordThreadPriority();
    const juce::ScopedNoDenormals noDenormals;
    model.audioCallbackSeen = true;
    updateTransport (playHead);

    if (! canProcess (inputCount, outputCount, buffer.getNumChannels()))
    {
        clearOutputsWithoutInput (buffer, inputCount, outputCount);
        model.currentBlockSize = buffer.getNumSamples();
        return;
    }

    const auto sampleCount = buffer.getNumSamples();
    auto* const* channels = buffer.getArrayOfWritePointers();

    if (audition.play (channels, inputCount, sampleCount))
    {
        model.currentBlockSize = sampleCount;
        return;
    }

    const auto snapshot = takeSnapshot();
    const auto longestPiece = model.maxBlockSize.load();

    // Usually one piece; more when the host's block is larger than it announced.
    for (int start = 0; start == 0 || start < sampleCount; start += longestPiece)
    {
        float* piece[2] { channels[0] + start, inputCount > 1 ? channels[1] + start : nullptr };
        processPiece (snapshot, piece, inputCount, std::min (longestPiece, sampleCount - start));
    }
}

void AudioCallback::processBypassed (juce::AudioBuffer<float>& buffer, int inputCount, int outputCount) noexcept
{
    bypassDelay.process (buffer.getArrayOfWritePointers(),
                         std::min ({ buffer.getNumChannels(), inputCount, 2 }),
                         buffer.getNumSamples());
    clearOutputsWithoutInput (buffer, inputCount, outputCount);
}

void AudioCallback::recordThreadPriority() noexcept
{
    const auto priority = description.threadPriority();
    model.threadPriority = priority;

    // A session may bring a higher one at this moment.
    for (auto highest = model.maxThreadPriority.load();
         priority > highest && ! model.maxThreadPriority.compare_exchange_weak (highest, priority);)
    {
    }
}

void AudioCallback::updateTransport (juce::AudioPlayHead* playHead) noexcept
{
    using Position = juce::Optional<juce::AudioPlayHead::PositionInfo>;
    model.transport.update (playHead != nullptr ? playHead->getPosition() : Position {}, host.hostIsWavelab);
    model.channels.fire (Channels::transportPlaying);
}

bool AudioCallback::canProcess (int inputCount, int outputCount, int bufferChannelCount) const noexcept
{
    const auto blockSize = model.maxBlockSize.load();

    return model.sampleRate >= lowestWorkingRate && blockSize > 0 && blockSize <= longestWorkingBlock
           && ! host.hostIsAuval && (inputCount == 1 || inputCount == 2) && inputCount == outputCount
           && inputCount == model.numChannels && inputCount <= bufferChannelCount;
}

void AudioCallback::processPiece (const Snapshot& snapshot,
                                  float* const* channels,
                                  int channelCount,
                                  int sampleCount) noexcept
{
    model.currentBlockSize = sampleCount;
    model.fifosEngaged = true;

    const auto toProcess = takeInput (channels, channelCount, sampleCount);
    model.samplesToProcess = toProcess;

    if (toProcess > 0)
    {
        engine.serviceNext (serviceOfNow());
        filter (snapshot, toProcess);
        outputFifo.write (outputBlock.getArrayOfReadPointers(), channelCount, toProcess);
    }

    outputFifo.read (channels, channelCount, sampleCount);

    if (! snapshot.mainBypass)
        applyOutputGain (channels, channelCount, sampleCount);

    updateLevelMatch (snapshot);
}

BandEngine::Service AudioCallback::serviceOfNow() const
{
    if (! isOffline())
        return BandEngine::Service::realTime;

    // A guess from a thread's priority may be wrong, and somebody may listen.
    return host.reportsOfflineRendering ? BandEngine::Service::offlineAndWait : BandEngine::Service::offline;
}

int AudioCallback::takeInput (const float* const* channels, int channelCount, int sampleCount) noexcept
{
    const auto factor = model.decimationFactor.load();

    // A sample that is no number would stay in a recursive filter for ever, so none gets that far. Where nothing waits
    // and nothing would be left over, the FIFO would only copy.
    if (inputFifo.numReady() == 0 && sampleCount % factor == 0)
    {
        for (int channel = 0; channel < channelCount; ++channel)
            BlockOperations::limitToFinite (
                channels[channel], largestMagnitude, inputBlock.getWritePointer (channel), sampleCount);

        return sampleCount;
    }

    inputFifo.write (channels, channelCount, sampleCount);
    const auto ready = inputFifo.numReady();
    const auto toProcess = ready - ready % factor;
    inputFifo.read (inputBlock.getArrayOfWritePointers(), channelCount, toProcess);

    for (int channel = 0; channel < channelCount; ++channel)
        BlockOperations::limitToFinite (
            inputBlock.getReadPointer (channel), largestMagnitude, inputBlock.getWritePointer (channel), toProcess);

    return toProcess;
}

void AudioCallback::filter (const Snapshot& snapshot, int sampleCount) noexcept
{
    if (const auto latency = mixerLatency.takeNew())
        mixer.setLatency (*latency);

    const auto lowCount = sampleCount / model.decimationFactor;
    const auto* left = inputBlock.getReadPointer (0);

    if (model.isStereo)
    {
        const auto* right = inputBlock.getReadPointer (1);
        rateConverter.decimateStereo (left, right, sampleCount);
        analysis.feedAnalysis (
            rateConverter.outputLeft(), rateConverter.outputRight(), lowCount, left, right, sampleCount);
        filterStereo (snapshot, sampleCount);
    }
    else
    {
        rateConverter.decimateSingle (left, sampleCount);
        analysis.feedAnalysis (rateConverter.outputLeft(), nullptr, lowCount, left, nullptr, sampleCount);
        filterSingle (snapshot, sampleCount);
    }

    measure (snapshot, sampleCount);
}

void AudioCallback::measure (const Snapshot& snapshot, int sampleCount) noexcept
{
    const auto channelsOf = [stereo = model.isStereo.load()] (const juce::AudioBuffer<float>& block) {
        return orvik::ChannelPointers { block.getReadPointer (0), stereo ? block.getReadPointer (1) : nullptr };
    };

    meters.process (
        channelsOf (inputBlock), channelsOf (outputBlock), sampleCount, ! snapshot.soloActive && ! snapshot.mainBypass);
}

void AudioCallback::updateLevelMatch (const Snapshot& snapshot) noexcept
{
    if (model.editorClosed || snapshot.soloActive || ! model.transport.isPlayingOrAlwaysRunning()
        || snapshot.mainBypass)
        return;

    match.update (meters.matchInputLoudness(), meters.matchOutputLoudness());
    model.levelMatchPointer.store (match.pointerGain(), std::memory_order_relaxed);
}

AudioCallback::Snapshot AudioCallback::takeSnapshot() const noexcept
{
    const auto solo = model.solo.load();
    const auto paths = model.paths.load();
    Snapshot snapshot { .soloActive = solo.active,
                        .mainBypass = model.mainBypass(),
                        .useStereo = paths.stereo,
                        .useMidSide = paths.midSide,
                        .phase = model.filterPhase() };

    // A soloed band keeps only its own path.
    if (solo.active && solo.band >= 0)
    {
        if (isStereoBand (model, solo.band))
            snapshot.useMidSide = false;
        else
            snapshot.useStereo = false;
    }

    return snapshot;
}

void AudioCallback::filterStereo (const Snapshot& snapshot, int sampleCount) noexcept
{
    const auto* left = inputBlock.getReadPointer (0);
    const auto* right = inputBlock.getReadPointer (1);
    const auto* lowLeft = rateConverter.outputLeft();
    const auto* lowRight = rateConverter.outputRight();
    PathResults results;

    if (snapshot.useMidSide)
        mixer.split (left, right, sampleCount, lowLeft, lowRight, sampleCount / model.decimationFactor);

    if (snapshot.useStereo)
    {
        auto& stereo = engine.block (BlockProcessorMode::stereo);
        stereo.processStereo (left, right, lowLeft, lowRight, sampleCount, snapshot.soloActive, snapshot.phase);
        results.stereoLeft = stereo.outputLeft();
        results.stereoRight = stereo.outputRight();
    }

    if (snapshot.useMidSide)
    {
        auto& mid = engine.block (BlockProcessorMode::mid);
        auto& side = engine.block (BlockProcessorMode::side);
        mid.processSingle (mixer.mid(), mixer.midLow(), sampleCount, snapshot.soloActive, snapshot.phase);
        side.processSingle (mixer.side(), mixer.sideLow(), sampleCount, snapshot.soloActive, snapshot.phase);
        results.mid = mid.outputLeft();
        results.side = side.outputLeft();
    }

    mixer.mix (left,
               right,
               results,
               sampleCount,
               snapshot.useStereo,
               snapshot.useMidSide,
               outputBlock.getWritePointer (0),
               outputBlock.getWritePointer (1));
}

void AudioCallback::filterSingle (const Snapshot& snapshot, int sampleCount) noexcept
{
    auto& single = engine.block (BlockProcessorMode::stereo);
    single.processSingle (
        inputBlock.getReadPointer (0), rateConverter.outputLeft(), sampleCount, snapshot.soloActive, snapshot.phase);

    BlockOperations::convert (single.outputLeft(), outputBlock.getWritePointer (0), sampleCount);
}

void AudioCallback::applyOutputGain (float* const* channels, int channelCount, int sampleCount) const noexcept
{
    const auto gain = std::pow (10.0f, model.outputGainDb() / 20.0f);

    if (gain == 1.0f)
        return;

    for (int channel = 0; channel < channelCount; ++channel)
        juce::FloatVectorOperations::multiply (channels[channel], gain, sampleCount);
}
