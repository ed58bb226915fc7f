#include "gui/band/BandText.h"

#include <cmath>

namespace
{
constexpr auto minusSign = static_cast<juce::juce_wchar> (0x2212);
} // namespace

juce::String BandText::ofGain (float gainDb)
{
    const auto number = juce::String (gainDb, 1);

    // A hair below 0 rounds to "-0.0".
    if (number.containsOnly ("-0."))
        return "0.0dB";

    return (gainDb > 0.0f ? "+" : "") + number + "dB";
}

juce::String BandText::ofFrequency (int frequencyHz)
{
    return juce::String (frequencyHz) + "Hz";
}

juce::String BandText::ofQ (float q)
{
    return juce::String (q, 1) + "Q";
}

double BandText::toNumber (const juce::String& text)
{
    const auto plain = text.replaceCharacter (',', '.').replaceCharacter (minusSign, '-').trimStart();
    const auto number = plain.initialSectionContainingOnly ("+-.0123456789");
    const auto unit = plain.substring (number.length()).trimStart();
    const auto value = number.getDoubleValue() * (unit.startsWithIgnoreCase ("k") ? 1000.0 : 1.0);
    return std::isfinite (value) ? value : 0.0;
}
