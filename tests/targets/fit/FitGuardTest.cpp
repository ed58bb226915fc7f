#include "targets/fit/FitGuard.h"

#include <gtest/gtest.h>

namespace
{
/** One band has nearly all of the loudness, and is to lose some of it. */
FitTask loudAtFourThousand()
{
    FitTask task;
    task.lufs = -18.0f;
    task.bands.fill (-55.0f);
    task.bands[5] = -20.0f;
    task.adjustments.fill (0.0f);
    task.adjustments[5] = -8.0f;
    task.sampleRate = 44100.0;
    return task;
}

std::vector<FitBand> cutBy (double decibels)
{
    return { { 4000.0, -decibels, 0.5, false } };
}
} // namespace

/** A cut lifts nothing, but the gain that makes up for its loudness lifts all the rest. */
TEST (FitGuardTest, theLimitsHoldBehindTheOutputGainToo)
{
    const FitGuard guard (loudAtFourThousand());
    EXPECT_GT (guard.makeUpDb (cutBy (2.5)), 1.4);
    EXPECT_TRUE (guard.admits (cutBy (2.5)));
    EXPECT_GT (guard.makeUpDb (cutBy (10.0)), 3.3);
    EXPECT_FALSE (guard.admits (cutBy (10.0)));
}

TEST (FitGuardTest, theLimitsHoldWithoutTheOutputGainToo)
{
    const FitGuard guard (loudAtFourThousand());
    EXPECT_FALSE (guard.admits ({ { 8000.0, 4.0, 1.0, false } }));
    EXPECT_TRUE (guard.admits ({ { 8000.0, 2.0, 1.0, false } }));
}
