#include "support/BinaryXml.h"
#include "support/ChildProcess.h"
#include "support/GoldenFile.h"
#include "support/PluginRig.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

namespace
{
/** Preferences of one text, which is written many times over so that half a file cannot pass for a whole one. */
class TextSettings final : public SettingsUtilities
{
public:
    TextSettings() : SettingsUtilities ("text-settings.dat", "SettingsFileTest") {}

    void writeSettings (juce::XmlElement& element) override
    {
        for (int copy = 0; copy < copies; ++copy)
            element.setAttribute ("Text" + juce::String (copy), text);
    }

    void readSettings (const juce::XmlElement& element) override
    {
        text = element.getStringAttribute ("Text0");
        isWhole = element.getNumAttributes() == copies;

        for (int copy = 0; copy < copies; ++copy)
            isWhole = isWhole && element.getStringAttribute ("Text" + juce::String (copy)) == text;
    }

    void setDefaultSettings() override { ++defaultsTaken; }

    juce::String text;
    bool isWhole = false;
    int defaultsTaken = 0;

private:
    static constexpr int copies = 40;
};

juce::MemoryBlock bytesOf (const juce::File& file)
{
    juce::MemoryBlock bytes;
    file.loadFileAsData (bytes);
    return bytes;
}

class SettingsFileTest : public testing::Test
{
protected:
    static juce::File folder()
    {
        return juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory).getChildFile ("Brevlen");
    }

    static juce::File file() { return folder().getChildFile ("solvane-settings.dat"); }

    static void put (const juce::MemoryBlock& bytes)
    {
        folder().createDirectory();
        ASSERT_TRUE (file().replaceWithData (bytes.getData(), bytes.getSize()));
    }

    static void putText (const juce::String& text) { put (wrapText (text.toStdString())); }

    /** What a new instance makes of the file. */
    struct Preferences
    {
        bool toolTips, notifications, reverse, alwaysShow, heatmap, minimised;
        int width, height;

        bool operator== (const Preferences&) const = default;
    };

    static Preferences preferencesOf (const PluginModel& model)
    {
        return { model.showToolTips,  model.showNotifications, model.reverseMousewheel, model.alwaysShowBand,
                 model.showHeatmap(), model.minimised(),       model.windowWidth,       model.windowHeight };
    }

    static Preferences readByNewInstance()
    {
        const VelmoraAudioProcessor processor (PluginRig::plainHost());
        return preferencesOf (processor.model);
    }

    static constexpr Preferences defaults { false, true, false, false, true, false, 680, 712 };
    static constexpr Preferences unread { false, true, false, false, false, false, 680, 712 };
};

TEST_F (SettingsFileTest, aUserWithoutAFileSeesTheHeatMap)
{
    EXPECT_EQ (readByNewInstance(), defaults);
}

TEST_F (SettingsFileTest, aForeignRootGivesTheDefaultSettings)
{
    putText ("<ZVQ-OTHER><general-settings ShowToolTips=\"1\" ShowHeatmap=\"0\" DefaultWidth=\"900\"/></ZVQ-OTHER>");
    EXPECT_EQ (readByNewInstance(), defaults);
}

TEST_F (SettingsFileTest, aRootWithoutSettingsChangesNothing)
{
    putText ("<ZVQ-PRESETS/>");
    EXPECT_EQ (readByNewInstance(), unread);
}

TEST_F (SettingsFileTest, aRootWithOtherChildrenOnlyChangesNothing)
{
    putText ("<ZVQ-PRESETS><other ShowToolTips=\"1\"/></ZVQ-PRESETS>");
    EXPECT_EQ (readByNewInstance(), unread);
}

TEST_F (SettingsFileTest, missingAttributesTakeTheirOwnDefaults)
{
    putText ("<ZVQ-PRESETS><general-settings/></ZVQ-PRESETS>");
    EXPECT_EQ (readByNewInstance(), unread) << "a file that lacks the heat map turns it off";
}

TEST_F (SettingsFileTest, widthAndHeightFallBackEachByItself)
{
    putText ("<ZVQ-PRESETS><general-settings DefaultHeight=\"900\"/></ZVQ-PRESETS>");
    EXPECT_EQ (readByNewInstance().width, 680);
    EXPECT_EQ (readByNewInstance().height, 900);

    putText ("<ZVQ-PRESETS><general-settings DefaultWidth=\"800\"/></ZVQ-PRESETS>");
    EXPECT_EQ (readByNewInstance().width, 800);
    EXPECT_EQ (readByNewInstance().height, 712);
}

TEST_F (SettingsFileTest, everyPreferenceReachesItsField)
{
    putText ("<ZVQ-PRESETS><general-settings ShowToolTips=\"1\" ShowNotifications=\"0\" ReverseMousewheel=\"1\" "
             "AlwaysShowBand=\"1\" ShowHeatmap=\"1\" Minimised=\"1\" DefaultWidth=\"701\" DefaultHeight=\"702\"/>"
             "</ZVQ-PRESETS>");
    EXPECT_EQ (readByNewInstance(), (Preferences { true, false, true, true, true, true, 701, 702 }));
}

TEST_F (SettingsFileTest, laterSettingsElementsWin)
{
    putText ("<ZVQ-PRESETS><general-settings ShowToolTips=\"1\" DefaultWidth=\"800\"/>"
             "<general-settings ShowNotifications=\"0\"/></ZVQ-PRESETS>");
    EXPECT_EQ (readByNewInstance(), (Preferences { false, false, false, false, false, false, 680, 712 }));
}

TEST_F (SettingsFileTest, readingTellsTheListenersOfBothChannels)
{
    putText ("<ZVQ-PRESETS><general-settings Minimised=\"1\" ShowHeatmap=\"1\"/></ZVQ-PRESETS>");
    VelmoraAudioProcessor processor (PluginRig::plainHost());
    auto minimised = 0;
    auto heatmap = 0;
    const auto first = processor.model.channels.add ([&] { ++minimised; }, Channels::minimised);
    const auto second = processor.model.channels.add ([&] { ++heatmap; }, Channels::showHeatmap);

    processor.loadSettings();

    EXPECT_EQ (minimised, 1);
    EXPECT_EQ (heatmap, 1);
    processor.model.channels.remove (first);
    processor.model.channels.remove (second);
}

TEST_F (SettingsFileTest, defaultsLeaveAloneWhatTheyDoNotName)
{
    VelmoraAudioProcessor processor (PluginRig::plainHost());
    processor.model.showToolTips = true;
    processor.model.showNotifications = false;
    processor.model.reverseMousewheel = true;
    processor.model.alwaysShowBand = true;
    processor.model.setMinimised (true, false);
    processor.model.windowWidth = 900;
    processor.model.windowHeight = 901;

    put (wrapText ("damaged"));
    processor.loadSettings();

    EXPECT_EQ (preferencesOf (processor.model), (Preferences { false, true, true, true, true, true, 900, 901 }));
}

//======================================================================================================================
TEST_F (SettingsFileTest, theFileIsWrittenByteForByteAsEver)
{
    put (goldenFile ("settings/all-changed.dat"));

    {
        const VelmoraAudioProcessor processor (PluginRig::plainHost());
        EXPECT_EQ (preferencesOf (processor.model), (Preferences { true, false, true, true, false, true, 733, 744 }));
        file().deleteFile();
    }

    EXPECT_TRUE (bytesOf (file()) == goldenFile ("settings/all-changed.dat"));
}

TEST_F (SettingsFileTest, theFileIsXmlTextInTheFrameworksWrapping)
{
    {
        const VelmoraAudioProcessor processor (PluginRig::plainHost());
    }

    const std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?> <ZVQ-PRESETS><general-settings "
                             "ShowToolTips=\"0\" ShowNotifications=\"1\" ReverseMousewheel=\"0\" AlwaysShowBand=\"0\" "
                             "ShowHeatmap=\"1\" Minimised=\"0\" DefaultWidth=\"680\" DefaultHeight=\"712\"/>"
                             "</ZVQ-PRESETS>";
    EXPECT_TRUE (bytesOf (file()) == wrapText (text)) << bytesOf (file()).toString();
}

TEST_F (SettingsFileTest, theFirstSaveMakesFolderAndFile)
{
    ASSERT_FALSE (folder().exists());
    VelmoraAudioProcessor processor (PluginRig::plainHost());
    EXPECT_TRUE (processor.saveSettings());
    EXPECT_TRUE (file().existsAsFile());
    EXPECT_EQ (folder().getNumberOfChildFiles (juce::File::findFiles), 1);
}

TEST_F (SettingsFileTest, theLastInstanceToCloseWins)
{
    auto first = std::make_unique<VelmoraAudioProcessor> (PluginRig::plainHost());
    auto second = std::make_unique<VelmoraAudioProcessor> (PluginRig::plainHost());
    first->model.windowWidth = 801;
    second->model.windowWidth = 802;
    second->model.alwaysShowBand = true;
    second.reset();
    EXPECT_EQ (readByNewInstance().width, 802);

    first.reset();
    EXPECT_EQ (readByNewInstance(), (Preferences { false, true, false, false, true, false, 801, 712 }));
}

TEST_F (SettingsFileTest, aProgramThatOnlyBorrowsTheProcessorLeavesTheFileAlone)
{
    putText ("<ZVQ-PRESETS><general-settings DefaultWidth=\"800\"/></ZVQ-PRESETS>");
    const auto before = bytesOf (file());

    {
        const VelmoraAudioProcessor processor (
            PluginRig::plainHost(), {}, VelmoraAudioProcessor::SettingsFile::leaveAlone);
        EXPECT_EQ (preferencesOf (processor.model), defaults);
    }

    EXPECT_TRUE (bytesOf (file()) == before);
}

TEST_F (SettingsFileTest, anEmptyBlockEmptiesTheFile)
{
    putText ("<ZVQ-PRESETS/>");
    const VelmoraAudioProcessor processor (PluginRig::plainHost());
    EXPECT_TRUE (processor.writeFile ({}));
    EXPECT_EQ (file().getSize(), 0);
    EXPECT_TRUE (file().existsAsFile());
}

TEST_F (SettingsFileTest, anEmptyFileGivesTheDefaultSettings)
{
    folder().createDirectory();
    ASSERT_TRUE (file().create().wasOk());
    EXPECT_EQ (readByNewInstance(), defaults);
}

TEST_F (SettingsFileTest, aFolderInTheFilesPlaceIsNeitherReadNorReplaced)
{
    ASSERT_TRUE (file().createDirectory().wasOk());
    VelmoraAudioProcessor processor (PluginRig::plainHost());
    juce::MemoryBlock contents;
    EXPECT_EQ (preferencesOf (processor.model), defaults);
    EXPECT_FALSE (processor.readFile (contents));
    EXPECT_FALSE (processor.saveSettings());
    EXPECT_TRUE (file().isDirectory());
}

//======================================================================================================================
TEST_F (SettingsFileTest, aFileCutShortIsIgnored)
{
    const auto whole = goldenFile ("settings/all-changed.dat");

    for (std::size_t length = 0; length + 1 < whole.getSize(); ++length)
    {
        TextSettings settings;
        const juce::MemoryBlock cut (whole.getData(), length);
        settings.settingsFile().getParentDirectory().createDirectory();
        ASSERT_TRUE (settings.settingsFile().replaceWithData (cut.getData(), cut.getSize()));
        settings.loadSettings();
        ASSERT_EQ (settings.defaultsTaken + (settings.text.isEmpty() ? 0 : 1), 1) << "at " << length;
    }
}

TEST_F (SettingsFileTest, aDamagedFileIsReadOrIgnoredButNeverHarms)
{
    constexpr auto seed = 20240u;
    std::mt19937 random (seed);
    const auto whole = goldenFile ("settings/all-changed.dat");
    VelmoraAudioProcessor processor (PluginRig::plainHost());

    for (int round = 0; round < 400; ++round)
    {
        auto damaged = whole;

        for (auto changes = 1 + random() % 4; changes > 0; --changes)
            damaged[random() % damaged.getSize()] = static_cast<char> (random());

        put (damaged);
        processor.loadSettings();
    }
}

TEST_F (SettingsFileTest, foreignBytesGiveTheDefaultSettings)
{
    for (const auto* text :
         { "hello", "<html><body>", "\x89PNG\r\n\x1a\n", "VC2!", "VC2!\xff\xff\xff\x7f<ZVQ-PRESETS/>" })
    {
        put ({ text, std::strlen (text) });
        EXPECT_EQ (readByNewInstance().heatmap, std::strstr (text, "PRESETS") == nullptr) << text;
    }
}

TEST_F (SettingsFileTest, aFileNestedWithoutEndIsIgnored)
{
    std::string text = "<ZVQ-PRESETS>";

    for (int level = 0; level < 100000; ++level)
        text += "<a b=\"/>\">";

    put (wrapText (text));
    EXPECT_EQ (readByNewInstance(), defaults);
}

TEST_F (SettingsFileTest, aFileOfManyMegabytesIsIgnored)
{
    put (juce::MemoryBlock (std::size_t { 32 } << 20, true));
    EXPECT_EQ (readByNewInstance(), defaults);
}

//======================================================================================================================
TEST_F (SettingsFileTest, aReadOnlyFileOutlastsAllFiveAttempts)
{
    TextSettings settings;
    settings.text = "old";
    ASSERT_TRUE (settings.saveSettings());
    const auto before = bytesOf (settings.settingsFile());
    ASSERT_EQ (::chmod (settings.settingsFile().getFullPathName().toRawUTF8(), 0444), 0);

    settings.text = "new";
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE (settings.saveSettings());
    EXPECT_GE (std::chrono::steady_clock::now() - start, std::chrono::milliseconds (400));

    EXPECT_TRUE (bytesOf (settings.settingsFile()) == before);
    EXPECT_EQ (settings.settingsFile().getParentDirectory().getNumberOfChildFiles (juce::File::findFiles), 1)
        << "the temporary file has gone";
}

TEST_F (SettingsFileTest, aFileThatBecomesWritableAgainIsReplaced)
{
    TextSettings settings;
    settings.text = "old";
    ASSERT_TRUE (settings.saveSettings());
    const auto path = settings.settingsFile().getFullPathName();
    ASSERT_EQ (::chmod (path.toRawUTF8(), 0444), 0);
    ASSERT_EQ (::chmod (path.toRawUTF8(), 0644), 0);

    settings.text = "new";
    EXPECT_TRUE (settings.saveSettings());
    TextSettings reader;
    reader.loadSettings();
    EXPECT_EQ (reader.text, "new");
}

TEST_F (SettingsFileTest, aReadOnlyFolderKeepsTheOldFile)
{
    TextSettings settings;
    settings.text = "old";
    ASSERT_TRUE (settings.saveSettings());
    const auto home = juce::File::getSpecialLocation (juce::File::userHomeDirectory).getFullPathName();
    const auto path = settings.settingsFile().getParentDirectory().getFullPathName();
    ASSERT_EQ (::chmod (home.toRawUTF8(), 0755), 0);
    ASSERT_EQ (::chmod (path.toRawUTF8(), 0555), 0);
    const auto before = bytesOf (settings.settingsFile());

    // An administrator may write anywhere, so the attempt is made as nobody.
    EXPECT_TRUE (succeedsInChildProcess (
        [&settings]
        {
            constexpr uid_t nobody = 65534;

            if (::geteuid() == 0 && ::seteuid (nobody) != 0)
                return false;

            settings.text = "new";
            return ! settings.saveSettings();
        }));

    ASSERT_EQ (::chmod (path.toRawUTF8(), 0755), 0);
    EXPECT_TRUE (bytesOf (settings.settingsFile()) == before);
    EXPECT_EQ (settings.settingsFile().getParentDirectory().getNumberOfChildFiles (juce::File::findFiles), 1);
}

/** No file may grow beyond this: what a full disk does to whoever writes. */
bool limitFileSize (rlim_t bytes)
{
    const rlimit limit { bytes, bytes };
    return std::signal (SIGXFSZ, SIG_IGN) != SIG_ERR && ::setrlimit (RLIMIT_FSIZE, &limit) == 0;
}

TEST_F (SettingsFileTest, aFullDiskKeepsTheOldFileWhole)
{
    TextSettings settings;
    settings.text = "old";
    ASSERT_TRUE (settings.saveSettings());
    const auto before = bytesOf (settings.settingsFile());

    for (const rlim_t room : { 0u, 1u, 100u, 300u })
    {
        ASSERT_LT (room, before.getSize());
        EXPECT_TRUE (succeedsInChildProcess (
            [&settings, room]
            {
                settings.text = "new";
                return limitFileSize (room) && ! settings.saveSettings();
            }))
            << room;

        EXPECT_TRUE (bytesOf (settings.settingsFile()) == before) << room;
        EXPECT_EQ (settings.settingsFile().getParentDirectory().getNumberOfChildFiles (juce::File::findFiles), 1);
    }
}

TEST_F (SettingsFileTest, aFirstSaveOnAFullDiskLeavesNothingThatReads)
{
    TextSettings settings;
    EXPECT_TRUE (succeedsInChildProcess ([&settings] { return limitFileSize (0) && ! settings.saveSettings(); }));
    settings.loadSettings();
    EXPECT_EQ (settings.defaultsTaken, 1);
}

//======================================================================================================================
/** Saves texts of very different lengths over and over. */
bool saveManyTimes (int writer, int rounds)
{
    TextSettings settings;

    for (int round = 0; round < rounds; ++round)
    {
        settings.text = juce::String::repeatedString (juce::String (writer), 1 + (round * 37 + writer * 11) % 300);

        if (! settings.saveSettings())
            return false;
    }

    return true;
}

bool readsWholeFile()
{
    TextSettings reader;
    reader.loadSettings();
    return reader.defaultsTaken == 0 && reader.isWhole && reader.text.isNotEmpty();
}

TEST_F (SettingsFileTest, everyReadDuringWritesOfOtherThreadsSeesAWholeFile)
{
    ASSERT_TRUE (saveManyTimes (0, 1));
    std::atomic<int> running { 3 };
    std::atomic<bool> allSaved { true };
    std::vector<std::thread> writers;

    for (int writer = 1; writer <= 3; ++writer)
        writers.emplace_back (
            [&, writer]
            {
                if (! saveManyTimes (writer, 60))
                    allSaved = false;

                --running;
            });

    auto reads = 0;
    auto failures = 0;

    while (running > 0)
    {
        ++reads;
        failures += readsWholeFile() ? 0 : 1;
    }

    for (auto& writer : writers)
        writer.join();

    EXPECT_TRUE (allSaved);
    EXPECT_GT (reads, 0);
    EXPECT_EQ (failures, 0) << "of " << reads << " reads";
}

TEST_F (SettingsFileTest, everyReadDuringWritesOfOtherProcessesSeesAWholeFile)
{
    ASSERT_TRUE (saveManyTimes (0, 1));
    ChildProcesses writers;

    for (int writer = 1; writer <= 3; ++writer)
        writers.start ([writer] { return saveManyTimes (writer, 60); });

    auto reads = 0;
    auto failures = 0;

    while (writers.anyRuns())
    {
        ++reads;
        failures += readsWholeFile() ? 0 : 1;
    }

    EXPECT_TRUE (writers.allSucceeded());
    EXPECT_GT (reads, 0);
    EXPECT_EQ (failures, 0) << "of " << reads << " reads";
    EXPECT_EQ (TextSettings().settingsFile().getParentDirectory().getNumberOfChildFiles (juce::File::findFiles), 1);
}
} // namespace
