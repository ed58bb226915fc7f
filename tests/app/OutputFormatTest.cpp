#include "app/OutputFormat.h"

#include "app/CommandError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::HasSubstr;

std::string chosen (const std::string& name, const std::string& path, const std::string& input = "wav-16")
{
    return OutputFormat::choose (name, path, *SoundEncoding::fromName (input)).name();
}

std::string refusal (const std::string& name, const std::string& path)
{
    try
    {
        return "took " + chosen (name, path);
    }
    catch (const CommandError& error)
    {
        EXPECT_EQ (error.code(), ExitCode::badArguments);
        return error.what();
    }
}

TEST (OutputFormatTest, keepsContainerAndWidthWhereNothingElseIsAsked)
{
    for (const auto* input :
         { "wav-8", "wav-24", "wav-double", "aiff-16", "caf-32", "flac-24", "w64-float", "rf64-16" })
    {
        EXPECT_EQ (chosen ("", "out", input), input);
        EXPECT_EQ (chosen ("", "-", input), input);
    }

    EXPECT_EQ (chosen ("", "out.wav", "rf64-24"), "rf64-24");
}

TEST (OutputFormatTest, takesTheContainerFromTheEndingAndKeepsTheWidth)
{
    EXPECT_EQ (chosen ("", "/a/b.WAV", "flac-24"), "wav-24");
    EXPECT_EQ (chosen ("", "/a/b.aif", "wav-16"), "aiff-16");
    EXPECT_EQ (chosen ("", "/a/b.flac", "wav-8"), "flac-8");
    EXPECT_EQ (chosen ("", "/a/b.flac", "wav-float"), "flac-24");
    EXPECT_EQ (chosen ("", "/a.d/b.w64", "wav-float"), "w64-float");
    EXPECT_EQ (chosen ("", "/a/b.mp3", "wav-float"), "mp3");
}

TEST (OutputFormatTest, doesNotStoreLossilyAnewUnlessAsked)
{
    for (const auto* input : { "mp3", "ogg", "opus" })
    {
        EXPECT_EQ (chosen ("", "out", input), "wav-float");
        EXPECT_EQ (chosen ("", "-", input), "wav-float");
        EXPECT_EQ (chosen ("", "out.flac", input), "flac-24");
    }

    EXPECT_EQ (chosen ("", "out.mp3", "mp3"), "mp3");
    EXPECT_EQ (chosen ("", "out.ogg", "opus"), "opus");
    EXPECT_EQ (chosen ("", "out.ogg", "mp3"), "ogg");
}

TEST (OutputFormatTest, aNameOverrulesAnEndingThatSaysNothing)
{
    EXPECT_EQ (chosen ("flac-16", "/a/b.part1"), "flac-16");
    EXPECT_EQ (chosen ("rf64-24", "/a/b.wav"), "rf64-24");
    EXPECT_EQ (chosen ("opus", "/a/b.ogg"), "opus");
    EXPECT_EQ (chosen ("aiff-24", "-"), "aiff-24");
}

TEST (OutputFormatTest, refusesWhatItCannotStoreOrWhatContradictsItself)
{
    EXPECT_THAT (refusal ("", "/a/b.txt"), HasSubstr ("'b.txt' does not end in .wav"));
    EXPECT_THAT (refusal ("", "/a/b.txt"), HasSubstr ("--format"));
    EXPECT_THAT (refusal ("wav-12", "/a/b.wav"), HasSubstr ("wav-8, wav-16, wav-24"));
    EXPECT_THAT (refusal ("flac-16", "/a/b.wav"), HasSubstr ("flac-16"));
    EXPECT_THAT (refusal ("flac-float", "/a/b.flac"), HasSubstr ("FLAC is flac-8, flac-16, flac-24."));
}
} // namespace
