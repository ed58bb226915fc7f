#include "support/BinaryXml.h"
#include "support/ProgramFixture.h"

#include <sys/stat.h>
#include <unistd.h>

namespace
{
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/** Settings of `solvane render` that come from files. */
class ProgramSettingsTest : public ProgramFixture
{
protected:
    void SetUp() override { makeInput ("in.wav", "-b 16", "gain -20 trim 0 0.5"); }

    std::string bytesRenderedWith (const std::vector<std::string>& options)
    {
        render ("in.wav", "out.wav", options);
        return bytesOf (folder.path ("out.wav"));
    }

    void writeSession (const std::string& parameters)
    {
        const auto block = wrapText ("<ZVQ_Processor>" + parameters + "</ZVQ_Processor>");
        ASSERT_TRUE (folder.file ("session").replaceWithData (block.getData(), block.getSize()));
    }
};

TEST_F (ProgramSettingsTest, readsBandsFromAFile)
{
    writeBytes (folder.path ("bands"), "# a dip, and air\n\n  2.5k, -3, 1.4\r\n10k,4,1,shelf,ms=1 # on the sides\n");
    EXPECT_TRUE (bytesRenderedWith ({ "--bands", "bands" })
                 == bytesRenderedWith ({ "--band", "2500,-3,1.4", "--band", "10000,4,1,shelf,ms=1" }));
    EXPECT_TRUE (
        bytesRenderedWith ({ "--band", "4k,2,1", "--bands", "bands" })
        == bytesRenderedWith ({ "--band", "2.5k,-3,1.4", "--band", "10k,4,1,shelf,ms=1", "--band", "4k,2,1" }));
}

TEST_F (ProgramSettingsTest, saysWhichLineOfABandsFileIsWrong)
{
    writeBytes (folder.path ("bands"), "# one\n1000,2,1\n100,3,1\n");
    expectRefusal ({ "render", "in.wav", "out.wav", "--bands", "bands" },
                   2,
                   "'bands', line 3: 100,3,1: the frequency 100 is outside 320 to 20000 Hz");
    expectRefusal ({ "render", "in.wav", "out.wav", "--bands", "absent" }, 3, "There is no file 'absent'.");
    expectRefusal ({ "render", "in.wav", "out.wav", "--bands", "." }, 3, "'.' is a folder, not a file.");
    expectRefusal ({ "render", "in.wav", "out.wav", "--state", "absent" }, 3, "There is no file 'absent'.");
    expectRefusal ({ "state", "." }, 3, "'.' is a folder, not a file.");

    // The superuser may read everything.
    if (::geteuid() != 0)
    {
        writeBytes (folder.path ("closed"), "1000,2,1\n");
        ASSERT_EQ (::chmod (folder.path ("closed").c_str(), 0), 0);
        expectRefusal (
            { "render", "in.wav", "out.wav", "--bands", "closed" }, 3, "'closed' may not be read by this user.");
    }

    writeBytes (folder.path ("six"), "1k,1,1\n1k,1,1\n1k,1,1\n1k,1,1\n1k,1,1\n1k,1,1\n");
    std::vector<std::string> tooMany { "render", "in.wav", "out.wav", "--bands", "six" };

    for (int band = 0; band < 5; ++band)
        tooMany.insert (tooMany.end(), { "--band", "2k,1,1" });

    expectRefusal (tooMany, 2, "give 11 bands together");
}

TEST_F (ProgramSettingsTest, takesTheSettingsOfASession)
{
    writeSession ("<PARAM id=\"paramMode\" value=\"1\"/><PARAM id=\"paramPhase\" value=\"0\"/>"
                  "<PARAM id=\"paramOutputGainDb\" value=\"-2\"/><PARAM id=\"paramGainScale\" value=\"50\"/>"
                  "<PARAM id=\"band_active_3\" value=\"1\"/><PARAM id=\"band_frequency_3\" value=\"4000\"/>"
                  "<PARAM id=\"band_gain_3\" value=\"6\"/><PARAM id=\"band_Q_3\" value=\"1.5\"/>"
                  "<PARAM id=\"band_active_5\" value=\"1\"/><PARAM id=\"band_frequency_5\" value=\"9000\"/>"
                  "<PARAM id=\"band_gain_5\" value=\"-4\"/><PARAM id=\"band_highshelf_5\" value=\"1\"/>"
                  "<PARAM id=\"band_midside_5\" value=\"0\"/>");

    const auto run = render ("in.wav", "out.wav", { "--state", "session" });
    EXPECT_THAT (run.output,
                 AllOf (HasSubstr ("Mix, minimum phase"),
                        HasSubstr ("Band 4: 4000.0Hz, 3.0dB (6.0dB asked), 1.5Q, STEREO"),
                        HasSubstr ("Band 6: 9000.0Hz, -2.0dB (-4.0dB asked), high shelf, FULL MID"),
                        Not (HasSubstr ("Band 1:"))));

    const std::vector<std::string> bands { "--band", "4k,6,1.5", "--band", "9k,-4,1,shelf,ms=0", "--mode", "mix" };
    auto same = bands;
    same.insert (same.end(), { "--phase", "minimum", "--output-gain", "-2", "--gain-scale", "50" });
    EXPECT_TRUE (bytesRenderedWith ({ "--state", "session" }) == bytesRenderedWith (same));

    // What is given beside the session counts more.
    auto other = bands;
    other.insert (other.end(), { "--phase", "linear", "--output-gain", "0", "--gain-scale", "100" });
    EXPECT_TRUE (
        bytesRenderedWith ({ "--state", "session", "--phase", "linear", "--output-gain", "0", "--gain-scale", "100" })
        == bytesRenderedWith (other));
}

TEST_F (ProgramSettingsTest, tellsWhatASessionHoldsBesideItsBands)
{
    writeSession ("<PARAM id=\"paramBypassZVQ\" value=\"1\"/><PARAM id=\"band_gain_2\" value=\"3\"/>"
                  "<PARAM id=\"band_frequency_2\" value=\"3000\"/>");
    const auto run = solvane ({ "render", "in.wav", "out.wav", "--state", "session" });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_THAT (run.errors, HasSubstr ("the session's bypass is left out"));
    EXPECT_THAT (run.output, HasSubstr ("Band 3: 3000.0Hz, 3.0dB, 1.0Q, STEREO, switched off and heard all the same"));
}

TEST_F (ProgramSettingsTest, refusesWhatIsNoSession)
{
    writeBytes (folder.path ("other"), "no session");
    expectRefusal ({ "render", "in.wav", "out.wav", "--state", "other" }, 3, "not a session block");
    writeSession ("");
    expectRefusal (
        { "render", "in.wav", "out.wav", "--state", "session", "--band", "1k,1,1" }, 2, "--band excludes --state");
}

/** A session may hold what the plug-in's own controls refuse. */
TEST_F (ProgramSettingsTest, saysWhereALowShelfOfASessionGoesWrong)
{
    writeSession ("<PARAM id=\"paramMode\" value=\"1\"/><PARAM id=\"band_active_0\" value=\"1\"/>"
                  "<PARAM id=\"band_frequency_0\" value=\"1000\"/><PARAM id=\"band_gain_0\" value=\"6\"/>"
                  "<PARAM id=\"band_highshelf_0\" value=\"1\"/>");
    EXPECT_THAT (solvane ({ "render", "in.wav", "out.wav", "--state", "session" }).errors,
                 AllOf (HasSubstr ("nothing is left at "), HasSubstr ("The filter of the bands up to 1500 Hz")));
}
} // namespace
