#include "targets/fit/HeardSpectrum.h"

#include "dsp/rate/ReducedRate.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace
{
/** What stands for nothing: far below the meters' gate. */
constexpr double silenceDb = -100.0;

/** Below the lowest band a spectrum is taken to fall so fast per octave, but for what is known to be there. */
constexpr double fallDb = 12.0;

/** Where the bass is put that no band has heard. */
constexpr double bassLowHz = 40.0;
constexpr double bassHighHz = 200.0;

/** Each round takes most of what is missing; the filters overlap little. */
constexpr int rounds = 12;

/** The top band is no reading of its own: it is extrapolated, and may lie anywhere. */
constexpr std::size_t readBandCount = analysisBandCount - 1;
constexpr double largestTopRiseDb = 3.0;
constexpr double largestTopFallDb = 20.0;

double powerOf (double levelDb)
{
    return std::pow (10.0, 0.1 * levelDb);
}

double levelOf (double power)
{
    return 10.0 * std::log10 (std::max (power, 1e-30));
}

/** A band meter's filter, in power: fourth-order slopes on both sides and 1 at the centre. */
double bandFilterAt (std::size_t band, double frequencyHz, double sampleRate)
{
    const auto rate = band < lowBandCount ? sampleRate / decimationFactorFor (sampleRate).value_or (4) : sampleRate;

    if (frequencyHz >= 0.499 * rate)
        return 0.0;

    const auto warped = [rate] (double hz) { return std::tan (std::numbers::pi * hz / rate); };
    const auto ratio = std::pow (warped (frequencyHz) / warped (static_cast<double> (analysisCentresHz[band])), 8.0);
    return 4.0 / ((1.0 + ratio) * (1.0 + 1.0 / ratio));
}

/** Heights of the density in dB at the bands' centres, made into a density at any frequency. */
double densityDbAt (const std::array<double, analysisBandCount>& heights, double frequencyHz)
{
    const auto octaves = [&] (std::size_t band)
    { return std::log2 (frequencyHz / static_cast<double> (analysisCentresHz[band])); };

    if (octaves (0) <= 0.0)
        return heights[0] + fallDb * octaves (0);

    for (std::size_t band = 1; band < heights.size(); ++band)
        if (octaves (band) <= 0.0)
        {
            const auto share = octaves (band - 1) / (octaves (band - 1) - octaves (band));
            return heights[band - 1] + share * (heights[band] - heights[band - 1]);
        }

    return heights.back();
}

void normalise (HeardSpectrum::Shares& shares)
{
    auto sum = 0.0;

    for (const auto share : shares)
        sum += share;

    for (auto& share : shares)
        share /= sum;
}
} // namespace

HeardSpectrum::HeardSpectrum (float lufs, const Levels& bands, double sampleRate, std::span<const double> frequenciesHz)
{
    const auto isRead = [&] (std::size_t band) { return band < readBandCount && std::isfinite (bands[band]); };
    std::array<Shares, readBandCount> filters;

    for (std::size_t band = 0; band < readBandCount; ++band)
        for (const auto frequency : frequenciesHz)
            filters[band].push_back (bandFilterAt (band, frequency, sampleRate));

    std::array<double, analysisBandCount> heights;

    for (std::size_t band = 0; band < readBandCount; ++band)
        heights[band] = isRead (band) ? static_cast<double> (bands[band]) : silenceDb;

    const auto topDistance = static_cast<double> (bands[readBandCount] - bands[readBandCount - 1]);
    const auto placeTop = [&]
    {
        heights.back() =
            heights[readBandCount - 1]
            + (std::isfinite (topDistance) ? std::clamp (topDistance, -largestTopFallDb, largestTopRiseDb) : 0.0);
    };

    Shares density (frequenciesHz.size());

    for (int round = 0; round < rounds; ++round)
    {
        placeTop();
        std::ranges::transform (
            frequenciesHz, density.begin(), [&] (double hz) { return powerOf (densityDbAt (heights, hz)); });

        for (std::size_t band = 0; band < readBandCount; ++band)
            if (isRead (band))
            {
                auto power = 0.0;

                for (std::size_t index = 0; index < density.size(); ++index)
                    power += density[index] * filters[band][index];

                heights[band] = std::max (heights[band] + static_cast<double> (bands[band]) - levelOf (power),
                                          static_cast<double> (bands[band]) + silenceDb);
            }
    }

    for (std::size_t band = 0; band < readBandCount; ++band)
        if (isRead (band))
        {
            for (std::size_t index = 0; index < density.size(); ++index)
                bandShares[band].push_back (density[index] * filters[band][index]);

            normalise (bandShares[band]);
        }

    overallShares = density;
    auto known = 0.0;
    auto bassPoints = 0.0;

    for (std::size_t index = 0; index < density.size(); ++index)
    {
        known += density[index];
        bassPoints += frequenciesHz[index] >= bassLowHz && frequenciesHz[index] <= bassHighHz ? 1.0 : 0.0;
    }

    if (const auto rest = powerOf (static_cast<double> (lufs)) - known; rest > 0.0 && bassPoints > 0.0)
        for (std::size_t index = 0; index < density.size(); ++index)
            if (frequenciesHz[index] >= bassLowHz && frequenciesHz[index] <= bassHighHz)
                overallShares[index] += rest / bassPoints;

    normalise (overallShares);
}
