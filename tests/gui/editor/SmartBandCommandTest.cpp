#include "gui/editor/SmartBandCommand.h"

#include "support/Messages.h"
#include "targets/DisplayCurve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

namespace
{
using Kind = Settings::Parameter;

class SmartBandCommandTest : public testing::Test
{
protected:
    VelmoraAudioProcessor processor { {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone };
    PluginModel& model = processor.model;
    MainWindow main { processor };
    TopRow buttons;
    EditorClock clock;
    Overlays overlays { main, buttons, model.interfaceState, clock };
    SmartBandCommand command { model, main.room(), overlays };

    SmartBandCommandTest()
    {
        processor.prepareToPlay (48000.0, 512);
        main.room().pretendToShow();
        main.setSize (670, 622);
        model.setParameterValue (ParameterIds::mode, 1.0f);
    }

    /** A curve with one hump: as high as its gain at a frequency, and 0 an octave and more beside it. */
    void showHump (double frequency, double gainDb)
    {
        auto& state = model.interfaceState;
        const std::scoped_lock lock (state.rowsLock); // the room's worker draws them
        state.targetCurve.clear();
        state.curveFrequencies.clear();

        for (double hertz = 330.0; hertz < 19900.0; hertz *= 1.02)
        {
            const auto octaves = std::abs (std::log2 (hertz / frequency));
            state.curveFrequencies.push_back (hertz);
            state.targetCurve.push_back (gainDb * std::max (0.0, 1.0 - octaves));
        }

        model.setSmartBandsReady (true, false);
    }

    [[nodiscard]] float value (int band, Kind kind) const { return model.getBandValue (band, kind); }

    [[nodiscard]] int activeBands() const
    {
        auto count = 0;

        for (int band = 0; band < bandCount; ++band)
            count += value (band, Kind::active) > 0.5f ? 1 : 0;

        return count;
    }

    [[nodiscard]] juce::String message()
    {
        return overlays.messageShowing() ? main.burgerMenu().message() : juce::String();
    }

    void run()
    {
        command.run();
        Messages::deliver();
    }
};
} // namespace

TEST_F (SmartBandCommandTest, answersAPeakWithABand)
{
    showHump (2000.0, 6.0);
    run();
    ASSERT_EQ (activeBands(), 1);
    EXPECT_NEAR (value (0, Kind::frequency), 2000.0f, 40.0f);
    EXPECT_NEAR (value (0, Kind::gain), 6.0f, 0.2f);
    EXPECT_EQ (value (0, Kind::highShelf), 0.0f);
    EXPECT_EQ (message(), "");
}

TEST_F (SmartBandCommandTest, replacesTheBandsThatWereThere)
{
    for (const auto frequency : { 500.0f, 5000.0f, 9000.0f })
        ASSERT_GE (main.room().addBandByHand (frequency), 0);

    showHump (2000.0, 6.0);
    run();
    EXPECT_EQ (activeBands(), 1);
    EXPECT_NEAR (value (0, Kind::frequency), 2000.0f, 40.0f);
}

TEST_F (SmartBandCommandTest, canBeRepeated)
{
    showHump (2000.0, 6.0);
    run();
    showHump (4000.0, -3.0);
    run();
    ASSERT_EQ (activeBands(), 1);
    EXPECT_NEAR (value (0, Kind::frequency), 4000.0f, 80.0f);
    EXPECT_NEAR (value (0, Kind::gain), -3.0f, 0.1f);
    EXPECT_TRUE (model.smartBandsReady());
}

TEST_F (SmartBandCommandTest, masterHoldsGainAndQ)
{
    model.setParameterValue (ParameterIds::mode, 0.0f);
    showHump (2000.0, 6.0);
    run();
    ASSERT_EQ (activeBands(), 1);
    EXPECT_EQ (value (0, Kind::gain), 4.0f);
    EXPECT_LE (value (0, Kind::q), 1.5f);
}

TEST_F (SmartBandCommandTest, aPeakAtTheTopBecomesAShelfBelowIt)
{
    showHump (16000.0, 3.0);
    run();
    ASSERT_EQ (activeBands(), 1);
    EXPECT_EQ (value (0, Kind::highShelf), 1.0f);
    EXPECT_NEAR (value (0, Kind::frequency), 13500.0f, 200.0f);
}

TEST_F (SmartBandCommandTest, aBandAbove10kHzIsNoShelfByItself)
{
    showHump (12000.0, 3.0);
    run();
    ASSERT_EQ (activeBands(), 1);
    EXPECT_EQ (value (0, Kind::highShelf), 0.0f);
}

TEST_F (SmartBandCommandTest, theGainScaleStartsFromWhatItChose)
{
    showHump (2000.0, 6.0);
    run();
    EXPECT_FLOAT_EQ (model.storedBandGains[0].load(),
                     SmartBands::settingsFor (SmartBands::findSmartBands (model.interfaceState.targetCurve,
                                                                          model.interfaceState.curveFrequencies),
                                              SmartBands::Limits::mix)[0]
                         .gain);
}

TEST_F (SmartBandCommandTest, saysThatNothingHasSettledYet)
{
    ASSERT_GE (main.room().addBandByHand (500.0f), 0);
    run();
    EXPECT_EQ (message(), "Analysis not set.");
    EXPECT_EQ (activeBands(), 1);
}

TEST_F (SmartBandCommandTest, saysThatTheTargetAsksForNothing)
{
    auto& state = model.interfaceState;
    state.curveFrequencies = { 400.0, 800.0, 1600.0, 3200.0, 6400.0 };
    state.targetCurve = { 1.0, 1.0, 1.0, 1.0, 1.0 };
    model.setSmartBandsReady (true, false);
    ASSERT_GE (main.room().addBandByHand (500.0f), 0);
    run();
    EXPECT_EQ (message(), juce::String::fromUTF8 ("Targets less than \u00B10.5dB. Did not generate Smart Bands."));
    EXPECT_EQ (activeBands(), 0);
}

TEST_F (SmartBandCommandTest, isSilentWherePeaksAreTooSmallForABand)
{
    showHump (2000.0, 0.3);
    run();
    EXPECT_EQ (message(), "");
    EXPECT_EQ (activeBands(), 0);
}
