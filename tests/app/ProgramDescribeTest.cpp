#include "support/ProgramFixture.h"

#include <array>
#include <regex>
#include <set>
#include <sstream>

namespace
{
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAre;

constexpr std::array commands { "render", "match", "measure", "target", "presets", "params", "state" };

/** The manual page and the completions, which the program writes about itself. */
class ProgramDescribeTest : public ProgramFixture
{
protected:
    std::string description (const std::string& form)
    {
        const auto run = solvane ({ "describe", form });
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        EXPECT_THAT (run.output, Not (IsEmpty()));
        return run.output;
    }

    /** All options that a command's help shows. */
    std::set<std::string> optionsOf (const std::string& command)
    {
        const auto help = solvane ({ command, "--help" }).output;
        const std::regex option ("\n  (?:-[a-z],)?(--[a-z-]+)");
        return { std::sregex_token_iterator (help.begin(), help.end(), option, 1), {} };
    }

    /** What bash offers for the last of the words. */
    std::vector<std::string> offeredByBash (const std::vector<std::string>& words)
    {
        writeBytes (folder.path ("completion"), description ("bash"));
        std::string list;

        for (const auto& word : words)
            list += " '" + word + "'";

        const auto script = "source completion; COMP_WORDS=(" + list
                            + "); COMP_CWORD=" + std::to_string (words.size() - 1)
                            + "; _solvane; for reply in \"${COMPREPLY[@]}\"; do echo \"$reply\"; done";
        const auto run =
            runProgram ("/bin/bash", { "-c", script }, { .folder = folder.path ("."), .largestFileBytes = {} });
        EXPECT_EQ (run.errors, "");

        std::vector<std::string> offers;
        std::istringstream lines (run.output);

        for (std::string line; std::getline (lines, line);)
            offers.push_back (line);

        return offers;
    }
};

TEST_F (ProgramDescribeTest, everyOptionOfTheHelpIsInEveryForm)
{
    const auto page = std::regex_replace (description ("man"), std::regex ("\\\\-"), "-");
    const auto bash = description ("bash");
    const auto zsh = description ("zsh");

    for (const auto* command : commands)
    {
        const auto options = optionsOf (command);
        EXPECT_THAT (options, Contains ("--help"));

        for (const auto& option : options)
        {
            EXPECT_THAT (page, HasSubstr ("\\fB" + option + "\\fR")) << command;
            EXPECT_THAT (bash, HasSubstr (option)) << command;
            EXPECT_THAT (zsh, testing::AnyOf (HasSubstr ("'" + option + "["), HasSubstr (option + "=["))) << command;
        }
    }
}

TEST_F (ProgramDescribeTest, theManualPageIsWellFormed)
{
    writeBytes (folder.path ("solvane.1"), description ("man"));
    const auto run = runProgram ("/usr/bin/groff",
                                 { "-man", "-ww", "-Tutf8", "-rLL=500n", "solvane.1" },
                                 { .folder = folder.path ("."), .largestFileBytes = {} });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_EQ (run.errors, "");
    EXPECT_THAT (run.output, AllOf (HasSubstr ("render"), HasSubstr ("130 interrupted")));
    EXPECT_EQ (run.output.find ("Exit status"), run.output.rfind ("Exit status")) << "told once, for all commands";

    // A line that begins with a dot or a quote would vanish as a command to the formatter.
    EXPECT_THAT (run.output, HasSubstr ("solvane render mix.wav better.flac"));
}

TEST_F (ProgramDescribeTest, bashCompletesCommandsOptionsWordsAndFiles)
{
    makeInput ("my mix.wav", "-b 16", "trim 0 0.01");

    EXPECT_THAT (offeredByBash ({ "solvane", "" }),
                 UnorderedElementsAre ("render", "match", "measure", "target", "presets", "params", "state"));
    EXPECT_THAT (offeredByBash ({ "solvane", "me" }), ElementsAre ("measure"));
    EXPECT_THAT (offeredByBash ({ "solvane", "--v" }), ElementsAre ("--version"));
    EXPECT_THAT (offeredByBash ({ "solvane", "measure", "--p" }), UnorderedElementsAre ("--preset", "--picture"));
    EXPECT_THAT (offeredByBash ({ "solvane", "render", "in.wav", "--mode", "" }),
                 UnorderedElementsAre ("mix", "master"));
    EXPECT_THAT (offeredByBash ({ "solvane", "render", "--phase", "=", "li" }), ElementsAre ("linear"));
    EXPECT_THAT (offeredByBash ({ "solvane", "render", "--phase", "=" }), UnorderedElementsAre ("linear", "minimum"));
    EXPECT_THAT (offeredByBash ({ "solvane", "render", "my" }), ElementsAre ("my mix.wav"));
    EXPECT_THAT (offeredByBash ({ "solvane", "render", "--gain-scale", "" }), IsEmpty());
    EXPECT_THAT (offeredByBash ({ "solvane", "measure", "my mix.wav", "" }), IsSupersetOf ({ "my mix.wav" }));
}

/** The shell's own reading of the file, and what its completion system is told. */
TEST_F (ProgramDescribeTest, zshTakesItsCompletion)
{
    ASSERT_TRUE (folder.file ("functions").createDirectory());
    writeBytes (folder.path ("functions/_solvane"), description ("zsh"));
    EXPECT_THAT (description ("zsh"), testing::StartsWith ("#compdef solvane\n"));

    // A terminal within the shell, in which a user presses the key for completion, and then Return.
    writeBytes (folder.path ("press"),
                "zmodload zsh/zpty\n"
                "zpty shell TERM=vt100 zsh -f -i\n"
                "zpty -w shell \"fpath=($PWD/functions \\$fpath); autoload -U compinit; compinit -u -D; "
                "solvane() { print -r -- RAN:\\$* }; echo rea''dy\"\n"
                "zpty -r shell output '*ready*'\n"
                "zpty -w -n shell \"solvane $1\"$'\\t\\n'\n"
                "zpty -r shell output '*RAN:*[[:cntrl:]]'\n"
                "print -r -- \"${${output##*RAN:}%%[[:cntrl:]]*}\"\n"
                "zpty -d shell\n");

    const auto completed = [this] (const std::string& typed)
    {
        return runProgram ("/usr/bin/timeout",
                           { "60", "zsh", "-f", "press", typed },
                           { .folder = folder.path ("."), .largestFileBytes = {} })
            .output;
    };

    EXPECT_EQ (completed ("mea"), "measure\n");
    EXPECT_EQ (completed ("render --mode mi"), "render --mode mix\n");
    EXPECT_EQ (completed ("render --phase=l"), "render --phase=linear\n");
    EXPECT_EQ (completed ("measure --pic"), "measure --picture\n");
    EXPECT_EQ (completed ("measure fun"), "measure functions\n");
}
} // namespace
