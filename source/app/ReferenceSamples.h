#pragma once

#include "app/AudioInput.h"
#include "core/references/TrackConversion.h"
#include "dsp/meters/LUFSProcessor.h"

#include <memory>
#include <string>

/** The samples of a sound file at a session's rate, converted as the plug-in converts its reference tracks. They are
   read as they are asked for, and only a window of them is kept, so that a file of any length needs a megabyte. One
   thread. */
class ReferenceSamples
{
public:
    /** The most that can be asked for at a time. */
    static constexpr int blockLength = TrackConversion::blockLength;

    /** Takes an input that nobody else reads. Throws CommandError where there would be more samples than can be
       counted.
        @param name of the file, for messages; @param sessionRate in Hz */
    ReferenceSamples (AudioInput& inputToRead, const std::string& name, double sessionRate);
    ~ReferenceSamples();

    ReferenceSamples (const ReferenceSamples&) = delete;
    ReferenceSamples& operator= (const ReferenceSamples&) = delete;

    /** Samples of a channel, at the session's rate. */
    [[nodiscard]] int count() const noexcept { return total; }

    /** Samples from `start` on, valid until the next call; `right` is null for mono. Asking for what lies behind what
        was asked for before reads on; asking for earlier ones may read the file anew. Throws CommandError. */
    [[nodiscard]] orvik::ChannelPointers at (int start, int wanted);

    /** How many samples of any channel among those that were read were no finite numbers, each counted once. */
    [[nodiscard]] juce::int64 notFiniteCount() const noexcept;

private:
    class Source;

    void rewind();
    void readOn();

    AudioInput& input;
    const double rate;
    const int total;
    const std::unique_ptr<Source> source;
    std::unique_ptr<TrackConversion> conversion;

    /** The last two blocks, of which the later one may still be missing. */
    juce::AudioBuffer<float> window;
    int windowStart = 0;
    int windowCount = 0;
};
