#include "gui/heat/HeatPeaks.h"

#include "support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
using Spectrum = std::array<float, HeatPeaks::binCount>;

/** A spectrum of one bin. */
Spectrum only (std::size_t bin, float magnitude)
{
    Spectrum spectrum {};
    spectrum[bin] = magnitude;
    return spectrum;
}
} // namespace

TEST (HeatPeaksTest, aHigherMagnitudeReplacesAPeakAndALowerOneLetsItFall)
{
    HeatPeaks peaks;
    peaks.update (only (100, 0.5f));
    EXPECT_FLOAT_EQ (peaks.values()[100], 0.5f);
    peaks.update (only (100, 0.8f));
    EXPECT_FLOAT_EQ (peaks.values()[100], 0.8f);
    peaks.update (only (100, 0.7f));
    EXPECT_FLOAT_EQ (peaks.values()[100], 0.56f);
    peaks.update (only (100, 0.1f));
    EXPECT_FLOAT_EQ (peaks.values()[100], 0.392f);
    peaks.fall();
    EXPECT_FLOAT_EQ (peaks.values()[100], 0.2744f);
}

TEST (HeatPeaksTest, eachBinGoesItsOwnWay)
{
    HeatPeaks peaks;
    peaks.update (only (0, 0.5f));
    peaks.update (only (512, 0.25f));
    EXPECT_FLOAT_EQ (peaks.values()[0], 0.35f);
    EXPECT_FLOAT_EQ (peaks.values()[512], 0.25f);
    EXPECT_EQ (peaks.values()[1], 0.0f);
    peaks.clear();
    EXPECT_EQ (peaks.values()[0], 0.0f);
    EXPECT_EQ (peaks.values()[512], 0.0f);
}

TEST (HeatPeaksTest, aLoudSoundFadesAsFastAsAQuietOne)
{
    HeatPeaks peaks;
    peaks.update (only (7, 512.0f));
    EXPECT_EQ (peaks.values()[7], 1.0f);
    peaks.fall();
    EXPECT_FLOAT_EQ (peaks.values()[7], 0.7f);
}

TEST (HeatPeaksTest, aLoudSoundThatGoesOnDoesNotFlicker)
{
    HeatPeaks peaks;

    for (const auto magnitude : { 3.0f, 2.0f, 2.0f, 1.0f, 400.0f })
    {
        peaks.update (only (7, magnitude));
        EXPECT_EQ (peaks.values()[7], 1.0f);
    }
}

TEST (HeatPeaksTest, whatIsNoMagnitudeCountsAsSilenceOrAsFull)
{
    HeatPeaks peaks;
    peaks.update (only (3, std::numeric_limits<float>::quiet_NaN()));
    EXPECT_EQ (peaks.values()[3], 0.0f);
    peaks.update (only (3, -1.0f));
    EXPECT_EQ (peaks.values()[3], 0.0f);
    peaks.update (only (3, std::numeric_limits<float>::infinity()));
    EXPECT_EQ (peaks.values()[3], 1.0f);
}

TEST (HeatPeaksTest, aFrameDoesNotAllocate)
{
    HeatPeaks peaks;
    const auto spectrum = only (3, 0.5f);
    const RealTimeGuard guard;
    peaks.update (spectrum);
    peaks.fall();
    EXPECT_EQ (guard.allocations(), 0);
}
