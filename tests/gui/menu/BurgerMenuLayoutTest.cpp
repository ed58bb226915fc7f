#include "gui/menu/BurgerMenuLayout.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
using Area = juce::Rectangle<int>;
using State = BurgerMenuLayout::State;

constexpr int parentWidth = 670;

/** What the menu's height, and the places of what comes below the toggles, have to be. 0 is absent. */
struct Case
{
    bool transportRuns;
    bool targetShown;
    bool smartBandsReady;
    bool anyBandActive;
    int resetY;
    int smartBandsY;
    int deleteY;
    int numbersY;
    int height;
};

// Without a target shown nothing can be built upon it, whatever is said to be ready.
constexpr Case cases[] {
    { false, false, false, false, 0, 0, 0, 95, 130 },   { false, false, false, true, 0, 0, 70, 0, 110 },
    { false, false, true, false, 0, 0, 0, 95, 130 },    { false, false, true, true, 0, 0, 70, 0, 110 },
    { true, false, false, false, 70, 0, 0, 130, 165 },  { true, false, false, true, 70, 0, 105, 0, 145 },
    { true, false, true, false, 70, 0, 0, 130, 165 },   { true, false, true, true, 70, 0, 105, 0, 145 },
    { false, true, false, false, 70, 0, 0, 130, 165 },  { false, true, false, true, 70, 0, 105, 0, 145 },
    { false, true, true, false, 70, 105, 0, 165, 200 }, { false, true, true, true, 70, 105, 140, 0, 180 },
    { true, true, false, false, 70, 0, 0, 130, 165 },   { true, true, false, true, 70, 0, 105, 0, 145 },
    { true, true, true, false, 70, 105, 0, 165, 200 },  { true, true, true, true, 70, 105, 140, 0, 180 },
};

class EveryMenu : public testing::TestWithParam<std::tuple<Case, double>>
{
protected:
    EveryMenu()
    {
        const auto& tested = std::get<Case> (GetParam());
        situation.transportRuns = tested.transportRuns;
        situation.targetShown = tested.targetShown;
        situation.smartBandsReady = tested.smartBandsReady;
        situation.anyBandActive = tested.anyBandActive;
        situation.sampleRate = std::get<double> (GetParam());
    }

    [[nodiscard]] const Case& expected() const { return std::get<Case> (GetParam()); }

    BurgerMenuLayout::Situation situation;
};

Area fullButton (int y)
{
    return y == 0 ? Area() : Area (17, y, 196, 30);
}
} // namespace

TEST_P (EveryMenu, hasItsCommandsAndItsHeight)
{
    const auto layout = BurgerMenuLayout::of (situation);
    EXPECT_EQ (layout.resetTargets, fullButton (expected().resetY));
    EXPECT_EQ (layout.addSmartBands, fullButton (expected().smartBandsY));
    EXPECT_EQ (layout.deleteAllBands, fullButton (expected().deleteY));
    EXPECT_EQ (layout.height, expected().height);
    EXPECT_TRUE (layout.message.isEmpty());

    if (expected().numbersY == 0)
    {
        EXPECT_TRUE (layout.addBandsLabel.isEmpty());
        EXPECT_EQ (layout.panelIn (parentWidth), Area (670 - 272, 0, 230, expected().height));

        for (const auto& number : layout.numbers)
            EXPECT_TRUE (number.isEmpty());

        return;
    }

    EXPECT_EQ (layout.addBandsLabel, Area (12, expected().numbersY - 25, 90, 20));
    EXPECT_EQ (layout.numbers[0], Area (17, expected().numbersY, 25, 25));
    EXPECT_EQ (layout.numbers[4], Area (129, expected().numbersY, 25, 25));
    EXPECT_EQ (layout.numbers[9], Area (269, expected().numbersY, 25, 25));
    EXPECT_EQ (layout.panelIn (parentWidth), Area (670 - 353, 0, 311, expected().height));
}

TEST_P (EveryMenu, hasBothTogglesUpToTheRateAboveWhichThePhaseIsLinear)
{
    const auto layout = BurgerMenuLayout::of (situation);

    if (situation.sampleRate < 176000.0)
    {
        EXPECT_EQ (layout.phaseLabel, Area (17, 10, 90, 20));
        EXPECT_EQ (layout.phaseButton, Area (17, 35, 90, 30));
        EXPECT_EQ (layout.modeLabel, Area (125, 10, 90, 20));
        EXPECT_EQ (layout.modeButton, Area (125, 35, 90, 30));
        return;
    }

    EXPECT_TRUE (layout.phaseLabel.isEmpty());
    EXPECT_TRUE (layout.phaseButton.isEmpty());
    EXPECT_EQ (layout.modeLabel, Area (70, 10, 90, 20));
    EXPECT_EQ (layout.modeButton, Area (70, 35, 90, 30));
}

INSTANTIATE_TEST_SUITE_P (Menus,
                          EveryMenu,
                          testing::Combine (testing::ValuesIn (cases), testing::Values (48000.0, 176000.0, 192000.0)));

TEST (BurgerMenuLayoutTest, phaseCanBeChosenBelow172kHz)
{
    const auto enabledAt = [] (double rate)
    {
        BurgerMenuLayout::Situation situation;
        situation.sampleRate = rate;
        return BurgerMenuLayout::of (situation).phaseEnabled;
    };

    EXPECT_TRUE (enabledAt (0.0));
    EXPECT_TRUE (enabledAt (171999.0));
    EXPECT_FALSE (enabledAt (172000.0));
    EXPECT_FALSE (enabledAt (175999.0));
    EXPECT_FALSE (enabledAt (192000.0));
}

TEST (BurgerMenuLayoutTest, phaseIsGoneFrom176kHzAndNotBefore)
{
    BurgerMenuLayout::Situation situation;
    situation.sampleRate = 175999.0;
    EXPECT_FALSE (BurgerMenuLayout::of (situation).phaseButton.isEmpty());
    situation.sampleRate = 176000.0;
    EXPECT_TRUE (BurgerMenuLayout::of (situation).phaseButton.isEmpty());
}

TEST (BurgerMenuLayoutTest, masterCanAlwaysBeLeftAndIsEnteredWithinItsLimits)
{
    const auto enabled = [] (bool canUseMasterMode, bool masterMode)
    {
        BurgerMenuLayout::Situation situation;
        situation.canUseMasterMode = canUseMasterMode;
        situation.masterMode = masterMode;
        return BurgerMenuLayout::of (situation).modeEnabled;
    };

    EXPECT_TRUE (enabled (true, false));
    EXPECT_TRUE (enabled (true, true));
    EXPECT_TRUE (enabled (false, true));
    EXPECT_FALSE (enabled (false, false));
}

TEST (BurgerMenuLayoutTest, anOfferIsOneButtonWhateverElseIsKnown)
{
    for (const auto known : { false, true })
    {
        BurgerMenuLayout::Situation situation;
        situation.state = State::smartBands;
        situation.transportRuns = situation.targetShown = situation.smartBandsReady = situation.anyBandActive = known;
        const auto layout = BurgerMenuLayout::of (situation);
        EXPECT_EQ (layout.addSmartBands, Area (17, 20, 196, 30));
        EXPECT_EQ (layout.panelIn (parentWidth), Area (398, 0, 230, 60));
        EXPECT_TRUE (layout.modeButton.isEmpty() && layout.phaseButton.isEmpty() && layout.resetTargets.isEmpty());
        EXPECT_TRUE (layout.deleteAllBands.isEmpty() && layout.numbers[0].isEmpty() && layout.message.isEmpty());
    }
}

TEST (BurgerMenuLayoutTest, aMessageIsAsHighAsItsText)
{
    BurgerMenuLayout::Situation situation;
    situation.state = State::message;
    situation.messageHeight = 140;
    const auto layout = BurgerMenuLayout::of (situation);
    EXPECT_EQ (layout.message, Area (17, 15, 196, 140));
    EXPECT_EQ (layout.panelIn (parentWidth), Area (398, 0, 230, 155));
    EXPECT_TRUE (layout.addSmartBands.isEmpty() && layout.modeButton.isEmpty());
}
