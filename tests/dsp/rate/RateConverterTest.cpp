#include "dsp/rate/RateConverter.h"
#include "dsp/rate/ReducedRate.h"

#include "dsp/design/FirLengths.h"
#include "dsp/rate/RateFilterTable.h"
#include "support/SimdLevels.h"
#include "support/TestSignals.h"

#include <gtest/gtest.h>

#include <complex>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace
{
constexpr double rates[] { 44100.0, 48000.0, 88200.0, 96000.0, 176400.0, 192000.0 };

struct Stereo
{
    std::vector<double> left;
    std::vector<double> right;

    bool operator== (const Stereo&) const = default;
};

std::unique_ptr<RateConverter> converterFor (double rate)
{
    auto converter = std::make_unique<RateConverter>();
    converter->setSampleRate (rate);
    converter->buildFilters();
    return converter;
}

Stereo decimate (RateConverter& converter,
                 const std::vector<float>& left,
                 const std::vector<float>& right,
                 const std::vector<Block>& blocks)
{
    Stereo result;

    for (const auto& block : blocks)
    {
        converter.decimateStereo (left.data() + block.start, right.data() + block.start, block.count);
        const auto count = block.count / converter.decimationFactor();
        result.left.insert (result.left.end(), converter.outputLeft(), converter.outputLeft() + count);
        result.right.insert (result.right.end(), converter.outputRight(), converter.outputRight() + count);
    }

    return result;
}

/** `blocks` count samples at the host's rate. */
Stereo interpolate (RateConverter& converter, const Stereo& input, const std::vector<Block>& blocks)
{
    Stereo result;
    const auto factor = converter.decimationFactor();

    for (const auto& block : blocks)
    {
        converter.interpolateStereo (
            input.left.data() + block.start / factor, input.right.data() + block.start / factor, block.count / factor);
        result.left.insert (
            result.left.end(), converter.interpolatedLeft(), converter.interpolatedLeft() + block.count);
        result.right.insert (
            result.right.end(), converter.interpolatedRight(), converter.interpolatedRight() + block.count);
    }

    return result;
}

std::vector<double> decimateSingle (RateConverter& converter, const std::vector<float>& input)
{
    converter.decimateSingle (input.data(), static_cast<int> (input.size()));
    const auto count = static_cast<int> (input.size()) / converter.decimationFactor();
    return { converter.outputLeft(), converter.outputLeft() + count };
}

std::vector<double> interpolateSingle (RateConverter& converter, const std::vector<double>& input)
{
    const auto count = static_cast<int> (input.size());
    converter.interpolateSingle (input.data(), count);
    return { converter.interpolatedLeft(), converter.interpolatedLeft() + count * converter.decimationFactor() };
}

/** Decimation keeps every factor-th sample of the response, so an impulse at each offset is needed to see it all. */
std::vector<double> decimationImpulseResponse (double rate)
{
    constexpr int count = 4096;
    std::vector<double> response (count, 0.0);
    const auto factor = *decimationFactorFor (rate);

    for (int offset = 0; offset < factor; ++offset)
    {
        const auto converter = converterFor (rate);
        std::vector<float> impulse (count, 0.0f);
        impulse[static_cast<std::size_t> (offset)] = 1.0f;
        const auto kept = decimateSingle (*converter, impulse);

        for (int i = 0; i < static_cast<int> (kept.size()); ++i)
            if (i * factor >= offset)
                response[static_cast<std::size_t> (i * factor - offset)] = kept[static_cast<std::size_t> (i)];
    }

    return response;
}

std::vector<double> interpolationImpulseResponse (double rate)
{
    const auto converter = converterFor (rate);
    std::vector<double> impulse (4096 / static_cast<std::size_t> (converter->decimationFactor()), 0.0);
    impulse[0] = 1.0;
    auto response = interpolateSingle (*converter, impulse);

    for (auto& value : response)
        value /= converter->decimationFactor();

    return response;
}

struct GainAndDelay
{
    double gainDb;
    double groupDelay;
};

GainAndDelay measure (const std::vector<double>& response, double frequencyOverRate)
{
    std::complex<double> spectrum;
    std::complex<double> ramped;

    for (std::size_t n = 0; n < response.size(); ++n)
    {
        const auto index = static_cast<double> (n);
        const auto term = std::polar (response[n], -2.0 * std::numbers::pi * frequencyOverRate * index);
        spectrum += term;
        ramped += term * index;
    }

    return { 20.0 * std::log10 (std::abs (spectrum)), (ramped / spectrum).real() };
}

struct Figure
{
    int factor;
    double frequencyOverRate;
    double gainDb;
    double groupDelay;
};

std::vector<Figure> readFigures()
{
    std::ifstream file (SOLVANE_FIXTURES "/rate_filters.csv");
    std::vector<Figure> figures;
    std::string line;
    std::getline (file, line);

    while (std::getline (file, line))
    {
        std::replace (line.begin(), line.end(), ',', ' ');
        std::istringstream fields (line);
        std::string name;
        Figure figure {};
        fields >> name >> figure.factor >> figure.frequencyOverRate >> figure.gainDb >> figure.groupDelay;
        figures.push_back (figure);
    }

    return figures;
}

#ifdef __SIZEOF_FLOAT128__
__extension__ using Extended = __float128;
#else
using Extended = long double;
#endif

/** The section as it is given, direct form I in so many digits that its own round-off does not count. */
template <int order>
std::vector<double> filterExactly (const RateFilterSection<order>& section, const std::vector<double>& input)
{
    std::vector<Extended> output (input.size());

    for (std::size_t n = 0; n < input.size(); ++n)
    {
        Extended sum = 0.0;

        for (std::size_t k = 0; k <= static_cast<std::size_t> (order) && k <= n; ++k)
        {
            sum += static_cast<Extended> (section.numerator[k]) * static_cast<Extended> (input[n - k]);

            if (k > 0)
                sum -= static_cast<Extended> (section.denominator[k]) * output[n - k];
        }

        output[n] = sum;
    }

    std::vector<double> rounded (output.size());
    std::transform (output.begin(), output.end(), rounded.begin(), [] (auto v) { return static_cast<double> (v); });
    return rounded;
}

std::vector<double> filterExactly (double rate, const std::vector<double>& input)
{
    return *decimationFactorFor (rate) == 4 ? filterExactly (rateFilterByFour, input)
                                            : filterExactly (rateFilterByEight, input);
}

std::vector<double> everyNth (const std::vector<double>& input, int factor)
{
    std::vector<double> kept;

    for (std::size_t i = 0; i < input.size(); i += static_cast<std::size_t> (factor))
        kept.push_back (input[i]);

    return kept;
}

double largestAfter (const std::vector<double>& values, std::size_t first)
{
    double largest = 0.0;

    for (std::size_t i = first; i < values.size(); ++i)
        largest = std::max (largest, std::abs (values[i]));

    return largest;
}

/** Amplitude and delay in samples of the sine that fits the second half of `output` best, for an input sine of
    amplitude 1 and phase 0. */
std::pair<double, double> fitSine (const std::vector<double>& output, double cyclesPerSample)
{
    std::complex<double> sum;
    const auto period = static_cast<std::size_t> (std::lround (1.0 / cyclesPerSample));
    const auto count = output.size() / 2 / period * period;

    for (auto n = output.size() - count; n < output.size(); ++n)
        sum += std::polar (output[n], -2.0 * std::numbers::pi * cyclesPerSample * static_cast<double> (n));

    sum *= std::complex<double> (0.0, 2.0 / static_cast<double> (count));
    return { std::abs (sum), -std::arg (sum) / (2.0 * std::numbers::pi * cyclesPerSample) };
}

TEST (RateConverterTest, gainAndGroupDelayOfBothDirectionsMatchTheFigures)
{
    const auto figures = readFigures();
    ASSERT_EQ (figures.size(), 24u);

    for (const auto& response : { decimationImpulseResponse (48000.0), interpolationImpulseResponse (48000.0) })
    {
        for (const auto& figure : figures)
        {
            if (figure.factor != 4 || figure.gainDb < -60.0)
                continue;

            const auto measured = measure (response, figure.frequencyOverRate);
            EXPECT_NEAR (measured.gainDb, figure.gainDb, 0.01) << figure.frequencyOverRate;
            EXPECT_NEAR (measured.groupDelay, figure.groupDelay, 0.01) << figure.frequencyOverRate;
        }
    }

    for (const auto& response : { decimationImpulseResponse (192000.0), interpolationImpulseResponse (192000.0) })
    {
        for (const auto& figure : figures)
        {
            if (figure.factor != 8 || figure.gainDb < -60.0)
                continue;

            const auto measured = measure (response, figure.frequencyOverRate);
            EXPECT_NEAR (measured.gainDb, figure.gainDb, 0.01) << figure.frequencyOverRate;
            EXPECT_NEAR (measured.groupDelay, figure.groupDelay, 0.01) << figure.frequencyOverRate;
        }
    }
}

TEST (RateConverterTest, responsesFallAtLeast120DecibelsInTheStopBands)
{
    for (const auto& [rate, edge] : { std::pair { 48000.0, 0.1251 }, std::pair { 192000.0, 0.065 } })
        for (const auto& response : { decimationImpulseResponse (rate), interpolationImpulseResponse (rate) })
            for (auto frequency = edge; frequency <= 0.5; frequency += 0.003)
                EXPECT_LT (measure (response, frequency).gainDb, -119.99) << rate << " " << frequency;
}

TEST (RateConverterTest, aSineInTheStopBandIsGoneAfterDecimation)
{
    for (const auto rate : rates)
    {
        const auto converter = converterFor (rate);
        const auto output = decimateSingle (*converter, toFloats (sine (8192, 0.2)));
        EXPECT_LT (largestAfter (output, output.size() / 2), 1e-6) << rate;
    }
}

TEST (RateConverterTest, aHundredHertzSineComesBackLateByBothFilters)
{
    struct Row
    {
        double rate, delay, gain;
    };

    for (const auto& row : { Row { 48000.0, 23.70, 1.0 }, Row { 192000.0, 53.46, 1.012 } })
    {
        const auto converter = converterFor (row.rate);
        const auto input = toFloats (sine (19200, 100.0 / row.rate));
        const auto blocks = randomBlocks (19200, 8, 8192, 1);
        const auto reduced = decimate (*converter, input, input, blocks);
        const auto [gain, delay] = fitSine (interpolate (*converter, reduced, blocks).left, 100.0 / row.rate);
        EXPECT_NEAR (delay, row.delay, 0.005);
        EXPECT_NEAR (gain, row.gain, 0.0005);
    }
}

TEST (RateConverterTest, factorFollowsTheRate)
{
    for (const auto rate : rates)
        EXPECT_EQ (converterFor (rate)->decimationFactor(), rate > 96000.0 ? 8 : 4);
}

TEST (RateConverterTest, anUnlistedRateKeepsTheLastFiltersAndTheirState)
{
    const auto input = toFloats (noise (64, 1));
    const auto changed = converterFor (192000.0);
    const auto unchanged = converterFor (192000.0);
    decimateSingle (*changed, input);
    decimateSingle (*unchanged, input);
    changed->setSampleRate (384000.0);
    changed->buildFilters();
    EXPECT_EQ (changed->decimationFactor(), 8);
    EXPECT_EQ (decimateSingle (*changed, input), decimateSingle (*unchanged, input));
}

TEST (RateConverterTest, withoutAnyFilterOutputsAreZeros)
{
    RateConverter converter;
    converter.setSampleRate (32000.0);
    converter.buildFilters();
    EXPECT_EQ (converter.decimationFactor(), 0);
    const auto input = toFloats (noise (64, 2));
    const auto reduced = noise (16, 3);
    converter.decimateStereo (input.data(), input.data(), 64);
    converter.interpolateStereo (reduced.data(), reduced.data(), 16);

    for (int i = 0; i < 64; ++i)
    {
        EXPECT_EQ (converter.outputLeft()[i], 0.0);
        EXPECT_EQ (converter.outputRight()[i], 0.0);
        EXPECT_EQ (converter.interpolatedLeft()[i], 0.0);
        EXPECT_EQ (converter.interpolatedRight()[i], 0.0);
    }
}

TEST (RateConverterTest, buildingFiltersMakesTheStateZero)
{
    const auto input = toFloats (noise (256, 4));
    const auto converter = converterFor (48000.0);
    const auto first = decimateSingle (*converter, input);
    const auto firstBack = interpolateSingle (*converter, first);
    EXPECT_NE (decimateSingle (*converter, input), first);
    converter->buildFilters();
    EXPECT_EQ (decimateSingle (*converter, input), first);
    EXPECT_EQ (interpolateSingle (*converter, first), firstBack);
}

TEST (RateConverterTest, directionsDoNotShareState)
{
    const auto input = toFloats (noise (256, 5));
    const auto both = converterFor (48000.0);
    const auto decimating = converterFor (48000.0);
    interpolateSingle (*both, noise (64, 6));
    EXPECT_EQ (decimateSingle (*both, input), decimateSingle (*decimating, input));
}

class RateConverterLevelTest : public testing::TestWithParam<SimdLevel>
{
protected:
    ScopedSimdLevel level { GetParam() };
};

INSTANTIATE_TEST_SUITE_P (Levels, RateConverterLevelTest, testing::ValuesIn (availableSimdLevels()), simdLevelName);

TEST_P (RateConverterLevelTest, followsTheGivenSectionInExtendedPrecision)
{
    for (const auto rate : { 48000.0, 192000.0 })
    {
        const auto converter = converterFor (rate);
        const auto factor = converter->decimationFactor();
        const auto input = toFloats (noise (8192, 7));
        const auto reduced = decimateSingle (*converter, input);
        EXPECT_LT (largestDifference (reduced, everyNth (filterExactly (rate, toDoubles (input)), factor)), 1e-9);

        std::vector<double> stuffed (8192, 0.0);
        const auto lowNoise = noise (8192 / factor, 8);

        for (std::size_t i = 0; i < lowNoise.size(); ++i)
            stuffed[i * static_cast<std::size_t> (factor)] = lowNoise[i] * factor;

        EXPECT_LT (largestDifference (interpolateSingle (*converter, lowNoise), filterExactly (rate, stuffed)), 1e-9);
    }
}

TEST_P (RateConverterLevelTest, resultsDoNotDependOnThePartitionToTheLastBit)
{
    const auto left = toFloats (noise (8192, 9));
    const auto right = toFloats (noise (8192, 10));

    for (const auto rate : { 48000.0, 192000.0 })
    {
        const auto whole = converterFor (rate);
        const auto factor = whole->decimationFactor();
        const auto expected = decimate (*whole, left, right, { { 0, 8192 } });
        const auto expectedBack = interpolate (*whole, expected, { { 0, 8192 } });

        for (const auto largest : { factor, 3 * factor, 64, 1000 })
        {
            const auto cut = converterFor (rate);
            const auto blocks = randomBlocks (8192, factor, largest, 11);
            EXPECT_EQ (decimate (*cut, left, right, blocks), expected) << rate << " " << largest;
            EXPECT_EQ (interpolate (*cut, expected, blocks), expectedBack) << rate << " " << largest;
        }
    }
}

TEST_P (RateConverterLevelTest, stereoEqualsTwoSinglesToTheLastBit)
{
    const auto left = toFloats (noise (4000, 12));
    const auto right = toFloats (noise (4000, 13));

    for (const auto rate : { 48000.0, 192000.0 })
    {
        const auto stereo = converterFor (rate);
        const auto reduced = decimate (*stereo, left, right, { { 0, 4000 } });
        const auto back = interpolate (*stereo, reduced, { { 0, 4000 } });
        const auto single = converterFor (rate);
        EXPECT_EQ (decimateSingle (*single, left), reduced.left);
        EXPECT_EQ (interpolateSingle (*single, reduced.left), back.left);
        single->buildFilters();
        EXPECT_EQ (decimateSingle (*single, right), reduced.right);
        EXPECT_EQ (interpolateSingle (*single, reduced.right), back.right);
    }
}

TEST_P (RateConverterLevelTest, singleAndStereoBlocksContinueEachOther)
{
    const auto left = toFloats (noise (640, 14));

    for (const auto rate : { 48000.0, 192000.0 })
    {
        const auto whole = converterFor (rate);
        const auto mixed = converterFor (rate);
        const auto expected = decimateSingle (*whole, left);
        std::vector<double> output;

        for (int start = 0; start < 640; start += 64)
        {
            if (start % 128 == 0)
                mixed->decimateStereo (left.data() + start, left.data() + start, 64);
            else
                mixed->decimateSingle (left.data() + start, 64);

            output.insert (output.end(), mixed->outputLeft(), mixed->outputLeft() + 64 / mixed->decimationFactor());
        }

        EXPECT_EQ (output, expected);
    }
}

TEST (RateConverterTest, takesWholeFactorsAndNoMoreThanItsBuffers)
{
    const auto input = toFloats (noise (9000, 17));
    const auto whole = converterFor (48000.0);
    const auto excess = converterFor (48000.0);
    whole->decimateSingle (input.data(), 8192);
    excess->decimateSingle (input.data(), 9000);
    EXPECT_TRUE (std::equal (whole->outputLeft(), whole->outputLeft() + 2048, excess->outputLeft()));

    const auto even = converterFor (192000.0);
    const auto odd = converterFor (192000.0);
    even->decimateSingle (input.data(), 16);
    odd->decimateSingle (input.data(), 23);
    even->decimateSingle (input.data(), 8);
    odd->decimateSingle (input.data(), 8);
    EXPECT_EQ (even->outputLeft()[0], odd->outputLeft()[0]);
}
} // namespace
