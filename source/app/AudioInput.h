#pragma once

#include "files/SoundReader.h"

#include <memory>
#include <string>

/** A sound file that is read, of any kind that SoundEncoding knows. One thread. */
class AudioInput
{
public:
    /** Opens the file. Throws CommandError when it cannot be read, has no sound, or is damaged as far as that can be
        told without decoding it. */
    explicit AudioInput (const juce::File& file);

    /** A file as the command line names it: `-` is the standard input, which is kept in a temporary file, as some kinds
        of files are not read in one go. Throws CommandError. */
    [[nodiscard]] static AudioInput fromArgument (const std::string& path);

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

private:
    AudioInput (std::unique_ptr<juce::InputStream> stream, std::string nameForSentences);

    [[noreturn]] void refuseDamaged() const;

    /** In quotes. */
    const std::string name;
    std::unique_ptr<SoundReader> reader;
};
