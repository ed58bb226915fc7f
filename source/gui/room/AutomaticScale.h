#pragma once

#include <array>
#include <span>

/** Chooses the decibel scale of the room. */
namespace AutomaticScale
{
/** The scales that can be chosen by hand, in dB. */
inline constexpr std::array choices { 2.0f, 4.0f, 8.0f, 12.0f };

/** How close a band may come to the front plane or the back wall before the scale grows, in dB. */
inline constexpr float marginDb = 0.1f;

struct Band
{
    float gainDb = 0.0f;

    /** A gain that was typed and not yet taken; 0 where there is none. */
    float typedDb = 0.0f;
};

/** The first choice above what every band needs, which is its gain and a margin, or the gain typed for it; the need
    itself where no choice is large enough. */
[[nodiscard]] float scaleFor (std::span<const Band> bands) noexcept;

/** True when a gain has come so close to the end of the scale that a larger one is wanted. */
[[nodiscard]] bool isOutgrown (float scaleDb, float gainDb) noexcept;
} // namespace AutomaticScale
