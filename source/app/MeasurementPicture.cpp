#include "app/MeasurementPicture.h"

#include "app/Diagram.h"
#include "app/PictureFile.h"
#include "app/Printable.h"

namespace
{
constexpr int pictureWidth = 1200;
constexpr int pictureHeight = 860;

/** A file's levels relative to its own loudness, so that recordings of any loudness share one diagram. */
void drawLevels (juce::Graphics& graphics,
                 const std::vector<Measurement>& measurements,
                 const MeasurementTarget& target)
{
    const Diagram diagram { { 90.0f, 60.0f, 1070.0f, 380.0f }, -60.0f, 0.0f, 10.0f };
    diagram.drawGrid (graphics, "Band levels relative to the overall loudness in dB, over frequency in Hz");

    if (target.exists)
        diagram.drawLevels (graphics, Measurement::raised (target.values, -target.lufs), DiagramColours::target, 3.0f);

    const auto firstRow = target.exists ? 1 : 0;
    const auto rows = static_cast<int> (measurements.size()) + firstRow;

    if (target.exists)
        diagram.drawLegend (
            graphics, 0, rows, "Target: " + juce::String::fromUTF8 (target.title.c_str()), DiagramColours::target);

    for (std::size_t index = 0; index < measurements.size(); ++index)
    {
        const auto& measurement = measurements[index];
        const auto colour = DiagramColours::ofIndex (index);
        diagram.drawLevels (graphics, Measurement::raised (measurement.bands, -measurement.lufs), colour, 2.0f);
        diagram.drawLegend (
            graphics,
            static_cast<int> (index) + firstRow,
            rows,
            juce::String::fromUTF8 (printable (measurement.file).c_str()).fromLastOccurrenceOf ("/", false, false),
            colour);
    }
}

void drawAdjustments (juce::Graphics& graphics, const std::vector<Measurement>& measurements, bool targetExists)
{
    std::vector<float> values;

    for (const auto& measurement : measurements)
        values.insert (values.end(), measurement.adjustments.begin(), measurement.adjustments.end());

    const auto diagram = Diagram::around0 ({ 90.0f, 520.0f, 1070.0f, 290.0f }, values);
    diagram.drawGrid (graphics,
                      targetExists ? "Gain adjustment towards the target in dB, over frequency in Hz"
                                   : "Gain adjustment: none without a target");

    for (std::size_t index = 0; index < measurements.size(); ++index)
        diagram.drawLevels (graphics, measurements[index].adjustments, DiagramColours::ofIndex (index), 2.0f);
}
} // namespace

void drawMeasurements (const std::vector<Measurement>& measurements,
                       const MeasurementTarget& target,
                       const std::string& path)
{
    juce::Image image (juce::Image::RGB, pictureWidth, pictureHeight, true, juce::SoftwareImageType());

    {
        juce::Graphics graphics (image);
        graphics.fillAll (DiagramColours::background);
        graphics.setFont (15.0f);
        drawLevels (graphics, measurements, target);
        drawAdjustments (graphics, measurements, target.exists);
    }

    PictureFile::write (image, path);
}
