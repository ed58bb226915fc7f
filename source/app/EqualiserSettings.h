#pragma once

#include "app/BandOption.h"
#include "core/model/PluginModel.h"

#include <string>
#include <vector>

/** Everything about the sound that the command line can set. */
struct EqualiserSettings
{
    std::vector<BandOption> bands;
    FilterPhase phase = FilterPhase::linear;
    FilterMode mode = FilterMode::master;
    float gainScalePercent = 100.0f;
    float outputGainDb = 0.0f;

    /** Of the session that they come from; nothing acts on it. */
    bool bypassed = false;

    /** Writes the settings into the parameters, as a host would. Message thread. */
    void applyTo (PluginModel& model) const;

    /** Reads all ten bands and the global settings from the parameters. */
    [[nodiscard]] static EqualiserSettings of (const PluginModel& model);

    [[nodiscard]] bool hasSolo() const noexcept;
};
