#pragma once

#include "core/parameters/Settings.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <span>
#include <vector>

/** Ids of the global parameters, each written once. */
namespace ParameterIds
{
inline constexpr auto bypass = "paramBypassZVQ";
inline constexpr auto phase = "paramPhase";
inline constexpr auto mode = "paramMode";
inline constexpr auto currentPreset = "paramCurrentZVQPreset";
inline constexpr auto outputGain = "paramOutputGainDb";
inline constexpr auto gainScale = "paramGainScale";

/** Named, but no parameter bears it: the room's decibel scale is session state. */
inline constexpr auto dbScale = "paramDBScale";

/** Id of a band's parameter; empty for a kind or a band that does not exist. */
[[nodiscard]] juce::String ofBand (int band, Settings::Parameter kind);
} // namespace ParameterIds

/** How a parameter's value reads. `framework` leaves the text to the framework. */
enum class ParameterText
{
    framework,
    decibel,
    hertz,
    q,
    percent,
    onOff,
    midSide
};

/** One parameter as a host sees it. */
struct ParameterRow
{
    juce::String id;
    juce::String name;
    juce::String label;
    float minimum = 0.0f;
    float maximum = 1.0f;
    float step = 1.0f;
    float skew = 1.0f;
    float defaultValue = 0.0f;
    bool automatable = true;
    bool discrete = false;
    bool boolean = false;
    ParameterText text = ParameterText::framework;
};

/** The one table from which the parameter tree, the command line and the tests are made. */
namespace ParameterTable
{
/** All 86 parameters in the order in which they are created. */
[[nodiscard]] const std::vector<ParameterRow>& rows();

/** The text of a value in one of the table's forms; not for ParameterText::framework. */
[[nodiscard]] juce::String textOf (ParameterText form, float value);

/** Adds every row to the tree. The tree's state is assigned by the caller afterwards. */
void addAll (juce::AudioProcessorValueTreeState& tree);
} // namespace ParameterTable
