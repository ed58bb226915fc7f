#pragma once

#include "hosts/HostedPlugin.h"
#include "support/PluginRig.h"

#include <functional>

/** Drives a hosted plug-in as PluginRig drives a processor. */
namespace hostRun
{
using Signal = PluginRig::Signal;

/** Sends a signal through in blocks of the sizes that `nextSize` gives. */
[[nodiscard]] Signal run (HostedPlugin& plugin, const Signal& input, const std::function<int()>& nextSize);
[[nodiscard]] Signal run (HostedPlugin& plugin, const Signal& input, int blockSize);

/** Runs silence until every tap set of an offline update has been handed over and every filter has run empty. */
void settle (HostedPlugin& plugin, int channelCount, int blockSize);

/** Sends a signal through again and again, until the plug-in's workers have designed what it gives for `expected`.
    Returns how far the last turn is from it: 0, or what is left after a minute. */
[[nodiscard]] float
differenceOnceDesigned (HostedPlugin& plugin, const Signal& input, const Signal& expected, int blockSize);

/** Whether two plug-ins come to give the same for a signal, and more than the signal `delay` samples later, once their
    workers are done. */
[[nodiscard]] bool
soundTheSameOnceDesigned (HostedPlugin& first, HostedPlugin& second, const Signal& input, int delay, int blockSize);

/** Asks again and again until the answer is yes, for a minute at most; what it asks may be slow. */
[[nodiscard]] bool comesTrue (const std::function<bool()>& condition);

/** How far a signal is from another one, `delay` samples later: the largest difference. */
[[nodiscard]] float differenceFromDelayed (const Signal& output, const Signal& input, int delay);
} // namespace hostRun
