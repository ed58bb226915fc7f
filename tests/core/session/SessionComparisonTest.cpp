#include "support/SessionRig.h"

#include <gtest/gtest.h>

namespace
{
using Kind = Settings::Parameter;

/** Two sets of settings, and the switch and the copy button between them. */
class SessionComparisonTest : public testing::Test
{
protected:
    [[nodiscard]] float gain (int band = 0) const { return processor.model.getBandValue (band, Kind::gain); }
    void setGain (float gainDb) { rig.set (0, Kind::gain, gainDb); }

    /** A at 3 dB, B at -5 dB, on the side of A. */
    void makeTwoSides()
    {
        setGain (-5.0f);
        state.compareCopy();
        setGain (3.0f);
    }

    PluginRig rig;
    VelmoraAudioProcessor& processor = rig.processor;
    SessionState& state = processor.sessionState();
};

TEST_F (SessionComparisonTest, aNewInstanceStandsOnAWithoutStores)
{
    EXPECT_TRUE (state.comparisonASelected());
    EXPECT_FALSE (state.comparisonUsed());
    EXPECT_FALSE (state.hasStore (0));
    EXPECT_FALSE (state.hasStore (1));
}

TEST_F (SessionComparisonTest, theSwitchKeepsTheSideThatIsLeft)
{
    makeTwoSides();
    state.compareSwitch (true);
    EXPECT_EQ (gain(), -5.0f);
    EXPECT_FALSE (state.comparisonASelected());
    EXPECT_TRUE (state.comparisonUsed());

    setGain (-6.0f);
    state.compareSwitch (false);
    EXPECT_EQ (gain(), 3.0f);
    EXPECT_TRUE (state.comparisonASelected());

    state.compareSwitch (true);
    EXPECT_EQ (gain(), -6.0f) << "the change on B stayed there";
}

TEST_F (SessionComparisonTest, anEditorThatOpensFillsStoresThatAreMissing)
{
    VelmoraAudioProcessor instance (PluginRig::plainHost(),
                                    [] (VelmoraAudioProcessor&) -> juce::AudioProcessorEditor* { return nullptr; });
    std::ignore = instance.createEditor();
    EXPECT_TRUE (instance.sessionState().hasStore (0));
    EXPECT_TRUE (instance.sessionState().hasStore (1));
}

TEST_F (SessionComparisonTest, theFlagIsDownWhileTheOtherSideComesIn)
{
    // Raised, it would make the gain scale work from the gains of the side that is left.
    rig.prepare (48000.0, 64);
    setGain (6.0f);
    sessions::load (processor, sessions::save (processor));
    rig.set (ParameterIds::gainScale, 50.0f);
    state.compareCopy();
    setGain (-4.0f);

    auto flagWhileReplacing = true;
    const auto parameter = ParameterIds::ofBand (0, Kind::gain);

    struct Watch : juce::AudioProcessorValueTreeState::Listener
    {
        explicit Watch (std::function<void()> toDo) : reaction (std::move (toDo)) {}
        void parameterChanged (const juce::String&, float) override { reaction(); }
        std::function<void()> reaction;
    } watch ([&] { flagWhileReplacing = processor.model.stateInformationSet(); });

    processor.getAPVTS().addParameterListener (parameter, &watch);
    state.compareSwitch (true);
    processor.getAPVTS().removeParameterListener (parameter, &watch);
    EXPECT_FALSE (flagWhileReplacing);
    EXPECT_TRUE (processor.model.stateInformationSet());
}

TEST_F (SessionComparisonTest, theSwitchTakesEveryParameterAlong)
{
    const auto first = sessions::parameterValues (processor);
    state.compareCopy();
    sessions::fillSession (rig);
    state.compareCopy();
    const auto second = sessions::parameterValues (processor);
    ASSERT_NE (first, second);

    PluginRig other;
    other.processor.sessionState().compareCopy();
    sessions::load (other.processor, sessions::save (processor));
    other.processor.sessionState().compareSwitch (true);
    EXPECT_EQ (sessions::parameterValues (other.processor), second);
}

TEST_F (SessionComparisonTest, theSwitchStoresTheGainsOfTheSideThatIsEntered)
{
    makeTwoSides();
    state.compareSwitch (true);
    EXPECT_EQ (processor.model.storedBandGains[0], -5.0f);
    state.compareSwitch (false);
    EXPECT_EQ (processor.model.storedBandGains[0], 3.0f);
}

TEST_F (SessionComparisonTest, theSwitchRaisesTheFlagAndTellsNobody)
{
    makeTwoSides();
    auto notified = 0;
    const auto token = processor.model.channels.add ([&] { ++notified; }, Channels::stateInformationSet);
    ASSERT_FALSE (processor.model.stateInformationSet());
    state.compareSwitch (true);
    EXPECT_TRUE (processor.model.stateInformationSet());
    EXPECT_EQ (notified, 0);
    EXPECT_FALSE (state.isRestoring());
    processor.model.channels.remove (token);
}

TEST_F (SessionComparisonTest, theCopyPutsTheSameOnBothSidesAndChangesNothingElse)
{
    makeTwoSides();
    state.compareCopy();
    EXPECT_EQ (gain(), 3.0f);
    EXPECT_FALSE (state.comparisonUsed());
    EXPECT_TRUE (state.comparisonASelected());
    EXPECT_FALSE (processor.model.stateInformationSet());
    state.compareSwitch (true);
    EXPECT_EQ (gain(), 3.0f);
}

TEST_F (SessionComparisonTest, storesAreCopiesThatLaterChangesDoNotReach)
{
    makeTwoSides();
    state.compareSwitch (true);
    setGain (11.0f);
    const auto root = parseBlock (sessions::save (processor));
    const auto gainIn = [&root] (const char* store)
    {
        return root->getChildByName (store)
            ->getFirstChildElement()
            ->getChildByAttribute ("id", "band_gain_0")
            ->getDoubleAttribute ("value");
    };
    EXPECT_EQ (gainIn ("parameterStoreA"), 3.0);
    EXPECT_EQ (gainIn ("parameterStoreB"), -5.0) << "B changes when it is left";
}

TEST_F (SessionComparisonTest, aSwitchToASideThatIsMissingKeepsTheSettings)
{
    setGain (3.0f);
    state.compareSwitch (true);
    EXPECT_EQ (gain(), 3.0f);
    EXPECT_TRUE (state.hasStore (0));
    EXPECT_FALSE (state.hasStore (1));
    EXPECT_FALSE (state.comparisonASelected());
}

TEST_F (SessionComparisonTest, aForeignStoreIsKeptButNeverEntered)
{
    setGain (3.0f);
    sessions::loadElements (
        processor, "<parameterStoreB><OTHER><PARAM id=\"band_gain_0\" value=\"1\"/></OTHER></parameterStoreB>");
    state.compareSwitch (true);
    EXPECT_EQ (gain(), 3.0f);
    EXPECT_NE (unwrapText (sessions::save (processor)).find ("<parameterStoreB><OTHER>"), std::string::npos);
}

TEST_F (SessionComparisonTest, missingStoresAreFilledTogether)
{
    setGain (3.0f);
    state.fillMissingStores();
    EXPECT_TRUE (state.hasStore (0));
    EXPECT_TRUE (state.hasStore (1));

    setGain (4.0f);
    state.fillMissingStores();
    state.compareSwitch (true);
    EXPECT_EQ (gain(), 3.0f) << "stores that are there stay";
}

TEST_F (SessionComparisonTest, oneMissingStoreRenewsBoth)
{
    sessions::loadElements (processor, "<parameterStoreB><ZVQ_Processor/></parameterStoreB>");
    setGain (3.0f);
    state.fillMissingStores();
    state.compareSwitch (true);
    EXPECT_EQ (gain(), 3.0f);
}

TEST_F (SessionComparisonTest, bothSidesComeBackWithTheSession)
{
    makeTwoSides();
    state.compareSwitch (true);
    PluginRig other;
    sessions::load (other.processor, sessions::save (processor));
    auto& otherState = other.processor.sessionState();
    EXPECT_FALSE (otherState.comparisonASelected());
    otherState.compareSwitch (false);
    EXPECT_EQ (other.processor.model.getBandValue (0, Kind::gain), 3.0f);
    otherState.compareSwitch (true);
    EXPECT_EQ (other.processor.model.getBandValue (0, Kind::gain), -5.0f);
}
} // namespace
