#include "app/RenderCommand.h"

#include "app/AudioInput.h"
#include "app/AudioOutput.h"
#include "app/BandDescription.h"
#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/OfflineRenderer.h"
#include "app/OutputFormat.h"
#include "app/PresetChoice.h"
#include "app/ProgressBar.h"
#include "app/ResponseNotes.h"
#include "app/ServedAudio.h"
#include "app/StandardStreams.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <optional>
#include <sstream>

namespace
{
std::string peakText (float peak)
{
    if (peak <= 0.0f)
        return "silent";

    const auto level = std::round (2000.0 * std::log10 (static_cast<double> (peak))) / 100.0;
    std::ostringstream text;
    text << "peak " << std::fixed << std::setprecision (2) << (level == 0.0 ? 0.0 : level) << " dBFS";
    return text.str();
}

/** Says where the result will be other than the settings let one expect. */
void noteSurprises (const EqualiserSettings& settings, OfflineRenderer& renderer)
{
    const auto& model = renderer.processor().model;

    if (model.filterMode() == FilterMode::master && ! model.canUseMasterMode())
        std::cerr << "Note: Master is made for gains within 4 dB and a Q of up to 1.5, and holds larger gains at 4 dB. "
                     "Use --mode mix for more.\n";

    if (settings.phase != model.filterPhase())
        std::cerr << "Note: above 96 kHz the phase is always linear.\n";

    const auto refused = renderer.pathsWithRefusedHighBands();

    for (const auto* path : refused)
        std::cerr << "Note: the cuts above 1500 Hz on " << path
                  << " are too broad and deep for minimum phase, so no band above 1500 Hz does anything there. "
                     "Use --phase linear.\n";

    const auto needsStereo = [] (const BandOption& band) { return band.midSide != 0.5f; };

    if (! model.isStereo && std::any_of (settings.bands.begin(), settings.bands.end(), needsStereo))
        std::cerr << "Note: bands on mid or side do nothing in a mono file.\n";

    // In solo most frequencies are meant to be silent.
    if (! settings.bands.empty() && ! model.soloActive())
    {
        const HeardResponse heard (model.sampleRate, model.isStereo ? 2 : 1, settings);

        for (const auto& note : responseNotes (renderer.processor(), heard, ! refused.empty()))
            std::cerr << "Note: " << note << '\n';
    }
}
} // namespace

void RenderCommand::run() const
{
    std::optional<StandardStreams::PrintToErrors> outputIsSound;

    if (StandardStreams::isMeant (output))
        outputIsSound.emplace();

    auto source = AudioInput::fromArgument (input);
    requireServedAudio (source, input);
    const auto storedAs = OutputFormat::choose (format, output, source.encoding());

    OfflineRenderer renderer (source.sampleRate(), source.channelCount(), blockSize, settings);
    selectPreset (renderer.processor());
    noteSurprises (settings, renderer);

    AudioOutput result (output,
                        { storedAs, source.sampleRate(), source.channelCount(), source.length(), source.extras() });

    {
        ProgressBar progress ("Rendering");

        renderer.render (
            source.length(),
            [&] (juce::AudioBuffer<float>& block, juce::int64 start, int count)
            {
                Interrupt::throwIfRequested();
                source.read (block, start, count);
                progress.show (static_cast<double> (start) / static_cast<double> (source.length()));
            },
            [&] (const juce::AudioBuffer<float>& block, int start, int count) { result.write (block, start, count); });
    }

    Interrupt::throwIfRequested();
    result.commit();
    report (source, storedAs, renderer, result);
}

void RenderCommand::selectPreset (VelmoraAudioProcessor& processor) const
{
    if (! preset.empty())
        processor.model.setParameterValue (ParameterIds::currentPreset,
                                           static_cast<float> (PresetChoice::find (processor.presets, preset).id));
}

void RenderCommand::report (const AudioInput& source,
                            const SoundEncoding& storedAs,
                            OfflineRenderer& renderer,
                            const AudioOutput& result) const
{
    const auto& model = renderer.processor().model;

    std::cout << "Input:  " << input << " (" << source.formatName() << ", " << source.sampleRate() << " Hz, "
              << (source.channelCount() == 1 ? "mono" : "stereo") << ", " << std::fixed << std::setprecision (2)
              << static_cast<double> (source.length()) / source.sampleRate() << " s)\n"
              << "Filter: " << (model.filterMode() == FilterMode::mix ? "Mix" : "Master") << ", "
              << (model.filterPhase() == FilterPhase::linear ? "linear" : "minimum") << " phase, "
              << renderer.delaySamples() << " samples of delay taken off\n";

    for (int band = 0; band < static_cast<int> (settings.bands.size()); ++band)
        std::cout << "  Band " << band + 1 << ": " << describeBand (renderer.processor(), band) << '\n';

    if (model.gainScalePercent() != 100.0f)
        std::cout << "  Gain scale " << model.gainScalePercent() << " %\n";

    if (model.outputGainDb() != 0.0f)
        std::cout << "  Output gain " << model.outputGainDb() << " dB\n";

    if (! preset.empty())
    {
        const auto& presets = renderer.processor().presets;
        const auto& chosen = presets.currentPreset();
        std::cout << "  Preset " << presets.groupName (chosen) << '/' << chosen.name
                  << " (a target; it changes no sound)\n";
    }

    std::cout << "Result: " << output << " (" << storedAs.description() << ", " << peakText (result.peak()) << ")\n";

    if (result.clippedCount() > 0 && storedAs.wholeNumberBits() > 0)
        std::cerr << "Note: " << result.clippedCount()
                  << " samples were louder than full scale and were cut. Lower --output-gain, or choose a --format of "
                     "floating point.\n";
}
