#pragma once

#include "core/PluginProcessor.h"
#include "gui/band/BandSurroundings.h"
#include "gui/band/SolvaneControl.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

/** The bands that hang in the room: makes and removes their controls, writes into the parameters what the controls ask
    for, keeps them in order of depth, and knows which one has the focus. Message thread. */
class RoomBands
{
public:
    /** @param room becomes the controls' parent */
    RoomBands (VelmoraAudioProcessor& processor, juce::Component& room);
    ~RoomBands();

    RoomBands (const RoomBands&) = delete;
    RoomBands& operator= (const RoomBands&) = delete;

    //==================================================================================================================
    // What the bands ask of the room, which binds all of them

    /** The scale has to open as far as every band needs. */
    std::function<void()> onScaleWanted;

    /** A band is to go; another is to hang at a row. */
    std::function<void (int band)> onClose;
    std::function<void (int row)> onAddBandAtRow;

    /** A band is meant now, and no longer the empty room. */
    std::function<void()> onMeant;

    /** The marks and lines on the walls have changed. */
    std::function<void()> onWallsChanged;

    /** The controls were put in order; what lies over all of them comes now. */
    std::function<void()> onSorted;

    /** A place of the room that no panel may cover. */
    std::function<juce::Rectangle<int>()> keepClear;

    //==================================================================================================================
    /** Makes the controls of bands in use that have none, and removes those of bands that are not. */
    void matchParameters();

    /** Shows what the parameters of a band say, if it has a control. */
    void readParameters (int band);

    /** A frequency has come from elsewhere. */
    void frequencyChanged (int band);

    /** Who is dimmed by whose solo, and whether the whole plug-in is bypassed. */
    void updateSilence();

    /** Master allows less than what the parameters hold, Mix shows all of it. */
    void masterLimitsChanged();

    /** Clears the floor of the panel that a band has there, or puts it back. */
    void hideLowerPanel (bool hidden);

    /** Computes all bounds anew. */
    void layOut();

    /** Puts the nearest band on top, unless a hand holds one. */
    void sort();

    void collapse();
    void remove (int band);

    /** Puts a band into focus. */
    void focus (int band);

    /** The band in focus, or -1. */
    [[nodiscard]] int focusBand() const noexcept { return focused; }

    /** A read-out of a band is open for typing. */
    [[nodiscard]] bool isTyping() const;

    /** Gives the keyboard to the lowest band, or to the highest. @returns false where none hangs */
    bool takeKeyboard (bool highest);

    [[nodiscard]] bool isEmpty() const noexcept { return hung.empty(); }

    /** The control of a band, or null. */
    [[nodiscard]] SolvaneControl* find (int band) const noexcept;

    /** Bands in stacking order, the undermost first. */
    [[nodiscard]] std::vector<int> stackingOrder() const;

private:
    class Hung;
    using Kind = Settings::Parameter;

    void bind (SolvaneControl& control);
    void takeGain (int band, float depth);
    void takeFrequency (int band, float position, bool isRow);
    void gesture (int band, Kind kind, bool begins);
    void mouseMoved (int band, juce::Point<int> point);
    void bringForward (int band, juce::Point<int> point);
    void mouseLeft();
    void markBehind (int band);
    void updateFocusOrder();
    void write (int band, Kind kind, float value);
    [[nodiscard]] std::optional<int> bandBehind (int band, juce::Point<int> point) const;
    [[nodiscard]] OverlapLimits limitsFor (const SolvaneControl& control) const;

    VelmoraAudioProcessor& processor;
    PluginModel& model;
    InterfaceState& state;
    juce::Component& room;
    BandSurroundings surroundings;
    int focused = -1;

    /** The band that ctrl has brought before others, until the mouse leaves it. */
    int broughtForward = -1;
    bool skipLeaveOnce = false;
    int heldGains = 0;

    /** A control does not lie where the order says. */
    bool stackIsStale = false;
    std::vector<std::unique_ptr<Hung>> hung;
};
