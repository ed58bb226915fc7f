#pragma once

#include "gui/band/BandState.h"

#include <juce_core/juce_core.h>

/** What a band's read-out speaks of. */
enum class ReadoutQuantity
{
    gain,
    frequency,
    q,
    midSide
};

namespace BandReadout
{
inline constexpr auto soloed = "SOLOD";

/** The text for a quantity; a soloed band says so in place of any. */
[[nodiscard]] juce::String textOf (const BandState& band, ReadoutQuantity quantity);

/** What a text editor over the read-out begins with. */
[[nodiscard]] juce::String editableTextOf (const BandState& band, ReadoutQuantity quantity);
} // namespace BandReadout
