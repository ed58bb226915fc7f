#include "benchmarks/PlainMeters.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{
float loudness (float power)
{
    return 10.0f * std::log10 (power) - 0.691f;
}

float meanOf (const std::vector<float>& values, std::size_t count)
{
    auto sum = 0.0f;

    for (std::size_t i = 0; i < count; ++i)
        sum += values[i];

    return sum / static_cast<float> (count);
}
} // namespace

PlainMeter::PlainMeter (double sampleRate, int baseCount)
    : base (baseCount),
      hop (static_cast<int> (sampleRate) / 10),
      gateInterval (static_cast<int> (baseCount + sampleRate))
{
    blockRing.assign (static_cast<std::size_t> (sampleRate * 0.4), 1.17e-7f);
    shortTermRing.assign (static_cast<std::size_t> (sampleRate * 3.0), 1.17e-7f);
    blocks.assign (3000, 1.17e-7f);
    weighting.prepare (sampleRate);
}

float PlainMeter::integrated (float power)
{
    blockRing[blockIndex] = power;

    if (blockCount == hop + base)
    {
        blocks[blocksWriteIndex] = meanOf (blockRing, blockRing.size());
        blocksWriteIndex = blocksWriteIndex + 1 == blocks.size() ? 0 : blocksWriteIndex + 1;
        blockCount = base;
    }

    if (gateCount == gateInterval + base)
    {
        runGate();
        gateCount = base;
    }

    blockIndex = blockIndex + 1 == blockRing.size() ? 0 : blockIndex + 1;
    ++gateCount;
    ++blockCount;
    return integratedValue;
}

float PlainMeter::shortTerm (float power)
{
    shortTermRing[shortTermIndex] = power;

    if (shortTermCount == hop + base)
    {
        shortTermValue = loudness (meanOf (shortTermRing, shortTermRing.size()));
        shortTermCount = base;
    }

    shortTermIndex = shortTermIndex + 1 == shortTermRing.size() ? 0 : shortTermIndex + 1;
    ++shortTermCount;
    return shortTermValue;
}

std::size_t PlainMeter::partition (std::size_t count, float level)
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

void PlainMeter::runGate()
{
    const auto audible = partition (blocks.size(), -70.0f);

    if (audible == 0)
        return;

    const auto threshold = std::max (-70.0f, loudness (meanOf (blocks, audible)) - 10.0f);
    integratedValue = loudness (meanOf (blocks, partition (audible, threshold)));
}

PlainMeters::PlainMeters (double sampleRate)
    : plain (sampleRate, 0), matchInput (sampleRate, 0), matchOutput (sampleRate, 0)
{
}

void PlainMeters::process (const float* left,
                           const float* right,
                           const float* outLeft,
                           const float* outRight,
                           int count)
{
    for (int i = 0; i < count; ++i)
    {
        plain.integrated (left[i] * left[i] + right[i] * right[i]);
        matchInput.shortTerm (matchInput.weighting.stereoPower (left[i], right[i]));
        matchOutput.shortTerm (matchOutput.weighting.stereoPower (outLeft[i], outRight[i]));
    }
}

PlainBands::PlainBands (const float* centresHz, std::size_t count, double sampleRate)
    : levels (count), leftChains (count), rightChains (count)
{
    for (std::size_t band = 0; band < count; ++band)
    {
        for (auto* chain : { &leftChains[band], &rightChains[band] })
            for (std::size_t s = 0; s < chain->size(); ++s)
                (*chain)[s].setResponse (
                    s % 2 == 0 ? 0.5411961 : 1.306563, centresHz[band], static_cast<float> (sampleRate), s < 2 ? 1 : 0);

        meters.emplace_back (sampleRate, 20 * static_cast<int> (band));
    }
}

void PlainBands::process (const float* left, const float* right, int count)
{
    for (int i = 0; i < count; ++i)
        for (std::size_t band = 0; band < levels.size(); ++band)
        {
            auto l = static_cast<double> (left[i]);
            auto r = static_cast<double> (right[i]);

            for (auto& section : leftChains[band])
                l = section.orvik::BiQuad<double>::process (l);

            for (auto& section : rightChains[band])
                r = section.orvik::BiQuad<double>::process (r);

            const auto leftOutput = static_cast<float> (l * 2.0);
            const auto rightOutput = static_cast<float> (r * 2.0);
            levels[band] = meters[band].integrated (leftOutput * leftOutput + rightOutput * rightOutput);
        }
}
