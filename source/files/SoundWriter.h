#pragma once

#include "files/SampleQuantiser.h"
#include "files/SoundEncoding.h"
#include "files/SoundExtras.h"
#include "files/SoundStreams.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** Writes a sound file of any kind that SoundEncoding knows, from floating point. Whole numbers go through
    SampleQuantiser; Vorbis, Opus and MP3 get the highest quality of their encoders. One thread. */
class SoundWriter final : public juce::AudioFormatWriter
{
public:
    /** What a file that is written here says of the software that made it, before what the library adds. W64 and MP3
        have no place for it. */
    static constexpr std::string_view mark = "SOLVANE";

    /** Takes an empty stream over that can be set back to its start. Null, with the stream left to the caller, when the
        encoding does not go with that rate, or the stream takes nothing. */
    [[nodiscard]] static std::unique_ptr<SoundWriter> create (std::unique_ptr<juce::OutputStream>& stream,
                                                              const SoundEncoding& encoding,
                                                              double sampleRate,
                                                              int channelCount,
                                                              const SoundExtras& extras = {});

    /** Why so many samples cannot be stored so, as the end of a sentence about the encoding; nothing where they can. */
    [[nodiscard]] static std::optional<std::string>
    refusal (const SoundEncoding& encoding, double sampleRate, int channelCount, juce::int64 length);

    /** Finishes the file, if finish() has not. */
    ~SoundWriter() override;

    /** Floats, in spite of the type, as everywhere in the framework. */
    bool write (const int** samplesToWrite, int numSamples) override;

    /** Stores what is still to be stored. False if anything did not reach the stream since the beginning. */
    bool finish();

    /** Size of the file, in bytes. Complete after finish(). */
    [[nodiscard]] juce::int64 size() const noexcept { return sink->end; }

private:
    SoundWriter (std::unique_ptr<juce::OutputStream> stream,
                 std::unique_ptr<SoundSink> sinkToUse,
                 SoundHandle handleToUse,
                 const SoundEncoding& encoding,
                 const SF_INFO& info);

    [[nodiscard]] bool store (int frameCount);

    /** The library keeps its address. */
    std::unique_ptr<SoundSink> sink;
    SoundHandle handle;
    std::optional<SampleQuantiser> quantiser;
    std::vector<float> frames;
    std::vector<int> wholeNumbers;
};
