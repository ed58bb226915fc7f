#include "gui/band/BandZone.h"

namespace
{
BandZone edgeAt (const BandLayout& layout, juce::Point<int> point) noexcept
{
    if (layout.topEdge.contains (point))
        return BandZone::topEdge;

    return layout.bottomEdge.contains (point) ? BandZone::bottomEdge : BandZone::none;
}

BandZone lineAt (const BandLayout& layout, juce::Point<int> point) noexcept
{
    return layout.leftLine.contains (point) || layout.rightLine.contains (point) ? BandZone::line : BandZone::none;
}

BandZone zoneAt (const BandLayout& layout, juce::Point<int> point, BandZone first, BandZone second) noexcept
{
    if (! layout.bounds.withZeroOrigin().contains (point))
        return BandZone::none;

    if (layout.outOfScale)
        return layout.leftDot.contains (point) || layout.rightDot.contains (point) ? BandZone::dot : BandZone::none;

    if (first != BandZone::none)
        return first;

    return second != BandZone::none ? second : BandZone::body;
}
} // namespace

BandZone pressedZone (const BandLayout& layout, juce::Point<int> point) noexcept
{
    return zoneAt (layout, point, lineAt (layout, point), edgeAt (layout, point));
}

BandZone hoveredZone (const BandLayout& layout, juce::Point<int> point) noexcept
{
    return zoneAt (layout, point, edgeAt (layout, point), lineAt (layout, point));
}
