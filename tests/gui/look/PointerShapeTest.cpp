#include "gui/look/PointerShape.h"

#include <gtest/gtest.h>

namespace
{
const juce::Rectangle<float> bounds { 0.0f, 0.0f, 44.0f, 16.0f };
} // namespace

TEST (PointerShapeTest, theIdNamesTheSideAndTheEndOfTheTip)
{
    EXPECT_EQ (PointerShape ("left", bounds).tip(), juce::Point<float> (0.0f, 8.0f));
    EXPECT_EQ (PointerShape ("right", bounds).tip(), juce::Point<float> (44.0f, 8.0f));
    EXPECT_EQ (PointerShape ("leftTop", bounds).tip(), juce::Point<float> (0.0f, 0.0f));
    EXPECT_EQ (PointerShape ("rightTop", bounds).tip(), juce::Point<float> (44.0f, 0.0f));
    EXPECT_EQ (PointerShape ("leftBottom", bounds).tip(), juce::Point<float> (0.0f, 16.0f));
    EXPECT_EQ (PointerShape ("rightBottom", bounds).tip(), juce::Point<float> (44.0f, 16.0f));
}

TEST (PointerShapeTest, theBoxLeavesRoomForTheTip)
{
    EXPECT_EQ (PointerShape ("left", bounds).box(), juce::Rectangle<float> (5.0f, 0.0f, 39.0f, 16.0f));
    EXPECT_EQ (PointerShape ("rightBottom", bounds).box(), juce::Rectangle<float> (0.0f, 0.0f, 39.0f, 16.0f));
}

TEST (PointerShapeTest, tipAndBoxAreOneShape)
{
    for (const auto* id : { "left", "leftTop", "leftBottom", "right", "rightTop", "rightBottom" })
    {
        const PointerShape shape (id, bounds);
        const auto towardsTip = shape.box().getCentre() + (shape.tip() - shape.box().getCentre()) * 0.93f;
        EXPECT_TRUE (shape.outline().contains (shape.box().getCentre())) << id;
        EXPECT_TRUE (shape.outline().contains (towardsTip)) << id;
        EXPECT_TRUE (bounds.expanded (0.01f).contains (shape.outline().getBounds())) << id;
    }
}

TEST (PointerShapeTest, onlyTheSixIdsAreIts)
{
    EXPECT_TRUE (PointerShape::isPointer ("left"));
    EXPECT_TRUE (PointerShape::isPointer ("rightBottom"));
    EXPECT_FALSE (PointerShape::isPointer ("leftover"));
    EXPECT_FALSE (PointerShape::isPointer ({}));
}
