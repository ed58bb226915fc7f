#include "hosts/HostRun.h"
#include "support/Fixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
constexpr int blockSize = 512;
constexpr int signalLength = 16384;

/** The independent figures hold within this, above the level where rounding decides. */
constexpr double toleranceDb = 0.01;
constexpr double lowestComparedDb = -60.0;

constexpr PluginFormat allFormats[] { PluginFormat::vst2, PluginFormat::vst3, PluginFormat::lv2 };

struct Change
{
    std::string id;
    float plainValue;
};

/** Ten bands over the whole range: bells and a shelf, in stereo, mid and side. */
std::vector<Change> tenBands()
{
    std::vector<Change> changes { { "paramMode", 1.0f }, { "paramPhase", 1.0f }, { "paramOutputGainDb", -1.5f } };

    for (int band = 0; band < 10; ++band)
    {
        const auto number = std::to_string (band);
        changes.push_back ({ "band_active_" + number, 1.0f });
        changes.push_back ({ "band_frequency_" + number, 400.0f * std::pow (1.5f, static_cast<float> (band)) });
        changes.push_back ({ "band_Q_" + number, 1.0f + 0.2f * static_cast<float> (band) });
        changes.push_back ({ "band_midside_" + number, band == 3 ? 0.0f : band == 6 ? 1.0f : 0.5f });
        changes.push_back ({ "band_highshelf_" + number, band == 9 ? 1.0f : 0.0f });
        changes.push_back ({ "band_gain_" + number, band % 2 == 0 ? 5.0f : -4.0f });
    }

    return changes;
}

/** Applies changes to a hosted plug-in, by the names and ranges of the processor of this process. */
void apply (HostedPlugin& plugin, VelmoraAudioProcessor& processor, const std::vector<Change>& changes)
{
    for (const auto& change : changes)
    {
        const auto* parameter = processor.getAPVTS().getParameter (change.id);
        plugin.setAndProcess (parameter->getName (128).toStdString(), plugin.normalise (*parameter, change.plainValue));
    }
}

class EqualiserTest : public testing::TestWithParam<PluginFormat>
{
protected:
    /** What the processor itself makes of a signal with these settings, offline. */
    [[nodiscard]] static hostRun::Signal
    renderedByTheProcessor (const std::vector<Change>& changes, double sampleRate, const hostRun::Signal& input)
    {
        PluginRig processor;
        processor.renderOffline();
        processor.prepare (sampleRate, blockSize);

        for (const auto& change : changes)
            processor.set (change.id, change.plainValue);

        processor.settle();
        processor.runSilence (signalLength, blockSize);
        return processor.run (input, blockSize);
    }

    std::unique_ptr<HostedPlugin> plugin = HostedPlugin::open (GetParam());
    PluginRig rig;
};

TEST_P (EqualiserTest, tenBandsSoundAsFromTheProcessorItself)
{
    const auto input = signals::noise (2, signalLength, 21);
    plugin->prepare (48000.0, blockSize);

    // The first block tells the plug-in that it renders offline, where updates act at once.
    hostRun::settle (*plugin, 2, blockSize);
    apply (*plugin, rig.processor, tenBands());

    const auto expected = renderedByTheProcessor (tenBands(), 48000.0, input);
    EXPECT_EQ (hostRun::differenceOnceDesigned (*plugin, input, expected, blockSize), 0.0f);

    // A setting that did nothing would pass the line above.
    EXPECT_GT (hostRun::differenceFromDelayed (expected, input, 278), 0.05f);
}

TEST_P (EqualiserTest, meetsTheIndependentFigures)
{
    for (const auto* name : { "three_bells_96_mix_lin", "mid_cut_side_boost_48_mix_lin", "high_shelf_8k_44_mix_min" })
    {
        const auto cases = readFixture ("eq_cases.json");
        const auto found =
            std::find_if (cases.begin(), cases.end(), [&] (const auto& entry) { return entry["name"] == name; });
        ASSERT_NE (found, cases.end()) << name;

        std::vector<Change> changes;
        for (const auto& id : (*found)["setOrder"])
            changes.push_back ({ id.template get<std::string>(),
                                 (*found)["params"][id.template get<std::string>()].template get<float>() });

        plugin = HostedPlugin::open (GetParam());
        plugin->prepare ((*found)["rate"], blockSize);
        hostRun::settle (*plugin, 2, blockSize);
        apply (*plugin, rig.processor, changes);

        // What is expected is compared with the figures below; the plug-in may still be designing.
        const auto impulse = signals::impulse (2, signalLength, 0);
        const auto expected = renderedByTheProcessor (changes, (*found)["rate"], impulse);
        EXPECT_EQ (hostRun::differenceOnceDesigned (*plugin, impulse, expected, blockSize), 0.0f) << name;

        const auto response = hostRun::run (*plugin, impulse, blockSize)[0];
        const auto& frequencies = (*found)["frequenciesHz"];

        for (std::size_t index = 0; index < frequencies.size(); ++index)
        {
            const auto wanted = numberOf ((*found)["responseDb"]["L_to_L"][index]);

            if (wanted > lowestComparedDb)
            {
                EXPECT_NEAR (
                    signals::magnitudeDb ({ response.begin(), response.end() }, frequencies[index], (*found)["rate"]),
                    wanted,
                    toleranceDb)
                    << name << " at " << frequencies[index] << " Hz";
            }
        }
    }
}

TEST_P (EqualiserTest, aRunningPluginEndsOnTheLastValuesThroughItsWorkers)
{
    const auto impulse = signals::impulse (2, 4096, 0);
    const auto expected = renderedByTheProcessor (tenBands(), 48000.0, impulse);

    plugin = HostedPlugin::open (GetParam(), false);
    plugin->prepare (48000.0, blockSize);
    hostRun::settle (*plugin, 2, blockSize);
    apply (*plugin, rig.processor, tenBands());

    EXPECT_EQ (hostRun::differenceOnceDesigned (*plugin, impulse, expected, blockSize), 0.0f);
}

INSTANTIATE_TEST_SUITE_P (Formats,
                          EqualiserTest,
                          testing::ValuesIn (allFormats),
                          [] (const auto& tested) { return nameOf (tested.param); });
} // namespace
