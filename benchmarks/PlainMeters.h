#pragma once

#include "dsp/filters/VariableQ2ndOrder.h"
#include "dsp/meters/KWeighting.h"

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

/** The loudness meter written plainly: rings summed whole, a logarithm for each decision of the gate. */
class PlainMeter
{
public:
    PlainMeter (double sampleRate, int baseCount);

    float integrated (float power);
    float shortTerm (float power);

    orvik::KWeighting weighting;

private:
    std::size_t partition (std::size_t count, float level);
    void runGate();

    int base;
    int hop;
    int gateInterval;
    std::vector<float> blockRing, shortTermRing, blocks;
    std::size_t blockIndex = 0, shortTermIndex = 0, blocksWriteIndex = 0;
    int blockCount = 0, gateCount = 0, shortTermCount = 0;
    float integratedValue = -std::numeric_limits<float>::infinity();
    float shortTermValue = -std::numeric_limits<float>::infinity();
};

/** Input loudness and level match of one stereo block, sample by sample. */
struct PlainMeters
{
    explicit PlainMeters (double sampleRate);

    void process (const float* left, const float* right, const float* outLeft, const float* outRight, int count);

    PlainMeter plain;
    PlainMeter matchInput;
    PlainMeter matchOutput;
};

/** A row of bands at one rate, section after section. */
class PlainBands
{
public:
    PlainBands (const float* centresHz, std::size_t count, double sampleRate);

    void process (const float* left, const float* right, int count);

    std::vector<float> levels;

private:
    using Chain = std::array<orvik::VariableQ2ndOrder<double>, 4>;

    std::vector<Chain> leftChains, rightChains;
    std::vector<PlainMeter> meters;
};
