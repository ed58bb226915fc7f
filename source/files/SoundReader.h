#pragma once

#include "files/PromisedSize.h"
#include "files/SoundEncoding.h"
#include "files/SoundExtras.h"
#include "files/SoundStreams.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>
#include <vector>

/** A sound file of any kind that SoundEncoding knows, as floating point: whole numbers are divided by their full scale,
    floats stay as they are. Reads from the stream as it goes. One thread.

    `lengthInSamples` is what the file truly holds for MP3, which has been looked through; of plain samples no less is
    there than the header says; a FLAC is taken at its header's word, and looked through where that says nothing. */
class SoundReader final : public juce::AudioFormatReader
{
public:
    enum class Failure
    {
        none,

        /** Not a sound file, or none of a kind that is served. */
        unknown,

        /** Ends before its header says so, or is damaged. */
        damaged,

        empty
    };

    struct Opened
    {
        /** Null where it failed; the stream is the caller's then. */
        std::unique_ptr<SoundReader> reader;
        Failure failure = Failure::none;
    };

    /** Takes the stream over if that succeeds. It must be able to go back. */
    [[nodiscard]] static Opened open (std::unique_ptr<juce::InputStream>& stream);

    [[nodiscard]] const SoundEncoding& encoding() const noexcept { return stored; }
    [[nodiscard]] const SoundExtras& extras() const noexcept { return carried; }

    /** What its header says of its size. */
    [[nodiscard]] const PromisedSize& promisedSize() const noexcept { return promise; }

    /** False when the file turns out to be damaged, or holds less than it should; what is missing is silent. */
    bool readSamples (int* const* destChannels,
                      int numDestChannels,
                      int startOffsetInDestBuffer,
                      juce::int64 startSampleInFile,
                      int numSamples) override;

private:
    SoundReader (std::unique_ptr<juce::InputStream> stream,
                 SoundHandle handleToRead,
                 const SF_INFO& info,
                 SoundEncoding encodingOfFile);

    [[nodiscard]] bool seekTo (juce::int64 sample);

    /** What the framework's stream is a part of, where tags stand in front. */
    std::unique_ptr<juce::InputStream> taggedStream;

    /** What the library sees, where that is not the stream itself. */
    std::unique_ptr<juce::InputStream> infoFrame;
    SoundHandle handle;
    const SoundEncoding stored;
    const SoundExtras carried;
    PromisedSize promise;
    juce::int64 position = 0;
    std::vector<float> interleaved;
};
