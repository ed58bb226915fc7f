#pragma once

#include "dsp/meters/GatedBlocks.h"
#include "dsp/meters/HopWindow.h"
#include "dsp/meters/ILUFSProcessor.h"
#include "dsp/meters/KWeighting.h"

#include <limits>

namespace orvik
{
/** The samples of one signal; `right` is null for mono. */
struct ChannelPointers
{
    const float* left = nullptr;
    const float* right = nullptr;
};

/** A loudness meter on the scale of ITU-R BS.1770, fed with powers, so that the caller chooses the weighting.

    It departs from the recommendation on purpose. "Integrated" is a sliding measure over the last `capacity` blocks of
    400 ms, a new one every 100 ms, and its gate runs once a second. The short-term figure is a plain mean of 3 s,
    renewed every 100 ms. After a reset the windows hold the reset level, so that early figures lie too low.

    The calls that take a block give what the calls for one sample give, to the bit, however the stream is divided.
    Levels are in dB, and minus infinity before the first figure; the peak is linear, and 0 before it. A meter that was
   never prepared stays there. One thread at a time. All calls but `prepare` are real-time safe; the gate over 3000
   blocks is the longest of them and takes a few microseconds. */
template <int capacity>
class LUFSProcessor final : public ILUFSProcessor
{
public:
    /** Rate in Hz, kept with the precision of a float. Takes effect with `prepare`. */
    void setSampleRate (double newSampleRate) noexcept
    {
        sampleRate = static_cast<double> (static_cast<float> (newSampleRate));
    }

    /** The value that the sample counters restart from, so that the gates of several meters fall on different samples.
        It delays the first figures too, and enters the gate's interval twice. Takes effect with `prepare`. */
    void setBaseCount (int newBaseCount) noexcept { baseCount = newBaseCount; }

    /** Computes lengths and weighting, empties the windows and starts all counters anew. Allocates. */
    void prepare();

    [[nodiscard]] float sumOfSquares (float a, float b) noexcept override { return a * a + b * b; }
    float integrated (float power) noexcept override;
    float shortTerm (float power, bool* updated) noexcept override;
    float peak (float sample) noexcept override;

    /** `integrated` for each of `count` powers; returns the last value. */
    float integratedBlock (const float* powers, int count) noexcept;

    /** `shortTerm` for each of `count` powers; returns the last value. */
    float shortTermBlock (const float* powers, int count, bool* updated) noexcept;

    /** `integrated` for the plain squares of `count` frames. */
    float integratedOfPlain (ChannelPointers signal, int count) noexcept;

    /** `shortTerm` for `count` frames through the meter's own K-weighting. */
    float shortTermOfWeighted (ChannelPointers signal, int count, bool* updated) noexcept;

    /** `shortTermOfWeighted` of two meters at once, for little more than the price of one. Both signals are stereo or
        both are mono. */
    static void shortTermOfWeightedPair (LUFSProcessor& first,
                                         ChannelPointers firstSignal,
                                         LUFSProcessor& second,
                                         ChannelPointers secondSignal,
                                         int count) noexcept;

    /** Empties the 400 ms window and the block store to a level in dB, clears the weighting's histories and the
        integrated value. The store's write index stays. Nothing happens while there is no sample rate. */
    void reset (float levelDb) noexcept;

    /** Empties the 3 s window to a level in dB. The counter stays, so that the next figure comes in its turn. */
    void resetShortTerm (float levelDb) noexcept;

    [[nodiscard]] float integratedValue() const noexcept { return integratedLevel; }
    [[nodiscard]] float shortTermValue() const noexcept { return shortTermLevel; }
    [[nodiscard]] float peakValue() const noexcept { return peakLevel; }

    /** The powers of the last blocks, which the gate works on. */
    [[nodiscard]] const GatedBlocks<capacity>& blockStore() const noexcept { return blocks; }

    /** The sections that a caller runs its channels through before `shortTerm`. */
    KWeighting weighting;

private:
    [[nodiscard]] bool isPrepared() const noexcept { return blockEvent > 0; }
    [[nodiscard]] int positionAtCountZero (int hop) const noexcept;
    void takeBlock() noexcept;
    void runGate() noexcept;
    void takeShortTerm (bool* updated) noexcept;

    static constexpr float noLevel = -std::numeric_limits<float>::infinity();

    double sampleRate = 0.0;
    int baseCount = 0;

    /** Counter values at which a figure is due: an update interval and `baseCount`. 0 until prepared. */
    int blockEvent = 0;
    int gateEvent = 0;
    int shortTermEvent = 0;
    int peakEvent = 0;

    int shortTermCount = 0;
    int peakCount = 0;
    int blockCount = 0;
    int gateCount = 0;

    float integratedLevel = noLevel;
    float shortTermLevel = noLevel;
    float peakLevel = 0.0f;

    HopWindow<SumOfPowers> blockWindow;
    HopWindow<SumOfPowers> shortTermWindow;
    HopWindow<LargestSample> peakWindow;
    GatedBlocks<capacity> blocks;
};

extern template class LUFSProcessor<3000>;
} // namespace orvik
