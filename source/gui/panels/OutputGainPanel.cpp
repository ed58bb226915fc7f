#include "gui/panels/OutputGainPanel.h"

#include "core/parameters/ParameterTable.h"
#include "gui/editor/EditorClock.h"

#include <cmath>

namespace
{
/** Less than this is not seen. */
constexpr float visibleStep = 0.25f;
} // namespace

OutputGainPanel::OutputGainPanel (VelmoraAudioProcessor& processor)
    : SliderPanel (processor,
                   { .title = "Output Gain",
                     .sliderName = "output-gain",
                     .parameterId = ParameterIds::outputGain,
                     .sliderTop = 30,
                     .valueTop = 55,
                     .tipX = 132.5f }),
      model (processor.model)
{
}

float OutputGainPanel::pointerPlace() const
{
    const auto gain = model.levelMatchPointer.load (std::memory_order_relaxed);
    return slider.getPositionOfValue (static_cast<double> (juce::Decibels::gainToDecibels (gain)));
}

void OutputGainPanel::visibilityChanged()
{
    if (! isVisible())
        return stopTimer();

    shownPlace = pointerPlace();
    startTimer (EditorClock::intervalMs);
}

void OutputGainPanel::timerCallback()
{
    const auto place = pointerPlace();

    if (std::abs (place - shownPlace) < visibleStep)
        return;

    shownPlace = place;
    slider.repaint();
}
