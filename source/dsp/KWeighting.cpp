#include "dsp/KWeighting.h"

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

using Lanes = float __attribute__ ((vector_size (4 * sizeof (float))));

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

    void process (Lanes& sample) noexcept
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

template <bool isStereo, std::size_t signalCount>
void weigh (const std::array<WeightedSignal, signalCount>& signals, int count) noexcept
{
    SectionLanes shelf;
    SectionLanes highPass;

    for (std::size_t s = 0; s < signalCount; ++s)
        loadSignal (shelf, highPass, static_cast<int> (2 * s), signals[s]);

    for (int i = 0; i < count; ++i)
    {
        Lanes sample {};

        for (std::size_t s = 0; s < signalCount; ++s)
        {
            sample[2 * s] = signals[s].left[i];

            if constexpr (isStereo)
                sample[2 * s + 1] = signals[s].right[i];
        }

        shelf.process (sample);
        highPass.process (sample);
        const auto squares = sample * sample;

        for (std::size_t s = 0; s < signalCount; ++s)
            signals[s].powers[i] = isStereo ? squares[2 * s] + squares[2 * s + 1] : squares[2 * s];
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
