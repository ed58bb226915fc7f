#include "gui/band/BandCursor.h"

juce::MouseCursor::StandardCursorType cursorFor (BandZone zone, const BandState& band) noexcept
{
    using Cursor = juce::MouseCursor;

    if (zone == BandZone::dot)
        return Cursor::PointingHandCursor;

    if (! band.usable())
        return Cursor::NormalCursor;

    switch (zone)
    {
        case BandZone::line:
            return Cursor::UpDownResizeCursor;
        case BandZone::topEdge:
            return band.highShelf ? Cursor::NormalCursor : Cursor::TopEdgeResizeCursor;
        case BandZone::bottomEdge:
            return band.highShelf ? Cursor::NormalCursor : Cursor::BottomEdgeResizeCursor;
        case BandZone::body:
            return band.solo ? Cursor::NormalCursor : Cursor::DraggingHandCursor;
        case BandZone::dot:
        case BandZone::none:
            break;
    }

    return Cursor::NormalCursor;
}
