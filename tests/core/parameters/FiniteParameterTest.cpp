#include "core/parameters/FiniteParameter.h"

#include "support/SessionRig.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
using Kind = Settings::Parameter;

constexpr std::array notFinite { std::numeric_limits<float>::quiet_NaN(),
                                 std::numeric_limits<float>::infinity(),
                                 -std::numeric_limits<float>::infinity() };

class FiniteParameterTest : public testing::Test
{
protected:
    juce::RangedAudioParameter& parameter (const juce::String& id) { return *processor.getAPVTS().getParameter (id); }

    /** As a wrapper hands over what its host has sent. */
    void sendFromHost (const juce::String& id, float normalised)
    {
        parameter (id).setValue (normalised);
        parameter (id).sendValueChangedMessageToListeners (normalised);
    }

    void expectDefaults()
    {
        for (const auto& row : ParameterTable::rows())
        {
            EXPECT_EQ (processor.getAPVTS().getRawParameterValue (row.id)->load(), row.defaultValue) << row.id;
            EXPECT_EQ (parameter (row.id).getValue(), parameter (row.id).getDefaultValue()) << row.id;
        }
    }

    static bool holdsNoSuchWord (const std::string& text)
    {
        return text.find ("\"nan") == std::string::npos && text.find ("inf\"") == std::string::npos
               && text.find ("\"-nan") == std::string::npos;
    }

    PluginRig rig;
    VelmoraAudioProcessor& processor = rig.processor;
};

TEST_F (FiniteParameterTest, aHostsValueThatIsNotFiniteIsTheDefault)
{
    rig.prepare (48000.0, 64);

    for (const auto value : notFinite)
    {
        for (const auto& row : ParameterTable::rows())
        {
            sendFromHost (row.id, row.defaultValue == row.minimum ? 1.0f : 0.0f);
            EXPECT_NE (processor.getAPVTS().getRawParameterValue (row.id)->load(), row.defaultValue) << row.id;
            sendFromHost (row.id, value);
        }

        expectDefaults();
        EXPECT_EQ (processor.presets.currentPreset().id, Presets::balancedMasterId);
        const auto text = unwrapText (sessions::save (processor));
        EXPECT_TRUE (holdsNoSuchWord (text));
    }

    for (const auto& channel : rig.run (signals::noise (2, 1024, 1), 64))
        for (const auto sample : channel)
            ASSERT_TRUE (std::isfinite (sample));
}

TEST_F (FiniteParameterTest, aPlainValueThatIsNotFiniteIsTheDefault)
{
    for (const auto value : notFinite)
        for (const auto& row : ParameterTable::rows())
        {
            rig.set (row.id, row.defaultValue == row.minimum ? row.maximum : row.minimum);
            rig.set (row.id, value);
        }

    expectDefaults();
}

TEST_F (FiniteParameterTest, inASessionAndItsStoresItIsTheDefaultBeforeItIsKept)
{
    for (const std::string value : { "nan", "inf", "-inf", "1e999" })
    {
        std::string parameters;

        for (const auto& row : ParameterTable::rows())
        {
            rig.set (row.id, row.defaultValue == row.minimum ? row.maximum : row.minimum);
            parameters += "<PARAM id=\"" + row.id.toStdString() + "\" value=\"" + value + "\"/>";
        }

        const auto tree = "<ZVQ_Processor>" + parameters + "</ZVQ_Processor>";
        sessions::loadText (processor,
                            "<ZVQ_Processor>" + parameters + "<parameterStoreA>" + tree
                                + "</parameterStoreA><parameterStoreB>" + tree + "</parameterStoreB></ZVQ_Processor>");
        expectDefaults();
        EXPECT_TRUE (holdsNoSuchWord (unwrapText (sessions::save (processor)))) << value;

        for (const auto toB : { true, false })
        {
            rig.set (0, Kind::gain, 3.0f);
            rig.set (ParameterIds::currentPreset, 7.0f);
            processor.sessionState().compareSwitch (toB);

            if (toB)
                expectDefaults();

            EXPECT_TRUE (holdsNoSuchWord (unwrapText (sessions::save (processor)))) << value;
        }

        EXPECT_EQ (processor.model.getBandValue (0, Kind::gain), 3.0f) << "A keeps what was set there";
    }
}

TEST_F (FiniteParameterTest, answersAsTheFrameworksParameterDoes)
{
    for (const auto& row : ParameterTable::rows())
    {
        const juce::NormalisableRange<float> range (row.minimum, row.maximum, row.step, row.skew);
        juce::AudioProcessorValueTreeState::Parameter plain (juce::ParameterID { row.id, 1 },
                                                             row.name,
                                                             range,
                                                             row.defaultValue,
                                                             FiniteParameter::Attributes()
                                                                 .withLabel (row.label)
                                                                 .withAutomatable (row.automatable)
                                                                 .withDiscrete (row.discrete)
                                                                 .withBoolean (row.boolean));
        juce::AudioProcessorParameter& expected = plain;
        auto& actual = parameter (row.id);

        for (const auto value : { 0.0f, 0.37f, 1.0f, 1.5f, -1.0f, 1.0e30f })
        {
            expected.setValue (value);
            actual.setValue (value);
            EXPECT_EQ (actual.getValue(), expected.getValue()) << row.id;
        }

        EXPECT_EQ (actual.getDefaultValue(), expected.getDefaultValue()) << row.id;
        EXPECT_EQ (actual.getNumSteps(), expected.getNumSteps()) << row.id;
        EXPECT_EQ (actual.isDiscrete(), expected.isDiscrete()) << row.id;
        EXPECT_EQ (actual.isBoolean(), expected.isBoolean()) << row.id;
        EXPECT_EQ (actual.isAutomatable(), expected.isAutomatable()) << row.id;
        EXPECT_EQ (actual.isMetaParameter(), expected.isMetaParameter()) << row.id;
        EXPECT_EQ (actual.getLabel(), expected.getLabel()) << row.id;
        EXPECT_EQ (actual.getName (99), expected.getName (99)) << row.id;
        EXPECT_EQ (actual.getVersionHint(), expected.getVersionHint()) << row.id;
        EXPECT_EQ (actual.getValueForText ("0.5"), expected.getValueForText ("0.5")) << row.id;

        if (row.text == ParameterText::framework)
        {
            EXPECT_EQ (actual.getText (0.37f, 99), expected.getText (0.37f, 99)) << row.id;
        }
    }
}
} // namespace
