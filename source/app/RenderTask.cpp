#include "app/RenderTask.h"

#include "app/BandDescription.h"
#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/FittedBandsChoice.h"
#include "app/Interrupt.h"
#include "app/OutputFormat.h"
#include "app/PresetChoice.h"
#include "app/ResponseNotes.h"
#include "app/ServedAudio.h"
#include "app/StandardStreams.h"
#include "app/StepNotes.h"
#include "files/OutputPlace.h"

#include <algorithm>
#include <optional>

namespace
{
SoundEncoding encodingFor (const RenderRequest& request, const AudioInput& source)
{
    requireServedAudio (source, request.input);
    return OutputFormat::choose (request.format, request.output, source.encoding());
}

/** Looks before anything is opened. */
const RenderRequest& checked (const RenderRequest& request)
{
    if (request.existing == RenderRequest::Existing::refuse && ! StandardStreams::isOutput (request.output)
        && isThere (request.output))
        throw CommandError (ExitCode::unwritableOutput,
                            "'" + request.output + "' is there already, and --no-overwrite was given.");

    request.requireReferencesStay();

    if (request.existing == RenderRequest::Existing::replaceOwn && ! StandardStreams::isOutput (request.output)
        && OutputPlace::holdsForeignSound (fileFor (request.output)))
        throw CommandError (ExitCode::unwritableOutput,
                            "'" + request.output
                                + "' would be replaced, and does not say that SOLVANE made it. If it was meant to be a "
                                  "reference, OUT was forgotten; if it is OUT, --overwrite replaces it.");

    return request;
}

/** What is lost where the container cannot hold the width of the input, and nobody asked for another. */
std::optional<std::string> noteOnWidth (const SoundEncoding& from, const SoundEncoding& to, const std::string& format)
{
    const auto bits = to.wholeNumberBits();
    const auto lostBits = from.wholeNumberBits() > bits;

    if (! format.empty() || bits == 0 || ! (from.keepsOvers() || lostBits))
        return {};

    return "the input has "
           + (lostBits ? std::to_string (from.wholeNumberBits()) + " bits" : std::string ("floating point"))
           + ", which " + SoundEncoding::containerName (to.container) + " does not hold: the result has "
           + std::to_string (bits) + " bits.";
}

constexpr int listeningBlock = 4096;

/** Of a task that begins with it. */
constexpr double shareOfListening = 0.5;

void hear (Listener& listener, const juce::AudioBuffer<float>& block, int start, int count)
{
    listener.process (block.getReadPointer (0, start),
                      block.getNumChannels() == 2 ? block.getReadPointer (1, start) : nullptr,
                      count);
}

/** Where the result will be other than the settings let one expect. */
std::vector<std::string> notesOn (const EqualiserSettings& settings, OfflineRenderer& renderer)
{
    const auto& model = renderer.processor().model;
    auto notes = stepNotes (settings, model);

    if (model.filterMode() == FilterMode::master && ! model.canUseMasterMode())
        notes.emplace_back (
            "Master is made for gains within 4 dB and a Q of up to 1.5, and holds larger gains at 4 dB. "
            "Use --mode mix for more.");

    if (settings.phase != model.filterPhase())
        notes.emplace_back ("above 96 kHz the phase is always linear.");

    const auto refused = renderer.pathsWithRefusedHighBands();

    for (const auto* path : refused)
        notes.push_back (std::string ("the cuts above 1500 Hz on ") + path
                         + " are too broad and deep for minimum phase, so no band above 1500 Hz does anything there. "
                           "Use --phase linear.");

    const auto needsStereo = [] (const BandOption& band) { return band.isHeard() && band.midSide != 0.5f; };

    if (! model.isStereo && std::any_of (settings.bands.begin(), settings.bands.end(), needsStereo))
        notes.emplace_back ("bands on mid or side do nothing in a mono file.");

    if (settings.bypassed)
        notes.emplace_back ("the session's bypass is left out: its bands act.");

    // In solo most frequencies are meant to be silent.
    if (! settings.bands.empty() && ! model.soloActive())
    {
        const HeardResponse heard (model.sampleRate, model.isStereo ? 2 : 1, settings);
        const auto more = responseNotes (renderer.processor(), heard, ! refused.empty());
        notes.insert (notes.end(), more.begin(), more.end());
    }

    return notes;
}
} // namespace

void RenderRequest::requireReferencesStay() const
{
    for (const auto& reference : references)
        if (! StandardStreams::isOutput (output) && ! StandardStreams::isInput (reference)
            && OutputPlace::isSameFile (fileFor (output), fileFor (reference)))
            throw CommandError (ExitCode::unwritableOutput, "'" + output + "' is what is read; it would be lost.");
}

RenderTask::RenderTask (const RenderRequest& request, const Progress& listening)
    : source (checked (request).input),
      encoding (encodingFor (request, source)),
      target (request.output,
              { encoding, source.sampleRate(), source.channelCount(), source.length(), source.extras() }),
      settings (settingsFor (request, listening)),
      renderer (source.sampleRate(), source.channelCount(), request.blockSize, settings),
      notFiniteBefore (source.notFiniteCount())
{
    outcome.input = request.input;
    outcome.output = request.output;
    outcome.inputFormat = source.formatName();
    outcome.outputFormat = encoding.description();
    outcome.sampleRate = source.sampleRate();
    outcome.channels = source.channelCount();
    outcome.seconds = static_cast<double> (source.length()) / source.sampleRate();
    outcome.delaySamples = renderer.delaySamples();
    selectPreset (request.preset);
    describeSettings();
    const auto notes = notesOn (settings, renderer);
    outcome.notes.insert (outcome.notes.end(), notes.begin(), notes.end());

    if (const auto note = noteOnWidth (source.encoding(), encoding, request.format); note.has_value())
        outcome.notes.push_back (*note);

    if (listener.has_value())
        done.store (shareOfListening, std::memory_order_relaxed);
}

void RenderTask::selectPreset (const std::string& preset)
{
    if (preset.empty())
        return;

    auto& processor = renderer.processor();
    const auto& chosen = PresetChoice::find (processor.presets, preset);
    processor.model.setParameterValue (ParameterIds::currentPreset, static_cast<float> (chosen.id));
    outcome.preset = (processor.presets.groupName (chosen) + "/" + chosen.name).toStdString();
}

EqualiserSettings RenderTask::settingsFor (const RenderRequest& request, const Progress& listening)
{
    auto result = request.settings;

    if (! request.smartBandsTarget)
        return result;

    auto& chosen = outcome.smartBands.emplace();
    chosen.target = request.smartBandsTarget (source.sampleRate());
    outcome.notes = chosen.target.notes;

    Listener input (source.sampleRate(), source.channelCount());
    juce::AudioBuffer<float> block (source.channelCount(), listeningBlock);

    for (juce::int64 start = 0; start < source.length(); start += listeningBlock)
    {
        Interrupt::throwIfRequested();
        const auto count = static_cast<int> (std::min<juce::int64> (listeningBlock, source.length() - start));
        source.read (block, start, count);
        hear (input, block, 0, count);

        if (listening)
            listening (shareOfListening * static_cast<double> (start) / static_cast<double> (source.length()));
    }

    chosen.before = TargetDistance::of (input.finish(), chosen.target);
    chosen.fit = request.fit;

    if (request.fit.has_value())
    {
        const auto fitted =
            FittedBandsChoice::of (chosen.before, source.sampleRate(), result, request.fit->amountPercent);
        chosen.bands = fitted.bands;
        result.outputGainDb = request.fit->levels ? fitted.outputGainDb : result.outputGainDb;
    }
    else
    {
        chosen.bands = chooseSmartBands (chosen.before, result.mode);
    }

    result.bands = chosen.bands;
    listener.emplace (source.sampleRate(), source.channelCount());

    const auto heard = input.notes ("the input");
    outcome.notes.insert (outcome.notes.end(), heard.begin(), heard.end());

    if (chosen.bands.empty())
        outcome.notes.emplace_back (request.fit.has_value() && request.fit->amountPercent < 100.0f
                                        ? "no band was made: what --amount leaves to do is nowhere as much as 0.5 dB."
                                        : "no band was made: nothing is as far as 0.5 dB from the target.");

    return result;
}

void RenderTask::describeSettings()
{
    auto& processor = renderer.processor();
    const auto& model = processor.model;
    outcome.mode = model.filterMode();
    outcome.phase = model.filterPhase();
    outcome.gainScalePercent = model.gainScalePercent();
    outcome.outputGainDb = model.outputGainDb();

    for (int index = 0; index < static_cast<int> (settings.bands.size()); ++index)
        if (const auto& band = settings.bands[static_cast<std::size_t> (index)]; band.isHeard())
            outcome.bands.push_back (
                { index + 1, band, actingGain (processor, index), describeBand (processor, index) });
}

void RenderTask::run()
{
    const auto before = listener.has_value() ? shareOfListening : 0.0;

    renderer.render (
        source.length(),
        [&] (juce::AudioBuffer<float>& block, juce::int64 start, int count)
        {
            Interrupt::throwIfRequested();
            source.read (block, start, count);
            const auto rendered = static_cast<double> (start) / static_cast<double> (source.length());
            done.store (before + (1.0 - before) * rendered, std::memory_order_relaxed);
        },
        [&] (const juce::AudioBuffer<float>& block, int start, int count)
        {
            target.write (block, start, count);

            if (listener.has_value())
                hear (*listener, block, start, count);
        });

    Interrupt::throwIfRequested();
    target.commit();
    outcome.peak = target.peak();
    outcome.notFinite = source.notFiniteCount() - notFiniteBefore;

    if (listener.has_value())
    {
        auto& chosen = *outcome.smartBands;
        chosen.after = TargetDistance::of (listener->finish(), chosen.target);

        // What is nothing but rounding is not worth a word.
        constexpr auto noticeableDb = 0.05f;

        if (chosen.after.rms > chosen.before.rms + noticeableDb)
            outcome.notes.emplace_back ("the result is further from the target than the input was."
                                        + std::string (chosen.fit.has_value() ? "" : " --fit may come nearer."));
    }

    outcome.clipped = encoding.wholeNumberBits() > 0 ? target.clippedCount() : 0;

    const auto more = source.notes ("the input", outcome.notFinite);
    outcome.notes.insert (outcome.notes.begin(), more.begin(), more.end());

    if (outcome.clipped > 0)
        outcome.notes.push_back (std::to_string (outcome.clipped)
                                 + " samples were louder than full scale and were cut. Lower --output-gain, or choose "
                                   "a --format of floating point.");
}
