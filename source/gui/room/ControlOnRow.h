#pragma once

#include <optional>
#include <span>

/** A band as the search for it under the mouse sees it, in pixels of the room. */
struct ControlOutline
{
    int band = 0;

    /** The row of its frequency line. */
    float lineRow = 0.0f;

    /** Beyond the scale it is no more than a dot at its left and one at its right edge. */
    bool collapsed = false;
    float left = 0.0f;
    float right = 0.0f;
};

/** The first band other than `except` whose frequency line, or whose dots, are within 4 pixels of a point, so that one
    that hangs behind another can be reached. */
[[nodiscard]] std::optional<int>
findControlOnRow (std::span<const ControlOutline> controls, int except, float x, float y) noexcept;
