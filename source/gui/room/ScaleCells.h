#pragma once

#include <optional>

/** The four cells of the scale selector, side by side across a width. */
namespace ScaleCells
{
inline constexpr int count = 4;

/** The cell under a position; nothing on a border between two, and nothing outside. */
[[nodiscard]] std::optional<int> cellAt (float x, float width) noexcept;

/** The cell of a scale in dB; the last one for a scale that is none of the four. */
[[nodiscard]] int cellOf (float scaleDb) noexcept;

/** The scale of a cell, in dB. */
[[nodiscard]] float scaleOf (int cell) noexcept;
} // namespace ScaleCells
