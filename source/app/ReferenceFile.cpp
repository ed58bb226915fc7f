#include "app/ReferenceFile.h"

#include "app/AudioInput.h"
#include "app/CommandError.h"
#include "app/Interrupt.h"
#include "app/ProgressBar.h"
#include "app/ServedAudio.h"
#include "dsp/rate/ReducedRate.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
constexpr int blockLength = 65536;

/** A file as a source of the framework, from its start on, with silence behind its end. */
class InputSource final : public juce::AudioSource
{
public:
    explicit InputSource (AudioInput& inputToRead) : input (inputToRead) {}

    void prepareToPlay (int, double) override {}
    void releaseResources() override {}

    void getNextAudioBlock (const juce::AudioSourceChannelInfo& info) override
    {
        info.clearActiveBufferRegion();
        const auto count = static_cast<int> (std::clamp<juce::int64> (input.length() - position, 0, info.numSamples));

        if (count == 0)
            return;

        part.setSize (input.channelCount(), count, false, false, true);
        input.read (part, position, count);
        position += count;

        for (int channel = 0; channel < std::min (part.getNumChannels(), info.buffer->getNumChannels()); ++channel)
            info.buffer->copyFrom (channel, info.startSample, part, channel, 0, count);
    }

private:
    AudioInput& input;
    juce::int64 position = 0;
    juce::AudioBuffer<float> part;
};

/** All samples of a file at a session's rate. */
juce::AudioBuffer<float> samplesOf (AudioInput& input, const std::string& path, double sessionRate)
{
    const auto ratio = input.sampleRate() / sessionRate;
    const auto length = std::ceil (static_cast<double> (input.length()) / ratio);

    if (length > static_cast<double> (std::numeric_limits<int>::max()))
        throw CommandError (ExitCode::unsupportedAudio, "'" + path + "' is too long for a reference track.");

    const auto count = static_cast<int> (length);
    juce::AudioBuffer<float> samples (input.channelCount(), count);
    InputSource source (input);
    juce::ResamplingAudioSource converter (&source, false, input.channelCount());
    const auto isConverted = input.sampleRate() != sessionRate;
    converter.setResamplingRatio (ratio);
    converter.prepareToPlay (blockLength, input.sampleRate());

    for (int start = 0; start < count; start += blockLength)
    {
        const juce::AudioSourceChannelInfo part (&samples, start, std::min (blockLength, count - start));
        isConverted ? converter.getNextAudioBlock (part) : source.getNextAudioBlock (part);
    }

    return samples;
}

TrackRange samplesOf (const TimeRange& range, double rate, int count, const std::string& path)
{
    const auto toSample = [&] (double seconds)
    { return static_cast<int> (std::min (std::round (seconds * rate), static_cast<double> (count))); };

    const TrackRange result { toSample (range.start), range.end.has_value() ? toSample (*range.end) : count };

    if (result.first >= count)
        throw CommandError (ExitCode::badArguments,
                            "'" + path + "' ends at " + TimeRange::textOf (count / rate) + ", before --range starts.");

    return result;
}

/** Why a reading is missing, or where it is. */
std::vector<std::string> notesOn (const ReferenceReading& result)
{
    std::vector<std::string> notes;

    if (! result.reading.exists)
        return { "nothing in '" + result.path
                 + "' could be measured: a reading needs more than a second of sound that is louder than -70 LUFS. It "
                   "is left out." };

    std::string bands;

    for (std::size_t band = 0; band < analysisBandCount; ++band)
        if (! std::isfinite (result.reading.bands[band]))
            bands += (bands.empty() ? "" : ", ") + std::to_string (static_cast<int> (analysisCentresHz[band]));

    if (! bands.empty())
        notes.push_back ("'" + result.path + "' is below -70 LUFS at " + bands
                         + " Hz, so the target asks for nothing there.");

    return notes;
}
} // namespace

ReferenceReading measureReference (const ReferenceFile& file, std::optional<double> sessionRate, bool quiet)
{
    AudioInput input (file.path);
    requireServedAudio (input, file.path);

    ReferenceReading result;
    result.path = file.path;
    result.fileRate = input.sampleRate();
    result.sessionRate = sessionRate.value_or (result.fileRate);
    result.seconds = static_cast<double> (input.length()) / result.fileRate;

    ProgressBar progress ("Measuring " + file.path, quiet);
    const auto samples = samplesOf (input, file.path, result.sessionRate);
    const auto count = samples.getNumSamples();

    for (const auto& range : file.ranges)
        result.ranges.push_back (samplesOf (range, result.sessionRate, count, file.path));

    const TrackSamples track { samples.getReadPointer (0),
                               samples.getNumChannels() == 2 ? samples.getReadPointer (1) : nullptr,
                               count };
    result.reading =
        analyseTrack (track,
                      result.ranges,
                      { result.sessionRate, result.fileRate, decimationFactorFor (result.sessionRate).value_or (1) },
                      [&progress] (float percent)
                      {
                          Interrupt::throwIfRequested();
                          progress.show (static_cast<double> (percent) / 100.0);
                      });

    result.notes = input.notes ("'" + file.path + "'", input.notFiniteCount());
    const auto more = notesOn (result);
    result.notes.insert (result.notes.end(), more.begin(), more.end());
    return result;
}
