#pragma once

#include "gui/room/RoomGeometry.h"

#include <juce_graphics/juce_graphics.h>

/** The two spare panels that lie over the bars above and below the room. A band whose line is too near to the ceiling
   or to the floor for a panel of its own takes one of them, and keeps other bands out of its space. */
enum class OverlapPanel
{
    none,
    upper,
    lower
};

/** Which of the spare panels a line needs whose row in the room is `centreRow`. */
[[nodiscard]] OverlapPanel overlapPanelFor (const RoomGeometry& room, float centreRow) noexcept;

/** Where a spare panel lies, in the editor's coordinates. Empty for OverlapPanel::none. */
[[nodiscard]] juce::Rectangle<int>
overlapPanelBounds (OverlapPanel panel, const RoomGeometry& room, float centreRow) noexcept;

/** Who holds the spare panels, seen from one band. */
struct OverlapLimits
{
    bool upperTakenByAnother = false;
    bool lowerTakenByAnother = false;

    /** False for a frequency at which the band would need the space that another band's panel has. */
    [[nodiscard]] bool allow (float frequencyHz) const noexcept;
};
