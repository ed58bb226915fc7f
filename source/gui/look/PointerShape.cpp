#include "gui/look/PointerShape.h"

#include <algorithm>

namespace
{
constexpr float cornerRadius = 3.0f;
constexpr float tipHalfHeight = 5.0f;
} // namespace

bool PointerShape::isPointer (const juce::String& id)
{
    return id == "left" || id == "right" || id == "leftTop" || id == "rightTop" || id == "leftBottom"
           || id == "rightBottom";
}

PointerShape::PointerShape (const juce::String& id, juce::Rectangle<float> bounds) : textBox (bounds)
{
    const auto pointsLeft = id.startsWith ("left");
    const auto atTop = id.contains ("Top");
    const auto atBottom = id.contains ("Bottom");

    if (pointsLeft)
        textBox.removeFromLeft (tipLength);
    else
        textBox.removeFromRight (tipLength);

    tipPoint = { pointsLeft ? bounds.getX() : bounds.getRight(),
                 atTop ? bounds.getY() : (atBottom ? bounds.getBottom() : bounds.getCentreY()) };

    // The tip grows out of the box's side; at an end of it, out of the corner.
    const auto side = pointsLeft ? textBox.getX() : textBox.getRight();
    const auto inside = pointsLeft ? side + cornerRadius : side - cornerRadius;
    const auto upper = std::clamp (tipPoint.y - tipHalfHeight, bounds.getY(), bounds.getBottom());
    const auto lower = std::clamp (tipPoint.y + tipHalfHeight, bounds.getY(), bounds.getBottom());

    path.setUsingNonZeroWinding (true);
    path.addRoundedRectangle (
        textBox.getX(), textBox.getY(), textBox.getWidth(), textBox.getHeight(), cornerRadius, cornerRadius);
    path.startNewSubPath (tipPoint);

    // In the sense of rotation of the box, so that where they overlap both fill.
    if (pointsLeft)
    {
        path.lineTo (side, upper);
        path.lineTo (inside, upper);
        path.lineTo (inside, lower);
        path.lineTo (side, lower);
    }
    else
    {
        path.lineTo (side, lower);
        path.lineTo (inside, lower);
        path.lineTo (inside, upper);
        path.lineTo (side, upper);
    }

    path.closeSubPath();
}
