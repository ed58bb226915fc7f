#include "support/BinaryXml.h"
#include "support/ProgramFixture.h"
#include "support/SignalMatchers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <juce_audio_formats/juce_audio_formats.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>

namespace
{
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ProgramTest : public ProgramFixture
{
protected:
    const std::vector<std::string> twoBands { "--band", "600,3,1", "--band", "5000,-4,1.2" };
};

TEST_F (ProgramTest, tellsItsVersionAndItsUse)
{
    EXPECT_EQ (solvane ({ "--version" }).output, "SOLVANE " SOLVANE_VERSION "\n");
    EXPECT_THAT (solvane ({ "--help" }).output, AllOf (HasSubstr ("render"), HasSubstr ("params"), HasSubstr ("130")));

    const auto help = solvane ({ "render", "--help" });
    EXPECT_EQ (help.exitCode, 0);

    for (const auto* word : { "--band", "--phase", "--mode", "--gain-scale", "--output-gain", "--block", "--format" })
        EXPECT_THAT (help.output, HasSubstr (word));
}

TEST_F (ProgramTest, theExampleInTheHelpTextWorks)
{
    const auto help = solvane ({ "render", "--help" }).output;
    const auto start = help.find ("solvane render mix.wav");
    ASSERT_NE (start, std::string::npos);

    std::istringstream words (help.substr (start, help.find ('\n', start) - start));
    const std::vector<std::string> arguments { std::istream_iterator<std::string> (words), {} };
    makeInput ("mix.wav");
    EXPECT_EQ (solvane ({ arguments.begin() + 1, arguments.end() }).exitCode, 0);
    EXPECT_THAT (folder.names(), ElementsAre ("better.flac", "mix.wav"));
}

TEST_F (ProgramTest, listsTheParametersInTheOrderOfTheHost)
{
    const auto run = solvane ({ "params" });
    EXPECT_EQ (run.exitCode, 0);

    std::istringstream lines (run.output);
    std::vector<std::string> ids;

    for (std::string line; std::getline (lines, line);)
    {
        std::istringstream words (line);
        std::string number;
        std::string id;
        words >> number >> id;
        ids.push_back (id);
    }

    ASSERT_EQ (ids.size(), 87U); // a heading and 86 parameters
    EXPECT_EQ (ids[1], "paramBypassZVQ");
    EXPECT_EQ (ids[6], "band_active_0");
    EXPECT_EQ (ids[86], "paramGainScale");
}

TEST_F (ProgramTest, listsThePresetsByGroup)
{
    const auto text = solvane ({ "presets" });
    EXPECT_EQ (text.exitCode, 0);
    EXPECT_THAT (text.output, AllOf (HasSubstr ("BASS"), HasSubstr ("BALANCED MASTER")));

    const auto run = solvane ({ "presets", "--json" });
    EXPECT_EQ (run.exitCode, 0);
    const auto presets = nlohmann::json::parse (run.output);
    ASSERT_EQ (presets.size(), 131u);
    EXPECT_EQ (presets[0]["id"], 1);

    for (const auto& preset : presets)
        for (const auto* key : { "id", "category", "group", "name", "lufs", "frequencies", "values", "valuesInUse" })
            EXPECT_TRUE (preset.contains (key)) << key;
}

TEST_F (ProgramTest, tellsPresetValuesThatAreStoredFromThoseInUse)
{
    const auto presets = nlohmann::json::parse (solvane ({ "presets", "--json" }).output);

    const auto presetOf = [&presets] (int id) {
        return *std::find_if (presets.begin(), presets.end(), [id] (const auto& preset) { return preset["id"] == id; });
    };

    // Nine values are stored; the tenth comes from the curve.
    const auto darkPopOfBass = presetOf (4);
    EXPECT_EQ (darkPopOfBass["values"].size(), 9u);
    ASSERT_EQ (darkPopOfBass["valuesInUse"].size(), 10u);
    EXPECT_NEAR (darkPopOfBass["valuesInUse"][9].get<double>(), -73.94, 0.005);

    const auto trumpet = presetOf (40);
    EXPECT_NEAR (trumpet["values"][9].get<double>(), -59.35, 0.005);
    EXPECT_NEAR (trumpet["valuesInUse"][9].get<double>(), -57.50, 0.005);
    EXPECT_EQ (trumpet["values"][8], trumpet["valuesInUse"][8]);

    const auto eightOhEight = presetOf (2);
    EXPECT_EQ (eightOhEight["valuesInUse"][9], 0.0) << "there is no curve through equal values";

    EXPECT_THAT (solvane ({ "presets" }).output, HasSubstr ("-73.9"));
}

TEST_F (ProgramTest, measuresFilesAgainstAPreset)
{
    makeInput ("music.wav");
    const auto text = solvane ({ "measure", "music.wav", "--preset", "808" });
    EXPECT_EQ (text.exitCode, 0) << text.errors;
    EXPECT_THAT (text.output, AllOf (HasSubstr ("music.wav"), HasSubstr ("808")));

    const auto run = solvane ({ "measure", "music.wav", "--json", "--picture", "out.png" });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_TRUE (folder.file ("out.png").existsAsFile());
    const auto files = nlohmann::json::parse (run.output);
    ASSERT_EQ (files.size(), 1u);
    EXPECT_EQ (files[0]["file"], "music.wav");
    EXPECT_EQ (files[0]["sampleRate"], 44100);
    EXPECT_EQ (files[0]["channels"], 2);
    EXPECT_EQ (files[0]["bands"].size(), 10u);
    EXPECT_EQ (files[0]["adjustments"].size(), 10u);
    EXPECT_EQ (files[0]["target"]["id"], 131);
    EXPECT_LT (files[0]["lufs"].get<double>(), 0.0);

    expectRefusal ({ "measure", "missing.wav" }, 3, "missing.wav");
}

TEST_F (ProgramTest, tellsWhatASavedSessionHolds)
{
    const auto block = wrapText ("<ZVQ_Processor><PARAM id=\"paramMode\" value=\"nan\"/>"
                                 "<PARAM id=\"band_gain_0\" value=\"2.0\"/><PARAM id=\"band_gain_0\" value=\"99.0\"/>"
                                 "<settings width=\"1\"/>"
                                 "<settings width=\"700\" height=\"600\" db-scale=\"6.9\" target-set-user=\"1\""
                                 " lufs-overall=\"nan\"/>"
                                 "<reference-track display-name=\"Mine\" file-path=\"/a.wav\"/></ZVQ_Processor>");
    ASSERT_TRUE (folder.file ("session").replaceWithData (block.getData(), block.getSize()));
    const auto run = solvane ({ "state", "session" });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_THAT (run.output, AllOf (HasSubstr ("not set"), HasSubstr ("700 by 600"), HasSubstr ("Room scale: 6 dB")));
    EXPECT_THAT (run.output, AllOf (HasSubstr ("Band 1 Gain: 12.0dB"), HasSubstr ("Mine"), Not (HasSubstr ("Mode"))));

    ASSERT_TRUE (folder.file ("other").replaceWithText ("no session"));
    expectRefusal ({ "state", "other" }, 3, "not a session block");
}

TEST_F (ProgramTest, tellsWhatItDid)
{
    makeInput ("in.wav");
    const auto run = render ("in.wav", "out.wav", { "--mode", "mix", "--band", "2500,-3,1.4", "--output-gain", "-1" });

    EXPECT_THAT (run.output,
                 AllOf (HasSubstr ("in.wav (WAV, 44100 Hz, stereo, 6.86 s)"),
                        HasSubstr ("Mix, linear phase, 278 samples of delay taken off"),
                        HasSubstr ("Band 1: 2500.0Hz, -3.0dB, 1.4Q, STEREO"),
                        HasSubstr ("Output gain -1.00 dB"),
                        HasSubstr ("out.wav (WAV, 16 bits, peak ")));
}

//======================================================================================================================
class ProgramRateTest : public ProgramTest, public testing::WithParamInterface<int>
{
};

TEST_P (ProgramRateTest, givesMusicBackToTheBitWithoutEffect)
{
    const auto rate = std::to_string (GetParam());

    for (const auto* channels : { "1", "2" })
    {
        makeInput ("in.wav", "-r " + rate + " -c " + channels + " -e floating-point -b 32", "gain -3");

        for (const auto* mode : { "mix", "master" })
        {
            render ("in.wav", "out.wav", { "--mode", mode, "--format", "wav-float" });
            EXPECT_EQ (readFloatWav (folder.path ("out.wav")), readFloatWav (folder.path ("in.wav")))
                << channels << " channels, " << mode;
        }
    }
}

TEST_P (ProgramRateTest, keepsRateChannelsAndLength)
{
    const auto rate = std::to_string (GetParam());
    makeInput ("in.flac", "-r " + rate + " -c 1 -b 24", "gain -6 rate " + rate + " trim 0 100001s");

    for (const auto* name : { "out.wav", "out.aiff", "out.flac" })
    {
        render ("in.flac", name, twoBands);
        juce::AudioFormatManager formats;
        formats.registerBasicFormats();
        const std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (folder.file (name)));
        ASSERT_NE (reader, nullptr) << name;
        EXPECT_EQ (reader->sampleRate, GetParam());
        EXPECT_EQ (reader->numChannels, 1U);
        EXPECT_EQ (reader->lengthInSamples, 100001);
    }
}

INSTANTIATE_TEST_SUITE_P (Rates,
                          ProgramRateTest,
                          testing::Values (44100, 48000, 88200, 96000, 176400, 192000),
                          [] (const auto& tested) { return std::to_string (tested.param); });

//======================================================================================================================
struct StoredFormat
{
    const char* name;
    const char* ending;
    int bits;
};

void PrintTo (const StoredFormat& format, std::ostream* stream)
{
    *stream << format.name;
}

class ProgramFormatTest : public ProgramTest, public testing::WithParamInterface<StoredFormat>
{
};

TEST_P (ProgramFormatTest, givesWholeNumbersBackToTheBitWithoutEffect)
{
    const auto& [name, ending, bits] = GetParam();
    makeInput (std::string ("in.") + ending, "-b " + std::to_string (bits));
    render (std::string ("in.") + ending, "out", { "--format", name });

    const auto given = wholeNumbersBySox (folder.path (std::string ("in.") + ending), bits);
    ASSERT_TRUE (folder.file ("out").moveFileTo (folder.file (std::string ("out.") + ending)));
    EXPECT_EQ (given.size(), static_cast<std::size_t> (302400 * 2 * bits / 8));
    EXPECT_TRUE (wholeNumbersBySox (folder.path (std::string ("out.") + ending), bits) == given);
}

TEST_P (ProgramFormatTest, storesTheSameSoundInEveryFormat)
{
    const auto& [name, ending, bits] = GetParam();
    makeInput ("in.wav", "-b 16", "gain -6");
    auto options = twoBands;
    options.insert (options.end(), { "--format", "wav-float" });
    render ("in.wav", "exact.wav", options);
    options.back() = name;
    render ("in.wav", std::string ("out.") + ending, options);
    convertWithSox (folder.path (std::string ("out.") + ending), "-e floating-point -b 32", folder.path ("back.wav"));

    EXPECT_THAT (
        readFloatWav (folder.path ("back.wav")),
        IsSignalNear (readFloatWav (folder.path ("exact.wav")), (bits > 16 ? 0.51 : 1.51) / (1 << (bits - 1))));
}

INSTANTIATE_TEST_SUITE_P (Formats,
                          ProgramFormatTest,
                          testing::Values (StoredFormat { "wav-16", "wav", 16 },
                                           StoredFormat { "wav-24", "wav", 24 },
                                           StoredFormat { "aiff-16", "aiff", 16 },
                                           StoredFormat { "aiff-24", "aiff", 24 },
                                           StoredFormat { "flac-16", "flac", 16 },
                                           StoredFormat { "flac-24", "flac", 24 }),
                          [] (const auto& tested) { return tested.param.ending + std::to_string (tested.param.bits); });

//======================================================================================================================
TEST_F (ProgramTest, rendersAnMp3)
{
    makeInput ("in.mp3", "-C 192.2");
    makeInput ("original.wav", "-e floating-point -b 32");
    const auto run = render ("in.mp3", "out.wav");
    EXPECT_THAT (run.output, HasSubstr ("(MP3, 44100 Hz, stereo, 6."));

    // An encoder puts silence in front. What comes out must be the loop, late by some hundred to two thousand samples.
    const auto original = readFloatWav (folder.path ("original.wav"))[0];
    const auto output = readFloatWav (folder.path ("out.wav"))[0];
    auto best = 0.0;

    for (std::size_t lag = 0; lag < 3000; ++lag)
    {
        auto product = 0.0;
        auto energyOriginal = 0.0;
        auto energyOutput = 0.0;

        for (std::size_t index = 50000; index < 60000; ++index)
        {
            product += static_cast<double> (original[index]) * static_cast<double> (output[index + lag]);
            energyOriginal += static_cast<double> (original[index]) * static_cast<double> (original[index]);
            energyOutput += static_cast<double> (output[index + lag]) * static_cast<double> (output[index + lag]);
        }

        best = std::max (best, product / std::sqrt (energyOriginal * energyOutput));
    }

    EXPECT_GT (best, 0.99);
    EXPECT_GE (output.size(), original.size());
}

TEST_F (ProgramTest, writesTheSameFileTwice)
{
    makeInput ("in.wav", "-b 16", "gain -6");
    render ("in.wav", "a.wav", twoBands);
    render ("in.wav", "b.wav", twoBands);
    EXPECT_TRUE (bytesOf (folder.path ("a.wav")) == bytesOf (folder.path ("b.wav")));
}

TEST_F (ProgramTest, theBlockSizeChangesNothing)
{
    makeInput ("in.wav", "-r 48000 -e floating-point -b 32", "trim 0 1");
    render ("in.wav", "reference.wav", twoBands);

    for (const auto* size : { "1", "7", "64", "8192" })
    {
        auto options = twoBands;
        options.insert (options.end(), { "--block", size });
        render ("in.wav", "out.wav", options);
        EXPECT_THAT (readFloatWav (folder.path ("out.wav")),
                     IsSignalNear (readFloatWav (folder.path ("reference.wav")), 1.0e-6))
            << size;
    }
}

/** Hosts are told apart by the path of their program, and some are served differently. The program is none of them,
    whatever its folder is called. */
TEST_F (ProgramTest, soundsTheSameFromAFolderThatIsCalledLikeAHost)
{
    makeInput ("in.wav", "-b 16", "gain -6");
    render ("in.wav", "expected.wav", twoBands);
    ASSERT_TRUE (folder.file ("ozone auval").createDirectory());
    ASSERT_TRUE (juce::File (SOLVANE_PROGRAM).copyFileTo (folder.file ("ozone auval/solvane")));
    ASSERT_TRUE (folder.file ("ozone auval/solvane").setExecutePermission (true));

    auto arguments = twoBands;
    arguments.insert (arguments.begin(), { "render", folder.path ("in.wav"), folder.path ("out.wav") });
    EXPECT_EQ (runProgram (folder.path ("ozone auval/solvane"), arguments).exitCode, 0);
    EXPECT_TRUE (bytesOf (folder.path ("out.wav")) == bytesOf (folder.path ("expected.wav")));
}

TEST_F (ProgramTest, mayWriteOverItsOwnInput)
{
    makeInput ("in.wav", "-b 16", "gain -6");
    render ("in.wav", "expected.wav", twoBands);
    render ("in.wav", "in.wav", twoBands);
    EXPECT_TRUE (bytesOf (folder.path ("in.wav")) == bytesOf (folder.path ("expected.wav")));
    EXPECT_THAT (folder.names(), ElementsAre ("expected.wav", "in.wav"));
}

TEST_F (ProgramTest, takesFileNamesAsTheyAre)
{
    makeInput ("~ \xc3\xa4 & $HOME.wav");
    render ("~ \xc3\xa4 & $HOME.wav", "out \xe2\x99\xaa.flac");
    EXPECT_TRUE (folder.file ("out \xe2\x99\xaa.flac").existsAsFile());
}

//======================================================================================================================
TEST_F (ProgramTest, refusesBadArguments)
{
    makeInput ("in.wav", "-b 16", "trim 0 0.1");
    const auto with = [] (std::vector<std::string> options)
    {
        options.insert (options.begin(), { "render", "in.wav", "out.wav" });
        return options;
    };

    expectRefusal ({}, 2, "A command is missing");
    expectRefusal ({ "equalise" }, 2, "'equalise' is no command");
    expectRefusal ({ "render" }, 2, "IN is required");
    expectRefusal ({ "render", "in.wav" }, 2, "OUT is required");
    expectRefusal ({ "params", "more" }, 2, "not expected: more");
    expectRefusal (with ({ "third.wav" }), 2, "not expected: third.wav");
    expectRefusal (with ({ "--loud" }), 2, "not expected: --loud");
    expectRefusal (with ({ "--band" }), 2, "--band");
    expectRefusal (with ({ "--band", "100,1,1" }), 2, "outside 320 to 20000 Hz");
    expectRefusal (with ({ "--phase", "zero" }), 2, "'zero' is neither linear nor minimum");
    expectRefusal (with ({ "--mode", "live" }), 2, "'live' is neither mix nor master");
    expectRefusal (with ({ "--gain-scale", "201" }), 2, "'201' is not a number from 0 to 200 percent");
    expectRefusal (with ({ "--gain-scale", "nan" }), 2, "'nan' is not a number");
    expectRefusal (with ({ "--output-gain", "-12.5" }), 2, "'-12.5' is not a number from -12 to 12 dB");
    expectRefusal (with ({ "--block", "0" }), 2, "'0' is not a number from 1 to 8192");
    expectRefusal (with ({ "--block", "8193" }), 2, "'8193' is not a number from 1 to 8192");
    expectRefusal (with ({ "--block", "1.5" }), 2, "'1.5' is not a number from 1 to 8192");
    expectRefusal (with ({ "--format", "mp2" }), 2, "--format mp2 is not known");
    expectRefusal (with ({ "--format", "flac-24" }), 2, "flac-24");
    expectRefusal ({ "render", "in.wav", "out.txt" }, 2, "does not end in .wav, .wave, .rf64");
    expectRefusal ({ "render", "in.wav", "" }, 2, "A file name is empty");

    expectRefusal (with ({ "--mode", "mix", "--mode", "master" }), 2, "--mode is given more than once");
    expectRefusal (with ({ "--block", "1", "--band", "1k,1,1", "--band", "2k,1,1", "--block", "1" }),
                   2,
                   "--block is given more than once");
    expectRefusal (with ({ "--into", "a", "--into", "b" }), 2, "--into is given more than once");
    expectRefusal ({ "measure", "in.wav", "--range", "0-1", "--range", "0-1" }, 2, "--range is given more than once");
    expectRefusal (with ({ "--band", "1000,1,1,ms=0,ms=1" }), 2, "'ms' is given twice");
    expectRefusal (with ({ "--band", "3000,1,1,shelf,solo,shelf" }), 2, "'shelf' is given twice");

    // As where a shell's variable holds nothing.
    for (const auto* option : { "--preset", "--bands", "--state", "--format", "--into" })
        expectRefusal (with ({ option, "" }), 2, std::string (option) + ": what it names is empty");

    for (const auto* option : { "--preset", "--picture", "--range" })
        expectRefusal ({ "measure", "in.wav", option, "" }, 2, std::string (option) + ": what it names is empty");

    auto eleven = with ({});

    for (int band = 0; band < 11; ++band)
        eleven.insert (eleven.end(), { "--band", "1000,1,1" });

    expectRefusal (eleven, 2, "--band was given 11 times");
}

TEST_F (ProgramTest, refusesFilesThatItCannotReadOrServe)
{
    makeInput ("cut.wav");
    writeBytes (folder.path ("cut.wav"), bytesOf (folder.path ("cut.wav")).substr (0, 100000));
    makeInput ("slow.wav", "-r 32000");
    makeInput ("quad.wav", "-c 4");
    writeBytes (folder.path ("text.wav"), "no sound");

    expectRefusal ({ "render", "absent.wav", "out.wav" }, 3, "There is no file");
    expectRefusal ({ "render", ".", "out.wav" }, 3, "is a folder");
    expectRefusal ({ "render", "text.wav", "out.wav" }, 3, "is not a sound file that can be read");
    expectRefusal ({ "render", "cut.wav", "out.wav" }, 3, "ends before its header says so");
    expectRefusal ({ "render", "slow.wav", "out.wav" }, 4, "has 32000 Hz. The filters serve 44100, 48000");
    expectRefusal ({ "render", "quad.wav", "out.wav" }, 4, "has 4 channels");

    auto damaged = bytesOf (folder.path ("slow.wav"));
    damaged.replace (24, 4, std::string ("\x40\xfb\x0f\0", 4));
    writeBytes (folder.path ("damaged.wav"), damaged);
    expectRefusal ({ "render", "damaged.wav", "out.wav" }, 4, "has 1047360 Hz by its header, which cannot be");
}

TEST_F (ProgramTest, refusesPlacesWhereNoFileCanBe)
{
    makeInput ("in.wav", "-b 16", "trim 0 0.1");
    expectRefusal ({ "render", "in.wav", "nowhere/out.wav" }, 5, "There is no folder");
    expectRefusal ({ "render", "in.wav", ".", "--format", "wav-16" }, 5, "is a folder");
    expectRefusal ({ "render", "in.wav", "/dev/null", "--format", "wav-16" }, 5, "is not an ordinary file");
    expectRefusal ({ "render", "in.wav", "/proc/out.wav" }, 5, "could not be made");
}

/** A full disk, as far as a test may fill one: no file may grow beyond a size. The sizes meet the header, the middle,
   and the last bytes, which are written as the file is closed. */
TEST_F (ProgramTest, keepsTheOldFileWhenThereIsNoRoom)
{
    makeInput ("in.wav", "-b 16", "trim 0 1");

    for (const auto* format : { "wav-16", "wav-float", "aiff-24", "flac-16" })
    {
        render ("in.wav", "whole", { "--format", format });
        const auto whole = static_cast<std::uint64_t> (folder.file ("whole").getSize());
        ASSERT_TRUE (folder.file ("in.wav").copyFileTo (folder.file ("out")));
        const auto old = bytesOf (folder.path ("out"));

        for (const auto limit : { std::uint64_t { 10 }, whole / 2, whole - 1 })
        {
            const auto run = solvane ({ "render", "in.wav", "out", "--format", format },
                                      { .folder = {}, .largestFileBytes = limit });
            EXPECT_EQ (run.exitCode, 5) << format << ", " << limit << " bytes";
            EXPECT_THAT (run.errors, HasSubstr ("could not be"));
            EXPECT_THAT (folder.names(), ElementsAre ("in.wav", "out", "whole"));
            EXPECT_TRUE (bytesOf (folder.path ("out")) == old);
        }

        EXPECT_EQ (
            solvane ({ "render", "in.wav", "out", "--format", format }, { .folder = {}, .largestFileBytes = whole })
                .exitCode,
            0);
    }
}

TEST_F (ProgramTest, noticesThatItsListCouldNotBePrinted)
{
    const auto run = runProgram ("/bin/sh", { "-c", "\"" SOLVANE_PROGRAM "\" params >/dev/full" });
    EXPECT_EQ (run.exitCode, 1);
    EXPECT_THAT (run.errors, HasSubstr ("could not be written to"));
}

//======================================================================================================================
TEST_F (ProgramTest, saysWhereTheResultIsOtherThanAsked)
{
    makeInput ("stereo.wav", "-b 16", "gain -6 trim 0 0.1");
    makeInput ("mono.wav", "-b 16 -c 1", "gain -6 trim 0 0.1");
    makeInput ("fast.wav", "-b 16 -r 192000", "gain -6 trim 0 0.1");
    const auto note = [this] (std::vector<std::string> arguments)
    {
        arguments.insert (arguments.begin(), "render");
        const auto run = solvane (arguments);
        EXPECT_EQ (run.exitCode, 0);
        return run.errors;
    };

    EXPECT_THAT (note ({ "stereo.wav", "o.wav", "--band", "1000,6,1" }), HasSubstr ("--mode mix"));
    EXPECT_THAT (note ({ "stereo.wav", "o.wav", "--band", "1000,6,1", "--mode", "mix" }), IsEmpty());
    EXPECT_THAT (note ({ "fast.wav", "o.wav", "--phase", "minimum" }), HasSubstr ("always linear"));
    EXPECT_THAT (note ({ "stereo.wav", "o.wav", "--mode", "mix", "--phase", "minimum", "--band", "3000,-12,1,shelf" }),
                 HasSubstr ("too broad and deep for minimum phase"));
    EXPECT_THAT (
        note ({ "stereo.wav", "o.wav", "--mode", "mix", "--phase", "minimum", "--band", "3000,-12,1,shelf,ms=1" }),
        AllOf (HasSubstr ("on side are too broad and deep for minimum phase"),
               HasSubstr ("no band above 1500 Hz does anything there"),
               Not (HasSubstr ("left and right"))));
    EXPECT_THAT (
        note ({ "mono.wav", "o.wav", "--mode", "mix", "--phase", "minimum", "--band", "3000,-12,1,shelf,ms=1" }),
        Not (HasSubstr ("minimum phase")));
    EXPECT_THAT (note ({ "stereo.wav", "o.wav", "--mode", "mix", "--phase", "minimum", "--band", "3000,-12,1" }),
                 IsEmpty());
    EXPECT_THAT (note ({ "stereo.wav", "o.wav", "--mode", "mix", "--phase", "minimum", "--band", "900,-12,1" }),
                 IsEmpty());
    EXPECT_THAT (note ({ "mono.wav", "o.wav", "--band", "1000,2,1,ms=0" }), HasSubstr ("nothing in a mono file"));
    EXPECT_THAT (note ({ "stereo.wav", "o.wav", "--output-gain", "12" }), HasSubstr ("were cut"));
    EXPECT_THAT (note ({ "stereo.wav", "o.wav", "--output-gain", "12", "--format", "wav-float" }), IsEmpty());
}

TEST_F (ProgramTest, showsAProgressBarOnATerminalAlone)
{
    makeInput ("in.wav", "-b 16", "trim 0 1");
    const auto terminal = runOnTerminal (SOLVANE_PROGRAM,
                                         { "render", folder.path ("in.wav"), folder.path ("out.wav") },
                                         [] (const std::string&) { return false; });

    EXPECT_EQ (terminal.exitCode, 0);
    EXPECT_THAT (terminal.output, AllOf (HasSubstr ("Rendering ["), HasSubstr (" %"), HasSubstr ("Result: ")));

    const auto piped = render ("in.wav", "out.wav");
    EXPECT_THAT (piped.output, Not (HasSubstr ("Rendering")));
}

TEST_F (ProgramTest, leavesNothingAfterControlC)
{
    // A minute at this rate in blocks of one sample: far more than passes between the first line and the key.
    makeInput ("in.wav", "-b 16 -r 192000", "repeat 8");
    makeInput ("out.wav", "-b 8", "trim 0 0.1");
    const auto old = bytesOf (folder.path ("out.wav"));
    const auto run =
        runOnTerminal (SOLVANE_PROGRAM,
                       { "render", folder.path ("in.wav"), folder.path ("out.wav"), "--block", "1" },
                       [] (const std::string& text) { return text.find ("Rendering") != std::string::npos; });

    EXPECT_EQ (run.exitCode, 130);
    EXPECT_THAT (run.output, HasSubstr ("Interrupted; nothing was written."));
    EXPECT_THAT (folder.names(), ElementsAre ("in.wav", "out.wav"));
    EXPECT_TRUE (bytesOf (folder.path ("out.wav")) == old);
}
} // namespace
