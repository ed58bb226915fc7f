#include "gui/band/GestureCount.h"

#include <utility>

bool GestureCount::begin (Settings::Parameter kind) noexcept
{
    return counts[static_cast<std::size_t> (kind)]++ == 0;
}

bool GestureCount::end (Settings::Parameter kind) noexcept
{
    auto& count = counts[static_cast<std::size_t> (kind)];
    return count > 0 && --count == 0;
}

bool GestureCount::endAll (Settings::Parameter kind) noexcept
{
    return std::exchange (counts[static_cast<std::size_t> (kind)], 0) > 0;
}

bool GestureCount::isUnderWay (Settings::Parameter kind) const noexcept
{
    return counts[static_cast<std::size_t> (kind)] > 0;
}
