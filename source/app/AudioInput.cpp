#include "app/AudioInput.h"

#include "app/CommandError.h"
#include "app/InputFile.h"
#include "app/Interrupt.h"
#include "app/Spool.h"
#include "app/StandardStreams.h"
#include "files/FileInput.h"

#include <cmath>
#include <unistd.h>

namespace
{
/** As sentences begin with it. */
std::string nameOf (const std::string& path)
{
    return StandardStreams::isInput (path) ? "The standard input" : "'" + path + "'";
}

InputFile fileOf (const std::string& path)
{
    if (! StandardStreams::isInput (path))
        return InputFile::open (path);

    if (::isatty (STDIN_FILENO) != 0)
        throw CommandError (ExitCode::unreadableInput,
                            "The standard input is a terminal. A sound file has to come through a pipe.");

    return { Spool::take (STDIN_FILENO, "The standard input"), true };
}
} // namespace

AudioInput::AudioInput (const std::string& path) : name (nameOf (path))
{
    auto source = fileOf (path);
    cameThroughPipe = source.cameThroughPipe;

    // Gives nothing more after an interrupt, so that looking through a long file is broken off.
    std::unique_ptr<juce::InputStream> stream =
        std::make_unique<FileInput> (std::move (source.file), [] { return ! Interrupt::isRequested(); });
    auto found = SoundReader::open (stream);
    reader = std::move (found.reader);
    Interrupt::throwIfRequested();

    switch (found.failure)
    {
        case SoundReader::Failure::unknown:
            throw CommandError (ExitCode::unreadableInput,
                                name
                                    + " is not a sound file that can be read. WAV, RF64, W64, AIFF, CAF, FLAC, Ogg "
                                      "Vorbis, Opus and MP3 can.");
        case SoundReader::Failure::damaged:
            refuseDamaged();
        case SoundReader::Failure::empty:
            throw CommandError (ExitCode::unreadableInput, name + " holds no sound.");
        case SoundReader::Failure::none:
            break;
    }
}

void AudioInput::refuseDamaged() const
{
    throw CommandError (ExitCode::unreadableInput, name + " ends before its header says so, or is damaged.");
}

std::string AudioInput::formatName() const
{
    return SoundEncoding::containerName (encoding().container);
}

void AudioInput::read (juce::AudioBuffer<float>& block, juce::int64 start, int count)
{
    const auto isWhole = reader->read (&block, 0, count, start, true, true);
    Interrupt::throwIfRequested();

    if (! isWhole)
        refuseDamaged();

    silenceWhatIsNotFinite (block, count);
}

void AudioInput::silenceWhatIsNotFinite (juce::AudioBuffer<float>& block, int count) noexcept
{
    for (int channel = 0; channel < block.getNumChannels(); ++channel)
    {
        auto* const samples = block.getWritePointer (channel);

        for (int sample = 0; sample < count; ++sample)
            if (! std::isfinite (samples[sample]))
            {
                samples[sample] = 0.0f;
                ++notFinite;
            }
    }
}

std::vector<std::string> AudioInput::notes (const std::string& subject, juce::int64 notFiniteSamples) const
{
    std::vector<std::string> sentences;

    // Out of a pipe nothing else can be expected.
    if (const auto& promised = reader->promisedSize();
        promised.verdict == PromisedSize::Verdict::open && ! cameThroughPipe)
        sentences.push_back ("the header of " + subject + " promises " + std::to_string (promised.promisedBytes)
                             + " bytes of sound, as that of a file out of a pipe does, and there are "
                             + std::to_string (promised.presentBytes) + ". They were read to the end.");

    if (notFiniteSamples > 0)
        sentences.push_back (std::to_string (notFiniteSamples)
                             + (notFiniteSamples == 1 ? " sample of " : " samples of ") + subject
                             + (notFiniteSamples == 1 ? " is no finite number and counts as silence."
                                                      : " are no finite numbers and count as silence."));

    return sentences;
}
