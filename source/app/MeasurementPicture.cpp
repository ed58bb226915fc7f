#include "app/MeasurementPicture.h"

#include "app/CommandError.h"
#include "app/FileArgument.h"
#include "app/Printable.h"
#include "app/StandardStreams.h"
#include "files/AtomicFile.h"
#include "files/OutputPlace.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr int pictureWidth = 1200;
constexpr int pictureHeight = 860;

const juce::Colour background { 0xfff7f7f5 };
const juce::Colour gridColour { 0xffd8d8d4 };
const juce::Colour textColour { 0xff2b2b2b };
const juce::Colour targetColour { 0xff8a8a86 };

constexpr std::array<juce::uint32, 6> fileColours { 0xff1f7a4d, 0xff2f5fa8, 0xffb5532a,
                                                    0xff7a4fa3, 0xff9a7b00, 0xff9c2f4f };

juce::Colour colourOf (std::size_t index)
{
    return juce::Colour (fileColours[index % fileColours.size()]);
}

/** One diagram: a logarithmic frequency axis and a linear one in dB. */
struct Diagram
{
    juce::Rectangle<float> area;
    float lowestDb;
    float highestDb;
    float stepDb;

    [[nodiscard]] float x (float hertz) const
    {
        constexpr auto lowest = 280.0f;
        constexpr auto highest = 20500.0f;
        return area.getX() + area.getWidth() * std::log (hertz / lowest) / std::log (highest / lowest);
    }

    [[nodiscard]] float y (float decibels) const
    {
        return area.getBottom()
               - area.getHeight() * (std::clamp (decibels, lowestDb, highestDb) - lowestDb) / (highestDb - lowestDb);
    }
};

juce::String hertzText (float hertz)
{
    return hertz < 1000.0f ? juce::String (static_cast<int> (hertz))
                           : juce::String (static_cast<int> (hertz) / 1000) + "k";
}

void drawGrid (juce::Graphics& graphics, const Diagram& diagram, const juce::String& title)
{
    graphics.setColour (textColour);
    graphics.setFont (juce::Font (20.0f, juce::Font::bold));
    graphics.drawText (title,
                       juce::Rectangle<float> (diagram.area.getX(), diagram.area.getY() - 34.0f, 900.0f, 26.0f),
                       juce::Justification::centredLeft);
    graphics.setFont (juce::Font (15.0f));

    for (auto level = diagram.lowestDb; level <= diagram.highestDb + 0.5f; level += diagram.stepDb)
    {
        const auto y = diagram.y (level);
        graphics.setColour (std::abs (level) < 0.5f && diagram.highestDb > 0.0f ? targetColour : gridColour);
        graphics.drawHorizontalLine (juce::roundToInt (y), diagram.area.getX(), diagram.area.getRight());
        graphics.setColour (textColour);
        graphics.drawText (juce::String (juce::roundToInt (level)),
                           juce::Rectangle<float> (diagram.area.getX() - 56.0f, y - 10.0f, 48.0f, 20.0f),
                           juce::Justification::centredRight);
    }

    for (const auto centre : analysisCentresHz)
    {
        const auto x = diagram.x (centre);
        graphics.setColour (gridColour);
        graphics.drawVerticalLine (juce::roundToInt (x), diagram.area.getY(), diagram.area.getBottom());
        graphics.setColour (textColour);
        graphics.drawText (hertzText (centre),
                           juce::Rectangle<float> (x - 30.0f, diagram.area.getBottom() + 4.0f, 60.0f, 20.0f),
                           juce::Justification::centred);
    }
}

void drawLine (juce::Graphics& graphics,
               const Diagram& diagram,
               const Measurement::Levels& levels,
               juce::Colour colour,
               float width)
{
    juce::Path path;
    auto started = false;
    graphics.setColour (colour);

    for (std::size_t band = 0; band < levels.size(); ++band)
    {
        if (! std::isfinite (levels[band]))
            continue;

        const juce::Point<float> point (diagram.x (analysisCentresHz[band]), diagram.y (levels[band]));

        if (started)
            path.lineTo (point);
        else
            path.startNewSubPath (point);

        started = true;

        graphics.fillEllipse (juce::Rectangle<float> (8.0f, 8.0f).withCentre (point));
    }

    graphics.strokePath (path, juce::PathStrokeType (width));
}

void drawLegend (juce::Graphics& graphics,
                 const Diagram& diagram,
                 int row,
                 int rows,
                 const juce::String& text,
                 juce::Colour colour)
{
    const auto y = diagram.area.getBottom() - 24.0f * static_cast<float> (rows - row) + 8.0f;
    graphics.setColour (colour);
    graphics.fillRect (juce::Rectangle<float> (diagram.area.getX() + 24.0f, y, 26.0f, 4.0f));
    graphics.setColour (textColour);
    graphics.drawText (text,
                       juce::Rectangle<float> (diagram.area.getX() + 60.0f, y - 9.0f, 340.0f, 22.0f),
                       juce::Justification::centredLeft);
}

Measurement::Levels atLoudness (const Measurement::Levels& levels, float offset)
{
    auto moved = levels;

    for (auto& level : moved)
        level += offset;

    return moved;
}

/** A file's levels relative to its own loudness, so that recordings of any loudness share one diagram. */
void drawLevels (juce::Graphics& graphics,
                 const std::vector<Measurement>& measurements,
                 const MeasurementTarget& target)
{
    const Diagram diagram { { 90.0f, 60.0f, 1070.0f, 380.0f }, -60.0f, 0.0f, 10.0f };
    drawGrid (graphics, diagram, "Band levels relative to the overall loudness in dB, over frequency in Hz");

    if (target.exists)
        drawLine (graphics, diagram, atLoudness (target.values, -target.lufs), targetColour, 3.0f);

    const auto firstRow = target.exists ? 1 : 0;
    const auto rows = static_cast<int> (measurements.size()) + firstRow;

    if (target.exists)
        drawLegend (
            graphics, diagram, 0, rows, "Target: " + juce::String::fromUTF8 (target.title.c_str()), targetColour);

    for (std::size_t index = 0; index < measurements.size(); ++index)
    {
        const auto& measurement = measurements[index];
        drawLine (graphics, diagram, atLoudness (measurement.bands, -measurement.lufs), colourOf (index), 2.0f);
        drawLegend (
            graphics,
            diagram,
            static_cast<int> (index) + firstRow,
            rows,
            juce::String::fromUTF8 (printable (measurement.file).c_str()).fromLastOccurrenceOf ("/", false, false),
            colourOf (index));
    }
}

void drawAdjustments (juce::Graphics& graphics, const std::vector<Measurement>& measurements, bool targetExists)
{
    auto largest = 12.0f;

    for (const auto& measurement : measurements)
        for (const auto adjustment : measurement.adjustments)
            if (std::isfinite (adjustment))
                largest = std::max (largest, std::abs (adjustment));

    const auto step = largest > 24.0f ? 12.0f : 6.0f;
    const auto range = step * std::ceil (std::min (largest, 48.0f) / step);
    const Diagram diagram { { 90.0f, 520.0f, 1070.0f, 290.0f }, -range, range, step };
    drawGrid (graphics,
              diagram,
              targetExists ? "Gain adjustment towards the target in dB, over frequency in Hz"
                           : "Gain adjustment: none without a target");

    for (std::size_t index = 0; index < measurements.size(); ++index)
        drawLine (graphics, diagram, measurements[index].adjustments, colourOf (index), 2.0f);
}
} // namespace

void requirePictureMayStand (const std::string& path, const std::vector<std::string>& measuredFiles)
{
    const auto file = fileFor (path);

    if (! juce::String (printable (file.extension().string())).equalsIgnoreCase (".png"))
        throw CommandError (ExitCode::badArguments, "--picture draws a PNG, and '" + path + "' does not end in .png.");

    std::vector<std::filesystem::path> measured;

    for (const auto& each : measuredFiles)
        if (! StandardStreams::isInput (each))
            measured.push_back (fileFor (each));

    if (const auto refusal = OutputPlace::refusal (file, OutputPlace::Kind::picture, path, measured);
        refusal.has_value())
        throw CommandError (ExitCode::unwritableOutput, *refusal);
}

void drawMeasurements (const std::vector<Measurement>& measurements,
                       const MeasurementTarget& target,
                       const std::string& path)
{
    juce::Image image (juce::Image::RGB, pictureWidth, pictureHeight, true, juce::SoftwareImageType());

    {
        juce::Graphics graphics (image);
        graphics.fillAll (background);
        graphics.setFont (15.0f);
        drawLevels (graphics, measurements, target);
        drawAdjustments (graphics, measurements, target.exists);
    }

    AtomicFile file (fileFor (path));
    auto stream = file.open();
    const auto drawn = stream != nullptr && juce::PNGImageFormat().writeImageToStream (image, *stream);
    stream.reset();

    if (! drawn || ! file.commit())
        throw CommandError (ExitCode::unwritableOutput,
                            "The picture '" + path + "' could not be written: " + file.reason() + ".");
}
