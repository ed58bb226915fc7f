#pragma once

#include "gui/band/BandActions.h"
#include "gui/band/BandCallbacks.h"
#include "gui/band/BandFade.h"
#include "gui/band/BandHand.h"
#include "gui/band/BandInbox.h"
#include "gui/band/BandKeys.h"
#include "gui/band/BandState.h"
#include "gui/band/BandTyping.h"
#include "gui/band/MidSideLink.h"
#include "gui/band/PanelInUse.h"

#include <juce_audio_processors/juce_audio_processors.h>

/** One band as it hangs in the room: as wide as the room at its gain, as high as its bandwidth. Its body is dragged for
    gain, its edges for Q, its line for frequency; its panel shows a value, takes a typed one, and holds the buttons.

    It shows what its band's parameters say and writes through its callbacks alone. The room binds those, hands it the
    values once, listens for it (parameterChanged), and calls updateBounds() whenever the room's size or scale has
    changed or the window's spare panels have come. Message thread, but for parameterChanged(). */
class SolvaneControl final : public juce::Component,
                             public BandCallbacks,
                             public juce::AudioProcessorValueTreeState::Listener,
                             public juce::SettableTooltipClient,
                             private juce::Label::Listener,
                             private juce::Timer,
                             private IPanelOwner
{
public:
    /** The kinds of parameter whose changes the control wants to hear of. */
    static constexpr auto listenedKinds = BandInbox::kinds;

    /** @param surroundings outlive the control */
    SolvaneControl (int band, juce::Colour colour, IBandSurroundings& surroundings);
    ~SolvaneControl() override;

    //==================================================================================================================
    /** What the parameters say. With `notify` a gain or a mid/side value is also written to them. */
    void setGain (float gainDb, bool notify = false);
    void setQ (float q);
    void setFrequency (float frequencyHz);
    void setMidSide (float value, bool notify = false);
    void setSolo (bool on) { setFlag (state.solo, on); }
    void setBypass (bool on) { setFlag (state.bypassed, on); }
    void setMainBypass (bool on) { setFlag (state.mainBypassed, on); }
    void setHighShelf (bool on);

    /** Another band is solo. */
    void setDimmed (bool on) { setFlag (state.dimmed, on); }

    /** The band in focus: bright, with its panel and its handles. */
    void setSelected (bool on);

    /** Ctrl is held over another band's line that hides this one. */
    void setCtrlHover (bool on) { setFlag (ctrlHover, on); }

    /** The band is high enough to offer its shelf. */
    void setUpperHalf (bool on) { setFlag (state.upperHalf, on); }

    /** Computes edges, bounds and parts anew. Nothing happens before frequency and Q are set. */
    void updateBounds();

    /** Ends hover, focus and typing. */
    void collapse();

    /** Hides the panel where it would cover something, until the mouse has gone from there or comes to the band. */
    void setPanelHidden (bool hidden);

    /** Takes over a changed preference, and whether a window lies over the room. */
    void refreshVisibility();

    //==================================================================================================================
    [[nodiscard]] int bandIndex() const noexcept { return state.band; }
    [[nodiscard]] juce::Colour bandColour() const noexcept { return colour; }
    [[nodiscard]] const BandState& bandState() const noexcept { return state; }
    [[nodiscard]] bool isSelected() const noexcept { return selected; }

    /** The panel in use: the band's own, or one of the window's spare ones. */
    [[nodiscard]] SolvaneControlPanel& panel() noexcept { return panels.get(); }
    [[nodiscard]] OverlapPanel usedOverlapPanel() const noexcept { return panels.borrowed(); }

    //==================================================================================================================
    /** Hands the change to the message thread, unless it is this control's own doing there. Any thread. */
    void parameterChanged (const juce::String& parameterId, float value) override;

    void mouseEnter (const juce::MouseEvent& event) override;
    void mouseMove (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void mouseDown (const juce::MouseEvent& event) override;
    void mouseDrag (const juce::MouseEvent& event) override;
    void mouseUp (const juce::MouseEvent& event) override;
    void mouseDoubleClick (const juce::MouseEvent& event) override;
    void mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel) override;
    bool keyPressed (const juce::KeyPress& key) override;
    void focusGained (FocusChangeType cause) override;
    void focusLost (FocusChangeType cause) override;
    bool hitTest (int x, int y) override;
    void paint (juce::Graphics& g) override;
    juce::String getTooltip() override;

    /** A step of 20 ms. */
    void timerCallback() override;

    void labelTextChanged (juce::Label* label) override;
    void editorShown (juce::Label* label, juce::TextEditor& editor) override;
    void editorHidden (juce::Label* label, juce::TextEditor& editor) override;

private:
    using Kind = Settings::Parameter;

    void panelSoloClicked() override { actions.toggleSolo(); }
    void panelBypassClicked() override { actions.toggleBypass(); }
    void panelShelfClicked() override { actions.toggleShelf(); }
    void panelCloseClicked() override { actions.close(); }

    void take (Kind kind, float value);
    void setFlag (bool& flag, bool value);
    void refresh();
    void showQuantity (ReadoutQuantity quantity);
    void openTyping (ReadoutQuantity quantity);
    void showMidSide();

    void hover (BandZone zone);
    void hoverNothing();
    void becomeMeant();
    void leave();
    void releaseBody (const juce::MouseEvent& event);
    void leaveOnceTyped();
    void act (const BandKey& key);
    void stepBy (const BandKey& key);
    void startTicks();
    [[nodiscard]] bool pointerIsHere() const;
    [[nodiscard]] bool isOwnEvent (const juce::MouseEvent& event) const { return event.eventComponent == this; }
    [[nodiscard]] int rowOf (const juce::MouseEvent& event) const;
    [[nodiscard]] ReadoutQuantity quantityOf (BandZone zone) const;
    [[nodiscard]] juce::Colour baseColour() const;

    IBandSurroundings& surroundings;
    const juce::Colour colour;
    BandState state;
    BandHand hand;
    BandTyping typing;
    BandFade fade;
    MidSideLink midSide;
    BandActions actions;
    PanelInUse panels;
    BandInbox inbox;

    bool selected = false;
    bool panelHidden = false;
    bool ctrlHover = false;
    bool hoverLine = false;
    bool hoverQ = false;
    bool overDot = false;

    const juce::Component::SafePointer<SolvaneControl> self { this };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SolvaneControl)
};
