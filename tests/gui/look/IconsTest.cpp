#include "gui/look/Icons.h"

#include "gui/look/Palette.h"
#include "support/Pictures.h"

#include <gtest/gtest.h>

namespace
{
std::unique_ptr<juce::Drawable> load (Icons::Role role)
{
    const auto document = juce::parseXML (Icons::svg (role));
    return document != nullptr ? juce::Drawable::createFromSVG (*document) : nullptr;
}

juce::Rectangle<float> viewBoxOf (const juce::Drawable& icon)
{
    return dynamic_cast<const juce::DrawableComposite&> (icon).getContentArea();
}

/** The icon at a scale, with a margin around its view box. */
juce::Image draw (const juce::Drawable& icon, int margin, float scale)
{
    const auto box = viewBoxOf (icon);
    const auto size = [margin, scale] (float length) { return juce::roundToInt (length * scale) + margin * 2; };
    juce::Image picture (juce::Image::ARGB, size (box.getWidth()), size (box.getHeight()), true);
    juce::Graphics g (picture);
    const auto shift = static_cast<float> (margin);
    icon.draw (g, 1.0f, juce::AffineTransform::scale (scale).translated (shift, shift));
    return picture;
}

class EveryIcon : public testing::TestWithParam<int>
{
protected:
    [[nodiscard]] static Icons::Role role() { return static_cast<Icons::Role> (GetParam()); }
};
} // namespace

TEST_P (EveryIcon, isReadAndDrawsSomething)
{
    const auto icon = load (role());
    ASSERT_NE (icon, nullptr);
    const auto picture = draw (*icon, 0, 1.0f);
    EXPECT_GT (Pictures::countDrawn (picture, picture.getBounds()), 8);
}

TEST_P (EveryIcon, staysWithinItsViewBox)
{
    constexpr auto margin = 6;
    const auto icon = load (role());
    ASSERT_NE (icon, nullptr);

    for (const auto scale : { 1.0f, 2.0f })
    {
        const auto picture = draw (*icon, margin, scale);
        const auto whole = Pictures::countDrawn (picture, picture.getBounds());
        EXPECT_EQ (Pictures::countDrawn (picture, picture.getBounds().reduced (margin)), whole) << "at scale " << scale;
    }
}

TEST_P (EveryIcon, hasTheOneStrokeWeight)
{
    const auto document = juce::parseXML (Icons::svg (role()));
    ASSERT_NE (document, nullptr);
    ASSERT_GT (document->getNumChildElements(), 0);

    for (const auto* shape : document->getChildIterator())
        EXPECT_EQ (shape->getStringAttribute ("stroke-width", "2"), "2");
}

TEST_P (EveryIcon, isDrawnAtTheSizeItIsShownAt)
{
    const auto document = juce::parseXML (Icons::svg (role()));
    ASSERT_NE (document, nullptr);
    const auto width = document->getStringAttribute ("width");
    const auto height = document->getStringAttribute ("height");
    EXPECT_EQ (document->getStringAttribute ("viewBox"), "0 0 " + width + " " + height);
}

INSTANTIATE_TEST_SUITE_P (Roles, EveryIcon, testing::Range (0, Icons::roleCount));

TEST (IconsTest, straightLinesFillWholePixels)
{
    const auto icon = load (Icons::Role::burger);
    ASSERT_NE (icon, nullptr);

    for (const auto scale : { 1, 2 })
    {
        const auto picture = draw (*icon, 0, static_cast<float> (scale));
        const auto middle = picture.getWidth() / 2;
        auto bright = 0;

        for (auto y = 0; y < picture.getHeight(); ++y)
        {
            const auto alpha = picture.getPixelAt (middle, y).getAlpha();
            EXPECT_TRUE (alpha == 0 || alpha == 255) << "row " << y << " at scale " << scale;
            bright += alpha == 255 ? 1 : 0;
        }

        // Three lines of two pixels.
        EXPECT_EQ (bright, 6 * scale);
    }
}

TEST (IconsTest, noTwoAreTheSame)
{
    for (auto a = 0; a < Icons::roleCount; ++a)
        for (auto b = a + 1; b < Icons::roleCount; ++b)
            EXPECT_NE (Icons::svg (static_cast<Icons::Role> (a)), Icons::svg (static_cast<Icons::Role> (b)));
}

TEST (IconsTest, theSelectedSideIsTheBrightOne)
{
    const auto brightnessOf = [] (Icons::Role role, bool left)
    {
        const auto icon = load (role);
        const auto picture = draw (*icon, 0, 1.0f);
        const auto half = picture.getBounds().withWidth (picture.getWidth() / 2);
        return Pictures::count (
            picture, left ? half : half.withX (picture.getWidth() / 2), juce::Colour (Palette::icon));
    };

    EXPECT_GT (brightnessOf (Icons::Role::compareA, true), 0);
    EXPECT_EQ (brightnessOf (Icons::Role::compareA, false), 0);
    EXPECT_EQ (brightnessOf (Icons::Role::compareB, true), 0);
    EXPECT_GT (brightnessOf (Icons::Role::compareB, false), 0);
}

TEST (IconsTest, sheetToLookAt)
{
    // All of them beside each other on the window's ground, at both scales.
    constexpr auto columns = 9;
    constexpr auto cell = 100;
    const auto rows = (Icons::roleCount + columns - 1) / columns;

    for (const auto scale : { 1, 2 })
    {
        juce::Image sheet (juce::Image::RGB, columns * cell * scale, rows * 40 * scale, true);
        juce::Graphics g (sheet);
        g.fillAll (juce::Colour (Palette::barDark));
        g.addTransform (juce::AffineTransform::scale (static_cast<float> (scale)));

        for (auto i = 0; i < Icons::roleCount; ++i)
        {
            const auto icon = load (static_cast<Icons::Role> (i));
            ASSERT_NE (icon, nullptr);
            icon->draw (g,
                        1.0f,
                        juce::AffineTransform::translation (static_cast<float> (i % columns * cell + 5),
                                                            static_cast<float> (i / columns * 40 + 4)));
        }

        Pictures::keep (sheet, "icons-" + juce::String (scale));
        EXPECT_GT (Pictures::count (sheet, sheet.getBounds(), juce::Colour (Palette::icon)), 1000);
    }
}
