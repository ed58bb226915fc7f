#include "dsp/meters/BandAnalyser.h"

#include "dsp/simd/FlushDenormals.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace
{
/** Samples between the gates of neighbouring bands. */
constexpr int gateStagger = 20;

/** Frames at a time, in buffers on the stack. */
constexpr int chunkLength = 256;

constexpr auto bankSize = orvik::BandFilterBank::bandCount;

static_assert (lowBandCount <= bankSize, "one bank takes the low bands");
static_assert (analysisBandCount - lowBandCount <= 2 * bankSize, "two banks take the high bands");

std::span<const float> centresOf (std::size_t first, std::size_t end)
{
    return std::span (analysisCentresHz).subspan (first, end - first);
}
} // namespace

BandAnalyser::BandAnalyser (Storing rule) noexcept : storing (rule)
{
    fillLevels (resetLevelDb);
}

void BandAnalyser::prepareBands (double lowRate, double fullRate)
{
    lowBank.prepare (centresOf (0, lowBandCount), static_cast<float> (lowRate));

    for (std::size_t bank = 0; bank < highBanks.size(); ++bank)
    {
        const auto first = lowBandCount + bank * bankSize;
        highBanks[bank].prepare (centresOf (first, std::min (first + bankSize, analysisBandCount)),
                                 static_cast<float> (fullRate));
    }

    for (std::size_t band = 0; band < analysisBandCount; ++band)
    {
        bandLoudness[band].setSampleRate (band < lowBandCount ? lowRate : fullRate);
        bandLoudness[band].setBaseCount (gateStagger * static_cast<int> (band));
        bandLoudness[band].prepare();
    }

    resetBands();
}

void BandAnalyser::resetBands() noexcept
{
    resetLowBands();
    resetHighBands();
}

void BandAnalyser::resetLowBands() noexcept
{
    resetMeters (0, lowBandCount);
}

void BandAnalyser::resetHighBands() noexcept
{
    resetMeters (lowBandCount, analysisBandCount);
}

void BandAnalyser::resetMeters (std::size_t first, std::size_t end) noexcept
{
    for (auto band = first; band < end; ++band)
        bandLoudness[band].reset (resetLevelDb);
}

void BandAnalyser::fillLevels (float levelDb) noexcept
{
    for (auto& level : bandLevels)
        level.store (levelDb, std::memory_order_relaxed);
}

void BandAnalyser::processLow (const float* left, const float* right, int count) noexcept
{
    const orvik::FlushDenormals flush;
    process (lowBank, 0, lowBandCount, left, right, count);
}

void BandAnalyser::processHigh (const float* left, const float* right, int count) noexcept
{
    const orvik::FlushDenormals flush;

    for (std::size_t bank = 0; bank < highBanks.size(); ++bank)
    {
        const auto first = lowBandCount + bank * bankSize;
        process (highBanks[bank], first, std::min (first + bankSize, analysisBandCount), left, right, count);
    }
}

void BandAnalyser::process (orvik::BandFilterBank& bank,
                            std::size_t firstBand,
                            std::size_t endBand,
                            const float* left,
                            const float* right,
                            int count) noexcept
{
    std::array<std::array<float, chunkLength>, bankSize> powers;
    const std::array<float*, bankSize> rows { powers[0].data(), powers[1].data(), powers[2].data(), powers[3].data() };

    for (int start = 0; start < count; start += chunkLength)
    {
        const auto frames = std::min (count - start, chunkLength);
        bank.process (left + start, right != nullptr ? right + start : nullptr, rows, frames);

        for (auto band = firstBand; band < endBand; ++band)
        {
            const auto level = bandLoudness[band].integratedBlock (rows[band - firstBand], frames);

            if (storing == Storing::everyReturn || ! (std::isinf (level) && level < 0.0f))
                bandLevels[band].store (level, std::memory_order_relaxed);
        }
    }
}
