#pragma once

#include "gui/look/SVGButton.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** The small slider under a band's panel that sets where the band acts between mid and side. There is one in a window,
    which goes to the band in focus. Message thread. */
class MidSideControlPanel final : public juce::Component, private juce::Slider::Listener, private juce::Timer
{
public:
    static constexpr int panelWidth = 120;
    static constexpr int panelHeight = 16;

    MidSideControlPanel();
    ~MidSideControlPanel() override;

    /** Serves a band from now on, and comes into sight. @param value of the band's mid/side parameter */
    void showFor (int band, float value);

    /** Writes a value for the served band, as a gesture of its own. */
    void setTo (float value);

    /** The band's parameter has changed. */
    void setValue (float value);

    /** Goes out of sight 200 ms from now, unless the mouse comes meanwhile. */
    void hideSoon();

    /** Goes out of sight now. */
    void hideAtOnce();

    [[nodiscard]] int servedBand() const noexcept { return band; }
    [[nodiscard]] bool isInUse() const;

    /** Bound once by the window: the new value, and the gesture around it. */
    std::function<void (int band, float value)> onValue;
    std::function<void (int band)> onGestureBegin;
    std::function<void (int band)> onGestureEnd;

    /** Bound by the band that is served: the slider is or is no longer being used; the mouse has left. */
    std::function<void (bool inUse)> onUse;
    std::function<void()> onLeft;

    /** A step of 20 ms. */
    void timerCallback() override;

    void paint (juce::Graphics& g) override;
    void resized() override;
    void mouseEnter (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void mouseDoubleClick (const juce::MouseEvent& event) override;

    juce::Slider slider { juce::Slider::LinearHorizontal, juce::Slider::NoTextBox };
    orvik::SVGButton midButton { "Side" };
    orvik::SVGButton sideButton { "Side" };

private:
    void sliderValueChanged (juce::Slider*) override;
    void sliderDragStarted (juce::Slider*) override;
    void sliderDragEnded (juce::Slider*) override;
    void write (float value);

    int band = -1;
    bool ignoreChange = false;
    bool gestureUnderWay = false;
    bool shown = false;
    int ticksToHide = 0;
    float alpha = 0.0f;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MidSideControlPanel)
};
