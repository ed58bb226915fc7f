#include "gui/room/ControlOnRow.h"

#include <cmath>

std::optional<int> findControlOnRow (std::span<const ControlOutline> controls, int except, float x, float y) noexcept
{
    const auto isNear = [] (float a, float b)
    {
        constexpr float reach = 5.0f;
        return std::abs (a - b) < reach;
    };

    for (const auto& control : controls)
    {
        if (control.band == except)
            continue;

        const auto found =
            control.collapsed ? isNear (control.left, x) || isNear (control.right, x) : isNear (control.lineRow, y);

        if (found)
            return control.band;
    }

    return std::nullopt;
}
