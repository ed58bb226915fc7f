#include "gui/look/VelmoraLookandFeel.h"

#include "core/PluginProcessor.h"
#include "gui/look/LookAndFeelFactory.h"
#include "gui/look/Palette.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace
{
juce::Colour of (Palette::Argb argb)
{
    return juce::Colour (argb);
}

class VelmoraLookandFeelTest : public testing::Test
{
protected:
    std::atomic<float> levelMatch { 1.0f };
    VelmoraLookandFeel look { levelMatch };

    /** A slider as the gain panels have it. */
    struct GainSlider final : juce::Slider
    {
        GainSlider (VelmoraLookandFeel& look, const juce::String& name)
        {
            setLookAndFeel (&look);
            setName (name);
            setSliderStyle (LinearHorizontal);
            setTextBoxStyle (NoTextBox, true, 0, 0);
            setRange (-12.0, 12.0, 0.01);
            setSize (218, 40); // a track of 200
        }

        ~GainSlider() override { setLookAndFeel (nullptr); }
    };

    juce::Image drawSlider (const juce::String& name, double value)
    {
        GainSlider slider (look, name);
        slider.setValue (value, juce::dontSendNotification);
        return Pictures::of (slider, "slider-" + name + juce::String (value));
    }

    juce::Image drawButton (const juce::String& name, bool on, bool down)
    {
        juce::TextButton button (name);
        button.setButtonText ("ADD");
        button.setLookAndFeel (&look);
        button.setSize (100, 30);
        button.setToggleState (on, juce::dontSendNotification);

        if (down)
            button.setState (juce::Button::buttonDown);

        const auto picture = Pictures::of (button);
        button.setLookAndFeel (nullptr);
        return picture;
    }
};

const juce::Rectangle<int> leftOfTheText { 5, 5, 20, 20 };
const juce::Rectangle<int> wholeButton { 0, 0, 100, 30 };
} // namespace

TEST_F (VelmoraLookandFeelTest, aButtonsGroundTellsItsState)
{
    EXPECT_EQ (Pictures::count (drawButton ("x", false, false), leftOfTheText, of (0xFF808080)), 400);
    EXPECT_EQ (Pictures::count (drawButton ("x", true, false), leftOfTheText, of (0xFF00CC00)), 400);
    EXPECT_EQ (Pictures::count (drawButton ("x", false, true), leftOfTheText, of (0xFFCCCCCC)), 400);
    EXPECT_EQ (Pictures::count (drawButton ("x", true, true), leftOfTheText, of (0xFFCCCCCC)), 400);
}

TEST_F (VelmoraLookandFeelTest, aPressedButtonSwapsTextAndGround)
{
    EXPECT_GT (Pictures::count (drawButton ("x", false, false), wholeButton, juce::Colours::white), 5);
    const auto pressed = drawButton ("x", false, true);
    EXPECT_EQ (Pictures::count (pressed, wholeButton, juce::Colours::white), 0);
    EXPECT_GT (Pictures::count (pressed, wholeButton, of (0xFF808080)), 5);
    EXPECT_GT (Pictures::count (drawButton ("x", true, true), wholeButton, of (0xFF00CC00)), 5);
}

TEST_F (VelmoraLookandFeelTest, aButtonsNameChoosesItsFont)
{
    juce::TextButton button;
    button.setName ("bold");
    EXPECT_TRUE (look.getTextButtonFont (button, 30).isBold());
    EXPECT_FLOAT_EQ (look.getTextButtonFont (button, 30).getHeight(), 14.0f);
    button.setName ("a small one");
    EXPECT_TRUE (look.getTextButtonFont (button, 30).isBold());
    EXPECT_FLOAT_EQ (look.getTextButtonFont (button, 30).getHeight(), 12.0f);
    button.setName ("other");
    EXPECT_FALSE (look.getTextButtonFont (button, 30).isBold());
    EXPECT_EQ (look.getTextButtonFont (button, 30).getTypefaceName(), "Lato");
}

//======================================================================================================================
TEST_F (VelmoraLookandFeelTest, ticksStandEveryTwoDecibels)
{
    EXPECT_FLOAT_EQ (VelmoraLookandFeel::tickPosition (0, 9.0f, 200.0f), 109.0f);
    EXPECT_FLOAT_EQ (VelmoraLookandFeel::tickPosition (-10, 9.0f, 240.0f), 29.0f);
    EXPECT_FLOAT_EQ (VelmoraLookandFeel::tickPosition (10, 9.0f, 240.0f), 229.0f);
}

TEST_F (VelmoraLookandFeelTest, ticksAreWhiteAtTheThumbAndAmberFarFromIt)
{
    EXPECT_EQ (VelmoraLookandFeel::tickColour (50.0f, 50.0f, 200.0f), juce::Colour (255, 255, 255));
    EXPECT_EQ (VelmoraLookandFeel::tickColour (50.0f, 75.0f, 200.0f), juce::Colour (255, 162, 0));
    EXPECT_EQ (VelmoraLookandFeel::tickColour (200.0f, 0.0f, 200.0f), juce::Colour (255, 162, 0));

    // At 0.4 of the way: 0.6 * 93 + 162 and 0.6 * 255, each rounded.
    EXPECT_EQ (VelmoraLookandFeel::tickColour (60.0f, 50.0f, 200.0f), juce::Colour (255, 218, 153));
}

TEST_F (VelmoraLookandFeelTest, aSlidersTrackIsCentredAndEightHigh)
{
    const auto picture = drawSlider ("gain-scale", 0.0);
    constexpr auto column = 40; // between two ticks
    EXPECT_EQ (picture.getPixelAt (column, 15), of (0xFF111416));
    EXPECT_EQ (Pictures::count (picture, { column, 16, 1, 8 }, of (0xFF3B3B3B)), 8);
    EXPECT_EQ (picture.getPixelAt (column, 24), of (0xFF111416));
    EXPECT_EQ (Pictures::count (picture, { 0, 0, 9, 40 }, of (0xFF111416)), 9 * 40);
}

TEST_F (VelmoraLookandFeelTest, onlyTheGainSlidersHaveTicks)
{
    const auto amber = juce::Colour (255, 162, 0);
    EXPECT_GT (Pictures::count (drawSlider ("gain-scale", 0.0), { 0, 0, 218, 40 }, amber), 8);
    EXPECT_GT (Pictures::count (drawSlider ("output-gain", 0.0), { 0, 0, 218, 40 }, amber), 8);
    EXPECT_EQ (Pictures::count (drawSlider ("play", 0.0), { 0, 0, 218, 40 }, amber), 0);
}

TEST_F (VelmoraLookandFeelTest, theThumbIsABarAtTheValue)
{
    const auto picture = drawSlider ("gain-scale", 6.0); // at 9 + 200 * 0.75
    EXPECT_EQ (Pictures::count (picture, { 157, 15, 4, 10 }, of (0xFFC8C8C8)), 2 * 10);
    EXPECT_GE (Pictures::count (picture, { 156, 12, 6, 16 }, of (0xFF969696)), 6 * 16 - 2 * 10 - 4);
    EXPECT_EQ (Pictures::count (picture, { 100, 0, 50, 40 }, of (0xFF969696)), 0);
}

TEST_F (VelmoraLookandFeelTest, thePlayPositionIsALineInTheTracksColour)
{
    // Between the waveform's edges: 8 + 205 / 2, rounded.
    const auto picture = drawSlider ("play", 0.0);
    EXPECT_EQ (Pictures::count (picture, { 109, 0, 2, 40 }, of (0xFF3B3B3B)), 2 * 40);
    EXPECT_EQ (Pictures::count (picture, { 0, 0, 218, 40 }, of (0xFF3B3B3B)), 2 * 40);
    EXPECT_EQ (Pictures::count (picture, { 0, 0, 218, 40 }, of (0xFF969696)), 0);
}

TEST_F (VelmoraLookandFeelTest, theTransportShowsWhatAClickDoes)
{
    const juce::Rectangle<int> symbol { 8, 23, 10, 10 };
    const auto light = of (0xFFC8C8C8);
    const auto paused = drawSlider ("pause", 0.0);
    EXPECT_EQ (Pictures::count (paused, symbol, light), 2 * 3 * 10);
    EXPECT_EQ (Pictures::count (paused, { 8, 23, 3, 10 }, light), 3 * 10);

    const auto triangle = Pictures::count (drawSlider ("play", 0.0), symbol, light);
    EXPECT_GT (triangle, 35);
    EXPECT_LT (triangle, 55);

    // The strip is the lower 24 pixels.
    EXPECT_EQ (drawSlider ("play", 0.0).getPixelAt (60, 16), of (0xFF1D1D1D));
    EXPECT_NE (drawSlider ("play", 0.0).getPixelAt (60, 15), of (0xFF1D1D1D));
}

TEST_F (VelmoraLookandFeelTest, theLevelMatchPointerStandsBelowTheTrackOfTheOutputSliderAlone)
{
    const auto green = of (0xFF21D22C);
    const juce::Rectangle<int> belowTrack { 0, 24, 218, 16 };
    EXPECT_EQ (Pictures::count (drawSlider ("gain-scale", 0.0), belowTrack, green), 0);

    levelMatch = juce::Decibels::decibelsToGain (-6.0f); // at 9 + 200 * 0.25
    const auto picture = drawSlider ("output-gain", 0.0);
    const auto around = Pictures::count (picture, { 54, 24, 10, 6 }, green);
    EXPECT_GT (around, 8);
    EXPECT_EQ (Pictures::count (picture, { 0, 0, 218, 40 }, green), around);
}

//======================================================================================================================
TEST_F (VelmoraLookandFeelTest, theReadoutIsWhiteOnDarkAndRedWhenSoloed)
{
    juce::Label label ("readout", "+3.0dB");
    label.setLookAndFeel (&look);
    label.setColour (juce::Label::outlineColourId, of (0xFF555555));
    label.setSize (60, 20);

    auto picture = Pictures::of (label);
    EXPECT_GT (Pictures::count (picture, picture.getBounds(), of (0xFF202020)), 600);
    EXPECT_GT (Pictures::count (picture, picture.getBounds(), juce::Colours::white, 60), 3);
    EXPECT_EQ (Pictures::count (picture, { 0, 0, 60, 1 }, of (0xFF555555)), 60);

    label.setText ("SOLOD", juce::dontSendNotification);
    picture = Pictures::of (label);
    EXPECT_GT (Pictures::count (picture, picture.getBounds(), of (0xFFC8000F), 40), 3);
    EXPECT_EQ (Pictures::count (picture, { 0, 0, 60, 1 }, of (0xFF555555)), 0);
    label.setLookAndFeel (nullptr);
}

TEST_F (VelmoraLookandFeelTest, aPointerLabelIsABubbleInItsOwnColours)
{
    juce::Label label;
    label.setLookAndFeel (&look);
    label.setComponentID ("left");
    label.setText ("1000", juce::dontSendNotification);
    label.setColour (juce::Label::backgroundColourId, of (0xFF22B5CD));
    label.setColour (juce::Label::textColourId, juce::Colours::black);
    label.setFont (look.regular (12.0f));
    label.setSize (44, 16);
    const auto picture = Pictures::of (label);
    EXPECT_GT (Pictures::count (picture, picture.getBounds(), of (0xFF22B5CD)), 350);
    EXPECT_EQ (picture.getPixelAt (1, 1).getAlpha(), 0);
    EXPECT_GT (picture.getPixelAt (1, 8).getAlpha(), 0);
    label.setLookAndFeel (nullptr);
}

TEST_F (VelmoraLookandFeelTest, labelsAreSetInTheInterfacesType)
{
    juce::Label label;
    label.setFont (juce::Font (13.0f));
    EXPECT_EQ (look.getLabelFont (label).getTypefaceName(), "Lato");
    EXPECT_FLOAT_EQ (look.getLabelFont (label).getHeight(), 13.0f);
    label.setFont (juce::Font (13.0f, juce::Font::bold));
    EXPECT_EQ (look.getLabelFont (label).getTypefaceStyle(), "Bold");
}

//======================================================================================================================
TEST_F (VelmoraLookandFeelTest, menuItemsSeparatorsAndTitles)
{
    const auto drawItem = [this] (bool separator, bool active, bool highlighted)
    {
        juce::Image picture (juce::Image::RGB, 200, 22, true);
        juce::Graphics g (picture);
        look.drawPopupMenuBackground (g, 200, 400);
        look.drawPopupMenuItem (
            g, { 0, 0, 200, 22 }, separator, active, highlighted, false, false, "TECH HOUSE", {}, nullptr, nullptr);
        return picture;
    };
    const auto inside = juce::Rectangle<int> (200, 22).reduced (1, 1);

    const auto enabled = drawItem (false, true, false);
    EXPECT_EQ (enabled.getPixelAt (150, 11), of (0xFF282828));
    EXPECT_GT (Pictures::count (enabled, inside, of (0xFFEAEAEA)), 5);

    const auto disabled = drawItem (false, false, true);
    EXPECT_EQ (Pictures::count (disabled, inside, of (0xFFEAEAEA)), 0);
    EXPECT_GT (Pictures::count (disabled, inside, of (0xFF909090)), 5);
    EXPECT_EQ (disabled.getPixelAt (150, 11), of (0xFF282828));

    EXPECT_NE (drawItem (false, true, true).getPixelAt (150, 11), of (0xFF282828));

    const auto separator = drawItem (true, false, false);
    EXPECT_EQ (Pictures::count (separator, inside, of (0xFF1E1E1E)), 190);
    EXPECT_EQ (separator.getPixelAt (5, 11), of (0xFF1E1E1E));
    EXPECT_EQ (separator.getPixelAt (194, 11), of (0xFF1E1E1E));
    EXPECT_EQ (separator.getPixelAt (4, 11), of (0xFF282828));
    EXPECT_EQ (separator.getPixelAt (195, 11), of (0xFF282828));

    juce::Image title (juce::Image::RGB, 200, 22, true);
    juce::Graphics g (title);
    look.drawPopupMenuSectionHeader (g, { 0, 0, 200, 22 }, "CHANNEL PRESETS");
    EXPECT_GT (Pictures::count (title, title.getBounds(), of (0xFFEAEAEB)), 5);
}

TEST_F (VelmoraLookandFeelTest, aMenuItemIsWideEnoughForItsText)
{
    auto width = 0;
    auto height = 0;
    look.getIdealPopupMenuItemSize ("FULL KIT CRISP ELECTRONIC", false, 0, width, height);
    EXPECT_GT (width, look.getPopupMenuFont().getStringWidth ("FULL KIT CRISP ELECTRONIC") + 20);
}

TEST_F (VelmoraLookandFeelTest, aToolTipIsABubbleThatHoldsItsText)
{
    const juce::String text ("Click to switch between 2 settings. When A is highlighted changes will be stored in A "
                             "and vice versa.\n ");
    const auto bounds = look.getTooltipBounds (text, { 10, 10 }, { 0, 0, 800, 600 });
    EXPECT_TRUE (juce::Rectangle<int> (800, 600).contains (bounds));
    EXPECT_LE (bounds.getWidth(), 336);

    juce::Image picture (juce::Image::ARGB, bounds.getWidth(), bounds.getHeight(), true);
    juce::Graphics g (picture);
    look.drawTooltip (g, text, bounds.getWidth(), bounds.getHeight());
    Pictures::keep (picture, "tooltip");
    EXPECT_EQ (picture.getPixelAt (0, 0).getAlpha(), 0);
    EXPECT_EQ (picture.getPixelAt (bounds.getWidth() - 4, bounds.getHeight() - 6), of (0xFF1D1D1D));
    EXPECT_GT (Pictures::count (picture, picture.getBounds(), of (0xFFE6E6E6), 30), 50);
}

TEST_F (VelmoraLookandFeelTest, aToolTipStaysOnItsScreen)
{
    const juce::Rectangle<int> screen (0, 0, 400, 300);

    using Point = juce::Point<int>;

    for (const auto corner : { Point (1, 1), Point (399, 1), Point (1, 299), Point (399, 299) })
        EXPECT_TRUE (screen.contains (look.getTooltipBounds ("Delete all EQ bands in SOLVANE.\n ", corner, screen)));
}

//======================================================================================================================
TEST (LookAndFeelFactoryTest, anInstanceKeepsItsLookAndFeel)
{
    VelmoraAudioProcessor processor ({}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone);
    EXPECT_EQ (processor.model.lookAndFeel, nullptr);
    auto& first = lookAndFeelOf (processor.model);
    EXPECT_EQ (&lookAndFeelOf (processor.model), &first);
    EXPECT_EQ (processor.model.lookAndFeel.get(), &first);
}
