#pragma once

#include "core/parameters/Settings.h"

#include <array>

/** Pairs the begins and ends of gestures, so that a host hears one begin, then one end for each kind of parameter,
    whatever the mouse did in between. */
class GestureCount
{
public:
    /** True if the host must hear of it: no gesture of this kind was under way. */
    [[nodiscard]] bool begin (Settings::Parameter kind) noexcept;

    /** True if the host must hear of it: this was the last gesture of its kind. Without one nothing happens. */
    [[nodiscard]] bool end (Settings::Parameter kind) noexcept;

    /** The band goes away: true if a gesture of this kind was under way, and forgets it. */
    [[nodiscard]] bool endAll (Settings::Parameter kind) noexcept;

    [[nodiscard]] bool isUnderWay (Settings::Parameter kind) const noexcept;

private:
    std::array<int, Settings::bandParameterKindCount> counts {};
};
