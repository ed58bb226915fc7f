#include "app/OfflineRenderer.h"

#include "dsp/design/MinimumPhase.h"

#include <algorithm>

namespace
{
/** Each processed block hands new taps to one of four BlockProcessors, and a rebuild takes a turn of its own. */
constexpr int turnsToSettle = 3 * BandEngine::modeCount;

juce::AudioProcessor::BusesLayout layoutFor (int channelCount)
{
    const auto set = channelCount == 1 ? juce::AudioChannelSet::mono() : juce::AudioChannelSet::stereo();
    juce::AudioProcessor::BusesLayout layout;
    layout.inputBuses.add (set);
    layout.outputBuses.add (set);
    return layout;
}
} // namespace

OfflineRenderer::OfflineRenderer (double sampleRate, int channelCount, int blockSize, const EqualiserSettings& settings)
    : plugin (HostDescription {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone),
      channels (channelCount),
      blockLength (blockSize)
{
    plugin.setBusesLayout (layoutFor (channelCount));
    plugin.setNonRealtime (true);
    plugin.setRateAndBufferSizeDetails (sampleRate, blockSize);
    settings.applyTo (plugin.model);
    plugin.prepareToPlay (sampleRate, blockSize);
    solo = plugin.model.soloActive();
    settle();
}

int OfflineRenderer::delaySamples() const noexcept
{
    return (solo ? soloDelaySamples : plugin.model.baseLatency.load()) + plugin.model.decimationFactor;
}

std::vector<const char*> OfflineRenderer::pathsWithRefusedHighBands()
{
    std::vector<const char*> paths;
    const auto& model = plugin.model;

    if (solo || model.filterPhase() == FilterPhase::linear)
        return paths;

    // The audio thread is this one and the workers have nothing to do offline, so the taps may be read. Without high
    // bands the source is no design but a single 1.
    const auto look = [&] (BlockProcessorMode mode, const char* name)
    {
        const auto source = plugin.bandEngine().block (mode).taps().minimumSource.taps();
        const auto isNothing = [] (double tap) { return tap == 0.0; };

        if (! std::all_of (source.begin() + 1, source.end(), isNothing) && ! MinimumPhase().reflect (source))
            paths.push_back (name);
    };

    if (model.stereoPathActive())
        look (BlockProcessorMode::stereo, model.isStereo ? "left and right" : "the one channel");

    if (model.midSidePathActive() && model.isStereo)
    {
        look (BlockProcessorMode::mid, "mid");
        look (BlockProcessorMode::side, "side");
    }

    return paths;
}

void OfflineRenderer::settle()
{
    // Turns of one factor's length each, so that every turn is one processed block, and the FIFOs stand afterwards as
    // they did before. Silence leaves every filter at zero.
    const auto factor = plugin.model.decimationFactor.load();

    for (int turn = 0; turn < turnsToSettle; ++turn)
    {
        for (int done = 0; done < factor;)
        {
            juce::AudioBuffer<float> silence (channels, std::min (factor - done, blockLength));
            silence.clear();
            process (silence);
            done += silence.getNumSamples();
        }
    }
}

void OfflineRenderer::process (juce::AudioBuffer<float>& block)
{
    juce::MidiBuffer noMidi;
    plugin.processBlock (block, noMidi);
}

void OfflineRenderer::render (juce::int64 length, const ReadBlock& read, const WriteBlock& write)
{
    juce::AudioBuffer<float> block (channels, blockLength);
    const juce::int64 delay = delaySamples();

    for (juce::int64 position = 0; position < length + delay; position += blockLength)
    {
        block.clear();
        const auto available = static_cast<int> (std::clamp<juce::int64> (length - position, 0, blockLength));

        if (available > 0)
            read (block, position, available);

        process (block);

        const auto first = static_cast<int> (std::clamp<juce::int64> (delay - position, 0, blockLength));
        const auto last = static_cast<int> (std::clamp<juce::int64> (length + delay - position, 0, blockLength));

        if (last > first)
            write (block, first, last - first);
    }
}
