#include "app/BandDescription.h"

namespace
{
using Kind = Settings::Parameter;

std::string text (ParameterText form, float value)
{
    return ParameterTable::textOf (form, value).toStdString();
}

std::string actingText (ParameterText form, float acting, float asked)
{
    const auto word = text (form, acting);
    return word == text (form, asked) ? word : word + " (" + text (form, asked) + " asked)";
}

/** The display draws every band with its full gain, wherever it lies between mid and side. */
const BandShape& shapeOf (VelmoraAudioProcessor& processor, int band)
{
    return processor.bandEngine().block (BlockProcessorMode::display).bandCurves().bandShape (band);
}

bool isBypassed (const PluginModel& model, int band)
{
    return model.getBandValue (band, Kind::bypass) == 1.0f;
}
} // namespace

float actingGain (VelmoraAudioProcessor& processor, int band)
{
    return isBypassed (processor.model, band) ? 0.0f : shapeOf (processor, band).gainDb;
}

std::string describeBand (VelmoraAudioProcessor& processor, int band)
{
    const auto& model = processor.model;
    const auto& shape = shapeOf (processor, band);
    const auto soloed = model.getBandValue (band, Kind::solo) == 1.0f;
    const auto inUse = model.getBandValue (band, Kind::active) == 1.0f;

    return text (ParameterText::hertz, shape.frequencyHz) + ", "
           + actingText (ParameterText::decibel, shape.gainDb, model.getBandValue (band, Kind::gain)) + ", "
           + (shape.highShelf ? "high shelf"
                              : actingText (ParameterText::q, shape.q, model.getBandValue (band, Kind::q)))
           + ", " + text (ParameterText::midSide, model.getBandValue (band, Kind::midSide)) + (soloed ? ", solo" : "")
           + (isBypassed (model, band) ? ", bypassed" : "")
           + (model.soloActive() && ! soloed ? ", silent beside the solo" : "")
           + (inUse ? "" : ", switched off and heard all the same");
}
