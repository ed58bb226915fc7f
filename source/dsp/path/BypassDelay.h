#pragma once

#include "dsp/path/PublishedLength.h"

#include <array>
#include <vector>

/** Two float lines with one index that delay a bypassed signal by the latency that the host was told.

    Room for the longest latency is reserved once. */
class BypassDelay
{
public:
    explicit BypassDelay (int longestDelaySamples);

    /** Publishes a new length in samples, from 0 to the longest; the next block clears the lines with it. Any thread.
     */
    void setLength (int samples) noexcept;

    /** Delays up to two channels in place; a length of 0 leaves them. Audio thread; real-time safe. */
    void process (float* const* channels, int channelCount, int sampleCount) noexcept;

    /** The length last published. Any thread. */
    [[nodiscard]] int length() const noexcept { return published.latest(); }

private:
    void takeLength() noexcept;

    std::array<std::vector<float>, 2> lines;
    int index = 0;
    int currentLength = 0;
    PublishedLength published;
};
