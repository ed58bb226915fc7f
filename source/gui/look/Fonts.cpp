#include "gui/look/Fonts.h"

#include <SolvaneResources.h>

#include <cmath>

Typefaces::Typefaces()
    : regular (juce::Typeface::createSystemTypefaceFor (SolvaneResources::LatoRegular_ttf,
                                                        SolvaneResources::LatoRegular_ttfSize)),
      bold (
          juce::Typeface::createSystemTypefaceFor (SolvaneResources::LatoBold_ttf, SolvaneResources::LatoBold_ttfSize))
{
}

juce::Font Fonts::regular (float height)
{
    return juce::Font (juce::SharedResourcePointer<Typefaces>()->regular).withHeight (height);
}

juce::Font Fonts::bold (float height)
{
    return juce::Font (juce::SharedResourcePointer<Typefaces>()->bold).withHeight (height);
}

int Fonts::widthOf (const juce::Font& font, const juce::String& text)
{
    return static_cast<int> (std::ceil (font.getStringWidthFloat (text)));
}
