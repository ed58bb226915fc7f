#include "gui/room/TargetTransition.h"

#include <algorithm>
#include <cmath>
#include <numbers>

TargetTransition::TargetTransition (int frameCount, int pulseFrameCount)
    : frames (frameCount), pulseFrames (pulseFrameCount), frame (frameCount)
{
}

void TargetTransition::restart (std::span<const double> rows)
{
    to.assign (rows.begin(), rows.end());
    from = to;
    frame = frames;
}

bool TargetTransition::advance (std::span<const double> rows)
{
    if (rows.size() != to.size())
    {
        restart (rows);
        return true;
    }

    if (frame == frames)
    {
        if (std::ranges::equal (rows, to))
            return false;

        from = to;
        to.assign (rows.begin(), rows.end());
        frame = 0;
    }

    ++frame;
    return true;
}

double TargetTransition::value (std::size_t index) const noexcept
{
    if (frame == frames)
        return to[index];

    return from[index] + (to[index] - from[index]) * frame / frames;
}

void TargetTransition::advancePulse()
{
    if (++pulseFrame < pulseFrames)
        return;

    pulseFrame = 0;
    std::ranges::fill (to, 0.0);
    frame = frames;
}

float TargetTransition::pulseAlpha() const noexcept
{
    return static_cast<float> (std::abs (std::sin (2.0 * std::numbers::pi * pulseFrame / pulseFrames)));
}
