#include "app/RenderPicture.h"

#include "app/Diagram.h"
#include "app/HeardResponse.h"
#include "app/PictureFile.h"
#include "app/Printable.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr int pictureWidth = 1200;
constexpr float left = 90.0f;
constexpr float diagramWidth = 1070.0f;
constexpr float rowHeight = 24.0f;

const juce::Colour inputColour = DiagramColours::ofIndex (1);
const juce::Colour resultColour = DiagramColours::ofIndex (0);

struct KeyEntry
{
    juce::String text;
    juce::Colour colour;
};

juce::String textOf (const std::string& bytes)
{
    return juce::String::fromUTF8 (printable (bytes).c_str());
}

juce::String nameOf (const std::string& path)
{
    return textOf (path).fromLastOccurrenceOf ("/", false, false);
}

juce::String decibelText (float value)
{
    return std::isfinite (value) ? juce::String (value, 1) : juce::String ("-");
}

/** What the lines stand for, beside the diagram's title. */
void drawKey (juce::Graphics& graphics, const Diagram& diagram, const std::vector<KeyEntry>& entries)
{
    constexpr auto longestText = 200.0f;
    constexpr auto lineLength = 26.0f;
    constexpr auto gap = 10.0f;
    const juce::Font font (15.0f);
    auto right = diagram.area.getRight();
    const auto y = diagram.area.getY() - 21.0f;
    graphics.setFont (font);

    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry)
    {
        const auto width = std::min (longestText, std::ceil (font.getStringWidthFloat (entry->text)) + 2.0f);
        graphics.setColour (DiagramColours::text);
        graphics.drawText (entry->text,
                           juce::Rectangle<float> (right - width, y - 11.0f, width, 22.0f),
                           juce::Justification::centredLeft);
        right -= width + gap + lineLength;
        graphics.setColour (entry->colour);
        graphics.fillRect (juce::Rectangle<float> (right, y - 2.0f, lineLength, 4.0f));
        right -= 2.0f * gap;
    }
}

void drawHeading (juce::Graphics& graphics, const RenderResult& result)
{
    const auto& chosen = *result.smartBands;
    graphics.setColour (DiagramColours::text);
    graphics.setFont (juce::Font (26.0f, juce::Font::bold));
    graphics.drawText (nameOf (result.input) + juce::String::fromUTF8 (" \xe2\x86\x92 ") + nameOf (result.output),
                       juce::Rectangle<float> (left, 18.0f, diagramWidth, 34.0f),
                       juce::Justification::centredLeft);
    graphics.setFont (juce::Font (17.0f));
    graphics.drawText (juce::String (result.mode == FilterMode::mix ? "Mix, " : "Master, ")
                           + (result.phase == FilterPhase::linear ? "linear" : "minimum")
                           + " phase.   Target: " + textOf (chosen.target.title),
                       juce::Rectangle<float> (left, 54.0f, diagramWidth, 26.0f),
                       juce::Justification::centredLeft);
}

/** Levels relative to each one's own loudness: the target is reached at any. */
void drawLevels (juce::Graphics& graphics, const RenderResult::SmartBands& chosen, float top)
{
    const std::array lines { Measurement::raised (chosen.target.values, -chosen.target.lufs),
                             Measurement::raised (chosen.before.bands, -chosen.before.lufs),
                             Measurement::raised (chosen.after.bands, -chosen.after.lufs) };
    const std::array<KeyEntry, 3> entries { KeyEntry { "target", DiagramColours::target },
                                            KeyEntry { "input", inputColour },
                                            KeyEntry { "result", resultColour } };
    std::vector<float> values;

    for (const auto& line : lines)
        values.insert (values.end(), line.begin(), line.end());

    const auto diagram = Diagram::ofLevels ({ left, top, diagramWidth, 330.0f }, values);
    diagram.drawGrid (graphics, "Band levels relative to the overall loudness in dB");
    drawKey (graphics, diagram, { entries.begin(), entries.end() });

    for (std::size_t index = 0; index < lines.size(); ++index)
        diagram.drawLevels (graphics, lines[index], entries[index].colour, index == 0 ? 5.0f : 2.5f);
}

void drawAdjustments (juce::Graphics& graphics, const RenderResult::SmartBands& chosen, float top)
{
    std::vector<float> values (chosen.before.adjustments.begin(), chosen.before.adjustments.end());
    values.insert (values.end(), chosen.after.adjustments.begin(), chosen.after.adjustments.end());
    const auto diagram = Diagram::around0 ({ left, top, diagramWidth, 250.0f }, values);
    diagram.drawGrid (graphics, "Gain adjustment towards the target in dB");
    drawKey (graphics,
             diagram,
             { { "before, rms " + decibelText (chosen.before.rms), inputColour },
               { "after, rms " + decibelText (chosen.after.rms), resultColour } });
    diagram.drawLevels (graphics, chosen.before.adjustments, inputColour, 2.5f);
    diagram.drawLevels (graphics, chosen.after.adjustments, resultColour, 2.5f);
}

/** What bands do to the picture's frequencies, in dB: what comes out of an impulse. */
std::vector<float>
heardWith (const RenderResult& result, const std::vector<BandOption>& bands, const std::vector<float>& frequencies)
{
    EqualiserSettings settings;
    settings.bands = bands;
    settings.mode = result.mode;
    settings.phase = result.phase;
    settings.gainScalePercent = result.gainScalePercent;
    const HeardResponse heard (result.sampleRate, 1, settings);
    std::vector<float> decibels;

    for (const auto frequency : frequencies)
        decibels.push_back (
            static_cast<float> (heard.decibelsAt (HeardResponse::Signal::middle, static_cast<double> (frequency))));

    return decibels;
}

/** From one side of a diagram to the other. */
std::vector<float> shownFrequencies()
{
    constexpr auto count = 360;
    std::vector<float> frequencies;

    for (int index = 0; index <= count; ++index)
        frequencies.push_back (Diagram::lowestHz
                               * std::pow (Diagram::highestHz / Diagram::lowestHz,
                                           static_cast<float> (index) / static_cast<float> (count)));

    return frequencies;
}

void drawNumber (juce::Graphics& graphics, juce::Point<float> centre, int number, juce::Colour colour)
{
    graphics.setColour (colour);
    graphics.fillEllipse (juce::Rectangle<float> (20.0f, 20.0f).withCentre (centre));
    graphics.setColour (juce::Colours::white);
    graphics.setFont (juce::Font (14.0f, juce::Font::bold));
    graphics.drawText (
        juce::String (number), juce::Rectangle<float> (20.0f, 20.0f).withCentre (centre), juce::Justification::centred);
}

/** What the bands were to do: all that was missing, or the part of it that a fit was told. */
Measurement::Levels askedAdjustments (const RenderResult::SmartBands& chosen)
{
    auto adjustments = chosen.before.adjustments;

    if (chosen.fit.has_value())
        for (auto& adjustment : adjustments)
            adjustment *= 0.01f * chosen.fit->amountPercent;

    return adjustments;
}

/** Each band by itself, all of them together, and what was asked of them. */
void drawBands (juce::Graphics& graphics, const RenderResult& result, float top)
{
    std::vector<BandOption> all;

    for (const auto& band : result.bands)
        all.push_back (band.asked);

    const auto adjustments = askedAdjustments (*result.smartBands);
    const auto frequencies = shownFrequencies();
    const auto sum = heardWith (result, all, frequencies);
    std::vector<std::vector<float>> curves;
    auto values = sum;

    // What no band could do must not make the bands small.
    for (const auto adjustment : adjustments)
        values.push_back (std::clamp (adjustment, -18.0f, 18.0f));

    for (const auto& band : all)
        curves.push_back (heardWith (result, { band }, frequencies));

    const auto diagram = Diagram::around0 ({ left, top, diagramWidth, 330.0f }, values);
    diagram.drawGrid (graphics, "The bands and what they do together in dB");
    drawKey (graphics,
             diagram,
             { { "adjustment asked for", DiagramColours::target }, { "all bands", DiagramColours::text } });
    graphics.setColour (DiagramColours::target);
    graphics.strokePath (diagram.curve (analysisCentresHz, adjustments), juce::PathStrokeType (5.0f));

    for (std::size_t index = 0; index < curves.size(); ++index)
    {
        auto area = diagram.curve (frequencies, curves[index]);
        graphics.setColour (DiagramColours::ofIndex (index));
        graphics.strokePath (area, juce::PathStrokeType (1.5f));
        area.lineTo (area.getCurrentPosition().x, diagram.y (0.0f));
        area.lineTo (diagram.area.getX(), diagram.y (0.0f));
        area.closeSubPath();
        graphics.setColour (DiagramColours::ofIndex (index).withAlpha (0.12f));
        graphics.fillPath (area);
    }

    graphics.setColour (DiagramColours::text);
    graphics.strokePath (diagram.curve (frequencies, sum), juce::PathStrokeType (3.0f));

    for (std::size_t index = 0; index < curves.size(); ++index)
        drawNumber (graphics,
                    { diagram.x (all[index].frequencyHz), diagram.y (result.bands[index].actingGainDb) },
                    result.bands[index].number,
                    DiagramColours::ofIndex (index));
}

/** In two columns. */
void drawList (juce::Graphics& graphics, const std::vector<RenderResult::Band>& bands, float top)
{
    const auto perColumn = (bands.size() + 1) / 2;

    for (std::size_t index = 0; index < bands.size(); ++index)
    {
        const auto x = left + (index < perColumn ? 0.0f : 0.5f * diagramWidth);
        const auto y = top + rowHeight * static_cast<float> (index % perColumn);
        drawNumber (graphics, { x + 10.0f, y + 11.0f }, bands[index].number, DiagramColours::ofIndex (index));
        graphics.setColour (DiagramColours::text);
        graphics.setFont (juce::Font (16.0f));
        graphics.drawText (textOf (bands[index].text),
                           juce::Rectangle<float> (x + 30.0f, y, 480.0f, 22.0f),
                           juce::Justification::centredLeft);
    }

    if (bands.empty())
        graphics.drawText ("No band was made.",
                           juce::Rectangle<float> (left, top, diagramWidth, 22.0f),
                           juce::Justification::centredLeft);
}
} // namespace

void drawRendering (const RenderResult& result, const std::string& path)
{
    constexpr auto topOfLevels = 134.0f;
    constexpr auto topOfAdjustments = 550.0f;
    constexpr auto topOfBands = 886.0f;
    constexpr auto topOfList = 1252.0f;
    const auto rows = std::max<std::size_t> ((result.bands.size() + 1) / 2, 1);
    const auto height = static_cast<int> (topOfList + rowHeight * static_cast<float> (rows) + 20.0f);
    juce::Image image (juce::Image::RGB, pictureWidth, height, true, juce::SoftwareImageType());

    {
        juce::Graphics graphics (image);
        graphics.fillAll (DiagramColours::background);
        drawHeading (graphics, result);
        drawLevels (graphics, *result.smartBands, topOfLevels);
        drawAdjustments (graphics, *result.smartBands, topOfAdjustments);
        drawBands (graphics, result, topOfBands);
        drawList (graphics, result.bands, topOfList);
    }

    PictureFile::write (image, path);
}
