#include "core/session/SessionXml.h"
#include "support/BlockMutator.h"
#include "support/GoldenFile.h"
#include "support/SessionRig.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{
using Kind = Settings::Parameter;
using sessions::load;
using sessions::loadText;
using sessions::save;

/** A filled session and what it holds, to see that a block which is refused changes none of it. */
class SessionDamageTest : public testing::Test
{
protected:
    SessionDamageTest()
    {
        sessions::fillSession (rig);
        before = save (processor);
    }

    void expectIgnored (const juce::MemoryBlock& block, const std::string& what)
    {
        processor.model.setStateInformationSet (false, false);
        load (processor, block);
        EXPECT_TRUE (processor.model.stateInformationSet()) << what;
        EXPECT_TRUE (save (processor) == before) << what;
    }

    void expectTextIgnored (const std::string& text) { expectIgnored (wrapText (text), text.substr (0, 60)); }

    PluginRig rig;
    VelmoraAudioProcessor& processor = rig.processor;
    juce::MemoryBlock before;
};

TEST_F (SessionDamageTest, noBlockAtAllIsIgnored)
{
    processor.setStateInformation (nullptr, 0);
    processor.setStateInformation (nullptr, 100);
    processor.setStateInformation (before.getData(), 0);
    processor.setStateInformation (before.getData(), -1);
    EXPECT_TRUE (save (processor) == before);
}

TEST_F (SessionDamageTest, blocksOfOthersAreIgnored)
{
    for (const std::string foreign : { "x",
                                       "VC2!",
                                       "VC2!\x10",
                                       "CcnK....FBCh and what follows",
                                       "PK\x03\x04 zip",
                                       "<?xml version=\"1.0\"?><ZVQ_Processor/>" })
        expectIgnored ({ foreign.data(), foreign.size() }, foreign);

    expectIgnored (juce::MemoryBlock (4096, true), "zeros");
}

TEST_F (SessionDamageTest, textThatIsNoXmlIsIgnored)
{
    for (const auto* text : { "",
                              " ",
                              "text",
                              "<",
                              "<>",
                              "< ZVQ_Processor/>",
                              "<ZVQ_Processor",
                              "<ZVQ_Processor a",
                              "<ZVQ_Processor a=",
                              "<ZVQ_Processor a=b/>",
                              "<ZVQ_Processor a='b\"/>",
                              "<ZVQ_Processor a=\"<\"/>",
                              "<ZVQ_Processor>",
                              "<ZVQ_Processor><settings/>",
                              "<ZVQ_Processor><settings width=\"1\"/></ZVQ_Processor",
                              "<ZVQ_Processor><?pi",
                              "<ZVQ_Processor><?pi ?>text</ZVQ_Processor>",
                              "<ZVQ_Processor> <?pi ?> <settings width=\"1\"/></ZVQ_Processor>",
                              "<ZVQ_Processor><!-- comment",
                              "<ZVQ_Processor><![CDATA[ data",
                              "<ZVQ_Processor>&#x",
                              "<ZVQ_Processor a=\"&#x",
                              "<ZVQ_Processor>&#xffffffffff;</ZVQ_Processor>",
                              "<ZVQ_Processor>&#12345678901;</ZVQ_Processor>",
                              "<ZVQ_Processor>&;</ZVQ_Processor>",
                              "<ZVQ_Processor>&</ZVQ_Processor>",
                              "<ZVQ_Processor>&<settings width=\"1\"/>;</ZVQ_Processor>",
                              "<ZVQ_Processor>\xff</ZVQ_Processor>",
                              "<ZVQ_Processor>\xc3</ZVQ_Processor>",
                              "<ZVQ_Processor>\xed\xa0\x80</ZVQ_Processor>",
                              "<ZVQ_Processor>\xf4\x90\x80\x80</ZVQ_Processor>",
                              "<ZVQ_Processor \xf0" })
        expectTextIgnored (text);
}

TEST_F (SessionDamageTest, everyBlockCutShortIsIgnored)
{
    const auto textEnd = before.getSize() - 1;

    // The parameters' part is long and all alike.
    for (std::size_t length = 0; length < textEnd; length += length < 200 || length + 200 > textEnd ? 1 : 101)
        expectIgnored ({ before.getData(), length }, "cut at " + std::to_string (length));
}

TEST_F (SessionDamageTest, whatFollowsTheTextDoesNoHarm)
{
    PluginRig other;
    auto padded = before;
    padded.append ("<!DOCTYPE <<<< \xff", 17);
    load (other.processor, padded);
    EXPECT_TRUE (save (other.processor) == before);
}

TEST_F (SessionDamageTest, aLengthThatLiesIsHeldToTheBlock)
{
    auto tooLong = before;
    tooLong[4] = tooLong[5] = tooLong[6] = '\x7f';
    tooLong[7] = 0;
    PluginRig other;
    load (other.processor, tooLong);
    EXPECT_TRUE (save (other.processor) == before);

    auto negative = before;
    negative[7] = '\xff';
    expectIgnored (negative, "negative length");
}

TEST_F (SessionDamageTest, commentsAndCharacterDataAreRead)
{
    PluginRig other;
    loadText (other.processor,
              "<?xml version='1.0'?> <!-- <a> --> <?pi <b> ?> <ZVQ_Processor> <!-- </x> -->text &amp; &#252;&unknown;"
              "<![CDATA[<c>]]><settings width = '700' /></ZVQ_Processor>");
    EXPECT_EQ (other.processor.model.windowWidth, 700);
}

//======================================================================================================================
// What could take the parser's stack or time away

std::string repeated (const std::string& text, std::size_t count)
{
    std::string result;
    result.reserve (text.size() * count);

    for (std::size_t index = 0; index < count; ++index)
        result += text;

    return result;
}

TEST_F (SessionDamageTest, textNestedWithoutEndIsIgnored)
{
    constexpr std::size_t depth = 200000;

    for (const std::string level : { "<a>",
                                     "<a b=\"/>\">",
                                     "<a b='</a>'>",
                                     "<a><!-- </a></a> -->",
                                     "<a>/>",
                                     "<a><?</a>?>",
                                     "<a><![CDATA[</a>]]>",
                                     "\xc0\xbc\x61>",
                                     "<a>&<b>;",
                                     "<a \"><b><b>" })
    {
        expectTextIgnored ("<ZVQ_Processor>" + repeated (level, depth));
        expectTextIgnored ("<ZVQ_Processor>" + repeated (level, depth) + repeated ("</a>", depth) + "</ZVQ_Processor>");
    }
}

TEST_F (SessionDamageTest, nestingThatIsDeepButNotTooDeepIsRead)
{
    PluginRig other;
    loadText (other.processor,
              "<FOREIGN><settings width=\"700\"/>" + repeated ("<a>", 31) + repeated ("</a>", 31) + "</FOREIGN>");
    EXPECT_EQ (other.processor.model.windowWidth, 700);
    expectTextIgnored ("<FOREIGN><settings width=\"700\"/>" + repeated ("<a>", 32) + repeated ("</a>", 32)
                       + "</FOREIGN>");
}

TEST_F (SessionDamageTest, documentTypesAreIgnored)
{
    const std::string entities = "[<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;\">]>";

    for (const auto* start :
         { "<!DOCTYPE x ", "<?xml version=\"1.0\"?><!DOCTYPE x ", "<!-- --> <!DOCTYPE x ", "\xc0\xbc!DOCTYPE x " })
        expectTextIgnored (start + entities + "<ZVQ_Processor>&c;</ZVQ_Processor>");

    expectTextIgnored ("<!DOCTYPE x SYSTEM \"file:///etc/passwd\"><ZVQ_Processor>&c;</ZVQ_Processor>");
}

TEST_F (SessionDamageTest, aDocumentTypeInANameIsOnlyText)
{
    PluginRig other;
    const juce::String name ("<!DOCTYPE & <a><b></c>");
    juce::XmlElement root ("FOREIGN");
    root.createNewChildElement ("reference-track")->setAttribute ("display-name", name);
    load (other.processor, wrapXml (root));
    ASSERT_EQ (other.processor.referenceTracks.sessionTracks().size(), 1u);
    EXPECT_EQ (other.processor.referenceTracks.sessionTracks()[0].displayName, name);
}

TEST_F (SessionDamageTest, blocksOfTensOfMegabytesAreIgnored)
{
    constexpr std::size_t megabyte = std::size_t { 1 } << 20;
    expectIgnored (juce::MemoryBlock (40 * megabyte, true), "zeros");
    expectTextIgnored ("<ZVQ_Processor>" + repeated ("<settings/>", 3 * megabyte) + "</ZVQ_Processor>");
    expectTextIgnored ("<ZVQ_Processor a=\"" + repeated ("&amp;", 6 * megabyte) + "\"/>");
    expectTextIgnored (repeated (" ", 32 * megabyte));
}

TEST_F (SessionDamageTest, blocksBelowTheBoundsThatHoldAsMuchAsTheyMayAreReadInBoundedTime)
{
    PluginRig other;
    std::string names;

    for (int index = 0; index < 20000; ++index)
        names += "<n" + std::to_string (index) + " m" + std::to_string (index) + "=\"1\"/>";

    loadText (other.processor, "<FOREIGN>" + names + "<settings width=\"700\"/></FOREIGN>");
    EXPECT_EQ (other.processor.model.windowWidth, 700);

    loadText (other.processor,
              "<ZVQ_Processor>" + repeated ("<a/>", 30000) + repeated ("<settings width=\"701\"/>", 15000)
                  + "</ZVQ_Processor>");
    EXPECT_EQ (other.processor.model.windowWidth, 701);

    PluginRig third;
    loadText (third.processor,
              "<FOREIGN><reference-track file-path=\"/a\">" + repeated ("<loop/>", 6000) + "</reference-track>"
                  + repeated ("<reference-track file-path=\"/b\"/>", 8000) + "</FOREIGN>");
    EXPECT_EQ (third.processor.referenceTracks.sessionTracks().size(), 8001u);
    EXPECT_TRUE (save (third.processor).getSize() > 14000u * 8u);
}

TEST_F (SessionDamageTest, tracksWithWhichASavedSessionCouldNotBeReadAreLeftOut)
{
    PluginRig other;
    loadText (other.processor,
              "<FOREIGN><settings width=\"700\"/><reference-track file-path=\"/a\"/>"
                  + repeated ("<reference-track file-path=\"/b\"/>", 15000) + "</FOREIGN>");
    EXPECT_EQ (other.processor.model.windowWidth, 700);
    EXPECT_THAT (other.processor.referenceTracks.sessionTracks(), testing::IsEmpty());
}

TEST_F (SessionDamageTest, aSessionLoadedOverAndOverCanStillBeRead)
{
    // Each time its tracks are there twice, as many a host does for one step of undo.
    PluginRig other;
    loadText (other.processor, "<FOREIGN><reference-track file-path=\"/a\"/></FOREIGN>");
    std::size_t trackCount = 0;

    for (int round = 0; round < 18; ++round)
    {
        load (other.processor, save (other.processor));
        const auto now = other.processor.referenceTracks.sessionTracks().size();
        EXPECT_GE (now, trackCount);
        trackCount = now;
    }

    PluginRig next;
    load (next.processor, save (other.processor));
    EXPECT_EQ (next.processor.referenceTracks.sessionTracks().size(), trackCount);
    EXPECT_EQ (trackCount, 8192u);
}

TEST_F (SessionDamageTest, whatIsWrittenCanAlwaysBeReadAgain)
{
    // Foreign names beside the parameters, which both stores of the comparison would take over.
    std::string names;

    for (int index = 0; index < 12500; ++index)
        names += "<n" + std::to_string (index) + " m" + std::to_string (index) + "=\"1\"/>";

    const auto parameter = [] (const std::string& value)
    { return "<PARAM id=\"band_gain_0\" value=\"" + value + "\"/>"; };
    const auto tree = [] (const std::string& content) { return "<ZVQ_Processor>" + content + "</ZVQ_Processor>"; };
    const auto readAgain = [&] (PluginRig& crafted, float gain)
    {
        crafted.processor.sessionState().compareCopy();
        const auto block = save (crafted.processor);
        EXPECT_TRUE (SessionXml::mayBeParsed (block.getData(), static_cast<int> (block.getSize())));
        PluginRig next;
        load (next.processor, block);
        EXPECT_EQ (next.processor.model.getBandValue (0, Kind::gain), gain);
        EXPECT_TRUE (next.processor.sessionState().hasStore (1));
    };

    PluginRig beside, within, spaced, both, tracks;
    loadText (beside.processor, tree (names + parameter ("3.0")));
    readAgain (beside, 3.0f);
    loadText (within.processor, tree ("<PARAM id=\"band_gain_0\" value=\"3.0\">" + names + "</PARAM>"));
    readAgain (within, 3.0f);
    loadText (spaced.processor, tree (parameter ("3.0" + repeated (" ", 60000))));
    readAgain (spaced, 3.0f);
    loadText (both.processor,
              tree (parameter ("3.0") + "<parameterStoreA>" + tree (names) + "</parameterStoreA><parameterStoreB>"
                    + tree (names) + "</parameterStoreB>"));
    loadText (both.processor, tree (names + parameter ("4.0")));
    const auto block = save (both.processor);
    EXPECT_TRUE (SessionXml::mayBeParsed (block.getData(), static_cast<int> (block.getSize())));
    EXPECT_LT (block.getSize(), 30000u) << "what is not ours is not kept";
    readAgain (both, 4.0f);

    // As many tracks as can be read beside empty stores are too many beside full ones.
    loadText (tracks.processor, tree (parameter ("5.0") + repeated ("<reference-track file-path=\"/b\"/>", 13030)));
    ASSERT_EQ (tracks.processor.referenceTracks.sessionTracks().size(), 13030u);
    readAgain (tracks, 5.0f);
}

TEST_F (SessionDamageTest, aForeignStoreWithANameOfMegabytesIsNotKept)
{
    const auto name = repeated ("n", 5u << 20);

    for (const auto* store : { "parameterStoreA", "parameterStoreB" })
        loadText (processor, "<FOREIGN><" + std::string (store) + "><" + name + "/></" + store + "></FOREIGN>");

    EXPECT_LT (save (processor).getSize(), 50000u);
}

TEST_F (SessionDamageTest, theLastOfTwoValuesOfAParameterCounts)
{
    PluginRig other;
    loadText (other.processor,
              "<ZVQ_Processor><PARAM id=\"band_gain_0\" value=\"3\"/><PARAM id=\"band_gain_0\" value=\"4\"/>"
              "</ZVQ_Processor>");
    EXPECT_EQ (other.processor.model.getBandValue (0, Kind::gain), 4.0f);
}

TEST_F (SessionDamageTest, attributesAreReadUpToTheirBound)
{
    PluginRig other;
    loadText (other.processor, "<FOREIGN><reference-track file-path=\"" + repeated ("a b", 20000) + "\"/></FOREIGN>");
    EXPECT_EQ (other.processor.referenceTracks.sessionTracks().at (0).filePath.length(), 60000);

    // Written again, a quotation mark takes six characters.
    PluginRig third;
    loadText (third.processor, "<FOREIGN><reference-track file-path='" + repeated ("\"", 5000) + "'/></FOREIGN>");
    EXPECT_EQ (third.processor.referenceTracks.sessionTracks().at (0).filePath.length(), 5000);
    EXPECT_TRUE (
        SessionXml::parse (save (third.processor).getData(), static_cast<int> (save (third.processor).getSize()))
        != nullptr);
    expectTextIgnored ("<FOREIGN><reference-track file-path='" + repeated ("\"", 60000) + "'/></FOREIGN>");
    expectTextIgnored ("<FOREIGN><reference-track file-path=\"" + repeated ("a", 70000) + "\"/></FOREIGN>");
}

//======================================================================================================================
/** Loads a damaged block and looks for what must hold whatever it was. */
class MutatedBlocks
{
public:
    explicit MutatedBlocks (PluginRig& rigToUse) : processor (rigToUse.processor) {}

    /** @returns whether the block parsed */
    bool load (const juce::MemoryBlock& block)
    {
        const auto parametersBefore = sessions::parameterValues (processor);
        const auto widthBefore = processor.model.windowWidth.load();
        const auto lufsBefore = sessions::userSetting (processor).lufs;
        processor.referenceTracks.forgetKeptRequests();
        processor.model.setStateInformationSet (false, false);

        sessions::load (processor, block);

        const auto xml = SessionXml::parse (block.getData(), static_cast<int> (block.getSize()));
        const auto parameters = sessions::parameterValues (processor);

        EXPECT_TRUE (processor.model.stateInformationSet());
        EXPECT_FALSE (processor.sessionState().isRestoring());

        if (xml == nullptr || ! xml->hasTagName ("ZVQ_Processor"))
        {
            EXPECT_EQ (parameters, parametersBefore);
        }

        if (xml == nullptr || xml->getChildByName ("settings") == nullptr)
        {
            EXPECT_EQ (processor.model.windowWidth, widthBefore);
            EXPECT_TRUE (sessions::userSetting (processor).lufs == lufsBefore || std::isnan (lufsBefore));
        }

        auto expectedTracks = 0;

        if (xml != nullptr)
            for (const auto* child : xml->getChildIterator())
                expectedTracks += child->hasTagName ("reference-track") ? 1 : 0;

        // With a rate they are being loaded, and those whose files are missing go at any moment.
        if (processor.referenceTracks.sessionSampleRate() == 0.0)
        {
            EXPECT_EQ (static_cast<int> (processor.referenceTracks.sessionTracks().size()), expectedTracks);
        }

        expectParametersInRange (parameters);
        return xml != nullptr;
    }

private:
    void expectParametersInRange (const std::vector<float>& values)
    {
        for (std::size_t index = 0; index < values.size(); ++index)
        {
            const auto& row = ParameterTable::rows()[index];
            EXPECT_TRUE (values[index] >= row.minimum && values[index] <= row.maximum)
                << row.id << " " << values[index];
        }

        for (int band = 0; band < bandCount; ++band)
            EXPECT_EQ (processor.model.storedBandGains[static_cast<std::size_t> (band)],
                       processor.model.getBandValue (band, Kind::gain));

        EXPECT_GT (processor.model.targetScaleDb, 0.0f);
    }

    VelmoraAudioProcessor& processor;
};

/** A block with something of everything and few parameters, so that damage hits the rest as often. */
juce::MemoryBlock shortBlock()
{
    return wrapText (
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?> <ZVQ_Processor><PARAM id=\"band_gain_0\" value=\"3.5\"/><PARAM "
        "id=\"paramMode\" value=\"1.0\"/><reference-track file-name=\"a.wav\" display-name=\"A &amp; B\" "
        "file-path=\"/a.wav\" selected=\"1\"><loop start-samples=\"1\" end-samples=\"2\" active=\"1\"/>"
        "</reference-track><settings lufs-overall=\"-9.5\" lufs-0=\"-20.0\" width=\"800\" height=\"712\" "
        "target-set-user=\"1\" db-scale=\"12.0\" comparison-A-selected=\"1\" max-thread-priority=\"0\"/>"
        "<parameterStoreA><ZVQ_Processor><PARAM id=\"band_gain_0\" value=\"1.0\"/></ZVQ_Processor></parameterStoreA>"
        "<parameterStoreB><ZVQ_Processor/></parameterStoreB></ZVQ_Processor>");
}

TEST (MutatedSessionTest, tenThousandDamagedBlocksDoNoHarm)
{
    PluginRig rig;
    MutatedBlocks blocks (rig);
    BlockMutator mutator (20261u);
    const auto shortOne = shortBlock();
    const auto longOne = goldenFile ("sessions/full.dat");
    auto parsed = 0;

    for (int round = 0; round < 10000 && ! testing::Test::HasFailure(); ++round)
    {
        const auto block = mutator.mutate (round % 20 == 0 ? longOne : shortOne);
        SCOPED_TRACE (round);
        parsed += blocks.load (block) ? 1 : 0;

        if (round % 500 == 0)
        {
            rig.processor.sessionState().compareSwitch (round % 1000 == 0);
            EXPECT_NE (parseBlock (save (rig.processor)), nullptr) << "what is saved now can be read";
        }
    }

    EXPECT_GT (parsed, 1000) << "enough of them get as far as the rules";
    EXPECT_LT (parsed, 9000);
}

TEST (MutatedSessionTest, theOutputStaysFiniteThroughDamagedBlocks)
{
    PluginRig rig;
    rig.renderOffline();
    rig.prepare (48000.0, 256);
    MutatedBlocks blocks (rig);
    BlockMutator mutator (4711u);
    const auto original = goldenFile ("sessions/full.dat");
    const auto input = signals::noise (2, 1024, 5);

    for (int round = 0; round < 60; ++round)
    {
        blocks.load (mutator.mutate (original));

        for (const auto& channel : rig.run (input, 256))
            for (const auto sample : channel)
                ASSERT_TRUE (std::isfinite (sample)) << "round " << round;
    }
}

//======================================================================================================================
TEST (GoldenSessionTest, aPlainSessionOfTheFirstVersionLoads)
{
    PluginRig source;
    source.processor.presets.setUserSetting (0.0f, std::array<float, Presets::bandValueCount> {});
    const auto golden = goldenFile ("sessions/plain.dat", save (source.processor));

    PluginRig rig;
    sessions::fillSession (rig);
    rig.processor.referenceTracks.forgetKeptRequests();
    load (rig.processor, golden);
    EXPECT_EQ (sessions::parameterValues (rig.processor), sessions::parameterValues (source.processor));
    EXPECT_EQ (rig.processor.model.windowWidth, 680);
    EXPECT_TRUE (rig.processor.sessionState().comparisonASelected());
    EXPECT_EQ (rig.processor.model.targetScaleDb, 12.0f);
    EXPECT_FALSE (rig.processor.model.targetSetByUser);
    EXPECT_TRUE (rig.processor.referenceTracks.sessionTracks().empty());

    PluginRig fresh;
    load (fresh.processor, golden);
    EXPECT_TRUE (save (fresh.processor) == golden);
}

TEST (GoldenSessionTest, aFullSessionOfTheFirstVersionLoads)
{
    PluginRig source;
    sessions::fillSession (source);
    const auto golden = goldenFile ("sessions/full.dat", save (source.processor));

    PluginRig rig;
    load (rig.processor, golden);
    const auto& model = rig.processor.model;
    EXPECT_EQ (sessions::parameterValues (rig.processor), sessions::parameterValues (source.processor));
    EXPECT_EQ (model.getBandValue (0, Kind::frequency), 400.0f);
    EXPECT_EQ (model.getBandValue (1, Kind::midSide), 0.25f);
    EXPECT_EQ (model.getBandValue (3, Kind::gain), 1.5f);
    EXPECT_EQ (model.getBandValue (4, Kind::highShelf), 1.0f);
    EXPECT_EQ (sessions::userSetting (rig.processor).lufs, -9.75f);
    EXPECT_EQ (sessions::userSetting (rig.processor).values[9], -38.9f);
    EXPECT_EQ (model.windowWidth, 801);
    EXPECT_TRUE (model.targetSetByUser);
    EXPECT_EQ (model.targetScaleDb, 6.0f);
    EXPECT_EQ (model.maxThreadPriority, 7);
    EXPECT_EQ (rig.processor.referenceTracks.sessionTracks().size(), 2u);
    EXPECT_EQ (rig.processor.referenceTracks.sessionTracks()[0].loops.size(), 2u);
    EXPECT_TRUE (save (rig.processor) == golden);

    rig.processor.sessionState().compareSwitch (false);
    EXPECT_EQ (model.getBandValue (0, Kind::gain), -6.0f);
    EXPECT_EQ (model.gainScalePercent(), 80.0f);
}
} // namespace
