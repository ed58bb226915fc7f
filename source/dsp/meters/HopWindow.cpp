#include "dsp/meters/HopWindow.h"

#include <algorithm>

namespace orvik
{
template <typename Fold>
void HopWindow<Fold>::push (const float* values, int count) noexcept
{
    while (count > 0)
    {
        auto run = std::min (count, segmentEnd - position);
        count -= run;

        for (; run > 0 && static_cast<std::size_t> (position - segmentStart) % laneCount != 0; --run)
            push (*values++);

        if (run >= static_cast<int> (laneCount))
        {
            auto sums = lanes;

            for (; run >= static_cast<int> (laneCount); run -= static_cast<int> (laneCount))
            {
                for (std::size_t lane = 0; lane < laneCount; ++lane)
                    sums[lane] = Fold::join (sums[lane], Fold::of (values[lane]));

                values += laneCount;
                position += static_cast<int> (laneCount);
            }

            lanes = sums;

            if (position == segmentEnd)
                finishSegment();
        }

        for (; run > 0; --run)
            push (*values++);
    }
}

template <typename Fold>
void HopWindow<Fold>::finishSegment() noexcept
{
    auto figure = 0.0;

    for (const auto lane : lanes)
        figure = Fold::join (figure, lane);

    if (! std::isfinite (figure))
        figure = 0.0;

    lanes = {};

    const auto next = newest + 1 == hops.size() ? 0 : newest + 1;

    if (segmentStart == 0)
        hops[next].head = figure;
    else
        hops[next].tail = figure;

    segmentStart = segmentEnd;
    segmentEnd = hop;

    if (position == hop)
    {
        newest = next;
        position = 0;
        segmentStart = 0;
        segmentEnd = headLength;
    }
}

template class HopWindow<SumOfPowers>;
template class HopWindow<LargestSample>;
} // namespace orvik
