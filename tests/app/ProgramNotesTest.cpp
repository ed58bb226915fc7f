#include "support/ProgramFixture.h"

#include <cmath>

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
} // namespace
