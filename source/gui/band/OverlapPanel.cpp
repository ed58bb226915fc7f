#include "gui/band/OverlapPanel.h"

#include "gui/band/BandRoom.h"

#include <algorithm>

namespace
{
/** The line itself stays this far from ceiling and floor, so that its panel still touches the room. */
constexpr float nearestRow = 3.0f;

/** Frequencies that belong to whoever has the panel above or below. */
constexpr float upperSpaceFromHz = 14800.0f;
constexpr float lowerSpaceUpToHz = 430.0f;
} // namespace

OverlapPanel overlapPanelFor (const RoomGeometry& room, float centreRow) noexcept
{
    constexpr auto needed = static_cast<float> (BandRoom::halfPanelHeight);
    const auto inUpperHalf = centreRow < room.height / 2.0f;

    if (inUpperHalf && centreRow - needed < 0.0f)
        return OverlapPanel::upper;

    if (! inUpperHalf && room.height - centreRow < needed)
        return OverlapPanel::lower;

    return OverlapPanel::none;
}

juce::Rectangle<int> overlapPanelBounds (OverlapPanel panel, const RoomGeometry& room, float centreRow) noexcept
{
    if (panel == OverlapPanel::none)
        return {};

    const auto row = panel == OverlapPanel::upper ? std::max (centreRow, nearestRow)
                                                  : std::min (centreRow, room.height - nearestRow);
    const auto middle = (room.width + static_cast<float> (BandRoom::roomMargins)) * 0.5f;
    return { static_cast<int> (middle) - BandRoom::panelLeftOfMiddle,
             static_cast<int> (row) + BandRoom::roomTop - BandRoom::halfPanelHeight,
             BandRoom::panelWidth,
             BandRoom::panelHeight };
}

bool OverlapLimits::allow (float frequencyHz) const noexcept
{
    return ! (upperTakenByAnother && frequencyHz >= upperSpaceFromHz)
           && ! (lowerTakenByAnother && frequencyHz <= lowerSpaceUpToHz);
}
