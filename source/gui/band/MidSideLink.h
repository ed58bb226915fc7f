#pragma once

#include "gui/band/BandState.h"
#include "gui/band/IBandSurroundings.h"

#include <functional>

/** A band's hold on the window's one mid/side panel. Message thread. */
class MidSideLink
{
public:
    /** All outlive this object. */
    MidSideLink (const BandState& state, IBandSurroundings& surroundings);

    /** Lets the panel go. */
    ~MidSideLink();

    MidSideLink (const MidSideLink&) = delete;
    MidSideLink& operator= (const MidSideLink&) = delete;

    /** Brings the panel to this band, if the band has a place between mid and side.
        @param touched what the panel lies below
        @param above   lies above it instead
        @param onUse   told when the slider is or is no longer being used
        @param onLeft  told when the mouse has left the slider */
    void show (const juce::Component& touched,
               bool above,
               std::function<void (bool inUse)> onUse,
               std::function<void()> onLeft);

    void hide();

    /** The value has changed. */
    void follow();

    /** Writes a value, as a gesture; false where there is no panel to do it. */
    bool write (float value);

    /** The panel is this band's, and the mouse or a drag is on it. */
    [[nodiscard]] bool isInUse() const;

private:
    [[nodiscard]] MidSideControlPanel* served() const;

    const BandState& band;
    IBandSurroundings& room;
};
