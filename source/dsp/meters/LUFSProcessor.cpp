#include "dsp/meters/LUFSProcessor.h"

#include "dsp/meters/LoudnessScale.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace orvik
{
namespace
{
constexpr double blockSeconds = 0.4;
constexpr double shortTermSeconds = 3.0;
constexpr double peakSeconds = 3.0;
constexpr int hopsPerSecond = 10;

/** Keeps every length below an int's range, three seconds included. */
constexpr double highestRate = 1.0e8;

/** Frames weighted at a time, in a buffer on the stack. */
constexpr int chunkLength = 256;
using Chunk = std::array<float, static_cast<std::size_t> (chunkLength)>;

int lengthOf (double seconds, double sampleRate) noexcept
{
    return std::max (1, static_cast<int> (sampleRate * seconds));
}

ChannelPointers operator+ (ChannelPointers signal, int frames) noexcept
{
    return { signal.left + frames, signal.right != nullptr ? signal.right + frames : nullptr };
}

float meanOf (const HopWindow<SumOfPowers>& window) noexcept
{
    return static_cast<float> (window.read() / static_cast<double> (window.windowLength()));
}
} // namespace

template <int capacity>
void LUFSProcessor<capacity>::prepare()
{
    blockEvent = gateEvent = shortTermEvent = peakEvent = 0;
    blockCount = gateCount = shortTermCount = peakCount = 0;
    integratedLevel = shortTermLevel = noLevel;
    peakLevel = 0.0f;
    blocks.fill (0.0f);
    blocks.rewind();
    weighting.clear();

    if (! (sampleRate > 0.0 && sampleRate <= highestRate))
        return;

    const auto hop = std::max (1, static_cast<int> (sampleRate) / hopsPerSecond);
    const auto gateInterval = static_cast<int> (baseCount + sampleRate);
    blockEvent = shortTermEvent = peakEvent = hop + baseCount;
    gateEvent = gateInterval + baseCount;

    blockWindow.prepare (lengthOf (blockSeconds, sampleRate), hop);
    shortTermWindow.prepare (lengthOf (shortTermSeconds, sampleRate), hop);
    peakWindow.prepare (lengthOf (peakSeconds, sampleRate), hop);
    blockWindow.fill (0.0f, positionAtCountZero (hop));
    shortTermWindow.fill (0.0f, positionAtCountZero (hop));
    peakWindow.fill (0.0f, positionAtCountZero (hop));

    weighting.prepare (sampleRate);
}

/** A counter of 0 is taken for sample `baseCount` + 1 before a hop's first one: the counters are compared before they
    advance, and restart from `baseCount` in the call that ends a hop. */
template <int capacity>
int LUFSProcessor<capacity>::positionAtCountZero (int hop) const noexcept
{
    return hop - 1 - baseCount % hop;
}

template <int capacity>
float LUFSProcessor<capacity>::integrated (float power) noexcept
{
    if (! isPrepared())
        return integratedLevel;

    blockWindow.push (power);

    if (blockCount == blockEvent)
        takeBlock();

    if (gateCount == gateEvent)
        runGate();

    ++gateCount;
    ++blockCount;
    return integratedLevel;
}

template <int capacity>
float LUFSProcessor<capacity>::integratedBlock (const float* powers, int count) noexcept
{
    if (! isPrepared())
        return integratedLevel;

    while (count > 0)
    {
        // Up to the next sample on which a figure is due, that sample included.
        const auto run = std::min ({ count, blockEvent - blockCount + 1, gateEvent - gateCount + 1 });
        blockWindow.push (powers, run);
        blockCount += run - 1;
        gateCount += run - 1;

        if (blockCount == blockEvent)
            takeBlock();

        if (gateCount == gateEvent)
            runGate();

        ++gateCount;
        ++blockCount;
        powers += run;
        count -= run;
    }

    return integratedLevel;
}

template <int capacity>
void LUFSProcessor<capacity>::takeBlock() noexcept
{
    blocks.add (meanOf (blockWindow));
    blockCount = baseCount;
}

template <int capacity>
void LUFSProcessor<capacity>::runGate() noexcept
{
    if (const auto level = blocks.gatedLoudness())
        integratedLevel = *level;

    gateCount = baseCount;
}

template <int capacity>
float LUFSProcessor<capacity>::shortTerm (float power, bool* updated) noexcept
{
    if (! isPrepared())
        return shortTermLevel;

    shortTermWindow.push (power);

    if (shortTermCount == shortTermEvent)
        takeShortTerm (updated);

    ++shortTermCount;
    return shortTermLevel;
}

template <int capacity>
float LUFSProcessor<capacity>::shortTermBlock (const float* powers, int count, bool* updated) noexcept
{
    if (! isPrepared())
        return shortTermLevel;

    while (count > 0)
    {
        const auto run = std::min (count, shortTermEvent - shortTermCount + 1);
        shortTermWindow.push (powers, run);
        shortTermCount += run - 1;

        if (shortTermCount == shortTermEvent)
            takeShortTerm (updated);

        ++shortTermCount;
        powers += run;
        count -= run;
    }

    return shortTermLevel;
}

template <int capacity>
void LUFSProcessor<capacity>::takeShortTerm (bool* updated) noexcept
{
    shortTermLevel = loudnessOf (meanOf (shortTermWindow));
    shortTermCount = baseCount;

    if (updated != nullptr)
        *updated = true;
}

template <int capacity>
float LUFSProcessor<capacity>::peak (float sample) noexcept
{
    if (! isPrepared())
        return peakLevel;

    peakWindow.push (sample);

    if (peakCount == peakEvent)
    {
        peakLevel = static_cast<float> (peakWindow.read());
        peakCount = baseCount;
    }

    ++peakCount;
    return peakLevel;
}

template <int capacity>
float LUFSProcessor<capacity>::integratedOfPlain (ChannelPointers signal, int count) noexcept
{
    Chunk powers;

    for (int start = 0; start < count; start += chunkLength)
    {
        const auto frames = std::min (count - start, chunkLength);
        const auto part = signal + start;

        if (part.right == nullptr)
            for (int i = 0; i < frames; ++i)
                powers[static_cast<std::size_t> (i)] = part.left[i] * part.left[i];
        else
            for (int i = 0; i < frames; ++i)
                powers[static_cast<std::size_t> (i)] = part.left[i] * part.left[i] + part.right[i] * part.right[i];

        integratedBlock (powers.data(), frames);
    }

    return integratedLevel;
}

template <int capacity>
float LUFSProcessor<capacity>::shortTermOfWeighted (ChannelPointers signal, int count, bool* updated) noexcept
{
    Chunk powers;

    for (int start = 0; start < count; start += chunkLength)
    {
        const auto frames = std::min (count - start, chunkLength);
        const auto part = signal + start;
        weighting.powers (part.left, part.right, powers.data(), frames);
        shortTermBlock (powers.data(), frames, updated);
    }

    return shortTermLevel;
}

template <int capacity>
void LUFSProcessor<capacity>::shortTermOfWeightedPair (LUFSProcessor& first,
                                                       ChannelPointers firstSignal,
                                                       LUFSProcessor& second,
                                                       ChannelPointers secondSignal,
                                                       int count) noexcept
{
    Chunk firstPowers;
    Chunk secondPowers;

    for (int start = 0; start < count; start += chunkLength)
    {
        const auto frames = std::min (count - start, chunkLength);
        const auto firstPart = firstSignal + start;
        const auto secondPart = secondSignal + start;
        kWeightedPowers ({ first.weighting, firstPart.left, firstPart.right, firstPowers.data() },
                         { second.weighting, secondPart.left, secondPart.right, secondPowers.data() },
                         frames);
        first.shortTermBlock (firstPowers.data(), frames, nullptr);
        second.shortTermBlock (secondPowers.data(), frames, nullptr);
    }
}

template <int capacity>
void LUFSProcessor<capacity>::reset (float levelDb) noexcept
{
    if (! isPrepared())
        return;

    const auto power = powerOfResetLevel (levelDb);
    blockWindow.fill (power, positionAtCountZero (blockEvent - baseCount));
    blocks.fill (power);
    gateCount = 0;
    blockCount = 0;
    weighting.clear();
    integratedLevel = noLevel;
}

template <int capacity>
void LUFSProcessor<capacity>::resetShortTerm (float levelDb) noexcept
{
    shortTermWindow.fill (powerOfResetLevel (levelDb), shortTermWindow.positionInHop());
    shortTermLevel = noLevel;
}

template class LUFSProcessor<3000>;
} // namespace orvik
