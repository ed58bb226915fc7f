#pragma once

#include "dsp/meters/LUFSProcessor.h"

#include <atomic>
#include <limits>

/** The three full-band meters of the audio thread: the input as it is, and input and output through the ear's
   weighting.

    The output has a meter of its own so that it can stand still while a band is soloed or the main bypass is on. A
   reset asked for by another thread takes place at the next block. */
class LoudnessMeters
{
public:
    using Meter = orvik::LUFSProcessor<3000>;

    /** Sizes the meters for a rate in Hz and resets them. Allocates; audio stopped. */
    void prepare (double sampleRate);

    /** Takes a block of input and output; `measureOutput` false leaves the output's meter alone. Audio thread;
       real-time safe. For mono the right channels are null. */
    void process (orvik::ChannelPointers input, orvik::ChannelPointers output, int count, bool measureOutput) noexcept;

    /** Empties the meters at the next block; the input's reading goes at once. Any thread. */
    void requestReset() noexcept;

    /** Unweighted, gated loudness of the input in LUFS; minus infinity before the first reading. Any thread. */
    [[nodiscard]] float inputLoudness() const noexcept { return inputReading.load (std::memory_order_relaxed); }

    /** Weighted loudness of the last 3 s in LUFS; minus infinity before the first reading. The output's stays while it
        is not measured. Audio thread. */
    [[nodiscard]] float matchInputLoudness() const noexcept { return matchInputReading; }
    [[nodiscard]] float matchOutputLoudness() const noexcept { return matchOutputReading; }

private:
    void reset() noexcept;

    Meter meterLufs;
    Meter matchInputLufs;
    Meter matchOutputLufs;
    static constexpr float noReading = -std::numeric_limits<float>::infinity();

    std::atomic<float> inputReading { noReading };
    float matchInputReading = noReading;
    float matchOutputReading = noReading;
    std::atomic<bool> resetRequested { false };
};
