#pragma once

#include <string>

/** What one more instance of a plug-in costs its host: a library with the classic 2.4 interface, prepared at 48 kHz. */
struct InstanceCost
{
    double creationMilliseconds; ///< from the entry function to the first block, median
    double megabytes;            ///< resident memory, mean over the instances

    [[nodiscard]] static InstanceCost measure (const std::string& library);
};
