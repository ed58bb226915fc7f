#include "app/AudioOutput.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/StandardOutputFile.h"
#include "app/StandardStreams.h"
#include "files/AtomicFile.h"
#include "files/OutputPlace.h"

#include <algorithm>
#include <cmath>

namespace
{
void requireThatItFits (const AudioOutput::Description& description)
{
    const auto& [encoding, sampleRate, channels, length, extras] = description;

    if (const auto refusal = SoundWriter::refusal (encoding, sampleRate, channels, length); refusal.has_value())
        throw CommandError (ExitCode::unwritableOutput,
                            "The result could not be made: " + encoding.description() + " " + *refusal + ".");
}

std::unique_ptr<IOutputFile> checkedPlace (const std::string& path)
{
    if (StandardStreams::isOutput (path))
        return std::make_unique<StandardOutputFile>();

    const auto file = fileFor (path);

    if (const auto refusal = OutputPlace::refusal (file, OutputPlace::Kind::sound, path); refusal.has_value())
        throw CommandError (ExitCode::unwritableOutput, *refusal);

    return std::make_unique<AtomicFile> (file);
}
} // namespace

AudioOutput::AudioOutput (const std::string& path, const Description& description)
    : name (StandardStreams::isOutput (path) ? "The standard output" : "'" + path + "'"), file (checkedPlace (path))
{
    requireThatItFits (description);
    auto stream = file->open();

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

    if (! writer->writeFromAudioSampleBuffer (block, start, count) || file->hasFailed())
        fail ("could not be written");
}

void AudioOutput::commit()
{
    const auto stored = writer->finish();
    writer.reset();

    if (! stored || file->hasFailed())
        fail ("could not be written");

    if (! file->commit())
        fail ("could not be written to");
}

void AudioOutput::fail (const std::string& what)
{
    writer.reset();
    throw CommandError (ExitCode::unwritableOutput, name + " " + what + ": " + file->reason() + ".");
}
