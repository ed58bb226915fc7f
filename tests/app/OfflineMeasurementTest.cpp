#include "app/OfflineMeasurement.h"

#include "app/Measurement.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <fstream>
#include <numbers>
#include <vector>

namespace
{
struct Partial
{
    double hertz;
    double amplitude;
};

/** The reference's steady mixture; the right channel has half the level. */
std::vector<float> mixture (int length, double sampleRate)
{
    constexpr Partial partials[] { { 330, 0.1 },   { 1000, 0.2 },   { 3000, 0.05 },
                                   { 6000, 0.04 }, { 10500, 0.02 }, { 15000, 0.01 } };
    std::vector<float> signal (static_cast<std::size_t> (length));

    for (int index = 0; index < length; ++index)
    {
        auto sum = 0.0;

        for (const auto& partial : partials)
            sum += partial.amplitude * std::sin (2.0 * std::numbers::pi * partial.hertz * index / sampleRate);

        signal[static_cast<std::size_t> (index)] = static_cast<float> (sum);
    }

    return signal;
}

class OfflineMeasurementTest : public testing::Test
{
protected:
    void measure (OfflineMeasurement& measurement, int blockLength)
    {
        const auto length = static_cast<int> (reference["seconds"].get<double>() * 48000.0) / 512 * 512;
        const auto left = mixture (length, 48000.0);
        auto right = left;

        for (auto& sample : right)
            sample *= 0.5f;

        for (int start = 0; start < length; start += blockLength)
            measurement.process (left.data() + start, right.data() + start, std::min (blockLength, length - start));
    }

    const nlohmann::json reference = nlohmann::json::parse (std::ifstream (SOLVANE_FIXTURES "/band_levels.json"));
};

TEST_F (OfflineMeasurementTest, readsTheReferenceMixtureWithinTwoHundredthsOfADecibel)
{
    OfflineMeasurement measurement (48000.0, 2);
    measure (measurement, 512);
    const auto bands = measurement.bands();

    EXPECT_NEAR (measurement.lufs(), reference["inputLoudness"].get<float>(), 0.02f);

    for (std::size_t band = 0; band < bands.size(); ++band)
        EXPECT_NEAR (bands[band], reference["bandLevels"][band].get<float>(), 0.02f) << "band " << band;
}

TEST_F (OfflineMeasurementTest, adjustmentsAreTargetLessLevelAtEqualLoudness)
{
    OfflineMeasurement measurement (48000.0, 2);
    measure (measurement, 4096);

    MeasurementTarget target;
    target.lufs = reference["targetLufs"];

    for (std::size_t band = 0; band < target.values.size(); ++band)
        target.values[band] = reference["targetValues"][band];

    const auto adjustments = target.adjustmentsFor (measurement.lufs(), measurement.bands());

    // The reference extrapolates the target's last value too; the nine below do not depend on that.
    for (std::size_t band = 0; band < 9; ++band)
        EXPECT_NEAR (adjustments[band], reference["gainTarget"][band].get<float>(), 0.02f) << "band " << band;
}

TEST_F (OfflineMeasurementTest, doesNotDependOnTheBlocks)
{
    OfflineMeasurement whole (48000.0, 2);
    OfflineMeasurement pieces (48000.0, 2);
    measure (whole, 8192);
    measure (pieces, 20);

    EXPECT_EQ (whole.lufs(), pieces.lufs());
    EXPECT_EQ (whole.bands(), pieces.bands());
}

TEST_F (OfflineMeasurementTest, aRecordingBelowASecondHasNoReading)
{
    OfflineMeasurement measurement (48000.0, 1);
    const auto signal = mixture (24000, 48000.0);

    for (int start = 0; start < 24000; start += 4000)
        measurement.process (signal.data() + start, nullptr, 4000);

    EXPECT_TRUE (std::isinf (measurement.lufs()));

    for (const auto level : measurement.bands())
        EXPECT_FALSE (std::isfinite (level));

    for (const auto adjustment : MeasurementTarget().adjustmentsFor (measurement.lufs(), measurement.bands()))
        EXPECT_TRUE (std::isnan (adjustment));
}
} // namespace
