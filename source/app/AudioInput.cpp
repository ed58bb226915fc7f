#include "app/AudioInput.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/StandardStreams.h"

namespace
{
std::string quoted (const juce::File& file)
{
    return "'" + file.getFullPathName().toStdString() + "'";
}

std::unique_ptr<juce::InputStream> streamOf (const juce::File& file)
{
    if (! file.exists())
        throw CommandError (ExitCode::unreadableInput, "There is no file " + quoted (file) + ".");

    if (file.isDirectory())
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " is a folder, not an audio file.");

    auto stream = file.createInputStream();

    if (stream == nullptr)
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " may not be read by this user.");

    return stream;
}
} // namespace

AudioInput AudioInput::fromArgument (const std::string& path)
{
    if (StandardStreams::isMeant (path))
        return { StandardStreams::spoolInput(), "The standard input" };

    return AudioInput (fileFor (path));
}

AudioInput::AudioInput (const juce::File& file) : AudioInput (streamOf (file), quoted (file)) {}

AudioInput::AudioInput (std::unique_ptr<juce::InputStream> stream, std::string nameForSentences)
    : name (std::move (nameForSentences))
{
    auto opened = SoundReader::open (stream);
    reader = std::move (opened.reader);

    switch (opened.failure)
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
    if (! reader->read (&block, 0, count, start, true, true))
        refuseDamaged();
}
