#include "core/references/TrackOutline.h"

#include "core/references/TrackLevels.h"

#include <algorithm>

namespace
{
using TrackOutline::middleY;
constexpr int rowStep = TrackOutline::columnStep;
constexpr int lastRow = TrackOutline::rowCount;

/** Rows that a level of 1 would reach: half of 40. */
constexpr float rowsOfOne = 40.0f * 0.5f;

struct Colours
{
    std::uint32_t bright;
    std::uint32_t dark;
};

constexpr Colours plainColours { 0xff009eff, 0xff4d4d4d };
constexpr Colours activeColours { 0xffffffff, 0xffc8c8c8 };
constexpr Colours inactiveColours { 0xff14d222, 0xff646464 };

const TrackLoop* loopOver (int x, float pixelsPerSample, std::span<const TrackLoop> loops)
{
    const auto position = static_cast<float> (x);
    const TrackLoop* found = nullptr;

    for (const auto& loop : loops)
        if (position >= static_cast<float> (loop.startSamples) * pixelsPerSample
            && position <= static_cast<float> (loop.endSamples) * pixelsPerSample)
            found = &loop;

    return found;
}

/** The largest level of a column. The very last level belongs to none, unless there is no other. */
float peakOf (std::span<const float> levels, int column, float step)
{
    const auto last = static_cast<int> (levels.size()) - 1;
    const auto first = std::min (static_cast<int> (static_cast<float> (column) * step), last);
    const auto end = std::min (static_cast<int> (static_cast<float> (column + 1) * step), last);
    auto peak = levels[static_cast<std::size_t> (first)];

    for (auto index = first; index < end; ++index)
        peak = std::max (peak, levels[static_cast<std::size_t> (index)]);

    return peak;
}

void addColumn (std::vector<OutlinePoint>& points, int x, float peak, const Colours& colours)
{
    points.push_back ({ x, middleY, colours.bright });

    for (int row = 1; row <= lastRow; ++row)
    {
        const auto colour = peak * rowsOfOne > static_cast<float> (row) ? colours.bright : colours.dark;
        points.push_back ({ x, middleY - rowStep * row, colour });
        points.push_back ({ x, middleY + rowStep * row, colour });
    }
}
} // namespace

std::vector<OutlinePoint> TrackOutline::build (std::span<const float> levels,
                                               int columns,
                                               float pixelsPerSample,
                                               std::span<const TrackLoop> loops)
{
    std::vector<OutlinePoint> points;

    if (levels.empty() || columns <= 0)
        return points;

    points.reserve (static_cast<std::size_t> (columns) * (2 * lastRow + 1));
    const auto used = std::min (static_cast<int> (levels.size()), TrackLevels::usualCount);
    const auto step = static_cast<float> (used) / static_cast<float> (columns);

    for (int column = 0; column < columns; ++column)
    {
        const auto x = column * columnStep;
        const auto peak = peakOf (levels, column, step);
        const auto* loop = loopOver (x, pixelsPerSample, loops);

        if (loop == nullptr && peak == 0.0f)
            continue;

        addColumn (points, x, peak, loop == nullptr ? plainColours : loop->active ? activeColours : inactiveColours);
    }

    return points;
}
