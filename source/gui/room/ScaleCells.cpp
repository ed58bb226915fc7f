#include "gui/room/ScaleCells.h"

#include "gui/room/AutomaticScale.h"

#include <algorithm>
#include <cmath>

static_assert (ScaleCells::count == AutomaticScale::choices.size());

std::optional<int> ScaleCells::cellAt (float x, float width) noexcept
{
    const auto position = x * count / width;
    const auto cell = std::floor (position);

    if (! (position > 0.0f && position < count) || position == cell)
        return std::nullopt;

    return static_cast<int> (cell);
}

int ScaleCells::cellOf (float scaleDb) noexcept
{
    const auto* found = std::ranges::find (AutomaticScale::choices, scaleDb);
    return std::min (static_cast<int> (found - AutomaticScale::choices.begin()), count - 1);
}

float ScaleCells::scaleOf (int cell) noexcept
{
    return AutomaticScale::choices[static_cast<std::size_t> (cell)];
}
