#include "support/ProgramFixture.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace
{
using nlohmann::json;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/** Bands by least squares, through the program. */
class ProgramFitTest : public ProgramFixture
{
protected:
    void SetUp() override
    {
        // Long enough for the readings to come to rest.
        makeInput ("in.wav", "-b 24", "gain -12 repeat 2");
        makeInput ("ref.wav",
                   "-b 24",
                   "gain -14 equalizer 500 1q 5 equalizer 3000 1q 8 equalizer 9000 1q -7 treble 4 repeat 2");
    }

    /** Matches in.wav with ref.wav. */
    json matched (std::vector<std::string> options, const std::string& input = "in.wav")
    {
        options.insert (options.begin(), { "match", input, "ref.wav", "out.wav", "--json" });
        const auto run = solvane (options);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        notes = run.errors;
        return json::parse (run.output).at (0);
    }

    /** The root of the mean square of what is left to adjust in the nine bands that are read. */
    static double left (const json& distance)
    {
        auto sum = 0.0;

        for (std::size_t band = 0; band < 9; ++band)
            sum += std::pow (distance["adjustments"][band].get<double>(), 2.0);

        return std::sqrt (sum / 9.0);
    }

    std::string notes;
};

TEST_F (ProgramFitTest, comesNearerThanSmartBands)
{
    for (const auto* mode : { "mix", "master" })
    {
        const auto smart = matched ({ "--mode", mode });
        const auto fitted = matched ({ "--fit", "--mode", mode });
        EXPECT_EQ (notes, "");
        EXPECT_EQ (fitted["before"], smart["before"]);
        EXPECT_GT (left (fitted["before"]), 2.5);
        EXPECT_LT (left (fitted["after"]), 0.15 * left (fitted["before"])) << mode;
        EXPECT_LT (left (fitted["after"]), 0.5 * left (smart["after"])) << mode;
        EXPECT_TRUE (smart["fit"].is_null());
        EXPECT_EQ (fitted["fit"], json ({ { "amount", 100.0 }, { "levels", true } }));
    }
}

TEST_F (ProgramFitTest, keepsTheLoudness)
{
    const auto report = matched ({ "--fit", "--mode", "mix" });
    EXPECT_NE (report["outputGain"], 0.0);
    EXPECT_NEAR (report["after"]["lufs"].get<double>(), report["before"]["lufs"].get<double>(), 0.5);

    const auto asked = matched ({ "--fit", "--mode", "mix", "--output-gain", "1.5" });
    EXPECT_EQ (asked["outputGain"], 1.5);
    EXPECT_EQ (asked["fit"]["levels"], false);
    EXPECT_EQ (asked["smartBands"], report["smartBands"]);
}

TEST_F (ProgramFitTest, aQuietRecordingIsNotTurnedDownForLittle)
{
    makeInput ("quiet.wav", "-b 24", "gain -34 repeat 2");
    const auto report = matched ({ "--fit", "--mode", "mix" }, "quiet.wav");
    EXPECT_LT (report["before"]["lufs"].get<double>(), -28.0);
    EXPECT_GE (report["outputGain"].get<double>(), 0.0);
    EXPECT_THAT (report["smartBands"], Not (IsEmpty()));
    EXPECT_THAT (notes, HasSubstr ("the input is quiet, -"));
}

TEST_F (ProgramFitTest, theResultIsThatOfTheBandsAndTheGain)
{
    for (const auto* phase : { "linear", "minimum" })
    {
        const auto report = matched ({ "--fit", "--phase", phase });
        std::vector<std::string> options { "--phase", phase, "--output-gain", report["outputGain"].dump() };

        for (const auto& band : report["smartBands"])
            options.insert (options.end(),
                            { "--band",
                              band["frequency"].dump() + "," + band["gain"].dump() + "," + band["q"].dump()
                                  + (band["shelf"] == true ? ",shelf" : "") });

        EXPECT_EQ (solvane (
                       [&]
                       {
                           options.insert (options.begin(), { "render", "in.wav", "same.wav" });
                           return options;
                       }())
                       .exitCode,
                   0);
        EXPECT_TRUE (bytesOf (folder.path ("out.wav")) == bytesOf (folder.path ("same.wav"))) << phase;
    }
}

TEST_F (ProgramFitTest, goesAsFarAsItIsTold)
{
    const auto report = matched ({ "--fit", "--amount", "50", "--mode", "mix" });
    EXPECT_EQ (report["fit"]["amount"], 50.0);
    EXPECT_NEAR (left (report["after"]), 0.5 * left (report["before"]), 0.1 * left (report["before"]));

    EXPECT_THAT (matched ({ "--fit", "--amount", "0" })["smartBands"], IsEmpty());
    EXPECT_THAT (notes, HasSubstr ("no band was made: what --amount leaves to do is nowhere as much as 0.5 dB"));

    const auto text = solvane ({ "match", "in.wav", "ref.wav", "out.wav", "--fit", "--amount", "12.5" }).output;
    EXPECT_THAT (text, AllOf (HasSubstr ("Fit:    12.5 % of the way\n"), HasSubstr ("left dB")));
}

TEST_F (ProgramFitTest, standsInThePlaceOfSmartBands)
{
    const auto report = matched ({ "--fit" });

    for (const auto& options : { std::vector<std::string> { "--fit" }, { "--smart-bands", "--fit" } })
    {
        std::vector<std::string> arguments { "render", "in.wav", "other.wav", "--reference", "ref.wav" };
        arguments.insert (arguments.end(), options.begin(), options.end());
        EXPECT_EQ (solvane (arguments).exitCode, 0);
        EXPECT_TRUE (bytesOf (folder.path ("out.wav")) == bytesOf (folder.path ("other.wav")));
    }

    EXPECT_EQ (solvane ({ "render", "in.wav", "other.wav", "--fit", "--preset", "20" }).exitCode, 0);
}

TEST_F (ProgramFitTest, equalsNeedNoBand)
{
    const auto run = solvane ({ "match", "in.wav", "in.wav", "out.wav", "--fit", "--json" });
    EXPECT_THAT (json::parse (run.output).at (0)["smartBands"], IsEmpty());
    EXPECT_THAT (run.errors, HasSubstr ("no band was made: nothing is as far as 0.5 dB from the target"));
    EXPECT_EQ (wholeNumbersBySox (folder.path ("out.wav"), 24), wholeNumbersBySox (folder.path ("in.wav"), 24));
}

TEST_F (ProgramFitTest, refusesWhatDoesNotGoTogether)
{
    expectRefusal ({ "render", "in.wav", "new.wav", "--fit" }, 2, "--fit needs a target: --target FILE");
    expectRefusal ({ "match", "in.wav", "ref.wav", "new.wav", "--amount", "50" }, 2, "--amount requires --fit");
    expectRefusal ({ "match", "in.wav", "ref.wav", "new.wav", "--fit", "--amount", "101" }, 2, "100 percent");
    expectRefusal ({ "match", "in.wav", "ref.wav", "new.wav", "--fit", "--amount", "-1" }, 2, "100 percent");
    expectRefusal (
        { "render", "in.wav", "new.wav", "--fit", "--preset", "20", "--band", "1k,1,1" }, 2, "--band excludes");
    expectRefusal ({ "render", "in.wav", "new.wav", "--reference", "ref.wav" }, 2, "requires --smart-bands or --fit");
}

/** The make-up gain is that of the bands as they were fitted. */
TEST_F (ProgramFitTest, refusesToHaveItsBandsScaled)
{
    constexpr auto sentence = "--fit excludes --gain-scale: ";
    expectRefusal ({ "match", "in.wav", "ref.wav", "new.wav", "--fit", "--gain-scale", "50" }, 2, sentence);
    expectRefusal (
        { "render", "in.wav", "new.wav", "--fit", "--preset", "20", "--gain-scale", "50" }, 2, "--amount says how far");
    EXPECT_EQ (solvane ({ "match", "in.wav", "ref.wav", "new.wav", "--gain-scale", "50" }).exitCode, 0);
}
} // namespace
