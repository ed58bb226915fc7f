#include "gui/editor/MainWindow.h"

#include "gui/look/LookAndFeelFactory.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"
#include "support/Messages.h"
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

/** Gathers what a component asks to have painted of the strips at its sides; the room between may move at any time. */
class RepaintedAreas final : public juce::CachedComponentImage
{
public:
    RepaintedAreas (juce::Component& componentToWatch, juce::RectangleList<int>& areasToFill)
        : component (componentToWatch), areas (areasToFill)
    {
    }

    void paint (juce::Graphics& graphics) override { component.paintEntireComponent (graphics, false); }
    bool invalidateAll() override { return invalidate (component.getLocalBounds()); }

    bool invalidate (const juce::Rectangle<int>& area) override
    {
        if (area.getX() < MainWindow::stripWidth || area.getRight() > component.getWidth() - MainWindow::stripWidth)
            areas.add (area);

        return true;
    }

    void releaseResources() override {}

private:
    juce::Component& component;
    juce::RectangleList<int>& areas;
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

TEST_F (MainWindowTest, pointersTurnAtTheLastRowsOfEverySize)
{
    struct Case
    {
        juce::Rectangle<int> size;
        const char* kind;
        float frequencyHz;
        int centre;
    };

    // Frequencies a tenth of a pixel beside the 14th row from the ceiling and the 10th from the floor, computed apart.
    for (const auto& tested : { Case { { 560, 516 }, "Top", 17891.7f, 15 },
                                Case { { 560, 516 }, "", 17863.1f, 15 },
                                Case { { 560, 516 }, "", 346.978f, 506 },
                                Case { { 560, 516 }, "Bottom", 346.422f, 506 },
                                Case { { 670, 622 }, "Top", 18234.6f, 15 },
                                Case { { 670, 622 }, "", 18210.4f, 15 },
                                Case { { 670, 622 }, "", 342.225f, 612 },
                                Case { { 670, 622 }, "Bottom", 341.770f, 612 },
                                Case { { 1390, 1110 }, "Top", 18990.7f, 15 },
                                Case { { 1390, 1110 }, "", 18976.6f, 15 },
                                Case { { 1390, 1110 }, "", 332.270f, 1100 },
                                Case { { 1390, 1110 }, "Bottom", 332.022f, 1100 },
                                Case { { 1390, 1110 }, "", 4000.0f, 432 } })
    {
        window.setSize (tested.size.getWidth(), tested.size.getHeight());
        window.room().onHover (tested.frequencyHz, true, juce::Colours::orange);
        const auto* left = pointer (juce::String ("left") + tested.kind);
        const auto* right = pointer (juce::String ("right") + tested.kind);
        ASSERT_NE (left, nullptr) << tested.frequencyHz;
        ASSERT_NE (right, nullptr) << tested.frequencyHz;
        EXPECT_EQ (left->getBounds().getCentreY(), tested.centre) << tested.frequencyHz;
        EXPECT_EQ (right->getBounds().getCentreY(), tested.centre) << tested.frequencyHz;
        EXPECT_TRUE (window.getLocalBounds().contains (left->getBounds())) << tested.frequencyHz;
        EXPECT_EQ (left->getX(), window.room().getX());
        EXPECT_EQ (right->getRight(), window.room().getRight());
    }
}

TEST_F (MainWindowTest, aPointersRowIsKeptWithinFifteenFromTheCeilingAndEightFromTheFloor)
{
    for (const auto height : { 516, 622, 1110 })
    {
        window.setSize (670, height);
        window.room().onHover (20000.0f, true, juce::Colours::orange);
        EXPECT_EQ (pointer ("leftTop")->getBounds().getCentreY(), 15);
        window.room().onHover (320.0f, true, juce::Colours::orange);
        EXPECT_EQ (pointer ("rightBottom")->getBounds().getCentreY(), height - 8);
    }
}

//======================================================================================================================
TEST_F (MainWindowTest, theStripsGlowBehindTheirFigures)
{
    processor.model.sampleRate = 48000.0;
    processor.model.setShowHeatmap (true);
    LiveSpectrum::Magnitudes magnitudes {};
    magnitudes.fill (1.0f);
    processor.liveAnalysis().spectrum().publish (magnitudes);
    window.heatStrips().drawNow (true);
    const auto picture = Pictures::of (window, "strips");
    const juce::Colour heat (Palette::heat);

    for (const auto left : { 0, 650 })
    {
        EXPECT_EQ (Pictures::count (picture, { left, 470, 20, 40 }, heat), 20 * 40);
        EXPECT_LT (Pictures::count (picture, { left, 444, 20, 15 }, heat), 20 * 15 - 20) << "1K stands on it";
        EXPECT_GT (Pictures::count (picture, { left, 444, 20, 15 }, juce::Colour (Palette::mainWindow), 10), 10)
            << "on the dark ground";
    }

    EXPECT_EQ (Pictures::count (picture, { 20, 0, 630, 622 }, heat), 0);
    EXPECT_EQ (window.getTooltip(), Tips::text (Tips::heatMap));
}

TEST_F (MainWindowTest, theStripsAloneAreRepaintedForAFrame)
{
    processor.model.sampleRate = 48000.0;
    processor.model.setShowHeatmap (true);
    window.setVisible (true);
    juce::RectangleList<int> repainted;
    window.setCachedComponentImage (new RepaintedAreas (window, repainted));
    const juce::ScopeGuard noMore { [this] { window.setCachedComponentImage (nullptr); } };
    repainted.clear();

    for (int tick = 0; tick < 20; ++tick)
    {
        window.serveHeat (false);
        Messages::deliver();
    }

    EXPECT_TRUE (repainted.isEmpty()) << "an idle window";

    LiveSpectrum::Magnitudes magnitudes {};
    magnitudes[100] = 1.0f;
    processor.liveAnalysis().spectrum().publish (magnitudes);
    window.heatStrips().drawNow (true);
    Messages::deliver();
    ASSERT_EQ (repainted.getNumRectangles(), 2);
    EXPECT_EQ (repainted.getRectangle (0), Area (0, 0, 20, 622));
    EXPECT_EQ (repainted.getRectangle (1), Area (650, 0, 20, 622));
}
