#pragma once

#include "files/SoundReader.h"

#include <memory>
#include <string>
#include <vector>

/** A sound file that is read, of any kind that SoundEncoding knows. One thread. */
class AudioInput
{
public:
    /** Opens a file as the command line names it; `-` is the standard input. What comes through a pipe is kept in a
        temporary file, as some kinds of files are not read in one go. Throws CommandError when it cannot be read, has
       no sound, or is damaged as far as that can be told without decoding it. */
    explicit AudioInput (const std::string& path);

    AudioInput (const AudioInput&) = delete;
    AudioInput& operator= (const AudioInput&) = delete;

    [[nodiscard]] double sampleRate() const noexcept { return reader->sampleRate; }
    [[nodiscard]] int channelCount() const noexcept { return static_cast<int> (reader->numChannels); }
    [[nodiscard]] juce::int64 length() const noexcept { return reader->lengthInSamples; }

    /** "WAV", "AIFF", "FLAC", "MP3" and so on. */
    [[nodiscard]] std::string formatName() const;

    [[nodiscard]] const SoundEncoding& encoding() const noexcept { return reader->encoding(); }
    [[nodiscard]] const SoundExtras& extras() const noexcept { return reader->extras(); }

    /** Reads `count` samples from `start` on into the front of `block`. Throws CommandError when the file cannot be
        read to its end, or ends before its header says so. */
    void read (juce::AudioBuffer<float>& block, juce::int64 start, int count);

    /** How many samples of any channel that were read so far were no finite numbers. read() gives 0 for them. */
    [[nodiscard]] juce::int64 notFiniteCount() const noexcept { return notFinite; }

    /** What a user should know of the file, in sentences. @param subject what they call it; @param notFiniteSamples how
        many of those that count were no finite numbers */
    [[nodiscard]] std::vector<std::string> notes (const std::string& subject, juce::int64 notFiniteSamples) const;

private:
    [[noreturn]] void refuseDamaged() const;
    void silenceWhatIsNotFinite (juce::AudioBuffer<float>& block, int count) noexcept;

    /** As sentences begin with it. */
    const std::string name;
    std::unique_ptr<SoundReader> reader;
    bool cameThroughPipe = false;
    juce::int64 notFinite = 0;
};
