#include "gui/band/BandPainter.h"
#include "gui/band/BandRig.h"
#include "gui/look/Palette.h"
#include "gui/room/RoomCases.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace
{
const juce::Colour bandColour (0xFF11A494);

juce::Image pictureOf (BandRig& rig, const char* name)
{
    return Pictures::of (*rig.control, name);
}

/** The colour at a point, as it stands over nothing. */
juce::Colour at (const juce::Image& picture, juce::Point<int> point)
{
    return picture.getPixelAt (point.x, point.y);
}
} // namespace

TEST (BandPaintTest, midSidePartsMatchTheComputedFigures)
{
    const auto& item = roomCases::byId ("midside-paint-0.25");
    const auto parts = midSideParts (item["inputs"]["width"], item["inputs"]["midside"]);
    EXPECT_NEAR (parts.first.getStart(), item["expected"][0][0].get<float>(), 0.01f);
    EXPECT_NEAR (parts.first.getLength(), item["expected"][0][1].get<float>(), 0.01f);
    EXPECT_TRUE (parts.second.isEmpty());
}

TEST (BandPaintTest, sideIsTwoPartsAtTheWalls)
{
    const auto side = midSideParts (500.0f, 1.0f);
    EXPECT_EQ (side.first, juce::Range<float> (0.0f, 100.0f));
    EXPECT_EQ (side.second, juce::Range<float> (400.0f, 500.0f));
    EXPECT_EQ (midSideParts (500.0f, 0.5f).first, juce::Range<float> (0.0f, 500.0f));
    EXPECT_TRUE (midSideParts (500.0f, 0.5f).second.isEmpty());
}

TEST (BandPaintTest, aBoostIsFilledMoreStronglyThanACut)
{
    EXPECT_NEAR (bodyAlpha (0.5f, 0.7f), 0.6f * 1.2f * 0.6f, 1e-6f);
    EXPECT_NEAR (bodyAlpha (0.0f, 1.0f), 0.99f, 1e-6f);
    EXPECT_NEAR (bodyAlpha (1.0f, 0.7f), 0.072f, 1e-6f);
    EXPECT_EQ (bodyAlpha (-1.0f, 1.0f), 1.0f);
}

TEST (BandPaintTest, theBodyIsFilledInTheBandsColourAndFramed)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto picture = pictureOf (rig, "band");
    const auto body = at (picture, rig.onBody());
    EXPECT_NEAR (body.getAlpha(), 255.0 * 0.432, 2.0);
    EXPECT_NEAR (body.getHue(), bandColour.getHue(), 0.02f);

    // The frame is opaque, its corners are round.
    EXPECT_GT (at (picture, { rig.control->getWidth() / 2, 0 }).getAlpha(), 200);
    EXPECT_LT (at (picture, { 0, 0 }).getAlpha(), 60);
}

TEST (BandPaintTest, cornersAreSquareWhereTheBandReachesTheRoomsEnd)
{
    BandRig rig;
    rig.place (3910, 0.0f, 1.0f, true);
    const auto picture = pictureOf (rig, "shelf");
    EXPECT_GT (at (picture, { 0, 0 }).getAlpha(), 200);
    EXPECT_LT (at (picture, { 0, rig.control->getHeight() - 1 }).getAlpha(), 60);
}

TEST (BandPaintTest, aBandThatIsNotHeardIsGrey)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.control->setBypass (true);
    const auto body = at (pictureOf (rig, "bypassed"), rig.onBody());
    EXPECT_LT (body.getSaturation(), 0.05f);

    rig.control->setBypass (false);
    rig.control->setDimmed (true);
    EXPECT_LT (at (pictureOf (rig, "dimmed"), rig.onBody()).getSaturation(), 0.05f);
}

TEST (BandPaintTest, midLeavesTheSidesEmptyAndSideTheMiddle)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto y = rig.onBody().y;
    const auto middle = rig.control->getWidth() / 2;
    rig.control->setMidSide (0.0f);
    auto picture = pictureOf (rig, "mid");
    EXPECT_EQ (at (picture, { 20, y }).getAlpha(), 0);
    EXPECT_GT (at (picture, { middle, y }).getAlpha(), 80);

    rig.control->setMidSide (1.0f);
    picture = pictureOf (rig, "side");
    EXPECT_GT (at (picture, { 20, y }).getAlpha(), 80);
    EXPECT_EQ (at (picture, { middle, y }).getAlpha(), 0);

    // A mono bus has no such places.
    rig.stereoBus = false;
    EXPECT_GT (at (pictureOf (rig, "mono"), { middle, y }).getAlpha(), 80);
}

TEST (BandPaintTest, theLineIsThickUnderTheMouse)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto row = rig.layout().lineY();
    const auto isLine = [&] (const juce::Image& picture, int y) {
        return Pictures::count (picture, { 30, y, 1, 1 }, bandColour, 4) == 1;
    };

    auto picture = pictureOf (rig, "line");
    EXPECT_TRUE (isLine (picture, row));
    EXPECT_FALSE (isLine (picture, row - 1));
    EXPECT_FALSE (isLine (picture, row + 1));

    rig.hover (rig.onLine());
    picture = pictureOf (rig, "line-hot");

    for (const auto y : { row - 1, row, row + 1 })
        EXPECT_TRUE (isLine (picture, y));

    EXPECT_FALSE (isLine (picture, row - 2));
    EXPECT_FALSE (isLine (picture, row + 2));
}

TEST (BandPaintTest, theLineIsSeenOnTheMostOpaqueBody)
{
    BandRig rig;
    rig.place (3910, 12.0f);
    rig.control->setSelected (true);
    rig.tick (8);
    const auto row = rig.layout().lineY();
    const auto picture = pictureOf (rig, "front");
    const auto body = at (picture, rig.onBody()).getBrightness();
    EXPECT_LT (at (picture, { 30, row + 1 }).getBrightness(), body - 0.15f);
}

TEST (BandPaintTest, theFocusedBandShowsItsHandlesWhiteUnderTheMouse)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const juce::Rectangle<int> handle (rig.control->getWidth() / 2 - 12, rig.control->getHeight() - 6, 24, 6);
    EXPECT_EQ (Pictures::count (pictureOf (rig, "handles-none"), handle, juce::Colours::white), 0);
    rig.control->setSelected (true);
    const auto calm = Pictures::count (pictureOf (rig, "handles"), handle, bandColour, 12);
    EXPECT_GT (calm, 20);
    rig.hover (rig.onBottomEdge());
    EXPECT_GT (Pictures::count (pictureOf (rig, "handles-hot"), handle, juce::Colours::white, 12), 20);
}

TEST (BandPaintTest, aShelfHasItsSignAtTheCeiling)
{
    BandRig rig;
    rig.place (3910, 0.0f, 1.0f, true);
    rig.control->setSelected (true);
    const auto middle = rig.control->getWidth() / 2;
    const auto picture = pictureOf (rig, "shelf-sign");

    // Low at the left, high at the right.
    EXPECT_GT (at (picture, { middle - 11, 11 }).getAlpha(), 200);
    EXPECT_LT (at (picture, { middle - 11, 6 }).getAlpha(), 180);
    EXPECT_GT (at (picture, { middle + 11, 4 }).getAlpha(), 200);
    EXPECT_LT (at (picture, { middle + 11, 9 }).getAlpha(), 180);
}

TEST (BandPaintTest, outOfScaleHalfADotShowsOnEachEdge)
{
    BandRig rig;
    rig.room.scaleDb = 4.0f;
    rig.place (1000, 8.0f);
    const auto width = rig.control->getWidth();
    const auto y = rig.control->getHeight() / 2;
    auto picture = pictureOf (rig, "dots");
    EXPECT_EQ (Pictures::countDrawn (picture, { 12, 0, width - 24, rig.control->getHeight() }), 0);
    EXPECT_EQ (at (picture, { 1, y }), juce::Colour (Palette::inactiveBand));
    EXPECT_EQ (at (picture, { width - 2, y }), juce::Colour (Palette::inactiveBand));
    const auto calm = Pictures::countDrawn (picture, picture.getBounds());

    // Under the mouse they come out by two pixels.
    rig.hover (rig.layout().leftDot.getCentre());
    picture = pictureOf (rig, "dots-hot");
    EXPECT_GT (Pictures::countDrawn (picture, picture.getBounds()), calm + 20);

    // While the scale is on its way the band is drawn as a whole.
    rig.animating = true;
    EXPECT_GT (at (pictureOf (rig, "dots-moving"), { width / 2, y }).getAlpha(), 80);
}

TEST (BandPaintTest, ctrlOverItMakesABandBrighter)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    const auto calm = at (pictureOf (rig, "calm"), rig.onBody()).getBrightness();
    rig.control->setCtrlHover (true);
    EXPECT_GT (at (pictureOf (rig, "ctrl"), rig.onBody()).getBrightness(), calm + 0.03f);
}

TEST (BandPaintTest, thePanelLiesAcrossTheLine)
{
    BandRig rig;
    rig.place (3910, 0.0f);
    rig.control->setSelected (true);
    rig.tick (8);
    const auto picture = pictureOf (rig, "panel");
    const auto panel = rig.layout().panel;
    EXPECT_GT (Pictures::count (picture, panel, juce::Colour (Palette::bandPanel)), panel.getWidth() * 15);
    EXPECT_GT (Pictures::count (picture, panel, bandColour, 30), 200);
}

TEST (BandPaintTest, aPanelOverTheBarIsFlat)
{
    SolvaneControlPanel panel (SolvaneControlPanel::Shape::overlap);
    panel.showAtOnce (true);
    const auto picture = Pictures::of (panel, "overlap");
    EXPECT_EQ (Pictures::countDrawn (picture, { 0, 0, 186, 9 }), 0);
    EXPECT_EQ (Pictures::countDrawn (picture, { 0, 25, 186, 9 }), 0);
    EXPECT_GT (Pictures::count (picture, { 0, 9, 186, 16 }, juce::Colour (Palette::bandPanel)), 1000);
}
