#include "hosts/HostRun.h"

#include <gtest/gtest.h>

#include <random>
#include <tuple>

namespace
{
/** Written out on purpose: hosts line tracks up by these. The default is linear phase in Master mode. */
struct RateCase
{
    double sampleRate;
    int masterLatency;
    int mixLatency;
    int masterMinimumLatency;
    int mixMinimumLatency;
    int factor;

    [[nodiscard]] int trueDelay (bool mix, bool linear) const
    {
        return factor + (mix ? linear ? mixLatency : mixMinimumLatency : linear ? masterLatency : masterMinimumLatency);
    }
};

constexpr RateCase rateCases[] { { 44100.0, 174, 274, 144, 224, 4 },    { 48000.0, 174, 274, 144, 224, 4 },
                                 { 88200.0, 324, 524, 264, 424, 4 },    { 96000.0, 324, 524, 264, 424, 4 },
                                 { 176400.0, 864, 1404, 864, 1404, 8 }, { 192000.0, 864, 1404, 864, 1404, 8 } };

constexpr int blockSizes[] { 1, 3, 64, 441, 512, 8192 };
constexpr int signalLength = 12000;
constexpr auto modeName = "Mix/Master Mode";
constexpr auto phaseName = "Linear/Minimum Phase";

/** Runs silence until the plug-in reports this latency; false, with what it reports instead, if it does not. */
testing::AssertionResult reportsOnceBlocksHaveCome (HostedPlugin& plugin, int latency)
{
    const auto reported = hostRun::comesTrue (
        [&]
        {
            hostRun::settle (plugin, 2, 512);
            return plugin.waitForLatency (latency, std::chrono::milliseconds (200));
        });

    return reported ? testing::AssertionSuccess()
                    : testing::AssertionFailure() << plugin.reportedLatency() << " instead of " << latency;
}

class DelayTest : public testing::TestWithParam<std::tuple<PluginFormat, RateCase>>
{
protected:
    [[nodiscard]] PluginFormat format() const { return std::get<0> (GetParam()); }
    [[nodiscard]] const RateCase& rate() const { return std::get<1> (GetParam()); }

    std::unique_ptr<HostedPlugin> plugin = HostedPlugin::open (format());
};

TEST_P (DelayTest, flatOutputIsTheInputDelayedToTheBitForEveryBlockSize)
{
    const auto input = signals::noise (2, signalLength, 11);

    for (const auto mixMode : { false, true })
        for (const auto blockSize : blockSizes)
        {
            plugin->prepare (rate().sampleRate, blockSize);
            plugin->setParameter (modeName, mixMode ? 1.0f : 0.0f);

            const auto trueDelay = (mixMode ? rate().mixLatency : rate().masterLatency) + rate().factor;

            // New lengths wait for a worker that is still designing for the old ones. Without a change nothing may
            // wait.
            if (mixMode)
                std::ignore =
                    hostRun::differenceOnceDesigned (*plugin, input, signals::delayedBy (input, trueDelay), blockSize);

            hostRun::settle (*plugin, 2, blockSize);
            const auto output = hostRun::run (*plugin, input, blockSize);
            EXPECT_EQ (hostRun::differenceFromDelayed (output, input, trueDelay), 0.0f)
                << (mixMode ? "Mix" : "Master") << " in blocks of " << blockSize;
        }
}

TEST_P (DelayTest, flatOutputIsTheInputDelayedToTheBitForBlocksOfRandomSize)
{
    constexpr int largest = 700;
    const auto input = signals::noise (2, signalLength, 12);
    std::mt19937 generator (13);
    std::uniform_int_distribution<int> anySize (1, largest);

    plugin->prepare (rate().sampleRate, largest);
    hostRun::settle (*plugin, 2, largest);
    const auto output = hostRun::run (*plugin, input, [&] { return anySize (generator); });
    EXPECT_EQ (hostRun::differenceFromDelayed (output, input, rate().masterLatency + rate().factor), 0.0f);
}

TEST_P (DelayTest, tenActiveBandsWithoutGainChangeNothing)
{
    const auto input = signals::noise (2, signalLength, 16);
    plugin->prepare (rate().sampleRate, 512);

    for (int band = 1; band <= 10; ++band)
    {
        const auto name = "Band " + std::to_string (band) + " ";
        plugin->setAndProcess (name + "Active", 1.0f);
        plugin->setAndProcess (name + "Frequency", static_cast<float> (band) / 10.0f);
        plugin->setAndProcess (name + "High Shelf", band > 8 ? 1.0f : 0.0f);
        plugin->setAndProcess (name + "Mid/Side", band == 5 ? 0.0f : 0.5f);
    }

    hostRun::settle (*plugin, 2, 512);
    const auto output = hostRun::run (*plugin, input, 512);
    EXPECT_EQ (hostRun::differenceFromDelayed (output, input, rate().masterLatency + rate().factor), 0.0f);
}

TEST_P (DelayTest, monoIsDelayedToTheBitWhereTheFormatHasIt)
{
    if (format() == PluginFormat::lv2)
    {
        // Its ports are fixed when the bundle is made: two in, two out.
        EXPECT_FALSE (plugin->setChannelCount (1));
        return;
    }

    const auto input = signals::noise (1, signalLength, 14);
    ASSERT_TRUE (plugin->setChannelCount (1));

    for (const auto blockSize : blockSizes)
    {
        plugin->prepare (rate().sampleRate, blockSize);
        hostRun::settle (*plugin, 1, blockSize);
        const auto output = hostRun::run (*plugin, input, blockSize);
        EXPECT_EQ (hostRun::differenceFromDelayed (output, input, rate().masterLatency + rate().factor), 0.0f)
            << "in blocks of " << blockSize;
    }
}

TEST_P (DelayTest, preparesWithTheDescribedReportAndCorrectsItOnceBlocksHaveCome)
{
    plugin->prepare (rate().sampleRate, 512);

    if (format() != PluginFormat::lv2) // where the latency comes with a block
    {
        EXPECT_TRUE (plugin->waitForLatency (rate().masterLatency)) << plugin->reportedLatency();
    }

    EXPECT_TRUE (reportsOnceBlocksHaveCome (*plugin, rate().masterLatency + rate().factor));
    plugin->prepare (rate().sampleRate, 512);
    EXPECT_TRUE (reportsOnceBlocksHaveCome (*plugin, rate().masterLatency + rate().factor));
}

TEST_P (DelayTest, aHostThatLinesUpByTheReportNullsAnImpulseAgainstTheDryPath)
{
    const auto dry = signals::impulse (2, signalLength, 0);

    for (const auto mix : { false, true })
        for (const auto linear : { false, true })
        {
            plugin = nullptr;
            plugin = HostedPlugin::open (format());
            plugin->setParameter (modeName, mix ? 1.0f : 0.0f);
            plugin->setParameter (phaseName, linear ? 1.0f : 0.0f);
            plugin->prepare (rate().sampleRate, 512);
            EXPECT_TRUE (reportsOnceBlocksHaveCome (*plugin, rate().trueDelay (mix, linear)));

            // New lengths may still wait for a worker's design, so the impulse is sent until it comes at all.
            const auto lined = signals::delayedBy (dry, plugin->reportedLatency());
            EXPECT_EQ (hostRun::differenceOnceDesigned (*plugin, dry, lined, 512), 0.0f)
                << (mix ? "Mix" : "Master") << (linear ? " linear" : " minimum");
        }
}

TEST_P (DelayTest, aChangeOfModeReportsTheWholeDelayAtOnce)
{
    plugin->prepare (rate().sampleRate, 512);
    hostRun::settle (*plugin, 2, 512);
    plugin->setParameter (modeName, 1.0f);

    // A parameter may travel with the next block.
    hostRun::settle (*plugin, 2, 512);

    if (format() == PluginFormat::lv2)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds (20);

        while (plugin->reportedLatency() != rate().mixLatency + rate().factor && std::chrono::steady_clock::now() < end)
            hostRun::settle (*plugin, 2, 512);
    }

    EXPECT_TRUE (plugin->waitForLatency (rate().mixLatency + rate().factor)) << plugin->reportedLatency();
}

/** The third interface forbids hosts to do this, and the framework's wrapper for it counts on that. */
class LargerBlocksTest : public DelayTest
{
};

TEST_P (LargerBlocksTest, blocksLargerThanAnnouncedKeepTheDelay)
{
    const auto input = signals::noise (2, signalLength, 15);
    plugin->prepare (rate().sampleRate, 64);
    hostRun::settle (*plugin, 2, 64);
    const auto output = hostRun::run (*plugin, input, 1000);
    EXPECT_EQ (hostRun::differenceFromDelayed (output, input, rate().masterLatency + rate().factor), 0.0f);
}

std::string nameOfCase (const testing::TestParamInfo<std::tuple<PluginFormat, RateCase>>& tested)
{
    return nameOf (std::get<0> (tested.param)) + "_"
           + std::to_string (static_cast<int> (std::get<1> (tested.param).sampleRate));
}

INSTANTIATE_TEST_SUITE_P (Formats,
                          DelayTest,
                          testing::Combine (testing::Values (PluginFormat::vst2, PluginFormat::vst3, PluginFormat::lv2),
                                            testing::ValuesIn (rateCases)),
                          nameOfCase);

INSTANTIATE_TEST_SUITE_P (Formats,
                          LargerBlocksTest,
                          testing::Combine (testing::Values (PluginFormat::vst2, PluginFormat::lv2),
                                            testing::ValuesIn (rateCases)),
                          nameOfCase);
} // namespace
