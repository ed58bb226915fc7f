#include "dsp/meters/KWeighting.h"

#include "dsp/simd/SimdLanes.h"

#include <array>
#include <cmath>
#include <cstddef>

namespace orvik
{
namespace
{
struct Filter
{
    double b0, b1, b2, a1, a2;
};

/** High shelf: pi times 1681.974450955533 Hz, about 4 dB above it. */
Filter shelfFor (double sampleRate) noexcept
{
    constexpr auto angularCorner = 5284.0787256905105;
    constexpr auto q = 0.7071752369554196;
    constexpr auto highGain = 1.584864701130855;
    constexpr auto bandGain = 1.258720930232562;

    const auto k = std::tan (angularCorner / sampleRate);
    const auto divisor = 1.0 + k / q + k * k;
    return { (highGain + bandGain * k / q + k * k) / divisor,
             2.0 * (k * k - highGain) / divisor,
             (highGain - bandGain * k / q + k * k) / divisor,
             2.0 * (k * k - 1.0) / divisor,
             (1.0 - k / q + k * k) / divisor };
}

/** High-pass: pi times 38.13547087602444 Hz. The recommendation leaves its numerator without normalisation. */
Filter highPassFor (double sampleRate) noexcept
{
    constexpr auto angularCorner = 119.80611847921479;
    constexpr auto q = 0.5003270373238773;

    const auto k = std::tan (angularCorner / sampleRate);
    const auto divisor = 1.0 + k / q + k * k;
    return { 1.0, -2.0, 1.0, 2.0 * (k * k - 1.0) / divisor, (1.0 - k / q + k * k) / divisor };
}

void setSection (BiQuad<float>& section, const Filter& filter) noexcept
{
    section.a0 = 1.0f;
    section.a1 = static_cast<float> (filter.a1);
    section.a2 = static_cast<float> (filter.a2);
    section.b0 = static_cast<float> (filter.b0);
    section.b1 = static_cast<float> (filter.b1);
    section.b2 = static_cast<float> (filter.b2);
}

void clearSection (BiQuad<float>& section) noexcept
{
    section.x1 = section.x2 = section.y1 = section.y2 = 0.0f;
}

bool isFinite (const BiQuad<float>& section) noexcept
{
    return std::isfinite (section.x1) && std::isfinite (section.x2) && std::isfinite (section.y1)
           && std::isfinite (section.y2);
}

/** One sample of up to four channels, or four samples of one. */
typedef float Lanes __attribute__ ((vector_size (4 * sizeof (float))));

/** The same lanes at any address of a float. */
typedef float LanesInMemory __attribute__ ((vector_size (4 * sizeof (float)), aligned (4), may_alias));

constexpr int framesAtOnce = 4;

/** One section of up to four channels. The leading coefficient is 1, so the division by it is left out. */
class SectionLanes
{
public:
    void load (int lane, const BiQuad<float>& section) noexcept
    {
        x1[lane] = section.x1;
        x2[lane] = section.x2;
        y1[lane] = section.y1;
        y2[lane] = section.y2;
        a1[lane] = section.a1;
        a2[lane] = section.a2;
        b0[lane] = section.b0;
        b1[lane] = section.b1;
        b2[lane] = section.b2;
    }

    void store (int lane, BiQuad<float>& section) const noexcept
    {
        section.x1 = x1[lane];
        section.x2 = x2[lane];
        section.y1 = y1[lane];
        section.y2 = y2[lane];
    }

    SOLVANE_ALWAYS_INLINE void process (Lanes& sample) noexcept
    {
        const auto output = sample * b0 + x1 * b1 + x2 * b2 - y1 * a1 - y2 * a2;
        x2 = x1;
        x1 = sample;
        y2 = y1;
        y1 = output;
        sample = output;
    }

private:
    Lanes x1 {}, x2 {}, y1 {}, y2 {};
    Lanes a1 {}, a2 {}, b0 {}, b1 {}, b2 {};
};

void loadSignal (SectionLanes& shelf, SectionLanes& highPass, int lane, const WeightedSignal& signal) noexcept
{
    shelf.load (lane, signal.weighting.shelfLeft);
    highPass.load (lane, signal.weighting.highPassLeft);

    if (signal.right != nullptr)
    {
        shelf.load (lane + 1, signal.weighting.shelfRight);
        highPass.load (lane + 1, signal.weighting.highPassRight);
    }
}

void storeSignal (const SectionLanes& shelf,
                  const SectionLanes& highPass,
                  int lane,
                  const WeightedSignal& signal) noexcept
{
    auto& weighting = signal.weighting;
    shelf.store (lane, weighting.shelfLeft);
    highPass.store (lane, weighting.highPassLeft);

    if (signal.right != nullptr)
    {
        shelf.store (lane + 1, weighting.shelfRight);
        highPass.store (lane + 1, weighting.highPassRight);
    }

    for (auto* section :
         { &weighting.shelfLeft, &weighting.shelfRight, &weighting.highPassLeft, &weighting.highPassRight })
        if (! isFinite (*section))
        {
            weighting.clear();
            break;
        }
}

SOLVANE_ALWAYS_INLINE void load (const float* samples, Lanes& lanes) noexcept
{
    lanes = *reinterpret_cast<const LanesInMemory*> (samples);
}

SOLVANE_ALWAYS_INLINE void store (const Lanes& lanes, float* samples) noexcept
{
    *reinterpret_cast<LanesInMemory*> (samples) = lanes;
}

/** Four samples of each of four channels become four frames: channel by channel, a frame would be put together lane by
    lane, which takes longer than to weight it. */
SOLVANE_ALWAYS_INLINE void turnIntoFrames (Lanes (&lanes)[framesAtOnce]) noexcept
{
    const Lanes firstEarly = __builtin_shufflevector (lanes[0], lanes[1], 0, 4, 1, 5);
    const Lanes firstLate = __builtin_shufflevector (lanes[0], lanes[1], 2, 6, 3, 7);
    const Lanes secondEarly = __builtin_shufflevector (lanes[2], lanes[3], 0, 4, 1, 5);
    const Lanes secondLate = __builtin_shufflevector (lanes[2], lanes[3], 2, 6, 3, 7);
    lanes[0] = __builtin_shufflevector (firstEarly, secondEarly, 0, 1, 4, 5);
    lanes[1] = __builtin_shufflevector (firstEarly, secondEarly, 2, 3, 6, 7);
    lanes[2] = __builtin_shufflevector (firstLate, secondLate, 0, 1, 4, 5);
    lanes[3] = __builtin_shufflevector (firstLate, secondLate, 2, 3, 6, 7);
}

/** Lanes without a channel hold silence, which adds nothing to a power. */
template <bool isStereo, std::size_t signalCount>
void weigh (const std::array<WeightedSignal, signalCount>& signals, int count) noexcept
{
    SectionLanes shelf;
    SectionLanes highPass;

    for (std::size_t s = 0; s < signalCount; ++s)
        loadSignal (shelf, highPass, static_cast<int> (2 * s), signals[s]);

    auto i = 0;

    for (; i + framesAtOnce <= count; i += framesAtOnce)
    {
        Lanes frames[framesAtOnce] {};

        for (std::size_t s = 0; s < signalCount; ++s)
        {
            load (signals[s].left + i, frames[2 * s]);

            if constexpr (isStereo)
                load (signals[s].right + i, frames[2 * s + 1]);
        }

        turnIntoFrames (frames);

        for (auto& frame : frames)
        {
            shelf.process (frame);
            highPass.process (frame);
            frame *= frame;
        }

        const Lanes early = __builtin_shufflevector (frames[0], frames[1], 0, 2, 4, 6)
                            + __builtin_shufflevector (frames[0], frames[1], 1, 3, 5, 7);
        const Lanes late = __builtin_shufflevector (frames[2], frames[3], 0, 2, 4, 6)
                           + __builtin_shufflevector (frames[2], frames[3], 1, 3, 5, 7);
        store (__builtin_shufflevector (early, late, 0, 2, 4, 6), signals[0].powers + i);

        if constexpr (signalCount == 2)
            store (__builtin_shufflevector (early, late, 1, 3, 5, 7), signals[1].powers + i);
    }

    for (; i < count; ++i)
    {
        Lanes frame {};

        for (std::size_t s = 0; s < signalCount; ++s)
        {
            frame[2 * s] = signals[s].left[i];

            if constexpr (isStereo)
                frame[2 * s + 1] = signals[s].right[i];
        }

        shelf.process (frame);
        highPass.process (frame);
        frame *= frame;

        for (std::size_t s = 0; s < signalCount; ++s)
            signals[s].powers[i] = frame[2 * s] + frame[2 * s + 1];
    }

    for (std::size_t s = 0; s < signalCount; ++s)
        storeSignal (shelf, highPass, static_cast<int> (2 * s), signals[s]);
}
} // namespace

void KWeighting::prepare (double sampleRate) noexcept
{
    const auto shelf = shelfFor (sampleRate);
    const auto highPass = highPassFor (sampleRate);

    setSection (shelfLeft, shelf);
    setSection (shelfRight, shelf);
    setSection (highPassLeft, highPass);
    setSection (highPassRight, highPass);
}

void KWeighting::clear() noexcept
{
    clearSection (shelfLeft);
    clearSection (shelfRight);
    clearSection (highPassLeft);
    clearSection (highPassRight);
}

float KWeighting::stereoPower (float left, float right) noexcept
{
    const auto weightedLeft = highPassLeft.process (shelfLeft.process (left));
    const auto weightedRight = highPassRight.process (shelfRight.process (right));
    return weightedLeft * weightedLeft + weightedRight * weightedRight;
}

float KWeighting::monoPower (float sample) noexcept
{
    const auto weighted = highPassLeft.process (shelfLeft.process (sample));
    return weighted * weighted;
}

void KWeighting::powers (const float* left, const float* right, float* output, int count) noexcept
{
    const std::array<WeightedSignal, 1> signals { WeightedSignal { *this, left, right, output } };

    if (right != nullptr)
        weigh<true> (signals, count);
    else
        weigh<false> (signals, count);
}

void kWeightedPowers (const WeightedSignal& first, const WeightedSignal& second, int count) noexcept
{
    const std::array<WeightedSignal, 2> signals { first, second };

    if (first.right != nullptr)
        weigh<true> (signals, count);
    else
        weigh<false> (signals, count);
}
} // namespace orvik
