#include "app/Diagram.h"
#include "app/HeardResponse.h"
#include "support/ProgramFixture.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace
{
using nlohmann::json;

const auto inputColour = DiagramColours::ofIndex (1);
const auto resultColour = DiagramColours::ofIndex (0);

/** `--report`: a picture of what smart bands did. */
class ProgramReportTest : public ProgramFixture
{
protected:
    void SetUp() override
    {
        makeInput ("in.wav", "-b 24", "gain -12 repeat 2");
        makeInput ("ref.wav", "-b 24", "gain -12 equalizer 3000 1q 6 equalizer 9000 1q -5 repeat 2");
    }

    json rendered (std::vector<std::string> arguments)
    {
        folder.file ("report.png").deleteFile();
        arguments.insert (arguments.end(), { "--json", "--mode", "mix", "--report", "report.png" });
        const auto run = solvane (arguments);
        EXPECT_EQ (run.exitCode, 0) << run.errors;
        picture = juce::ImageFileFormat::loadFrom (folder.file ("report.png"));
        return json::parse (run.output).at (0);
    }

    /** Whether something of a colour is drawn where a diagram has a value, within a pixel and a half. */
    [[nodiscard]] bool isDrawn (const Diagram& diagram, double hertz, double decibels, juce::Colour colour) const
    {
        const auto x = juce::roundToInt (diagram.x (static_cast<float> (hertz)));
        const auto y = juce::roundToInt (diagram.y (static_cast<float> (decibels)));

        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -1; dy <= 1; ++dy)
                if (picture.getPixelAt (x + dx, y + dy) == colour)
                    return true;

        return false;
    }

    static std::vector<float> floatsOf (const json& list) { return list.get<std::vector<float>>(); }

    juce::Image picture;
};

TEST_F (ProgramReportTest, drawsLevelsAndAdjustmentsWhereTheyAre)
{
    const auto report = rendered ({ "match", "in.wav", "ref.wav", "out.wav" });
    ASSERT_EQ (picture.getWidth(), 1200);

    const auto before = floatsOf (report["before"]["adjustments"]);
    const auto after = floatsOf (report["after"]["adjustments"]);
    auto both = before;
    both.insert (both.end(), after.begin(), after.end());
    const auto adjustments = Diagram::around0 ({ 90.0f, 550.0f, 1070.0f, 250.0f }, both);

    // The later lines and dots cover the earlier ones where they meet.
    for (std::size_t band = 0; band < before.size(); ++band)
    {
        const auto centre = static_cast<double> (analysisCentresHz[band]);
        EXPECT_TRUE (isDrawn (adjustments, centre, static_cast<double> (after[band]), resultColour)) << band;

        if (std::abs (before[band] - after[band]) > 1.0f)
        {
            EXPECT_TRUE (isDrawn (adjustments, centre, static_cast<double> (before[band]), inputColour)) << band;
        }
    }

    std::vector<float> all;

    for (const auto& source : { report["target"], report["before"], report["after"] })
        for (const auto& level : source.contains ("bands") ? source["bands"] : source["values"])
            all.push_back (level.get<float>() - source["lufs"].get<float>());

    const auto levels = Diagram::ofLevels ({ 90.0f, 134.0f, 1070.0f, 330.0f }, all);
    const auto lufs = report["after"]["lufs"].get<double>();

    for (std::size_t band = 0; band < before.size(); ++band)
        EXPECT_TRUE (isDrawn (levels,
                              static_cast<double> (analysisCentresHz[band]),
                              report["after"]["bands"][band].get<double>() - lufs,
                              resultColour))
            << band;
}

TEST_F (ProgramReportTest, drawsWhatTheBandsDoTogether)
{
    const auto report = rendered ({ "render", "in.wav", "out.wav", "--smart-bands", "--reference", "ref.wav" });
    EqualiserSettings settings;
    settings.mode = FilterMode::mix;

    for (const auto& band : report["smartBands"])
    {
        auto& option = settings.bands.emplace_back();
        option.frequencyHz = band["frequency"];
        option.gainDb = band["gain"];
        option.q = band["q"];
        option.highShelf = band["shelf"];
    }

    ASSERT_FALSE (settings.bands.empty());
    const HeardResponse heard (44100.0, 2, settings);
    const auto diagram =
        Diagram::around0 ({ 90.0f, 886.0f, 1070.0f, 330.0f }, floatsOf (report["before"]["adjustments"]));
    const auto sum = [&heard] (double hertz) { return heard.decibelsAt (HeardResponse::Signal::middle, hertz); };
    auto checked = 0;

    for (auto hertz = 400.0; hertz < 20000.0; hertz *= 1.05)
    {
        // A band's number may lie upon the line.
        const auto isCovered = std::ranges::any_of (
            settings.bands,
            [&] (const BandOption& band)
            { return std::abs (diagram.x (band.frequencyHz) - diagram.x (static_cast<float> (hertz))) < 14.0f; });

        if (! isCovered)
        {
            ++checked;
            EXPECT_TRUE (isDrawn (diagram, hertz, sum (hertz), DiagramColours::text)) << hertz;
        }
    }

    EXPECT_GT (checked, 20);
}

/** So little is asked for that there is no band, and nothing covers the line. At 18 kHz it ends. */
TEST_F (ProgramReportTest, drawsAsMuchOfTheAdjustmentAsWasAskedFor)
{
    const auto report = rendered ({ "match", "in.wav", "ref.wav", "out.wav", "--fit", "--amount", "11" });
    ASSERT_TRUE (report["smartBands"].empty());
    const auto adjustments = floatsOf (report["before"]["adjustments"]);
    const auto diagram = Diagram::around0 ({ 90.0f, 886.0f, 1070.0f, 330.0f }, {});
    auto checked = 0;

    for (std::size_t band = 0; band + 1 < adjustments.size(); ++band)
        if (const auto whole = static_cast<double> (adjustments[band]); std::abs (whole) > 3.0)
        {
            ++checked;
            const auto centre = static_cast<double> (analysisCentresHz[band]);
            EXPECT_TRUE (isDrawn (diagram, centre, 0.11 * whole, DiagramColours::target)) << band;
            EXPECT_FALSE (isDrawn (diagram, centre, whole, DiagramColours::target)) << band;
        }

    EXPECT_GT (checked, 2);
}

TEST_F (ProgramReportTest, doesNotCareWhereTheTargetComesFrom)
{
    rendered ({ "render", "in.wav", "out.wav", "--smart-bands", "--preset", "20" });
    EXPECT_TRUE (picture.isValid());
    ASSERT_EQ (solvane ({ "target", "ref.wav", "-o", "my.target" }).exitCode, 0);
    rendered ({ "render", "in.wav", "out.wav", "--smart-bands", "--target", "my.target", "--phase", "minimum" });
    EXPECT_TRUE (picture.isValid());

    // Nothing is far enough from itself for a band, and a mono file at another rate is drawn as well.
    rendered ({ "match", "in.wav", "in.wav", "out.wav" });
    EXPECT_TRUE (picture.isValid());
    makeInput ("mono.wav", "-b 24 -r 96000", "remix 1 gain -12");
    rendered ({ "match", "mono.wav", "ref.wav", "out.wav" });
    EXPECT_TRUE (picture.isValid());
}

TEST_F (ProgramReportTest, replacesAPictureAndNothingElse)
{
    ASSERT_TRUE (folder.file ("ref.wav").copyFileTo (folder.file ("ref.png")));
    writeBytes (folder.path ("notes.png"), "not a picture");
    const auto refuse = [this] (const std::string& report, int exitCode, const std::string& text) {
        expectRefusal ({ "match", "in.wav", "ref.png", "out.wav", "--report", report }, exitCode, text);
    };
    refuse ("notes.png", 5, "is no PNG picture");
    refuse ("ref.png", 5, "'ref.png' is what is read; it would be lost.");
    refuse ("in.wav", 2, "--report draws a PNG, and 'in.wav' does not end in .png.");
    refuse ("none/a.png", 5, "There is no folder 'none'.");
    expectRefusal ({ "match", "in.wav", "ref.png", "./new.png", "--format", "wav-16", "--report", "new.png" },
                   2,
                   "'new.png' cannot be the result and the report.");

    rendered ({ "match", "in.wav", "ref.wav", "out.wav" });
    const auto first = bytesOf (folder.path ("report.png"));
    ASSERT_EQ (solvane ({ "match", "in.wav", "in.wav", "out.wav", "--report", "report.png" }).exitCode, 0);
    EXPECT_NE (bytesOf (folder.path ("report.png")), first);

    expectRefusal ({ "render", "in.wav", "new.wav", "--report", "a.png" }, 2, "--report requires --smart-bands");
    expectRefusal (
        { "render", "in.wav", "--into", "o", "--smart-bands", "--preset", "20", "--report", "a.png" }, 2, "excludes");
}
} // namespace
