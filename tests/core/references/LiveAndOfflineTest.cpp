#include "core/references/ReferenceTrackModel.h"

#include "support/LiveRig.h"
#include "support/SoundFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

// What the plug-in hears while a mix plays, and what it reads of the same mix as a reference, must be the same figures,
// or every target would be off by the difference. They are as long as the mix plays from the start of a measurement at
// the session's rate. Where they are not, it is for these reasons:
// - a band that never passed the gate stays at -70 live, and reads minus infinity as a reference;
// - a reference of another rate went through a conversion, whose loss of treble a table gives back on average only;
// - live the measurement goes on: it covers what the last five minutes brought, not one piece.

namespace
{
constexpr auto rate = 44100.0;
constexpr int blockSize = 512;

class LiveAndOfflineTest : public testing::Test
{
protected:
    LiveAndOfflineTest() { live.rig.prepare (rate, blockSize); }

    /** Loads a file as a reference, measures it, and plays it to the live analysis. */
    void measureBothWays (const std::string& path)
    {
        auto& model = live.processor.referenceTracks;
        model.enqueue ({ path, {}, {}, false });
        PluginRig::serveMessagesUntil ([&] { return ! model.isLoading(); });
        track = model.selectedTrack();
        ASSERT_NE (track, nullptr);
        track->analyse ([] {});
        const auto samples = track->samples();
        PluginRig::Signal signal { { samples.left, samples.left + samples.count } };
        const auto* right = samples.right != nullptr ? samples.right : samples.left;
        signal.emplace_back (right, right + samples.count);
        live.feed (signal, blockSize);
    }

    TemporaryFolder folder;
    LiveRig live;
    ReferenceTrackModel::TrackPtr track;
};

TEST_F (LiveAndOfflineTest, aMixMeasuresTheSameWhenItPlaysAndAsAReference)
{
    convertWithSox (recordedLoop(), "-b 24", folder.path ("mix.wav"), "repeat 5");
    measureBothWays (folder.path ("mix.wav"));
    const auto reading = track->reading();
    EXPECT_NEAR (live.processor.loudnessMeters().inputLoudness(), reading.lufs, 0.1f);

    for (std::size_t band = 0; band < reading.bands.size(); ++band)
        EXPECT_NEAR (live.levels()[band], reading.bands[band], 0.1f) << "band " << band;
}

TEST_F (LiveAndOfflineTest, whatNeverPassedTheGateDiffers)
{
    convertWithSox (recordedLoop(),
                    "-b 24",
                    folder.path ("dull.wav"),
                    "lowpass -1 500 repeat 9 lowpass 300 lowpass 300 lowpass 300 lowpass 300");
    measureBothWays (folder.path ("dull.wav"));
    EXPECT_EQ (track->reading().bands[8], -std::numeric_limits<float>::infinity());
    EXPECT_EQ (live.levels()[8], -70.0f);
    EXPECT_NEAR (live.levels()[0], track->reading().bands[0], 0.1f);
}

TEST_F (LiveAndOfflineTest, aConversionLeavesLessThanItsTableGivesBack)
{
    convertWithSox (recordedLoop(), "-b 24 -r 96000", folder.path ("mix.wav"), "repeat 5");
    measureBothWays (folder.path ("mix.wav"));

    // The samples are the converted ones in both ways, and the correction comes on top of one.
    const auto reading = track->reading();

    for (std::size_t band = 0; band < 8; ++band)
        EXPECT_NEAR (live.levels()[band], reading.bands[band], 0.1f) << "band " << band;

    EXPECT_NEAR (live.levels()[8], reading.bands[8] - 0.55f, 0.1f);
}
} // namespace
