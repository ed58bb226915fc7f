#include "support/ProgramFixture.h"

#include <cstring>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{
using testing::ElementsAre;
using testing::HasSubstr;

/** The program between pipes, with streams that are closed, and with signals while it waits. */
class ProgramStreamsTest : public ProgramFixture
{
protected:
    void SetUp() override
    {
        makeInput ("in.wav", "-b 16", "trim 0 3 gain -12");
        ASSERT_TRUE (folder.file ("tmp").createDirectory());
    }

    /** By a shell in the folder, which knows the program as $S. One that hangs is killed, and has failed. */
    ProgramRun shell (const std::string& command)
    {
        return runProgram ("/bin/sh",
                           { "-c", "export TMPDIR=tmp; S='timeout -s KILL 120 " SOLVANE_PROGRAM "'; " + command },
                           { .folder = folder.path ("."), .largestFileBytes = {} });
    }

    [[nodiscard]] bool noTemporaryFileIsLeft() const
    {
        return folder.file ("tmp").getNumberOfChildFiles (juce::File::findFilesAndDirectories) == 0;
    }

    const std::string band = " --band 3000,3,1 ";
};

//======================================================================================================================
TEST_F (ProgramStreamsTest, aClosedStandardOutputIsOneThatCannotBeWrittenTo)
{
    for (const auto* command : { "measure in.wav", "presets", "params", "--version", "render in.wav out.wav" })
    {
        const auto run = shell (std::string ("$S ") + command + " >&-");
        EXPECT_EQ (run.exitCode, 1) << command;
        EXPECT_THAT (run.errors, HasSubstr ("The standard output could not be written to")) << command;
    }

    const auto run = shell ("$S render - - >&- < in.wav");
    EXPECT_EQ (run.exitCode, 5);
    EXPECT_THAT (run.errors, HasSubstr ("The standard output could not be written to"));
    EXPECT_TRUE (noTemporaryFileIsLeft());
}

TEST_F (ProgramStreamsTest, aClosedStandardInputIsOneThatCannotBeRead)
{
    for (const auto* command : { "render - out.wav", "render - -", "measure -" })
    {
        const auto run = shell (std::string ("$S ") + command + " <&-");
        EXPECT_EQ (run.exitCode, 3) << command;
        EXPECT_THAT (run.errors, HasSubstr ("The standard input cannot be read")) << command;
        EXPECT_EQ (run.output, "");
    }

    EXPECT_THAT (folder.names(), ElementsAre ("in.wav", "tmp"));
}

/** A file that got the number of the error stream would hold what is printed there. */
TEST_F (ProgramStreamsTest, aResultIsTheSameWithoutAnyStream)
{
    ASSERT_EQ (shell ("$S render in.wav expected.wav --output-gain 12 --quiet").exitCode, 0);
    EXPECT_EQ (shell ("$S render in.wav out.wav --output-gain 12 2>&-").exitCode, 0);
    EXPECT_EQ (bytesOf (folder.path ("out.wav")), bytesOf (folder.path ("expected.wav")));
    EXPECT_EQ (shell ("$S render in.wav none.wav --output-gain 12 --quiet <&- >&- 2>&-").exitCode, 0);
    EXPECT_EQ (bytesOf (folder.path ("none.wav")), bytesOf (folder.path ("expected.wav")));
    EXPECT_EQ (shell ("$S render absent.wav out.wav 2>&-").exitCode, 3);
}

//======================================================================================================================
TEST_F (ProgramStreamsTest, aPipeMayStandForAFile)
{
    ASSERT_EQ (shell ("$S render in.wav expected.wav" + band).exitCode, 0);
    const auto measured = solvane ({ "measure", "in.wav", "--json" }).output;
    ASSERT_EQ (::mkfifo (folder.path ("pipe.wav").c_str(), 0600), 0);

    const auto named = shell ("cat in.wav > pipe.wav & $S render pipe.wav named.wav" + band);
    EXPECT_EQ (named.exitCode, 0) << named.errors;
    EXPECT_EQ (bytesOf (folder.path ("named.wav")), bytesOf (folder.path ("expected.wav")));

    // As a shell's `<(cat in.wav)`.
    const auto substituted = shell ("cat in.wav | $S render /dev/fd/5 substituted.wav" + band + "5<&0 < /dev/null");
    EXPECT_EQ (substituted.exitCode, 0) << substituted.errors;
    EXPECT_EQ (bytesOf (folder.path ("substituted.wav")), bytesOf (folder.path ("expected.wav")));

    auto measuredPipe = shell ("cat in.wav > pipe.wav & $S measure pipe.wav --json");
    EXPECT_EQ (measuredPipe.exitCode, 0) << measuredPipe.errors;
    ASSERT_THAT (measuredPipe.output, HasSubstr ("\"pipe.wav\""));
    EXPECT_EQ (measuredPipe.output.replace (measuredPipe.output.find ("\"pipe.wav\""), 10, "\"in.wav\""), measured);

    const auto streams = shell ("cat in.wav | $S render /dev/stdin /dev/stdout" + band + "> streams.wav");
    EXPECT_EQ (streams.exitCode, 0) << streams.errors;
    EXPECT_EQ (bytesOf (folder.path ("streams.wav")), bytesOf (folder.path ("expected.wav")));

    const auto bands = shell ("echo 3000,3,1 > pipe.wav & $S render in.wav bands.wav --bands pipe.wav");
    EXPECT_EQ (bands.exitCode, 0) << bands.errors;
    EXPECT_EQ (bytesOf (folder.path ("bands.wav")), bytesOf (folder.path ("expected.wav")));
    EXPECT_TRUE (noTemporaryFileIsLeft());
}

TEST_F (ProgramStreamsTest, saysWhatIsNoFileToReadOrWrite)
{
    expectRefusal ({ "render", "/dev/zero", "out.wav" }, 3, "'/dev/zero' is a device, not a file");
    expectRefusal ({ "render", "in.wav", "/dev/full", "--format", "wav-16" }, 5, "is not an ordinary file");

    const auto substituted = shell ("$S render in.wav /dev/fd/5 --format wav-16 5>&1 | cat");
    EXPECT_THAT (substituted.errors, HasSubstr ("'/dev/fd/5' is not an ordinary file"));

    const auto terminal = runOnTerminal (
        SOLVANE_PROGRAM, { "render", "-", folder.path ("out.wav") }, [] (const std::string&) { return false; });
    EXPECT_EQ (terminal.exitCode, 3);
    EXPECT_THAT (terminal.output, HasSubstr ("The standard input is a terminal"));

    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    ASSERT_LT (folder.path ("socket").size(), sizeof (address.sun_path));
    std::strcpy (address.sun_path, folder.path ("socket").c_str());
    const auto socket = ::socket (AF_UNIX, SOCK_STREAM, 0);
    ASSERT_EQ (::bind (socket, reinterpret_cast<const sockaddr*> (&address), sizeof (address)), 0);
    expectRefusal ({ "measure", "socket" }, 3, "'socket' is a socket, not a file");
    ::close (socket);
}

TEST_F (ProgramStreamsTest, theStandardInputIsNamedOnce)
{
    constexpr auto sentence = "The standard input can be read only once, and was named 2 times.";
    expectRefusal ({ "match", "-", "-", "out.wav" }, 2, sentence);
    expectRefusal ({ "match", "in.wav", "-", "/dev/stdin", "out.wav" }, 2, sentence);
    expectRefusal ({ "render", "-", "out.wav", "--fit", "--reference", "-" }, 2, sentence);
    expectRefusal ({ "target", "-", "in.wav", "-", "-o", "my.target" }, 2, sentence);
    expectRefusal ({ "measure", "-", "-" }, 2, sentence);
    expectRefusal ({ "render", "in.wav", "--into", "out", "--smart-bands", "--reference", "-" },
                   2,
                   "With --into a reference is a file, and not the standard input, which can be read only once.");

    const auto once = shell ("cat in.wav | $S match - in.wav - --overwrite > out.wav");
    EXPECT_EQ (once.exitCode, 0) << once.errors;
}

//======================================================================================================================
/** What a pipe has taken beyond its own room has been read, so the program stands in the middle of the input. */
TEST_F (ProgramStreamsTest, aSignalWhileItWaitsForInputLeavesNothing)
{
    for (const auto* signal : { "TERM", "HUP", "KILL" })
    {
        const auto run = shell (std::string ("mkfifo pipe; exec 5<>pipe; \"") + SOLVANE_PROGRAM
                                + "\" render - - <&5 >out.wav 5>&- & child=$!; head -c 300000 in.wav >&5; kill -"
                                + signal + " $child; wait $child; echo $?; rm pipe out.wav");
        EXPECT_EQ (run.output, std::string (signal) == "KILL" ? "137\n" : "130\n") << run.errors;
        EXPECT_TRUE (noTemporaryFileIsLeft()) << signal;
    }

    EXPECT_THAT (folder.names(), ElementsAre ("in.wav", "tmp"));
}

// The thread sanitizer keeps signals back until a write that blocks returns, which is what this must not wait for.
#if ! defined(__SANITIZE_THREAD__)
/** Nobody reads the list, which is longer than a pipe has room for: the system does not come back from printing. */
TEST_F (ProgramStreamsTest, aSecondSignalEndsItWhateverItWaitsFor)
{
    ASSERT_GT (solvane ({ "presets", "--json" }).output.size(), 70000u);
    const auto run = shell ("mkfifo pipe; exec 5<>pipe; '" SOLVANE_PROGRAM
                            "' presets --json >&5 5>&- & child=$!; head -c 1 <&5 > /dev/null; kill -TERM $child; "
                            "kill -HUP $child; wait $child; echo $?");
    EXPECT_EQ (run.output, "130\n");
}
#endif
} // namespace
