#pragma once

#include "hosts/HostedPlugin.h"

#include <string>
#include <vector>

/** Sessions with reference tracks, as a host of VST3 plug-ins keeps them. */
namespace TrackSession
{

/** The state of a plug-in in which nothing but these elements of tracks stands, in the form of the host's format. */
[[nodiscard]] std::vector<char> stateOf (const std::vector<std::string>& trackElements);

/** The elements of tracks in a state, each as text. */
[[nodiscard]] std::vector<std::string> tracksIn (const std::vector<char>& state);

/** Gives a plug-in these states one after the other, lets it load their tracks, and returns what it would save; empty
    if it does not come to an end. The plug-in is prepared. */
[[nodiscard]] std::vector<char> stateOnceLoaded (HostedPlugin& plugin, const std::vector<std::vector<char>>& states);

/** The order in which a host prepares and restores. */
enum class Order
{
    prepareFirst,
    restoreFirst
};

/** Starts another process, which restores a state so many times and saves again what it has; empty if that failed. */
[[nodiscard]] std::vector<char> throughAnotherProcess (const std::vector<char>& state, Order order, int times);

/** Whether the program's arguments ask for the other process's part, and that part: returns an exit code. */
[[nodiscard]] bool isAskedFor (int argumentCount, char** arguments);
[[nodiscard]] int run (char** arguments);
} // namespace TrackSession
