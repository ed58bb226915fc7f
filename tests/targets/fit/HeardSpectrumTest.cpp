#include "targets/fit/HeardSpectrum.h"

#include "dsp/filters/VariableQ2ndOrder.h"
#include "support/BiQuadResponse.h"
#include "targets/fit/FitGrid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>

namespace
{
constexpr auto rate = 44100.0;
constexpr HeardSpectrum::Levels music {
    -25.0f, -30.1f, -36.2f, -36.2f, -40.8f, -42.7f, -43.0f, -45.3f, -51.9f, -56.3f
};

/** The band filter in power, from the sections that the meters run. */
double meterFilterAt (std::size_t band, double frequencyHz)
{
    const auto bandRate = band < lowBandCount ? rate / 4.0 : rate;
    auto amplitude = 2.0;

    for (const auto type : { orvik::VariableQ2ndOrder<double>::lowPass, orvik::VariableQ2ndOrder<double>::highPass })
        for (const auto q : { 0.5411961, 1.306563 })
        {
            orvik::VariableQ2ndOrder<double> section;
            section.setResponse (q, analysisCentresHz[band], static_cast<float> (bandRate), type);
            amplitude *= std::abs (responseOf (section, frequencyHz, bandRate));
        }

    return frequencyHz < 0.5 * bandRate ? amplitude * amplitude : 0.0;
}

TEST (HeardSpectrumTest, readsAsTheNumbersThatItWasMadeFrom)
{
    const auto frequencies = fitGrid (16.0);
    const HeardSpectrum spectrum (-16.6f, music, rate, frequencies);
    EXPECT_NEAR (std::accumulate (spectrum.overall().begin(), spectrum.overall().end(), 0.0), 1.0, 1e-12);

    for (std::size_t band = 0; band + 1 < analysisBandCount; ++band)
    {
        auto share = 0.0;

        for (std::size_t index = 0; index < frequencies.size(); ++index)
            share += spectrum.overall()[index] * meterFilterAt (band, frequencies[index]);

        // The bass that fills up the overall reading reaches into the lowest band.
        EXPECT_NEAR (-16.6 + 10.0 * std::log10 (share), static_cast<double> (music[band]), band == 0 ? 0.5 : 0.05)
            << band;
    }
}

TEST (HeardSpectrumTest, aBandHearsMostlyWhatIsNearItsCentre)
{
    const auto frequencies = fitGrid (16.0);
    const HeardSpectrum spectrum (-16.6f, music, rate, frequencies);

    for (std::size_t band = 0; band + 1 < analysisBandCount; ++band)
    {
        auto near = 0.0;

        for (std::size_t index = 0; index < frequencies.size(); ++index)
            if (std::abs (std::log2 (frequencies[index] / static_cast<double> (analysisCentresHz[band]))) < 0.75)
                near += spectrum.band (band)[index];

        EXPECT_GT (near, 0.85) << band;
    }
}

TEST (HeardSpectrumTest, whatNoBandHeardLiesInTheBass)
{
    const auto frequencies = fitGrid (16.0);
    const HeardSpectrum full (-10.0f, music, rate, frequencies);
    auto bass = 0.0;

    for (std::size_t index = 0; index < frequencies.size(); ++index)
        if (frequencies[index] < 210.0)
            bass += full.overall()[index];

    EXPECT_GT (bass, 0.9);
}

TEST (HeardSpectrumTest, aBandWithoutAReadingHearsNothing)
{
    auto dull = music;
    dull[7] = dull[8] = dull[9] = -std::numeric_limits<float>::infinity();
    const auto frequencies = fitGrid (16.0);
    const HeardSpectrum spectrum (-16.6f, dull, rate, frequencies);
    EXPECT_TRUE (spectrum.band (7).empty());
    EXPECT_TRUE (spectrum.band (8).empty());
    EXPECT_FALSE (spectrum.band (6).empty());

    for (std::size_t index = 0; index < frequencies.size(); ++index)
        EXPECT_TRUE (std::isfinite (spectrum.overall()[index]));
}
} // namespace
