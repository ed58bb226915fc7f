#include "gui/analysis/RangeMouse.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace
{
/** A new range is as wide as this before the pointer has gone on. */
constexpr double firstWidth = 5.0;

int middleOf (const TrackLoop& range, float pixelsPerSample)
{
    const auto middle = (static_cast<std::int64_t> (range.endSamples) - range.startSamples) / 2 + range.startSamples;
    return static_cast<int> (static_cast<float> (middle) * pixelsPerSample);
}
} // namespace

int RangeMouse::Scale::sampleAt (double x) const noexcept
{
    const auto sample = x / static_cast<double> (pixelsPerSample);

    if (! std::isfinite (sample))
        return 0;

    constexpr auto least = static_cast<double> (std::numeric_limits<int>::min());
    constexpr auto most = static_cast<double> (std::numeric_limits<int>::max());
    return static_cast<int> (std::clamp (sample, least, most));
}

std::optional<std::size_t> RangeMouse::rangeAt (const Ranges& ranges, int sample) noexcept
{
    const auto place = static_cast<std::int64_t> (sample);

    for (std::size_t i = 0; i < ranges.size(); ++i)
        if (ranges[i].startSamples <= place + 1 && ranges[i].endSamples >= place - 1)
            return i;

    return std::nullopt;
}

RangeMouse::Cursor RangeMouse::cursorAt (float x, bool alt, const Scale& scale, const Ranges& ranges) noexcept
{
    if (alt)
        return Cursor::remove;

    return rangeAt (ranges, scale.sampleAt (static_cast<double> (x))).has_value() ? Cursor::move : Cursor::add;
}

bool RangeMouse::press (float x, bool alt, const Scale& scale, Ranges& ranges)
{
    letGo();
    const auto found = rangeAt (ranges, scale.sampleAt (static_cast<double> (x)));

    if (! alt)
    {
        active = found;
        creating = ! found.has_value();
        return false;
    }

    if (found.has_value())
        ranges.erase (ranges.begin() + static_cast<Ranges::difference_type> (*found));
    else
        ranges.clear();

    return true;
}

bool RangeMouse::drag (float pressedX, float x, const Scale& scale, Ranges& ranges)
{
    const auto down = std::round (static_cast<double> (pressedX));
    const auto distance = std::round (static_cast<double> (x - pressedX));

    if (std::abs (distance) <= dragThreshold)
        return false;

    if (creating)
    {
        ranges.push_back ({ scale.sampleAt (down), scale.sampleAt (down + firstWidth), false, TrackLoop::makeId() });
        active = ranges.size() - 1;
        creating = false;
    }

    if (! active.has_value() || *active >= ranges.size())
        return false;

    auto& range = ranges[*active];
    const auto place = down + distance;

    if (place < middleOf (range, scale.pixelsPerSample))
        range.startSamples = std::max (scale.sampleAt (place), 0);
    else
        range.endSamples = std::min (scale.sampleAt (place), scale.numSamples);

    moved = true;
    return true;
}

bool RangeMouse::release (Ranges& ranges)
{
    const auto held = moved ? active : std::nullopt;
    letGo();

    if (! held.has_value() || *held >= ranges.size())
        return false;

    auto& range = ranges[*held];

    if (range.startSamples > range.endSamples)
        std::swap (range.startSamples, range.endSamples);

    if (static_cast<std::int64_t> (range.endSamples) - range.startSamples < shortestRange)
        ranges.erase (ranges.begin() + static_cast<Ranges::difference_type> (*held));

    return true;
}
