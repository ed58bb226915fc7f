#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{
using Host = juce::PluginHostType;

HostDescription hostOfType (Host::HostType type)
{
    auto description = PluginRig::plainHost();
    description.type = type;
    return description;
}

/** Counts how often the host is told of a new latency. */
class HostListener final : public juce::AudioProcessorListener
{
public:
    explicit HostListener (juce::AudioProcessor& toHear) : processor (toHear) { processor.addListener (this); }
    ~HostListener() override { processor.removeListener (this); }

    void audioProcessorParameterChanged (juce::AudioProcessor*, int, float) override {}

    void audioProcessorChanged (juce::AudioProcessor*, const ChangeDetails& details) override
    {
        if (details.latencyChanged)
            ++latencyChanges;
    }

    std::atomic<int> latencyChanges { 0 };

private:
    juce::AudioProcessor& processor;
};

struct LatencyCase
{
    double sampleRate;
    int factor;
    float mode;
    float phase;
    int latency;
};

constexpr float mix = 1.0f, master = 0.0f, linear = 1.0f, minimum = 0.0f;

class LatencyTest : public testing::TestWithParam<LatencyCase>
{
protected:
    /** Where a single sample comes out, with flat filters; -1 unless it comes out whole and alone. */
    static int positionOfImpulse (PluginRig& rig)
    {
        const auto output = rig.run (signals::impulse (2, 2048, 1), 100);
        const auto found = std::find (output[1].begin(), output[1].end(), 1.0f);
        const auto others = std::count_if (output[1].begin(), output[1].end(), [] (float v) { return v != 0.0f; });
        return found != output[1].end() && others == 1 ? static_cast<int> (found - output[1].begin()) : -1;
    }
};

TEST_P (LatencyTest, isReportedByPrepareAndWithTheFactorOnceTheFifoIsInUse)
{
    const auto& tested = GetParam();
    PluginRig rig;
    rig.set (ParameterIds::mode, tested.mode);
    rig.set (ParameterIds::phase, tested.phase);
    rig.prepare (tested.sampleRate, 256);
    EXPECT_EQ (rig.processor.model.decimationFactor, tested.factor);
    EXPECT_EQ (rig.processor.model.baseLatency, tested.latency);
    EXPECT_EQ (rig.reportedLatency(), tested.latency);

    rig.runSilence (256, 256);
    EXPECT_EQ (rig.reportedLatency(), tested.latency) << "nothing is reported by a block";
    rig.prepare (tested.sampleRate, 256);
    EXPECT_EQ (rig.reportedLatency(), tested.latency + tested.factor);
}

TEST_P (LatencyTest, isReportedWithTheFactorByTheFirstTimerTurnAfterABlockAndByEachPrepareThereafter)
{
    const auto& tested = GetParam();
    PluginRig rig;
    rig.set (ParameterIds::mode, tested.mode);
    rig.set (ParameterIds::phase, tested.phase);
    rig.prepare (tested.sampleRate, 256);
    HostListener listener (rig.processor);
    rig.runSilence (256, 256);
    PluginRig::serveMessagesUntil ([&] { return listener.latencyChanges > 0; });
    EXPECT_EQ (rig.reportedLatency(), tested.latency + tested.factor);
    EXPECT_EQ (positionOfImpulse (rig), rig.reportedLatency());

    rig.prepare (tested.sampleRate, 256);
    EXPECT_EQ (rig.reportedLatency(), tested.latency + tested.factor);
    EXPECT_EQ (listener.latencyChanges, 1);
}

TEST_P (LatencyTest, isReportedAtOnceWhenModeAndPhaseChangeLater)
{
    const auto& tested = GetParam();
    PluginRig rig;
    rig.set (ParameterIds::mode, 1.0f - tested.mode);
    rig.set (ParameterIds::phase, 1.0f - tested.phase);
    rig.prepare (tested.sampleRate, 256);
    HostListener listener (rig.processor);
    const auto before = rig.reportedLatency();
    rig.set (ParameterIds::mode, tested.mode);
    rig.set (ParameterIds::phase, tested.phase);
    EXPECT_EQ (rig.reportedLatency(), tested.latency);
    EXPECT_GE (listener.latencyChanges, before == tested.latency ? 0 : 1);

    rig.runSilence (256, 256);
    rig.set (ParameterIds::mode, 1.0f - tested.mode);
    rig.set (ParameterIds::mode, tested.mode);
    EXPECT_EQ (rig.reportedLatency(), tested.latency + tested.factor);
}

TEST_P (LatencyTest, isWhatTheAudioReallyTakes)
{
    const auto& tested = GetParam();
    PluginRig rig;
    rig.set (ParameterIds::mode, tested.mode);
    rig.set (ParameterIds::phase, tested.phase);
    rig.prepare (tested.sampleRate, 256);
    EXPECT_EQ (positionOfImpulse (rig), tested.latency + tested.factor);
}

TEST_P (LatencyTest, isWhatTheAudioTakesAfterASwitchWhileItRuns)
{
    const auto& tested = GetParam();
    PluginRig rig;
    rig.set (ParameterIds::mode, 1.0f - tested.mode);
    rig.set (ParameterIds::phase, 1.0f - tested.phase);
    rig.prepare (tested.sampleRate, 256);
    rig.runSilence (1024, 256);
    rig.set (ParameterIds::mode, tested.mode);
    rig.set (ParameterIds::phase, tested.phase);
    rig.settle();
    EXPECT_EQ (positionOfImpulse (rig), tested.latency + tested.factor);
}

TEST_P (LatencyTest, aBypassedBlockTakesWhatWasReported)
{
    const auto& tested = GetParam();
    PluginRig rig;
    rig.set (ParameterIds::mode, tested.mode);
    rig.set (ParameterIds::phase, tested.phase);
    rig.prepare (tested.sampleRate, 2048);

    for (int prepared = 0; prepared < 2; ++prepared)
    {
        const auto input = signals::noise (2, 2048, 11);
        juce::AudioBuffer<float> buffer (2, 2048);

        for (int channel = 0; channel < 2; ++channel)
            buffer.copyFrom (channel, 0, input[static_cast<std::size_t> (channel)].data(), 2048);

        juce::MidiBuffer noMidi;
        rig.processor.processBlockBypassed (buffer, noMidi);
        PluginRig::Signal output { { buffer.getReadPointer (0), buffer.getReadPointer (0) + 2048 },
                                   { buffer.getReadPointer (1), buffer.getReadPointer (1) + 2048 } };
        EXPECT_EQ (signals::firstDifference (output, signals::delayedBy (input, rig.reportedLatency())), "");

        rig.runSilence (16, 16);
        rig.prepare (tested.sampleRate, 2048);
        EXPECT_EQ (rig.reportedLatency(), tested.latency + tested.factor);
    }
}

INSTANTIATE_TEST_SUITE_P (Table,
                          LatencyTest,
                          testing::Values (LatencyCase { 44100.0, 4, mix, linear, 274 },
                                           LatencyCase { 44100.0, 4, master, linear, 174 },
                                           LatencyCase { 44100.0, 4, mix, minimum, 224 },
                                           LatencyCase { 44100.0, 4, master, minimum, 144 },
                                           LatencyCase { 48000.0, 4, mix, linear, 274 },
                                           LatencyCase { 48000.0, 4, master, linear, 174 },
                                           LatencyCase { 48000.0, 4, mix, minimum, 224 },
                                           LatencyCase { 48000.0, 4, master, minimum, 144 },
                                           LatencyCase { 88200.0, 4, mix, linear, 524 },
                                           LatencyCase { 88200.0, 4, master, linear, 324 },
                                           LatencyCase { 88200.0, 4, mix, minimum, 424 },
                                           LatencyCase { 88200.0, 4, master, minimum, 264 },
                                           LatencyCase { 96000.0, 4, mix, linear, 524 },
                                           LatencyCase { 96000.0, 4, master, linear, 324 },
                                           LatencyCase { 96000.0, 4, mix, minimum, 424 },
                                           LatencyCase { 96000.0, 4, master, minimum, 264 },
                                           LatencyCase { 176400.0, 8, mix, linear, 1404 },
                                           LatencyCase { 176400.0, 8, master, linear, 864 },
                                           LatencyCase { 176400.0, 8, mix, minimum, 1404 },
                                           LatencyCase { 176400.0, 8, master, minimum, 864 },
                                           LatencyCase { 192000.0, 8, mix, linear, 1404 },
                                           LatencyCase { 192000.0, 8, master, linear, 864 },
                                           LatencyCase { 192000.0, 8, mix, minimum, 1404 },
                                           LatencyCase { 192000.0, 8, master, minimum, 864 }),
                          [] (const auto& tested)
                          {
                              const auto& latencyCase = tested.param;
                              return std::to_string (static_cast<int> (latencyCase.sampleRate))
                                     + (latencyCase.mode == mix ? "mix" : "master")
                                     + (latencyCase.phase == linear ? "Linear" : "Minimum");
                          });

TEST (ReportedLatencyTest, anEqualLatencyIsNotToldAgain)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    HostListener listener (rig.processor);
    rig.prepare (48000.0, 64);
    EXPECT_EQ (listener.latencyChanges, 0);
    rig.runSilence (64, 64);
    rig.prepare (48000.0, 64);
    EXPECT_EQ (listener.latencyChanges, 1);
}

TEST (ReportedLatencyTest, cubaseHearsOnlyFromPrepareWhileTheDelayLinesFollowAtOnce)
{
    PluginRig rig (hostOfType (Host::SteinbergCubase9));
    rig.prepare (48000.0, 1024);
    EXPECT_EQ (rig.reportedLatency(), 174);
    HostListener listener (rig.processor);

    rig.set (ParameterIds::phase, 0.0f);
    EXPECT_EQ (rig.reportedLatency(), 174);
    EXPECT_EQ (listener.latencyChanges, 0);
    EXPECT_EQ (rig.processor.model.baseLatency, 144);

    juce::AudioBuffer<float> buffer (2, 1024);
    buffer.clear();
    buffer.setSample (0, 0, 1.0f);
    juce::MidiBuffer noMidi;
    rig.processor.processBlockBypassed (buffer, noMidi);
    EXPECT_EQ (buffer.getSample (0, 144), 1.0f);

    rig.prepare (48000.0, 1024);
    EXPECT_EQ (rig.reportedLatency(), 144);
    EXPECT_EQ (listener.latencyChanges, 1);
}

TEST (ReportedLatencyTest, otherHostsHearAtOnce)
{
    for (const auto type : { Host::UnknownHost, Host::SteinbergNuendo5, Host::Reaper })
    {
        PluginRig rig (hostOfType (type));
        rig.prepare (48000.0, 64);
        HostListener listener (rig.processor);
        rig.set (ParameterIds::phase, 0.0f);
        EXPECT_EQ (rig.reportedLatency(), 144);
        EXPECT_EQ (listener.latencyChanges, 1);
    }
}

/** Serves the timers of everything that is prepared by now once, at least. */
void serveOneTimerTurn()
{
    // The framework's timers come in the order in which they are due, and this one is due last.
    PluginRig last;
    last.prepare (48000.0, 64);
    last.runSilence (64, 64);
    PluginRig::serveMessagesUntil ([&] { return last.reportedLatency() == last.trueLatency(); });
}

TEST (ReportedLatencyTest, beforeTheFirstBlockTheTimerHasNothingToReport)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    HostListener listener (rig.processor);
    serveOneTimerTurn();
    EXPECT_EQ (rig.reportedLatency(), 174);
    EXPECT_EQ (listener.latencyChanges, 0);
}

TEST (ReportedLatencyTest, cubaseHearsOfTheFifosFromPrepareAlone)
{
    PluginRig rig (hostOfType (Host::SteinbergCubase9));
    rig.prepare (48000.0, 64);
    rig.runSilence (64, 64);
    serveOneTimerTurn();
    EXPECT_EQ (rig.reportedLatency(), 174);
    rig.prepare (48000.0, 64);
    EXPECT_EQ (rig.reportedLatency(), 178);
}

TEST (ReportedLatencyTest, theReportOfTheTimerLeavesTheAudioThatIsUnderWay)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);

    // Both paths, which are joined with the dry signal from a delay line.
    rig.setBand (0, 8000.0f, 0.0f);
    rig.setBand (1, 8000.0f, 0.0f);
    rig.set (1, Settings::Parameter::midSide, 0.2f);
    rig.waitForWorkers();
    ASSERT_TRUE (rig.processor.model.stereoPathActive() && rig.processor.model.midSidePathActive());

    const auto input = signals::noise (2, 4096, 17);
    auto blocks = 0;
    const auto output = rig.run (input,
                                 [&]
                                 {
                                     if (++blocks == 33)
                                         serveOneTimerTurn();

                                     return 64;
                                 });
    EXPECT_EQ (rig.reportedLatency(), rig.trueLatency());
    EXPECT_EQ (signals::firstDifference (output, signals::delayedBy (input, rig.trueLatency()), 1.0e-6f), "");
}

TEST (ReportedLatencyTest, aBypassedBlockFollowsTheReportOfTheTimer)
{
    PluginRig rig;
    rig.prepare (48000.0, 1024);
    rig.runSilence (64, 64);
    PluginRig::serveMessagesUntil ([&] { return rig.reportedLatency() == rig.trueLatency(); });

    juce::AudioBuffer<float> buffer (2, 1024);
    buffer.clear();
    buffer.setSample (0, 0, 1.0f);
    juce::MidiBuffer noMidi;
    rig.processor.processBlockBypassed (buffer, noMidi);
    EXPECT_EQ (buffer.getSample (0, rig.reportedLatency()), 1.0f);
}

TEST (ReportedLatencyTest, aStateThatAnotherThreadLoadsIsToldWhenItIsLoaded)
{
    PluginRig source;
    source.prepare (48000.0, 64);
    source.set (ParameterIds::mode, 1.0f);
    juce::MemoryBlock state;
    source.processor.getStateInformation (state);

    PluginRig rig;
    rig.prepare (48000.0, 64);
    auto told = 0;
    std::thread loader (
        [&]
        {
            rig.processor.setStateInformation (state.getData(), static_cast<int> (state.getSize()));
            told = rig.reportedLatency();
        });
    loader.join();
    EXPECT_EQ (told, 274);
}

TEST (ReportedLatencyTest, aChangeOnTheAudioThreadIsToldByTheTimer)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    HostListener listener (rig.processor);
    const juce::String phase (ParameterIds::phase);

    std::thread audio (
        [&]
        {
            rig.runSilence (64, 64);
            rig.set (phase, 0.0f);
        });
    audio.join();
    EXPECT_EQ (listener.latencyChanges, 0);
    EXPECT_EQ (rig.reportedLatency(), 174);

    PluginRig::serveMessagesUntil ([&] { return listener.latencyChanges > 0; });
    EXPECT_EQ (rig.reportedLatency(), 144 + 4);
}

TEST (ReportedLatencyTest, aPrepareTellsAtOnceOnTheThreadThatRendersToo)
{
    PluginRig rig;
    auto before = 0;
    auto after = 0;

    // A renderer prepares and runs on one thread, and reads the figure right after the prepare.
    std::thread renderer (
        [&]
        {
            rig.prepare (48000.0, 64);
            rig.runSilence (64, 64);
            rig.prepare (48000.0, 64);
            before = rig.reportedLatency();
            rig.prepare (192000.0, 64);
            after = rig.reportedLatency();
        });
    renderer.join();
    EXPECT_EQ (after, rig.trueLatency());
    EXPECT_NE (after, before);
}

TEST (ReportedLatencyTest, anAudioThreadThatHasRunNoBlockYetLeavesItToTheTimer)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    const auto before = rig.reportedLatency();
    auto onTheThread = 0;

    std::thread audio (
        [&]
        {
            rig.set (ParameterIds::mode,
                     1.0f - rig.processor.getAPVTS().getRawParameterValue (ParameterIds::mode)->load());
            onTheThread = rig.reportedLatency();
        });
    audio.join();
    EXPECT_EQ (onTheThread, before);
    PluginRig::serveMessagesUntil ([&] { return rig.reportedLatency() != before; });
}

TEST (ReportedLatencyTest, aRateThatIsNotServedKeepsFactorAndLatency)
{
    PluginRig rig;
    rig.set (ParameterIds::mode, 1.0f);
    rig.prepare (192000.0, 64);

    for (const auto rate : { 32000.0, 44099.0, 64000.0, 384000.0, 0.0 })
    {
        rig.prepare (rate, 64);
        EXPECT_EQ (rig.processor.model.decimationFactor, 8) << rate;
        EXPECT_EQ (rig.processor.model.baseLatency, 1404) << rate;
        EXPECT_EQ (rig.reportedLatency(), 1404) << rate;
    }

    PluginRig fresh;
    fresh.prepare (64000.0, 64);
    EXPECT_EQ (fresh.processor.model.decimationFactor, 1);
    EXPECT_EQ (fresh.reportedLatency(), 0);
}

TEST (ReportedLatencyTest, aBlockSizeThatPassesAudioThroughStillReports)
{
    PluginRig rig;
    rig.prepare (48000.0, 8193);
    EXPECT_EQ (rig.reportedLatency(), 174);
}

TEST (ReportedLatencyTest, theHighestRatesForceLinearPhaseForGood)
{
    for (const auto rate : { 176400.0, 192000.0 })
    {
        PluginRig rig;
        rig.set (ParameterIds::phase, 0.0f);
        rig.prepare (44100.0, 64);
        EXPECT_EQ (rig.processor.model.filterPhase(), FilterPhase::minimum);
        EXPECT_EQ (rig.reportedLatency(), 144);

        rig.prepare (rate, 64);
        EXPECT_EQ (rig.processor.model.filterPhase(), FilterPhase::linear);
        EXPECT_EQ (rig.reportedLatency(), 864);

        rig.prepare (44100.0, 64);
        EXPECT_EQ (rig.processor.model.filterPhase(), FilterPhase::linear);
        EXPECT_EQ (rig.reportedLatency(), 174);
    }
}

TEST (ReportedLatencyTest, aModeThatChangedWhileAudioStoodIsInPlaceFromTheFirstSampleAfterPrepare)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    rig.settle();
    rig.set (ParameterIds::mode, 1.0f);
    rig.prepare (48000.0, 64);
    rig.waitForWorkers();
    const auto input = signals::noise (2, 2000, 8);
    EXPECT_EQ (signals::firstDifference (rig.run (input, 64), signals::delayedBy (input, 274 + 4)), "");
}

TEST (ReportedLatencyTest, forcingThePhaseCostsNoAudio)
{
    PluginRig rig;
    rig.set (ParameterIds::phase, 0.0f);

    for (const auto rate : { 176400.0, 44100.0, 192000.0 })
    {
        rig.prepare (rate, 64);
        rig.waitForWorkers();
        const auto input = signals::noise (2, 4000, 8);
        EXPECT_EQ (signals::firstDifference (rig.run (input, 64), signals::delayedBy (input, rig.trueLatency())), "")
            << rate;
    }
}
} // namespace
