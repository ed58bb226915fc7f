#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <atomic>
#include <mutex>
#include <vector>

/** What the interface has to remember while no editor is open, and what its parts tell each other.

    The host may delete the editor at any moment, in the middle of a drag or an animation; all of this stays. Fields
    without an atomic belong to the message thread. */
struct InterfaceState
{
    /** Milliseconds between two calls of the editor's timer, and of the room's worker. */
    static constexpr int timerIntervalMs = 40;
    static constexpr int roomTimerMs = 40;

    //==================================================================================================================
    // Room

    /** Size of the room component in pixels. */
    std::atomic<int> roomWidth { 670 };
    std::atomic<int> roomHeight { 622 };

    /** The drawn scale is on its way to the chosen one. Set by the message thread, cleared by the room's worker. */
    std::atomic<bool> scaleAnimating { false };

    /** A scale has arrived since the last event of a drag, which starts anew from where the band is now. Set by the
        room's worker, cleared by the drag. */
    std::atomic<bool> rebaseDrag { false };

    /** The gain target in dB for every fourth row of the room, from the floor up, and the rows' frequencies in hertz.
        Written by the message thread under rowsLock, which also the room's worker takes to copy them. */
    std::vector<double> targetCurve;
    std::vector<double> curveFrequencies;
    std::mutex rowsLock;

    /** The rows' frequencies follow a new height. */
    bool rowsChanged = true;

    /** A band has taken the overlap panel above or below the room. */
    bool upperPanelInUse = false;
    bool lowerPanelInUse = false;

    /** A gain that was typed beyond the scale, in dB, on its way to the parameter; 0 is none. */
    float typedGainDb = 0.0f;

    /** The spare band panels above and below the room, and the one mid/side panel. The editor owns them; the bands
        borrow them. */
    juce::Component::SafePointer<juce::Component> upperPanel;
    juce::Component::SafePointer<juce::Component> lowerPanel;
    juce::Component::SafePointer<juce::Component> midSidePanel;

    /** Where the room was last clicked twice. */
    juce::Point<int> mousePosition;

    /** Gain or Q of a band was moved by hand since the Master message was last shown. */
    std::atomic<bool> bandChangedByUser { false };

    //==================================================================================================================
    // Editor

    /** What lies over the room. The room's worker rests while the analysis window is open. */
    std::atomic<bool> analysisOpen { false };
    bool analysisSliding = false;
    bool settingsOpen = false;
    bool helpOpen = false;
    bool bandsPanelOpen = false;

    /** How often this instance has explained the limits of Master. */
    int masterMessageCount = 0;

    //==================================================================================================================
    // Update and news: each asked for once in the life of an instance. Written by the thread that asks.

    std::atomic<bool> updateCheckStarted { false };
    std::atomic<bool> newsCheckStarted { false };
    std::atomic<bool> updateCheckAnswered { false };
    std::atomic<bool> updateAvailable { false };
    std::atomic<bool> newsAvailable { false };

    /** The editor is being destroyed: its controls leave quietly. */
    bool closingEditor = false;
};
