#pragma once

#include "hosts/HostedPlugin.h"

/** Makes one instance of the finished plug-in by the format's own interface, and ends it, both on the calling thread,
    whichever that is. A library that gives no instance throws std::runtime_error. */
void comeAndGo (PluginFormat format);
