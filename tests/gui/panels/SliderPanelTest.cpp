#include "gui/editor/EditorLayout.h"
#include "gui/editor/MainWindow.h"
#include "gui/look/LookAndFeelFactory.h"
#include "gui/look/Palette.h"
#include "gui/look/Tips.h"
#include "gui/panels/GainScalePanel.h"
#include "gui/panels/OutputGainPanel.h"
#include "gui/room/RoomMouse.h"
#include "support/Messages.h"
#include "support/Pictures.h"
#include "support/PluginRig.h"
#include "support/RepaintCounter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using Area = juce::Rectangle<int>;
using Place = MainWindow::Place;

/** What a host hears of one parameter, in order: "begin", the value's text, "end". */
class HostsEar final : public juce::AudioProcessorListener
{
public:
    HostsEar (VelmoraAudioProcessor& heardProcessor, const char* id)
        : processor (heardProcessor), parameter (*processor.getAPVTS().getParameter (id))
    {
        processor.addListener (this);
    }

    ~HostsEar() override { processor.removeListener (this); }

    std::vector<std::string> heard;

private:
    void note (int index, const juce::String& what)
    {
        if (index == parameter.getParameterIndex())
            heard.push_back (what.toStdString());
    }

    void audioProcessorParameterChanged (juce::AudioProcessor*, int index, float value) override
    {
        note (index, parameter.getText (value, 0));
    }

    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override {}

    void audioProcessorParameterChangeGestureBegin (juce::AudioProcessor*, int index) override
    {
        note (index, "begin");
    }

    void audioProcessorParameterChangeGestureEnd (juce::AudioProcessor*, int index) override { note (index, "end"); }

    VelmoraAudioProcessor& processor;
    juce::RangedAudioParameter& parameter;
};

class SliderPanelTest : public testing::Test
{
protected:
    SliderPanelTest()
    {
        for (auto* panel : { static_cast<SliderPanel*> (&output), static_cast<SliderPanel*> (&scale) })
            panel->setLookAndFeel (&lookAndFeelOf (model));

        output.setSize (230, 80);
        scale.setSize (230, 70);
    }

    ~SliderPanelTest() override
    {
        for (auto* panel : { static_cast<SliderPanel*> (&output), static_cast<SliderPanel*> (&scale) })
            panel->setLookAndFeel (nullptr);
    }

    void set (const char* id, float value)
    {
        rig.set (id, value);
        Messages::deliver();
    }

    static juce::Label& labelWith (juce::Component& panel, const juce::String& text)
    {
        for (auto* child : panel.getChildren())
            if (auto* label = dynamic_cast<juce::Label*> (child); label != nullptr && label->getText() == text)
                return *label;

        throw std::out_of_range (("no label says " + text).toStdString());
    }

    /** A press on a slider's value, a move to another one's place, and the release. */
    static void drag (juce::Slider& slider, double from, double to)
    {
        const auto at = [&] (double value) { return juce::Point<float> (slider.getPositionOfValue (value), 20.0f); };
        const auto held = juce::ModifierKeys (juce::ModifierKeys::leftButtonModifier);
        slider.mouseDown (roomMouse::eventAt (slider, at (from), held));
        slider.mouseDrag (roomMouse::eventAt (slider, at (to), at (from), held));
        slider.mouseUp (roomMouse::eventAt (slider, at (to), at (from), held));
    }

    PluginRig rig;
    PluginModel& model = rig.processor.model;
    OutputGainPanel output { rig.processor };
    GainScalePanel scale { rig.processor };
};
} // namespace

TEST_F (SliderPanelTest, everythingHasItsPlace)
{
    EXPECT_EQ (output.slider.getBounds(), Area (5, 30, 220, 40));
    EXPECT_EQ (labelWith (output, "Output Gain").getBounds(), Area (65, 10, 100, 20));
    EXPECT_EQ (labelWith (output, "0.0dB").getBounds(), Area (92, 55, 45, 30));
    EXPECT_EQ (scale.slider.getBounds(), Area (5, 20, 220, 40));
    EXPECT_EQ (labelWith (scale, "Gain Scale").getBounds(), Area (65, 10, 100, 20));
    EXPECT_EQ (labelWith (scale, "100.0%").getBounds(), Area (92, 45, 45, 30));
    EXPECT_EQ (labelWith (scale, "100.0%").findColour (juce::Label::textColourId), juce::Colours::white);
    EXPECT_EQ (labelWith (scale, "100.0%").getFont().getHeight(), 13.0f);
    EXPECT_EQ (labelWith (scale, "Gain Scale").findColour (juce::Label::textColourId), juce::Colours::white);
}

TEST_F (SliderPanelTest, eachSliderHasItsNameItsRangeAndItsTip)
{
    EXPECT_EQ (output.slider.getName(), "output-gain");
    EXPECT_EQ (output.slider.getRange(), juce::Range<double> (-12.0, 12.0));
    EXPECT_NEAR (output.slider.getInterval(), 0.01, 1e-6);
    EXPECT_EQ (scale.slider.getName(), "gain-scale");
    EXPECT_EQ (scale.slider.getRange(), juce::Range<double> (0.0, 200.0));
    EXPECT_EQ (scale.slider.getInterval(), 1.0);
    EXPECT_EQ (scale.getTooltip(), Tips::text (Tips::gainScale));
    EXPECT_EQ (scale.slider.getTooltip(), Tips::text (Tips::gainScale));
    EXPECT_EQ (output.slider.getTitle(), "Output Gain");
}

TEST_F (SliderPanelTest, theValueIsShownWithItsUnitAndFollowsTheHost)
{
    EXPECT_EQ (output.valueText(), "0.0dB");
    set (ParameterIds::outputGain, -3.5f);
    EXPECT_EQ (output.valueText(), "-3.5dB");
    EXPECT_NEAR (output.slider.getValue(), -3.5, 0.005);
    set (ParameterIds::gainScale, 150.0f);
    EXPECT_EQ (scale.valueText(), "150.0%");
    EXPECT_EQ (scale.slider.getValue(), 150.0);
}

TEST_F (SliderPanelTest, aPanelOpensWithTheValueThatStands)
{
    set (ParameterIds::outputGain, 6.0f);
    EXPECT_EQ (OutputGainPanel (rig.processor).valueText(), "6.0dB");
}

TEST_F (SliderPanelTest, theLongestValuesAreShownWholeAndHardlySqueezed)
{
    const auto& label = labelWith (output, "0.0dB");
    constexpr auto squeezed = 0.97f;

    for (const auto* text : { "-12.0dB", "200.0%" })
        EXPECT_LE (label.getFont().getStringWidthFloat (text) * squeezed, 45.0f) << text;
}

TEST_F (SliderPanelTest, aDragIsOneGestureToTheHost)
{
    HostsEar ear (rig.processor, ParameterIds::outputGain);
    drag (output.slider, 0.0, -6.0);
    ASSERT_GE (ear.heard.size(), 3u);
    EXPECT_EQ (ear.heard.front(), "begin");
    EXPECT_EQ (ear.heard.back(), "end");
    EXPECT_EQ (std::count (ear.heard.begin(), ear.heard.end(), "begin"), 1);
    EXPECT_NEAR (model.outputGainDb(), -6.0f, 0.01f);
    EXPECT_EQ (output.valueText(), "-6.0dB");
}

TEST_F (SliderPanelTest, aPanelThatGoesUnderTheHandEndsItsGesture)
{
    HostsEar ear (rig.processor, ParameterIds::gainScale);

    {
        GainScalePanel held (rig.processor);
        held.setSize (230, 70);
        const auto button = juce::ModifierKeys (juce::ModifierKeys::leftButtonModifier);
        held.slider.mouseDown (roomMouse::eventAt (held.slider, { 100.0f, 20.0f }, button));
    }

    ASSERT_FALSE (ear.heard.empty());
    EXPECT_EQ (ear.heard.front(), "begin");
    EXPECT_EQ (ear.heard.back(), "end");
    EXPECT_EQ (std::count (ear.heard.begin(), ear.heard.end(), "end"), 1);
}

TEST_F (SliderPanelTest, aDoubleClickBringsBackTheDefaultAsAGestureOfItsOwn)
{
    set (ParameterIds::gainScale, 30.0f);
    HostsEar ear (rig.processor, ParameterIds::gainScale);
    scale.slider.mouseDoubleClick (roomMouse::eventAt (scale.slider, { 50.0f, 20.0f }));
    EXPECT_THAT (ear.heard, testing::ElementsAre ("begin", "100.0%", "end"));
    EXPECT_EQ (scale.valueText(), "100.0%");
}

TEST_F (SliderPanelTest, aTurnOfTheWheelAwayFromTheUserRaisesTheValue)
{
    HostsEar ear (rig.processor, ParameterIds::outputGain);
    // The framework takes a second turn at one and the same time for an echo.
    const juce::Point<float> position (110.0f, 20.0f);
    const juce::Time time (1000);
    const juce::MouseEvent wheelEvent { juce::Desktop::getInstance().getMainMouseSource(),
                                        position,
                                        {},
                                        0.0f,
                                        0.0f,
                                        0.0f,
                                        0.0f,
                                        0.0f,
                                        &output.slider,
                                        &output.slider,
                                        time,
                                        position,
                                        time,
                                        0,
                                        false };
    juce::MouseWheelDetails wheel {};
    wheel.deltaY = 0.2f;
    output.slider.mouseWheelMove (wheelEvent, wheel);
    EXPECT_GT (model.outputGainDb(), 0.0f);
    ASSERT_EQ (ear.heard.size(), 3u);
    EXPECT_EQ (ear.heard.front(), "begin");
    EXPECT_EQ (ear.heard.back(), "end");
}

//======================================================================================================================
TEST_F (SliderPanelTest, aPanelIsABoxWithATipTowardsItsButton)
{
    const juce::Colour ground (0xFF111416);
    const auto outputPicture = Pictures::of (output, "output-gain-panel");
    const auto scalePicture = Pictures::of (scale, "gain-scale-panel");

    for (const auto* picture : { &outputPicture, &scalePicture })
    {
        const auto middle = picture == &outputPicture ? 132 : 125;
        EXPECT_GT (picture->getPixelAt (middle, 2).getAlpha(), 0);
        EXPECT_EQ (picture->getPixelAt (middle, 6), ground);
        EXPECT_EQ (picture->getPixelAt (middle - 20, 2).getAlpha(), 0);
        EXPECT_EQ (picture->getPixelAt (middle + 20, 2).getAlpha(), 0);
        EXPECT_EQ (picture->getPixelAt (20, 12), ground);
        EXPECT_EQ (picture->getPixelAt (0, picture->getHeight() - 1).getAlpha(), 0) << "a rounded corner";
        EXPECT_EQ (Pictures::count (*picture, { 0, 30, 1, 20 }, juce::Colour (0xFF555555)), 20);
        EXPECT_EQ (Pictures::count (*picture, { 30, picture->getHeight() - 1, 60, 1 }, juce::Colour (0xFF555555)), 60);
    }
}

TEST_F (SliderPanelTest, theTipStandsBelowTheMiddleOfTheButton)
{
    // The room's window stands 5 pixels from the left edge of the window that has the buttons.
    for (const auto width : { 570, 680, 2000 })
    {
        const auto layout = EditorLayout::of (width, 712, 0, 0);
        const auto tipOf = [&] (Place place, float tipX)
        { return 5.0f + static_cast<float> (MainWindow::boundsOf (place, width - 10, 622).getX()) + tipX; };
        EXPECT_EQ (tipOf (Place::outputGainPanel, 132.5f), layout.outputGain.toFloat().getCentreX());
        EXPECT_EQ (tipOf (Place::gainScalePanel, 125.5f), layout.gainScale.toFloat().getCentreX());
    }
}

TEST_F (SliderPanelTest, titleTrackAndValueAreSeenAndTouchNothing)
{
    for (auto* panel : { static_cast<SliderPanel*> (&output), static_cast<SliderPanel*> (&scale) })
    {
        const auto picture = Pictures::of (*panel);
        const auto track = panel->slider.getBounds().getCentreY();
        EXPECT_GT (Pictures::count (picture, { 65, 10, 100, 20 }, juce::Colours::white, 40), 20) << "the title";
        EXPECT_GT (Pictures::count (picture, { 14, track - 4, 202, 8 }, juce::Colour (0xFF3B3B3B)), 1000);
        EXPECT_GT (Pictures::count (picture, { 92, track + 11, 45, 16 }, juce::Colours::white, 40), 10) << "the value";
        EXPECT_EQ (Pictures::count (picture, { 92, track + 9, 45, 2 }, juce::Colours::white, 100), 0);
        EXPECT_EQ (Pictures::count (picture, { 65, track - 10, 100, 2 }, juce::Colours::white, 100), 0);
        EXPECT_EQ (Pictures::count (picture, { 92, panel->getHeight() - 3, 45, 2 }, juce::Colours::white, 100), 0);
    }
}

TEST_F (SliderPanelTest, theLevelMatchPointerIsThereOnTheOutputPanelAlone)
{
    const juce::Colour green (Palette::levelMatch);
    model.levelMatchPointer = juce::Decibels::decibelsToGain (-6.0f);
    const auto place = juce::roundToInt (output.slider.getPositionOfValue (-6.0)) + output.slider.getX();
    const auto picture = Pictures::of (output);
    const auto around = Pictures::count (picture, { place - 5, 54, 10, 6 }, green);
    EXPECT_GT (around, 8);
    EXPECT_EQ (Pictures::count (picture, picture.getBounds(), green), around);
    EXPECT_EQ (Pictures::count (Pictures::of (scale), scale.getLocalBounds(), green), 0);
}

TEST_F (SliderPanelTest, thePointerMovesWhileThePanelIsOpenAndAsksForNothingWhileItRests)
{
    output.setVisible (false);
    output.setVisible (true);
    auto repaints = 0;
    output.setCachedComponentImage (new RepaintCounter (output, repaints));
    repaints = 0;

    for (int tick = 0; tick < 10; ++tick)
        output.timerCallback();

    EXPECT_EQ (repaints, 0);
    model.levelMatchPointer = juce::Decibels::decibelsToGain (-6.0f);
    output.timerCallback();
    EXPECT_EQ (repaints, 1);
    output.timerCallback();
    EXPECT_EQ (repaints, 1);

    // A hundredth of a decibel is less than a tenth of a pixel.
    model.levelMatchPointer = juce::Decibels::decibelsToGain (-6.01f);
    output.timerCallback();
    EXPECT_EQ (repaints, 1);
    output.setCachedComponentImage (nullptr);
}

TEST_F (SliderPanelTest, thePointerIsLookedAtOnlyWhileThePanelIsOpen)
{
    EXPECT_FALSE (output.followsLevelMatch());
    output.setVisible (false);
    output.setVisible (true);
    EXPECT_TRUE (output.followsLevelMatch());
    output.setVisible (false);
    EXPECT_FALSE (output.followsLevelMatch());
}
