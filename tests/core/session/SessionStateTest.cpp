#include "support/SessionRig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace
{
using sessions::load;
using sessions::loadElements;
using sessions::loadText;
using sessions::save;
using testing::ElementsAre;

std::vector<std::string> childTags (const juce::XmlElement& element)
{
    std::vector<std::string> tags;

    for (const auto* child : element.getChildIterator())
        tags.push_back (child->getTagName().toStdString());

    return tags;
}

std::vector<std::string> attributeNames (const juce::XmlElement& element)
{
    std::vector<std::string> names;

    for (int index = 0; index < element.getNumAttributes(); ++index)
        names.push_back (element.getAttributeName (index).toStdString());

    return names;
}

class SessionStateTest : public testing::Test
{
protected:
    [[nodiscard]] std::unique_ptr<juce::XmlElement> saved() { return parseBlock (save (processor)); }

    PluginRig rig;
    VelmoraAudioProcessor& processor = rig.processor;
    SessionState& state = processor.sessionState();
};

//======================================================================================================================
// What is written

TEST_F (SessionStateTest, aPlainSessionHoldsTheParametersAndSettingsAndNothingElse)
{
    const auto root = saved();
    EXPECT_TRUE (root->hasTagName ("ZVQ_Processor"));

    auto expected = std::vector<std::string> (86, "PARAM");
    expected.push_back ("settings");
    EXPECT_EQ (childTags (*root), expected);
    EXPECT_EQ (attributeNames (*root->getFirstChildElement()), (std::vector<std::string> { "id", "value" }));
}

TEST_F (SessionStateTest, everyParameterIsSavedOnce)
{
    const auto root = saved();
    std::set<juce::String> ids;

    for (const auto* child : root->getChildWithTagNameIterator ("PARAM"))
        ids.insert (child->getStringAttribute ("id"));

    EXPECT_EQ (ids.size(), 86u);

    for (const auto& row : ParameterTable::rows())
        EXPECT_EQ (ids.count (row.id), 1u) << row.id;
}

TEST_F (SessionStateTest, tracksSettingsAndStoresFollowTheParametersInThisOrder)
{
    sessions::fillSession (rig);
    const auto root = saved();

    auto expected = std::vector<std::string> (86, "PARAM");
    expected.insert (expected.end(),
                     { "reference-track", "reference-track", "settings", "parameterStoreA", "parameterStoreB" });
    EXPECT_EQ (childTags (*root), expected);
}

TEST_F (SessionStateTest, settingsAttributesComeInTheOrderTheyAlwaysHad)
{
    const auto root = saved();
    EXPECT_THAT (attributeNames (*root->getChildByName ("settings")),
                 ElementsAre ("lufs-overall",
                              "lufs-0",
                              "lufs-1",
                              "lufs-2",
                              "lufs-3",
                              "lufs-4",
                              "lufs-5",
                              "lufs-6",
                              "lufs-7",
                              "lufs-8",
                              "lufs-9",
                              "width",
                              "height",
                              "target-set-user",
                              "db-scale",
                              "comparison-A-selected",
                              "max-thread-priority"));
}

TEST_F (SessionStateTest, settingsAreWrittenToTheLetter)
{
    sessions::fillSession (rig);
    const auto text = unwrapText (save (processor));

    EXPECT_NE (text.find ("<settings lufs-overall=\"-9.75\" lufs-0=\"-20.5\" lufs-1=\"-21.25\" lufs-2=\"-22.0\" "
                          "lufs-3=\"-23.125\" lufs-4=\"-24.0\" lufs-5=\"-25.0\" lufs-6=\"-26.10000038146973\" "
                          "lufs-7=\"-28.70000076293945\" lufs-8=\"-33.29999923706055\" lufs-9=\"-38.90000152587891\" "
                          "width=\"801\" height=\"702\" target-set-user=\"1\" db-scale=\"6.0\" "
                          "comparison-A-selected=\"0\" max-thread-priority=\"7\"/>"),
               std::string::npos)
        << text.substr (text.find ("<settings"), 500);
}

TEST_F (SessionStateTest, tracksAndLoopsAreWrittenToTheLetter)
{
    sessions::fillSession (rig);
    const auto text = unwrapText (save (processor));

    EXPECT_NE (text.find ("<reference-track file-name=\"a &quot;song&quot;.wav\" display-name=\"First &amp; best\" "
                          "file-path=\"/music/a &quot;song&quot;.wav\" selected=\"0\">"
                          "<loop start-samples=\"100\" end-samples=\"2000\" active=\"1\"/>"
                          "<loop start-samples=\"3000\" end-samples=\"4000\" active=\"0\"/></reference-track>"
                          "<reference-track file-name=\"&#252;ber.flac\" display-name=\"\" "
                          "file-path=\"C:\\music\\&#252;ber.flac\" selected=\"1\"/>"),
               std::string::npos)
        << text.substr (text.find ("<reference-track"), 800);
}

TEST_F (SessionStateTest, eachStoreHoldsOneCopyOfTheParameterTree)
{
    sessions::fillSession (rig);
    const auto root = saved();

    for (const auto* tag : { "parameterStoreA", "parameterStoreB" })
    {
        const auto* store = root->getChildByName (tag);
        EXPECT_EQ (store->getNumAttributes(), 0);
        EXPECT_THAT (childTags (*store), ElementsAre ("ZVQ_Processor"));
        EXPECT_EQ (childTags (*store->getFirstChildElement()), std::vector<std::string> (86, "PARAM"));
    }
}

TEST_F (SessionStateTest, aStoreThatIsNotValidIsNotWritten)
{
    loadElements (processor, "<parameterStoreB><ZVQ_Processor/></parameterStoreB>");
    const auto root = saved();
    EXPECT_EQ (root->getChildByName ("parameterStoreA"), nullptr);
    EXPECT_NE (root->getChildByName ("parameterStoreB"), nullptr);
}

//======================================================================================================================
// What is read

TEST_F (SessionStateTest, aSessionComesBackWhole)
{
    sessions::fillSession (rig);
    const auto block = save (processor);

    PluginRig other;
    load (other.processor, block);

    EXPECT_EQ (sessions::parameterValues (other.processor), sessions::parameterValues (processor));
    EXPECT_EQ (sessions::userSetting (other.processor).lufs, -9.75f);
    EXPECT_EQ (sessions::userSetting (other.processor).values, sessions::userSetting (processor).values);
    EXPECT_EQ (other.processor.model.windowWidth, 801);
    EXPECT_EQ (other.processor.model.windowHeight, 702);
    EXPECT_TRUE (other.processor.model.targetSetByUser);
    EXPECT_EQ (other.processor.model.targetScaleDb, 6.0f);
    EXPECT_EQ (other.processor.model.maxThreadPriority, 7);
    EXPECT_FALSE (other.processor.sessionState().comparisonASelected());
    EXPECT_FALSE (other.processor.sessionState().comparisonUsed()) << "is not part of the session";
    EXPECT_TRUE (other.processor.sessionState().hasStore (0));
    EXPECT_TRUE (other.processor.sessionState().hasStore (1));
    EXPECT_EQ (other.processor.target.targetLufs, -9.75f) << "USER SETTING is the preset of this session";
    EXPECT_EQ (other.processor.target.targetValues[3], -23.125f);

    const auto tracks = other.processor.referenceTracks.sessionTracks();
    ASSERT_EQ (tracks.size(), 2u);
    EXPECT_EQ (tracks[0].filePath, "/music/a \"song\".wav");
    EXPECT_EQ (tracks[0].displayName, "First & best");
    ASSERT_EQ (tracks[0].loops.size(), 2u);
    EXPECT_EQ (tracks[0].loops[0].startSamples, 100);
    EXPECT_EQ (tracks[0].loops[0].endSamples, 2000);
    EXPECT_TRUE (tracks[0].loops[0].active);
    EXPECT_EQ (tracks[0].loops[1].startSamples, 3000);
    EXPECT_FALSE (tracks[0].loops[1].active);
    EXPECT_EQ (tracks[1].filePath,
               juce::CharPointer_UTF8 ("C:\\music\\\xc3\xbc"
                                       "ber.flac"));
}

TEST_F (SessionStateTest, writingWhatWasReadGivesTheSameBytes)
{
    sessions::fillSession (rig);
    const auto block = save (processor);

    PluginRig other;
    load (other.processor, block);
    EXPECT_EQ (unwrapText (save (other.processor)), unwrapText (block));
    EXPECT_TRUE (save (other.processor) == block);
}

TEST_F (SessionStateTest, readingWhatANewInstanceWroteChangesNothing)
{
    const auto block = save (processor);
    load (processor, block);
    EXPECT_EQ (unwrapText (save (processor)), unwrapText (block));
}

TEST_F (SessionStateTest, missingSettingsTakeTheirDefaults)
{
    sessions::fillSession (rig);
    processor.model.setStateInformationSet (false, false);
    loadElements (processor, "<settings/>");

    EXPECT_EQ (sessions::userSetting (processor).lufs, 0.0f);
    EXPECT_THAT (sessions::userSetting (processor).values, testing::Each (0.0f));
    EXPECT_EQ (processor.model.windowWidth, 0) << "not the default size";
    EXPECT_EQ (processor.model.windowHeight, 0);
    EXPECT_FALSE (processor.model.targetSetByUser);
    EXPECT_EQ (processor.model.targetScaleDb, 12.0f);
    EXPECT_FALSE (state.comparisonASelected());
    EXPECT_EQ (processor.model.maxThreadPriority, 0);
}

TEST_F (SessionStateTest, aNewInstanceStartsWithAWhileABlockThatSaysNothingMeansB)
{
    EXPECT_TRUE (state.comparisonASelected());
    loadElements (processor, "<settings/>");
    EXPECT_FALSE (state.comparisonASelected());
    loadElements (processor, "<settings comparison-A-selected=\"1\"/>");
    EXPECT_TRUE (state.comparisonASelected());
}

TEST_F (SessionStateTest, aBlockWithoutSettingsLeavesThemAlone)
{
    sessions::fillSession (rig);
    loadElements (processor, "<other width=\"1\"/>");
    EXPECT_EQ (sessions::userSetting (processor).lufs, -9.75f);
    EXPECT_EQ (processor.model.windowWidth, 801);
    EXPECT_EQ (processor.model.maxThreadPriority, 7);
}

TEST_F (SessionStateTest, onlyTheLastSettingsCount)
{
    loadElements (processor,
                  "<settings width=\"900\" height=\"901\" lufs-overall=\"-5.0\" target-set-user=\"1\"/>"
                  "<settings width=\"800\"/>");
    EXPECT_EQ (processor.model.windowWidth, 800);
    EXPECT_EQ (processor.model.windowHeight, 0);
    EXPECT_EQ (sessions::userSetting (processor).lufs, 0.0f);
    EXPECT_FALSE (processor.model.targetSetByUser);
}

TEST_F (SessionStateTest, settingsFurtherDownAreNotRead)
{
    loadElements (processor, "<wrapper><settings width=\"900\"/></wrapper>");
    EXPECT_EQ (processor.model.windowWidth, 680);
}

TEST_F (SessionStateTest, aLoudnessThatIsNotANumberTakesBackTheUsersTarget)
{
    loadElements (processor, "<settings lufs-overall=\"nan\" lufs-4=\"-24.5\" width=\"800\" target-set-user=\"1\"/>");
    EXPECT_TRUE (std::isnan (sessions::userSetting (processor).lufs));
    EXPECT_FALSE (processor.model.targetSetByUser);
    EXPECT_EQ (sessions::userSetting (processor).values[4], -24.5f);
    EXPECT_EQ (processor.model.windowWidth, 800);
}

TEST_F (SessionStateTest, numbersThatAreNotFiniteComeBackAsTheyWere)
{
    constexpr auto infinity = std::numeric_limits<float>::infinity();
    std::array<float, Presets::bandValueCount> levels {};
    levels[0] = std::numeric_limits<float>::quiet_NaN();
    levels[1] = infinity;
    levels[2] = -infinity;
    processor.presets.setUserSetting (-infinity, levels);
    processor.model.targetSetByUser = true;
    const auto block = save (processor);
    EXPECT_NE (unwrapText (block).find ("lufs-overall=\"-inf\" lufs-0=\"nan\" lufs-1=\"inf\" lufs-2=\"-inf\""),
               std::string::npos);

    PluginRig other;
    load (other.processor, block);
    const auto numbers = sessions::userSetting (other.processor);
    EXPECT_EQ (numbers.lufs, -infinity);
    EXPECT_TRUE (std::isnan (numbers.values[0]));
    EXPECT_EQ (numbers.values[1], infinity);
    EXPECT_EQ (numbers.values[2], -infinity);
    EXPECT_TRUE (other.processor.model.targetSetByUser) << "infinite is a number";
    EXPECT_TRUE (save (other.processor) == block);
}

TEST_F (SessionStateTest, aNumberBeyondAFloatIsInfinite)
{
    loadElements (processor, "<settings lufs-overall=\"-1e300\" lufs-0=\"1e300\"/>");
    EXPECT_EQ (sessions::userSetting (processor).lufs, -std::numeric_limits<float>::infinity());
    EXPECT_EQ (sessions::userSetting (processor).values[0], std::numeric_limits<float>::infinity());
}

TEST_F (SessionStateTest, theScaleIsWrittenAsADecimalAndReadAsAWholeNumber)
{
    const auto scaleOf = [this] (const std::string& attribute)
    {
        loadElements (processor, "<settings " + attribute + "/>");
        EXPECT_EQ (processor.model.displayScaleDb, processor.model.targetScaleDb);
        return processor.model.targetScaleDb.load();
    };

    EXPECT_EQ (scaleOf ("db-scale=\"6.0\""), 6.0f);
    EXPECT_EQ (scaleOf ("db-scale=\"6.9\""), 6.0f);
    EXPECT_EQ (scaleOf ("db-scale=\"0.0\""), 12.0f);
    EXPECT_EQ (scaleOf ("db-scale=\"0.9\""), 12.0f);
    EXPECT_EQ (scaleOf ("db-scale=\"nan\""), 12.0f);
    EXPECT_EQ (scaleOf ("db-scale=\"-6\""), 12.0f);
    EXPECT_EQ (scaleOf (""), 12.0f);
}

TEST_F (SessionStateTest, aFractionOfTheScaleIsLostAndNothingElse)
{
    sessions::fillSession (rig);
    processor.model.targetScaleDb = 7.5f;
    auto text = unwrapText (save (processor));
    const auto position = text.find ("db-scale=\"7.5\"");
    ASSERT_NE (position, std::string::npos);

    PluginRig other;
    loadText (other.processor, text);
    text.replace (position, 14, "db-scale=\"7.0\"");
    EXPECT_EQ (unwrapText (save (other.processor)), text);
}

TEST_F (SessionStateTest, fileNameAndSelectionAreWrittenAndNeverRead)
{
    loadElements (processor,
                  "<reference-track file-name=\"other.wav\" file-path=\"/a/b.wav\" selected=\"1\"/>"
                  "<reference-track file-name=\"other.wav\" file-path=\"/a/c.wav\" selected=\"0\"/>");
    const auto root = saved();
    const auto* first = root->getChildByName ("reference-track");
    const auto* second = first->getNextElementWithTagName ("reference-track");
    EXPECT_EQ (first->getStringAttribute ("file-name"), "b.wav");
    EXPECT_EQ (first->getStringAttribute ("selected"), "0");
    EXPECT_EQ (second->getStringAttribute ("file-name"), "c.wav");
    EXPECT_EQ (second->getStringAttribute ("selected"), "1") << "the last to be loaded";
}

TEST_F (SessionStateTest, aLoopWithoutAttributesIsEmptyAndUnused)
{
    loadElements (processor, "<reference-track file-path=\"/a.wav\"><loop/></reference-track>");
    const auto loop = rig.processor.referenceTracks.sessionTracks().at (0).loops.at (0);
    EXPECT_EQ (loop.startSamples, 0);
    EXPECT_EQ (loop.endSamples, 0);
    EXPECT_FALSE (loop.active);
}

TEST_F (SessionStateTest, loopsGetFreshIdsThatAreNotSaved)
{
    const std::string track = "<reference-track file-path=\"/a.wav\"><loop id=\"5\"/><loop/><loop/></reference-track>";
    const auto before = juce::Time::currentTimeMillis();
    loadElements (processor, track + track);
    std::set<juce::int64> ids;

    for (const auto& loaded : rig.processor.referenceTracks.sessionTracks())
        for (const auto& loop : loaded.loops)
        {
            EXPECT_GE (loop.id, before);
            ids.insert (loop.id);
        }

    EXPECT_EQ (ids.size(), 6u);
    const auto root = saved();
    EXPECT_THAT (attributeNames (*root->getChildByName ("reference-track")->getFirstChildElement()),
                 ElementsAre ("start-samples", "end-samples", "active"));
}

TEST_F (SessionStateTest, loadingABlockTwiceQueuesItsTracksTwice)
{
    const std::string tracks = "<reference-track file-path=\"/a.wav\"/><reference-track file-path=\"/b.wav\"/>";
    loadElements (processor, tracks);
    loadElements (processor, tracks);
    std::vector<juce::String> paths;

    for (const auto& track : rig.processor.referenceTracks.sessionTracks())
        paths.push_back (track.filePath);

    EXPECT_THAT (paths, ElementsAre ("/a.wav", "/b.wav", "/a.wav", "/b.wav"));
}

TEST_F (SessionStateTest, tracksSurviveSavesAndLoadsBeforeTheFirstPrepare)
{
    sessions::fillSession (rig);
    auto block = save (processor);

    for (int generation = 0; generation < 3; ++generation)
    {
        PluginRig next;
        load (next.processor, block);
        ASSERT_TRUE (save (next.processor) == block) << "generation " << generation;
        block = save (next.processor);
    }
}

TEST_F (SessionStateTest, aBlockWithoutTracksLeavesThoseThereAre)
{
    loadElements (processor, "<reference-track file-path=\"/a.wav\"/>");
    loadElements (processor, "<settings/>");
    EXPECT_EQ (rig.processor.referenceTracks.sessionTracks().size(), 1u);
    rig.processor.referenceTracks.forgetKeptRequests();
    EXPECT_EQ (saved()->getChildByName ("reference-track"), nullptr);
}

TEST_F (SessionStateTest, aBlockWithoutStoresLeavesThoseThereAre)
{
    state.compareCopy();
    loadElements (processor, "<settings/>");
    EXPECT_TRUE (state.hasStore (0));
    EXPECT_TRUE (state.hasStore (1));
}

TEST_F (SessionStateTest, anEmptyStoreElementTakesTheStoreAway)
{
    state.compareCopy();
    loadElements (processor, "<parameterStoreA/>");
    EXPECT_FALSE (state.hasStore (0));
    EXPECT_TRUE (state.hasStore (1));
}

TEST_F (SessionStateTest, whatIsKeptBesideTheParametersDoesNotEnterTheirTree)
{
    sessions::fillSession (rig);
    load (processor, save (processor));
    const auto tree = processor.getAPVTS().copyState();
    EXPECT_EQ (tree.getNumChildren(), 86);

    // Wherever it stands.
    loadText (processor,
              "<ZVQ_Processor><settings width=\"800\"/><PARAM id=\"band_gain_0\" value=\"2.0\"/></ZVQ_Processor>");
    EXPECT_EQ (processor.model.windowWidth, 800);
    EXPECT_FALSE (processor.getAPVTS().copyState().getChildWithName ("settings").isValid());
}

//======================================================================================================================
// Blocks of others

TEST_F (SessionStateTest, aForeignRootLeavesTheParametersAndAppliesTheRest)
{
    rig.setBand (2, 1000.0f, 5.0f);
    const auto before = sessions::parameterValues (processor);
    loadElements (processor,
                  "<PARAM id=\"band_gain_2\" value=\"-7.0\"/><settings width=\"800\"/>"
                  "<reference-track file-path=\"/a.wav\"/><parameterStoreA><ZVQ_Processor/></parameterStoreA>");

    EXPECT_EQ (sessions::parameterValues (processor), before);
    EXPECT_EQ (processor.model.windowWidth, 800);
    EXPECT_EQ (rig.processor.referenceTracks.sessionTracks().size(), 1u);
    EXPECT_TRUE (state.hasStore (0));
    EXPECT_TRUE (processor.model.stateInformationSet());
    EXPECT_EQ (processor.model.storedBandGains[2], 5.0f);
}

TEST_F (SessionStateTest, aBlockThatDoesNotParseStillStoresGainsAndNotifies)
{
    sessions::fillSession (rig);
    processor.model.setStateInformationSet (false, false);
    rig.set (0, Settings::Parameter::gain, 2.0f);
    const auto before = save (processor);
    auto notified = 0;
    const auto token = processor.model.channels.add ([&] { ++notified; }, Channels::stateInformationSet);

    loadText (processor, "no xml at all");

    EXPECT_EQ (notified, 1);
    EXPECT_TRUE (processor.model.stateInformationSet());
    EXPECT_EQ (processor.model.storedBandGains[0], 2.0f);
    EXPECT_TRUE (save (processor) == before);
    processor.model.channels.remove (token);
}

TEST_F (SessionStateTest, onlyTheEndOfALoadIsNotified)
{
    std::vector<bool> seen;
    const auto token = processor.model.channels.add ([&] { seen.push_back (processor.model.stateInformationSet()); },
                                                     Channels::stateInformationSet);

    load (processor, save (processor));
    EXPECT_THAT (seen, ElementsAre (true));
    load (processor, save (processor));
    EXPECT_THAT (seen, ElementsAre (true, true));
    processor.model.channels.remove (token);
}

TEST_F (SessionStateTest, theFlagIsDownWhileParametersAreReplaced)
{
    struct Listener final : juce::AudioProcessorValueTreeState::Listener
    {
        explicit Listener (VelmoraAudioProcessor& watched) : processor (watched) {}

        void parameterChanged (const juce::String&, float) override
        {
            ++calls;
            flagDown = flagDown && ! processor.model.stateInformationSet();
            restoring = restoring && processor.sessionState().isRestoring();
        }

        VelmoraAudioProcessor& processor;
        int calls = 0;
        bool flagDown = true;
        bool restoring = true;
    };

    const auto block = save (processor);
    load (processor, block);
    rig.set (ParameterIds::outputGain, 3.0f);
    Listener listener (processor);
    processor.getAPVTS().addParameterListener (ParameterIds::outputGain, &listener);
    load (processor, block);
    processor.getAPVTS().removeParameterListener (ParameterIds::outputGain, &listener);

    EXPECT_EQ (listener.calls, 1);
    EXPECT_TRUE (listener.flagDown);
    EXPECT_TRUE (listener.restoring);
    EXPECT_FALSE (state.isRestoring());
}

TEST_F (SessionStateTest, theHighestThreadPriorityDecidesWhatIsOfflineAfterALoad)
{
    static int priority = 0;
    priority = 20;
    PluginRig other ({ juce::PluginHostType::FruityLoops, "/opt/FL", []() noexcept { return priority; } });
    other.prepare (48000.0, 64);
    loadElements (other.processor, "<settings max-thread-priority=\"40\"/>");
    other.runSilence (64, 64);
    EXPECT_TRUE (other.processor.isOfflineRender()) << "20 lies below what the session has seen";

    priority = 40;
    other.runSilence (64, 64);
    EXPECT_FALSE (other.processor.isOfflineRender());
    EXPECT_NE (unwrapText (save (other.processor)).find ("max-thread-priority=\"40\""), std::string::npos);
}
} // namespace
