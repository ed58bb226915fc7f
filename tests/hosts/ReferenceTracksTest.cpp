#include "hosts/TrackSession.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;
using TrackSession::Order;

/** Three files, with ranges of all kinds in two of them, as a session asks for them. */
class ReferenceTracksTest : public testing::Test
{
protected:
    ReferenceTracksTest()
    {
        writeFloatWav (folder.path ("first mix.wav"), signals::noise (2, 480000, 1), 48000.0);
        writeFloatWav (folder.path ("second.wav"), signals::noise (1, 441000, 2), 44100.0);
        writeFloatWav (folder.path ("third.wav"), signals::noise (2, 96000, 3), 96000.0);
    }

    [[nodiscard]] std::string
    element (const std::string& file, const std::string& name, const std::string& ranges) const
    {
        return "<reference-track display-name=\"" + name + "\" file-path=\"" + folder.path (file) + "\">" + ranges
               + "</reference-track>";
    }

    [[nodiscard]] std::vector<char> session() const
    {
        return TrackSession::stateOf (
            { element ("first mix.wav",
                       "FIRST MIX",
                       "<loop start-samples=\"1000\" end-samples=\"90000\" active=\"1\"/>"
                       "<loop start-samples=\"100000\" end-samples=\"200000\" active=\"0\"/>"),
              element ("second.wav", "SECOND", ""),
              element ("third.wav", "THIRD", "<loop start-samples=\"5\" end-samples=\"40000\" active=\"0\"/>") });
    }

    TemporaryFolder folder;
};

TEST_F (ReferenceTracksTest, comeBackInANewProcessWhetherTheHostPreparesOrRestoresFirst)
{
    const auto plugin = HostedPlugin::open (PluginFormat::vst3);
    const auto saved = TrackSession::stateOnceLoaded (*plugin, { session() });
    const auto tracks = TrackSession::tracksIn (saved);
    ASSERT_EQ (tracks.size(), 3u);
    EXPECT_THAT (tracks[0], HasSubstr ("display-name=\"FIRST MIX\""));
    EXPECT_THAT (tracks[0], HasSubstr ("<loop start-samples=\"1000\" end-samples=\"90000\" active=\"1\"/>"));
    EXPECT_THAT (tracks[0], HasSubstr ("<loop start-samples=\"100000\" end-samples=\"200000\" active=\"0\"/>"));
    EXPECT_THAT (tracks[2], HasSubstr ("<loop start-samples=\"5\" end-samples=\"40000\" active=\"0\"/>"));
    EXPECT_THAT (tracks[2], HasSubstr ("selected=\"1\""));

    for (const auto order : { Order::prepareFirst, Order::restoreFirst })
        EXPECT_THAT (TrackSession::tracksIn (TrackSession::throughAnotherProcess (saved, order, 1)),
                     ElementsAreArray (tracks));
}

TEST_F (ReferenceTracksTest, aStateThatIsLoadedTwiceBringsEachNameOnce)
{
    for (const auto order : { Order::prepareFirst, Order::restoreFirst })
    {
        const auto tracks = TrackSession::tracksIn (TrackSession::throughAnotherProcess (session(), order, 2));
        ASSERT_EQ (tracks.size(), 3u);
        EXPECT_THAT (tracks[1], HasSubstr ("display-name=\"SECOND\""));
    }
}

TEST_F (ReferenceTracksTest, aFileThatIsGoneLeavesTheOthers)
{
    auto state = session();
    ASSERT_TRUE (folder.file ("second.wav").deleteFile());
    const auto tracks = TrackSession::tracksIn (TrackSession::throughAnotherProcess (state, Order::restoreFirst, 1));
    ASSERT_EQ (tracks.size(), 2u);
    EXPECT_THAT (tracks[0], HasSubstr ("FIRST MIX"));
    EXPECT_THAT (tracks[1], HasSubstr ("THIRD"));
}

TEST_F (ReferenceTracksTest, anInstanceThatIsNeverPreparedKeepsWhatItWasAskedFor)
{
    const auto plugin = HostedPlugin::open (PluginFormat::vst3);
    plugin->setState (session());
    EXPECT_EQ (TrackSession::tracksIn (plugin->state()).size(), 3u);
}

TEST_F (ReferenceTracksTest, anInstanceMayGoInTheMiddleOfALoad)
{
    // The files are long for a load and nobody waits for it.
    writeFloatWav (folder.path ("long.wav"), signals::noise (2, 48000 * 60, 4), 44100.0);

    for (int round = 0; round < 10; ++round)
    {
        const auto plugin = HostedPlugin::open (PluginFormat::vst3);
        plugin->setState (TrackSession::stateOf ({ element ("long.wav", "LONG", "") }));
        plugin->prepare (48000.0, 512);
        juce::AudioBuffer<float> buffer (2, 512);
        buffer.clear();

        for (int block = 0; block < round * 3; ++block)
            plugin->process (buffer);

        EXPECT_EQ (TrackSession::tracksIn (plugin->state()).size(), 1u);
    }
}
} // namespace
