#pragma once

#include <functional>
#include <string>
#include <vector>

/** The same arithmetic twice: in vectors and in plain scalar loops. */
struct KernelContest
{
    std::string name;
    double framesPerTurn;
    std::function<void()> ours;
    std::function<void()> plain;
};

/** The filters and the rate converter, and the whole path of them, at 48 and 192 kHz. */
[[nodiscard]] std::vector<KernelContest> kernelContests();
