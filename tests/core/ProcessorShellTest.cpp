#include "support/PluginRig.h"

#include <gtest/gtest.h>

namespace
{
using Host = juce::PluginHostType;

HostDescription hostOfType (Host::HostType type, const juce::String& path = "/opt/host")
{
    auto description = PluginRig::plainHost();
    description.type = type;
    description.applicationPath = path;
    return description;
}

/** Whether a block comes back as it went in, to the bit. */
bool passesUntouched (PluginRig& rig, int channelCount, int length)
{
    rig.set (ParameterIds::outputGain, 6.0f);
    const auto input = signals::noise (channelCount, length, 5);
    const auto output = rig.run (input, length);
    return signals::firstDifference (output, input).empty();
}

TEST (ProcessorShellTest, tellsTheFrameworkWhatItIs)
{
    VelmoraAudioProcessor processor (PluginRig::plainHost());
    EXPECT_EQ (processor.getName(), "SOLVANE");
    EXPECT_EQ (processor.getTailLengthSeconds(), 0.0);
    EXPECT_FALSE (processor.acceptsMidi() || processor.producesMidi() || processor.supportsMPE()
                  || processor.isMidiEffect());
    EXPECT_EQ (processor.getNumPrograms(), 1);
    EXPECT_EQ (processor.getCurrentProgram(), 0);
    EXPECT_TRUE (processor.getProgramName (0).isEmpty());
    processor.setCurrentProgram (3);
    processor.changeProgramName (0, "x");
    EXPECT_EQ (processor.getCurrentProgram(), 0);
    EXPECT_TRUE (processor.getProgramName (0).isEmpty());
}

TEST (ProcessorShellTest, hasOneStereoInputAndOneStereoOutputThatAreOn)
{
    VelmoraAudioProcessor processor (PluginRig::plainHost());
    EXPECT_EQ (processor.getBusCount (true), 1);
    EXPECT_EQ (processor.getBusCount (false), 1);
    EXPECT_EQ (processor.getBus (true, 0)->getName(), "Input");
    EXPECT_EQ (processor.getBus (false, 0)->getName(), "Output");
    EXPECT_EQ (processor.getTotalNumInputChannels(), 2);
    EXPECT_EQ (processor.getTotalNumOutputChannels(), 2);
}

TEST (ProcessorShellTest, takesMonoToMonoAndStereoToStereoAndNothingElse)
{
    using Set = juce::AudioChannelSet;
    VelmoraAudioProcessor processor (PluginRig::plainHost());
    const std::vector<Set> sets {
        Set::disabled(),           Set::mono(),          Set::stereo(),      Set::createLCR(),
        Set::quadraphonic(),       Set::create5point1(), Set::ambisonic (1), Set::discreteChannels (2),
        Set::discreteChannels (64)
    };

    for (const auto& input : sets)
        for (const auto& output : sets)
        {
            juce::AudioProcessor::BusesLayout layout;
            layout.inputBuses.add (input);
            layout.outputBuses.add (output);
            EXPECT_EQ (processor.checkBusesLayoutSupported (layout),
                       input == output && (input == Set::mono() || input == Set::stereo()))
                << input.getDescription() << " to " << output.getDescription();
        }
}

TEST (ProcessorShellTest, givesItsBypassParameterToEveryHostButProTools)
{
    VelmoraAudioProcessor plain (PluginRig::plainHost());
    EXPECT_EQ (plain.getBypassParameter(), plain.getAPVTS().getParameter ("paramBypassZVQ"));
    VelmoraAudioProcessor proTools (hostOfType (Host::AvidProTools));
    EXPECT_EQ (proTools.getBypassParameter(), nullptr);
}

TEST (ProcessorShellTest, makesItsEditorWithTheFactoryThatItWasGiven)
{
    VelmoraAudioProcessor bare (PluginRig::plainHost());
    EXPECT_FALSE (bare.hasEditor());
    EXPECT_EQ (bare.createEditor(), nullptr);

    VelmoraAudioProcessor* asked = nullptr;
    VelmoraAudioProcessor withFactory (PluginRig::plainHost(),
                                       [&asked] (VelmoraAudioProcessor& processor) -> juce::AudioProcessorEditor*
                                       {
                                           asked = &processor;
                                           return nullptr;
                                       });
    EXPECT_TRUE (withFactory.hasEditor());
    withFactory.createEditor();
    EXPECT_EQ (asked, &withFactory);
}

TEST (ProcessorShellTest, prepareStoresTheStream)
{
    PluginRig rig;
    rig.prepare (96000.0, 333);
    EXPECT_EQ (rig.processor.model.sampleRate, 96000.0);
    EXPECT_EQ (rig.processor.model.maxBlockSize, 333);
    EXPECT_EQ (rig.processor.model.numChannels, 2);
    EXPECT_TRUE (rig.processor.model.isStereo);

    rig.prepare (96000.0, 333, 1);
    EXPECT_EQ (rig.processor.model.numChannels, 1);
    EXPECT_FALSE (rig.processor.model.isStereo);
}

TEST (ProcessorShellTest, aRateBelowTheWorkingMinimumPassesAudio)
{
    for (const auto rate : { 0.0, 8000.0, 32000.0, 44099.0 })
    {
        PluginRig rig;
        rig.prepare (rate, 256);
        EXPECT_TRUE (passesUntouched (rig, 2, 256)) << rate;
        EXPECT_FALSE (rig.processor.model.fifosEngaged) << rate;
    }

    PluginRig rig;
    rig.prepare (44100.0, 256);
    EXPECT_FALSE (passesUntouched (rig, 2, 256));
    EXPECT_TRUE (rig.processor.model.fifosEngaged);
}

TEST (ProcessorShellTest, aBlockSizeAboveTheLimitPassesAudio)
{
    PluginRig tooLong;
    tooLong.prepare (48000.0, 8193);
    EXPECT_TRUE (passesUntouched (tooLong, 2, 8193));

    PluginRig longest;
    longest.prepare (48000.0, 8192);
    EXPECT_FALSE (passesUntouched (longest, 2, 8192));
}

TEST (ProcessorShellTest, auvalGetsItsAudioBackUntouched)
{
    PluginRig rig (hostOfType (Host::UnknownHost, "/usr/bin/auval"));
    rig.prepare (48000.0, 256);
    EXPECT_TRUE (passesUntouched (rig, 2, 256));
}

TEST (ProcessorShellTest, wavelabsRateOfZeroBecomesOneThatPassesAudio)
{
    PluginRig wavelab (hostOfType (Host::SteinbergWavelab8));
    wavelab.prepare (0.0, 256);
    EXPECT_EQ (wavelab.processor.model.sampleRate, 1000.0);
    EXPECT_TRUE (passesUntouched (wavelab, 2, 256));

    PluginRig other;
    other.prepare (0.0, 256);
    EXPECT_EQ (other.processor.model.sampleRate, 0.0);
}

TEST (ProcessorShellTest, releasingKeepsEverythingReady)
{
    PluginRig rig;
    rig.prepare (48000.0, 64);
    rig.processor.releaseResources();
    const auto input = signals::noise (2, 1000, 3);
    EXPECT_EQ (signals::firstDifference (rig.run (input, 64), signals::delayedBy (input, 178)), "");
}

TEST (ProcessorShellTest, aNewRateBringsEveryBandWithIt)
{
    const auto tapsAt = [] (std::initializer_list<double> rates)
    {
        PluginRig rig;
        rig.set (ParameterIds::mode, 1.0f);
        rig.setBand (3, 8000.0f, 6.0f);
        rig.setBand (4, 500.0f, -6.0f);

        for (const auto rate : rates)
        {
            rig.prepare (rate, 64);
            rig.settle();
        }

        const auto taps = rig.designedTaps (BlockProcessorMode::stereo);
        std::vector<double> all (taps.linearHigh.taps().begin(), taps.linearHigh.taps().end());
        all.insert (all.end(), taps.low.taps().begin(), taps.low.taps().end());
        return all;
    };

    const auto wanted = tapsAt ({ 88200.0 });
    EXPECT_EQ (tapsAt ({ 44100.0, 88200.0 }), wanted);
    EXPECT_EQ (tapsAt ({ 192000.0, 0.0, 32000.0, 88200.0 }), wanted);
    EXPECT_NE (tapsAt ({ 96000.0 }), wanted);
}

TEST (ProcessorShellTest, settingsFromBeforeTheFirstPrepareAreHeardAfterIt)
{
    PluginRig early;
    early.setBand (0, 8000.0f, 3.0f);
    EXPECT_EQ (early.processor.bandEngine().worker (BlockProcessorMode::stereo).postedCount(), 0)
        << "nothing is sent while there is no rate";
    EXPECT_EQ (early.designedTaps (BlockProcessorMode::stereo).linearHigh.count(), 1);
    early.prepare (48000.0, 64);
    early.settle();

    PluginRig late;
    late.prepare (48000.0, 64);
    late.setBand (0, 8000.0f, 3.0f);
    late.settle();

    const auto earlyTaps = early.designedTaps (BlockProcessorMode::stereo);
    const auto lateTaps = late.designedTaps (BlockProcessorMode::stereo);
    EXPECT_TRUE (std::ranges::equal (earlyTaps.linearHigh.taps(), lateTaps.linearHigh.taps()));
}

TEST (ProcessorShellTest, soloAndBypassFromBeforeTheFirstPrepareHold)
{
    PluginRig rig;
    rig.setBand (2, 8000.0f, 3.0f);
    rig.setBand (6, 3000.0f, 3.0f);
    rig.set (6, Settings::Parameter::solo, 1.0f);
    rig.set (8, Settings::Parameter::solo, 1.0f);
    rig.set (ParameterIds::bypass, 1.0f);
    EXPECT_FALSE (rig.processor.model.soloActive());
    EXPECT_FALSE (rig.processor.model.mainBypass());

    rig.prepare (48000.0, 64);
    EXPECT_TRUE (rig.processor.model.soloActive());
    EXPECT_EQ (rig.processor.model.soloBand(), 6) << "the lowest soloed band";
    EXPECT_TRUE (rig.processor.model.mainBypass());
}

TEST (ProcessorShellTest, aLayoutThatBecomesStereoTakesOverWhatMonoIgnored)
{
    PluginRig rig;
    rig.prepare (48000.0, 64, 1);
    rig.setBand (3, 8000.0f, 3.0f);
    rig.set (3, Settings::Parameter::midSide, 0.0f);
    EXPECT_FALSE (rig.processor.model.midSidePathActive());

    rig.prepare (48000.0, 64, 2);
    rig.settle();
    EXPECT_TRUE (rig.processor.model.midSidePathActive());
    EXPECT_FALSE (rig.processor.model.stereoPathActive());
    const auto mid = rig.designedTaps (BlockProcessorMode::mid).linearHigh;
    EXPECT_NEAR (signals::magnitudeDb ({ mid.taps().begin(), mid.taps().end() }, 8000.0, 48000.0), 3.0, 0.1);
}
} // namespace
