#pragma once

#include <gmock/gmock.h>

#include <cmath>
#include <cstddef>

/** Channels of samples, each within a tolerance. Names the first bad sample; a NaN is one. */
MATCHER_P2 (IsSignalNear, expected, tolerance, "")
{
    if (arg.size() != expected.size())
    {
        *result_listener << arg.size() << " channels instead of " << expected.size();
        return false;
    }

    for (std::size_t channel = 0; channel < expected.size(); ++channel)
    {
        if (arg[channel].size() != expected[channel].size())
        {
            *result_listener << arg[channel].size() << " samples instead of " << expected[channel].size();
            return false;
        }

        for (std::size_t index = 0; index < expected[channel].size(); ++index)
        {
            if (! (std::abs (arg[channel][index] - expected[channel][index]) <= tolerance))
            {
                *result_listener << "channel " << channel << ", sample " << index << ": " << arg[channel][index]
                                 << " instead of " << expected[channel][index];
                return false;
            }
        }
    }

    return true;
}
