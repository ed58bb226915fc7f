#pragma once

#include "files/IOutputFile.h"
#include "files/SoundWriter.h"

#include <memory>
#include <string>

/** The file that a rendering becomes. One thread.

    It appears as a whole in commit(). Without that, whether the program stops, fails or the disk is full, nothing is
   left behind and an older file stays as it was. */
class AudioOutput
{
public:
    struct Description
    {
        SoundEncoding encoding;
        double sampleRate = 0.0;
        int channelCount = 0;

        /** Samples of a channel that will come, where that is known: what cannot hold them is refused at once. */
        juce::int64 length = 0;
        SoundExtras extras {};
    };

    /** @param path as on the command line; `-` is the standard output

        Throws CommandError when the file cannot be made, or when something stands in its place that may not be
       replaced. A symbolic link is followed. */
    AudioOutput (const std::string& path, const Description& description);
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
    void inspect (const juce::AudioBuffer<float>& block, int start, int count) noexcept;
    [[noreturn]] void fail (const std::string& what);

    /** As sentences begin with it. */
    const std::string name;
    const std::unique_ptr<IOutputFile> file;
    std::unique_ptr<SoundWriter> writer;
    juce::int64 clipped = 0;
    float largest = 0.0f;
};
