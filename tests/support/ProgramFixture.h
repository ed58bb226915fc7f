#pragma once

#include "support/ProgramRun.h"
#include "support/SoundFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

/** Runs the finished program, as a user would, in a folder of its own. */
class ProgramFixture : public testing::Test
{
protected:
    ProgramRun solvane (const std::vector<std::string>& arguments, ProgramSurroundings surroundings = {})
    {
        surroundings.folder = folder.path (".");
        return runProgram (SOLVANE_PROGRAM, arguments, surroundings);
    }

    /** Renders and expects success without a word on the error stream. */
    ProgramRun render (const std::string& input, const std::string& output, std::vector<std::string> options = {})
    {
        options.insert (options.begin(), { "render", input, output });
        auto run = solvane (options);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        EXPECT_EQ (run.errors, "");
        return run;
    }

    /** A piece of recorded music in the folder. */
    void makeInput (const std::string& name, const std::string& options = "-b 16", const std::string& effects = {})
    {
        convertWithSox (recordedLoop(), options, folder.path (name), effects);
    }

    /** Expects the program to fail with a sentence, and to leave nothing. */
    void expectRefusal (const std::vector<std::string>& arguments, int exitCode, const std::string& text)
    {
        const auto before = folder.names();
        const auto run = solvane (arguments);
        EXPECT_EQ (run.exitCode, exitCode) << text;
        EXPECT_EQ (run.output, "");
        EXPECT_THAT (
            run.errors,
            testing::AllOf (testing::StartsWith ("solvane: "), testing::HasSubstr (text), testing::EndsWith (".\n")));
        EXPECT_EQ (folder.names(), before);
    }

    TemporaryFolder folder;
};
