#pragma once

#include "core/PluginProcessor.h"
#include "gui/room/AddBandMarker.h"
#include "gui/room/ParameterWatch.h"
#include "gui/room/RoomBands.h"
#include "gui/room/RoomWorker.h"
#include "gui/room/ScaleSelector.h"
#include "gui/room/TargetRefresh.h"
#include "gui/room/WallPictures.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>

/** The room in which the equaliser is seen and edited: walls with grid, curves and marks, and the bands between them.

    Everything that must outlive the editor is in the processor's model; this may be destroyed at any moment, also in
   the middle of a drag. Message thread only; painting may come from another thread that holds the message lock. The
   curves are drawn by a worker, which is joined before anything else goes. */
class Solvane final : public juce::Component, public juce::SettableTooltipClient, private juce::AsyncUpdater
{
public:
    explicit Solvane (VelmoraAudioProcessor& processor);
    ~Solvane() override;

    /** The mouse is over the empty room at a frequency in hertz, with the colour of the band that would hang there; or,
        with false, no longer. */
    std::function<void (float hz, bool on, juce::Colour colour)> onHover;

    /** A scale chosen by hand leaves a band beyond it. */
    std::function<void()> onBandsOutOfScale;

    /** The mouse has come into the room while a panel of the menu is open: it may close. */
    std::function<void()> onCloseMenu;

    //==================================================================================================================
    /** Hangs a band into the room.

        @param band      the one to show with `fromState`; otherwise -1, and the first free one is taken
        @param fromState the parameters say already that the band is there; otherwise they are written, and a place that
                         a panel has taken, a room that is not on screen, and an eleventh band are refused
        @return the band, or -1 */
    int addBand (float frequencyHz, int band, bool fromState);

    /** The same for a band that the user hangs, which begins as a high shelf above 10 kHz. */
    int addBandByHand (float frequencyHz);

    /** Takes a band away, and sets its parameters back unless they are to stay. */
    void deleteBand (int band, bool keepParameters);

    /** Chooses a scale in dB; -1 chooses the smallest that shows every band. */
    void setScale (float scaleDb);

    /** Ends the hover of all bands. */
    void collapseControls();

    /** Makes the bands that the parameters say are there, and takes away the others. */
    void rebuildControls();

    /** Shows a state that has been loaded whole: bands, scale and curves. */
    void resetForStateChange();

    /** Draws the target of another preset or session, without a transition. */
    void rebuildTarget();

    /** Takes every band away. */
    void deleteAllBands();

    /** Draws the target as it is once what was measured has been forgotten. */
    void forgetMeasurement();

    /** Lays the bands out anew, as after the window's spare panels have come. */
    void layOutControls();

    /** Empties the spectrum of what was heard before the transport stopped or started: the work of the editor's timer,
        since the audio thread that finds the change may not wait for it. */
    void serveTransport();

    /** False while something else lies over the room. */
    void setMouseEnabled (bool enabled);

    //==================================================================================================================
    /** For pictures and tests without a display: takes the room for being on screen. */
    void pretendToShow() noexcept { pretendsToShow = true; }

    [[nodiscard]] const RoomWorker& wallWorker() const noexcept { return worker; }
    [[nodiscard]] const RoomBands& roomBands() const noexcept { return bands; }

    void paint (juce::Graphics& graphics) override;
    void resized() override;
    void mouseEnter (const juce::MouseEvent& event) override;
    void mouseExit (const juce::MouseEvent& event) override;
    void mouseMove (const juce::MouseEvent& event) override;
    bool keyPressed (const juce::KeyPress& key) override;
    void mouseDoubleClick (const juce::MouseEvent& event) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

private:
    void handleAsyncUpdate() override;
    void bindBands();
    void parameterChanged (int index);
    void bandParameterChanged (int band, Settings::Parameter kind);
    void gainChanged (int band);
    void wallsChanged (RoomWorker::Change change);
    void followTransport();
    void showScale();
    void updateHint();
    void repaintWalls();
    void stopHover();
    void closeMenu();
    [[nodiscard]] bool isOnScreen() const { return pretendsToShow || isShowing(); }
    [[nodiscard]] juce::Colour colourOfNextBand() const;

    VelmoraAudioProcessor& processor;
    PluginModel& model;
    InterfaceState& state;

    juce::Label hintLabel;
    juce::Label scaleLabel;
    ScaleSelector scaleSelector;
    AddBandMarker addBandMarker;
    bool pretendsToShow = false;

    juce::Image background;
    WallPictures targetPictures;
    WallPictures responsePictures;

    /** What other threads have found for the message thread to do. */
    std::atomic<bool> wallsDrawn { false };
    std::atomic<bool> scaleMoved { false };
    std::atomic<bool> stateSet { false };

    /** The audio thread's: what it found at the last block. */
    std::atomic<bool> transportPlayed { false };
    std::atomic<bool> transportChanged { false };

    /** Turns of the message loop until new spare panels are there. */
    std::atomic<int> turnsUntilPanels { 0 };

    RoomBands bands;
    TargetRefresh targetRefresh;
    ParameterWatch parameterWatch;
    std::array<int, 3> subscriptions {};
    RoomWorker worker; ///< last: its thread uses all of the above
};
