#include "support/ProgramFixture.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>

namespace
{
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/** What `solvane render` says of its bands: how they act, and where the result is other than asked. */
class ProgramNotesTest : public ProgramFixture
{
protected:
    void SetUp() override
    {
        makeInput ("in.wav", "-b 16", "gain -20 trim 0 0.1");
        makeInput ("fast.wav", "-b 16 -r 192000", "gain -20 trim 0 0.1");
        makeInput ("mono.wav", "-b 16 -c 1", "gain -20 trim 0 0.1");
    }

    ProgramRun rendered (std::vector<std::string> options, const std::string& input = "in.wav")
    {
        options.insert (options.begin(), { "render", input, "out.wav" });
        auto run = solvane (options);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        return run;
    }

    std::string notesOn (const std::vector<std::string>& options, const std::string& input = "in.wav")
    {
        return rendered (options, input).errors;
    }
};

TEST_F (ProgramNotesTest, aBandIsPrintedAsItActs)
{
    EXPECT_THAT (rendered ({ "--band", "4000,6,1" }).output, HasSubstr ("Band 1: 4000.0Hz, 4.0dB (6.0dB asked), 1.0Q"));
    EXPECT_THAT (rendered ({ "--band", "4000,-3.5,1" }).output, HasSubstr ("4000.0Hz, -3.5dB, 1.0Q"));
    EXPECT_THAT (rendered ({ "--mode", "mix", "--band", "4000,6,1" }).output, HasSubstr ("4000.0Hz, 6.0dB, 1.0Q"));
    EXPECT_THAT (rendered ({ "--mode", "mix", "--band", "4000,6,1", "--gain-scale", "50" }).output,
                 HasSubstr ("4000.0Hz, 3.0dB (6.0dB asked), 1.0Q"));
    EXPECT_THAT (rendered ({ "--mode", "mix", "--band", "4000,-8,1", "--gain-scale", "200" }).output,
                 HasSubstr ("4000.0Hz, -12.0dB (-8.0dB asked), 1.0Q"));
    EXPECT_THAT (rendered ({ "--band", "4000,3,1", "--gain-scale", "200" }).output,
                 HasSubstr ("4000.0Hz, 4.0dB (3.0dB asked), 1.0Q"));
    EXPECT_THAT (rendered ({ "--band", "4000,3,1,solo", "--band", "6000,3,1" }).output,
                 AllOf (HasSubstr ("STEREO, solo\n"), HasSubstr ("STEREO, silent beside the solo\n")));
}

/** The figure that is printed is the one that is heard. */
TEST_F (ProgramNotesTest, theGainThatIsPrintedIsHeard)
{
    convertWithSox (
        "-n", "-r 48000 -c 1 -e floating-point -b 32", folder.path ("sine.wav"), "synth 1 sine 4000 vol 0.1");

    const auto gainOf = [this] (const std::vector<std::string>& options)
    {
        std::ignore = rendered (options, "sine.wav");
        const auto in = readFloatWav (folder.path ("sine.wav"))[0];
        const auto out = readFloatWav (folder.path ("out.wav"))[0];
        auto before = 0.0;
        auto after = 0.0;

        for (std::size_t index = 12000; index < 36000; ++index)
        {
            before += static_cast<double> (in[index]) * static_cast<double> (in[index]);
            after += static_cast<double> (out[index]) * static_cast<double> (out[index]);
        }

        return 10.0 * std::log10 (after / before);
    };

    EXPECT_NEAR (gainOf ({ "--band", "4000,6,0.7" }), 4.0, 0.1);
    EXPECT_NEAR (gainOf ({ "--band", "4000,3,0.7", "--gain-scale", "200" }), 4.0, 0.1);
    EXPECT_NEAR (gainOf ({ "--mode", "mix", "--band", "4000,-8,0.7", "--gain-scale", "200" }), -12.0, 0.15);
}

TEST_F (ProgramNotesTest, aShelfInTheLowGroupIsRefused)
{
    expectRefusal ({ "render", "in.wav", "out.wav", "--band", "1000,6,1,shelf" }, 2, "a high shelf starts at 1600 Hz");
    expectRefusal ({ "render", "in.wav", "out.wav", "--band", "1.59k,6,1,shelf" }, 2, "a high shelf starts at 1600 Hz");
    EXPECT_THAT (notesOn ({ "--band", "1.6k,3,1,shelf" }), IsEmpty());
}

TEST_F (ProgramNotesTest, takesFrequenciesInThousands)
{
    EXPECT_THAT (rendered ({ "--band", "2.5k,-3,1", "--band", "16K,1,1,shelf" }).output,
                 AllOf (HasSubstr ("Band 1: 2500.0Hz"), HasSubstr ("Band 2: 16000.0Hz")));
    expectRefusal ({ "render", "in.wav", "out.wav", "--band", "21k,1,1" }, 2, "outside 320 to 20000 Hz");
    expectRefusal ({ "render", "in.wav", "out.wav", "--band", "2k5,1,1" }, 2, "'2k5' is not a number");
}

TEST_F (ProgramNotesTest, cutsThatAddUpToMoreThanEverythingAreToldOf)
{
    const std::vector<std::string> threeCuts { "--mode", "mix",        "--band", "3000,-12,1",
                                               "--band", "3000,-12,1", "--band", "3000,-12,1" };
    EXPECT_THAT (notesOn (threeCuts),
                 AllOf (HasSubstr ("on left and right nothing is left at "),
                        testing::ContainsRegex ("the polarity is turned and (29.0|30.0) Hz comes out at 1.9 dB"),
                        HasSubstr ("adds up in amplitude, not in dB")));
    EXPECT_THAT (notesOn (threeCuts, "mono.wav"), HasSubstr ("on the one channel nothing is left at "));

    auto minimum = threeCuts;
    minimum.insert (minimum.end(), { "--phase", "minimum" });
    EXPECT_THAT (notesOn (minimum), AllOf (HasSubstr ("nothing is left at "), Not (HasSubstr ("polarity"))));

    // On the middle alone, by one band there and one on both.
    EXPECT_THAT (notesOn ({ "--mode", "mix", "--band", "3000,-12,1", "--band", "3000,-12,1,ms=0" }),
                 AllOf (HasSubstr ("on the middle nothing is left"), Not (HasSubstr ("on the sides nothing"))));

    // One cut of each group leaves 24 dB less at the border, which is what was asked for.
    EXPECT_THAT (notesOn ({ "--mode", "mix", "--band", "1500,-12,0.7", "--band", "1600,-12,0.7" }),
                 Not (HasSubstr ("nothing is left")));
    EXPECT_THAT (notesOn ({ "--mode", "mix", "--band", "3000,-12,1" }), IsEmpty());
    EXPECT_THAT (notesOn ({ "--mode", "mix", "--band", "3000,-12,1,solo" }), IsEmpty());
}

TEST_F (ProgramNotesTest, aBandThatMissesItsGainIsToldOf)
{
    EXPECT_THAT (notesOn ({ "--mode", "mix", "--band", "320,12,5" }),
                 HasSubstr ("at 320 Hz (band 1) left and right should come out at 12.0 dB, and come out at 9.8 dB."));
    EXPECT_THAT (notesOn ({ "--mode", "mix", "--band", "320,12,1" }), IsEmpty());
    EXPECT_THAT (notesOn ({ "--mode", "mix", "--band", "2000,12,1", "--band", "2000,12,1" }), IsEmpty());
    EXPECT_THAT (notesOn ({ "--band", "4000,4,1" }), IsEmpty());
}

/** Seven samples that are no numbers, of two channels and on both sides of a second. */
TEST_F (ProgramNotesTest, samplesThatAreNoNumbersAreCounted)
{
    convertWithSox (recordedLoop(), "-e floating-point -b 32", folder.path ("float.wav"), "trim 0 3 gain -12");
    auto signal = readFloatWav (folder.path ("float.wav"));
    const auto infinite = std::numeric_limits<float>::infinity();

    for (const std::size_t index : { 100u, 101u, 20000u })
        signal[0][index] = std::numeric_limits<float>::quiet_NaN();

    for (const std::size_t index : { 100u, 60000u, 70000u, 132000u })
        signal[1][index] = index == 60000u ? -infinite : infinite;

    writeFloatWav (folder.path ("bad.wav"), signal, 44100);
    auto silenced = signal;

    for (auto& channel : silenced)
        for (auto& sample : channel)
            sample = std::isfinite (sample) ? sample : 0.0f;

    writeFloatWav (folder.path ("silenced.wav"), silenced, 44100);
    ASSERT_EQ (solvane ({ "render", "silenced.wav", "expected.wav", "--band", "5k,3,1" }).exitCode, 0);

    const auto run = rendered ({ "--band", "5k,3,1" }, "bad.wav");
    EXPECT_THAT (run.errors, HasSubstr ("Note: 7 samples of the input are no finite numbers and count as silence.\n"));
    EXPECT_EQ (bytesOf (folder.path ("out.wav")), bytesOf (folder.path ("expected.wav")));
    EXPECT_EQ (nlohmann::json::parse (rendered ({ "--json" }, "bad.wav").output)[0]["notFiniteSamples"], 7);
    EXPECT_EQ (nlohmann::json::parse (rendered ({ "--json" }, "silenced.wav").output)[0]["notFiniteSamples"], 0);

    const auto measured = [this] (const std::string& name, std::vector<std::string> options)
    {
        options.insert (options.begin(), { "measure", name, "--json" });
        auto measuredRun = solvane (options);
        EXPECT_EQ (measuredRun.exitCode, 0) << measuredRun.errors;
        return measuredRun;
    };

    const auto whole = measured ("bad.wav", {});
    EXPECT_THAT (whole.errors, HasSubstr ("7 samples of bad.wav are no finite numbers and count as silence."));
    const auto json = nlohmann::json::parse (whole.output)[0];
    EXPECT_EQ (json["notFiniteSamples"], 7);
    EXPECT_THAT (json["notes"][0].get<std::string>(), HasSubstr ("7 samples of bad.wav"));
    EXPECT_EQ (json["bands"], nlohmann::json::parse (measured ("silenced.wav", {}).output)[0]["bands"]);

    // Of the first second nothing counts.
    EXPECT_THAT (measured ("bad.wav", { "--range", "1-2.99" }).errors, HasSubstr ("2 samples of bad.wav"));
    EXPECT_THAT (measured ("bad.wav", { "--range", "1-1.5" }).errors, HasSubstr ("1 sample of bad.wav is no finite"));
    EXPECT_THAT (measured ("bad.wav", { "--range", "1.7-2.99" }).errors, IsEmpty());
}

TEST_F (ProgramNotesTest, whatLiesBetweenTheStepsIsToldOf)
{
    EXPECT_THAT (
        notesOn ({ "--band", "5000,1,1", "--band", "3004.9,3.04,1.04" }),
        HasSubstr ("of band 2 the frequency 3004.9 becomes 3000, the gain 3.04 becomes 3, the Q 1.04 becomes 1. "
                   "Bands go in steps of 10 Hz, 0.1 dB, 0.1 of Q and 0.01 between mid and side."));
    EXPECT_THAT (notesOn ({ "--band", "5000,1,1,ms=0.333" }), HasSubstr ("the mid/side value 0.333 becomes 0.33."));
    EXPECT_THAT (notesOn ({ "--band", "5000,-1.26,1" }), HasSubstr ("the gain -1.26 becomes -1.3."));
    EXPECT_THAT (notesOn ({ "--band", "5000,1,1", "--gain-scale", "49.4" }),
                 HasSubstr ("the gain scale 49.4 becomes 49."));
    EXPECT_THAT (notesOn ({ "--output-gain", "-1.234" }), HasSubstr ("the output gain -1.234 becomes -1.23."));

    // A shelf's Q counts for nothing; and what lies on the steps is no news, be it the last or a crooked one.
    EXPECT_THAT (notesOn ({ "--band", "5000,1,1.04,shelf" }), IsEmpty());

    for (const auto* band : { "320,-2.9,0.5", "20k,0.1,0.7,ms=0.07", "12.34k,-3.3,1.4,ms=0.93", "2510,3.7,1.3" })
        EXPECT_THAT (notesOn ({ "--band", band }), IsEmpty()) << band;
}

/** A header such as is written into a pipe is no reason to refuse a file, and in a file one to be told of. */
TEST_F (ProgramNotesTest, aFileWithAPipesHeaderIsToldOf)
{
    auto bytes = bytesOf (folder.path ("in.wav"));
    const auto data = bytes.find ("data") + 4;
    const auto present = bytes.size() - data - 4;
    bytes.replace (data, 4, "\xf0\xff\xff\x7f");
    writeBytes (folder.path ("piped.wav"), bytes);
    const auto sentence = "the header of the input promises 2147483632 bytes of sound, as that of a file out of a pipe "
                          "does, and there are "
                          + std::to_string (present) + ". They were read to the end.";
    const auto run = rendered ({ "--json" }, "piped.wav");
    EXPECT_EQ (run.errors, "Note: " + sentence + "\n");
    EXPECT_EQ (nlohmann::json::parse (run.output)[0]["notes"][0], sentence);
    EXPECT_THAT (solvane ({ "measure", "piped.wav" }).errors,
                 HasSubstr ("the header of piped.wav promises 2147483632"));
    EXPECT_THAT (notesOn ({}), IsEmpty());

    // Out of a pipe it is as it has to be.
    const auto piped = runProgram ("/bin/sh",
                                   { "-c", "cat piped.wav | '" SOLVANE_PROGRAM "' render - out.wav" },
                                   { .folder = folder.path ("."), .largestFileBytes = {} });
    EXPECT_EQ (piped.exitCode, 0);
    EXPECT_THAT (piped.errors, IsEmpty());
}

TEST_F (ProgramNotesTest, aContainerWithoutTheWidthIsToldOf)
{
    makeInput ("float.wav", "-e floating-point -b 32", "gain -20 trim 0 0.1");
    makeInput ("wide.wav", "-e signed -b 32", "gain -20 trim 0 0.1");
    const auto notes = [this] (std::vector<std::string> arguments)
    {
        arguments.insert (arguments.begin(), "render");
        const auto run = solvane (arguments);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        return run.errors;
    };

    EXPECT_THAT (notes ({ "float.wav", "out.flac" }),
                 HasSubstr ("the input has floating point, which FLAC does not hold: the result has 24 bits."));
    EXPECT_THAT (notes ({ "wide.wav", "out.flac" }),
                 HasSubstr ("the input has 32 bits, which FLAC does not hold: the result has 24 bits."));
    EXPECT_THAT (notes ({ "float.wav", "out.flac", "--format", "flac-24" }), IsEmpty());
    EXPECT_THAT (notes ({ "float.wav", "out.aiff" }), IsEmpty());
    EXPECT_THAT (notes ({ "wide.wav", "out.aiff" }), IsEmpty());
    EXPECT_THAT (notes ({ "in.wav", "out.flac" }), IsEmpty());
}
} // namespace
