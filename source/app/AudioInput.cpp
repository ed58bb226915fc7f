#include "app/AudioInput.h"

#include "app/CommandError.h"

namespace
{
std::string quoted (const juce::File& file)
{
    return "'" + file.getFullPathName().toStdString() + "'";
}
} // namespace

AudioInput::AudioInput (const juce::File& fileToOpen) : file (fileToOpen)
{
    if (! file.exists())
        throw CommandError (ExitCode::unreadableInput, "There is no file " + quoted (file) + ".");

    if (file.isDirectory())
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " is a folder, not an audio file.");

    if (! file.hasReadAccess())
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " may not be read by this user.");

    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    reader.reset (formats.createReaderFor (file));

    if (reader == nullptr)
        throw CommandError (ExitCode::unreadableInput,
                            quoted (file) + " is not a sound file that can be read: WAV, AIFF, FLAC and MP3 can.");

    if (reader->lengthInSamples <= 0 || reader->numChannels == 0)
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " holds no sound.");
}

void AudioInput::read (juce::AudioBuffer<float>& block, juce::int64 start, int count)
{
    if (! reader->read (&block, 0, count, start, true, true))
        throw CommandError (ExitCode::unreadableInput, quoted (file) + " could not be read to its end.");
}
