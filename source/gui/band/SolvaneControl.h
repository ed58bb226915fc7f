#pragma once

#include "gui/band/BandCallbacks.h"
#include "gui/band/BandFade.h"
#include "gui/band/BandHand.h"
#include "gui/band/BandKeys.h"
#include "gui/band/BandPainter.h"
#include "gui/band/BandReadout.h"
#include "gui/band/BandState.h"
#include "gui/band/IBandSurroundings.h"
#include "gui/band/SolvaneControlPanel.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <array>
#include <atomic>

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
    static constexpr std::array listenedKinds { Settings::Parameter::q,       Settings::Parameter::solo,
                                                Settings::Parameter::bypass,  Settings::Parameter::highShelf,
                                                Settings::Parameter::midSide, Settings::Parameter::gain };

    /** @param surroundings outlive the control */
    SolvaneControl (int band, juce::Colour colour, IBandSurroundings& surroundings);
    ~SolvaneControl() override;

    //==================================================================================================================
    /** What the parameters say. With `notify` a gain or a mid/side value is also written to them. */
    void setGain (float gainDb, bool notify = false);
    void setQ (float q);
    void setFrequency (float frequencyHz);
    void setMidSide (float value, bool notify = false);
    void setSolo (bool state);
    void setBypass (bool state);
    void setMainBypass (bool state);
    void setHighShelf (bool state);

    /** Another band is solo. */
    void setDimmed (bool state);

    /** The band in focus: bright, with its panel and its handles. */
    void setSelected (bool state);

    /** Ctrl is held over another band's line that hides this one. */
    void setCtrlHover (bool state);

    /** The band is high enough to offer its shelf. */
    void setUpperHalf (bool state);

    /** Computes edges, bounds and parts anew. Nothing happens before frequency and Q are set. */
    void updateBounds();

    /** Ends hover, focus and typing. */
    void collapse();

    /** Hides the panel, as where it would cover something, until the mouse comes again. */
    void hidePanel();

    /** Takes over a changed preference, and whether a window lies over the room. */
    void refreshVisibility();

    //==================================================================================================================
    [[nodiscard]] int bandIndex() const noexcept { return state.band; }
    [[nodiscard]] juce::Colour bandColour() const noexcept { return colour; }
    [[nodiscard]] const BandState& bandState() const noexcept { return state; }
    [[nodiscard]] bool isSelected() const noexcept { return selected; }

    /** The panel in use: the band's own, or one of the window's spare ones. */
    [[nodiscard]] SolvaneControlPanel& panel() noexcept;
    [[nodiscard]] OverlapPanel usedOverlapPanel() const noexcept { return usedOverlap; }

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
    void resized() override;
    juce::String getTooltip() override;

    /** A step of 20 ms. */
    void timerCallback() override;

    void labelTextChanged (juce::Label* label) override;
    void editorShown (juce::Label* label, juce::TextEditor& editor) override;
    void editorHidden (juce::Label* label, juce::TextEditor& editor) override;

private:
    using Kind = Settings::Parameter;

    void panelSoloClicked() override;
    void panelBypassClicked() override;
    void panelShelfClicked() override;
    void panelCloseClicked() override;

    void take (Kind kind, float value);
    void serveChanges();

    void attachPanel (SolvaneControlPanel& used);
    void placeOverlapPanel();
    void releaseOverlapPanel();
    void refreshPanel();
    void showQuantity (ReadoutQuantity quantity);
    void openTyping (ReadoutQuantity quantity);
    void typeGain (double number);
    void showMidSidePanel();
    void hideMidSidePanel();
    [[nodiscard]] bool servedByMidSidePanel() const;

    void hover (BandZone zone);
    void hoverNothing();
    void becomeMeant();
    void leave();
    [[nodiscard]] bool pointerIsHere() const;
    void updateCursor (BandZone zone);
    [[nodiscard]] ReadoutQuantity quantityOf (BandZone zone) const;
    [[nodiscard]] int rowOf (const juce::MouseEvent& event) const;
    [[nodiscard]] bool isOwnEvent (const juce::MouseEvent& event) const { return event.eventComponent == this; }
    [[nodiscard]] juce::Colour baseColour() const;
    [[nodiscard]] bool panelWanted() const;

    void stepBy (const BandKey& key);
    void startTicks();
    void setFlag (bool& flag, bool value);

    IBandSurroundings& surroundings;
    const juce::Colour colour;
    BandState state;
    std::array<juce::String, listenedKinds.size()> listenedIds;
    BandHand hand;
    BandFade fade;
    SolvaneControlPanel ownPanel;
    juce::Component::SafePointer<SolvaneControlPanel> overlapPanel;
    OverlapPanel usedOverlap = OverlapPanel::none;

    ReadoutQuantity quantity = ReadoutQuantity::gain;
    ReadoutQuantity typedQuantity = ReadoutQuantity::gain;
    bool selected = false;
    bool panelHidden = false;
    bool ctrlHover = false;
    bool hoverLine = false;
    bool hoverQ = false;
    bool overDot = false;

    /** Changes that wait for the message thread: one bit for each listened kind, and the latest value of each. */
    std::atomic<unsigned> changedKinds { 0 };
    std::array<std::atomic<float>, listenedKinds.size()> changedValues {};
    const juce::Component::SafePointer<SolvaneControl> self { this };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SolvaneControl)
};
