#pragma once

#include "core/PluginProcessor.h"

#include <string>

/** The gain in dB with which a band acts where it acts fully, after Master's limits and the gain scale; 0 for a
   bypassed one. Of a prepared processor. */
[[nodiscard]] float actingGain (VelmoraAudioProcessor& processor, int band);

/** A band in words as it acts: what Master's limits and the gain scale make of it, and beside it what was asked where
    that is another. Of a prepared processor. */
[[nodiscard]] std::string describeBand (VelmoraAudioProcessor& processor, int band);
