#include "gui/room/BandColours.h"

const std::array<juce::Colour, bandCount>& bandColours()
{
    static const auto colours = []
    {
        constexpr float saturationFactor = 2.0f;
        std::array<juce::Colour, bandCount> result { juce::Colour (0xff1f8b7d), juce::Colour (0xff8b2ea3),
                                                     juce::Colour (0xfffc8a20), juce::Colour (0xff22b5cd),
                                                     juce::Colour (0xff314ea9), juce::Colour (0xff4fa34c),
                                                     juce::Colour (0xffffe345), juce::Colour (0xffe01d58),
                                                     juce::Colour (0xff87b84a), juce::Colour (0xfffa4a26) };

        for (auto& colour : result)
            colour = colour.withMultipliedSaturation (saturationFactor);

        return result;
    }();

    return colours;
}
