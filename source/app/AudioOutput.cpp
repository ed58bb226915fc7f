#include "app/AudioOutput.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/StandardStreams.h"
#include "files/OutputPlace.h"

#include <algorithm>
#include <cmath>

namespace
{
std::string quoted (const juce::File& file)
{
    return "'" + file.getFullPathName().toStdString() + "'";
}

void requireThatItFits (const AudioOutput::Description& description)
{
    const auto& [encoding, sampleRate, channels, length, extras] = description;

    if (const auto refusal = SoundWriter::refusal (encoding, sampleRate, channels, length); refusal.has_value())
        throw CommandError (ExitCode::unwritableOutput,
                            "The result could not be made: " + encoding.description() + " " + *refusal + ".");
}

juce::File checkedPlace (const std::string& path)
{
    const auto file = fileFor (path);

    if (const auto result = OutputPlace::check (file, OutputPlace::Kind::sound); result.failed())
        throw CommandError (ExitCode::unwritableOutput, result.getErrorMessage().toStdString());

    return file;
}
} // namespace

AudioOutput::AudioOutput (const std::string& path, const Description& description)
    : folder (StandardStreams::isMeant (path) ? std::make_unique<StandardStreams::PrivateFolder>() : nullptr),
      file (folder != nullptr ? folder->file() : checkedPlace (path))
{
    requireThatItFits (description);
    auto stream = file.open();

    if (stream != nullptr)
        writer = SoundWriter::create (
            stream, description.encoding, description.sampleRate, description.channelCount, description.extras);

    if (writer == nullptr)
        fail ("could not be made");
}

AudioOutput::~AudioOutput()
{
    writer.reset();
}

void AudioOutput::inspect (const juce::AudioBuffer<float>& block, int start, int count) noexcept
{
    for (int channel = 0; channel < block.getNumChannels(); ++channel)
    {
        const auto* samples = block.getReadPointer (channel, start);

        for (int sample = 0; sample < count; ++sample)
        {
            const auto magnitude = std::abs (samples[sample]);
            largest = std::max (largest, magnitude);
            clipped += magnitude > 1.0f ? 1 : 0;
        }
    }
}

void AudioOutput::write (const juce::AudioBuffer<float>& block, int start, int count)
{
    inspect (block, start, count);

    if (! writer->writeFromAudioSampleBuffer (block, start, count) || file.hasFailed())
        fail ("could not be written");
}

void AudioOutput::commit()
{
    const auto stored = writer->finish();
    writer.reset();

    if (! stored || file.hasFailed())
        fail ("could not be written");

    if (const auto result = file.commit(); result.failed())
        fail ("could not be put in its place");

    if (folder != nullptr)
        StandardStreams::moveToOutput (file.destination());
}

void AudioOutput::fail (const std::string& what)
{
    writer.reset();
    throw CommandError (ExitCode::unwritableOutput,
                        (folder != nullptr ? "The standard output" : quoted (file.destination())) + " " + what + ": "
                            + file.reason().toStdString() + ".");
}
