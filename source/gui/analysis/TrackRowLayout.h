#pragma once

#include <juce_graphics/juce_graphics.h>

/** Where the buttons of the tracks stand, side by side below the waveform. */
namespace TrackRowLayout
{
/** @param windowWidth in pixels, of the whole analysis window
    @param rowCount    1 and above */
[[nodiscard]] juce::Rectangle<int> boundsOf (int index, int rowCount, int windowWidth) noexcept;
} // namespace TrackRowLayout
