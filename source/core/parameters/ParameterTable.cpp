#include "core/parameters/ParameterTable.h"

#include "core/parameters/FiniteParameter.h"

#include <array>

namespace
{
struct BandRow
{
    Settings::Parameter kind;
    const char* prefix;
    const char* suffix;
    const char* label;
    float minimum, maximum, step, skew, defaultValue;
    bool automatable;
    ParameterText text;
};

using Kind = Settings::Parameter;

// In the order in which a band's parameters are created; hosts number them by it. The label "dB" of the frequencies is
// never shown, since their text comes from the hertz form, and hosts know the parameters with it.
constexpr std::array bandRows {
    BandRow { Kind::active, "band_active_", " Active", "", 0, 1, 1, 1, 0, false, ParameterText::onOff },
    BandRow { Kind::frequency,
              "band_frequency_",
              " Frequency",
              "dB",
              320,
              20000,
              10,
              0.3f,
              320,
              true,
              ParameterText::hertz },
    BandRow { Kind::gain, "band_gain_", " Gain", "dB", -12, 12, 0.1f, 1, 0, true, ParameterText::decibel },
    BandRow { Kind::q, "band_Q_", " Q", "", 0.5f, 5, 0.1f, 1, 1, true, ParameterText::q },
    BandRow { Kind::solo, "band_solo_", " Solo", "", 0, 1, 1, 1, 0, false, ParameterText::onOff },
    BandRow { Kind::bypass, "band_bypass_", " Bypass", "", 0, 1, 1, 1, 0, false, ParameterText::onOff },
    BandRow { Kind::highShelf, "band_highshelf_", " High Shelf", "", 0, 1, 1, 1, 0, false, ParameterText::onOff },
    BandRow { Kind::midSide, "band_midside_", " Mid/Side", "", 0, 1, 0.01f, 1, 0.5f, true, ParameterText::midSide },
};

std::vector<ParameterRow> makeRows()
{
    std::vector<ParameterRow> rows;
    rows.reserve (86);

    const auto addSwitch = [&rows] (const char* id, const char* name, float defaultValue) {
        rows.push_back ({ id, name, {}, 0, 1, 1, 1, defaultValue, true, true, true, ParameterText::framework });
    };

    addSwitch (ParameterIds::bypass, "ZVQ Bypass", 0);
    addSwitch (ParameterIds::phase, "Linear/Minimum Phase", 1);
    addSwitch (ParameterIds::mode, "Mix/Master Mode", 0);
    rows.push_back ({ ParameterIds::currentPreset, "Current Preset", {}, 0, 131, 1, 1, 131, false, false, false });
    rows.push_back ({ ParameterIds::outputGain,
                      "Output Gain",
                      "dB",
                      -12,
                      12,
                      0.01f,
                      1,
                      0,
                      true,
                      false,
                      false,
                      ParameterText::decibel });

    for (int band = 0; band < bandCount; ++band)
        for (const auto& row : bandRows)
            rows.push_back ({ row.prefix + juce::String (band),
                              "Band " + juce::String (band + 1) + row.suffix,
                              row.label,
                              row.minimum,
                              row.maximum,
                              row.step,
                              row.skew,
                              row.defaultValue,
                              row.automatable,
                              false,
                              false,
                              row.text });

    rows.push_back (
        { ParameterIds::gainScale, "Gain Scale", "%", 0, 200, 1, 1, 100, true, false, false, ParameterText::percent });
    return rows;
}

// Sums stay in single precision: 0.05 is stored as 0.0499999970 and reads 9 percent, as it always has.
juce::String midSideText (float value)
{
    if (value == 0.5f)
        return "STEREO";

    if (value == 0.0f)
        return "FULL MID";

    if (value == 1.0f)
        return "FULL SIDE";

    if (value < 0.5f)
        return "100% MID " + juce::String (static_cast<int> ((value + value) * 100.0f)) + "% SIDE";

    const auto rest = 1.0f - value;
    return "100% SIDE " + juce::String (static_cast<int> ((rest + rest) * 100.0f)) + "% MID";
}
} // namespace

juce::String ParameterIds::ofBand (int band, Settings::Parameter kind)
{
    if (band < 0 || band >= bandCount)
        return {};

    for (const auto& row : bandRows)
        if (row.kind == kind)
            return row.prefix + juce::String (band);

    return {};
}

const std::vector<ParameterRow>& ParameterTable::rows()
{
    static const auto table = makeRows();
    return table;
}

juce::String ParameterTable::textOf (ParameterText form, float value)
{
    switch (form)
    {
        case ParameterText::decibel:
            return juce::String (value, 1) + "dB";
        case ParameterText::hertz:
            return juce::String (value, 1) + "Hz";
        case ParameterText::q:
            return juce::String (value, 1) + "Q";
        case ParameterText::percent:
            return juce::String (value, 1) + "%";
        case ParameterText::onOff:
            return value == 1.0f ? "On" : "Off";
        case ParameterText::midSide:
            return midSideText (value);
        case ParameterText::framework:
            break;
    }

    return {};
}

void ParameterTable::addAll (juce::AudioProcessorValueTreeState& tree)
{
    for (const auto& row : rows())
    {
        auto attributes = juce::AudioProcessorValueTreeStateParameterAttributes()
                              .withLabel (row.label)
                              .withCategory (juce::AudioProcessorParameter::genericParameter)
                              .withMeta (false)
                              .withAutomatable (row.automatable)
                              .withDiscrete (row.discrete)
                              .withBoolean (row.boolean);

        // An empty function would be called, and throw, as soon as a host asks for the text.
        if (row.text != ParameterText::framework)
            attributes = attributes.withStringFromValueFunction ([form = row.text] (float value, int)
                                                                 { return ParameterTable::textOf (form, value); });

        tree.createAndAddParameter (std::make_unique<FiniteParameter> (
            juce::ParameterID { row.id, 1 },
            row.name,
            juce::NormalisableRange<float> (row.minimum, row.maximum, row.step, row.skew),
            row.defaultValue,
            attributes));
    }
}
