#include "support/DesignedFilter.h"
#include "support/SessionRig.h"

#include <gtest/gtest.h>

#include <random>

// The end of a solo, a dropped queue and a batch that was cut short all have the filters drawn again. Nobody may hear
// that.

namespace
{
using Kind = Settings::Parameter;
using Mode = BlockProcessorMode;

constexpr float mix = 1.0f, master = 0.0f;
constexpr std::array allModes { Mode::stereo, Mode::mid, Mode::side, Mode::display };

/** What brings a replay about. */
enum class Cause
{
    endOfASolo,
    droppedQueue,
    cutBatch
};

class ReplayRig : public PluginRig
{
public:
    explicit ReplayRig (float mode)
    {
        set (ParameterIds::mode, mode);
        prepare (48000.0, 64);
        settle();
    }

    /** Has the filters drawn again. */
    void replay (Cause cause, int soloedBand = 9)
    {
        switch (cause)
        {
            case Cause::endOfASolo:
                set (soloedBand, Kind::solo, 1.0f);
                waitForWorkers();
                set (soloedBand, Kind::solo, 0.0f);
                break;
            case Cause::droppedQueue:
                losing (cause, [] {});
                break;
            case Cause::cutBatch:
                losing (cause, [] {});
                break;
        }

        settle();
    }

    /** Makes changes whose messages are all lost on their way, and lets the timer's turn make good for it. */
    void losing (Cause cause, const std::function<void()>& changes)
    {
        waitForWorkers();

        for (const auto mode : allModes)
            engine.block (mode).own();

        changes();

        // Enough to be dropped; what they say is so already.
        for (int count = 0; count < 3; ++count)
            engine.repeatDrawings();

        if (cause == Cause::cutBatch)
            for (const auto mode : allModes)
                engine.worker (mode).setSkip (true);
        else
            engine.maintainQueues();

        for (const auto mode : allModes)
            engine.block (mode).disown();

        waitForWorkers();

        for (const auto mode : allModes)
            engine.worker (mode).setSkip (false);

        engine.maintainQueues();
        waitForWorkers();
    }

    /** Everything that is designed, of all modes. */
    std::vector<double> allTaps()
    {
        std::vector<double> all;
        const auto append = [&all] (std::span<const double> values)
        { all.insert (all.end(), values.begin(), values.end()); };

        for (const auto mode : { Mode::stereo, Mode::mid, Mode::side })
        {
            const auto sets = designedTaps (mode);
            append (sets.low.taps());
            append (sets.linearHigh.taps());
            append (sets.minimum.taps());
        }

        waitForWorkers();
        append (engine.block (Mode::display).displayCurve());
        return all;
    }

    double levelDb (Mode mode = Mode::stereo) { return designedFilter::highLevelDb (*this, 8000.0, mode); }

    BandEngine& engine = processor.bandEngine();
};

class ReplayTest : public testing::TestWithParam<Cause>
{
protected:
    /** Looks at the level before and after a replay. */
    void expectToStay (ReplayRig& rig, double levelDb, Mode mode = Mode::stereo)
    {
        rig.settle();

        // The fit's error at a peak of this height.
        const auto tolerance = 0.02 * std::abs (levelDb) + 0.05;
        EXPECT_NEAR (rig.levelDb (mode), levelDb, tolerance);
        const auto before = rig.allTaps();
        rig.replay (GetParam());
        EXPECT_EQ (rig.allTaps(), before);
    }
};

TEST_P (ReplayTest, aGainThatMasterHeldBeforeTheScaleStays)
{
    ReplayRig rig (master);
    rig.setBand (0, 8000.0f, 0.0f);
    rig.set (ParameterIds::gainScale, 150.0f);
    rig.set (0, Kind::gain, 4.0f);
    expectToStay (rig, 6.0);
}

TEST_P (ReplayTest, aMidSideGainBeyondTheLimitsStays)
{
    ReplayRig rig (mix);
    rig.setBand (0, 8000.0f, 12.0f);
    rig.set (ParameterIds::gainScale, 200.0f);
    rig.set (0, Kind::midSide, 0.0f);
    expectToStay (rig, 24.0, Mode::mid);
}

TEST_P (ReplayTest, aGainThatWasMovedAfterASessionStays)
{
    ReplayRig rig (mix);
    rig.setBand (0, 8000.0f, 6.0f);
    sessions::load (rig.processor, sessions::save (rig.processor));
    rig.set (0, Kind::gain, 4.0f);
    rig.set (ParameterIds::gainScale, 50.0f);
    expectToStay (rig, 3.0);
    rig.set (0, Kind::frequency, 9000.0f);
    rig.set (0, Kind::frequency, 8000.0f);
    expectToStay (rig, 2.0);
}

TEST_P (ReplayTest, whatTheEndOfAMainBypassBroughtBackStays)
{
    ReplayRig rig (master);
    rig.setBand (0, 8000.0f, 3.0f);
    rig.set (ParameterIds::gainScale, 150.0f);
    expectToStay (rig, 4.0);
    rig.set (ParameterIds::bypass, 1.0f);
    expectToStay (rig, 0.0);
    rig.set (ParameterIds::bypass, 0.0f);
    expectToStay (rig, 4.5);
}

TEST_P (ReplayTest, aQThatMasterHeldStays)
{
    ReplayRig rig (master);
    rig.setBand (0, 8000.0f, 3.0f);
    rig.set (0, Kind::q, 4.0f);
    expectToStay (rig, 3.0);
}

TEST_P (ReplayTest, whatAMonoLayoutIgnoredStays)
{
    ReplayRig rig (mix);
    rig.prepare (48000.0, 64, 1);
    rig.setBand (0, 8000.0f, 6.0f);
    rig.set (0, Kind::midSide, 0.0f);
    expectToStay (rig, 6.0);
}

TEST_P (ReplayTest, aSoloedBandKeepsItsGainThroughItsOwnSolo)
{
    ReplayRig rig (master);
    rig.setBand (0, 8000.0f, 6.0f);
    expectToStay (rig, 4.0);
    const auto before = rig.allTaps();
    rig.replay (Cause::endOfASolo, 0);
    EXPECT_EQ (rig.allTaps(), before);
}

TEST_P (ReplayTest, aBandWhoseSoloSwitchIsStillDownStays)
{
    ReplayRig rig (mix);
    rig.setBand (0, 8000.0f, 6.0f);
    rig.set (0, Kind::solo, 1.0f);
    rig.set (4, Kind::solo, 1.0f);
    rig.set (4, Kind::solo, 0.0f);
    expectToStay (rig, 6.0);

    // A change of its own is drawn as for a soloed band, until the switch is released.
    rig.set (0, Kind::q, 2.0f);
    rig.settle();
    EXPECT_NEAR (rig.levelDb(), 1.0, 0.1);
    rig.set (0, Kind::solo, 0.0f);
    expectToStay (rig, 6.0);
}

TEST_P (ReplayTest, noReplayChangesATap)
{
    for (const auto mode : { mix, master })
    {
        ReplayRig rig (mode);
        const auto seed = 41u + static_cast<unsigned> (GetParam());
        std::mt19937 random (seed);
        const auto anyOf = [&random] (int count) { return std::uniform_int_distribution (0, count - 1) (random); };
        const auto between = [&random] (float low, float high)
        { return std::uniform_real_distribution (low, high) (random); };
        const auto change = [&]
        {
            const auto band = anyOf (4);

            switch (anyOf (14))
            {
                case 0:
                case 1:
                    rig.set (band, Kind::gain, between (-12.0f, 12.0f));
                    break;
                case 2:
                    rig.set (band, Kind::frequency, between (320.0f, 18000.0f));
                    break;
                case 3:
                    rig.set (band, Kind::q, between (0.5f, 5.0f));
                    break;
                case 4:
                    rig.set (band, Kind::highShelf, static_cast<float> (anyOf (2)));
                    break;
                case 5:
                    rig.set (band, Kind::bypass, static_cast<float> (anyOf (2)));
                    break;
                case 6:
                case 7:
                    rig.set (band, Kind::midSide, 0.25f * static_cast<float> (anyOf (5)));
                    break;
                case 8:
                    rig.set (band, Kind::active, anyOf (4) == 0 ? 0.0f : 1.0f);
                    break;
                case 9:
                case 10:
                    rig.set (ParameterIds::gainScale, 50.0f * static_cast<float> (anyOf (5)));
                    break;
                case 11:
                    rig.set (ParameterIds::bypass, static_cast<float> (anyOf (2)));
                    break;
                case 12:
                    rig.set (ParameterIds::phase, static_cast<float> (anyOf (2)));
                    break;
                default:
                    if (anyOf (3) == 0)
                        sessions::load (rig.processor, sessions::save (rig.processor));
                    else
                        rig.set (ParameterIds::mode, static_cast<float> (anyOf (2)));
                    break;
            }
        };

        for (int band = 0; band < 4; ++band)
            rig.setBand (band, 1000.0f + 3000.0f * static_cast<float> (band), between (-6.0f, 6.0f));

        for (int step = 0; step < 60 && ! HasFailure(); ++step)
        {
            for (int count = anyOf (3); count >= 0; --count)
                change();

            rig.settle();
            const auto before = rig.allTaps();
            rig.replay (GetParam(), anyOf (10));
            EXPECT_EQ (rig.allTaps() == before, true) << "mode " << mode << ", step " << step << ", seed " << seed;
        }
    }
}

INSTANTIATE_TEST_SUITE_P (Causes,
                          ReplayTest,
                          testing::Values (Cause::endOfASolo, Cause::droppedQueue, Cause::cutBatch),
                          [] (const auto& tested)
                          {
                              return tested.param == Cause::endOfASolo     ? "endOfASolo"
                                     : tested.param == Cause::droppedQueue ? "droppedQueue"
                                                                           : "cutBatch";
                          });

//======================================================================================================================
TEST (LostUpdateTest, whatWasLostArrivesAsItWasSent)
{
    for (const auto cause : { Cause::droppedQueue, Cause::cutBatch })
    {
        const auto changed = [] (PluginRig& rig)
        {
            rig.set (0, Kind::gain, 6.0f);
            rig.set (1, Kind::q, 4.0f);
            rig.set (1, Kind::gain, 5.5f);
            rig.set (2, Kind::midSide, 0.25f);
            rig.set (2, Kind::frequency, 5000.0f);
            rig.set (ParameterIds::gainScale, 150.0f);
            rig.set (3, Kind::gain, -5.0f);
        };
        const auto prepared = [] (ReplayRig& rig)
        {
            for (int band = 0; band < 4; ++band)
                rig.setBand (band, 2000.0f + 3000.0f * static_cast<float> (band), 2.0f);

            rig.settle();
        };

        ReplayRig losing (master), losingNothing (master);
        prepared (losing);
        prepared (losingNothing);
        losing.losing (cause, [&] { changed (losing); });
        changed (losingNothing);
        losingNothing.settle();
        EXPECT_EQ (losing.allTaps(), losingNothing.allTaps());
    }
}

TEST (LostUpdateTest, masterIsToldOfAGainThatWasLost)
{
    for (const auto cause : { Cause::droppedQueue, Cause::cutBatch })
    {
        ReplayRig rig (mix);
        rig.setBand (0, 8000.0f, 3.0f);
        rig.settle();
        ASSERT_TRUE (rig.processor.model.canUseMasterMode());
        rig.losing (cause, [&] { rig.set (0, Kind::gain, 6.0f); });
        EXPECT_FALSE (rig.processor.model.canUseMasterMode());
    }
}

TEST (LostUpdateTest, whatChangesDuringASoloIsThereWhenItEnds)
{
    ReplayRig soloed (master), never (master);

    for (auto* rig : { &soloed, &never })
    {
        rig->setBand (0, 8000.0f, 3.0f);
        rig->setBand (1, 3000.0f, 3.0f);
        rig->settle();

        if (rig == &soloed)
            rig->set (0, Kind::solo, 1.0f);

        rig->set (0, Kind::gain, 6.0f);
        rig->set (1, Kind::q, 4.0f);
        rig->set (1, Kind::midSide, 0.0f);
        rig->set (ParameterIds::gainScale, 130.0f);

        if (rig == &soloed)
            rig->set (0, Kind::solo, 0.0f);

        rig->settle();
    }

    EXPECT_EQ (soloed.allTaps(), never.allTaps());
}

//======================================================================================================================
TEST (PreparedAgainTest, atTheSameRateNoSoloComesBack)
{
    ReplayRig rig (mix);
    rig.setBand (3, 8000.0f, 3.0f);
    rig.settle();
    const auto unsoloed = designedFilter::high (rig);
    rig.set (3, Kind::solo, 1.0f);
    rig.set (7, Kind::solo, 1.0f);
    rig.set (3, Kind::solo, 0.0f);
    ASSERT_FALSE (rig.processor.model.soloActive());

    rig.set (ParameterIds::phase, 0.0f);
    rig.prepare (48000.0, 64);
    EXPECT_FALSE (rig.processor.model.soloActive());
    EXPECT_EQ (rig.processor.model.soloBand(), -1);
    EXPECT_EQ (designedFilter::high (rig), unsoloed);

    rig.prepare (44100.0, 64);
    EXPECT_EQ (rig.processor.model.soloBand(), 7) << "all is read anew for a new rate";
}

TEST (PreparedAgainTest, newLengthsAtTheSameRateChangeNoGain)
{
    ReplayRig rig (master);
    rig.setBand (0, 8000.0f, 3.0f);
    rig.set (ParameterIds::gainScale, 150.0f);
    rig.settle();
    const auto before = designedFilter::high (rig);
    rig.set (ParameterIds::phase, 0.0f);
    rig.prepare (48000.0, 64);
    EXPECT_EQ (designedFilter::high (rig), before) << "4 dB, held by Master";

    rig.set (ParameterIds::phase, 1.0f);
    rig.settle();
    EXPECT_EQ (designedFilter::high (rig), before) << "while audio runs as well";
}

TEST (PreparedAgainTest, aNewRateBringsTheParameters)
{
    ReplayRig rig (mix);
    rig.setBand (0, 8000.0f, 12.0f);
    rig.set (ParameterIds::gainScale, 200.0f);
    rig.set (0, Kind::midSide, 0.0f);
    rig.prepare (44100.0, 64);
    rig.prepare (48000.0, 64);
    EXPECT_NEAR (rig.levelDb (Mode::mid), 12.0, 0.3) << "as the gain scale gives it";
}

TEST (PreparedAgainTest, aChangeOfModeSendsTheFirstBandAsTheModeHasIt)
{
    ReplayRig rig (master);
    rig.setBand (0, 8000.0f, 6.0f);
    rig.settle();
    EXPECT_NEAR (rig.levelDb(), 4.0, 0.15);
    rig.set (ParameterIds::mode, mix);
    rig.settle();
    EXPECT_NEAR (rig.levelDb(), 6.0, 0.15);
    const auto before = rig.allTaps();
    rig.replay (Cause::endOfASolo);
    EXPECT_EQ (rig.allTaps(), before);
}
} // namespace
