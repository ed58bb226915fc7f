#include "gui/panels/GainScalePanel.h"

#include "core/parameters/ParameterTable.h"
#include "gui/look/Tips.h"

GainScalePanel::GainScalePanel (VelmoraAudioProcessor& processor)
    : SliderPanel (processor,
                   { .title = "Gain Scale",
                     .sliderName = "gain-scale",
                     .parameterId = ParameterIds::gainScale,
                     .sliderTop = 20,
                     .valueTop = 45,
                     .tipX = 125.5f })
{
    setTooltip (Tips::text (Tips::gainScale));
    slider.setTooltip (Tips::text (Tips::gainScale));
}
