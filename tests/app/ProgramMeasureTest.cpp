#include "support/ProgramFixture.h"

#include <juce_gui_basics/juce_gui_basics.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <numbers>

namespace
{
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/** `solvane measure` as a user runs it. */
class ProgramMeasureTest : public ProgramFixture
{
protected:
    nlohmann::json measure (std::vector<std::string> arguments)
    {
        arguments.insert (arguments.begin(), { "measure", "--json" });
        const auto run = solvane (arguments);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        return nlohmann::json::parse (run.output);
    }

    /** Pixels in the colour of a target's line in the upper diagram. */
    int targetPixels (const std::string& picture)
    {
        const auto image = juce::ImageFileFormat::loadFrom (folder.file (picture));
        auto count = 0;

        for (int y = 0; y < image.getHeight() / 2; ++y)
            for (int x = 0; x < image.getWidth(); ++x)
                count += image.getPixelAt (x, y) == juce::Colour (0xff8a8a86) ? 1 : 0;

        return count;
    }
};

TEST_F (ProgramMeasureTest, withoutATargetThereIsNoAdjustment)
{
    makeInput ("music.wav");

    for (const auto* preset : { "NO TARGETS", "USER SETTING" })
    {
        const auto text = solvane ({ "measure", "music.wav", "--preset", preset });
        EXPECT_EQ (text.exitCode, 0) << text.errors;
        EXPECT_THAT (text.output, AllOf (HasSubstr ("no target, so no adjustment"), EndsWith ("none\n")));
        EXPECT_THAT (text.output, Not (HasSubstr ("\ntarget")));

        const auto file = measure ({ "music.wav", "--preset", preset, "--picture", "none.png" })[0];
        EXPECT_TRUE (file["adjustments"].is_null());
        EXPECT_TRUE (file["target"]["lufs"].is_null());
        EXPECT_TRUE (file["target"]["values"].is_null());
        EXPECT_EQ (file["target"]["name"], preset);
        EXPECT_EQ (targetPixels ("none.png"), 0);
    }

    measure ({ "music.wav", "--picture", "target.png" });
    EXPECT_GT (targetPixels ("target.png"), 500);
}

TEST_F (ProgramMeasureTest, aRangeIsMeasuredLikeAFileOfThatPart)
{
    makeInput ("music.wav", "-b 16 -r 48000");
    convertWithSox (folder.path ("music.wav"), "", folder.path ("part.wav"), "trim 96000s 144000s");
    convertWithSox (folder.path ("music.wav"), "", folder.path ("end.wav"), "trim 96000s");
    const auto part = measure ({ "part.wav" })[0];
    const auto whole = measure ({ "music.wav" })[0];
    ASSERT_NE (part["bands"], whole["bands"]);

    for (const auto* range : { "2-5", "0:02-0:05", "2.0-0:05.00" })
    {
        const auto ranged = measure ({ "music.wav", "--range", range })[0];
        EXPECT_EQ (ranged["lufs"], part["lufs"]) << range;
        EXPECT_EQ (ranged["bands"], part["bands"]) << range;
        EXPECT_EQ (ranged["range"], nlohmann::json ({ 2.0, 5.0 })) << range;
        EXPECT_EQ (ranged["seconds"], whole["seconds"]);
    }

    const auto end = measure ({ "end.wav" })[0];
    EXPECT_EQ (measure ({ "music.wav", "--range", "2-" })[0]["bands"], end["bands"]);
    EXPECT_EQ (measure ({ "music.wav", "--range", "2-900" })[0]["bands"], end["bands"]);
    EXPECT_THAT (solvane ({ "measure", "music.wav", "--range", "2-5" }).output, HasSubstr ("of which 0:02 to 0:05"));
    expectRefusal ({ "measure", "music.wav", "--range", "5-2", "--json" }, 2, "ends before it starts");
    expectRefusal ({ "measure", "music.wav", "--range", "20-30", "--json" }, 2, "before --range starts");
}

/** Ten seconds, and then more than five minutes that are 6 dB softer. */
TEST_F (ProgramMeasureTest, saysThatTheLastFiveMinutesCount)
{
    constexpr std::size_t rate = 44100;
    PluginRig::Signal sine { std::vector<float> (311 * rate) };

    for (std::size_t index = 0; index < sine[0].size(); ++index)
        sine[0][index] = (index < 10 * rate ? 0.5f : 0.25f)
                         * static_cast<float> (std::sin (0.1 * std::numbers::pi * static_cast<double> (index)));

    writeFloatWav (folder.path ("long.wav"), sine, rate);
    const auto run = solvane ({ "measure", "long.wav", "--json" });
    EXPECT_THAT (run.errors, AllOf (HasSubstr ("its last five minutes, from 0:11 on"), HasSubstr ("--range")));

    // A mean over all of it would be 0.4 dB louder.
    const auto file = nlohmann::json::parse (run.output)[0];
    EXPECT_NEAR (file["lufs"].get<double>(), 20.0 * std::log10 (0.25) - 3.0103 - 0.691, 0.01);
    EXPECT_THAT (file["notes"][0].get<std::string>(), HasSubstr ("five minutes"));

    EXPECT_THAT (solvane ({ "measure", "long.wav", "--json", "--quiet" }).errors, IsEmpty());
    EXPECT_THAT (solvane ({ "measure", "long.wav", "--range", "11-311" }).errors, IsEmpty());
}

TEST_F (ProgramMeasureTest, saysWhyThereIsNoFigure)
{
    makeInput ("second.wav", "-b 16", "trim 0 44100s");
    makeInput ("longer.wav", "-b 16", "trim 0 44500s");
    makeInput ("silent.wav", "-b 16", "vol 0.00001");

    const auto shortOne = solvane ({ "measure", "second.wav" });
    EXPECT_EQ (shortOne.exitCode, 0);
    EXPECT_THAT (shortOne.errors, HasSubstr ("needs more than a second of sound, and of second.wav there are 1.00 s"));
    EXPECT_THAT (solvane ({ "measure", "silent.wav" }).errors, HasSubstr ("nothing in silent.wav is louder than -70"));
    EXPECT_THAT (solvane ({ "measure", "longer.wav" }).errors, IsEmpty());

    const auto file = measure ({ "second.wav" })[0];
    EXPECT_TRUE (file["lufs"].is_null());
    EXPECT_EQ (file["notes"].size(), 1u);
}

TEST_F (ProgramMeasureTest, aBadFileLeavesTheOthersMeasured)
{
    makeInput ("one.wav");
    makeInput ("two.wav", "-b 24");
    writeBytes (folder.path ("bad.wav"), "no sound");

    const auto text = solvane ({ "measure", "one.wav", "bad.wav", "two.wav" });
    EXPECT_EQ (text.exitCode, 1);
    EXPECT_THAT (text.output, AllOf (HasSubstr ("one.wav ("), HasSubstr ("two.wav (")));
    EXPECT_THAT (text.errors, AllOf (HasSubstr ("bad.wav"), HasSubstr ("1 of 3 files could not be measured.")));

    const auto run = solvane ({ "measure", "--json", "--picture", "out.png", "bad.wav", "two.wav" });
    EXPECT_EQ (run.exitCode, 1);
    const auto files = nlohmann::json::parse (run.output);
    ASSERT_EQ (files.size(), 2u);
    EXPECT_EQ (files[0]["file"], "bad.wav");
    EXPECT_THAT (files[0]["error"].get<std::string>(), HasSubstr ("bad.wav"));
    EXPECT_EQ (files[1]["bands"].size(), 10u);
    EXPECT_TRUE (folder.file ("out.png").existsAsFile());

    // Of a single file the status says what was wrong with it.
    expectRefusal ({ "measure", "--json", "bad.wav" }, 3, "bad.wav");
}

TEST_F (ProgramMeasureTest, namesTheFrequenciesOfItsBands)
{
    makeInput ("music.wav");
    EXPECT_EQ (measure ({ "music.wav" })[0]["frequencies"],
               nlohmann::json ({ 320, 640, 1000, 2000, 3000, 4000, 6000, 10000, 15000, 18000 }));
}

/** The decoder compares the size that an MP3 tells with that of the file, which is another where a tag or a picture
    follows the sound, or where the sound is cut. */
TEST_F (ProgramMeasureTest, theDecoderOfMp3sSaysNothingOfItsOwn)
{
    makeInput ("whole.mp3", "-C -2.2");
    const auto whole = bytesOf (folder.path ("whole.mp3"));
    const auto expected = measure ({ "whole.mp3" })[0];
    const std::string tag ("ID3\x04\0\0\0\0\x4e\x10", 10); // of 10000 bytes, seven bits to a byte
    writeBytes (folder.path ("tagged.mp3"), whole + tag + std::string (10000, 'p'));
    writeBytes (folder.path ("cut.mp3"), whole.substr (0, whole.size() / 2));

    const auto tagged = solvane ({ "measure", "tagged.mp3", "--json" });
    EXPECT_EQ (tagged.exitCode, 0);
    EXPECT_EQ (tagged.errors, "");
    EXPECT_EQ (nlohmann::json::parse (tagged.output)[0]["bands"], expected["bands"]);

    const auto cut = solvane ({ "measure", "cut.mp3" });
    EXPECT_EQ (cut.exitCode, 3);
    EXPECT_EQ (cut.errors, "solvane: 'cut.mp3' ends before its header says so, or is damaged.\n");
}
} // namespace
