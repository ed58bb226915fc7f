#include "gui/look/Fonts.h"

#include <gtest/gtest.h>

TEST (FontsTest, bothTypefacesAreReadFromTheProgram)
{
    const juce::SharedResourcePointer<Typefaces> typefaces;
    ASSERT_NE (typefaces->regular, nullptr);
    ASSERT_NE (typefaces->bold, nullptr);
    EXPECT_EQ (typefaces->regular->getName(), "Lato");
    EXPECT_EQ (typefaces->bold->getName(), "Lato");
    EXPECT_EQ (typefaces->bold->getStyle(), "Bold");
}

TEST (FontsTest, aFontHasTheHeightThatWasAskedFor)
{
    EXPECT_FLOAT_EQ (Fonts::regular (14.0f).getHeight(), 14.0f);
    EXPECT_FLOAT_EQ (Fonts::bold (12.0f).getHeight(), 12.0f);
}

TEST (FontsTest, theBoldOneIsWider)
{
    EXPECT_GT (Fonts::bold (14.0f).getStringWidthFloat ("BALANCED MASTER"),
               Fonts::regular (14.0f).getStringWidthFloat ("BALANCED MASTER"));
}

TEST (FontsTest, aWidthIsRoundedUp)
{
    const auto font = Fonts::regular (14.0f);
    const auto exact = font.getStringWidthFloat ("PRESET");
    const auto rounded = static_cast<float> (Fonts::widthOf (font, "PRESET"));
    EXPECT_GE (rounded, exact);
    EXPECT_LT (rounded, exact + 1.0f);
    EXPECT_EQ (Fonts::widthOf (font, {}), 0);
}
