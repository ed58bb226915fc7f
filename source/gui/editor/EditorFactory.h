#pragma once

#include "core/PluginProcessor.h"

/** Makes the editor of an instance. Message thread; the framework owns the result. */
[[nodiscard]] juce::AudioProcessorEditor* makeEditor (VelmoraAudioProcessor& processor);
