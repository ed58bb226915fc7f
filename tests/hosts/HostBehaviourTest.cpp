#include "hosts/ChunkHelper.h"
#include "hosts/HostRun.h"
#include "hosts/Vst2Host.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

namespace
{
constexpr int blockSize = 512;
constexpr double sampleRate = 48000.0;
constexpr int trueDelay = 178;
constexpr int longestFilter = 301;

/** Until the recursive rate filters have run empty to the last bit. */
constexpr int settleFrames = 1 << 15;

/** The normalised gain of 4 dB; Master mode takes no more. */
constexpr float loudest = 16.0f / 24.0f;

/** One bell, as loud as Master mode has it, so that a working filter cannot pass for a bypassed one. */
void boost (HostedPlugin& plugin, float normalisedGain = loudest)
{
    plugin.setParameter ("Band 3 Active", 1.0f);
    plugin.setParameter ("Band 3 Gain", normalisedGain);
}

/** What the processor itself makes of a signal with that bell. */
hostRun::Signal boostedByTheProcessor (const hostRun::Signal& input, float normalisedOutputGain = 0.5f)
{
    PluginRig rig;
    rig.renderOffline();
    rig.prepare (sampleRate, blockSize);
    const auto& tree = rig.processor.getAPVTS();
    tree.getParameter (ParameterIds::ofBand (2, Settings::Parameter::active))->setValueNotifyingHost (1.0f);
    tree.getParameter (ParameterIds::ofBand (2, Settings::Parameter::gain))->setValueNotifyingHost (loudest);
    tree.getParameter (ParameterIds::outputGain)->setValueNotifyingHost (normalisedOutputGain);
    rig.settle();
    rig.runSilence (settleFrames, blockSize);
    return rig.run (input, blockSize);
}

class HostBehaviourTest : public testing::TestWithParam<PluginFormat>
{
protected:
    void start()
    {
        plugin->prepare (sampleRate, blockSize);
        hostRun::settle (*plugin, 2, blockSize);
    }

    std::unique_ptr<HostedPlugin> plugin = HostedPlugin::open (GetParam());
};

TEST_P (HostBehaviourTest, opensAndClosesAHundredTimes)
{
    const auto input = signals::noise (2, 2048, 31);
    plugin = nullptr;

    for (int turn = 0; turn < 100; ++turn)
    {
        const auto opened = HostedPlugin::open (GetParam());
        opened->prepare (sampleRate, blockSize);
        const auto output = hostRun::run (*opened, input, blockSize);
        ASSERT_EQ (hostRun::differenceFromDelayed (output, input, trueDelay), 0.0f) << "in turn " << turn;
    }
}

TEST_P (HostBehaviourTest, twentyInstancesRunAtOnceEachWithItsOwnSettings)
{
    constexpr std::size_t instanceCount = 20;
    constexpr std::size_t threadCount = 4;
    const auto input = signals::noise (2, 8192, 32);
    std::vector<std::unique_ptr<HostedPlugin>> plugins;
    std::vector<hostRun::Signal> expected;
    std::vector<float> differences (instanceCount);

    PluginRig rig;
    rig.renderOffline();
    rig.prepare (sampleRate, blockSize);
    rig.set (2, Settings::Parameter::active, 1.0f);

    for (std::size_t index = 0; index < instanceCount; ++index)
    {
        const auto gainDb = 0.4f * static_cast<float> (index) - 3.8f;
        rig.set (2, Settings::Parameter::gain, gainDb);
        rig.settle();
        rig.runSilence (settleFrames, blockSize);
        expected.push_back (rig.run (input, blockSize));

        plugins.push_back (HostedPlugin::open (GetParam()));
        plugins.back()->prepare (sampleRate, blockSize);
        hostRun::settle (*plugins.back(), 2, blockSize);
        boost (*plugins.back(), gainDb / 24.0f + 0.5f);
    }

    std::vector<std::thread> threads;

    for (std::size_t first = 0; first < threadCount; ++first)
        threads.emplace_back (
            [&, first]
            {
                for (auto index = first; index < instanceCount; index += threadCount)
                    differences[index] =
                        hostRun::differenceOnceDesigned (*plugins[index], input, expected[index], blockSize);
            });

    for (auto& thread : threads)
        thread.join();

    for (std::size_t index = 0; index < instanceCount; ++index)
    {
        EXPECT_EQ (differences[index], 0.0f) << "instance " << index;

        if (index > 0)
        {
            EXPECT_GT (hostRun::differenceFromDelayed (expected[index], expected[index - 1], 0), 0.001f);
        }
    }
}

TEST_P (HostBehaviourTest, aStateSavedInAnotherProcessBringsEveryParameterAndTheSoundBack)
{
    const auto state = ChunkHelper::stateFromAnotherProcess (GetParam());
    ASSERT_FALSE (state.empty());

    const auto reference = HostedPlugin::open (GetParam());
    reference->prepare (sampleRate, blockSize);
    hostRun::settle (*reference, 2, blockSize);
    ChunkHelper::applySettings (*reference);
    hostRun::settle (*reference, 2, blockSize);

    plugin->setState (state);
    start();
    EXPECT_EQ (plugin->state(), reference->state());

    const auto input = signals::noise (2, 8192, 33);
    EXPECT_TRUE (hostRun::soundTheSameOnceDesigned (*reference, *plugin, input, 228, blockSize));
}

TEST_P (HostBehaviourTest, blocksWithoutASampleChangeNothing)
{
    const auto input = signals::noise (2, 8192, 34);
    auto turn = 0;
    start();

    const auto output = hostRun::run (*plugin, input, [&turn] { return turn++ % 3 == 0 ? 0 : 100; });
    EXPECT_EQ (hostRun::differenceFromDelayed (output, input, trueDelay), 0.0f);
}

TEST_P (HostBehaviourTest, inputThatIsNoNumberOrTooLargeLeavesNothingBehind)
{
    start();
    boost (*plugin);

    // Before anything is written down, the bell is there.
    const auto clean = signals::noise (2, 8192, 35);
    const auto expected = boostedByTheProcessor (clean);
    ASSERT_EQ (hostRun::differenceOnceDesigned (*plugin, clean, expected, blockSize), 0.0f);

    for (const auto bad : { std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::infinity(),
                            -std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::max() })
    {
        auto input = signals::impulse (2, 4096, 0);
        input[0][700] = bad;
        input[1][900] = bad;
        const auto output = hostRun::run (*plugin, input, blockSize);

        for (const auto& channel : output)
            for (std::size_t index = 900 + trueDelay + longestFilter; index < channel.size(); ++index)
                ASSERT_TRUE (std::isfinite (channel[index])) << "at " << index << " after " << bad;

        // The recursive rate filters take longer to forget 1e9 than to be finite.
        for (int round = 0; round < 8; ++round)
            hostRun::settle (*plugin, 2, blockSize);

        EXPECT_LE (hostRun::differenceFromDelayed (hostRun::run (*plugin, clean, blockSize), expected, 0), 1.0e-6f)
            << "after " << bad;
    }
}

INSTANTIATE_TEST_SUITE_P (Formats,
                          HostBehaviourTest,
                          testing::Values (PluginFormat::vst2, PluginFormat::vst3, PluginFormat::lv2),
                          [] (const auto& tested) { return nameOf (tested.param); });

/** What only the classic interface has: numbers that hosts send and expect, written out. */
class ClassicInterfaceTest : public testing::Test
{
protected:
    static constexpr int setBypassOpcode = 44;
    static constexpr int tailSizeOpcode = 52;
    static constexpr int ioChangedOpcode = 13;

    /** What double precision's rounding leaves where single precision has a zero. */
    static constexpr float largestRounding = 1.0e-14f;

    [[nodiscard]] hostRun::Signal run (const hostRun::Signal& input)
    {
        auto output = input;
        const auto length = static_cast<int> (input[0].size());

        for (int start = 0; start < length; start += blockSize)
        {
            const float* in[] { input[0].data() + start, input[1].data() + start };
            float* out[] { output[0].data() + start, output[1].data() + start };
            host.process (in, out, 2, std::min (blockSize, length - start));
        }

        return output;
    }

    void settle() { std::ignore = run (hostRun::Signal (2, std::vector<float> (settleFrames, 0.0f))); }

    /** Whether the plug-in gives this for the input once its workers are done. */
    [[nodiscard]] bool comesToSoundAs (const hostRun::Signal& expected, const hostRun::Signal& input)
    {
        return hostRun::comesTrue (
            [&]
            {
                settle();
                return hostRun::differenceFromDelayed (run (input), expected, 0) == 0.0f;
            });
    }

    void set (const std::string& name, float value)
    {
        const auto index = host.findParameter (name);
        ASSERT_GE (index, 0) << name;
        host.setParameter (index, value);
    }

    Vst2Host host { libraryPathOf (PluginFormat::vst2) };
};

TEST_F (ClassicInterfaceTest, theHostsBypassSwitchActs)
{
    const auto input = signals::noise (2, 8192, 41);
    host.setOffline (true);
    host.prepare (sampleRate, blockSize);
    set ("Band 3 Active", 1.0f);
    set ("Band 3 Gain", loudest);
    set ("Output Gain", 0.25f);
    const auto equalised = boostedByTheProcessor (input, 0.25f);
    EXPECT_GT (hostRun::differenceFromDelayed (equalised, input, trueDelay), 0.1f);
    ASSERT_TRUE (comesToSoundAs (equalised, input));

    EXPECT_EQ (host.dispatch (setBypassOpcode, 0, 1), 1);
    settle();
    EXPECT_LT (hostRun::differenceFromDelayed (run (input), input, trueDelay), largestRounding);

    EXPECT_EQ (host.dispatch (setBypassOpcode, 0, 0), 1);
    settle();
    EXPECT_EQ (hostRun::differenceFromDelayed (run (input), equalised, 0), 0.0f);
}

TEST_F (ClassicInterfaceTest, theHostHearsOfANewLatencyByItsNumber)
{
    host.prepare (sampleRate, blockSize);
    settle();

    // The first latency is told late as well, and what the FIFOs add to it.
    EXPECT_TRUE (host.waitForCall (ioChangedOpcode, 0, std::chrono::seconds (20)));
    EXPECT_TRUE (hostRun::comesTrue ([&] { return host.latency() == 178; }));
    const auto before = host.callCount (ioChangedOpcode);
    set ("Mix/Master Mode", 1.0f);

    EXPECT_TRUE (host.waitForCall (ioChangedOpcode, before, std::chrono::seconds (20)));
    EXPECT_TRUE (hostRun::comesTrue ([&] { return host.latency() == 278; }));
}

TEST_F (ClassicInterfaceTest, thereIsNoTail)
{
    EXPECT_EQ (host.dispatch (tailSizeOpcode), 0);
}

TEST_F (ClassicInterfaceTest, processingWithoutAnySetUpGivesTheDelayedInput)
{
    // The interface's own defaults hold: 44100 Hz and 1024 samples.
    const auto input = signals::noise (2, 4096, 42);
    EXPECT_EQ (hostRun::differenceFromDelayed (run (input), input, trueDelay), 0.0f);
}

TEST_F (ClassicInterfaceTest, sameBufferForInputAndOutputGivesTheSame)
{
    const auto input = signals::noise (2, 4096, 43);
    auto signal = input;
    host.prepare (sampleRate, blockSize);

    for (int start = 0; start < 4096; start += blockSize)
    {
        float* channels[] { signal[0].data() + start, signal[1].data() + start };
        host.process (channels, channels, 2, blockSize);
    }

    EXPECT_EQ (hostRun::differenceFromDelayed (signal, input, trueDelay), 0.0f);
}

TEST_F (ClassicInterfaceTest, parametersSetByAnotherThreadWhileAudioRunsDoNoHarm)
{
    host.prepare (sampleRate, blockSize);
    std::atomic<bool> stop { false };
    std::thread automation (
        [&]
        {
            for (int turn = 0; ! stop; ++turn)
                for (int index = 0; index < host.parameterCount(); ++index)
                    host.setParameter (index, static_cast<float> ((turn * 7 + index) % 11) / 10.0f);
        });

    const auto output = run (signals::noise (2, 1 << 17, 44));
    stop = true;
    automation.join();

    for (const auto& channel : output)
        for (const auto sample : channel)
            ASSERT_TRUE (std::isfinite (sample));
}
} // namespace
