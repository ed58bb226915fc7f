#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>
#include <string>
#include <vector>

/** How the rendered sound is stored. */
struct OutputFormat
{
    enum class Container
    {
        wav,
        aiff,
        flac
    };

    Container container = Container::wav;

    /** 32 is floating point and serves WAV alone. */
    int bits = 32;

    /** Names for --format: wav-16, wav-24, wav-float, aiff-16, aiff-24, flac-16, flac-24. Throws CommandError. */
    [[nodiscard]] static OutputFormat fromName (const std::string& name);

    /** By the file's ending: floating point for WAV, 24 bits for AIFF and FLAC. Throws CommandError. */
    [[nodiscard]] static OutputFormat fromFile (const juce::File& file);

    /** What is to be stored in `file`: by the name where one is given, else by the file's ending. Throws CommandError
        also where name and ending contradict each other. */
    [[nodiscard]] static OutputFormat choose (const std::string& name, const juce::File& file);

    [[nodiscard]] std::string description() const;
};

/** A sound file under construction. One thread.

    Samples go to a file beside the target, which takes the target's place in commit(). Without that, whether the
    program stops, fails or the disk is full, nothing is left behind and an older file stays as it was.

    Whole numbers are rounded to the nearest, without dither: what came from a file of the same depth and was not
    changed keeps its bits. */
class AudioOutput
{
public:
    /** Throws CommandError when the file cannot be made, or when something stands in its place that is no ordinary
        file or may not be written to. A symbolic link is followed. */
    AudioOutput (const juce::File& target, OutputFormat format, double sampleRate, int channelCount);
    ~AudioOutput();

    AudioOutput (const AudioOutput&) = delete;
    AudioOutput& operator= (const AudioOutput&) = delete;

    /** Appends samples. Throws CommandError when they cannot be stored. */
    void write (const juce::AudioBuffer<float>& block, int start, int count);

    /** Finishes the file and puts it in its place. Throws CommandError. */
    void commit();

    /** Samples of any channel that lay beyond what whole numbers hold, and were cut. */
    [[nodiscard]] juce::int64 clippedCount() const noexcept { return clipped; }

    /** Largest absolute sample so far. */
    [[nodiscard]] float peak() const noexcept { return largest; }

private:
    class CheckedStream;
    struct StreamRecord;

    void requireWritableTarget() const;
    void takePermissionsOfTarget() const;
    [[nodiscard]] bool store (const juce::AudioBuffer<float>& block, int start, int count);
    void inspect (const juce::AudioBuffer<float>& block, int start, int count) noexcept;
    [[noreturn]] void fail (const std::string& what);

    juce::File target;
    juce::File partial;
    OutputFormat format;
    std::shared_ptr<StreamRecord> record;
    std::unique_ptr<juce::AudioFormatWriter> writer;
    std::vector<std::vector<int>> wholeNumbers;
    juce::int64 clipped = 0;
    float largest = 0.0f;
};
