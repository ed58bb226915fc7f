#include "support/ProgramFixture.h"
#include "support/SanitizedBuild.h"
#include "targets/TargetDocument.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>

namespace
{
using nlohmann::json;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/** Targets from reference tracks, and renderings that go by them. */
class ProgramTargetTest : public ProgramFixture
{
protected:
    void SetUp() override
    {
        // Long enough for the readings to come to rest.
        makeInput ("in.wav", "-b 24", "gain -12 repeat 2");
        makeInput ("ref.wav", "-b 24", "gain -12 equalizer 3000 1q 6 equalizer 9000 1q -5 repeat 2");
    }

    /** Makes a target and reads what the file holds. */
    json target (std::vector<std::string> arguments)
    {
        arguments.insert (arguments.begin(), "target");
        arguments.insert (arguments.end(), { "-o", "my.target" });
        const auto run = solvane (arguments);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        return json::parse (bytesOf (folder.path ("my.target")));
    }

    json rendered (const std::string& input, std::vector<std::string> options)
    {
        options.insert (options.begin(), { "render", input, "out.wav", "--smart-bands", "--json" });
        const auto run = solvane (options);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        notes = run.errors;
        return json::parse (run.output).at (0);
    }

    /** The bands of a report as options. */
    static std::vector<std::string> asOptions (const json& bands)
    {
        std::vector<std::string> options;

        for (const auto& band : bands)
            options.insert (options.end(),
                            { "--band",
                              band["frequency"].dump() + "," + band["gain"].dump() + "," + band["q"].dump()
                                  + (band["shelf"] == true ? ",shelf" : "") });

        return options;
    }

    /** A target at so many dB from what the file has in each band. */
    void writeTargetAwayFrom (const std::string& file, const std::vector<double>& distances)
    {
        const auto measured = json::parse (solvane ({ "measure", file, "--json" }).output).at (0);
        auto values = measured["bands"];

        for (std::size_t band = 0; band < distances.size(); ++band)
            values[band] = values[band].get<double>() + distances[band];

        writeBytes (
            folder.path ("away.target"),
            json {
                { "format", "solvane-target" }, { "version", 1 }, { "lufs", measured["lufs"] }, { "values", values } }
                .dump());
    }

    std::string notes;
};

TEST_F (ProgramTargetTest, makesATargetFile)
{
    const auto file = target ({ "ref.wav", "in.wav" });
    EXPECT_EQ (file["format"], "solvane-target");
    EXPECT_EQ (file["version"], 1);
    EXPECT_EQ (file["name"], "my");
    EXPECT_EQ (file["frequencies"].size(), 10u);
    ASSERT_EQ (file["tracks"].size(), 2u);
    EXPECT_EQ (file["tracks"][0]["file"], "ref.wav");
    EXPECT_EQ (file["tracks"][1]["sampleRate"], 44100.0);

    for (std::size_t band = 0; band < 10; ++band)
        EXPECT_NEAR (
            file["values"][band].get<double>(),
            0.5 * (file["tracks"][0]["values"][band].get<double>() + file["tracks"][1]["values"][band].get<double>()),
            1e-4);

    EXPECT_NEAR (file["lufs"].get<double>(),
                 0.5 * (file["tracks"][0]["lufs"].get<double>() + file["tracks"][1]["lufs"].get<double>()),
                 1e-4);

    // Made louder at 3 kHz and softer at 9.
    EXPECT_GT (file["tracks"][0]["values"][4].get<double>(), file["tracks"][1]["values"][4].get<double>() + 3.0);
    EXPECT_LT (file["tracks"][0]["values"][7].get<double>(), file["tracks"][1]["values"][7].get<double>() - 2.0);
}

TEST_F (ProgramTargetTest, thePlugInReadsTheFileAndWritesOneThatTheProgramReads)
{
    const auto file = target ({ "ref.wav" });
    const auto parsed = TargetDocument::parse (bytesOf (folder.path ("my.target")));
    const auto* document = std::get_if<TargetDocument> (&parsed);
    ASSERT_NE (document, nullptr);
    EXPECT_EQ (document->name, "my");
    EXPECT_EQ (document->target.lufs, file["lufs"].get<float>());

    for (std::size_t band = 0; band < 10; ++band)
        EXPECT_EQ (document->target.values[band], file["values"][band].get<float>());

    writeBytes (folder.path ("theirs.target"), document->text());
    const auto ours = rendered ("in.wav", { "--target", "my.target" });
    const auto theirs = rendered ("in.wav", { "--target", "theirs.target" });
    EXPECT_EQ (ours["smartBands"], theirs["smartBands"]);
    EXPECT_FALSE (ours["smartBands"].empty());
    EXPECT_EQ (ours["target"]["values"], theirs["target"]["values"]);
}

TEST_F (ProgramTargetTest, aRangeBelongsToTheFileBeforeIt)
{
    const auto file = target ({ "in.wav", "--range", "1-4", "--range", "0:05-6.5", "ref.wav" });
    EXPECT_EQ (file["tracks"][0]["ranges"], json::parse ("[[1.0, 4.0], [5.0, 6.5]]"));
    EXPECT_THAT (file["tracks"][1]["ranges"], IsEmpty());

    const auto second = target ({ "in.wav", "ref.wav", "--range", "2-" });
    EXPECT_THAT (second["tracks"][0]["ranges"], IsEmpty());
    EXPECT_EQ (second["tracks"][1]["ranges"][0][0], 2.0);

    const auto whole = target ({ "in.wav", "ref.wav" });
    EXPECT_NE (file["tracks"][0]["values"], whole["tracks"][0]["values"]);
    EXPECT_EQ (file["tracks"][1]["values"], whole["tracks"][1]["values"]);
}

TEST_F (ProgramTargetTest, aSessionsRateConvertsTheFilesAndMakesGoodWhatIsLost)
{
    const auto own = target ({ "in.wav" });
    const auto converted = target ({ "in.wav", "--rate", "48000" });
    EXPECT_EQ (converted["tracks"][0]["measuredAt"], 48000.0);

    for (std::size_t band = 0; band < 9; ++band)
    {
        EXPECT_NE (converted["values"][band], own["values"][band]);
        EXPECT_NEAR (converted["values"][band].get<double>(), own["values"][band].get<double>(), band < 8 ? 0.7 : 1.5)
            << band;
    }
}

TEST_F (ProgramTargetTest, refusesWhatMakesNoTarget)
{
    expectRefusal ({ "target", "in.wav" }, 2, "--output is required");
    expectRefusal ({ "target", "-o", "my.target" }, 2, "REF is required");
    expectRefusal ({ "target", "absent.wav", "-o", "my.target" }, 3, "There is no file 'absent.wav'.");
    expectRefusal ({ "target", "--range", "1-2", "in.wav", "-o", "my.target" },
                   2,
                   "--range 1-2: it belongs behind a reference track.");
    expectRefusal ({ "target", "in.wav", "--range", "2-1", "-o", "my.target" }, 2, "it ends before it starts");
    expectRefusal ({ "target", "in.wav", "--range", "90-", "-o", "my.target" },
                   2,
                   "'in.wav' ends at 0:20, before --range starts.");
    expectRefusal ({ "target", "in.wav", "--rate", "32000", "-o", "my.target" }, 2, "--rate");

    std::vector<std::string> many { "target", "-o", "my.target" };
    many.insert (many.end(), 21, "in.wav");
    expectRefusal (many, 2, "There are 21 reference tracks; the most are 20.");

    makeInput ("short.wav", "-b 16", "trim 0 1");
    expectRefusal ({ "target", "short.wav", "-o", "my.target" }, 1, "Nothing could be measured");
}

TEST_F (ProgramTargetTest, replacesATargetAndNothingElse)
{
    expectRefusal ({ "target", "in.wav", "-o", "in.wav" }, 5, "'in.wav' is what is read; it would be lost.");
    expectRefusal ({ "target", "in.wav", "-o", "ref.wav" }, 5, "'ref.wav' is there already, and is no target file.");
    expectRefusal ({ "target", "in.wav", "-o", "." }, 5, "'.' is a folder.");
    expectRefusal ({ "target", "in.wav", "-o", "none/my.target" }, 5, "There is no folder 'none'.");

    const auto first = target ({ "in.wav" });
    const auto second = target ({ "ref.wav" });
    EXPECT_NE (first["values"], second["values"]);
}

TEST_F (ProgramTargetTest, givesTheTargetToTheStandardOutput)
{
    const auto run = solvane ({ "target", "in.wav", "-o", "-" });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_EQ (json::parse (run.output)["values"], target ({ "in.wav" })["values"]);
    EXPECT_THAT (run.errors, HasSubstr ("overall"));
}

TEST_F (ProgramTargetTest, leavesOutATrackWithoutAReading)
{
    convertWithSox (recordedLoop(), "-b 16", folder.path ("silent.wav"), "gain -90");
    const auto run = solvane ({ "target", "silent.wav", "in.wav", "-o", "my.target" });
    EXPECT_EQ (run.exitCode, 0);
    EXPECT_THAT (run.errors, HasSubstr ("Note: nothing in 'silent.wav' could be measured"));

    const auto file = json::parse (bytesOf (folder.path ("my.target")));
    EXPECT_EQ (file["values"], target ({ "in.wav" })["values"]);
    EXPECT_TRUE (file["tracks"][0]["lufs"].is_null());
}

TEST_F (ProgramTargetTest, smartBandsBringARecordingNearATarget)
{
    target ({ "ref.wav" });
    const auto report = rendered ("in.wav", { "--target", "my.target", "--mode", "mix" });
    EXPECT_EQ (notes, "");
    EXPECT_EQ (report["target"]["name"], "my");
    EXPECT_GT (report["before"]["rms"].get<double>(), 1.5);
    EXPECT_LT (report["after"]["rms"].get<double>(), 0.6 * report["before"]["rms"].get<double>());
    EXPECT_THAT (report["smartBands"], Not (IsEmpty()));

    for (std::size_t band = 0; band < 10; ++band)
        EXPECT_NEAR (report["before"]["adjustments"][band].get<double>(),
                     report["target"]["values"][band].get<double>() - report["before"]["bands"][band].get<double>()
                         - report["target"]["lufs"].get<double>() + report["before"]["lufs"].get<double>(),
                     1e-4);

    // What was left is what the result measures.
    const auto measured = json::parse (solvane ({ "measure", "out.wav", "--json" }).output).at (0);

    for (std::size_t band = 0; band < 10; ++band)
        EXPECT_NEAR (measured["bands"][band].get<double>(), report["after"]["bands"][band].get<double>(), 0.001);

    EXPECT_NEAR (measured["lufs"].get<double>(), report["after"]["lufs"].get<double>(), 0.001);
}

TEST_F (ProgramTargetTest, theResultIsThatOfTheChosenBands)
{
    target ({ "ref.wav" });
    convertWithSox (recordedLoop(), "-C 192", folder.path ("in.mp3"), "gain -12");

    for (const auto* input : { "in.wav", "in.mp3" })
        for (const auto* mode : { "mix", "master" })
        {
            const auto report = rendered (input, { "--target", "my.target", "--mode", mode, "--phase", "minimum" });
            auto options = asOptions (report["smartBands"]);
            options.insert (options.end(), { "--mode", mode, "--phase", "minimum" });
            render (input, "same.wav", options);
            EXPECT_TRUE (bytesOf (folder.path ("out.wav")) == bytesOf (folder.path ("same.wav"))) << input << mode;
        }
}

TEST_F (ProgramTargetTest, goesByAPreset)
{
    const auto report = rendered ("in.wav", { "--preset", "20" });
    const auto measured = json::parse (solvane ({ "measure", "in.wav", "--preset", "20", "--json" }).output).at (0);
    EXPECT_EQ (report["target"], measured["target"]);
    EXPECT_EQ (report["before"]["adjustments"], measured["adjustments"]);
    expectRefusal ({ "render", "in.wav", "new.wav", "--smart-bands", "--preset", "1" }, 2, "NO TARGETS is no target");
}

TEST_F (ProgramTargetTest, theTopBandInUseFollowsFromTheMeans)
{
    makeInput ("dark.wav", "-b 24", "gain -12 treble -12 repeat 2");
    const auto file = target ({ "ref.wav", "dark.wav" });
    const auto inUse = rendered ("in.wav", { "--target", "my.target" })["target"]["values"];

    for (std::size_t band = 0; band < 9; ++band)
        EXPECT_EQ (inUse[band], file["values"][band]);

    EXPECT_GT (std::abs (inUse[9].get<double>() - file["values"][9].get<double>()), 0.01);
}

TEST_F (ProgramTargetTest, matchIsAShortWayToGoByReferences)
{
    rendered ("in.wav", { "--reference", "ref.wav", "--range", "1-6", "--reference", "in.wav" });
    const auto run = solvane ({ "match", "in.wav", "ref.wav", "--range", "1-6", "in.wav", "new.wav" });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_THAT (run.output, AllOf (HasSubstr ("Target: ref.wav, in.wav"), HasSubstr ("left dB")));
    EXPECT_TRUE (bytesOf (folder.path ("out.wav")) == bytesOf (folder.path ("new.wav")));

    expectRefusal ({ "match", "in.wav", "other.wav" }, 2, "At least 3 required");
    expectRefusal (
        { "match", "in.wav", "ref.wav", "other.wav", "--range", "1-2" }, 2, "it belongs behind a reference track");
    expectRefusal ({ "match", "--range", "1-2", "in.wav", "ref.wav", "other.wav" }, 2, "it belongs behind");
}

TEST_F (ProgramTargetTest, aReferenceIsMeasuredAtTheRateOfTheInput)
{
    makeInput ("in48.wav", "-b 24 -r 48000", "gain -12");
    const auto report = rendered ("in48.wav", { "--reference", "ref.wav" });
    const auto file = target ({ "ref.wav", "--rate", "48000" });

    for (std::size_t band = 0; band < 9; ++band)
        EXPECT_EQ (report["target"]["values"][band], file["values"][band]);
}

TEST_F (ProgramTargetTest, neverReplacesAReference)
{
    expectRefusal ({ "match", "in.wav", "ref.wav", "ref.wav" }, 5, "'ref.wav' is what is read; it would be lost.");
    expectRefusal (
        { "render", "in.wav", "./ref.wav", "--smart-bands", "--reference", "ref.wav" }, 5, "it would be lost");
}

TEST_F (ProgramTargetTest, aReferenceIsNotTakenForAForgottenOutput)
{
    const auto recording = bytesOf (folder.path ("ref.wav"));
    const std::vector<std::vector<std::string>> forgetful {
        { "match", "in.wav", "in.wav", "ref.wav" },
        { "match", "in.wav", "in.wav", "--range", "1-4", "ref.wav" },
        { "render", "in.wav", "--smart-bands", "--reference", "in.wav", "ref.wav" }
    };

    for (const auto& arguments : forgetful)
        expectRefusal (arguments, 5, "'ref.wav' would be replaced, and does not say that SOLVANE made it. If it was");

    // Nor is the input, nor one of another kind.
    for (const auto* ending : { "flac", "mp3", "aiff", "ogg" })
    {
        const auto name = std::string ("other.") + ending;
        makeInput (name, "", "trim 0 3");
        expectRefusal ({ "match", "in.wav", "ref.wav", name }, 5, "would be replaced");
    }

    expectRefusal ({ "match", "other.flac", "ref.wav", "other.flac" }, 5, "would be replaced");
    EXPECT_TRUE (bytesOf (folder.path ("ref.wav")) == recording);

    const auto run = solvane ({ "match", "in.wav", "in.wav", "ref.wav", "--overwrite" });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    EXPECT_FALSE (bytesOf (folder.path ("ref.wav")) == recording);
    expectRefusal ({ "match", "in.wav", "ref.wav", "new.wav", "--overwrite", "--no-overwrite" }, 2, "excludes");
}

TEST_F (ProgramTargetTest, replacesWhatItHasMadeItself)
{
    makeInput ("short.wav", "-b 16", "trim 0 2");
    writeBytes (folder.path ("empty.wav"), "");
    const auto match = [this] (const std::string& output) {
        return solvane ({ "match", "short.wav", "ref.wav", "--range", "1-4", output });
    };
    EXPECT_EQ (match ("empty.wav").exitCode, 0);

    for (const auto* output : { "own.wav", "own.rf64", "own.aiff", "own.caf", "own.flac", "own.ogg" })
        for (const auto* turn : { "first", "second" })
            EXPECT_EQ (match (output).exitCode, 0) << output << ' ' << turn;

    // These have no place for a mark.
    for (const auto* output : { "own.w64", "own.mp3" })
    {
        EXPECT_EQ (match (output).exitCode, 0) << output;
        expectRefusal ({ "match", "short.wav", "ref.wav", output }, 5, "--overwrite replaces it");
    }
}

TEST_F (ProgramTargetTest, theBarMovesWhileItListens)
{
    makeInput ("long.wav", "-b 16", "gain -12 repeat 20");
    const auto path = [this] (const char* name) { return folder.path (name); };
    const auto run = runOnTerminal (SOLVANE_PROGRAM,
                                    { "render",
                                      path ("in.wav"),
                                      path ("long.wav"),
                                      "--into",
                                      path ("out"),
                                      "--jobs",
                                      "1",
                                      "--smart-bands",
                                      "--preset",
                                      "20" },
                                    [] (const std::string&) { return false; });
    EXPECT_EQ (run.exitCode, 0);

    // The second file is listened to before the first one is told of, so the bar is in its second half by then.
    const auto before = run.output.substr (0, run.output.find ("Input:"));
    EXPECT_THAT (before, testing::ContainsRegex ("\\] [567][0-9] %"));
}

TEST_F (ProgramTargetTest, eachOfManyFilesGetsItsOwnBands)
{
    target ({ "ref.wav" });
    makeInput ("dark.wav", "-b 24", "gain -12 treble -8");
    const auto run = solvane (
        { "render", "in.wav", "dark.wav", "--into", "out", "--smart-bands", "--target", "my.target", "--json" });
    EXPECT_EQ (run.exitCode, 0) << run.errors;
    const auto reports = json::parse (run.output);
    ASSERT_EQ (reports.size(), 2u);
    EXPECT_NE (reports[0]["smartBands"], reports[1]["smartBands"]);
}

TEST_F (ProgramTargetTest, refusesOptionsThatContradictEachOther)
{
    target ({ "ref.wav" });
    expectRefusal ({ "render", "in.wav", "new.wav", "--smart-bands" }, 2, "--smart-bands needs a target:");
    expectRefusal ({ "render", "in.wav", "new.wav", "--smart-bands", "--preset", "20", "--target", "my.target" },
                   2,
                   "--smart-bands needs one target, not several:");
    expectRefusal ({ "render", "in.wav", "new.wav", "--target", "my.target" }, 2, "--target requires --smart-bands");
    expectRefusal (
        { "render", "in.wav", "new.wav", "--reference", "ref.wav" }, 2, "--reference requires --smart-bands");
    expectRefusal (
        { "render", "in.wav", "new.wav", "--smart-bands", "--preset", "20", "--band", "1k,1,1" }, 2, "excludes");
}

TEST_F (ProgramTargetTest, leavesAllAsItIsWhereAReferenceWouldBeReplaced)
{
    const auto in = bytesOf (folder.path ("in.wav"));
    const auto ref = bytesOf (folder.path ("ref.wav"));

    for (const auto* way : { "--smart-bands", "--fit" })
        expectRefusal ({ "render", "in.wav", "ref.wav", "--into", ".", way, "--reference", "ref.wav" },
                       5,
                       "ref.wav' is what is read; it would be lost.");

    EXPECT_EQ (bytesOf (folder.path ("in.wav")), in) << "it came first";
    EXPECT_EQ (bytesOf (folder.path ("ref.wav")), ref);
}

TEST_F (ProgramTargetTest, refusesATargetThatIsFarTooLarge)
{
    writeBytes (folder.path ("huge.target"), "{}");
    std::filesystem::resize_file (folder.path ("huge.target"), 6000000000);
    ProgramSurroundings surroundings;

    // A sanitizer takes more than that by itself.
    if (! isSanitizedBuild)
        surroundings.largestMemoryBytes = 600 << 20;

    const auto run =
        solvane ({ "render", "in.wav", "new.wav", "--smart-bands", "--target", "huge.target" }, surroundings);
    EXPECT_EQ (run.exitCode, 3);
    EXPECT_THAT (run.errors, HasSubstr ("'huge.target' is far too large"));
}

TEST_F (ProgramTargetTest, refusesATargetOfOtherFrequenciesOrWithoutAReading)
{
    auto document = target ({ "ref.wav" });
    const auto expectRefused = [this] (const json& changed, const std::string& text)
    {
        writeBytes (folder.path ("bad.target"), changed.dump());
        expectRefusal ({ "render", "in.wav", "new.wav", "--smart-bands", "--target", "bad.target" }, 3, text);
    };
    auto other = document;
    other["frequencies"][3] = 2100;
    expectRefused (other, "'bad.target' has values for other frequencies.");
    document["values"] = json::array ({ {}, {}, {}, {}, {}, {}, {}, {}, {}, {} });
    expectRefused (document, "'bad.target' holds no reading.");
}

TEST_F (ProgramTargetTest, saysWhereTheResultIsFurtherFromTheTarget)
{
    convertWithSox (
        "-n", "-r 44100 -c 2 -b 24", folder.path ("odd.wav"), "synth 10 pinknoise synth 10 sine mix 200 gain -6");
    convertWithSox ("-n", "-r 44100 -c 2 -b 24", folder.path ("brown.wav"), "synth 10 brownnoise gain -6");
    const auto report = rendered ("odd.wav", { "--reference", "brown.wav", "--mode", "mix" });
    const auto isFurther = report["after"]["rms"].get<double>() > report["before"]["rms"].get<double>() + 0.05;
    ASSERT_TRUE (isFurther) << report["before"]["rms"] << ' ' << report["after"]["rms"];
    EXPECT_THAT (notes, HasSubstr ("the result is further from the target than the input was. --fit may come nearer."));

    std::ignore = rendered ("in.wav", { "--reference", "ref.wav", "--mode", "mix" });
    EXPECT_THAT (notes, Not (HasSubstr ("further from the target")));
}

TEST_F (ProgramTargetTest, refusesWhatIsNoTargetFile)
{
    const auto refuse = [this] (const std::string& bytes, const std::string& text)
    {
        writeBytes (folder.path ("bad"), bytes);
        expectRefusal ({ "render", "in.wav", "new.wav", "--smart-bands", "--target", "bad" }, 3, text);
    };

    const std::string head = R"({ "format": "solvane-target", "version": 1, )";
    refuse ("", "'bad' is not a target file of SOLVANE.");
    refuse ("[1, 2]", "'bad' is not a target file of SOLVANE.");
    refuse (R"({ "format": 3 })", "'bad' is not a target file of SOLVANE.");
    refuse (R"({ "format": "solvane-target", "version": 2 })", "'bad' is a target file of another version.");
    refuse (head + R"("lufs": -10 })", "'bad' does not hold a loudness and ten values.");
    refuse (head + R"("lufs": -10, "values": [1, 2] })", "'bad' does not hold a loudness and ten values.");
    refuse (head + R"("lufs": null, "values": [1, 1, 1, 1, 1, 1, 1, 1, 1, 1] })", "does not hold a loudness");
    refuse (head + R"("lufs": -10, "values": [1, 1, 1, 1, "x", 1, 1, 1, 1, 1] })", "holds a value that is no level.");
    refuse (head + R"("lufs": -10, "values": [1, 1, 1, 1, 1e9, 1, 1, 1, 1, 1] })", "holds a value that is no level.");
}

TEST_F (ProgramTargetTest, saysWhereTheReadingsAreNoGroundToBuildOn)
{
    // Silence goes through as it is.
    makeInput ("silent.wav", "-b 24", "gain -100");
    auto report = rendered ("silent.wav", { "--preset", "20" });
    EXPECT_THAT (notes,
                 AllOf (HasSubstr ("nothing in the input is louder than -70 LUFS"), HasSubstr ("no band was made")));
    EXPECT_THAT (report["smartBands"], IsEmpty());
    EXPECT_TRUE (report["before"]["rms"].is_null());
    EXPECT_EQ (wholeNumbersBySox (folder.path ("out.wav"), 24), wholeNumbersBySox (folder.path ("silent.wav"), 24));

    makeInput ("short.wav", "-b 24", "gain -12 trim 0 0.5");
    rendered ("short.wav", { "--preset", "20" });
    EXPECT_THAT (notes, HasSubstr ("a reading needs more than a second of sound, and of the input there are 0.50 s"));

    makeInput ("brief.wav", "-b 24", "gain -12 trim 0 1.8");
    rendered ("brief.wav", { "--preset", "20" });
    EXPECT_THAT (notes, HasSubstr ("had no time to come to rest: of the input there are only 1.80 s"));

    rendered ("in.wav", { "--preset", "20" });
    EXPECT_THAT (notes, Not (HasSubstr ("come to rest")));
}

TEST_F (ProgramTargetTest, saysWhereReadingsStillMoveAtTheEnd)
{
    makeInput ("once.wav", "-b 24", "gain -12");
    rendered ("once.wav", { "--preset", "20" });
    EXPECT_THAT (notes, HasSubstr ("had not come to rest at the end of the input: they still moved by 1.0 dB"));

    // Four seconds of music, and then a tone that music has little of.
    makeInput ("quiet.wav", "-b 24", "gain -30 trim 0 4");
    convertWithSox ("-n", "-b 24 -r 44100 -c 2", folder.path ("tone.wav"), "synth 2.5 sine 9000 gain -10");
    convertWithSox (folder.path ("quiet.wav"), folder.path ("tone.wav"), folder.path ("moving.wav"));
    rendered ("moving.wav", { "--preset", "20" });
    EXPECT_THAT (notes, HasSubstr ("had not come to rest at the end of the input: they still moved by "));
}

TEST_F (ProgramTargetTest, saysWhichBandsAreTooQuiet)
{
    convertWithSox ("-n", "-b 24 -r 44100 -c 1", folder.path ("tone.wav"), "synth 5 sine 1000 gain -30");
    const auto report = rendered ("tone.wav", { "--preset", "20" });
    EXPECT_THAT (notes, HasSubstr ("the input is below -70 LUFS at "));
    EXPECT_THAT (notes, HasSubstr ("15000 Hz, so nothing is raised or lowered for the target there."));
    EXPECT_TRUE (report["before"]["bands"][8].is_null());
    EXPECT_TRUE (report["before"]["adjustments"][8].is_null());
}

TEST_F (ProgramTargetTest, saysWhereTheInputIsTooQuietForTheMeters)
{
    // As loud as in.wav, and 18 dB softer.
    rendered ("in.wav", { "--preset", "20" });
    EXPECT_THAT (notes, Not (HasSubstr ("is quiet")));
    makeInput ("quiet.wav", "-b 24", "gain -30 repeat 2");
    const auto report = rendered ("quiet.wav", { "--preset", "20" });
    EXPECT_THAT (notes, HasSubstr ("Note: the input is quiet, -38.9 LUFS: what the meters hear of it ends at -70"));
    EXPECT_THAT (report["notes"].dump(), HasSubstr ("the input is quiet"));
}

TEST_F (ProgramTargetTest, saysWhereTheBandsTogetherLeaveNothing)
{
    writeTargetAwayFrom ("in.wav", { 0, 0, 0, -14, -6, -14, -6, -14, 0, 0 });
    const auto report = rendered ("in.wav", { "--target", "away.target", "--mode", "mix" });
    EXPECT_THAT (notes, HasSubstr ("nothing is left at "));
    EXPECT_EQ (report["target"]["name"], "away.target");
}
} // namespace
