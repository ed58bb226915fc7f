#include "support/BinaryXml.h"
#include "support/ProgramFixture.h"

#include <nlohmann/json.hpp>

namespace
{
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/** Names of files as the system allows them: any bytes. */
class ProgramNamesTest : public ProgramFixture
{
protected:
    /** A piece of music under a name that sox need not understand. */
    void makeInputCalled (const std::string& name)
    {
        makeInput ("plain.wav", "-b 16", "trim 0 1.2 gain -6");
        writeBytes (folder.path (name), bytesOf (folder.path ("plain.wav")));
    }

    const std::string latin = "g\xe4ste.wav";
    const std::string steering = "red\x1b[31m.wav";
};

TEST_F (ProgramNamesTest, aNameThatIsNotUnicodeWorks)
{
    makeInputCalled (latin);
    const auto one = solvane ({ "render", latin, "out\xfc.wav", "--band", "3k,2,1" });
    EXPECT_EQ (one.exitCode, 0) << one.errors;
    EXPECT_THAT (one.output, AllOf (HasSubstr ("g\\xe4ste.wav"), HasSubstr ("out\\xfc.wav"), Not (HasSubstr (latin))));
    ASSERT_EQ (solvane ({ "render", "plain.wav", "expected.wav", "--band", "3k,2,1" }).exitCode, 0);
    EXPECT_EQ (bytesOf (folder.path ("out\xfc.wav")), bytesOf (folder.path ("expected.wav")));

    const auto many = solvane ({ "render", "--into", "out", "--json", latin, "plain.wav" });
    EXPECT_EQ (many.exitCode, 0) << many.errors;
    EXPECT_THAT (nlohmann::json::parse (many.output)[0]["input"].get<std::string>(), HasSubstr ("ste.wav"));
    EXPECT_EQ (bytesOf (folder.path ("out/" + latin)), bytesOf (folder.path ("out/plain.wav")));

    const auto measured = solvane ({ "measure", "--json", latin, "plain.wav", "--picture", "p\xe4.png" });
    EXPECT_EQ (measured.exitCode, 0) << measured.errors;
    const auto list = nlohmann::json::parse (measured.output);
    ASSERT_EQ (list.size(), 2u);
    EXPECT_EQ (list[0]["bands"], list[1]["bands"]);
    EXPECT_THAT (bytesOf (folder.path ("p\xe4.png")), testing::StartsWith ("\x89PNG"));
}

TEST_F (ProgramNamesTest, nothingThatIsPrintedSteersTheTerminal)
{
    makeInputCalled (steering);
    const auto isHarmless = [this] (const std::vector<std::string>& arguments, const std::string& shown)
    {
        const auto run = solvane (arguments);
        EXPECT_THAT (run.output + run.errors, AllOf (Not (HasSubstr ("\x1b")), HasSubstr (shown))) << arguments[0];
    };

    isHarmless ({ "render", steering, "o" + steering, "--output-gain", "12" }, "red\\x1b[31m.wav");
    isHarmless ({ "render", "--into", "out", steering, "plain.wav", "--output-gain", "12" }, "red\\x1b[31m.wav: ");
    isHarmless ({ "render", "--into", "out", "--no-overwrite", steering }, "Kept:   out/red\\x1b[31m.wav");
    isHarmless ({ "render", "--into", "out", "absent\x1b", "plain.wav" }, "absent\\x1b");
    isHarmless ({ "render", "absent\x1b", "o.wav" }, "absent\\x1b");
    isHarmless ({ "render", "plain.wav", "o.wav", "--band", "\x1b[2J" }, "\\x1b[2J");
    isHarmless ({ "render", "plain.wav", "o.wav", "--preset", "\x1b[2J" }, "\\x1b[2J");
    isHarmless ({ "render", "plain.wav", "o.wav", "--mode", "\x1b[2J" }, "\\x1b[2J");
    isHarmless ({ "measure", steering, "absent\x1b" }, "red\\x1b[31m.wav (");
    isHarmless ({ "\x1b[2J" }, "'\\x1b[2J' is no command");

    const auto terminal = runOnTerminal (
        SOLVANE_PROGRAM, { "measure", folder.path (steering) }, [] (const std::string&) { return false; });
    EXPECT_THAT (terminal.output, AllOf (HasSubstr ("red\\x1b[31m.wav ["), Not (HasSubstr ("\x1b[31m"))));

    const auto block = wrapText ("<ZVQ_Processor><settings lufs-overall=\"&#27;[2J\" lufs-3=\"&#27;[3J\"/>"
                                 "<reference-track display-name=\"&#27;[4J\" file-path=\"&#27;[5J\"/></ZVQ_Processor>");
    ASSERT_TRUE (folder.file ("session").replaceWithData (block.getData(), block.getSize()));

    for (const auto* shown : { "\\x1b[2J", "\\x1b[3J", "\\x1b[4J", "\\x1b[5J" })
        isHarmless ({ "state", "session" }, shown);
}

/** The name of a file is told as it was typed. */
TEST_F (ProgramNamesTest, messagesNameFilesAsTheyWereTyped)
{
    makeInput ("in.wav", "-b 16", "trim 0 0.1");
    writeBytes (folder.path ("text.wav"), "no sound");
    expectRefusal ({ "render", "./absent.wav", "o.wav" }, 3, "There is no file './absent.wav'.");
    expectRefusal ({ "render", "text.wav", "o.wav" }, 3, ": 'text.wav' is not a sound file");
    expectRefusal ({ "render", "in.wav", "text.wav" }, 5, ": 'text.wav' is there already");
    expectRefusal ({ "render", "in.wav", "none/o.wav" }, 5, "There is no folder 'none'.");
    expectRefusal ({ "measure", "in.wav", "--picture", "none/o.png" }, 5, "There is no folder 'none'.");
    EXPECT_THAT (folder.names(), ElementsAre ("in.wav", "text.wav"));
}
} // namespace
