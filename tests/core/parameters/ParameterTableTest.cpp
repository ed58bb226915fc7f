#include "core/parameters/ParameterTable.h"

#include "core/PluginProcessor.h"

#include <gtest/gtest.h>

namespace
{
using Kind = Settings::Parameter;

// Written out on purpose: sessions and automation of users hang on every one of these.
constexpr auto globalsBeforeBands = R"(paramBypassZVQ|ZVQ Bypass||0|1|1|1|0|1|1|1
paramPhase|Linear/Minimum Phase||0|1|1|1|1|1|1|1
paramMode|Mix/Master Mode||0|1|1|1|0|1|1|1
paramCurrentZVQPreset|Current Preset||0|131|1|1|131|0|0|0
paramOutputGainDb|Output Gain|dB|-12|12|0.01|1|0|1|0|0
)";

constexpr auto firstBand = R"(band_active_0|Band 1 Active||0|1|1|1|0|0|0|0
band_frequency_0|Band 1 Frequency|dB|320|20000|10|0.3|320|1|0|0
band_gain_0|Band 1 Gain|dB|-12|12|0.1|1|0|1|0|0
band_Q_0|Band 1 Q||0.5|5|0.1|1|1|1|0|0
band_solo_0|Band 1 Solo||0|1|1|1|0|0|0|0
band_bypass_0|Band 1 Bypass||0|1|1|1|0|0|0|0
band_highshelf_0|Band 1 High Shelf||0|1|1|1|0|0|0|0
band_midside_0|Band 1 Mid/Side||0|1|0.01|1|0.5|1|0|0
)";

constexpr auto globalsAfterBands = "paramGainScale|Gain Scale|%|0|200|1|1|100|1|0|0\n";

juce::String expectedListing()
{
    juce::String listing (globalsBeforeBands);

    for (int band = 0; band < bandCount; ++band)
        listing += juce::String (firstBand)
                       .replace ("_0|", "_" + juce::String (band) + "|")
                       .replace ("Band 1 ", "Band " + juce::String (band + 1) + " ");

    return listing + globalsAfterBands;
}

juce::String describe (const juce::RangedAudioParameter& parameter)
{
    const auto& range = parameter.getNormalisableRange();
    const auto number = [] (float value) { return juce::String (std::round (value * 1000.0) / 1000.0); };

    return juce::StringArray { parameter.paramID,
                               parameter.getName (100),
                               parameter.getLabel(),
                               number (range.start),
                               number (range.end),
                               number (range.interval),
                               number (range.skew),
                               number (parameter.convertFrom0to1 (parameter.getDefaultValue())),
                               juce::String (int (parameter.isAutomatable())),
                               juce::String (int (parameter.isDiscrete())),
                               juce::String (int (parameter.isBoolean())) }
        .joinIntoString ("|");
}

juce::String textOf (VelmoraAudioProcessor& processor, const juce::String& id, float plain)
{
    auto* parameter = processor.getAPVTS().getParameter (id);
    return parameter->getText (parameter->convertTo0to1 (plain), 100);
}

TEST (ParameterTableTest, listsEveryParameterInItsOrder)
{
    VelmoraAudioProcessor processor;
    juce::String listing;

    for (auto* parameter : processor.getParameters())
        listing += describe (dynamic_cast<juce::RangedAudioParameter&> (*parameter)) + "\n";

    EXPECT_EQ (processor.getParameters().size(), 86);
    EXPECT_EQ (listing.toStdString(), expectedListing().toStdString());
}

TEST (ParameterTableTest, noParameterIsMetaAndAllAreGeneric)
{
    VelmoraAudioProcessor processor;

    for (auto* parameter : processor.getParameters())
    {
        EXPECT_FALSE (parameter->isMetaParameter());
        EXPECT_EQ (parameter->getCategory(), juce::AudioProcessorParameter::genericParameter);
    }
}

TEST (ParameterTableTest, theTreeHasItsTypeAndTheScaleHasNoParameter)
{
    VelmoraAudioProcessor processor;
    EXPECT_EQ (processor.getAPVTS().state.getType().toString(), "ZVQ_Processor");
    EXPECT_EQ (processor.getAPVTS().getParameter (ParameterIds::dbScale), nullptr);
}

TEST (ParameterTableTest, textsReadAsTheirForms)
{
    VelmoraAudioProcessor processor;
    EXPECT_EQ (textOf (processor, "band_gain_3", -3.5f), "-3.5dB");
    EXPECT_EQ (textOf (processor, "paramOutputGainDb", 0.3f), "0.3dB");
    EXPECT_EQ (textOf (processor, "band_frequency_0", 2500.0f), "2500.0Hz");
    EXPECT_EQ (textOf (processor, "band_Q_9", 1.4f), "1.4Q");
    EXPECT_EQ (textOf (processor, "paramGainScale", 150.0f), "150.0%");
    EXPECT_EQ (textOf (processor, "band_solo_1", 1.0f), "On");
    EXPECT_EQ (textOf (processor, "band_solo_1", 0.0f), "Off");
    EXPECT_EQ (textOf (processor, "paramPhase", 1.0f), "1");
    EXPECT_EQ (textOf (processor, "paramCurrentZVQPreset", 131.0f), "131");
}

TEST (ParameterTableTest, midSideReadsAsAnAmountOfTheOtherSideCutToWholePercent)
{
    const auto text = [] (float value) { return ParameterTable::textOf (ParameterText::midSide, value); };
    EXPECT_EQ (text (0.5f), "STEREO");
    EXPECT_EQ (text (0.0f), "FULL MID");
    EXPECT_EQ (text (1.0f), "FULL SIDE");
    EXPECT_EQ (text (0.25f), "100% MID 50% SIDE");
    EXPECT_EQ (text (0.75f), "100% SIDE 50% MID");

    // As the tree stores it, 0.05 lies below itself.
    VelmoraAudioProcessor processor;
    EXPECT_EQ (textOf (processor, "band_midside_0", 0.05f), "100% MID 9% SIDE");
    EXPECT_EQ (textOf (processor, "band_midside_0", 0.93f), "100% SIDE 13% MID");
}

TEST (ParameterTableTest, idsOfBandsThatDoNotExistAreEmpty)
{
    EXPECT_EQ (ParameterIds::ofBand (9, Kind::midSide), "band_midside_9");
    EXPECT_TRUE (ParameterIds::ofBand (10, Kind::gain).isEmpty());
    EXPECT_TRUE (ParameterIds::ofBand (-1, Kind::gain).isEmpty());
    EXPECT_TRUE (ParameterIds::ofBand (0, static_cast<Kind> (8)).isEmpty());
}

TEST (ParameterTableTest, valuesSnapToTheirSteps)
{
    VelmoraAudioProcessor processor;
    processor.model.setParameterValue ("band_frequency_2", 1234.0f);
    EXPECT_EQ (processor.model.getBandValue (2, Kind::frequency), 1230.0f);

    for (int preset = 0; preset <= 131; ++preset)
    {
        processor.model.setParameterValue ("paramCurrentZVQPreset", static_cast<float> (preset));
        EXPECT_EQ (processor.model.presetNumber(), static_cast<float> (preset));
    }
}
} // namespace
