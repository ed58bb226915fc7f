#include "core/model/PluginModel.h"

#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace
{
using Kind = Settings::Parameter;

class CountingListener final : public juce::AudioProcessorValueTreeState::Listener
{
public:
    void parameterChanged (const juce::String& id, float value) override
    {
        ++calls;
        lastId = id;
        lastValue = value;
    }

    int calls = 0;
    juce::String lastId;
    float lastValue = 0.0f;
};

class GestureListener final : public juce::AudioProcessorListener
{
public:
    void audioProcessorParameterChanged (juce::AudioProcessor*, int, float) override { ++changes; }
    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails&) override {}
    void audioProcessorParameterChangeGestureBegin (juce::AudioProcessor*, int) override { ++gestures; }
    void audioProcessorParameterChangeGestureEnd (juce::AudioProcessor*, int) override { ++gestures; }

    int changes = 0;
    int gestures = 0;
};

class PluginModelTest : public testing::Test
{
protected:
    VelmoraAudioProcessor processor { PluginRig::plainHost() };
    PluginModel& model = processor.model;
};

TEST_F (PluginModelTest, startsAsAFreshInstance)
{
    EXPECT_EQ (model.sampleRate, 0.0);
    EXPECT_EQ (model.decimationFactor, 1);
    EXPECT_EQ (model.baseLatency, 0);
    EXPECT_TRUE (model.stereoPathActive());
    EXPECT_FALSE (model.midSidePathActive());
    EXPECT_FALSE (model.soloActive());
    EXPECT_EQ (model.soloBand(), -1);
    EXPECT_TRUE (model.canUseMasterMode());
    EXPECT_TRUE (model.editorClosed);
    EXPECT_EQ (model.threadPriority, 0);
    EXPECT_EQ (model.maxThreadPriority, 0);
    EXPECT_FALSE (model.fifosEngaged);
    EXPECT_FALSE (model.mainBypass() || model.integratedLUFSAnalysisChanged() || model.stateInformationSet()
                  || model.minimised() || model.smartBandsReady() || model.targetsReady()
                  || model.createOverlapControls());
}

TEST_F (PluginModelTest, writesAChangedValueOnceAndWithoutAGesture)
{
    CountingListener listener;
    GestureListener gestures;
    processor.getAPVTS().addParameterListener ("band_gain_4", &listener);
    processor.addListener (&gestures);

    model.setParameterValue ("band_gain_4", 3.0f);
    EXPECT_EQ (listener.calls, 1);
    EXPECT_EQ (listener.lastId, "band_gain_4");
    EXPECT_EQ (listener.lastValue, 3.0f);
    model.setParameterValue ("band_gain_4", 3.0f);
    EXPECT_EQ (listener.calls, 1) << "an equal value is not told";
    EXPECT_EQ (gestures.gestures, 0);
    EXPECT_GT (gestures.changes, 0) << "the host hears of it";

    processor.getAPVTS().removeParameterListener ("band_gain_4", &listener);
    processor.removeListener (&gestures);
}

TEST_F (PluginModelTest, anUnknownParameterDoesNothing)
{
    const auto values = [this]
    {
        std::vector<float> list;

        for (const auto* parameter : processor.getParameters())
            list.push_back (parameter->getValue());

        return list;
    };

    const auto before = values();
    model.setParameterValue ("band_gain_10", 3.0f);
    model.setParameterValue ({}, 3.0f);
    EXPECT_EQ (values(), before);
}

TEST_F (PluginModelTest, readsEveryKindOfEveryBand)
{
    const auto values = std::array { 5000.0f, -3.0f, 2.0f, 1.0f, 1.0f, 1.0f, 1.0f, 0.25f };

    for (int kind = 0; kind < Settings::bandParameterKindCount; ++kind)
        model.setParameterValue (ParameterIds::ofBand (7, static_cast<Kind> (kind)),
                                 values[static_cast<std::size_t> (kind)]);

    for (int kind = 0; kind < Settings::bandParameterKindCount; ++kind)
    {
        EXPECT_FLOAT_EQ (model.getBandValue (7, static_cast<Kind> (kind)), values[static_cast<std::size_t> (kind)]);
        EXPECT_NE (model.getBandValue (6, static_cast<Kind> (kind)), values[static_cast<std::size_t> (kind)]);
    }
}

TEST_F (PluginModelTest, mapsRoomControlsToParameters)
{
    model.displayScaleDb = 6.0f;
    const auto after = [this] (float control, int kind, Kind target)
    {
        model.setBandValueFromControl (2, control, kind);
        return model.getBandValue (2, target);
    };

    EXPECT_FLOAT_EQ (after (0.0f, 1, Kind::gain), 6.0f) << "the front plane";
    EXPECT_FLOAT_EQ (after (1.0f, 1, Kind::gain), -6.0f) << "the back wall";
    EXPECT_NEAR (after (0.5f, 1, Kind::gain), 0.0f, 1.0e-6f);
    EXPECT_FLOAT_EQ (after (0.0f, 2, Kind::q), 0.5f);
    EXPECT_FLOAT_EQ (after (1.0f, 2, Kind::q), 5.0f);
    EXPECT_FLOAT_EQ (after (0.25f, 7, Kind::midSide), 0.25f);
    EXPECT_FLOAT_EQ (after (3.0f, 8, Kind::q), 3.0f);
    EXPECT_FLOAT_EQ (after (-7.0f, 9, Kind::gain), -7.0f);
    EXPECT_FLOAT_EQ (after (1000.0f, 0, Kind::frequency), 1000.0f);
    EXPECT_FLOAT_EQ (after (1.0f, 5, Kind::active), 1.0f);
}

TEST_F (PluginModelTest, normalisesAndClampsQ)
{
    EXPECT_EQ (PluginModel::normaliseQ (0.5f), 0.0f);
    EXPECT_EQ (PluginModel::normaliseQ (5.0f), 1.0f);
    EXPECT_FLOAT_EQ (PluginModel::normaliseQ (2.75f), 0.5f);
    EXPECT_EQ (PluginModel::normaliseQ (0.1f), 0.0f);
    EXPECT_EQ (PluginModel::normaliseQ (90.0f), 1.0f);
}

TEST_F (PluginModelTest, masterLimitsCountInactiveBandsAndAreToldAlways)
{
    auto fired = 0;
    model.channels.add ([&] { ++fired; }, Channels::canUseMasterMode);

    model.checkMasterLimits();
    EXPECT_TRUE (model.canUseMasterMode());
    EXPECT_EQ (fired, 1);

    model.setParameterValue ("band_gain_9", -4.5f);
    model.checkMasterLimits();
    EXPECT_FALSE (model.canUseMasterMode()) << "band 10 is not active, but its gain counts";

    model.setParameterValue ("band_gain_9", -4.0f);
    model.checkMasterLimits();
    EXPECT_TRUE (model.canUseMasterMode());

    model.setParameterValue ("band_Q_0", 1.6f);
    model.checkMasterLimits();
    EXPECT_FALSE (model.canUseMasterMode());
    EXPECT_EQ (fired, 4);
}

TEST_F (PluginModelTest, eachSetterStoresFirstAndFiresItsOwnChannel)
{
    struct Stored
    {
        const char* channel;
        std::function<void (bool)> set;
        std::function<bool()> get;
    };

    const Stored all[] {
        { Channels::canUseMasterMode,
          [&] (bool v) { model.setCanUseMasterMode (v); },
          [&] { return model.canUseMasterMode(); } },
        { Channels::mainBypass, [&] (bool v) { model.setMainBypass (v); }, [&] { return model.mainBypass(); } },
        { Channels::showHeatmap, [&] (bool v) { model.setShowHeatmap (v); }, [&] { return model.showHeatmap(); } },
    };

    for (const auto& tested : all)
    {
        std::vector<bool> seen;
        const auto token = model.channels.add ([&] { seen.push_back (tested.get()); }, tested.channel);
        tested.set (true);
        tested.set (true);
        tested.set (false);
        EXPECT_EQ (seen, (std::vector<bool> { true, true, false })) << tested.channel;
        model.channels.remove (token);
    }
}

TEST_F (PluginModelTest, sixSettersFireOnlyWhenAsked)
{
    struct Stored
    {
        const char* channel;
        std::function<void (bool, bool)> set;
        std::function<bool()> get;
    };

    const Stored all[] {
        { Channels::integratedLUFSAnalysisChanged,
          [&] (bool v, bool notify) { model.setIntegratedLUFSAnalysisChanged (v, notify); },
          [&] { return model.integratedLUFSAnalysisChanged(); } },
        { Channels::stateInformationSet,
          [&] (bool v, bool notify) { model.setStateInformationSet (v, notify); },
          [&] { return model.stateInformationSet(); } },
        { Channels::minimised,
          [&] (bool v, bool notify) { model.setMinimised (v, notify); },
          [&] { return model.minimised(); } },
        { Channels::smartBandsReady,
          [&] (bool v, bool notify) { model.setSmartBandsReady (v, notify); },
          [&] { return model.smartBandsReady(); } },
        { Channels::targetsReady,
          [&] (bool v, bool notify) { model.setTargetsReady (v, notify); },
          [&] { return model.targetsReady(); } },
        { Channels::createOverlapControls,
          [&] (bool v, bool notify) { model.setCreateOverlapControls (v, notify); },
          [&] { return model.createOverlapControls(); } },
    };

    for (const auto& tested : all)
    {
        std::vector<bool> seen;
        const auto token = model.channels.add ([&] { seen.push_back (tested.get()); }, tested.channel);
        tested.set (true, false);
        EXPECT_TRUE (tested.get()) << tested.channel;
        EXPECT_TRUE (seen.empty()) << tested.channel;
        tested.set (false, true);
        EXPECT_EQ (seen, std::vector<bool> { false }) << tested.channel;
        model.channels.remove (token);
    }
}
} // namespace
