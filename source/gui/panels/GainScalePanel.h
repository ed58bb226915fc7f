#pragma once

#include "gui/panels/SliderPanel.h"

/** The panel below the gain scale button: the gains of all bands together, in percent. */
class GainScalePanel final : public SliderPanel
{
public:
    explicit GainScalePanel (VelmoraAudioProcessor& processor);
};
