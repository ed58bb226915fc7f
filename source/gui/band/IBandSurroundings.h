#pragma once

#include "gui/band/GainLimits.h"
#include "gui/band/OverlapPanel.h"

#include <juce_gui_basics/juce_gui_basics.h>

class MidSideControlPanel;
class SolvaneControlPanel;

/** What a band's control sees of the room around it and of the model behind it. Message thread, unless it says
    otherwise. */
class IBandSurroundings
{
public:
    virtual ~IBandSurroundings() = default;

    [[nodiscard]] virtual RoomGeometry geometry() const = 0;

    /** Filter mode, gain scale and the scale that is drawn. */
    [[nodiscard]] virtual GainLimits gainLimits() const = 0;

    /** The band's active parameter. Any thread. */
    [[nodiscard]] virtual bool isActive (int band) const noexcept = 0;

    [[nodiscard]] virtual bool scaleAnimating() const = 0;

    /** True once after a change of the scale: a drag starts anew from where the band is now. */
    [[nodiscard]] virtual bool takeRebase() = 0;

    [[nodiscard]] virtual bool wheelReversed() const = 0;

    /** Bands keep their bright look and their panels without the mouse. */
    [[nodiscard]] virtual bool bandsAlwaysShown() const = 0;

    /** Whether bands have a place between mid and side at all. */
    [[nodiscard]] virtual bool stereo() const = 0;

    /** A window lies over the room, so nothing may show through it. */
    [[nodiscard]] virtual bool overlayOpen() const = 0;

    /** A hand has asked for more than Master can filter. */
    virtual void masterExceeded() = 0;

    /** A gain was typed that lies beyond the scale: the next gain that arrives from this band is this one. */
    virtual void setTypedGain (float gainDb) = 0;

    /** The spare panel, if there is one and no other band has it. */
    [[nodiscard]] virtual SolvaneControlPanel* freeOverlapPanel (OverlapPanel which) = 0;
    virtual void setOverlapPanelInUse (OverlapPanel which, bool inUse) = 0;

    /** The spare panels are to be made anew; called when a band comes and goes. */
    virtual void rebuildOverlapPanels() = 0;

    /** The one mid/side panel of the window; null where there is none. */
    [[nodiscard]] virtual MidSideControlPanel* midSidePanel() = 0;
};
