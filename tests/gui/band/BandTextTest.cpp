#include "gui/band/BandText.h"
#include "gui/band/TypedGain.h"

#include "gui/room/RoomCases.h"

#include <gtest/gtest.h>

TEST (BandTextTest, showsASignBeforeABoost)
{
    EXPECT_EQ (BandText::ofGain (3.0f), "+3.0dB");
    EXPECT_EQ (BandText::ofGain (-2.5f), "-2.5dB");
    EXPECT_EQ (BandText::ofGain (0.0f), "0.0dB");
    EXPECT_EQ (BandText::ofGain (-0.04f), "0.0dB");
    EXPECT_EQ (BandText::ofGain (-10.0f), "-10.0dB");
    EXPECT_EQ (BandText::ofFrequency (3910), "3910Hz");
    EXPECT_EQ (BandText::ofQ (1.0f), "1.0Q");
}

TEST (BandTextTest, readsWhatHandsType)
{
    EXPECT_DOUBLE_EQ (BandText::toNumber ("+5.5dB"), 5.5);
    EXPECT_DOUBLE_EQ (BandText::toNumber ("  -3,5 dB"), -3.5);
    EXPECT_DOUBLE_EQ (BandText::toNumber (juce::String::fromUTF8 ("\xe2\x88\x92"
                                                                  "2")),
                      -2.0);
    EXPECT_DOUBLE_EQ (BandText::toNumber ("2.5k"), 2500.0);
    EXPECT_DOUBLE_EQ (BandText::toNumber ("2,5 kHz"), 2500.0);
    EXPECT_DOUBLE_EQ (BandText::toNumber ("12KHZ"), 12000.0);
    EXPECT_DOUBLE_EQ (BandText::toNumber ("3910Hz"), 3910.0);
    EXPECT_DOUBLE_EQ (BandText::toNumber ("1.2Q"), 1.2);
    EXPECT_DOUBLE_EQ (BandText::toNumber (".5"), 0.5);
}

TEST (BandTextTest, takesWhatIsNoNumberForZero)
{
    for (const auto* text : { "", "loud", "inf", "nan", "-", "k", "dB 3" })
        EXPECT_DOUBLE_EQ (BandText::toNumber (text), 0.0) << text;

    EXPECT_DOUBLE_EQ (BandText::toNumber (juce::String::repeatedString ("9", 400)), 0.0);
}

TEST (TypedGainTest, matchesTheComputedFigures)
{
    const auto& item = roomCases::byId ("type-gain-1");
    const auto& inputs = item["inputs"];
    const auto typed = typedGain (BandText::toNumber (inputs["text"].get<std::string>()),
                                  { FilterMode::mix, 100.0f, inputs["scaleDb"] });
    EXPECT_FLOAT_EQ (typed.gainDb, item["expected"][0].get<float>());
    EXPECT_EQ (typed.widensScale, ! item["expected"][1].is_null());
}

TEST (TypedGainTest, opensTheScaleThatItNeeds)
{
    const GainLimits small { FilterMode::mix, 100.0f, 4.0f };
    EXPECT_FALSE (typedGain (4.0, small).widensScale);
    EXPECT_TRUE (typedGain (-4.1, small).widensScale);

    // Limited to the parameter's range before it sets the scale.
    EXPECT_FLOAT_EQ (typedGain (40.0, small).gainDb, 12.0f);
    EXPECT_FALSE (typedGain (40.0, { FilterMode::mix, 100.0f, 12.0f }).widensScale);
}

TEST (TypedGainTest, masterLimitsWhatIsTyped)
{
    EXPECT_FLOAT_EQ (typedGain (-9.0, { FilterMode::master, 100.0f, 12.0f }).gainDb, -4.0f);
    EXPECT_FLOAT_EQ (typedGain (9.0, { FilterMode::master, 50.0f, 12.0f }).gainDb, 8.0f);
    EXPECT_FLOAT_EQ (typedGain (13.0, { FilterMode::master, 0.0f, 12.0f }).gainDb, 12.0f);
}

TEST (TypedQTest, masterLimitsWhatIsTyped)
{
    const auto& item = roomCases::byId ("type-q-1");
    const auto number = static_cast<float> (BandText::toNumber (item["inputs"]["text"].get<std::string>()));
    const GainLimits limits { FilterMode::master, 100.0f, 12.0f };
    EXPECT_NEAR (limits.limitQ (number), item["expected"].get<float>(), 0.0005f);
}
