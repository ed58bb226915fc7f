#include "support/ProgramFixture.h"

#include <nlohmann/json.hpp>

namespace
{
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/** `solvane render --into FOLDER`: many files at once. */
class ProgramManyFilesTest : public ProgramFixture
{
protected:
    void SetUp() override
    {
        makeInput ("a.wav", "-b 16", "gain -20 trim 0 1");
        makeInput ("b.flac", "-b 24", "gain -20 trim 1 1");
        makeInput ("c.aiff", "-b 16", "gain -20 trim 2 1");
    }

    ProgramRun many (std::vector<std::string> arguments)
    {
        arguments.insert (arguments.begin(), { "render", "--band", "3k,3,1" });
        return solvane (arguments);
    }

    [[nodiscard]] std::string out (const std::string& name) const { return folder.path ("out/" + name); }
};

TEST_F (ProgramManyFilesTest, rendersEachFileAsIfItWereAlone)
{
    for (const auto* name : { "a.wav", "b.flac", "c.aiff" })
        EXPECT_EQ (many ({ name, std::string ("alone-") + name }).exitCode, 0);

    for (const auto* jobs : { "1", "2", "8" })
    {
        const auto run = many ({ "--into", "out", "--jobs", jobs, "a.wav", "b.flac", "c.aiff" });
        EXPECT_EQ (run.exitCode, 0) << run.errors;

        for (const auto* name : { "a.wav", "b.flac", "c.aiff" })
            EXPECT_TRUE (bytesOf (out (name)) == bytesOf (folder.path (std::string ("alone-") + name)))
                << name << ", " << jobs << " jobs";

        // In the order in which they were given, whichever was done first.
        const auto first = run.output.find ("Result: out/a.wav");
        const auto second = run.output.find ("Result: out/b.flac");
        const auto third = run.output.find ("Result: out/c.aiff");
        EXPECT_TRUE (first < second && second < third && third != std::string::npos) << run.output;

        for (const auto* line : { "a.wav (WAV, 44100 Hz, ", "b.flac (FLAC, 44100 Hz, ", "c.aiff (AIFF, 44100 Hz, " })
            EXPECT_THAT (run.output, HasSubstr (line));
    }
}

TEST_F (ProgramManyFilesTest, givesFilesTheEndingOfWhatTheyBecome)
{
    makeInput ("d.mp3", "-C 192.2", "gain -20 trim 0 1");
    EXPECT_EQ (many ({ "--into", "out", "a.wav", "d.mp3" }).exitCode, 0);
    EXPECT_TRUE (folder.file ("out/d.wav").existsAsFile());
    EXPECT_EQ (many ({ "--into", "out", "--format", "flac-24", "a.wav", "b.flac" }).exitCode, 0);
    EXPECT_TRUE (folder.file ("out/a.flac").existsAsFile());
    EXPECT_TRUE (folder.file ("out/b.flac").existsAsFile());
}

TEST_F (ProgramManyFilesTest, aBadFileLeavesTheOthersRendered)
{
    writeBytes (folder.path ("bad.wav"), "no sound");
    const auto run = many ({ "--into", "out", "--json", "a.wav", "bad.wav", "b.flac" });
    EXPECT_EQ (run.exitCode, 1);
    EXPECT_THAT (run.errors, AllOf (HasSubstr ("bad.wav"), HasSubstr ("1 of 3 files could not be rendered.")));
    EXPECT_TRUE (folder.file ("out/a.wav").existsAsFile());
    EXPECT_TRUE (folder.file ("out/b.flac").existsAsFile());
    EXPECT_FALSE (folder.file ("out/bad.wav").exists());

    const auto list = nlohmann::json::parse (run.output);
    ASSERT_EQ (list.size(), 3u);
    EXPECT_EQ (list[0]["output"], "out/a.wav");
    EXPECT_THAT (list[1]["error"].get<std::string>(), HasSubstr ("bad.wav"));
    EXPECT_EQ (list[2]["sampleRate"], 44100);
}

TEST_F (ProgramManyFilesTest, refusesTwoFilesForOneName)
{
    ASSERT_TRUE (folder.file ("other").createDirectory());
    makeInput ("other/a.wav", "-b 16", "trim 0 0.1");
    makeInput ("a.mp3", "-C 192.2", "trim 0 0.1");
    expectRefusal ({ "render", "--into", "out", "a.wav", "other/a.wav" }, 2, "would both become 'out/a.wav'");
    expectRefusal ({ "render", "--into", "out", "a.wav", "a.wav" }, 2, "would both become 'out/a.wav'");
    expectRefusal ({ "render", "--into", "other", "a.wav", "other/a.wav" }, 2, "would take the place of 'other/a.wav'");
    expectRefusal ({ "render", "--into", ".", "other/a.wav", "a.mp3" }, 2, "would both become './a.wav'");
    expectRefusal ({ "render", "--into", ".", "a.mp3", "--format", "wav-16", "b.flac", "a.wav" },
                   2,
                   "would take the place of 'a.wav'");
    expectRefusal ({ "render", "--into", "other", "c.aiff", "--format", "wav-16", "--jobs", "0", "a.wav" }, 2, "'0'");
    expectRefusal ({ "render", "--into", "a.wav", "b.flac" }, 5, "The folder 'a.wav' cannot be made");
    expectRefusal ({ "render", "a.wav", "out.wav", "b.flac" }, 2, "Several files need --into FOLDER");
}

TEST_F (ProgramManyFilesTest, mayReplaceItsOwnInputs)
{
    EXPECT_EQ (many ({ "a.wav", "expected.wav" }).exitCode, 0);
    EXPECT_EQ (many ({ "--into", ".", "a.wav", "b.flac" }).exitCode, 0);
    EXPECT_TRUE (bytesOf (folder.path ("a.wav")) == bytesOf (folder.path ("expected.wav")));
}

TEST_F (ProgramManyFilesTest, keepsWhatIsThereIfAsked)
{
    ASSERT_TRUE (folder.file ("out").createDirectory());
    writeBytes (out ("a.wav"), "old");
    const auto run = many ({ "--into", "out", "--no-overwrite", "a.wav", "b.flac" });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_THAT (run.output, HasSubstr ("Kept:   out/a.wav is there already"));
    EXPECT_EQ (bytesOf (out ("a.wav")), "old");
    EXPECT_TRUE (folder.file ("out/b.flac").existsAsFile());

    const auto list = nlohmann::json::parse (many ({ "--into", "out", "--no-overwrite", "--json", "a.wav" }).output);
    EXPECT_EQ (list[0]["skipped"], true);
    expectRefusal ({ "render", "b.flac", "a.wav", "--no-overwrite" }, 5, "'a.wav' is there already");
    EXPECT_EQ (many ({ "b.flac", "new.wav", "--no-overwrite" }).exitCode, 0);
}

TEST_F (ProgramManyFilesTest, showsOneBarForAllFiles)
{
    const auto terminal = runOnTerminal (
        SOLVANE_PROGRAM,
        { "render", folder.path ("a.wav"), folder.path ("b.flac"), "--into", folder.path ("out"), "--jobs", "2" },
        [] (const std::string&) { return false; });
    EXPECT_EQ (terminal.exitCode, 0);
    EXPECT_THAT (terminal.output, HasSubstr ("Rendering 2 files ["));
}

TEST_F (ProgramManyFilesTest, controlCLeavesWholeFilesOnly)
{
    makeInput ("long.wav", "-b 16 -r 192000", "repeat 8");
    const auto run =
        runOnTerminal (SOLVANE_PROGRAM,
                       { "render",
                         "--block",
                         "1",
                         "--jobs",
                         "2",
                         "--into",
                         folder.path ("out"),
                         folder.path ("a.wav"),
                         folder.path ("long.wav") },
                       [] (const std::string& text) { return text.find ("a.wav (WAV") != std::string::npos; });
    EXPECT_EQ (run.exitCode, 130);
    EXPECT_THAT (run.output, HasSubstr ("Interrupted; 1 of 2 files are done."));
    EXPECT_TRUE (folder.file ("out/a.wav").existsAsFile());
    EXPECT_EQ (folder.file ("out").getNumberOfChildFiles (juce::File::findFiles), 1);
}

TEST_F (ProgramManyFilesTest, isQuietIfAsked)
{
    const auto run = many ({ "a.wav", "out.wav", "--quiet", "--band", "320,4,5" });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_THAT (run.output, IsEmpty());
    EXPECT_THAT (run.errors, IsEmpty());
    EXPECT_THAT (many ({ "a.wav", "out.wav", "--band", "320,4,5" }).errors, Not (IsEmpty()));
    EXPECT_THAT (many ({ "absent.wav", "out.wav", "--quiet" }).errors, HasSubstr ("absent.wav"));
}

TEST_F (ProgramManyFilesTest, tellsScriptsWhatItDid)
{
    const auto run =
        solvane ({ "render", "a.wav", "out.wav", "--json", "--gain-scale", "200", "--band", "3k,3,1.4,ms=1" });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    const auto list = nlohmann::json::parse (run.output);
    ASSERT_EQ (list.size(), 1u);
    EXPECT_EQ (list[0]["input"], "a.wav");
    EXPECT_EQ (list[0]["output"], "out.wav");
    EXPECT_EQ (list[0]["mode"], "master");
    EXPECT_EQ (list[0]["phase"], "linear");
    EXPECT_EQ (list[0]["delaySamples"], 178);
    EXPECT_EQ (list[0]["bands"],
               nlohmann::json::parse (R"([{"number":1,"frequency":3000.0,"gain":4.0,"askedGain":3.0,"q":1.4,
                                           "shelf":false,"midSide":1.0,"solo":false,"bypass":false}])"));
    EXPECT_LT (list[0]["peakDb"].get<double>(), 6.0);
}
} // namespace
