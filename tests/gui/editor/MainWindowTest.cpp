#include "gui/editor/MainWindow.h"

#include "gui/look/LookAndFeelFactory.h"
#include "gui/look/Palette.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace
{
class MainWindowTest : public testing::Test
{
protected:
    VelmoraAudioProcessor processor { {}, {}, VelmoraAudioProcessor::SettingsFile::leaveAlone };
    MainWindow window { processor };

    MainWindowTest()
    {
        window.setLookAndFeel (&lookAndFeelOf (processor.model));
        window.setSize (670, 622);
    }

    ~MainWindowTest() override { window.setLookAndFeel (nullptr); }

    /** The visible pointer labels by id. */
    juce::Label* pointer (const juce::String& id)
    {
        auto* label = dynamic_cast<juce::Label*> (window.findChildWithID (id));
        return label != nullptr && label->isVisible() ? label : nullptr;
    }

    void fill (MainWindow::Place place) { window.fill (place, std::make_unique<juce::Component>()); }
};

using Area = juce::Rectangle<int>;
using Place = MainWindow::Place;
} // namespace

TEST_F (MainWindowTest, theRoomStandsBetweenTheScales)
{
    EXPECT_EQ (window.room().getBounds(), Area (20, 0, 630, 622));
    window.setSize (1390, 1110);
    EXPECT_EQ (window.room().getBounds(), Area (20, 0, 1350, 1110));
}

TEST_F (MainWindowTest, whatOpensOverTheRoomHasItsPlace)
{
    for (auto place : { Place::outputGainPanel, Place::gainScalePanel, Place::helpWindow, Place::settingsWindow })
    {
        EXPECT_FALSE (window.has (place));
        fill (place);
    }

    EXPECT_EQ (window.component (Place::outputGainPanel)->getBounds(), Area (428, 0, 230, 80));
    EXPECT_EQ (window.component (Place::gainScalePanel)->getBounds(), Area (325, 0, 230, 70));
    EXPECT_EQ (window.component (Place::helpWindow)->getBounds(), Area (35, 56, 600, 510));
    window.setSize (1000, 800);
    EXPECT_EQ (window.component (Place::settingsWindow)->getBounds(), Area (200, 145, 600, 510));
    EXPECT_EQ (window.component (Place::outputGainPanel)->getBounds(), Area (758, 0, 230, 80));
}

TEST_F (MainWindowTest, whatFillsAPlaceIsHiddenUntilItIsShown)
{
    fill (Place::helpWindow);
    EXPECT_FALSE (window.isShowingPlace (Place::helpWindow));
    window.show (Place::helpWindow, true);
    EXPECT_TRUE (window.isShowingPlace (Place::helpWindow));
    window.show (Place::helpWindow, false);
    EXPECT_FALSE (window.isShowingPlace (Place::helpWindow));
    window.show (Place::analysisWindow, true);
    EXPECT_FALSE (window.isShowingPlace (Place::analysisWindow));
}

TEST_F (MainWindowTest, frequenciesStandOnBothScales)
{
    const auto picture = Pictures::of (window, "main-window");

    // 320 at the foot; 1 kHz at 622 - 622 * log10 (1000/320) / log10 (20000/320) = 450.6.
    for (const auto top : { 607, 444 })
        for (const auto left : { 1, 651 })
            EXPECT_GT (Pictures::count (picture, { left, top, 18, 15 }, juce::Colour (Palette::frequencyLabel), 40), 3)
                << left << ", " << top;

    EXPECT_EQ (Pictures::count (picture, { 0, 470, 20, 40 }, juce::Colour (Palette::mainWindow)), 20 * 40);
}

TEST_F (MainWindowTest, pointersNameTheFrequencyInTheBandsColour)
{
    window.room().onHover (1234.9f, true, juce::Colours::orange);
    auto* left = pointer ("left");
    auto* right = pointer ("right");
    ASSERT_NE (left, nullptr);
    ASSERT_NE (right, nullptr);
    EXPECT_EQ (left->getText(), "1234");
    EXPECT_EQ (right->getText(), "1234");
    EXPECT_EQ (left->findColour (juce::Label::backgroundColourId), juce::Colours::orange);
    EXPECT_EQ (left->findColour (juce::Label::textColourId), juce::Colours::black);
    EXPECT_LT (left->getX(), 40);
    EXPECT_GT (right->getRight(), 630);
    Pictures::keep (Pictures::of (window), "pointers");

    window.room().onHover (1234.9f, false, juce::Colours::orange);
    EXPECT_EQ (pointer ("left"), nullptr);
    EXPECT_EQ (pointer ("right"), nullptr);
}

TEST_F (MainWindowTest, pointersTurnAtCeilingAndFloorAndStayInside)
{
    window.room().onHover (20000.0f, true, juce::Colours::orange);
    ASSERT_NE (pointer ("leftTop"), nullptr);
    ASSERT_NE (pointer ("rightTop"), nullptr);
    EXPECT_EQ (pointer ("leftTop")->getBounds().getCentreY(), 15);

    window.room().onHover (320.0f, true, juce::Colours::orange);
    ASSERT_NE (pointer ("leftBottom"), nullptr);
    ASSERT_NE (pointer ("rightBottom"), nullptr);
    EXPECT_EQ (pointer ("leftBottom")->getBounds().getCentreY(), 622 - 8);
    EXPECT_TRUE (window.getLocalBounds().contains (pointer ("leftBottom")->getBounds()));
}
