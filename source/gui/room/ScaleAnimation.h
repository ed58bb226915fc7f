#pragma once

/** The way of the drawn scale to the chosen one: at each tick 40 % of what is left, and a last step to the end itself.
 */
namespace ScaleAnimation
{
/** The scale to draw next, in dB. Equal to `targetDb` once less than 0.1 dB would be left. */
[[nodiscard]] float nextScale (float drawnDb, float targetDb) noexcept;
} // namespace ScaleAnimation
