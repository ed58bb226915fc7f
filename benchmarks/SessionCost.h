#pragma once

/** What a host waits for when it saves or loads a session in which everything is set. */
struct SessionCost
{
    double saveMilliseconds; ///< median
    double loadMilliseconds; ///< median
    int bytes;

    [[nodiscard]] static SessionCost measure();
};
