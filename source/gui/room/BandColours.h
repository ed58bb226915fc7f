#pragma once

#include "dsp/design/BandDesign.h"

#include <juce_graphics/juce_graphics.h>

#include <array>

/** The colours by which the ten bands are told apart. */
[[nodiscard]] const std::array<juce::Colour, bandCount>& bandColours();
