#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>

/** An audio file of one of the kinds that the product reads: WAV, AIFF, FLAC and MP3. One thread. */
class AudioInput
{
public:
    /** Opens the file. Throws CommandError when it cannot be read, or has no sound. */
    explicit AudioInput (const juce::File& file);
    ~AudioInput();

    AudioInput (const AudioInput&) = delete;
    AudioInput& operator= (const AudioInput&) = delete;

    [[nodiscard]] double sampleRate() const noexcept { return reader->sampleRate; }
    [[nodiscard]] int channelCount() const noexcept { return static_cast<int> (reader->numChannels); }
    [[nodiscard]] juce::int64 length() const noexcept { return reader->lengthInSamples; }

    /** "WAV", "AIFF", "FLAC" or "MP3". */
    [[nodiscard]] std::string formatName() const;

    /** Reads `count` samples from `start` on into the front of `block`. Throws CommandError when the file cannot be
        read to its end, or ends before its header says so. */
    void read (juce::AudioBuffer<float>& block, juce::int64 start, int count);

private:
    class WatchedStream;

    void open();
    void openMp3();
    void openReader (juce::AudioFormat& format, std::unique_ptr<juce::InputStream> source);
    [[noreturn]] void refuseDamaged() const;

    juce::File file;
    std::unique_ptr<juce::AudioFormatReader> reader;

    /** Owned by the reader. */
    WatchedStream* stream = nullptr;
};
