#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

/** What the transport of a reference track looks like: a line at the play position over the waveform, and below it a
    strip with the symbol of what a click does. The slider is as high as both; everywhere else it is transparent. */
namespace TransportPicture
{
/** Names of the slider, which choose its symbol. */
inline constexpr auto play = "play";
inline constexpr auto pause = "pause";

/** Height of the strip at the lower edge. */
inline constexpr int stripHeight = 24;

[[nodiscard]] bool isTransport (const juce::Slider& slider);

/** The part of the slider that the track's whole length takes: as wide as the waveform below it. */
[[nodiscard]] juce::Rectangle<int> trackArea (const juce::Slider& slider);

/** Where the symbol stands. */
[[nodiscard]] juce::Rectangle<int> symbolArea (const juce::Slider& slider);

/** @param position of the line, in pixels */
void draw (juce::Graphics& g, juce::Slider& slider, float position);
} // namespace TransportPicture
