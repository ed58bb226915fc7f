#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

/** A loudness meter written down as it is described, to check the quick one against: rings of samples that are summed
    whole, a logarithm for each decision of the gate, entries exchanged from both ends one pair after the other. */
class LiteralMeter
{
public:
    LiteralMeter (double rate, int base, std::size_t capacity)
        : baseCount (base), hop (static_cast<int> (rate) / 10), gateInterval (static_cast<int> (base + rate))
    {
        const auto level = std::pow (10.0f, static_cast<float> ((-70.0 + 0.691) / 10.0));
        blockRing.assign (static_cast<std::size_t> (rate * 0.4), level);
        shortTermRing.assign (static_cast<std::size_t> (rate * 3.0), level);
        peakRing.assign (static_cast<std::size_t> (rate * 3.0), 0.0f);
        blocks.assign (capacity, level);
    }

    static float loudness (float power) { return 10.0f * std::log10 (power) - 0.691f; }

    float integrated (float power)
    {
        blockRing[blockIndex] = power;

        if (blockCount == hop + baseCount)
        {
            blocks[blocksWriteIndex] = meanOf (blockRing, blockRing.size());
            blocksWriteIndex = (blocksWriteIndex + 1) % blocks.size();
            blockCount = baseCount;
        }

        if (gateCount == gateInterval + baseCount)
        {
            runGate();
            gateCount = baseCount;
        }

        blockIndex = (blockIndex + 1) % blockRing.size();
        ++gateCount;
        ++blockCount;
        return integratedValue;
    }

    float shortTerm (float power, bool* updated)
    {
        shortTermRing[shortTermIndex] = power;

        if (shortTermCount == hop + baseCount)
        {
            shortTermValue = loudness (meanOf (shortTermRing, shortTermRing.size()));
            shortTermCount = baseCount;

            if (updated != nullptr)
                *updated = true;
        }

        shortTermIndex = (shortTermIndex + 1) % shortTermRing.size();
        ++shortTermCount;
        return shortTermValue;
    }

    float peak (float sample)
    {
        peakRing[peakIndex] = sample;

        if (peakCount == hop + baseCount)
        {
            peakValue = 0.0f;

            for (const auto value : peakRing)
                peakValue = std::max (peakValue, std::abs (value));

            peakCount = baseCount;
        }

        peakIndex = (peakIndex + 1) % peakRing.size();
        ++peakCount;
        return peakValue;
    }

    /** Both gates, on `blocks` in place. */
    void runGate()
    {
        const auto audible = partition (blocks.size(), -70.0f);

        if (audible == 0)
            return;

        const auto threshold = std::max (-70.0f, loudness (meanOf (blocks, audible)) - 10.0f);
        const auto passing = partition (audible, threshold);
        integratedValue = loudness (meanOf (blocks, passing));
    }

    float gatedValue() const { return integratedValue; }

    std::vector<float> blocks;

private:
    static float meanOf (const std::vector<float>& values, std::size_t count)
    {
        auto sum = 0.0;

        for (std::size_t i = 0; i < count; ++i)
            sum += static_cast<double> (values[i]);

        return static_cast<float> (sum / static_cast<double> (count));
    }

    std::size_t partition (std::size_t count, float level)
    {
        std::size_t front = 0;
        auto end = count;

        for (;;)
        {
            while (front < end && loudness (blocks[front]) > level)
                ++front;

            while (front < end && ! (loudness (blocks[end - 1]) > level))
                --end;

            if (front == end)
                return front;

            std::swap (blocks[front++], blocks[--end]);
        }
    }

    int baseCount;
    int hop;
    int gateInterval;
    std::vector<float> blockRing, shortTermRing, peakRing;
    std::size_t blockIndex = 0, shortTermIndex = 0, peakIndex = 0, blocksWriteIndex = 0;
    int blockCount = 0, gateCount = 0, shortTermCount = 0, peakCount = 0;
    float integratedValue = -std::numeric_limits<float>::infinity();
    float shortTermValue = -std::numeric_limits<float>::infinity();
    float peakValue = 0.0f;
};
