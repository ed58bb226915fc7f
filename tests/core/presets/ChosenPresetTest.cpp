#include "support/RealTimeGuard.h"
#include "support/SessionRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::Each;

constexpr int darkPopOfBassId = 4;
constexpr int trumpetId = 40;
constexpr int danceId = 71;

/** The way from the parameter to the target that the signal is compared with. */
class ChosenPresetTest : public testing::Test
{
protected:
    void choose (int id) { rig.set (ParameterIds::currentPreset, static_cast<float> (id)); }

    [[nodiscard]] std::vector<float> targetValues() const
    {
        return { processor.target.targetValues.begin(), processor.target.targetValues.end() };
    }

    [[nodiscard]] const Presets::Numbers numbersOf (int id) const
    {
        return processor.presets.numbersOf (*processor.presets.findPresetById (id));
    }

    /** Whether name and target are those of one preset, which has a loudness of its own. */
    [[nodiscard]] bool isTarget (int id) const
    {
        return processor.presets.currentPreset().id == id && processor.target.targetLufs == numbersOf (id).lufs
               && targetValues()[3] == numbersOf (id).values[3];
    }

    PluginRig rig;
    VelmoraAudioProcessor& processor = rig.processor;
};

TEST_F (ChosenPresetTest, aNewInstanceAimsAtBalancedMaster)
{
    EXPECT_TRUE (isTarget (Presets::balancedMasterId));
    EXPECT_NEAR (targetValues()[9], -39.70f, 0.005f);
}

TEST_F (ChosenPresetTest, theParameterMovesNameAndTarget)
{
    rig.prepare (48000.0, 64);
    choose (danceId);
    EXPECT_TRUE (isTarget (danceId));
    choose (Presets::balancedMasterId);
    EXPECT_TRUE (isTarget (Presets::balancedMasterId));
}

TEST_F (ChosenPresetTest, aPrepareTakesOverWhatWasChosenBefore)
{
    choose (danceId);
    rig.prepare (48000.0, 64);
    EXPECT_TRUE (isTarget (danceId));
}

TEST_F (ChosenPresetTest, noTargetsAsksForZeroEverywhere)
{
    rig.prepare (48000.0, 64);
    choose (Presets::noTargetsId);
    EXPECT_EQ (processor.target.targetLufs, 0.0f);
    EXPECT_THAT (targetValues(), Each (0.0f));
}

TEST_F (ChosenPresetTest, nineValuesLeaveNothingOfThePresetBefore)
{
    rig.prepare (48000.0, 64);
    std::vector<std::vector<float>> after;

    for (const auto before : { danceId, trumpetId, Presets::noTargetsId })
    {
        choose (before);
        choose (darkPopOfBassId);
        after.push_back (targetValues());
    }

    EXPECT_EQ (after[0], after[1]);
    EXPECT_EQ (after[0], after[2]);
    EXPECT_EQ (after[0][9], numbersOf (darkPopOfBassId).topBand);
}

TEST_F (ChosenPresetTest, theNumbersOfAnyPresetAreReadWithoutHeapAndLock)
{
    std::array<float, Presets::bandValueCount> values {};
    values.fill (-31.0f);
    processor.presets.setUserSetting (-9.5f, values);
    auto sum = 0.0f;
    const RealTimeGuard guard;

    for (const auto id : { danceId, Presets::noTargetsId, Presets::userSettingId })
        sum += numbersOf (id).lufs;

    EXPECT_EQ (guard.allocations(), 0);
    EXPECT_EQ (guard.locks(), 0);
    EXPECT_EQ (sum, numbersOf (danceId).lufs - 9.5f);
}

TEST_F (ChosenPresetTest, aListenerOfALoadedSessionFindsItsPresetChosen)
{
    for (const auto prepared : { false, true })
    {
        PluginRig other;

        if (prepared)
            other.prepare (48000.0, 64);

        auto heard = 0;
        const auto token = other.processor.model.channels.add (
            [&] { heard = other.processor.presets.currentPreset().id; }, Channels::stateInformationSet);
        sessions::loadText (other.processor,
                            "<ZVQ_Processor><PARAM id=\"paramCurrentZVQPreset\" value=\"71.0\"/></ZVQ_Processor>");
        EXPECT_EQ (heard, danceId) << prepared;
        other.processor.model.channels.remove (token);
    }
}

TEST_F (ChosenPresetTest, theOtherSideOfTheComparisonBringsItsPreset)
{
    choose (danceId);
    processor.sessionState().compareCopy();
    choose (trumpetId);
    processor.sessionState().compareSwitch (true);
    EXPECT_TRUE (isTarget (danceId));
    processor.sessionState().compareSwitch (false);
    EXPECT_TRUE (isTarget (trumpetId));
}

TEST_F (ChosenPresetTest, userSettingIsOfferedOnceASessionBringsOne)
{
    const auto offersUserSetting = [this]
    {
        for (const auto& entry : Presets::makeMenu (processor.presets, processor.model.targetSetByUser))
            for (const auto& item : entry.items)
                if (item.id == Presets::userSettingId)
                    return true;

        return false;
    };

    EXPECT_FALSE (offersUserSetting());
    sessions::loadElements (processor, "<settings lufs-overall=\"-8.5\" target-set-user=\"1\"/>");
    EXPECT_TRUE (offersUserSetting());
}
} // namespace
