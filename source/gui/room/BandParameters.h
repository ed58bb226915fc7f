#pragma once

#include "core/model/PluginModel.h"

/** What hanging a band into the room, and taking it away, does to its parameters. Message thread. */
namespace BandParameters
{
/** Puts a band to use at a frequency. Everything else stays as it is. */
void hang (PluginModel& model, int band, float frequencyHz);

/** Sets everything back to how a band is that was never in use. */
void reset (PluginModel& model, int band);
} // namespace BandParameters
