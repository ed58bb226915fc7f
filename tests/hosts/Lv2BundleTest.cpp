#include "hosts/HostedPlugin.h"
#include "hosts/SharedLibrary.h"
#include "support/PluginRig.h"
#include "support/ProgramRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <juce_audio_formats/juce_audio_formats.h>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace
{
using testing::HasSubstr;
using testing::Not;

const std::string uri = "https://www.solvane.example/lv2/solvane";
const std::filesystem::path bundle = SOLVANE_DIST "/lv2/SOLVANE.lv2";

std::string textOf (const std::filesystem::path& path)
{
    std::ifstream file (path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void addTurtleFiles (const std::filesystem::path& folder, std::vector<std::string>& files)
{
    for (const auto& entry : std::filesystem::directory_iterator (folder))
        if (entry.path().extension() == ".ttl")
            files.push_back (entry.path());
}

/** The files that define the interface; other plug-ins may be installed beside them. */
std::vector<std::string> specifications()
{
    std::vector<std::string> files;

    for (const auto& entry : std::filesystem::directory_iterator (SOLVANE_LV2_SPECIFICATIONS))
        if (entry.path().filename() == "schemas.lv2"
            || textOf (entry.path() / "manifest.ttl").find ("lv2:Specification") != std::string::npos)
            addTurtleFiles (entry.path(), files);

    return files;
}

/** Runs a program in a world of our bundle and the interface's definitions. */
ProgramRun runInOurWorld (const std::string& program, const std::vector<std::string>& arguments)
{
    std::vector<std::string> all { "LV2_PATH=" + bundle.parent_path().string() + ":" SOLVANE_LV2_SPECIFICATIONS,
                                   program };
    all.insert (all.end(), arguments.begin(), arguments.end());
    return runProgram ("/usr/bin/env", all);
}

TEST (Lv2BundleTest, keepsTheInterfacesRules)
{
    auto files = specifications();
    ASSERT_GT (files.size(), 20u);
    addTurtleFiles (bundle, files);

    const auto run = runProgram (SOLVANE_SORD_VALIDATE, files);
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_THAT (run.output + run.errors, HasSubstr ("Found 0 errors among " + std::to_string (files.size())))
        << run.errors;
}

TEST (Lv2BundleTest, tellsItsClassAndWhomToWriteTo)
{
    const auto run = runInOurWorld (SOLVANE_LV2INFO, { uri });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_THAT (run.output, testing::ContainsRegex ("Class: +Equaliser"));
    EXPECT_THAT (run.output, HasSubstr ("mailto:support@solvane.example"));
    EXPECT_THAT (run.output, testing::ContainsRegex ("Required Features: http://lv2plug.in/ns/ext/urid#map\n"));
    EXPECT_THAT (run.output, Not (HasSubstr (":preset1"))) << "the framework's has no name and changes nothing";
}

TEST (Lv2BundleTest, tellsItsLicenceAndTheVersionOfARelease)
{
    // Even numbers, and none of them 0, or hosts may take it for unfinished.
    for (const auto* file : { "manifest.ttl", "dsp.ttl" })
    {
        const auto text = textOf (bundle / file);
        EXPECT_THAT (text, HasSubstr ("lv2:minorVersion 200 ;")) << file;
        EXPECT_THAT (text, HasSubstr ("lv2:microVersion 16 ;")) << file;
    }

    EXPECT_THAT (textOf (bundle / "dsp.ttl"), HasSubstr ("doap:license <http://www.gnu.org/licenses/gpl-3.0> ;"));
    EXPECT_THAT (textOf (bundle / "dsp.ttl"), HasSubstr ("doap:revision \"" SOLVANE_VERSION "\""));
}

TEST (Lv2BundleTest, runsInAHostThatOffersNoOptions)
{
    const auto run = runInOurWorld (SOLVANE_LV2BENCH, { uri });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_THAT (run.output, testing::ContainsRegex ("[0-9.]+ +" + uri)) << run.errors;
    EXPECT_THAT (run.errors, Not (HasSubstr ("skipping")));
}

TEST (Lv2BundleTest, rendersAFileInAHostThatDoesNotBoundItsBlocks)
{
    const auto folder = std::filesystem::temp_directory_path() / "solvane-lv2file";
    std::filesystem::remove_all (folder);
    std::filesystem::create_directories (folder);

    const juce::File input (juce::String ((folder / "in.wav").string()));
    const auto noise = signals::noise (2, 48000, 61);
    juce::AudioBuffer<float> buffer (2, 48000);

    for (int channel = 0; channel < 2; ++channel)
        buffer.copyFrom (channel, 0, noise[static_cast<std::size_t> (channel)].data(), 48000);

    juce::WavAudioFormat wav;
    {
        const std::unique_ptr<juce::AudioFormatWriter> writer (
            wav.createWriterFor (new juce::FileOutputStream (input), 48000.0, 2, 24, {}, 0));
        ASSERT_NE (writer, nullptr);
        ASSERT_TRUE (writer->writeFromAudioSampleBuffer (buffer, 0, 48000));
    }

    const auto output = folder / "out.wav";
    const auto run =
        runInOurWorld (SOLVANE_LV2FILE, { "-i", input.getFullPathName().toStdString(), "-o", output.string(), uri });
    EXPECT_EQ (run.exitCode, 0) << run.errors;

    const std::unique_ptr<juce::AudioFormatReader> reader (
        wav.createReaderFor (new juce::FileInputStream (juce::File (juce::String (output.string()))), true));
    ASSERT_NE (reader, nullptr) << run.errors;
    juce::AudioBuffer<float> result (2, 48000);
    ASSERT_TRUE (reader->read (&result, 0, 40000, 0, true, true));

    for (int channel = 0; channel < 2; ++channel)
        for (int sample = 178; sample < 40000; ++sample)
            ASSERT_NEAR (result.getSample (channel, sample), buffer.getSample (channel, sample - 178), 2.0e-6f)
                << sample;

    std::filesystem::remove_all (folder);
}

/** A host that knows nothing but names, as long as it lives. */
class SmallHost
{
public:
    /** The instance, or null, for these features beside the map. */
    LV2_Handle instantiate (std::vector<const LV2_Feature*> features)
    {
        features.insert (features.begin(), &mapFeature);
        features.push_back (nullptr);
        instance = descriptor->instantiate (descriptor, 48000.0, bundle.c_str(), features.data());
        return instance;
    }

    ~SmallHost()
    {
        if (instance != nullptr)
            descriptor->cleanup (instance);
    }

    [[nodiscard]] PluginRig::Signal run (const PluginRig::Signal& input, std::size_t blockSize)
    {
        auto output = input;

        for (std::size_t start = 0; start < input[0].size(); start += blockSize)
        {
            for (std::uint32_t channel = 0; channel < 2; ++channel)
            {
                descriptor->connect_port (instance, channel, const_cast<float*> (input[channel].data()) + start);
                descriptor->connect_port (instance, channel + 2, output[channel].data() + start);
            }

            std::array<std::uint64_t, 2048> events {};
            std::array<std::uint64_t, 2048> answers {};
            auto& in = *reinterpret_cast<LV2_Atom_Sequence*> (events.data());
            in.atom = { sizeof (LV2_Atom_Sequence_Body), mapped (LV2_ATOM__Sequence) };
            reinterpret_cast<LV2_Atom*> (answers.data())->size = sizeof (answers) - sizeof (LV2_Atom);
            descriptor->connect_port (instance, 4, events.data());
            descriptor->connect_port (instance, 5, answers.data());
            descriptor->run (instance, static_cast<std::uint32_t> (std::min (blockSize, input[0].size() - start)));
        }

        return output;
    }

    [[nodiscard]] LV2_URID mapped (const std::string& name)
    {
        const auto found = std::find (names.begin(), names.end(), name);
        const auto place = found - names.begin();

        if (found == names.end())
            names.push_back (name);

        return static_cast<LV2_URID> (place) + 1;
    }

private:
    const SharedLibrary library { libraryPathOf (PluginFormat::lv2) };
    const LV2_Descriptor* descriptor = library.function<LV2_Descriptor_Function> ("lv2_descriptor") (0);
    std::vector<std::string> names;
    LV2_URID_Map map { this, [] (LV2_URID_Map_Handle host, const char* name) -> LV2_URID {
                          return static_cast<SmallHost*> (host)->mapped (name);
                      } };
    LV2_Feature mapFeature { LV2_URID__map, &map };
    LV2_Handle instance = nullptr;
};

TEST (Lv2EntryTest, aHostThatAnnouncesNoBlockLengthMaySendAny)
{
    for (const std::size_t blockSize : { 64u, 8192u, 10000u })
    {
        SmallHost host;
        ASSERT_NE (host.instantiate ({}), nullptr);
        const auto input = signals::noise (2, 30000, 62);
        EXPECT_EQ (signals::firstDifference (host.run (input, blockSize), signals::delayedBy (input, 178)), "")
            << blockSize;
    }
}

TEST (Lv2EntryTest, optionsOfTheHostReachThePlugin)
{
    SmallHost host;
    const std::int32_t blockLength = 256;
    const std::array options { LV2_Options_Option { LV2_OPTIONS_INSTANCE,
                                                    0,
                                                    host.mapped (LV2_BUF_SIZE__maxBlockLength),
                                                    sizeof (blockLength),
                                                    host.mapped (LV2_ATOM__Int),
                                                    &blockLength },
                               LV2_Options_Option { LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr } };
    const LV2_Feature feature { LV2_OPTIONS__options, const_cast<LV2_Options_Option*> (options.data()) };
    ASSERT_NE (host.instantiate ({ &feature }), nullptr);
    const auto input = signals::noise (2, 4096, 63);
    EXPECT_EQ (signals::firstDifference (host.run (input, 256), signals::delayedBy (input, 178)), "");
}

TEST (Lv2EntryTest, thereIsOnePlugin)
{
    const SharedLibrary library (libraryPathOf (PluginFormat::lv2));
    const auto entry = library.function<LV2_Descriptor_Function> ("lv2_descriptor");
    ASSERT_NE (entry (0), nullptr);
    EXPECT_EQ (entry (0)->URI, uri);
    EXPECT_EQ (entry (1), nullptr);
}
} // namespace
