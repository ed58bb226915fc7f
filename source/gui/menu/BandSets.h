#pragma once

#include <span>

/** The bands that the menu adds by their number. */
namespace BandSets
{
inline constexpr int largest = 10;

/** Frequencies in hertz, ascending.
    @param count from 1 to 10; nothing is returned for any other */
[[nodiscard]] std::span<const float> ofCount (int count) noexcept;
} // namespace BandSets
